#include "reports/paperView.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>

namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr int kMargin = -20; // millimetres that a bar goes beyond the page's edge
constexpr int kShadow = 4;   // dots
constexpr int kWheelStep = 120;

QScrollBar* makeBar(const QString& name, Qt::Orientation orientation, double length, QWidget* parent) {
    auto* bar = new QScrollBar(orientation, parent);
    bar->setObjectName(name);
    bar->setRange(kMargin, int(std::lround(length)));
    bar->setPageStep(10);
    bar->setSingleStep(5);
    bar->setValue(0);
    return bar;
}

/// The grey ground of the sheet, with the shadow at its edge.
class Ground : public QWidget {
public:
    explicit Ground(QWidget* parent)
        : QWidget(parent) {
        setObjectName(QStringLiteral("Picture1"));
        setAutoFillBackground(true);
        QPalette grey = palette();
        grey.setColor(QPalette::Window, QColor(0xBF, 0xC6, 0xCE));
        setPalette(grey);
        setMinimumSize(200, 160);
    }
    void setSheet(const QWidget* sheet) { m_sheet = sheet; }

protected:
    void paintEvent(QPaintEvent*) override {
        if (!m_sheet)
            return;
        QPainter painter(this);
        for (int i = 1; i <= kShadow; ++i)
            painter.fillRect(m_sheet->geometry().translated(i, i), QColor(0, 0, 0, 24));
    }

private:
    const QWidget* m_sheet = nullptr;
};

} // namespace

PaperSheet::PaperSheet(double width, double height, QWidget* parent)
    : QWidget(parent)
    , m_width(width)
    , m_height(height) {
    setObjectName(QStringLiteral("Picture2"));
    setAccessibleName(QStringLiteral("打印页预览"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setPercent(100);
}

double PaperSheet::dotsPerMillimetre() const {
    return logicalDpiX() / kMillimetresPerInch * m_percent / 100;
}

QSizeF PaperSheet::trueSize() const {
    return QSizeF(m_width, m_height) * logicalDpiX() / kMillimetresPerInch;
}

void PaperSheet::setPercent(double percent) {
    m_percent = percent;
    setFixedSize(int(std::lround(m_width * dotsPerMillimetre())),
                 int(std::lround(m_height * dotsPerMillimetre())));
    update();
}

void PaperSheet::Cls() {
    m_recording.clear();
    update();
}

void PaperSheet::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.fillRect(event->rect(), Qt::white);
    const double scale = dotsPerMillimetre();
    PainterPage page(painter, scale, PainterPage::Medium::Screen);
    m_recording.replay(page, event->rect().top() / scale, event->rect().bottom() / scale);
    painter.resetTransform();
    painter.setPen(QColor(0xB8, 0xC0, 0xC9));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

PaperView::PaperView(double pageWidth, double pageHeight, QWidget* parent)
    : QWidget(parent) {
    auto* ground = new Ground(this);
    m_viewport = ground;
    m_viewport->installEventFilter(this);
    m_sheet = new PaperSheet(pageWidth, pageHeight, m_viewport);
    ground->setSheet(m_sheet);
    m_horizontal = makeBar(QStringLiteral("HScroll1"), Qt::Horizontal, pageWidth, this);
    m_vertical = makeBar(QStringLiteral("VScroll1"), Qt::Vertical, pageHeight, this);
    connect(m_horizontal, &QScrollBar::valueChanged, this, &PaperView::placeSheet);
    connect(m_vertical, &QScrollBar::valueChanged, this, &PaperView::placeSheet);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(m_viewport, 0, 0);
    grid->addWidget(m_vertical, 0, 1);
    grid->addWidget(m_horizontal, 1, 0);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(0, 1);
}

void PaperView::placeSheet() {
    const double scale = m_sheet->dotsPerMillimetre();
    const auto place = [&](const QScrollBar* bar, int sheet, int room) {
        const bool inMiddle = m_sheet->percent() != 100 && sheet <= room;
        return inMiddle ? (room - sheet) / 2 : int(std::lround(-bar->value() * scale));
    };
    m_sheet->move(place(m_horizontal, m_sheet->width(), m_viewport->width()),
                  place(m_vertical, m_sheet->height(), m_viewport->height()));
    m_viewport->update();
}

QPointF PaperView::middle() const {
    return QRectF(m_viewport->rect()).center();
}

void PaperView::setZoom(const PaperZoom& zoom) {
    m_zoom = zoom;
    if (zoom.fit == PaperZoom::Fit::None)
        showAt(boundedZoom(zoom.percent), middle());
    else
        fit();
    Q_EMIT zoomed();
}

void PaperView::zoomBy(bool larger) {
    setZoom({PaperZoom::Fit::None, nextZoom(m_sheet->percent(), larger)});
}

void PaperView::fit() {
    const double percent =
        fittingZoom(m_zoom.fit, m_sheet->trueSize(), size(), m_vertical->sizeHint().width());
    if (percent != m_sheet->percent())
        showAt(percent, middle());
    Q_EMIT zoomed();
}

void PaperView::showAt(double percent, const QPointF& anchor) {
    const QPointF held = (anchor - QPointF(m_sheet->pos())) / m_sheet->dotsPerMillimetre();
    m_sheet->setPercent(percent);
    showScrollBars();
    const QPointF corner = held - anchor / m_sheet->dotsPerMillimetre();
    m_horizontal->setValue(int(std::lround(corner.x())));
    m_vertical->setValue(int(std::lround(corner.y())));
    placeSheet();
}

bool PaperView::turnWheel(const QWheelEvent& event) {
    m_wheel += event.angleDelta().y();
    for (; std::abs(m_wheel) >= kWheelStep; m_wheel -= m_wheel > 0 ? kWheelStep : -kWheelStep) {
        m_zoom = {PaperZoom::Fit::None, nextZoom(m_sheet->percent(), m_wheel > 0)};
        showAt(m_zoom.percent, event.position());
    }
    Q_EMIT zoomed();
    return true;
}

void PaperView::showScrollBars() {
    m_vertical->setVisible(m_viewport->height() < m_sheet->height());
    m_horizontal->setVisible(m_viewport->width() < m_sheet->width());
}

void PaperView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    showScrollBars();
    if (m_zoom.fit != PaperZoom::Fit::None)
        fit();
    placeSheet();
}

bool PaperView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        showScrollBars();
        placeSheet();
    }
    if (event->type() == QEvent::Wheel && static_cast<QWheelEvent*>(event)->modifiers() & Qt::ControlModifier)
        return turnWheel(*static_cast<QWheelEvent*>(event));
    if (event->type() == QEvent::Wheel)
        return QCoreApplication::sendEvent(m_vertical, event);
    return QWidget::eventFilter(watched, event);
}

#include "reports/paperView.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <cmath>

namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr int kMargin = -20; // millimetres that a bar goes beyond the page's edge

QScrollBar* makeBar(const QString& name, Qt::Orientation orientation, double length, QWidget* parent) {
    auto* bar = new QScrollBar(orientation, parent);
    bar->setObjectName(name);
    bar->setRange(kMargin, int(std::lround(length)));
    bar->setPageStep(10);
    bar->setSingleStep(5);
    bar->setValue(0);
    return bar;
}

} // namespace

PaperSheet::PaperSheet(double width, double height, QWidget* parent)
    : QWidget(parent)
    , m_width(width)
    , m_height(height) {
    setObjectName(QStringLiteral("Picture2"));
    setAccessibleName(QStringLiteral("打印页预览"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFixedSize(int(std::lround(width * dotsPerMillimetre())),
                 int(std::lround(height * dotsPerMillimetre())));
}

double PaperSheet::dotsPerMillimetre() const {
    return logicalDpiX() / kMillimetresPerInch;
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
    m_viewport = new QWidget(this);
    m_viewport->setObjectName(QStringLiteral("Picture1"));
    m_viewport->setAutoFillBackground(true);
    QPalette grey = m_viewport->palette();
    grey.setColor(QPalette::Window, QColor(0xD9, 0xDE, 0xE4));
    m_viewport->setPalette(grey);
    m_viewport->setMinimumSize(200, 160);
    m_viewport->installEventFilter(this);
    m_sheet = new PaperSheet(pageWidth, pageHeight, m_viewport);
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
    m_sheet->move(int(std::lround(-m_horizontal->value() * scale)),
                  int(std::lround(-m_vertical->value() * scale)));
}

void PaperView::showScrollBars() {
    m_vertical->setVisible(m_viewport->height() < m_sheet->height());
    m_horizontal->setVisible(m_viewport->width() < m_sheet->width());
}

void PaperView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    showScrollBars();
}

bool PaperView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        showScrollBars();
    if (event->type() == QEvent::Wheel)
        return QCoreApplication::sendEvent(m_vertical, event);
    return QWidget::eventFilter(watched, event);
}

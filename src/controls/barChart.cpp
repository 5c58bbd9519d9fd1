#include "controls/barChart.h"

#include "controls/chartPicture.h"
#include "controls/notice.h"
#include "controls/prompts.h"
#include "recordset/textNumber.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileInfo>
#include <QGraphicsLayout>
#include <QGraphicsSimpleTextItem>
#include <QMenu>
#include <QPainter>
#include <QtCharts/QBarSeries>
#include <QtCharts/QBarSet>
#include <QtCharts/QLegend>
#include <QtCharts/QValueAxis>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kEdge = 10;         // around everything
constexpr double kGap = 6;           // between the axes and what is written at them
constexpr int kMostSteps = 6;        // of the value axis
constexpr double kLongestLabel = 12; // in heights of a line
constexpr double kBand = 1;          // stacked above the paper, below the lines and the bars
constexpr double kLines = 2;
constexpr double kTop = 100;

QColor between(const QColor& from, const QColor& to, double share) {
    const auto mix = [share](double a, double b) { return float(a + (b - a) * share); };
    return QColor::fromRgbF(mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()),
                            mix(from.blueF(), to.blueF()));
}

QString textOf(const Bar& bar) {
    return bar.label + QStringLiteral("：") + plainNumber(bar.value);
}

} // namespace

BarChart::BarChart(const Words& words, Prompts& prompts, QWidget* parent)
    : QChartView(parent)
    , m_words(words)
    , m_prompts(prompts) {
    setObjectName(words.name);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(320, 200);
    setRenderHint(QPainter::Antialiasing);
    viewport()->setMouseTracking(true);
    buildChart();
    buildMarks();
    takeColours();
    setBars({});
}

void BarChart::buildChart() {
    m_set = new QBarSet(m_words.title);
    // Both axes count: an axis of names would drop names that are alike.
    m_places = new QValueAxis;
    m_values = new QValueAxis;
    auto* series = new QBarSeries;
    series->append(m_set);
    series->setBarWidth(0.7);
    chart()->addSeries(series);
    chart()->addAxis(m_places, Qt::AlignBottom);
    chart()->addAxis(m_values, Qt::AlignLeft);
    series->attachAxis(m_places);
    series->attachAxis(m_values);
    // Lines and texts are drawn here: the axes' own texts are shortened or left out where they find no room,
    // and their lines do not follow a plot area that is set.
    m_places->setVisible(false);
    m_values->setVisible(false);
    chart()->legend()->hide();
    chart()->setBackgroundRoundness(0);
    chart()->setBackgroundPen(Qt::NoPen);
    chart()->setMargins({});
    chart()->layout()->setContentsMargins(0, 0, 0, 0);
}

void BarChart::buildMarks() {
    m_texts = new QGraphicsRectItem(chart());
    m_base = new QGraphicsLineItem(chart());
    m_band = new QGraphicsRectItem(chart());
    m_note = new QGraphicsRectItem(chart());
    m_noteText = new QGraphicsSimpleTextItem(m_note);
    m_band->setZValue(kBand);
    m_texts->setZValue(kLines);
    m_base->setZValue(kTop);
    m_note->setZValue(kTop + 1);
    m_texts->setPen(Qt::NoPen);
    m_band->setPen(Qt::NoPen);
    m_note->setPen(Qt::NoPen);
}

void BarChart::takeColours() {
    const QColor paper = palette().color(QPalette::Base);
    const QColor ink = palette().color(QPalette::Text);
    const QColor bars = palette().color(QPalette::Highlight);
    setBackgroundBrush(paper);
    chart()->setBackgroundBrush(paper);
    m_set->setPen(Qt::NoPen);
    m_set->setColor(bars);
    m_set->setSelectedColor(between(bars, ink, 0.6));
    m_lines = between(paper, ink, 0.15);
    m_base->setPen(QPen(between(paper, ink, 0.6), 1));
    m_band->setBrush(between(paper, bars, 0.2));
    m_note->setBrush(ink);
    m_noteText->setBrush(paper);
}

void BarChart::setBars(const QList<Bar>& bars) {
    m_bars = bars;
    m_chosen = m_hovered = -1;
    QList<qreal> values;
    for (const Bar& bar : bars)
        values << bar.value;
    m_set->remove(0, m_set->count());
    m_set->append(values);
    m_places->setRange(-0.5, double(std::max<qsizetype>(1, bars.size())) - 0.5);
    layOut();
    choose(-1);
    QStringList texts;
    for (const Bar& bar : bars)
        if (!bar.label.isEmpty())
            texts << textOf(bar);
    setAccessibleDescription(texts.isEmpty() ? QStringLiteral("没有数据") : texts.join(u'；'));
}

QStringList BarChart::captions() const {
    const QFontMetricsF metrics(font());
    QStringList texts;
    for (const Bar& bar : m_bars)
        texts << metrics.elidedText(bar.label, Qt::ElideMiddle, kLongestLabel * metrics.height());
    return texts;
}

void BarChart::layOut() {
    qDeleteAll(m_texts->childItems());
    const QFontMetricsF metrics(font());
    QList<double> values;
    for (const Bar& bar : m_bars)
        values << bar.value;
    const double lines = viewport()->height() / metrics.height();
    m_scale = scaleOf(values, std::clamp(int(lines / 2 - 4), 1, kMostSteps));
    m_values->setRange(m_scale.low(), m_scale.high());
    QList<QSizeF> sizes;
    for (const QString& caption : captions())
        sizes << (caption.isEmpty() ? QSizeF()
                                    : QSizeF(metrics.horizontalAdvance(caption), metrics.height()));
    m_plot = plotFor({});
    m_plot = plotFor(planCaptions(sizes, pitch()));
    chart()->setPlotArea(m_plot);
    writeValues();
    writeCaptions(planCaptions(sizes, pitch()));
    writeTitles();
    showMark(shown());
}

QRectF BarChart::plotFor(const CaptionPlan& plan) const {
    const QFontMetricsF metrics(font());
    double left = plan.overhang - pitch() / 2;
    for (int mark = 0; mark < m_scale.marks(); ++mark)
        left = std::max(left, metrics.horizontalAdvance(m_scale.text(mark)) + kGap);
    const double title = metrics.height() + kGap;
    // Before its first size the viewport is too small for anything.
    const QRectF whole = viewport()->rect().united(QRect({}, minimumSize()));
    const QRectF plot =
        whole.adjusted(kEdge + left, kEdge + title + kGap, -kEdge, -kEdge - title - kGap - plan.height);
    // Whole dots keep the lines thin.
    return QRect(plot.topLeft().toPoint(), plot.bottomRight().toPoint() - QPoint(1, 1));
}

double BarChart::pitch() const {
    return m_plot.width() / double(std::max<qsizetype>(1, m_bars.size()));
}

double BarChart::heightOf(double value) const {
    return m_plot.bottom() - m_scale.share(value) * m_plot.height();
}

QGraphicsSimpleTextItem* BarChart::addText(const QString& text) {
    auto* item = new QGraphicsSimpleTextItem(text, m_texts);
    item->setFont(font());
    item->setBrush(palette().color(QPalette::Text));
    return item;
}

void BarChart::writeValues() {
    for (int mark = 0; mark < m_scale.marks(); ++mark) {
        auto* item = addText(m_scale.text(mark));
        const QRectF box = item->boundingRect();
        const double y = heightOf(m_scale.value(mark));
        item->setPos(m_plot.left() - kGap - box.width(), y - box.height() / 2);
        auto* line = new QGraphicsLineItem(QLineF(m_plot.left(), y, m_plot.right(), y), m_texts);
        line->setPen(QPen(m_lines, 1));
    }
    m_base->setLine(QLineF(m_plot.left(), heightOf(0), m_plot.right(), heightOf(0)));
}

void BarChart::writeCaptions(const CaptionPlan& plan) {
    const QStringList texts = captions();
    for (int bar = 0; bar < texts.size(); bar += plan.every) {
        if (texts[bar].isEmpty())
            continue;
        auto* item = addText(texts[bar]);
        const QRectF box = item->boundingRect();
        const QPointF below(place(bar).center().x(), m_plot.bottom() + kGap);
        if (!plan.slanted) {
            item->setPos(below - QPointF(box.width() / 2, 0));
            continue;
        }
        // Turned about the middle of its right side, which then stands below the bar.
        const QPointF end(box.width(), box.height() / 2);
        item->setTransformOriginPoint(end);
        item->setRotation(-45);
        item->setPos(below + QPointF(0, box.height() / 3) - end);
    }
}

void BarChart::writeTitles() {
    addText(m_words.values)->setPos(kEdge, kEdge);
    auto* item = addText(m_words.categories);
    const QRectF box = item->boundingRect();
    item->setPos(m_plot.center().x() - box.width() / 2, viewport()->height() - kEdge - box.height());
}

QRectF BarChart::place(int bar) const {
    return {m_plot.left() + bar * pitch(), m_plot.top(), pitch(), m_plot.height()};
}

int BarChart::barAt(const QPointF& point) const {
    const int bar = int(std::floor((point.x() - m_plot.left()) / pitch()));
    return bar >= 0 && bar < m_bars.size() && !m_bars[bar].label.isEmpty() ? bar : -1;
}

int BarChart::labelled(int from, int step, int otherwise) const {
    for (int bar = from; bar >= 0 && bar < m_bars.size(); bar += step)
        if (!m_bars[bar].label.isEmpty())
            return bar;
    return otherwise;
}

void BarChart::choose(int bar) {
    m_chosen = bar;
    m_hovered = -1;
    showMark(bar);
    // A screen reader says a new name of what has the focus.
    setAccessibleName(bar < 0 ? m_words.title : m_words.title + QStringLiteral("，") + textOf(m_bars[bar]));
    viewport()->setAccessibleName(accessibleName()); // a screen reader meets it by itself
}

void BarChart::hover(int bar) {
    if (bar == m_hovered)
        return;
    m_hovered = bar;
    showMark(shown());
}

QString BarChart::shownText() const {
    return m_note->isVisible() ? m_noteText->text() : QString();
}

void BarChart::showMark(int bar) {
    m_set->deselectAllBars();
    m_band->setVisible(bar >= 0);
    m_note->setVisible(bar >= 0);
    if (bar < 0)
        return;
    m_set->selectBar(bar);
    m_band->setRect(place(bar));
    placeNote(bar);
}

void BarChart::placeNote(int bar) {
    m_noteText->setFont(font());
    m_noteText->setText(textOf(m_bars[bar]));
    const QSizeF size = m_noteText->boundingRect().size() + QSizeF(2 * kGap, kGap);
    const double top = heightOf(std::max(0.0, m_bars[bar].value)) - size.height() - kGap;
    const double left = place(bar).center().x() - size.width() / 2;
    m_note->setRect(QRectF({}, size));
    m_note->setPos(std::clamp(left, 0.0, std::max(0.0, viewport()->width() - size.width())),
                   std::max(0.0, top));
    m_noteText->setPos(kGap, kGap / 2);
}

void BarChart::resizeEvent(QResizeEvent* event) {
    QChartView::resizeEvent(event);
    layOut();
}

void BarChart::changeEvent(QEvent* event) {
    QChartView::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange &&
        event->type() != QEvent::EnabledChange)
        return;
    takeColours();
    layOut();
}

void BarChart::paintEvent(QPaintEvent* event) {
    QChartView::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
}

void BarChart::keyPressEvent(QKeyEvent* event) {
    const int end = int(m_bars.size()) - 1;
    if (event->modifiers() & ~Qt::KeypadModifier)
        return event->ignore();
    switch (event->key()) {
    case Qt::Key_Left:
        return choose(labelled(m_chosen < 0 ? end : m_chosen - 1, -1, m_chosen));
    case Qt::Key_Right:
        return choose(labelled(m_chosen + 1, 1, m_chosen));
    case Qt::Key_Home:
        return choose(labelled(0, 1, -1));
    case Qt::Key_End:
        return choose(labelled(end, -1, -1));
    default:
        break;
    }
    if (event->key() != Qt::Key_Escape || m_chosen < 0)
        return event->ignore();
    choose(-1);
}

void BarChart::mouseMoveEvent(QMouseEvent* event) {
    QChartView::mouseMoveEvent(event);
    hover(barAt(event->position()));
}

void BarChart::mousePressEvent(QMouseEvent* event) {
    QChartView::mousePressEvent(event);
    if (event->button() == Qt::LeftButton)
        choose(barAt(event->position()));
}

bool BarChart::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave)
        hover(-1);
    return QChartView::viewportEvent(event);
}

void BarChart::focusInEvent(QFocusEvent* event) {
    QChartView::focusInEvent(event);
    viewport()->update();
}

void BarChart::focusOutEvent(QFocusEvent* event) {
    QChartView::focusOutEvent(event);
    viewport()->update();
    // The own menu and another window only borrow it.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        choose(-1);
}

void BarChart::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.addAction(QStringLiteral("复制图片"), [this] { QApplication::clipboard()->setImage(picture()); });
    menu.addAction(QStringLiteral("保存图片…"), [this] { askSave(); });
    menu.exec(event->globalPos());
}

QImage BarChart::picture() {
    showMark(-1);
    QImage image = pictureOf(*this);
    showMark(shown());
    return image;
}

bool BarChart::savePicture(const QString& path) {
    showMark(-1);
    const bool written = writePicture(path, m_words.title, *this);
    showMark(shown());
    return written;
}

void BarChart::askSave() {
    const auto answer = m_prompts.saveFile(QStringLiteral("保存图片"), m_words.title + QStringLiteral(".png"),
                                           QStringLiteral("PNG 图片 (*.png);;SVG 图片 (*.svg)"));
    if (!answer)
        return;
    const QString path = isPictureName(*answer) ? *answer : *answer + QStringLiteral(".png");
    // The dialog has asked for the name that was given only.
    if (path != *answer && !m_prompts.mayWrite(path))
        return;
    if (path != *answer && QFileInfo::exists(path) &&
        !m_prompts.confirm(QStringLiteral("文件已存在，要替换吗？\n%1").arg(path)))
        return;
    if (savePicture(path))
        say(this, {QStringLiteral("已保存图片：%1").arg(path)});
    else
        m_prompts.tell(QStringLiteral("文件不能写入：%1").arg(path));
}

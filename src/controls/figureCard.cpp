#include "controls/figureCard.h"

#include "controls/formParts.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace {

constexpr int kMargin = 6; // pixels between the card's border and its units
constexpr int kRounding = 6;

} // namespace

FigureCard::FigureCard(const QString& name, const QSizeF& units, QList<CardRule> rules, QWidget* parent)
    : QWidget(parent)
    , m_units(units)
    , m_rules(std::move(rules)) {
    setObjectName(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void FigureCard::setTexts(const QList<CardText>& texts) {
    m_texts = texts;
    QStringList words;
    for (const CardText& each : texts)
        words << each.text;
    setAccessibleDescription(words.join(u' '));
    update();
}

QSize FigureCard::sizeHint() const {
    const QSizeF size = m_units * scale();
    return {int(size.width()) + 2 * kMargin, int(size.height()) + 2 * kMargin};
}

QRectF FigureCard::placeOf(const CardText& text) const {
    const QFontMetricsF metrics(text.style == CardText::Style::Figure ? boldOf(this) : font());
    return {text.x * scale() + kMargin, text.y * scale() + kMargin, metrics.horizontalAdvance(text.text),
            metrics.height()};
}

bool FigureCard::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    QString tip;
    for (const CardText& each : m_texts)
        if (placeOf(each).contains(help->pos()))
            tip = each.tip;
    QToolTip::showText(help->globalPos(), tip, this); // without a text it takes an old one away
    return true;
}

void FigureCard::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRounding, kRounding);
    painter.translate(kMargin, kMargin);
    const double unit = scale();
    painter.setPen(QPen(palette().color(QPalette::Midlight), 1));
    for (const CardRule& rule : m_rules)
        painter.drawLine(QPointF(rule.from, rule.y) * unit, QPointF(rule.to, rule.y) * unit);
    painter.setPen(palette().color(QPalette::Text));
    for (const CardText& each : m_texts) {
        painter.setFont(each.style == CardText::Style::Figure ? boldOf(this) : font());
        painter.drawText(QPointF(each.x, each.y) * unit + QPointF(0, painter.fontMetrics().ascent()),
                         each.text);
    }
}

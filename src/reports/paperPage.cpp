#include "reports/paperPage.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kRuleWidth = 0.1; // millimetres, but never less than one dot

} // namespace

void PageRecording::replay(PaperPage& page, double top, double bottom) const {
    for (const Item& item : m_items) {
        const double height = item.font ? item.font->lineHeight() : 0;
        if (item.y > bottom || item.y + height < top)
            continue;
        if (item.font)
            page.text(item.x, item.y, item.text, item.font);
        else
            page.rule(item.x, item.right, item.y);
    }
}

PainterPage::PainterPage(QPainter& painter, double dotsPerMillimetre, Medium medium)
    : m_painter(painter)
    , m_scale(dotsPerMillimetre)
    , m_medium(medium)
    , m_base(painter.transform()) {
    m_rulePen = QPen(Qt::black, std::max(1.0, kRuleWidth * dotsPerMillimetre));
    m_rulePen.setCosmetic(kRuleWidth * dotsPerMillimetre < 1);
}

void PainterPage::use(const PaperFontPtr& font) {
    if (m_font == font)
        return;
    QFont drawn = font->font();
    if (m_medium == Medium::Screen) {
        const double dots = font->size() * m_scale * m_painter.device()->devicePixelRatio();
        drawn.setPixelSize(std::max(1, int(std::lround(dots))));
    }
    // Fonts are drawn in their own units, so that no glyph is placed by a coarser grid.
    m_unit = font->size() / drawn.pixelSize();
    QTransform transform = m_base;
    transform.scale(m_unit * m_scale, m_unit * m_scale);
    m_painter.setTransform(transform);
    m_painter.setFont(drawn);
    m_painter.setPen(font->colour());
    m_font = font;
}

void PainterPage::useBase() {
    if (!m_font)
        return;
    m_painter.setTransform(m_base);
    m_font = nullptr;
}

void PainterPage::text(double x, double y, const QString& text, const PaperFontPtr& font) {
    if (text.isEmpty())
        return;
    use(font);
    m_painter.drawText(QPointF(x / m_unit, (y + font->ascent()) / m_unit), text);
}

void PainterPage::rule(double left, double right, double y) {
    useBase();
    m_painter.setPen(m_rulePen);
    m_painter.drawLine(QPointF(left * m_scale, y * m_scale), QPointF(right * m_scale, y * m_scale));
}

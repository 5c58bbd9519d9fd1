#pragma once

#include "reports/reportLayout.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>

#include <memory>

/// A font record as paper uses it. Its measures are taken once, without hinting, at a resolution of 1200 dots
/// an inch, so that preview, printer and PDF break no line and place no text differently.
class PaperFont {
public:
    explicit PaperFont(const FontRecord& record);

    const FontRecord& record() const { return m_record; }
    /// The font as measured; `unit()` is what one of its pixels is on paper, in millimetres.
    const QFont& font() const { return m_font; }
    double unit() const { return m_unit; }
    /// Size of the letters in millimetres.
    double size() const { return m_unit * m_font.pixelSize(); }
    QColor colour() const;
    double ascent() const { return m_metrics.ascent() * m_unit; }
    double lineHeight() const { return m_metrics.height() * m_unit; }
    double textWidth(const QString& text) const { return m_metrics.horizontalAdvance(text) * m_unit; }

private:
    FontRecord m_record;
    QFont m_font;
    QFontMetricsF m_metrics;
    double m_unit;
};

using PaperFontPtr = std::shared_ptr<const PaperFont>;

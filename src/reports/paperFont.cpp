#include "reports/paperFont.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPointsPerInch = 72;
constexpr double kMillimetresPerInch = 25.4;
constexpr double kReferenceDpi = 1200;

int referencePixels(const FontRecord& record) {
    return std::max(1, int(std::lround(double(record.size) / kPointsPerInch * kReferenceDpi)));
}

QFont referenceFont(const FontRecord& record) {
    QFont font(record.name);
    font.setPixelSize(referencePixels(record));
    font.setBold(record.bold);
    font.setItalic(record.italic);
    font.setStrikeOut(record.strikethrough);
    font.setUnderline(record.underline);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

} // namespace

PaperFont::PaperFont(const FontRecord& record)
    : m_record(record)
    , m_font(referenceFont(record))
    , m_metrics(m_font)
    // Whole pixels are off the wanted size by a little; the unit makes up for it.
    , m_unit(double(record.size) / kPointsPerInch * kMillimetresPerInch / referencePixels(record)) {}

QColor PaperFont::colour() const {
    const qint32 number = m_record.colour;
    return QColor(number & 0xFF, (number >> 8) & 0xFF, (number >> 16) & 0xFF);
}

#include "analysis/percentText.h"

#include "recordset/textNumber.h"

std::optional<QString> percentText(double percent, PercentCut cut) {
    if (percent >= 100) {
        const bool written = cut == PercentCut::Rank || (cut == PercentCut::Turnover && percent == 100);
        return written ? std::optional(QStringLiteral("100")) : std::nullopt;
    }
    const int kept = percent < 1 ? 3 : percent < 10 ? 4 : 5;
    return bareNumber(percent).left(kept);
}

QString intervalShareText(double percent) {
    return bareNumber(percent).left(5);
}

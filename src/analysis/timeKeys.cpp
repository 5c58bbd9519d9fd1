#include "analysis/timeKeys.h"

#include "recordset/textNumber.h"

namespace {

constexpr int kYearLength = 4;
constexpr int kMonthAt = 5; // behind the year and its "-"

/// The month of a month's key, 1 to 12, or 0: its text is compared, so "01" is none.
int monthNumber(const QString& key) {
    const QString month = key.mid(kMonthAt);
    for (int number = 1; number <= 12; ++number)
        if (month == QString::number(number))
            return number;
    return 0;
}

} // namespace

QString monthKey(const QString& date) {
    const QString key = date.left(7);
    return key.endsWith(u'-') ? key.left(6) : key;
}

YearMonth yearMonth(const QString& monthKey) {
    return {val(monthKey.left(kYearLength)), val(monthKey.mid(kMonthAt))};
}

std::optional<QString> spanKey(TurnoverSpan span, const QString& date) {
    if (span == TurnoverSpan::Year)
        return date.left(kYearLength) + u'年';
    const QString key = monthKey(date);
    if (span == TurnoverSpan::Month)
        return key;
    const int month = monthNumber(key);
    if (month == 0)
        return std::nullopt;
    const QString year = key.left(kYearLength);
    if (span == TurnoverSpan::HalfYear)
        return year + (month <= 6 ? QStringLiteral("-上半年") : QStringLiteral("-下半年"));
    return year + QStringLiteral("-%1季度").arg((month + 2) / 3);
}

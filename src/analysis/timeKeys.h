#pragma once

#include <QString>

#include <optional>

/// Spans of time by which turnover is counted.
enum class TurnoverSpan { Month, Quarter, HalfYear, Year };

/// Year and month of a date's text: "2004-1-5" gives "2004-1", "2004-11-5" gives "2004-11".
QString monthKey(const QString& date);

/// Year and month of a month's key, as numbers; 0 where there is none. Throws Overflow.
struct YearMonth {
    double year = 0;
    double month = 0;
};
YearMonth yearMonth(const QString& monthKey);

/// The key of the span in which a date's text lies: "2004-1", "2004-1季度", "2004-上半年", "2004年". Nothing
/// for a quarter or half-year whose month is none of 1 to 12.
std::optional<QString> spanKey(TurnoverSpan span, const QString& date);

#pragma once

#include <QDate>
#include <QString>
#include <QStringView>

#include <compare>
#include <optional>

/// A date, a date with a time, or a time alone: seconds since 1899-12-30 0:00, whose day stands for "no
/// date".
struct Moment {
    qint64 seconds = 0;

    static Moment fromDate(const QDate& date, int secondOfDay = 0);
    QDate date() const;
    int secondOfDay() const;
    auto operator<=>(const Moment&) const = default;
};

/// What a typed text says as a date or time, read in the order year, month, day: "2004-1-5", "2004年1月",
/// "1-5" (of the year of `today`), "1-5-2004", two-digit years, each with an optional time; or a time alone.
/// Nothing where the text is no date or the day does not exist.
std::optional<Moment> parseDate(QStringView text, const QDate& today = QDate::currentDate());
bool isDate(QStringView text);

/// A date literal of a condition: year-month-day or year/month/day with a four-digit year and an optional
/// "H:m" or "H:m:s". Stricter than parseDate.
std::optional<Moment> parseDateLiteral(QStringView text);

/// year-month-day without leading zeros, with " H:mm:ss" where the time is not midnight; a time alone
/// "H:mm:ss".
QString dateText(const Moment& moment);

/// "yyyy-MM-dd" or "yyyy-MM-dd HH:mm:ss", the stored form, whose text order is time order.
QByteArray isoText(const Moment& moment);
/// Reads the stored form; nothing for any other text.
std::optional<Moment> parseIso(const char* text, int length);

#pragma once

#include <QDate>
#include <QStringView>

#include <optional>

/// Month and day of a birthday.
struct Birthday {
    int month;
    int day;

    bool operator==(const Birthday&) const = default;
};

/// What a typed birthday says of month and day, a year before them or none: "1980-2-3", "80/2/3",
/// "1980年2月3日", "2.3", "2月3日", "二月三日", "19800203", "800203", "0203", "2-3-1980", each with an
/// optional time, in half-width or full-width signs. Nothing where the day does not exist or cannot be told:
/// a month alone, a day of the moon's calendar, six digits that may be a year and a month.
std::optional<Birthday> parseBirthday(QStringView text);

/// The first day from `from` on, that one included, on which the birthday falls. One of 29 February falls on
/// the 28th in a year without that day: who calls the day before is early, who calls the day after is late.
QDate nextBirthday(const Birthday& birthday, const QDate& from);

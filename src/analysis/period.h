#pragma once

#include <QString>

#include <vector>

/// What the user picked for one side of a period, each as the text of its box.
struct PeriodSide {
    QString year;
    QString month;
    QString quarter;
    QString day;
    bool isQuarter = false; // the last pick of month or quarter was a quarter
    QString text;           // year, or year and month; not empty as soon as the side has a year
    QString shown;          // the side as the dialog shows it
};

struct PeriodPicks {
    PeriodSide start;
    PeriodSide end;
};

enum class PeriodBox { Year = 1, Month, Quarter, Day };
enum class PeriodBound { Start, End };
enum class Comparison { None, Greater, Less, Equal, Range };

struct PickResult {
    QString refusal;                // message for the user, empty where the pick was taken
    std::vector<PeriodBox> cleared; // boxes whose text goes blank
};

/// Takes a pick in one of the four boxes for one side. `monthBox` is what the month box shows at that moment.
PickResult pickPeriod(PeriodPicks& picks, PeriodBound bound, PeriodBox box, const QString& value,
                      const QString& monthBox);

/// A condition over 日期, or why there is none; both empty where no start time is picked at all.
struct PeriodFilter {
    QString condition;
    QString refusal;
};

/// The condition of the period that work copies are made from. A month of December with "大于", "等于" or as
/// the end of a range gives the month 13, which no statement accepts: that is meant.
PeriodFilter periodFilter(const PeriodPicks& picks, Comparison comparison);

/// A condition of a period in words, day by day: "2024-1-1 至 2024-3-31", "2024-4-1 起", "2023-12-31 为止".
/// Nothing for a condition with a day that does not exist.
QString exactPeriod(const QString& condition);

/// The condition of the older dialog that only filters a cursor: strict bounds, the 31st as the last day of
/// every month, and three Like clauses for a quarter.
PeriodFilter cursorPeriodFilter(const PeriodPicks& picks, Comparison comparison);

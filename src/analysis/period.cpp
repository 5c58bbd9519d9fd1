#include "analysis/period.h"

#include "recordset/textDate.h"
#include "recordset/textNumber.h"

#include <QRegularExpression>
#include <QStringList>

#include <array>

namespace {

const QString kChooseYear = QStringLiteral("请选择年份！");
const QString kChooseMonth = QStringLiteral("请选择月份！");

QString next(const QString& number) {
    return plainNumber(val(number) + 1);
}

QString date(const QString& year, const QString& month, const QString& day) {
    return u'#' + year + u'-' + month + u'-' + day + u'#';
}

QString date(const QString& year, int month, int day) {
    return date(year, QString::number(month), QString::number(day));
}

/// The three months of a quarter; blank for a quarter that is blank or unknown.
std::array<QString, 3> monthsOf(const QString& quarter) {
    for (int i = 1; i <= 4; ++i)
        if (quarter == QString::number(i))
            return {QString::number(3 * i - 2), QString::number(3 * i - 1), QString::number(3 * i)};
    return {};
}

/// The first day of the month after a quarter's last one.
QString afterQuarter(const QString& year, const QString& lastMonth) {
    return lastMonth == u"12" ? date(next(year), 1, 1) : date(year, next(lastMonth), QStringLiteral("1"));
}

QString afterMonth(const QString& year, const QString& month) {
    // December gives the month 13, and the statements made from it fail: that is meant.
    return date(year, next(month), QStringLiteral("1"));
}

QString from(const QString& literal) {
    return QStringLiteral("日期 >= ") + literal;
}

QString before(const QString& literal) {
    return QStringLiteral("日期 < ") + literal;
}

QString upTo(const QString& literal) {
    return QStringLiteral("日期 <= ") + literal;
}

bool holdsQuarter(const PeriodSide& side) {
    return side.isQuarter && !side.quarter.isEmpty();
}

/// First day of what the start side holds.
QString firstDay(const PeriodSide& side) {
    if (holdsQuarter(side))
        return date(side.year, monthsOf(side.quarter)[0], QStringLiteral("1"));
    if (side.month.isEmpty())
        return date(side.year, 1, 1);
    return date(side.year, side.month, side.day.isEmpty() ? QStringLiteral("1") : side.day);
}

QString greaterFilter(const PeriodSide& start) {
    if (holdsQuarter(start))
        return from(afterQuarter(start.year, monthsOf(start.quarter)[2]));
    if (start.month.isEmpty())
        return from(date(next(start.year), 1, 1));
    return from(start.day.isEmpty() ? afterMonth(start.year, start.month) : firstDay(start));
}

QString equalFilter(const PeriodSide& start) {
    const QString lower = from(firstDay(start)) + QStringLiteral(" And ");
    if (holdsQuarter(start))
        return lower + before(afterQuarter(start.year, monthsOf(start.quarter)[2]));
    if (start.month.isEmpty())
        return lower + upTo(date(start.year, 12, 31));
    if (start.day.isEmpty())
        return lower + before(afterMonth(start.year, start.month));
    return QStringLiteral("日期 = ") + firstDay(start);
}

/// The upper clause of a range; empty where a start with a month meets an end with only a year.
QString upperClause(const PeriodSide& start, const PeriodSide& end) {
    // A quarter at the end replaces what month and day say. Its months are blank where the quarter is, and
    // "next" of a blank month is the first.
    if (end.isQuarter)
        return before(afterQuarter(end.year, monthsOf(end.quarter)[2]));
    if (!end.month.isEmpty())
        return end.day.isEmpty() ? before(afterMonth(end.year, end.month))
                                 : upTo(date(end.year, end.month, end.day));
    // The test looks at the start's month, not at the end's: that is meant.
    return start.month.isEmpty() ? upTo(date(end.year, 12, 31)) : QString();
}

QString rangeFilter(const PeriodPicks& picks) {
    const QString lower = from(firstDay(picks.start));
    const QString upper = upperClause(picks.start, picks.end);
    return QStringLiteral("(%1) And (%2)").arg(lower, upper.isEmpty() ? lower : upper);
}

/// What both kinds of filter ask for before they look at dates.
PeriodFilter missing(const PeriodPicks& picks, Comparison comparison) {
    if (comparison == Comparison::Range && picks.end.text.isEmpty())
        return {{}, QStringLiteral("请输入第二个比较时间！")};
    if (comparison == Comparison::None)
        return {{}, QStringLiteral("请选择比较范围！")};
    return {};
}

QString lastDay31(const PeriodSide& side) {
    if (side.month.isEmpty())
        return date(side.year, 12, 31);
    return date(side.year, side.month, side.day.isEmpty() ? QStringLiteral("31") : side.day);
}

QString quarterLike(const PeriodSide& side) {
    QStringList clauses;
    for (const QString& month : monthsOf(side.quarter))
        clauses << QStringLiteral("日期 Like #%1-%2%#").arg(side.year, month);
    return clauses.join(QStringLiteral(" Or "));
}

PickResult pickYear(PeriodSide& side, const QString& value) {
    side.year = side.text = side.shown = value;
    side.month = side.quarter = side.day = QString();
    return {{}, {PeriodBox::Month, PeriodBox::Quarter, PeriodBox::Day}};
}

PickResult pickMonth(PeriodSide& side, const QString& value) {
    side.month = value;
    side.text = side.shown = side.year + u'-' + value;
    side.day = side.quarter = QString();
    side.isQuarter = false;
    return {{}, {PeriodBox::Quarter, PeriodBox::Day}};
}

PickResult pickQuarter(PeriodSide& side, const QString& value) {
    side.quarter = value;
    side.shown = side.year + QStringLiteral("年") + value + QStringLiteral("季度");
    side.isQuarter = true;
    side.month = side.day = QString();
    return {{}, {PeriodBox::Month, PeriodBox::Day}};
}

PickResult pickDay(PeriodSide& side, const QString& value) {
    if (!side.isQuarter) {
        side.day = value;
        // Picked twice it stands there twice; the filter uses the last pick.
        side.shown += u'-' + value;
        side.quarter = QString();
    }
    return {{}, {PeriodBox::Quarter}};
}

} // namespace

PickResult pickPeriod(PeriodPicks& picks, PeriodBound bound, PeriodBox box, const QString& value,
                      const QString& monthBox) {
    const bool isEnd = bound == PeriodBound::End;
    PeriodSide& side = isEnd ? picks.end : picks.start;
    if (box == PeriodBox::Year)
        return pickYear(side, value);
    if (box == PeriodBox::Day && picks.start.isQuarter)
        return {};
    // Year and month of the start are asked for, also where the end is set: that is meant.
    if (picks.start.year.isEmpty())
        return {kChooseYear, {}};
    if (box == PeriodBox::Month)
        return pickMonth(side, value);
    if (box == PeriodBox::Quarter)
        return pickQuarter(side, isEnd ? monthBox : value); // the end takes the month box: that is meant
    if (picks.start.month.isEmpty())
        return {kChooseMonth, {}};
    return pickDay(side, value);
}

PeriodFilter periodFilter(const PeriodPicks& picks, Comparison comparison) {
    if (picks.start.text.isEmpty())
        return {};
    if (PeriodFilter fault = missing(picks, comparison); !fault.refusal.isEmpty())
        return fault;
    switch (comparison) {
    case Comparison::Greater:
        return {greaterFilter(picks.start), {}};
    case Comparison::Less:
        return {before(firstDay(picks.start)), {}};
    case Comparison::Equal:
        return {equalFilter(picks.start), {}};
    default:
        return {rangeFilter(picks), {}};
    }
}

PeriodFilter cursorPeriodFilter(const PeriodPicks& picks, Comparison comparison) {
    if (picks.start.text.isEmpty())
        return {};
    if (PeriodFilter fault = missing(picks, comparison); !fault.refusal.isEmpty())
        return fault;
    if (comparison == Comparison::Range)
        return {rangeFilter(picks), {}};
    if (holdsQuarter(picks.start))
        return {quarterLike(picks.start), {}};
    switch (comparison) {
    case Comparison::Greater:
        return {QStringLiteral("日期 > ") + lastDay31(picks.start), {}};
    case Comparison::Less:
        return {before(firstDay(picks.start)), {}};
    default:
        return {from(firstDay(picks.start)) + QStringLiteral(" And ") + upTo(lastDay31(picks.start)), {}};
    }
}

QString exactPeriod(const QString& condition) {
    static const QRegularExpression clause(QStringLiteral("日期 (>=|<=|<|=) #(\\d+)-(\\d+)-(\\d+)#"));
    QDate first;
    QDate last;
    for (auto found = clause.globalMatch(condition); found.hasNext();) {
        const QRegularExpressionMatch each = found.next();
        const QDate day(each.captured(2).toInt(), each.captured(3).toInt(), each.captured(4).toInt());
        const QString compared = each.captured(1);
        if (!day.isValid())
            return {};
        if (compared == u">=" || compared == u"=")
            first = day;
        if (compared != u">=")
            last = compared == u"<" ? day.addDays(-1) : day;
    }
    const auto text = [](const QDate& day) { return dateText(Moment::fromDate(day)); };
    if (first.isNull())
        return last.isNull() ? QString() : text(last) + QStringLiteral(" 为止");
    return text(first) + (last.isNull() ? QStringLiteral(" 起") : QStringLiteral(" 至 ") + text(last));
}

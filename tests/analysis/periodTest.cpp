#include "analysis/period.h"
#include "support/printQt.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

/// Picks as a user makes them: "Y2004 M3 Q2 D5", each for the side given, the month box as the dialog leaves
/// it.
class Picker {
public:
    Picker& start(const char* picks) { return take(PeriodBound::Start, picks); }
    Picker& end(const char* picks) {
        m_monthBox.clear(); // choosing the end side blanks the boxes
        return take(PeriodBound::End, picks);
    }
    QString filter(Comparison comparison) const { return periodFilter(m_picks, comparison).condition; }
    QString refusal(Comparison comparison) const { return periodFilter(m_picks, comparison).refusal; }
    QString cursorFilter(Comparison comparison) const {
        return cursorPeriodFilter(m_picks, comparison).condition;
    }
    const PeriodPicks& picks() const { return m_picks; }
    const PickResult& last() const { return m_last; }

private:
    Picker& take(PeriodBound bound, const char* picks) {
        for (const QString& pick : QString::fromUtf8(picks).split(u' ', Qt::SkipEmptyParts)) {
            const auto box = PeriodBox(QStringLiteral("YMQD").indexOf(pick[0]) + 1);
            const QString value = pick.mid(1);
            if (box == PeriodBox::Month)
                m_monthBox = value;
            m_last = pickPeriod(m_picks, bound, box, value, m_monthBox);
            for (const PeriodBox cleared : m_last.cleared)
                if (cleared == PeriodBox::Month)
                    m_monthBox.clear();
        }
        return *this;
    }

    PeriodPicks m_picks;
    PickResult m_last;
    QString m_monthBox;
};

struct FilterCase {
    const char* start;
    const char* end;
    Comparison comparison;
    const char* filter;
};

class PeriodFilters : public testing::TestWithParam<FilterCase> {};

TEST_P(PeriodFilters, TheConditionOfWhatIsPicked) {
    const FilterCase& c = GetParam();
    Picker picker;
    picker.start(c.start);
    if (*c.end)
        picker.end(c.end);
    EXPECT_EQ(picker.filter(c.comparison), QString::fromUtf8(c.filter));
    EXPECT_EQ(picker.refusal(c.comparison), u"");
}

constexpr auto G = Comparison::Greater;
constexpr auto L = Comparison::Less;
constexpr auto E = Comparison::Equal;
constexpr auto R = Comparison::Range;

INSTANTIATE_TEST_SUITE_P(Greater, PeriodFilters,
                         testing::Values(FilterCase{"Y2004 M3 D5", "", G, "日期 >= #2004-3-5#"},
                                         FilterCase{"Y2004 M3", "", G, "日期 >= #2004-4-1#"},
                                         FilterCase{"Y2004 M11", "", G, "日期 >= #2004-12-1#"},
                                         FilterCase{"Y2004 M12", "", G,
                                                    "日期 >= #2004-13-1#"}, // refused by every statement
                                         FilterCase{"Y2004", "", G, "日期 >= #2005-1-1#"},
                                         FilterCase{"Y2004 Q4", "", G, "日期 >= #2005-1-1#"},
                                         FilterCase{"Y2004 Q1", "", G, "日期 >= #2004-4-1#"},
                                         FilterCase{"Y2004 Q2", "", G, "日期 >= #2004-7-1#"},
                                         FilterCase{"Y2004 Q3", "", G, "日期 >= #2004-10-1#"}));

INSTANTIATE_TEST_SUITE_P(Less, PeriodFilters,
                         testing::Values(FilterCase{"Y2004 M3 D5", "", L, "日期 < #2004-3-5#"},
                                         FilterCase{"Y2004 M3", "", L, "日期 < #2004-3-1#"},
                                         FilterCase{"Y2004", "", L, "日期 < #2004-1-1#"},
                                         FilterCase{"Y2004 Q1", "", L, "日期 < #2004-1-1#"},
                                         FilterCase{"Y2004 Q4", "", L, "日期 < #2004-10-1#"}));

INSTANTIATE_TEST_SUITE_P(
    Equal, PeriodFilters,
    testing::Values(FilterCase{"Y2004 M3 D5", "", E, "日期 = #2004-3-5#"},
                    FilterCase{"Y2004 M3", "", E, "日期 >= #2004-3-1# And 日期 < #2004-4-1#"},
                    FilterCase{"Y2004 M12", "", E, "日期 >= #2004-12-1# And 日期 < #2004-13-1#"},
                    FilterCase{"Y2004", "", E, "日期 >= #2004-1-1# And 日期 <= #2004-12-31#"},
                    FilterCase{"Y2004 Q4", "", E, "日期 >= #2004-10-1# And 日期 < #2005-1-1#"},
                    FilterCase{"Y2004 Q3", "", E, "日期 >= #2004-7-1# And 日期 < #2004-10-1#"},
                    FilterCase{"Y2004 Q1", "", E, "日期 >= #2004-1-1# And 日期 < #2004-4-1#"}));

INSTANTIATE_TEST_SUITE_P(
    RangeLower, PeriodFilters,
    testing::Values(FilterCase{"Y2003 M3 D5", "Y2004 M2 D1", R,
                               "(日期 >= #2003-3-5#) And (日期 <= #2004-2-1#)"},
                    FilterCase{"Y2003 M3", "Y2004 M2 D1", R, "(日期 >= #2003-3-1#) And (日期 <= #2004-2-1#)"},
                    FilterCase{"Y2003", "Y2004", R, "(日期 >= #2003-1-1#) And (日期 <= #2004-12-31#)"},
                    FilterCase{"Y2003 Q3", "Y2004", R, "(日期 >= #2003-7-1#) And (日期 <= #2004-12-31#)"}));

INSTANTIATE_TEST_SUITE_P(
    RangeUpper, PeriodFilters,
    testing::Values(FilterCase{"Y2003 M3", "Y2004 M2", R, "(日期 >= #2003-3-1#) And (日期 < #2004-3-1#)"},
                    FilterCase{"Y2003 M3", "Y2004 M12", R, "(日期 >= #2003-3-1#) And (日期 < #2004-13-1#)"},
                    // A start with a month and an end with a year alone: the lower clause twice, so no end.
                    FilterCase{"Y2003 M3", "Y2004", R, "(日期 >= #2003-3-1#) And (日期 >= #2003-3-1#)"},
                    // The usual order of clicks leaves the month box blank: before the first of January.
                    FilterCase{"Y2003", "Y2004 Q2", R, "(日期 >= #2003-1-1#) And (日期 < #2004-1-1#)"},
                    FilterCase{"Y2003 M3", "Y2004 Q2", R, "(日期 >= #2003-3-1#) And (日期 < #2004-1-1#)"},
                    // A month picked just before the quarter is taken for its number.
                    FilterCase{"Y2003", "Y2004 M3 Q1", R, "(日期 >= #2003-1-1#) And (日期 < #2004-10-1#)"},
                    FilterCase{"Y2003", "Y2004 M4 Q1", R, "(日期 >= #2003-1-1#) And (日期 < #2005-1-1#)"},
                    FilterCase{"Y2003", "Y2004 M9 Q1", R, "(日期 >= #2003-1-1#) And (日期 < #2004-1-1#)"}));

TEST(PeriodPick, AYearEmptiesTheSmallerPicksOfItsSide) {
    Picker picker;
    picker.start("Y2004 M3 D5 Y2003");
    const PeriodSide& start = picker.picks().start;
    EXPECT_EQ(start.year + start.month + start.day + start.quarter, u"2003");
    EXPECT_EQ(start.shown, u"2003");
    EXPECT_EQ(start.text, u"2003");
    EXPECT_EQ(picker.last().cleared, (std::vector{PeriodBox::Month, PeriodBox::Quarter, PeriodBox::Day}));
}

TEST(PeriodPick, AMonthStandsInTheTextsAndEndsAQuarter) {
    Picker picker;
    picker.start("Y2004 Q2 M3");
    EXPECT_EQ(picker.picks().start.shown, u"2004-3");
    EXPECT_EQ(picker.picks().start.text, u"2004-3");
    EXPECT_FALSE(picker.picks().start.isQuarter);
    EXPECT_EQ(picker.picks().start.quarter, u"");
    EXPECT_EQ(picker.last().cleared, (std::vector{PeriodBox::Quarter, PeriodBox::Day}));
}

TEST(PeriodPick, AQuarterIsShownInWordsAndLeavesTheStartText) {
    Picker picker;
    picker.start("Y2004 M3 Q2");
    EXPECT_EQ(picker.picks().start.shown, u"2004年2季度");
    EXPECT_EQ(picker.picks().start.text, u"2004-3");
    EXPECT_EQ(picker.picks().start.month, u"");
    EXPECT_EQ(picker.last().cleared, (std::vector{PeriodBox::Month, PeriodBox::Day}));
}

TEST(PeriodPick, ADayPickedTwiceIsAppendedTwiceAndTheLastOneCounts) {
    Picker picker;
    picker.start("Y2004 M3 D5 D6");
    EXPECT_EQ(picker.picks().start.shown, u"2004-3-5-6");
    EXPECT_EQ(picker.filter(E), u"日期 = #2004-3-6#");
}

TEST(PeriodPick, MonthQuarterAndDayAskForAYear) {
    for (const char* pick : {"M3", "Q2", "D5"})
        EXPECT_EQ(Picker().start(pick).last().refusal, u"请选择年份！") << pick;
}

TEST(PeriodPick, ADayAsksForAMonth) {
    EXPECT_EQ(Picker().start("Y2004 D5").last().refusal, u"请选择月份！");
}

TEST(PeriodPick, ADayAfterAQuarterIsPassedOver) {
    Picker picker;
    picker.start("Y2004 Q2 D5");
    EXPECT_EQ(picker.last().refusal, u"");
    EXPECT_EQ(picker.picks().start.shown, u"2004年2季度");
}

TEST(PeriodPick, TheEndSideAsksForTheYearOfTheStart) {
    for (const char* pick : {"Y2004 M3", "Y2004 Q2"})
        EXPECT_EQ(Picker().end(pick).last().refusal, u"请选择年份！") << pick;
    EXPECT_EQ(Picker().start("Y2003").end("Y2004 M3 D1").last().refusal, u"请选择月份！");
}

TEST(PeriodPick, TheEndQuarterIsWhatTheMonthBoxShows) {
    Picker blank;
    blank.start("Y2003").end("Y2004 Q2");
    EXPECT_EQ(blank.picks().end.quarter, u"");
    EXPECT_EQ(blank.picks().end.shown, u"2004年季度");
    Picker month;
    month.start("Y2003").end("Y2004 M3 Q2");
    EXPECT_EQ(month.picks().end.shown, u"2004年3季度");
}

TEST(PeriodPick, ADayAtTheEndIsPassedOverAfterAQuarterThere) {
    Picker picker;
    picker.start("Y2003 M1").end("Y2004 Q2 D5");
    EXPECT_EQ(picker.picks().end.day, u"");
    EXPECT_EQ(picker.last().cleared, (std::vector{PeriodBox::Quarter}));
}

TEST(PeriodPick, AYearAfterAQuarterHoldsTheYearAlone) {
    Picker picker;
    picker.start("Y2004 Q2 Y2003");
    EXPECT_EQ(picker.filter(E), u"日期 >= #2003-1-1# And 日期 <= #2003-12-31#");
}

TEST(PeriodConfirm, WithoutAStartNothingHappensWhateverIsChosen) {
    for (const Comparison each : {Comparison::None, G, L, E, R}) {
        EXPECT_EQ(Picker().filter(each), u"");
        EXPECT_EQ(Picker().refusal(each), u"");
    }
}

TEST(PeriodConfirm, AStartWithoutAComparisonIsRefused) {
    EXPECT_EQ(Picker().start("Y2004").refusal(Comparison::None), u"请选择比较范围！");
}

TEST(PeriodConfirm, ARangeWithoutAnEndIsRefused) {
    EXPECT_EQ(Picker().start("Y2004").refusal(R), u"请输入第二个比较时间！");
}

TEST(CursorPeriod, TheOlderDialogIsStrictAndTakesThe31stForEveryMonth) {
    EXPECT_EQ(Picker().start("Y2004 M3 D5").cursorFilter(G), u"日期 > #2004-3-5#");
    EXPECT_EQ(Picker().start("Y2004 M4").cursorFilter(G), u"日期 > #2004-4-31#");
    EXPECT_EQ(Picker().start("Y2004").cursorFilter(G), u"日期 > #2004-12-31#");
    EXPECT_EQ(Picker().start("Y2004 M3 D5").cursorFilter(L), u"日期 < #2004-3-5#");
    EXPECT_EQ(Picker().start("Y2004 M3").cursorFilter(L), u"日期 < #2004-3-1#");
    EXPECT_EQ(Picker().start("Y2004").cursorFilter(L), u"日期 < #2004-1-1#");
    EXPECT_EQ(Picker().start("Y2004 M3").cursorFilter(E), u"日期 >= #2004-3-1# And 日期 <= #2004-3-31#");
    EXPECT_EQ(Picker().start("Y2004").cursorFilter(E), u"日期 >= #2004-1-1# And 日期 <= #2004-12-31#");
    EXPECT_EQ(Picker().start("Y2004 Q2").cursorFilter(E),
              u"日期 Like #2004-4%# Or 日期 Like #2004-5%# Or 日期 Like #2004-6%#");
}

TEST(ExactPeriod, SaysTheDaysOfACondition) {
    const std::pair<const char*, const char*> periods[] = {
        {"日期 >= #2004-1-1# And 日期 < #2004-4-1#", "2004-1-1 至 2004-3-31"},
        {"日期 >= #2004-1-1# And 日期 <= #2004-12-31#", "2004-1-1 至 2004-12-31"},
        {"日期 >= #2004-10-1# And 日期 < #2005-1-1#", "2004-10-1 至 2004-12-31"},
        {"日期 = #2004-2-29#", "2004-2-29 至 2004-2-29"},
        {"日期 >= #2005-1-1#", "2005-1-1 起"},
        {"日期 < #2004-1-1#", "2003-12-31 为止"},
        {"(日期 >= #2004-3-1#) And (日期 >= #2004-3-1#)", "2004-3-1 起"},
        {"(日期 >= #2003-1-1#) And (日期 <= #2004-5-6#)", "2003-1-1 至 2004-5-6"},
        {"日期 >= #2004-13-1#", ""},
        {"", ""}};
    for (const auto& [condition, days] : periods)
        EXPECT_EQ(exactPeriod(QString::fromUtf8(condition)), QString::fromUtf8(days)) << condition;
}

} // namespace

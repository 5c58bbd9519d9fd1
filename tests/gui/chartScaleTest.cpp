#include "controls/chartScale.h"
#include "support/printQt.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace {

QString marksOf(const QList<double>& values, int steps = 6) {
    const ValueScale scale = scaleOf(values, steps);
    QStringList texts;
    for (int mark = 0; mark < scale.marks(); ++mark)
        texts << scale.text(mark);
    return texts.join(u' ');
}

TEST(ValueScale, GoesInStepsOfOneTwoOrFiveFromZeroToAboveTheGreatestValue) {
    EXPECT_EQ(marksOf({120, 80, 276}), u"0 50 100 150 200 250 300");
    EXPECT_EQ(marksOf({1000}), u"0 200 400 600 800 1000");
    EXPECT_EQ(marksOf({0.7}), u"0.0 0.2 0.4 0.6 0.8");
    EXPECT_EQ(marksOf({276}, 2), u"0 200 400") << "fewer where there is little room";
}

TEST(ValueScale, WholeValuesGetWholeMarks) {
    EXPECT_EQ(marksOf({1, 2}), u"0 1 2");
    EXPECT_EQ(marksOf({1, 2.5}), u"0.0 0.5 1.0 1.5 2.0 2.5");
}

TEST(ValueScale, HoldsNegativeValuesAndZero) {
    EXPECT_EQ(marksOf({-30, 100}), u"-50 0 50 100");
    EXPECT_EQ(marksOf({-3, -7}), u"-8 -6 -4 -2 0");
    const ValueScale scale = scaleOf({-30, 100}, 6);
    EXPECT_DOUBLE_EQ(scale.share(-50), 0);
    EXPECT_DOUBLE_EQ(scale.share(100), 1);
}

TEST(ValueScale, WithoutAValueGoesToOne) {
    EXPECT_EQ(marksOf({}), u"0 1");
    EXPECT_EQ(marksOf({0, 0, 0}), u"0 1");
    EXPECT_EQ(marksOf({std::numeric_limits<double>::denorm_min()}), u"0 1");
}

TEST(ValueScale, WritesGreatNumbersInFull) {
    EXPECT_EQ(marksOf({123456789.01}), u"0 50000000 100000000 150000000");
    EXPECT_EQ(marksOf({-9e14}), u"-1000000000000000 -800000000000000 -600000000000000 -400000000000000 "
                                "-200000000000000 0");
    EXPECT_TRUE(marksOf({9e17}).contains(u"8E+17")) << "digits that a double does not hold";
}

TEST(CaptionPlan, CaptionsThatFitSideBySideLieFlat) {
    const CaptionPlan plan = planCaptions({{40, 16}, {}, {36, 16}}, 44);
    EXPECT_FALSE(plan.slanted);
    EXPECT_EQ(plan.every, 1);
    EXPECT_EQ(plan.height, 16);
}

TEST(CaptionPlan, WiderOnesSlantAndNarrowPlacesShowSomeOnly) {
    const QList<QSizeF> sizes(24, QSizeF(70, 16));
    const CaptionPlan slanted = planCaptions(sizes, 30);
    EXPECT_TRUE(slanted.slanted);
    EXPECT_EQ(slanted.every, 1);
    EXPECT_NEAR(slanted.height, 86 / std::numbers::sqrt2, 0.01);
    const CaptionPlan thinned = planCaptions(sizes, 10);
    EXPECT_EQ(thinned.every, 3);
    EXPECT_GE(thinned.every * 10 / std::numbers::sqrt2, 16) << "lines further apart than they are high";
}

} // namespace

#include "reports/paperZoom.h"

#include <gtest/gtest.h>

namespace {

const QSizeF kSheet(1000, 700); // at 100 %
constexpr double kBar = 20;

double fitting(PaperZoom::Fit fit, double width, double height) {
    return fittingZoom(fit, kSheet, {width, height}, kBar);
}

TEST(Zoom, StepsGoFromOneUsualPercentageToTheNext) {
    EXPECT_EQ(nextZoom(100, true), 110);
    EXPECT_EQ(nextZoom(100, false), 90);
    EXPECT_EQ(nextZoom(61.8, true), 67) << "from a fitted one";
    EXPECT_EQ(nextZoom(61.8, false), 50);
    EXPECT_EQ(nextZoom(400, true), 400);
    EXPECT_EQ(nextZoom(25, false), 25);
    EXPECT_EQ(nextZoom(380, true), 400);
}

TEST(Zoom, NothingLeavesItsBounds) {
    EXPECT_EQ(boundedZoom(3), 25);
    EXPECT_EQ(boundedZoom(4000), 400);
    EXPECT_EQ(fitting(PaperZoom::Fit::Page, 100, 100), 25);
    EXPECT_EQ(fitting(PaperZoom::Fit::Width, 9000, 9000), 400);
    EXPECT_EQ(fitting(PaperZoom::Fit::Page, 5, 5), 25) << "a window without room";
}

TEST(Zoom, AFittedPageIsWholeAndAlmostFillsItsRoom) {
    for (const QSizeF room : {QSizeF(800, 900), QSizeF(1500, 500), QSizeF(1000, 700)}) {
        const double percent = fittingZoom(PaperZoom::Fit::Page, kSheet, room, kBar);
        const QSizeF shown = kSheet * percent / 100;
        EXPECT_LT(shown.width(), room.width());
        EXPECT_LT(shown.height(), room.height());
        EXPECT_TRUE(room.width() - shown.width() < 20 || room.height() - shown.height() < 20);
    }
}

TEST(Zoom, AFittedWidthLeavesRoomForTheBarOfAHigherSheet) {
    EXPECT_NEAR(fitting(PaperZoom::Fit::Width, 816, 900), 80, 0.01) << "no bar: all of it is in sight";
    EXPECT_NEAR(fitting(PaperZoom::Fit::Width, 836, 400), 80, 0.01) << "with the bar";
}

} // namespace

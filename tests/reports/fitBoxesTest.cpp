#include "reports/fitBoxes.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

constexpr ReportColumn kColumns[] = {
    {u"产品编号", u"产品编号", 30}, {u"品名", u"品名", 60}, {u"产地", u"产地"}};

class FitBoxes : public testing::Test {
protected:
    FitBoxes() {
        report.columns = kColumns;
        layout.tableWidth = 100;
    }
    /// Widths of the boxes behind the fitting.
    std::vector<double> widths(const FittedBoxes& fitted) const {
        const double first = kColumns[0].separator + fitted.boxShift[1];
        const double second = kColumns[1].separator + fitted.boxShift[2];
        return {first, second - first, 99 - second};
    }
    FittedBoxes fit(double first, double second, double third) const {
        return fitBoxes(report, layout, {first, second, third});
    }

    ReportDescription report{u"probe", u"探针", &Session::productTable, {}, {}};
    ReportLayout layout;
};

TEST_F(FitBoxes, WhatFitsStaysAsItIs) {
    layout.boxShift[1] = 4;
    const FittedBoxes fitted = fit(30, 20, 39);
    EXPECT_EQ(fitted.boxShift, layout.boxShift);
    EXPECT_TRUE(fitted.tooNarrow.isEmpty());
}

TEST_F(FitBoxes, ABoxThatIsTooNarrowTakesFromThoseThatHaveMore) {
    const FittedBoxes fitted = fit(10, 50, 29);
    const std::vector<double> now = widths(fitted);
    EXPECT_NEAR(now[0], 30 - 20 * 2 / 3.0, 1e-9) << "it has two thirds of what is spare";
    EXPECT_NEAR(now[1], 50, 1e-9);
    EXPECT_NEAR(now[2], 39 - 20 / 3.0, 1e-9) << "and it one third";
    EXPECT_NEAR(now[0] + now[1] + now[2], 99, 1e-9);
    EXPECT_TRUE(fitted.tooNarrow.isEmpty());
}

TEST_F(FitBoxes, ExactlyTheTablesWidthFits) {
    const FittedBoxes fitted = fit(9, 60, 30);
    EXPECT_NEAR(widths(fitted)[0], 9, 1e-9);
    EXPECT_NEAR(widths(fitted)[1], 60, 1e-9);
    EXPECT_TRUE(fitted.tooNarrow.isEmpty());
}

TEST_F(FitBoxes, WhatTheTableHasNoRoomForIsNamedAndTheOthersStillFit) {
    const FittedBoxes fitted = fit(9, 80, 70);
    const std::vector<double> now = widths(fitted);
    EXPECT_NEAR(now[0], 9, 1e-9);
    EXPECT_NEAR(now[1], 45, 1e-9);
    EXPECT_NEAR(now[2], 45, 1e-9);
    EXPECT_EQ(fitted.tooNarrow, (QStringList{"品名", "产地"}));
}

TEST_F(FitBoxes, ALayoutThatTheUserHasTwistedIsPutRight) {
    layout.boxShift[1] = 50; // behind the second separator
    const FittedBoxes fitted = fit(25, 25, 30);
    const std::vector<double> now = widths(fitted);
    EXPECT_GE(now[0], 25 - 1e-9);
    EXPECT_GE(now[1], 25 - 1e-9);
    EXPECT_GE(now[2], 30 - 1e-9);
}

TEST_F(FitBoxes, AColumnNeedsItsWidestTextOfAnyRowOrItsLabel) {
    TestBooks books;
    books.addProduct("1", "纸", 1, 1, 1);
    books.addProduct("2", "很长很长很长的品名", 1, 1, 1);
    books.addProduct("3", "iiiiiiiiiiii", 1, 1, 1);
    books.session().open_rs();
    const RecordsetPtr& rows = books.session().productTable;
    const auto needed = neededWidths({report, layout, rows, {}}, {});
    ASSERT_TRUE(needed);
    const PaperFont content(layout.contentFont);
    const PaperFont labels(layout.fieldFont);
    EXPECT_NEAR((*needed)[0], 1 + labels.textWidth("产品编号"), 1e-6) << "the label is wider than any number";
    EXPECT_NEAR((*needed)[1], 2 + content.textWidth("很长很长很长的品名"), 1e-6);
    rows->setFilter("产品编号 <> '2'");
    EXPECT_NEAR((*neededWidths({report, layout, rows, {}}, {}))[1],
                2 + std::max(content.textWidth("iiiiiiiiiiii"), labels.textWidth("品名")), 1e-6)
        << "only the rows of this report";
}

TEST_F(FitBoxes, MeasuringCanBeStopped) {
    TestBooks books;
    books.execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
                  "INSERT INTO productTable (流水号, 产品编号) SELECT i, 'p' || i FROM n");
    books.session().open_rs();
    int told = 0;
    EXPECT_FALSE(neededWidths({report, layout, books.session().productTable, {}},
                              [&told](int) { return ++told < 2; }));
    EXPECT_EQ(told, 2);
}

} // namespace

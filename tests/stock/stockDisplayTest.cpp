#include "stock/stockDisplay.h"
#include "recordset/error.h"
#include "support/errorOf.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class StockDisplay : public testing::Test {
protected:
    Session& session() { return books.session(); }
    void open() {
        session().open_rs();
        session().reopen(session().product_Bank, "Select * From product_Bank");
    }
    QString history() { return books.stored("SELECT 产品编号 FROM product_Bank ORDER BY 产品编号"); }

    TestBooks books;
};

TEST_F(StockDisplay, TheStockIsValuedAtCostAndTheCursorEndsOnItsLastRow) {
    books.addProduct("p1", "纸", 5, 2.5, 9);
    books.addProduct("p2", "笔", 4, 1.25, 9);
    open();
    const StockSums sums = stock_Count(session().productTable);
    EXPECT_EQ(sums.value, 17.5);
    EXPECT_EQ(sums.quantity, 9);
    EXPECT_EQ(session().productTable->AbsolutePosition(), 2);
}

TEST_F(StockDisplay, AStockWithoutRowsIsWorthNothing) {
    open();
    const StockSums sums = stock_Count(session().productTable);
    EXPECT_EQ(sums.value, 0);
    EXPECT_EQ(sums.quantity, 0);
}

TEST_F(StockDisplay, TheSumsAreOverWhatTheFilterShowsAndLeaveThePosition) {
    books.addProduct("p1", "纸", 5, 2.5, 9);
    books.addProduct("p2", "笔", 4, 1.25, 9);
    books.addProduct("p3", "笔", 1, 1, 9);
    open();
    session().productTable->setFilter("品名 = '笔'");
    EXPECT_EQ(stockSums(session().productTable).value, 6);
    EXPECT_EQ(session().productTable->AbsolutePosition(), 1);
}

TEST_F(StockDisplay, TheThresholdItselfIsAShortfall) {
    books.addProduct("two", "纸", 2, 1, 1);
    books.addProduct("three", "纸", 3, 1, 1);
    books.addProduct("minus", "纸", -1, 1, 1);
    open();
    filterShortfall(session(), session().productTable);
    EXPECT_EQ(session().productTable->Filter(), u"数量 <= 2");
    EXPECT_EQ(session().productTable->RecordCount(), 2);
    session().safetyStock = -1;
    filterShortfall(session(), session().productTable);
    EXPECT_EQ(session().productTable->RecordCount(), 1) << "below zero only negative stocks are left";
}

TEST_F(StockDisplay, TheSafetyStockHasNoLowerBoundButThoseOfSixteenBits) {
    session().safetyStock = 0;
    changeSafetyStock(session(), -1);
    EXPECT_EQ(session().safetyStock, -1);
    session().safetyStock = 32767;
    EXPECT_EQ(errorOf([&] { changeSafetyStock(session(), 1); }), ErrorNumber::Overflow);
    EXPECT_EQ(session().safetyStock, 32767);
    session().safetyStock = -32768;
    EXPECT_EQ(errorOf([&] { changeSafetyStock(session(), -1); }), ErrorNumber::Overflow);
}

TEST_F(StockDisplay, OneProductIsPickedOutWithSevenColumns) {
    books.addProduct("p1", "纸", 5, 2.5, 9);
    books.addProduct("o''n", "笔", 4, 1.25, 9);
    open();
    session().productTable->MoveLast();
    ASSERT_TRUE(pickOneProduct(session(), session().productTable, ShowSource::Products));
    EXPECT_EQ(oneProductLines(session().oneProduct),
              (QStringList{"产品编号----o'n", "", "品名----笔", "", "规格----规格o'n", "", "厂家----厂家o'n",
                           "", "产地----产地o'n", "", "数量----4", "", "计量单位----个", ""}));
}

TEST_F(StockDisplay, OneProductOfThePeriodComesFromTheCopy) {
    books.addProduct("p1", "纸", 5, 2.5, 9);
    open();
    books.execute("INSERT INTO productTable2 SELECT * FROM productTable");
    books.execute("UPDATE productTable2 SET 数量 = 77");
    session().reopen(session().productTable2, "Select * From productTable2");
    ASSERT_TRUE(pickOneProduct(session(), session().productTable2, ShowSource::PeriodProducts));
    EXPECT_EQ(session().oneProduct->Fields("数量").text(), u"77");
}

TEST_F(StockDisplay, WithoutARowThereIsNoProductToPick) {
    open();
    EXPECT_FALSE(pickOneProduct(session(), session().productTable, ShowSource::Products));
    EXPECT_TRUE(oneProductLines(session().oneProduct).isEmpty());
}

TEST_F(StockDisplay, DeletingAStockInRowLeavesTheStock) {
    books.addProduct("p1", "纸", 5, 2.5, 9);
    books.addProduct("p2", "笔", 4, 1, 9);
    books.addProduct("p3", "笔", 4, 1, 9);
    open();
    session().product_Bank->MoveNext();
    deleteStockIn(session());
    EXPECT_EQ(history(), u"p1;p3");
    EXPECT_EQ(session().product_Bank->Fields("产品编号").text(), u"p3") << "the row behind it";
    EXPECT_EQ(books.stored("SELECT sum(数量) FROM productTable"), u"13.0");
    deleteStockIn(session());
    EXPECT_EQ(session().product_Bank->Fields("产品编号").text(), u"p1") << "at the end the last one";
    deleteStockIn(session());
    EXPECT_EQ(positionText(session().product_Bank), u"0/0");
}

} // namespace

#include "stock/stockCount.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class StockCountTest : public testing::Test {
protected:
    void open(int products = 2) {
        for (int i = 1; i <= products; ++i)
            books.addProduct(QStringLiteral("p%1").arg(i), QStringLiteral("货%1").arg(i), i, 1, 10 + i);
        session().open_rs();
    }
    Session& session() { return books.session(); }
    const RecordsetPtr& count() { return session().stock_Count_Bank; }
    QString counted() {
        return books.stored("SELECT 产品编号, 数量, 实物数, 亏_盈 FROM stock_Count_Bank ORDER BY rowid");
    }
    void type(int position, const char* column, const QString& text) {
        count()->moveTo(position);
        count()->Fields(QString::fromUtf8(column)).setValue(text);
    }

    TestBooks books;
};

TEST_F(StockCountTest, ANewCountIsAPictureOfTheStockWithNothingCounted) {
    open();
    ASSERT_TRUE(canCountStock(session()));
    newStockCount(session());
    EXPECT_EQ(counted(), u"p1|1.0|0.0|0;p2|2.0|0.0|0");
    EXPECT_EQ(count()->AbsolutePosition(), 2);
    EXPECT_EQ(count()->Fields("实物数").type(), ColumnType::Number);
    EXPECT_EQ(count()->Fields("亏_盈").type(), ColumnType::Text);
    EXPECT_EQ(books.stored("SELECT sum(数量) FROM productTable"), u"3.0");
}

TEST_F(StockCountTest, MakingACountIsOneTransaction) {
    open();
    const int before = session().cn.commits();
    newStockCount(session());
    EXPECT_EQ(session().cn.commits(), before + 1);
}

TEST_F(StockCountTest, AnEmptyStockIsNotCountedAndTheEarlierCountStays) {
    open();
    newStockCount(session());
    books.changeBehind("DELETE FROM productTable");
    session().openMainCursors();
    EXPECT_FALSE(canCountStock(session()));
    EXPECT_EQ(count()->RecordCount(), 2);
}

TEST_F(StockCountTest, AFilterOnTheStockIsTakenOffBefore) {
    open();
    session().productTable->setFilter("产品编号 = 'p1'");
    ASSERT_TRUE(canCountStock(session()));
    newStockCount(session());
    EXPECT_EQ(count()->RecordCount(), 2);
}

TEST_F(StockCountTest, ASearchOfTheStockWithoutHitsKeepsNoCountFromBeingMade) {
    open();
    session().productTable->setFilter("产品编号 = 'px'");
    ASSERT_TRUE(canCountStock(session()));
    newStockCount(session());
    EXPECT_EQ(count()->RecordCount(), 2);
}

TEST_F(StockCountTest, AMissingTableIsPassedOver) {
    books.execute("DROP TABLE stock_Count_Bank");
    open();
    newStockCount(session());
    EXPECT_EQ(count()->RecordCount(), 2);
}

TEST_F(StockCountTest, AProductAddedLaterIsInTheNextCountAlone) {
    open(1);
    newStockCount(session());
    session().productTable->AddNew();
    session().productTable->Fields("产品编号").setValue(QStringLiteral("p9"));
    session().productTable->Update();
    EXPECT_TRUE(continueStockCount(session()));
    EXPECT_EQ(count()->RecordCount(), 1);
    newStockCount(session());
    EXPECT_EQ(count()->RecordCount(), 2);
}

TEST_F(StockCountTest, WhatIsTypedIsPendingUntilSaved) {
    open();
    newStockCount(session());
    type(0, "实物数", "4");
    type(1, "亏_盈", "少一箱");
    EXPECT_EQ(counted(), u"p1|1.0|0.0|0;p2|2.0|0.0|0");
    saveStockCount(session());
    EXPECT_EQ(counted(), u"p1|1.0|4.0|0;p2|2.0|0.0|少一箱");
    EXPECT_EQ(count()->pendingCount(), 0);
    type(0, "实物数", "9");
    cancelStockCount(session());
    EXPECT_EQ(count()->Fields("实物数").number(), 4);
    EXPECT_EQ(books.stored("SELECT sum(数量) FROM productTable"), u"3.0")
        << "nothing goes back into the stock";
}

TEST_F(StockCountTest, GoingOnKeepsWhatIsNotSavedAndElseReadsAfresh) {
    open();
    EXPECT_FALSE(continueStockCount(session()));
    newStockCount(session());
    const RecordsetPtr first = count();
    EXPECT_TRUE(continueStockCount(session()));
    EXPECT_NE(count(), first);
    type(0, "实物数", "4");
    const RecordsetPtr typed = count();
    EXPECT_TRUE(continueStockCount(session()));
    EXPECT_EQ(count(), typed);
    EXPECT_EQ(count()->pendingCount(), 1);
}

TEST_F(StockCountTest, ACountIsContinuedByAnotherRunOfTheProgram) {
    open();
    newStockCount(session());
    type(0, "实物数", "4");
    saveStockCount(session());
    Session later(books.path());
    EXPECT_TRUE(continueStockCount(later));
    EXPECT_EQ(later.stock_Count_Bank->Fields("实物数").number(), 4);
}

TEST_F(StockCountTest, ClearingTakesTheRowsOfTheFilterAndKeepsThePosition) {
    open(4);
    newStockCount(session());
    for (const char* stood : {"p1", "p3", "p4"}) {
        count()->clearFilter();
        for (int i = 0; i < 4; ++i)
            type(i, "实物数", "7");
        saveStockCount(session());
        count()->setFilter("产品编号 <> 'p2'");
        count()->Find(keyCondition("产品编号", QString::fromUtf8(stood)));
        const int before = session().cn.commits();
        clearStockCount(session());
        EXPECT_EQ(session().cn.commits(), before + 1);
        EXPECT_EQ(counted(), u"p1|1.0|0.0|0;p2|2.0|7.0|0;p3|3.0|0.0|0;p4|4.0|0.0|0");
        EXPECT_EQ(count()->Fields("产品编号").text(), QString::fromUtf8(stood));
    }
}

TEST_F(StockCountTest, SavingWhatTheTableRefusesIsPassedOver) {
    open();
    newStockCount(session());
    type(0, "实物数", "4");
    runStatement(session().cn, "Drop Table stock_Count_Bank");
    saveStockCount(session());
    EXPECT_EQ(count()->pendingCount(), 1);
}

} // namespace

#include "stock/stockOut.h"
#include "recordset/error.h"
#include "stock/productRegister.h"
#include "support/errorOf.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class StockOutTest : public testing::TestWithParam<const char16_t*> {
protected:
    StockOutTest() {
        books.addProduct("p1", "纸", 10, 2.5, 5);
        books.addProduct("p2", "笔", -2, 1, 4, "90");
        session().open_rs();
        session().reopen(session().*road.history, "Select * From " + QString::fromUtf16(road.table));
    }
    Session& session() { return books.session(); }
    QStringList boxes() {
        QStringList texts = displayRecord(session());
        texts[ProductBox::Date] = session().todayText();
        return texts;
    }
    QString history() {
        return books.stored(
            QStringLiteral("SELECT 日期, 产品编号, 品名, 规格, 产地, 厂家, 计量单位, 成本, 数量, "
                           "%1, 说明 FROM \"%2\"")
                .arg(QString::fromUtf16(road.amountColumn), QString::fromUtf16(road.table)));
    }
    QString stock() { return books.stored("SELECT 数量 FROM productTable ORDER BY rowid"); }

    TestBooks books;
    const StockOut& road = *findStockOut(GetParam());
};

INSTANTIATE_TEST_SUITE_P(Roads, StockOutTest,
                         testing::Values(u"stock_ReturnFm1", u"stock_out_of_BankFm1",
                                         u"stock_no_use_BankFm1"));

TEST_P(StockOutTest, AMovementIsARowOfHistoryAndLessStockInOneTransaction) {
    const int before = session().cn.commits();
    EXPECT_EQ(bookStockOut(session(), road, boxes(), {3, 9.5, " 破损 "}), MoveResult::Booked);
    EXPECT_EQ(session().cn.commits(), before + 1);
    EXPECT_EQ(history(), u"2004-11-21|p1|纸|规格p1|产地p1|厂家p1|个|2.5|3.0|9.5|破损");
    EXPECT_EQ(stock(), u"7.0;-2.0");
}

TEST_P(StockOutTest, TheAmountTypedOverIsKeptAndTheStockFollowsTheQuantityAlone) {
    bookStockOut(session(), road, boxes(), {1, 999, ""});
    EXPECT_TRUE(history().contains(u"999.0"));
    EXPECT_EQ(stock(), u"9.0;-2.0");
}

TEST_P(StockOutTest, ANegativeQuantityAddsToTheStock) {
    bookStockOut(session(), road, boxes(), {-4, -10, ""});
    EXPECT_EQ(stock(), u"14.0;-2.0");
}

TEST_P(StockOutTest, ARefusedTextIsToldAndBookedOnOrEndsTheRoutine) {
    QStringList tooLong = boxes();
    tooLong[ProductBox::Name] = QString(80, u'长');
    if (road.writeCaught) {
        EXPECT_EQ(bookStockOut(session(), road, tooLong, {3, 9, ""}), MoveResult::WriteFailed);
        EXPECT_TRUE(history().contains("2004-11-21|p1|Null|Null|Null|Null|Null|Null|3.0|9.0|"))
            << "the row stands without the text and all behind it: " << history().toStdString();
        EXPECT_EQ(stock(), u"7.0;-2.0") << "the flag of the failure is read by nobody";
    } else {
        EXPECT_EQ(errorOf([&] {
                      bookStockOut(session(), road, tooLong, {3, 9, ""});
                  }),
                  ErrorNumber::TextTooLong);
        EXPECT_EQ(stock(), u"10.0;-2.0");
    }
}

TEST(StockOutRoads, DifferAsTheirTableSays) {
    struct Row {
        const char16_t* chooser;
        const char16_t* dialog;
        const char16_t* table;
        const char16_t* amount;
        const char16_t* zero;
        const char16_t* question;
        const char16_t* excess;
        bool searchCaught;
        bool writeCaught;
        const char16_t* report;
        const char16_t* periodReport;
    };
    const Row rows[] = {
        {u"stock_ReturnFm1", u"stock_ReturnFm3", u"return_Bank", u"退货款", u"请输入退货数量！",
         u"确认该产品退货及退货数量吗？", u"退货数已超出现有销售库存数：", true, false, u"showprint_rs18",
         u"showprint_rs19"},
        {u"stock_out_of_BankFm1", u"stock_out_of_BankFm3", u"out_of_Bank", u"合计金额",
         u"请输入产品调拨数量！", u"确认该产品调拨及调拨数量吗？", u"产品调拨数已超出现有销售库存数：", true,
         true, u"showprint_rs23", u"showprint_rs19"},
        {u"stock_no_use_BankFm1", u"stock_no_use_BankFm3", u"no_use_Bank", u"亏损金额", u"请输入报废数量！",
         u"确认该产品报废及报废数量吗？", u"产品报废数已超出现有销售库存数：", false, true, u"showprint_rs18",
         u"showprint_rs19"}};
    for (const Row& row : rows) {
        const StockOut* road = findStockOut(row.chooser);
        ASSERT_NE(road, nullptr);
        const std::pair<const char16_t*, const char16_t*> texts[] = {
            {road->dialog, row.dialog},       {road->table, row.table},
            {road->amountColumn, row.amount}, {road->zeroMessage, row.zero},
            {road->question, row.question},   {road->excessMessage, row.excess},
            {road->report, row.report},       {road->periodReport, row.periodReport}};
        for (const auto& [ours, wanted] : texts)
            EXPECT_EQ(QStringView(ours), QStringView(wanted));
        EXPECT_EQ(road->searchCaught, row.searchCaught);
        EXPECT_EQ(road->writeCaught, row.writeCaught);
    }
    EXPECT_EQ(findStockOut(u"stockFm1"), nullptr);
}

TEST(StockOutBoxes, AnEmptyChoiceHasZerosInThreeBoxesAndThePriceEmpty) {
    EXPECT_EQ(clearChoice().join(u'|'), u"|||||||0|0|0|");
}

} // namespace

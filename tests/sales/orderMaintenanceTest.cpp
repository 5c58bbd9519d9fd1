#include "sales/orderMaintenance.h"
#include "data/recount.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class OrderMaintenanceTest : public testing::Test {
protected:
    OrderMaintenanceTest() {
        books.addClient("7", "甲");
        books.addClient("8", "乙");
        books.addProduct("p1", "纸", 10, 2, 5);
        books.addProduct("p2", "笔", 3, 1, 4, "90");
        books.addLine("21", "7", "p1", "2004-01-05", 5, 25, 2);
        books.addLine("21", "7", "p2", "2004-01-05", 2, 8, 1);
        books.addLine("22", "8", "p1", "2004-01-06", 1, 5, 2);
        books.addLine("23", "7", "p1", "2004-01-07", 3, 15, 2);
        session().open_rs();
        client_totals_recount(session().cn, session().clientTable, session().buyList);
        book.open();
    }
    Session& session() { return books.session(); }
    QString stock(const char* product = "p1") {
        return books.stored(QStringLiteral("SELECT 数量 FROM productTable WHERE 产品编号 = '%1'")
                                .arg(QString::fromUtf8(product)));
    }
    QString totals(const char* client) {
        return books.stored(
            QStringLiteral(
                "SELECT 消费合计, 差额利润, 购买数, 差额利润率 FROM clientTable WHERE 客户编号 = '%1'")
                .arg(QString::fromUtf8(client)));
    }
    QString lines() {
        return books.stored("SELECT 订单号, 产品编号, 数量, 实付 FROM buyList ORDER BY rowid");
    }
    QString column(const RecordsetPtr& orders) {
        QStringList numbers;
        for (int i = 0; i < orders->RecordCount(); ++i)
            numbers << fieldText(orders->valueAt(i, 0));
        return numbers.join(u' ');
    }
    void choose(const char* order) {
        ASSERT_TRUE(book.findOrder(QString::fromUtf8(order)));
        EXPECT_EQ(book.chooseOrder(), QString::fromUtf8(order));
    }
    /// Saves the line at a position of the chosen order with one box changed.
    void saveLine(int position, int box, const QString& text) {
        book.lines()->moveTo(position);
        QStringList boxes = book.record_Display();
        boxes[box] = text;
        book.save(boxes);
    }

    TestBooks books;
    OrderMaintenance book{books.session()};
};

TEST_F(OrderMaintenanceTest, OpensWithTheDistinctOrdersAndNoLines) {
    EXPECT_EQ(book.orders()->RecordCount(), 3);
    EXPECT_EQ(book.lines()->RecordCount(), 0);
    EXPECT_EQ(book.lines()->fieldNames(), session().buyList->fieldNames());
    EXPECT_FALSE(book.orderChosen());
    EXPECT_EQ(books.stored("SELECT count(*) FROM buyList3"), u"0");
}

TEST_F(OrderMaintenanceTest, AMissingLinesTableIsMadeAgain) {
    books.changeBehind("DROP TABLE buyList3");
    book.open();
    EXPECT_EQ(book.lines()->RecordCount(), 0);
}

TEST_F(OrderMaintenanceTest, AnOrderIsChosenWithItsLastLine) {
    choose("21");
    EXPECT_TRUE(book.orderChosen());
    EXPECT_EQ(book.lines()->RecordCount(), 2);
    EXPECT_EQ(book.lines()->AbsolutePosition(), 2);
    EXPECT_EQ(book.totals().quantity, 7);
    EXPECT_EQ(book.totals().paid, 33);
    EXPECT_EQ(book.boughtOfProduct(), 2);
    book.lines()->MoveFirst();
    EXPECT_EQ(book.boughtOfProduct(), 8) << "over all his orders";
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = '7' And 产品编号 = 'p1'");
}

TEST_F(OrderMaintenanceTest, AnOrderNumberIsFoundWithoutLoadingItsLines) {
    EXPECT_TRUE(book.findOrder("22"));
    EXPECT_EQ(book.orders()->AbsolutePosition(), 2);
    EXPECT_EQ(book.lines()->RecordCount(), 0);
    EXPECT_FALSE(book.findOrder("99"));
    EXPECT_EQ(book.orders()->AbsolutePosition(), 3);
    EXPECT_FALSE(book.findOrder("it's"));
}

TEST_F(OrderMaintenanceTest, LoweringALineGivesBackAndRaisingItTakes) {
    choose("21");
    saveLine(0, LineBox::Quantity, "3");
    EXPECT_EQ(stock(), u"12.0");
    saveLine(0, LineBox::Quantity, "5");
    EXPECT_EQ(stock(), u"10.0");
    EXPECT_EQ(book.lines()->AbsolutePosition(), 2) << "a save ends on the last line";
}

TEST_F(OrderMaintenanceTest, ALineSavedWithNothingGivesItsOldQuantityBackAndStays) {
    choose("21");
    saveLine(0, LineBox::Quantity, "0");
    EXPECT_EQ(stock(), u"15.0");
    EXPECT_EQ(books.stored("SELECT 数量 FROM buyList WHERE rowid = 1"), u"0.0");
    EXPECT_EQ(book.lines()->RecordCount(), 2);
}

TEST_F(OrderMaintenanceTest, ANegativeLineGivesBackTheOldQuantityAlone) {
    choose("21");
    saveLine(0, LineBox::Quantity, "-4");
    EXPECT_EQ(stock(), u"15.0");
}

TEST_F(OrderMaintenanceTest, NothingGuardsASaveAndTheStockMayFallBelowZero) {
    choose("21");
    saveLine(0, LineBox::Quantity, "50");
    EXPECT_EQ(stock(), u"-35.0");
}

TEST_F(OrderMaintenanceTest, ASaveRecomputesTheMarginAndEmptiesTheProductInHand) {
    session().currentProductNum = "p9";
    choose("21");
    saveLine(0, LineBox::Paid, "30");
    EXPECT_EQ(books.stored("SELECT 实付, 差额利润 FROM buyList WHERE rowid = 1"), u"30.0|20.0");
    EXPECT_EQ(session().currentProductNum, u"");
}

TEST_F(OrderMaintenanceTest, TheRateIsHeldInSinglePrecision) {
    books.addLine("24", "8", "p1", "2004-01-08", 1, 1e9, 0.1);
    book.open();
    session().currentClientNum = "8";
    choose("22");
    saveLine(0, LineBox::Paid, "0");
    saveLine(0, LineBox::Quantity, "0");
    // 99.99999999 percent, which is 100 in single precision.
    EXPECT_EQ(totals("8"), u"1000000000.0|999999999.9|1.0|100%");
}

TEST_F(OrderMaintenanceTest, ASaveRecomputesTheCustomerInHandWhoeverThatIs) {
    session().currentClientNum = "8";
    choose("21");
    const QString before = totals("7");
    books.changeBehind("UPDATE clientTable SET 消费合计 = 999 WHERE 客户编号 = '8'");
    session().reopen(session().clientTable, "Select * From clientTable");
    saveLine(0, LineBox::Quantity, "3");
    EXPECT_EQ(totals("7"), before) << "the order's own customer is not refreshed";
    EXPECT_EQ(totals("8"), u"5.0|3.0|1.0|60%");
}

TEST_F(OrderMaintenanceTest, ARefusedDateStopsTheWritingAndSavingGoesOn) {
    choose("21");
    book.lines()->moveTo(0);
    QStringList boxes = book.record_Display();
    boxes[LineBox::Product] = "p2";
    boxes[LineBox::Date] = "2004-13-45";
    boxes[LineBox::Quantity] = "1";
    book.save(boxes);
    EXPECT_EQ(books.stored("SELECT 产品编号, 日期, 数量 FROM buyList WHERE rowid = 1"), u"p2|2004-01-05|5.0")
        << "what stands before the date is written, what stands behind it is not";
    EXPECT_EQ(stock(), u"10.0");
}

TEST_F(OrderMaintenanceTest, TextsAreCutToTheirColumns) {
    choose("21");
    saveLine(0, LineBox::Name, QString(80, u'长'));
    EXPECT_EQ(books.stored("SELECT length(品名) FROM buyList WHERE rowid = 1"), u"50");
    saveLine(0, LineBox::Date, "2004-02-03 12:30");
    EXPECT_EQ(books.stored("SELECT 日期 FROM buyList WHERE rowid = 1"), u"2004-02-03");
}

TEST_F(OrderMaintenanceTest, ASaveBringsADeletedProductBackWithTheLinesQuantity) {
    books.changeBehind("DELETE FROM productTable WHERE 产品编号 = 'p1'");
    book.open();
    choose("21");
    saveLine(0, LineBox::Quantity, "4");
    EXPECT_EQ(
        books.stored("SELECT 日期, 数量, 单价, 成本, 折扣, 计量单位 FROM productTable WHERE 产品编号 = 'p1'"),
        u"2004-11-21|4.0|1.0|2.0|100|个");
}

TEST_F(OrderMaintenanceTest, ADeletedLineGivesItsQuantityBackAndRefreshesItsCustomer) {
    choose("21");
    book.lines()->moveTo(0);
    EXPECT_TRUE(book.deleteLine().toldTotals);
    EXPECT_EQ(stock(), u"15.0");
    EXPECT_EQ(lines(), u"21|p2|2.0|8.0;22|p1|1.0|5.0;23|p1|3.0|15.0");
    EXPECT_EQ(totals("7"), u"23.0|15.0|5.0|65.21%");
    EXPECT_EQ(session().currentClientNum, u"7");
    EXPECT_EQ(book.lines()->AbsolutePosition(), 1);
    EXPECT_TRUE(book.orderChosen());
}

TEST_F(OrderMaintenanceTest, TheLastLineTakesItsOrderOffTheList) {
    choose("22");
    EXPECT_TRUE(book.deleteLine().toldTotals);
    EXPECT_EQ(book.orders()->RecordCount(), 2);
    EXPECT_FALSE(book.orderChosen());
    EXPECT_EQ(totals("8"), u"0.0|0.0|0.0|0%");
    EXPECT_EQ(book.totals().quantity, 0);
    EXPECT_EQ(book.boughtOfProduct(), 0);
}

TEST_F(OrderMaintenanceTest, TheListFollowsOnlyItsRequery) {
    choose("21");
    session().buyList->setFilter("订单号 = '23'");
    session().buyList->Delete();
    book.deleteLine();
    EXPECT_EQ(book.orders()->RecordCount(), 3) << "an order that has lines left asks for none";
    book.deleteLine();
    EXPECT_EQ(column(book.orders()), u"22");
}

TEST_F(OrderMaintenanceTest, ADeletedLineBringsAMissingProductBackOfToday) {
    books.changeBehind("DELETE FROM productTable WHERE 产品编号 = 'p1'");
    book.open();
    choose("21");
    book.lines()->moveTo(0);
    EXPECT_FALSE(book.deleteLine().toldTotals) << "no totals are told then";
    EXPECT_EQ(books.stored("SELECT 日期, 数量 FROM productTable WHERE 产品编号 = 'p1'"), u"2004-11-21|5.0");
}

TEST_F(OrderMaintenanceTest, ADeletedLineOfAMissingCustomerLeavesTheStock) {
    books.changeBehind("DELETE FROM clientTable WHERE 客户编号 = '7'");
    session().reopen(session().clientTable, "Select * From clientTable");
    choose("21");
    book.lines()->moveTo(0);
    EXPECT_FALSE(book.deleteLine().toldTotals);
    EXPECT_EQ(stock(), u"10.0");
    EXPECT_EQ(session().clientTable->AbsolutePosition(), 1);
}

TEST_F(OrderMaintenanceTest, WithoutAnyCustomerADeletionLeavesTheStockToo) {
    books.changeBehind("DELETE FROM clientTable");
    session().reopen(session().clientTable, "Select * From clientTable");
    choose("22");
    EXPECT_FALSE(book.deleteLine().toldTotals);
    EXPECT_EQ(stock(), u"10.0");
}

TEST_F(OrderMaintenanceTest, AWholeOrderGoesLineByLineAndTheCustomerInHandIsRecomputed) {
    session().currentClientNum = "8";
    choose("21");
    const QString before = totals("7");
    int yields = 0;
    book.deleteOrder([&yields] { ++yields; });
    EXPECT_EQ(yields, 2);
    EXPECT_EQ(stock("p1") + u' ' + stock("p2"), u"15.0 5.0");
    EXPECT_EQ(lines(), u"22|p1|1.0|5.0;23|p1|3.0|15.0");
    EXPECT_EQ(book.orders()->RecordCount(), 2);
    EXPECT_FALSE(book.orderChosen());
    EXPECT_EQ(session().currentClientNum, u"8") << "set by the deletion of a line alone";
    EXPECT_EQ(totals("7"), before);
    EXPECT_EQ(totals("8"), u"5.0|3.0|1.0|60%");
    EXPECT_EQ(session().buyList->RecordCount(), 2);
}

TEST_F(OrderMaintenanceTest, EachChangeIsOneTransaction) {
    choose("21");
    int before = session().cn.commits();
    saveLine(0, LineBox::Quantity, "3");
    EXPECT_EQ(session().cn.commits(), before + 1);
    before = session().cn.commits();
    book.deleteLine();
    EXPECT_EQ(session().cn.commits(), before + 1);
    before = session().cn.commits();
    book.deleteOrder([] {});
    EXPECT_EQ(session().cn.commits(), before + 1);
}

TEST_F(OrderMaintenanceTest, TheFiltersThatASaveTakesOffLeaveCustomersAndLinesOnTheirFirstRows) {
    session().clientTable->MoveLast();
    session().buyList->MoveLast();
    session().currentClientNum = "8";
    choose("21");
    saveLine(0, LineBox::Quantity, "3");
    EXPECT_EQ(session().clientTable->AbsolutePosition(), 1);
    EXPECT_EQ(session().buyList->AbsolutePosition(), 1);
}

TEST_F(OrderMaintenanceTest, TheStockIsComparedWithTheWholeNewQuantityOfTheLine) {
    EXPECT_EQ(orderStockFault(session(), "p1", "10"), u"");
    EXPECT_EQ(orderStockFault(session(), "p1", "11"), u"超出库存数，该产品现有库存10");
    EXPECT_EQ(orderStockFault(session(), "p1", "-5"), u"");
    EXPECT_EQ(orderStockFault(session(), "nn", "1"), u"库存中无此产品");
    books.changeBehind("UPDATE productTable SET 数量 = 0");
    book.open();
    EXPECT_EQ(orderStockFault(session(), "p1", "1"), u"该产品已无库存！")
        << "though the line is only lowered";
}

struct AmountCase {
    const char* quantity;
    const char* discount;
    const char* expected; // due, discount, paid
};
class OrderAmounts : public testing::TestWithParam<AmountCase> {};

TEST_P(OrderAmounts, FollowQuantityAndDiscount) {
    const LineAmounts amounts = orderLineAmounts(GetParam().quantity, "5", GetParam().discount);
    EXPECT_EQ(amounts.due + u' ' + amounts.discount + u' ' + amounts.paid,
              QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, OrderAmounts,
    testing::Values(AmountCase{"4", "90", "20 90 18"}, AmountCase{"4", "0", "20 100 20"},
                    AmountCase{"4", "", "20 100 20"}, AmountCase{"4", "120", "20 100 20"},
                    AmountCase{"4", "100", "20 100 20"}, AmountCase{"4", "-1", "20 100 20"},
                    AmountCase{"4", "0.0", "20 0.0 0"}, AmountCase{"-4", "50", "-20 50 -10"},
                    AmountCase{"0.5", "0.5", "2.5 0.5 0.0125"}));

TEST(OrderTotals, AreToldInTwoLines) {
    EXPECT_EQ(orderTotalsText({7, 33.5}), u"总计购物数：7\n总计金额数：33.5");
}

} // namespace

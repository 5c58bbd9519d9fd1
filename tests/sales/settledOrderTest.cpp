#include "sales/settledOrder.h"

#include "sales/settlement.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class Settled : public testing::Test {
protected:
    Settled() {
        books.addClient("7", "红木行", "王平");
        books.addProduct("p1", "打印纸", 100, 2, 5);
        books.addLine("900", "7", "p1", "2003-05-01", 1, 4, 2);
        session().open_rs();
        session().readCurrent();
        session().currentClientNum = "7";
        basket = openBasket(session());
    }
    Session& session() { return books.session(); }
    void put(double quantity, double paid) {
        basket->AddNew();
        basket->Fields("订单号").setValue(QStringLiteral("1001"));
        basket->Fields("客户编号").setValue(QStringLiteral("7"));
        basket->Fields("产品编号").setValue(QStringLiteral("p1"));
        basket->Fields("日期").setValue(QStringLiteral("2004-11-21"));
        basket->Fields("数量").setValue(quantity);
        basket->Fields("实付").setValue(paid);
        basket->Update();
    }
    SettledOrder settleIt() {
        const SettledOrder settled = orderOfBasket(session(), basket);
        settle(session(), basket);
        return settled;
    }

    TestBooks books;
    RecordsetPtr basket;
};

TEST_F(Settled, IsToldWithItsNumberItsQuantityAndItsAmount) {
    put(8.5, 800);
    put(2.5, 82.825);
    EXPECT_EQ(settledText(settleIt()), u"订单 1001 已结算：11 件，882.825");
}

TEST_F(Settled, IsTheOrderInHandWhenItIsPrinted) {
    put(8, 40);
    put(3, 12.5);
    const SettledOrder settled = settleIt();
    session().currentClientNum = "8"; // the register has gone on
    ASSERT_TRUE(takeSettledOrder(session(), settled));
    EXPECT_EQ(session().buyList->RecordCount(), 2);
    EXPECT_EQ(session().currentOrderNum, u"1001");
    EXPECT_EQ(session().currentClientName, u"红木行");
    EXPECT_EQ(session().periodDate1, u"2004-11-21");
    EXPECT_EQ(session().orderQuantity, u"11");
    EXPECT_EQ(session().orderAmount, u"52.5");
}

TEST_F(Settled, ThatWasDeletedSinceLeavesAllAsItWas) {
    put(8, 40);
    const SettledOrder settled = settleIt();
    session().buyList->setFilter("订单号 = '1001'");
    session().buyList->Delete();
    session().buyList->setFilter("订单号 = '900'");
    session().currentOrderNum = "900";
    EXPECT_FALSE(takeSettledOrder(session(), settled));
    EXPECT_EQ(session().buyList->Filter(), u"订单号 = '900'");
    EXPECT_EQ(session().currentOrderNum, u"900");
}

TEST_F(Settled, WhoseNumbersHoldApostrophesIsFoundAllTheSame) {
    put(1, 5);
    SettledOrder settled = settleIt();
    settled.order = "o'1";
    EXPECT_FALSE(takeSettledOrder(session(), settled));
}

} // namespace

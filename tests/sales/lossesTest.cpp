#include "sales/losses.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class Losses : public testing::Test {
protected:
    Losses() {
        books.addClient("7");
        books.addClient("8");
        books.addLine("1", "7", "p1", "2004-01-05", 2, 20, 1);
        books.addLine("2", "8", "p1", "2004-01-06", 1, 10, 1);
        books.addLine("2", "8", "p2", "2004-01-06", 3, 30.5, 1);
        books.addLine("3", "7", "p1", "2004-01-07", 1, 10, 1);
        books.session().open_rs();
    }
    Session& session() { return books.session(); }
    TestBooks books;
};

TEST_F(Losses, ACustomerGoesWithHisLinesButTheFirstLineOfTheTableStays) {
    EXPECT_EQ(lossOfClient(session()), u"客户 7 及其 1 条购物记录");
    session().clientTable->MoveLast();
    EXPECT_EQ(lossOfClient(session()), u"客户 8 及其 2 条购物记录");
}

TEST_F(Losses, TheFirstLineIsThatOfTheCursorsOrderWithoutItsFilter) {
    session().buyList->setSort("日期 Desc");
    session().buyList->setFilter("客户编号 = '8'");
    EXPECT_EQ(lossOfClient(session()), u"客户 7 及其 1 条购物记录");
    session().clientTable->MoveLast();
    EXPECT_EQ(lossOfClient(session()), u"客户 8 及其 2 条购物记录");
    session().buyList->setSort("客户编号 Desc");
    EXPECT_EQ(lossOfClient(session()), u"客户 8 及其 1 条购物记录");
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = '8'") << "asking changes nothing";
}

TEST_F(Losses, ACustomersTypedNumberIsNotYetHis) {
    session().clientTable->Fields("客户编号").setValue(QString("8"));
    EXPECT_EQ(lossOfClient(session()), u"客户 7 及其 1 条购物记录");
}

TEST_F(Losses, OrdersAndLinesTellTheirFigures) {
    session().buyList->setFilter("订单号 = '2'");
    session().buyList->MoveLast();
    EXPECT_EQ(lossOfLine(session().buyList), u"订单 2 的 1 行：p2 货，3 件，30.5 元");
    EXPECT_EQ(lossOfOrder(session().buyList), u"订单 2：2 行，40.5 元");
}

} // namespace

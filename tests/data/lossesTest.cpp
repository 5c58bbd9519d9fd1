#include "data/losses.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class Losses : public testing::Test {
protected:
    Losses() {
        books.addClient("7");
        books.addProduct("p1", "打印纸", 10, 2, 5);
        books.addLine("1", "7", "p1", "2004-01-05", 2, 20, 1);
        books.addLine("2", "8", "p1", "2004-01-06", 1, 10, 1);
        books.addLine("2", "8", "p2", "2004-01-06", 3, 30.5, 1);
        books.session().open_rs();
    }
    Session& session() { return books.session(); }
    TestBooks books;
};

TEST_F(Losses, OrdersAndLinesTellTheirFigures) {
    session().buyList->setFilter("订单号 = '2'");
    session().buyList->MoveLast();
    EXPECT_EQ(lossOfLine(session().buyList), u"订单 2 的 1 行：p2 货，3 件，30.5 元");
    EXPECT_EQ(lossOfOrder(session().buyList), u"订单 2：2 行，40.5 元");
}

TEST_F(Losses, AnOrderTellsWhatWasPaidAndNotWhatWasDue) {
    books.changeBehind("UPDATE buyList SET 合计 = 100 WHERE 订单号 = '2'");
    session().openMainCursors();
    session().buyList->setFilter("订单号 = '2'");
    EXPECT_EQ(lossOfOrder(session().buyList), u"订单 2：2 行，40.5 元");
    EXPECT_EQ(lossOfLine(session().buyList), u"订单 2 的 1 行：p1 货，1 件，10 元");
}

TEST_F(Losses, CustomersProductsAndStockInsTellWhatIsStored) {
    session().clientTable->Fields("客户编号").setValue(QString("8"));
    EXPECT_EQ(lossOfClient(session().clientTable, 3), u"客户 7 及其 3 条购物记录");
    session().productTable->Fields("数量").setValue(99.0);
    EXPECT_EQ(lossOfProduct(session().productTable), u"产品 p1 打印纸，库存 10");
    session().reopen(session().product_Bank, "Select * From product_Bank");
    EXPECT_EQ(lossOfStockIn(session().product_Bank), u"产品 p1 打印纸 在 2004-1-5 的入库记录，数量 10");
}

TEST_F(Losses, AWholeTableGoesWhateverIsShownOfIt) {
    session().buyList->setFilter("订单号 = '1'");
    EXPECT_EQ(lossOfTable(session().cn, "buyList"), u"全部 3 条记录，连同现在没有显示的");
}

} // namespace

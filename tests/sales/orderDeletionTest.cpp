// Deletions in an order while other views have left their conditions on the shared cursors.
#include "sales/orderMaintenance.h"
#include "support/smallShop.h"

#include <gtest/gtest.h>

namespace {

class OrderDeletion : public testing::Test {
protected:
    OrderDeletion() {
        addSmallShop(books);
        books.addLine("21", "7", "p1", "2004-01-05", 5, 25, 2);
        books.addLine("21", "7", "p2", "2004-01-05", 2, 8, 1);
        books.addLine("21", "7", "p1", "2004-01-05", 1, 5, 2);
        session().open_rs();
        book.open();
        book.findOrder("21");
        book.chooseOrder();
    }
    Session& session() { return books.session(); }
    QString stock() { return books.stored("SELECT 数量 FROM productTable ORDER BY rowid"); }
    QString product() { return book.lines()->Fields("产品编号").text(); }
    void hideEverybody() { session().clientTable->setFilter("单位名称 = '没有'"); }

    TestBooks books;
    OrderMaintenance book{books.session()};
};

TEST_F(OrderDeletion, ALineGivesItsStockBackUnderARegisterSearchWithoutHits) {
    hideEverybody();
    book.lines()->MoveFirst();
    EXPECT_TRUE(book.deleteLine().toldTotals);
    EXPECT_EQ(stock(), u"15.0;3.0");
    EXPECT_EQ(books.stored("SELECT 消费合计 FROM clientTable WHERE 客户编号 = '7'"), u"13.0");
}

TEST_F(OrderDeletion, AnOrderGivesItsStockBackUnderARegisterSearchWithoutHits) {
    hideEverybody();
    book.deleteOrder([] {});
    EXPECT_EQ(stock(), u"16.0;5.0");
}

TEST_F(OrderDeletion, ALineGivesItsStockBackUnderASearchOfTheStockWithoutHits) {
    session().productTable->setFilter("品名 = '没有'");
    book.lines()->MoveFirst();
    book.deleteLine();
    EXPECT_EQ(stock(), u"15.0;3.0") << "no second row of the product came";
}

TEST_F(OrderDeletion, TheFollowingLineIsCurrentAndAtTheEndTheLast) {
    book.lines()->MoveFirst();
    book.deleteLine();
    EXPECT_EQ(product(), u"p2");
    book.lines()->MoveLast();
    book.deleteLine();
    EXPECT_EQ(product(), u"p2");
}

TEST_F(OrderDeletion, AfterAnOrdersLastLineAllTotalsAreZero) {
    for (int i = 0; i < 3; ++i)
        book.deleteLine();
    EXPECT_EQ(book.totals().quantity, 0);
    EXPECT_EQ(book.totals().paid, 0);
    EXPECT_EQ(book.boughtOfProduct(), 0);
    EXPECT_FALSE(book.orderChosen());
    EXPECT_EQ(stock(), u"16.0;5.0");
}

TEST_F(OrderDeletion, WithoutAnyCustomerTheStockStays) {
    books.changeBehind("DELETE FROM clientTable");
    session().openMainCursors();
    book.deleteLine();
    EXPECT_EQ(stock(), u"10.0;3.0");
}

} // namespace

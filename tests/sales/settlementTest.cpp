#include "sales/settlement.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class Settlement : public testing::Test {
protected:
    Settlement() {
        books.addClient("7", "红木行", "王平");
        books.addClient("8", "红旗店", "李");
        books.addProduct("p1", "打印纸", 10, 2, 5);
        session().open_rs();
        session().readCurrent();
        basket = openBasket(session());
    }
    Session& session() { return books.session(); }
    void put(double quantity) {
        basket->AddNew();
        for (const auto& [column, value] : {std::pair{"订单号", counterText(session().nextOrderNum)},
                                            {"客户编号", QStringLiteral("7")},
                                            {"产品编号", QStringLiteral("p1")},
                                            {"日期", QStringLiteral("2004-11-21")}})
            basket->Fields(QString::fromUtf8(column)).setValue(value);
        basket->Fields("数量").setValue(quantity);
        basket->Fields("实付").setValue(quantity * 5);
        basket->Fields("差额利润").setValue(quantity * 3);
        basket->Update();
    }
    QString lines() { return books.stored("SELECT 订单号, 数量 FROM buyList ORDER BY rowid"); }
    QString totals() { return books.stored("SELECT 消费合计, 购买数 FROM clientTable ORDER BY rowid"); }
    QString stock() { return books.stored("SELECT 数量 FROM productTable"); }

    TestBooks books;
    RecordsetPtr basket;
};

TEST_F(Settlement, WithoutACurrentCustomerEverythingElseIsBooked) {
    session().clientTable->setFilter("客户编号 = '9'");
    put(2);
    settle(session(), basket);
    EXPECT_EQ(lines(), u"1001|2.0");
    EXPECT_EQ(stock(), u"8.0");
    EXPECT_EQ(totals(), u"0.0|0.0;0.0|0.0") << "the next start counts them";
    EXPECT_EQ(books.stored("SELECT counterNum2 FROM counterCode"), u"1002.0");
    EXPECT_FALSE(basket->hasRows());
}

TEST_F(Settlement, AnotherCustomerOnWhomAnotherWindowPutTheCursorIsWritten) {
    session().clientTable->MoveLast();
    put(2);
    settle(session(), basket);
    EXPECT_EQ(totals(), u"0.0|0.0;10.0|2.0");
}

TEST_F(Settlement, ABuyerDeletedMeanwhileStopsNothing) {
    Recordset other(session().cn);
    other.Open("Select * From clientTable");
    other.Delete();
    put(1);
    settle(session(), basket);
    EXPECT_EQ(lines(), u"1001|1.0");
    EXPECT_EQ(stock(), u"9.0");
    EXPECT_EQ(totals(), u"0.0|0.0");
}

} // namespace

#include "data/workTable.h"
#include "maintenance/tableMaintenance.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class Maintenance : public testing::Test {
protected:
    Maintenance() {
        books.addClient("7", "甲");
        books.addClient("8", "乙");
        books.addProduct("p1", "纸", 10, 2, 5);
        books.addLine("21", "7", "p1", "2004-01-05", 5, 25, 2);
        books.addLine("21", "7", "p9", "2004-01-05", 2, 8, 1);
        books.addLine("22", "8", "p1", "2004-01-06", 1, 5, 2);
        session().open_rs();
    }
    Session& session() { return books.session(); }
    QString count(const char* table) {
        return books.stored(QStringLiteral("SELECT count(*) FROM \"%1\"").arg(QString::fromUtf8(table)));
    }
    QString stock() { return books.stored("SELECT 数量 FROM productTable"); }

    TestBooks books;
};

TEST_F(Maintenance, ACustomerGoesWithHisLinesInOneTransaction) {
    const int before = session().cn.commits();
    int yields = 0;
    removeClient(session(), [&yields] { ++yields; });
    EXPECT_EQ(session().cn.commits(), before + 1);
    EXPECT_EQ(yields, 2);
    EXPECT_EQ(books.stored("SELECT 客户编号 FROM buyList"), u"8");
    EXPECT_EQ(session().clientTable->Fields("客户编号").text(), u"8");
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = '7'");
    EXPECT_EQ(stock(), u"10.0");
}

TEST_F(Maintenance, TheLastCustomerLeavesNoPosition) {
    removeClient(session(), [] {});
    removeClient(session(), [] {});
    EXPECT_EQ(positionText(session().clientTable), u"0/0");
    EXPECT_EQ(count("buyList"), u"0");
}

TEST_F(Maintenance, ALineGivesItsQuantityBackAndTouchesNoCustomer) {
    books.execute("UPDATE clientTable SET 消费合计 = 33");
    removeLine(session(), {});
    EXPECT_EQ(stock(), u"15.0");
    EXPECT_EQ(books.stored("SELECT 消费合计 FROM clientTable WHERE 客户编号 = '7'"), u"33.0");
    EXPECT_EQ(session().buyList->Fields("产品编号").text(), u"p9");
}

TEST_F(Maintenance, ALineOfAMissingProductJustGoes) {
    session().buyList->MoveNext();
    removeLine(session(), {});
    EXPECT_EQ(count("buyList"), u"2");
    EXPECT_EQ(stock(), u"10.0");
}

TEST_F(Maintenance, TheLastLineOfAllGivesNothingBack) {
    removeLine(session(), {});
    removeLine(session(), {});
    EXPECT_EQ(stock(), u"15.0");
    removeLine(session(), {});
    EXPECT_EQ(stock(), u"15.0");
    EXPECT_EQ(count("buyList"), u"0");
}

TEST_F(Maintenance, AProductGoesAloneAndAllProductsLeaveTheHistory) {
    removeProduct(session(), {});
    EXPECT_EQ(count("productTable") + count("product_Bank") + count("buyList"), u"013");
    books.addProduct("p2", "笔", 1, 1, 1);
    session().openMainCursors();
    removeAllRows(session(), maintainedTables()[2]);
    EXPECT_EQ(count("productTable") + count("product_Bank"), u"02");
    EXPECT_EQ(session().productTable->RecordCount(), 0);
}

TEST_F(Maintenance, AllCustomersLeaveTheirLines) {
    removeAllRows(session(), maintainedTables()[0]);
    EXPECT_EQ(count("clientTable") + count("buyList"), u"03");
}

TEST_F(Maintenance, EditsAreSavedTogetherAndGivenUpTogether) {
    const RecordsetPtr& clients = session().clientTable;
    for (int i = 0; i < 2; ++i) {
        clients->moveTo(i);
        clients->Fields("电话").setValue(QStringLiteral("12%1").arg(i));
    }
    const int before = session().cn.commits();
    EXPECT_EQ(saveQuietly(session(), clients), u"");
    EXPECT_EQ(session().cn.commits(), before + 1);
    EXPECT_EQ(books.stored("SELECT 电话 FROM clientTable"), u"120;121");
    clients->Fields("电话").setValue(QStringLiteral("x"));
    discardEdits(clients);
    EXPECT_EQ(clients->Fields("电话").text(), u"121");
}

TEST_F(Maintenance, SearchesAreWordedAsTheirTables) {
    EXPECT_EQ(maintainedTables()[0].condition("a"),
              u"客户编号 Like '%a%' Or 单位名称 Like '%a%' Or 部门 Like '%a%' Or 联系人 Like '%a%' Or 电话 "
              u"Like '%a%' "
              "Or 生日 Like '%a%' Or 地址 Like '%a%' Or 邮政编码 Like '%a%' Or 业务员编号 Like '%a%'");
    EXPECT_EQ(maintainedTables()[1].condition("a"), u"订单号 = 'a' Or 客户编号 = 'a' Or 产品编号 = 'a' Or "
                                                    u"品名 Like '%a%' Or 规格 Like '%a%' Or 产地 Like '%a%' "
                                                    "Or 厂家 Like '%a%'");
    EXPECT_EQ(maintainedTables()[2].condition("a"),
              u"产品编号 = 'a' Or 品名 Like '%a%' Or 规格 Like '%a%' Or 产地 Like '%a%' Or 厂家 Like '%a%'");
}

} // namespace

#include "query/queries.h"
#include "data/sourceTable.h"
#include "query/fieldLists.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

TEST(SearchFields, EachCodeHasItsListAsItStands) {
    const QString goods = QStringLiteral("日期 产品编号 品名 规格 产地");
    const QString withMaker = goods + QStringLiteral(" 厂家");
    const std::pair<int, QString> lists[] = {
        {1, "日期 客户编号 联系人 单位名称 电话 传真 手机 Email 地址 邮政编码 业务员编号 客户级别"},
        {2, "日期 客户编号 订单号 产品编号 品名 规格 产地 厂家"},
        {3, goods},
        {15, goods},
        {16, withMaker},
        {17, withMaker},
        {18, goods},
        {19, withMaker},
        {20, withMaker},
        {21, withMaker}};
    for (const auto& [code, fields] : lists)
        EXPECT_EQ(searchFields(code).join(u' '), fields) << code;
}

TEST(SearchFields, TheOtherCodesHaveNone) {
    for (const int code : {0, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 22, 23, 24})
        EXPECT_TRUE(searchFields(code).isEmpty()) << code;
}

TEST(SearchFields, EachViewNumberHandsItsList) {
    const std::pair<int, int> codes[] = {{1, 1},   {7, 1},   {8, 1},   {22, 1},  {2, 2},   {9, 2},
                                         {3, 3},   {4, 3},   {15, 15}, {16, 16}, {17, 17}, {18, 18},
                                         {19, 19}, {20, 20}, {21, 21}, {23, 23}};
    for (const auto& [number, code] : codes)
        EXPECT_EQ(searchCodeOf(ShowSource(number)), code) << number;
}

TEST(SearchCondition, KeysAreComparedAndAllElseIsContained) {
    EXPECT_EQ(searchCondition("客户编号", "7"), u"客户编号 = '7'");
    EXPECT_EQ(searchCondition("产品编号", "7"), u"产品编号 = '7'");
    EXPECT_EQ(searchCondition("业务员编号", "7"), u"业务员编号 = '7'");
    EXPECT_EQ(searchCondition("订单号", "7"), u"订单号 Like '%7%'");
    EXPECT_EQ(searchCondition("品名", "纸"), u"品名 Like '%纸%'");
}

TEST(SourceTable, EachCodeStandsForItsCursor) {
    TestBooks books;
    Session& s = books.session();
    const std::pair<int, RecordsetPtr> cursors[] = {
        {1, s.clientTable},    {2, s.buyList},           {3, s.productTable}, {4, s.productTable2},
        {5, s.productClients}, {6, s.tempTable2},        {7, s.clientTable2}, {8, s.clientTable3},
        {9, s.buyList2},       {11, s.clerkTotals},      {12, s.clerkTotals}, {15, s.product_Bank},
        {16, s.product_Bank2}, {17, s.stock_Count_Bank}, {18, s.return_Bank}, {19, s.return_Bank2},
        {20, s.no_use_Bank},   {21, s.no_use_Bank2},     {22, s.clerkClients}};
    for (const auto& [code, cursor] : cursors) {
        EXPECT_EQ(*sourceCursor(s, ShowSource(code)), cursor) << code;
        EXPECT_TRUE(sourceRow(ShowSource(code))->sorted) << code;
        EXPECT_EQ(sourceRow(ShowSource(code))->searched, code != 11 && code != 12) << code;
    }
    for (const int code : {0, 10, 13, 14, 26})
        EXPECT_EQ(sourceCursor(s, ShowSource(code)), nullptr) << code;
    for (const ShowSource code : {ShowSource::Transfers, ShowSource::ProductLines})
        EXPECT_FALSE(sourceRow(code)->searched || sourceRow(code)->sorted) << int(code);
    EXPECT_EQ(*sourceCursor(s, ShowSource::ProductLines), s.productLines);
}

class Queries : public testing::Test {
protected:
    Session& session() { return books.session(); }
    void SetUp() override {
        books.addClient("7", "甲公司", "张");
        books.addClient("8", "乙公司", "李");
        books.addProduct("p1", "打印纸", 5, 1, 2);
        books.addProduct("p2", "硒鼓", 3, 1, 2);
        books.addProduct("p3", "白纸", 9, 1, 2);
        books.addLine("21", "7", "p1", "2004-01-05", 2, 100, 40);
        books.addLine("21", "7", "p2", "2004-01-05", 3, 50, 10);
        books.addLine("22", "8", "p2", "2004-01-06", 1, 50, 10);
        books.addLine("23", "7", "p2", "2004-01-07", 1, 5, 1);
        session().open_rs();
    }
    QString numbers(const RecordsetPtr& cursor, const char* field = "产品编号") {
        QStringList texts;
        for (int i = 0; i < cursor->RecordCount(); ++i)
            texts << fieldText(cursor->valueAt(i, cursor->fieldIndex(QString::fromUtf8(field))));
        return texts.join(u' ');
    }

    TestBooks books;
};

TEST_F(Queries, ASearchFiltersAndSortsTheCursorOfShowSource) {
    session().showSource = ShowSource(3);
    applySearch(session(), session().showSource, "品名", "纸");
    EXPECT_EQ(numbers(session().productTable), u"p3 p1") << "白 before 打";
    EXPECT_EQ(session().productTable->Sort(), u"品名");
    EXPECT_EQ(session().viewReturnState, u"Open");
}

TEST_F(Queries, ASearchInTheLinesKeepsTheViewFromActivating) {
    session().showSource = ShowSource(2);
    applySearch(session(), session().showSource, "订单号", "2");
    EXPECT_EQ(session().viewReturnState, u"Close");
}

TEST_F(Queries, AnApostropheBreaksTheConditionAndTheCursorStaysAsItWas) {
    session().showSource = ShowSource(3);
    session().productTable->setFilter("产品编号 = 'p2'");
    session().productTable->setSort("数量");
    applySearch(session(), session().showSource, "品名", "'");
    EXPECT_EQ(session().productTable->Filter(), u"产品编号 = 'p2'");
    EXPECT_EQ(session().productTable->Sort(), u"数量");
}

TEST_F(Queries, ASearchOnACodeWithoutACursorChangesNothing) {
    for (const int code : {0, 10, 11, 12, 23}) {
        session().showSource = ShowSource(code);
        applySearch(session(), session().showSource, "品名", "纸");
    }
    EXPECT_EQ(session().productTable->Filter(), u"");
    session().showSource = ShowSource(4); // a cursor that is closed
    applySearch(session(), session().showSource, "品名", "纸");
    EXPECT_FALSE(session().productTable2->isOpen());
}

TEST_F(Queries, TheSortListIsEveryColumnOfTheCursor) {
    session().orderCode = 3;
    EXPECT_EQ(sortFields(session()), session().productTable->fieldNames());
    for (const int code : {10, 13, 14, 23, 4}) {
        session().orderCode = qint16(code);
        EXPECT_TRUE(sortFields(session()).isEmpty()) << code;
    }
}

TEST_F(Queries, OnlyDirectionTwoSortsDescending) {
    session().orderCode = 3;
    for (const auto& [direction, order] :
         {std::pair<qint16, QString>{1, "p2 p1 p3"}, {2, "p3 p1 p2"}, {0, "p2 p1 p3"}, {7, "p2 p1 p3"}}) {
        session().sortDirection = direction;
        applySort(session(), "数量");
        EXPECT_EQ(numbers(session().productTable), order) << direction;
    }
}

TEST_F(Queries, ASortOnANameTheCursorLacksLeavesItAsItWas) {
    session().orderCode = 3;
    session().productTable->setSort("数量");
    applySort(session(), "无此列");
    EXPECT_EQ(session().productTable->Sort(), u"数量");
}

TEST_F(Queries, TheOrdersOfACustomerEachOnceAsHisLinesStand) {
    for (const char* order : {"9", "21", "10"})
        books.addLine(order, "7", "p2", "2004-01-08", 1, 5, 1);
    session().openMainCursors();
    session().currentClientNum = "7";
    EXPECT_EQ(ordersOfClient(session()), (QStringList{"21", "23", "9", "10"}));
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = '7'");
}

TEST_F(Queries, AnOrderTakenInHandHasItsLinesDateAmountAndQuantity) {
    session().currentClientNum = "7";
    session().showSource = ShowSource(1);
    takeOrder(session(), "21");
    EXPECT_EQ(session().currentOrderNum, u"21");
    EXPECT_EQ(session().currentContact, u"张");
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = '7' And 订单号 = '21'");
    EXPECT_EQ(session().buyList->RecordCount(), 2);
    EXPECT_EQ(session().periodDate1 + u'|' + session().orderAmount + u'|' + session().orderQuantity,
              u"2004-1-5|150|5");
}

TEST_F(Queries, AProductSearchTakesFiveColumnsAndElseTheNumber) {
    for (const char* column : {"产品编号", "品名", "规格", "产地", "厂家"})
        EXPECT_EQ(productSearchColumn(column), QString::fromUtf8(column));
    EXPECT_EQ(productSearchColumn("单价"), u"产品编号");
    EXPECT_EQ(productSearchColumn({}), u"产品编号");
    searchProducts(session(), "品名", "纸");
    EXPECT_EQ(numbers(session().productTable), u"p1 p3");
    searchProducts(session(), "品名", "'");
    EXPECT_EQ(numbers(session().productTable), u"p1 p3");
    searchProducts(session(), "成本", "p2");
    EXPECT_EQ(session().productTable->Filter(), u"产品编号 Like '%p2%'");
}

} // namespace

// What each order comes to.
#include "drilldown/orderStatistic.h"
#include "support/smallShop.h"

#include <gtest/gtest.h>

namespace {

class OrderStatisticOf : public testing::Test {
protected:
    OrderStatisticOf() { addSmallShop(books); }

    void count(ShowSource source = ShowSource::Lines) {
        if (!session().buyList->isOpen())
            session().openMainCursors();
        statistic = calculation_order(session(), source);
        openOrders(session(), statistic);
    }
    /// The rows as "order customer paid margin pieces".
    QString orders() {
        const RecordsetPtr& cursor = session().orderTable;
        QStringList rows;
        for (int i = 0; i < cursor->RecordCount(); ++i) {
            QStringList cells;
            for (const char* field : {"订单号", "客户编号", "购买额", "差额利润", "购买数量"})
                cells << fieldText(cursor->valueAt(i, cursor->fieldIndex(QString::fromUtf8(field))));
            rows << cells.join(u' ');
        }
        return rows.join(u'|');
    }
    QString figures() const {
        return statistic.figures.turnover + u' ' + statistic.figures.margin + u' ' +
               statistic.figures.quantity;
    }
    Session& session() { return books.session(); }

    TestBooks books;
    OrderStatistic statistic;
};

TEST_F(OrderStatisticOf, AnEmptyShopIsEmpty) {
    count();
    EXPECT_EQ(orders(), u"");
    EXPECT_EQ(figures(), u"0 0 0");
}

TEST_F(OrderStatisticOf, HasARowForEachOrderTheLargestFirst) {
    books.addLine("31", "7", "p1", "2004-01-05", 1, 5, 2);
    books.addLine("32", "8", "p1", "2004-01-06", 4, 20, 2);
    books.addLine("31", "7", "p2", "2004-01-05", 1, 4, 1);
    count();
    EXPECT_EQ(orders(), u"32 8 20 12 4|31 7 9 6 2");
    EXPECT_EQ(figures(), u"29 18 6");
}

TEST_F(OrderStatisticOf, AnOrderOfSeveralCustomersIsThatOfItsFirstLine) {
    books.addLine("31", "8", "p1", "2004-03-05", 1, 5, 2);
    books.addLine("31", "7", "p1", "2004-01-05", 1, 5, 2);
    count();
    EXPECT_EQ(orders(), u"31 8 10 6 2");
    session().buyList->setSort("日期");
    count();
    EXPECT_EQ(orders(), u"31 7 10 6 2") << "the first line is that of the cursor's order";
}

TEST_F(OrderStatisticOf, UnderASearchTheFirstLineIsThatOfTheWholeInTheCursorsOrder) {
    books.addLine("31", "8", "p1", "2004-03-05", 1, 5, 2);
    books.addLine("31", "7", "p1", "2004-01-05", 1, 5, 2);
    session().openMainCursors();
    session().buyList->setSort("日期");
    session().buyList->setFilter("客户编号 = '8'");
    count();
    EXPECT_EQ(orders(), u"31 7 10 6 2");
}

TEST_F(OrderStatisticOf, NumbersThatDifferInCaseAloneAreOneOrder) {
    books.addLine("ab", "7", "p1", "2004-01-05", 1, 5, 2);
    books.addLine("AB", "8", "p1", "2004-01-05", 1, 5, 2);
    count();
    EXPECT_EQ(orders(), u"ab 7 10 6 2");
}

TEST_F(OrderStatisticOf, LinesWithoutAnOrderHaveNoCustomer) {
    books.addLine("31", "7", "p1", "2004-01-05", 1, 5, 2);
    books.changeBehind("INSERT INTO buyList (流水号, 客户编号, 实付) VALUES (2, '8', 3)");
    count();
    EXPECT_EQ(orders(), u"31 7 5 3 1|  3  ");
}

TEST_F(OrderStatisticOf, LooksPastASearchAndLeavesItWithItsRow) {
    books.addLine("31", "7", "p1", "2004-01-05", 1, 5, 2);
    books.addLine("32", "8", "p1", "2004-01-06", 4, 20, 2);
    books.addLine("33", "8", "p1", "2004-01-07", 4, 4, 2);
    session().openMainCursors();
    session().buyList->setSort("日期 desc");
    session().buyList->setFilter("客户编号 = '8'");
    session().buyList->MoveLast();
    count();
    EXPECT_EQ(orders(), u"32 8 20 12 4|31 7 5 3 1|33 8 4 -4 4");
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = '8'");
    EXPECT_EQ(session().buyList->Sort(), u"日期 desc");
    EXPECT_EQ(session().buyList->Fields("订单号").text(), u"32");
}

TEST_F(OrderStatisticOf, APeriodIsThatOfItsCopy) {
    books.addLine("31", "7", "p1", "2003-01-05", 1, 5, 2);
    books.addLine("32", "8", "p1", "2004-01-06", 4, 20, 2);
    books.addLine("32", "7", "p1", "2003-01-06", 4, 20, 2);
    books.changeBehind("INSERT INTO buyList2 SELECT * FROM buyList WHERE 日期 > '2004'");
    session().reopen(session().buyList2, "Select * From buyList2");
    count(ShowSource::PeriodLines);
    EXPECT_EQ(orders(), u"32 8 20 12 4");
}

TEST_F(OrderStatisticOf, StandsInItsTableOnceWrittenInTheSameOrder) {
    books.addLine("31", "7", "p1", "2004-01-05", 1, 5, 2);
    books.addLine("32", "8", "p1", "2004-01-06", 4, 20, 2);
    books.changeBehind("INSERT INTO orderTable (订单号) VALUES ('old')");
    session().reopen(session().orderTable, "Select * From orderTable");
    count();
    const QString shown = orders();
    writeOrders(session(), statistic);
    EXPECT_EQ(orders(), shown);
    EXPECT_EQ(books.stored("SELECT 订单号, 客户编号, 购买额, 差额利润, 购买数量 FROM orderTable"),
              u"32|8|20.0|12.0|4.0;31|7|5.0|3.0|1.0");
    EXPECT_EQ(session().orderTable->Sort(), u"购买额 desc");
}

} // namespace

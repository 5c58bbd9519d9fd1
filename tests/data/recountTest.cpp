#include "data/recount.h"

#include "support/errorOf.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class Recount : public testing::Test {
protected:
    QString totals() {
        return books.stored(
            "SELECT 客户编号, 消费合计, 购买数, 差额利润, 差额利润率 FROM clientTable ORDER BY rowid");
    }
    void recount() {
        books.session().open_rs();
        client_totals_recount(books.session().cn, books.session().clientTable, books.session().buyList);
    }
    TestBooks books;
};

TEST_F(Recount, SumsTheLinesOfEachCustomerAndCutsTheRate) {
    books.addClient("7");
    books.addClient("8");
    books.addLine("1", "7", "p", "2004-01-05", 2, 100, 40);
    books.addLine("1", "7", "p", "2004-01-05", 1, 50.5, 30);
    books.addLine("2", "8", "p", "2004-01-05", 3, 9, 5);
    recount();
    // 40.5 of 150.5 is 26.9102..., -6 of 9 is -66.66...
    EXPECT_EQ(totals(), u"7|150.5|3.0|40.5|26.91%;8|9.0|3.0|-6.0|-66.%");
}

TEST_F(Recount, TheRateIsHeldInDoublePrecision) {
    books.addClient("7");
    books.addLine("1", "7", "p", "2004-01-05", 1, 1e9, 0.1);
    recount();
    // 99.99999999 percent, which is 100 in single precision.
    EXPECT_EQ(books.stored("SELECT 差额利润率 FROM clientTable"), u"99.99%");
}

TEST_F(Recount, ACustomerWithoutLinesGetsZerosAndARateWithoutPercent) {
    books.addClient("7");
    books.execute("UPDATE clientTable SET 消费合计 = 5, 差额利润率 = '12%'");
    recount();
    EXPECT_EQ(totals(), u"7|0.0|0.0|0.0|0");
}

TEST_F(Recount, LinesThatPaidNothingGiveZerosAndARateWithoutPercent) {
    books.addClient("7");
    books.addLine("1", "7", "p", "2004-01-05", 2, 0, 4);
    books.addLine("2", "7", "p", "2004-01-05", 1, 0, 4);
    recount();
    EXPECT_EQ(totals(), u"7|0.0|0.0|0.0|0");
}

TEST_F(Recount, LinesThatCancelOutGiveZeros) {
    books.addClient("7");
    books.addLine("1", "7", "p", "2004-01-05", 2, 10, 4);
    books.addLine("2", "7", "p", "2004-01-05", -2, -10, 4);
    recount();
    EXPECT_EQ(totals(), u"7|0.0|0.0|0.0|0");
}

TEST_F(Recount, NumbersThatDifferInCaseAloneAreOneCustomerOfTheLines) {
    books.addClient("a1");
    books.addClient(" A1 ");
    books.addLine("1", "A1", "p", "2004-01-05", 1, 10, 4);
    books.addLine("1", "a1", "p", "2004-01-05", 1, 10, 4);
    recount();
    EXPECT_EQ(totals(), u"a1|20.0|2.0|12.0|60%; A1 |20.0|2.0|12.0|60%");
}

TEST_F(Recount, NullNumbersCountZeroAndNumbersWithQuotesAreSafe) {
    books.addClient("o''n");
    books.addLine("1", "o''n", "p", "2004-01-05", 1, 10, 4);
    books.execute("INSERT INTO buyList (客户编号) VALUES ('o''n')");
    recount();
    EXPECT_EQ(totals(), u"o'n|10.0|1.0|6.0|60%");
}

TEST_F(Recount, SecondRunChangesNothing) {
    books.addClient("7");
    books.addLine("1", "7", "p", "2004-01-05", 3, 0.1 + 0.2, 0.1);
    recount();
    const int commits = books.session().cn.commits();
    recount();
    EXPECT_EQ(books.session().cn.commits(), commits);
}

TEST_F(Recount, OfAllCustomersIsOneTransaction) {
    books.addClient("7");
    books.addClient("8");
    books.addLine("1", "7", "p", "2004-01-05", 2, 100, 40);
    books.addLine("2", "8", "p", "2004-01-05", 2, 100, 40);
    const int commits = books.session().cn.commits();
    recount();
    EXPECT_EQ(books.session().cn.commits(), commits + 1);
}

TEST_F(Recount, LeavesNoFilterTheFirstCustomerAndTheLinesRequeried) {
    books.addClient("7");
    books.addClient("8");
    books.addLine("1", "8", "p", "2004-01-05", 1, 10, 4);
    Session& session = books.session();
    session.open_rs();
    session.clientTable->setFilter("客户编号 = '8'");
    session.buyList->setFilter("客户编号 = '8'");
    client_totals_recount(session.cn, session.clientTable, session.buyList);
    EXPECT_EQ(session.clientTable->Filter(), u"");
    EXPECT_EQ(session.clientTable->AbsolutePosition(), 1);
    EXPECT_EQ(session.buyList->Filter(), u"");
    EXPECT_EQ(books.stored("SELECT 消费合计 FROM clientTable WHERE 客户编号 = '8'"), u"10.0");
}

TEST_F(Recount, AClosedOrEmptyCustomerCursorEndsIt) {
    Session& session = books.session();
    client_totals_recount(session.cn, session.clientTable, session.buyList);
    session.open_rs();
    session.buyList->setSort("日期");
    client_totals_recount(session.cn, session.clientTable, session.buyList);
    EXPECT_EQ(session.buyList->Sort(), u"日期");
}

TEST_F(Recount, PendingEditsOfTheLinesCount) {
    books.addClient("7");
    books.addLine("1", "7", "p", "2004-01-05", 1, 10, 4);
    Session& session = books.session();
    session.open_rs();
    session.buyList->Fields("实付").setValue(20.0);
    client_totals_recount(session.cn, session.clientTable, session.buyList);
    EXPECT_EQ(books.stored("SELECT 消费合计 FROM clientTable"), u"20.0");
    EXPECT_EQ(books.stored("SELECT 实付 FROM buyList"), u"10.0");
}

TEST_F(Recount, TheSumsOfAViewTakeEveryRowWithOrWithoutPendingEdits) {
    for (const double paid : {10.0, 20.0, 40.0})
        books.addLine("1", "7", "p", "2004-01-05", 1, paid, 4);
    Session& session = books.session();
    session.open_rs();
    EXPECT_EQ(sumsOfView(session.buyList).paid, 70);
    session.buyList->MoveLast();
    session.buyList->Fields("实付").setValue(50.0);
    EXPECT_EQ(sumsOfView(session.buyList).paid, 80);
    EXPECT_EQ(sumsOfView(session.buyList).quantity, 3);
}

TEST_F(Recount, LineMarginRefreshWorksEveryLineOutAndKeepsThePosition) {
    books.addLine("1", "7", "p", "2004-01-05", 2, 10, 4);
    books.addLine("2", "7", "p", "2004-01-05", 3, 10, 1.5);
    books.execute("UPDATE buyList SET 差额利润 = 99, 成本 = NULL WHERE 订单号 = '2'");
    Session& session = books.session();
    session.open_rs();
    session.buyList->MoveLast();
    lineMarginRefresh(session.cn, session.buyList);
    EXPECT_EQ(books.stored("SELECT 差额利润 FROM buyList ORDER BY rowid"), u"2.0;10.0");
    EXPECT_EQ(session.buyList->AbsolutePosition(), 2);
    session.buyList->MoveNext();
    lineMarginRefresh(session.cn, session.buyList);
    EXPECT_EQ(session.buyList->AbsolutePosition(), 1);
    session.buyList->setFilter("订单号 = 'x'");
    lineMarginRefresh(session.cn, session.buyList);
}

} // namespace

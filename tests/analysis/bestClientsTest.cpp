#include "analysis/bestClients.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

#include <random>

namespace {

constexpr auto kTurnover = ClientMeasure::Turnover;
constexpr auto kMargin = ClientMeasure::Margin;
constexpr auto kQuantity = ClientMeasure::Quantity;

class BestClientsOf : public testing::Test {
protected:
    Session& session() { return books.session(); }
    void add(const char* number, double turnover, double margin, double quantity) {
        books.addClient(QString::fromUtf8(number));
        books.changeBehind(QStringLiteral("UPDATE clientTable SET 消费合计 = %1, 差额利润 = %2, 购买数 = %3 "
                                          "WHERE 客户编号 = '%4'")
                               .arg(turnover)
                               .arg(margin)
                               .arg(quantity)
                               .arg(QString::fromUtf8(number)));
    }
    void open() {
        session().open_rs();
        totals = clientTotals(session(), "clientTable");
    }
    BestClients byShare(ClientMeasure measure, float percent) {
        return cutByShare(session().clientTable, totals, measure, percent / 100);
    }
    BestClients byRank(ClientMeasure measure, double number) {
        return cutByRank(session().clientTable, totals, measure, number);
    }
    static QString shares(const BestClients& best) {
        return QStringList{best.shares[0], best.shares[1], best.shares[2], best.clientShare}.join(u'|');
    }
    /// The numbers of the customers taken, in order.
    QString taken(const BestClients& best) {
        const int field = session().clientTable->fieldIndex("客户编号");
        QStringList numbers;
        for (int i = 0; i < best.count(); ++i)
            numbers << fieldText(session().clientTable->valueAt(i, field));
        return numbers.join(u' ');
    }

    TestBooks books;
    MeasureSums totals;
};

TEST_F(BestClientsOf, AShareTakesTheCustomerWhoCrossesIt) {
    add("1", 50, 5, 1);
    add("2", 30, 9, 1);
    add("3", 20, 6, 2);
    open();
    EXPECT_EQ(taken(byShare(kTurnover, 50)), u"1");
    EXPECT_EQ(taken(byShare(kTurnover, 51)), u"1 2");
    EXPECT_EQ(taken(byShare(kMargin, 40)), u"2");
    EXPECT_EQ(taken(byShare(kQuantity, 100)), u"3 1 2");
    EXPECT_EQ(shares(byShare(kTurnover, 51)), u"80|70|50|66.66");
}

TEST_F(BestClientsOf, ATargetOfNothingTakesOneAndACustomerBehindTheFullSumIsNotTaken) {
    add("1", 60, 1, 1);
    add("2", 40, 1, 1);
    add("3", 0, 0, 0);
    open();
    EXPECT_EQ(taken(byShare(kTurnover, 0)), u"1");
    EXPECT_EQ(taken(byShare(kTurnover, -5)), u"1");
    EXPECT_EQ(taken(byShare(kTurnover, 100)), u"1 2");
    EXPECT_EQ(taken(byShare(kTurnover, 200)), u"1 2 3");
}

TEST_F(BestClientsOf, TheTargetIsSinglePrecisionAgainstADoubleShare) {
    add("1", 3, 1, 1);
    add("2", 7, 1, 1);
    open();
    // 70 as a single part of 1 lies below 0.7, 30 above 0.3.
    EXPECT_EQ(taken(byShare(kTurnover, 70)), u"2");
    totals.of[0] = 10;
    session().clientTable->setFilter("客户编号 = '2'");
    EXPECT_EQ(taken(byShare(kTurnover, 71)), u"2 1") << "the filter is off";
}

TEST_F(BestClientsOf, ATotalOfNothingTakesNobodyAndShowsZeros) {
    add("1", 5, 3, 0);
    add("2", -5, 1, 0);
    open();
    const BestClients best = byShare(kTurnover, 50);
    EXPECT_EQ(best.count(), 0);
    EXPECT_EQ(best.sums.of[0] + best.sums.of[1] + best.sums.of[2], 0);
    EXPECT_EQ(shares(best), u"0|0|0|0");
}

TEST_F(BestClientsOf, AShareFromAHundredOnRepeatsTheOneBeforeItByMarginAndQuantity) {
    add("1", 10, 10, 5);
    add("2", 0, 10, 5);
    open();
    EXPECT_EQ(shares(byShare(kTurnover, 100)), u"100|50|50|50");
    EXPECT_EQ(shares(byShare(kMargin, 100)), u"|||") << "nothing stood before the first";
    add("3", 10, -10, 0);
    open();
    const BestClients best = byShare(kMargin, 100);
    EXPECT_EQ(taken(best), u"1");
    EXPECT_EQ(shares(best), u"50|50|50|33.33");
    EXPECT_EQ(shares(byShare(kMargin, 150)), u"50|50|50|66.66") << "200 percent of the margin";
}

TEST_F(BestClientsOf, TheFirstCustomersByRankAreAtLeastOneAndAtMostAll) {
    add("1", 50, 5, 1);
    add("2", 30, 9, 1);
    add("3", 20, 6, 2);
    open();
    EXPECT_EQ(taken(byRank(kTurnover, 2)), u"1 2");
    EXPECT_EQ(taken(byRank(kMargin, 2)), u"2 3");
    EXPECT_EQ(taken(byRank(kQuantity, 1)), u"3");
    EXPECT_EQ(taken(byRank(kTurnover, 0)), u"1");
    EXPECT_EQ(taken(byRank(kTurnover, -3)), u"1");
    EXPECT_EQ(taken(byRank(kTurnover, 1.5)), u"1 2");
    EXPECT_EQ(taken(byRank(kTurnover, 99)), u"1 2 3");
    EXPECT_EQ(shares(byRank(kTurnover, 99)), u"100|100|100|100");
}

TEST_F(BestClientsOf, ARankOverAnyTotalOfNothingTakesNobodyAndTheMarginHasItsApostrophe) {
    add("1", 50, 5, 0);
    add("2", 30, 9, 0);
    open();
    const BestClients best = byRank(kTurnover, 2);
    EXPECT_EQ(best.count(), 0);
    EXPECT_EQ(shares(best), u"0|0'|0|0");
}

TEST_F(BestClientsOf, ARankWithoutMarginAmongTheFirstHasTheApostropheToo) {
    add("1", 50, 0, 1);
    add("2", 30, 9, 1);
    open();
    EXPECT_EQ(shares(byRank(kTurnover, 1)), u"62.5|0'|50|50");
}

TEST_F(BestClientsOf, ARankWalksWhatTheFilterShowsAndCountsAll) {
    add("1", 50, 5, 1);
    add("2", 30, 9, 1);
    add("3", 20, 6, 2);
    open();
    session().clientTable->setFilter("消费合计 < 50");
    const BestClients best = byRank(kTurnover, 5);
    EXPECT_EQ(best.count(), 2);
    EXPECT_EQ(best.sums[kTurnover], 50);
    EXPECT_EQ(best.clientShare, u"66.66");
    EXPECT_EQ(session().clientTable->Filter(), u"");
}

TEST_F(BestClientsOf, EqualCustomersStandInTableOrder) {
    for (const char* number : {"9", "1", "5"})
        add(number, 10, 1, 1);
    open();
    EXPECT_EQ(taken(byRank(kTurnover, 2)), u"9 1");
}

TEST_F(BestClientsOf, NullFiguresCountNothing) {
    add("1", 50, 5, 1);
    books.addClient("2");
    books.execute(
        "UPDATE clientTable SET 消费合计 = NULL, 差额利润 = NULL, 购买数 = NULL WHERE 客户编号 = '2'");
    open();
    EXPECT_EQ(totals[kTurnover], 50);
    EXPECT_EQ(taken(byShare(kTurnover, 100)), u"1");
    EXPECT_EQ(taken(byRank(kTurnover, 2)), u"1 2");
}

TEST_F(BestClientsOf, SixQuestionsEachOfTheirOwn) {
    QStringList commands;
    QStringList captions;
    for (const BestClientsQuestion& question : bestClientsQuestions()) {
        commands << QString::fromUtf16(question.command);
        captions << QString::fromUtf16(question.caption);
    }
    EXPECT_EQ(commands.removeDuplicates(), 0);
    EXPECT_EQ(captions.removeDuplicates(), 0);
    EXPECT_EQ(commands.size(), 6);
}

} // namespace

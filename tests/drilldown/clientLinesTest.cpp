// The purchases of one customer, and their shares of the whole.
#include "drilldown/clientLines.h"
#include "support/smallShop.h"

#include <gtest/gtest.h>

namespace {

class ClientLines : public testing::Test {
protected:
    ClientLines() { addSmallShop(books); }

    /// What the customers' own rows say they have bought in all.
    void total(const char* client, double paid, double margin, double pieces) {
        books.changeBehind(QStringLiteral("UPDATE clientTable SET 消费合计 = %1, 差额利润 = %2, 购买数 = %3 "
                                          "WHERE 客户编号 = '%4'")
                               .arg(paid)
                               .arg(margin)
                               .arg(pieces)
                               .arg(QString::fromUtf8(client)));
    }
    void open(const char* client, ShowSource source = ShowSource::Lines) {
        rows = openClientLines(session(), QString::fromUtf8(client), source);
    }
    QString serials() {
        QStringList all;
        for (int i = 0; i < session().tempTable2->RecordCount(); ++i)
            all << fieldText(session().tempTable2->valueAt(i, 0));
        return all.join(u' ');
    }
    /// "value share" of the three, an unwritten share as "-".
    QString shares() {
        QStringList all;
        for (const ClientShare& each : statisticA(session()))
            all << each.value + u' ' + each.share.value_or(QStringLiteral("-"));
        return all.join(u'|');
    }
    Session& session() { return books.session(); }

    TestBooks books;
    RowsOfTable rows;
};

TEST_F(ClientLines, AreThoseOfTheCustomerInTheOrderOfTheirTable) {
    books.addLine("1", "7", "p1", "2004-03-05", 1, 5, 2);
    books.addLine("2", "8", "p1", "2004-01-05", 1, 5, 2);
    books.addLine("3", "7", "p2", "2004-02-05", 1, 4, 1);
    open("7");
    EXPECT_EQ(serials(), u"1 3");
    EXPECT_EQ(rows.source, u"buyList");
    EXPECT_EQ(rows.rowids, (std::vector<qint64>{1, 3}));
}

TEST_F(ClientLines, StandInTheirWorkTableOnceWritten) {
    books.addLine("1", "7", "p1", "2004-03-05", 1, 5, 2);
    books.addLine("2", "8", "p1", "2004-01-05", 1, 5, 2);
    open("7");
    EXPECT_EQ(books.stored("SELECT count(*) FROM tempTable2"), u"0");
    writeClientLines(session(), rows);
    EXPECT_EQ(books.stored("SELECT 客户编号, 实付 FROM tempTable2"), u"7|5.0");
    EXPECT_EQ(session().tempTable2->image().table(), u"tempTable2");
    open("8");
    writeClientLines(session(), rows);
    EXPECT_EQ(books.stored("SELECT 客户编号 FROM tempTable2"), u"8") << "the one before is gone";
}

TEST_F(ClientLines, WithoutAnyTheWorkTableIsEmpty) {
    books.addLine("1", "7", "p1", "2004-03-05", 1, 5, 2);
    open("7");
    writeClientLines(session(), rows);
    open("8");
    writeClientLines(session(), rows);
    EXPECT_FALSE(session().tempTable2->hasRows());
    EXPECT_EQ(books.stored("SELECT count(*) FROM tempTable2"), u"0");
}

TEST_F(ClientLines, AMissingWorkTableIsMadeAgain) {
    books.addLine("1", "7", "p1", "2004-03-05", 1, 5, 2);
    books.changeBehind("DROP TABLE tempTable2");
    open("7");
    writeClientLines(session(), rows);
    EXPECT_EQ(books.stored("SELECT count(*) FROM tempTable2"), u"1");
}

TEST_F(ClientLines, ANumberWithAnApostropheIsFound) {
    books.addLine("1", "o''k", "p1", "2004-03-05", 1, 5, 2);
    open("o'k");
    EXPECT_EQ(session().tempTable2->RecordCount(), 1);
}

TEST_F(ClientLines, ASearchLeftOnTheLinesHidesNone) {
    books.addLine("1", "7", "p1", "2004-03-05", 1, 5, 2);
    session().openMainCursors();
    session().buyList->setFilter("客户编号 = 'nobody'");
    open("7");
    EXPECT_EQ(serials(), u"1");
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = 'nobody'");
}

TEST_F(ClientLines, HaveEachSumWithItsShareOfAllCustomersTotals) {
    books.addLine("1", "7", "p1", "2004-03-05", 2, 10, 2);
    books.addLine("2", "7", "p2", "2004-02-05", 1, 5, 1);
    total("7", 15, 10, 3);
    total("8", 45, 20, 6);
    open("7");
    EXPECT_EQ(shares(), u"15 25%|10 33.33%|3 33.33%");
    EXPECT_EQ(session().tempTable2->AbsolutePosition(), 2) << "the walk ends on the last row";
}

TEST_F(ClientLines, SharesAreCutByTheirSizeAndNeverRounded) {
    books.addLine("1", "7", "p1", "2004-03-05", 1, 9.99, 0);
    const std::pair<double, const char16_t*> cases[] = {
        {9.99 / 0.00256, u".25%"}, {9.99 / 0.0999, u"9.99%"}, {9.99 / 0.98765, u"98.76%"}};
    for (const auto& [whole, text] : cases) {
        total("7", whole, whole, 1);
        open("7");
        EXPECT_EQ(statisticA(session())[0].share.value_or(QString()), text);
    }
}

TEST_F(ClientLines, AShareOfAHundredOrMoreLeavesWhatStands) {
    books.addLine("1", "7", "p1", "2004-03-05", 1, 5, 2);
    total("7", 5, 2, 1);
    open("7");
    EXPECT_EQ(shares(), u"5 -|3 -|1 -");
}

TEST_F(ClientLines, ATotalOfZeroGivesAShareOfZero) {
    books.addLine("1", "7", "p1", "2004-03-05", 1, 5, 2);
    open("7");
    EXPECT_EQ(shares(), u"5 0%|3 0%|1 0%");
}

TEST_F(ClientLines, OfAPeriodStandBesideThePeriodsTotals) {
    books.addLine("1", "7", "p1", "2003-03-05", 1, 5, 2);
    books.addLine("2", "7", "p1", "2004-03-05", 1, 5, 2);
    books.execute("INSERT INTO buyList2 SELECT * FROM buyList WHERE 流水号 = 2");
    books.execute("INSERT INTO clientTable2 SELECT * FROM clientTable WHERE 客户编号 = '7'");
    books.execute("UPDATE clientTable2 SET 消费合计 = 20, 差额利润 = 6, 购买数 = 10");
    total("7", 1000, 1000, 1000);
    open("7", ShowSource::PeriodLines);
    EXPECT_EQ(serials(), u"2");
    EXPECT_EQ(session().clientLinesSource, ShowSource::PeriodLines);
    EXPECT_EQ(shares(), u"5 25%|3 50%|1 10%");
}

TEST_F(ClientLines, TheirPlainSumsComeWithoutShares) {
    books.addLine("1", "7", "p1", "2004-03-05", 2, 10, 2);
    books.addLine("2", "7", "p2", "2004-02-05", 1, 5, 1);
    open("7");
    session().tempTable2->MoveFirst();
    EXPECT_EQ(calculation(session().tempTable2), (std::array<QString, 3>{"15", "10", "3"}));
    EXPECT_EQ(session().tempTable2->AbsolutePosition(), 1);
    open("8");
    EXPECT_EQ(calculation(session().tempTable2), (std::array<QString, 3>{"0", "0", "0"}));
}

} // namespace

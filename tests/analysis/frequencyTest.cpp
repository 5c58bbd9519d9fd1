#include "analysis/frequency.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class Frequency : public testing::Test {
protected:
    Session& session() { return books.session(); }
    void buys(const char* client, std::initializer_list<const char*> dates) {
        if (books
                .stored(QStringLiteral("SELECT 1 FROM clientTable WHERE 客户编号 = '%1'")
                            .arg(QString::fromUtf8(client).replace("'", "''")))
                .isEmpty())
            books.addClient(QString::fromUtf8(client).replace("'", "''"));
        for (const char* date : dates)
            books.addLine(QString::number(++m_order), QString::fromUtf8(client).replace("'", "''"), "p",
                          QString::fromUtf8(date), 1, 10, 1);
    }
    /// Runs the statistic. Out: whether it counted.
    bool run() {
        session().open_rs();
        const FrequencyTables tables = countFrequency(session());
        writeFrequency(session(), tables);
        return tables.counted;
    }
    /// The intervals that have customers: "2:1:33.33%".
    QString intervals() {
        const RecordsetPtr& months = session().month_Table;
        QStringList found;
        for (int i = 1; i < months->fieldCount(); ++i)
            if (toText(months->valueAt(0, i)) != u"0")
                found << QStringLiteral("%1:%2:%3")
                             .arg(i)
                             .arg(toText(months->valueAt(0, i)), toText(months->valueAt(1, i)));
        return found.join(u' ');
    }

    TestBooks books;

private:
    int m_order = 0;
};

TEST_F(Frequency, TheIntervalsAreMonthsToThePurchaseBefore) {
    buys("a", {"2004-03-10", "2004-05-02"});
    buys("b", {"2004-04-30", "2004-05-31"});
    buys("c", {"2003-06-01", "2004-05-01"});
    ASSERT_TRUE(run());
    EXPECT_EQ(intervals(), u"1:1:33.33% 2:1:33.33% 11:1:33.33%");
    EXPECT_EQ(session().intervalClients[2], u"'a'");
    EXPECT_EQ(session().intervalClients[1], u"'b'");
    EXPECT_EQ(books.stored("SELECT \"1\", \"2\", \"3\", \"24\" FROM month_Table"),
              u"1|1|0|0;33.33%|33.33%|0%|0%");
    EXPECT_EQ(books.stored("SELECT 标题 FROM month_Table"), u"客户数;百分率") << "the caption is left alone";
}

TEST_F(Frequency, OverTheYearsEndTwelveMonthsAreAdded) {
    buys("a", {"2003-11-20", "2004-02-01"});
    buys("b", {"2003-01-01", "2004-02-29"});
    ASSERT_TRUE(run());
    EXPECT_EQ(intervals(), u"3:1:50% 13:1:50%");
}

TEST_F(Frequency, AFirstTimeBuyerIsNotCounted) {
    buys("a", {"2004-05-02", "2004-05-03"});
    buys("b", {"2004-04-02", "2004-05-03"});
    ASSERT_TRUE(run());
    EXPECT_EQ(intervals(), u"1:1:100%");
}

TEST_F(Frequency, MoreThanOneCalendarYearBackIsLeftOutWithoutATrace) {
    buys("a", {"2002-12-31", "2004-01-01"});
    buys("b", {"2003-12-31", "2004-01-01"});
    ASSERT_TRUE(run());
    EXPECT_EQ(intervals(), u"1:1:100%");
    for (const QString& list : session().intervalClients)
        EXPECT_FALSE(list.contains("'a'"));
}

TEST_F(Frequency, TheTextGreatestMonthCountsNotTheLatest) {
    buys("a", {"2003-09-01", "2003-12-01", "2004-02-01"});
    ASSERT_TRUE(run());
    EXPECT_EQ(intervals(), u"5:1:100%") << "September, though December was later";
}

TEST_F(Frequency, NobodyToCountGivesBareNoughts) {
    buys("a", {"2004-04-01"});
    buys("b", {"2004-05-01"});
    ASSERT_TRUE(run());
    EXPECT_EQ(intervals(), u"");
    EXPECT_EQ(books.stored("SELECT \"1\", \"24\" FROM month_Table"), u"0|0;0|0") << "without a percent sign";
}

TEST_F(Frequency, OneMonthAloneChangesNothingButTheTablesOfTheRun) {
    buys("a", {"2004-04-01", "2004-05-01"});
    ASSERT_TRUE(run());
    books.changeBehind("DELETE FROM buyList WHERE 日期 < '2004-05-01'");
    EXPECT_FALSE(run());
    EXPECT_EQ(books.stored("SELECT \"1\" FROM month_Table"), u"1;100%") << "the last contents stay";
    EXPECT_EQ(session().intervalClients[1], u"'a'");
    EXPECT_EQ(books.stored("SELECT * FROM buy_Frequence_Table2"), u"2004-5|a|1");
}

TEST_F(Frequency, TheWorkTablesHoldALineEachAndAMonthAndCustomerEach) {
    buys("B", {"2004-11-02", "2004-11-03", "2004-01-31"});
    buys("a", {"2004-11-01"});
    buys("b", {"2004-11-05"});
    ASSERT_TRUE(run());
    EXPECT_EQ(books.stored("SELECT * FROM buy_Frequence_Table"),
              u"2004-1|B|3;2004-11|a|4;2004-11|B|1;2004-11|B|2;2004-11|b|5");
    EXPECT_EQ(books.stored("SELECT * FROM buy_Frequence_Table2"), u"2004-1|B|1;2004-11|a|1;2004-11|B|3");
    RecordsetPtr counted;
    session().reopen(counted, "Select 日期, 客户编号, Count(订单号) As 购买次数 From buy_Frequence_Table "
                              "Group By 日期, 客户编号 ");
    EXPECT_EQ(counted->RecordCount(), 3);
    EXPECT_EQ(toText(counted->valueAt(2, 2)), u"3");
    EXPECT_EQ(intervals(), u"10:1:100%") << "numbers are the same in any case";
}

TEST_F(Frequency, AClickOnAnIntervalMakesTheTableOfItsCustomers) {
    buys("a", {"2004-04-01", "2004-05-01"});
    buys("o'b", {"2004-04-01", "2004-05-01"});
    buys("c", {"2004-03-01", "2004-05-01"});
    ASSERT_TRUE(run());
    EXPECT_EQ(session().intervalClients[1], u"'a', 'o''b'");
    session().analysisKind = 2;
    session().cutOnScreen = true;
    ASSERT_TRUE(showIntervalClients(session(), 1));
    EXPECT_EQ(books.stored("SELECT 客户编号 FROM clientTable3"), u"a;o'b");
    EXPECT_EQ(session().clientTable3->RecordCount(), 2);
    EXPECT_EQ(session().analysisKind, 1) << "a cut of the best customers has lost its table";
    EXPECT_FALSE(session().cutOnScreen);
}

TEST_F(Frequency, AClickOnAnEmptyIntervalDropsTheTableAndNothingElse) {
    buys("a", {"2004-04-01", "2004-05-01"});
    ASSERT_TRUE(run());
    ASSERT_TRUE(showIntervalClients(session(), 1));
    session().analysisKind = 2;
    session().cutOnScreen = true;
    for (const int interval : {0, 2, 24, 25, 26, -1}) {
        EXPECT_FALSE(showIntervalClients(session(), interval)) << interval;
        EXPECT_EQ(session().analysisKind, 2) << interval;
        EXPECT_TRUE(session().cutOnScreen) << interval;
        EXPECT_FALSE(session().cn.hasTable("clientTable3")) << interval;
        EXPECT_FALSE(session().clientTable3->isOpen()) << interval;
    }
}

TEST_F(Frequency, ANewRunHasNewLists) {
    buys("a", {"2004-04-01", "2004-05-01"});
    ASSERT_TRUE(run());
    buys("a", {"2004-08-01"});
    ASSERT_TRUE(run());
    EXPECT_EQ(session().intervalClients[1], u"");
    EXPECT_EQ(session().intervalClients[3], u"'a'");
}

TEST_F(Frequency, AMonthTableWithoutRowsEndsTheRun) {
    buys("a", {"2004-04-01", "2004-05-01"});
    books.changeBehind("DELETE FROM month_Table");
    session().intervalClients[2] = QStringLiteral("'old'");
    EXPECT_FALSE(run());
    EXPECT_EQ(session().intervalClients[2], u"") << "the lists are emptied before";
}

} // namespace

#include "analysis/turnover.h"
#include "data/workTable.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

using Span = TurnoverSpan;

QString keyOf(Span span, const char* date) {
    return spanKey(span, QString::fromUtf8(date)).value_or(QStringLiteral("none"));
}

TEST(TimeKeys, AMonthHasSixCharactersOrSeven) {
    EXPECT_EQ(monthKey("2004-1-5"), u"2004-1");
    EXPECT_EQ(monthKey("2004-1-15"), u"2004-1");
    EXPECT_EQ(monthKey("2004-11-5"), u"2004-11");
    EXPECT_EQ(monthKey("2004-1-5 10:20:30"), u"2004-1");
    EXPECT_EQ(monthKey(""), u"");
}

TEST(TimeKeys, EverySpanHasItsOwnKey) {
    const std::tuple<const char*, const char*, const char*> months[] = {
        {"2004-1-31", "2004-1季度", "2004-上半年"},  {"2004-3-1", "2004-1季度", "2004-上半年"},
        {"2004-4-1", "2004-2季度", "2004-上半年"},   {"2004-6-30", "2004-2季度", "2004-上半年"},
        {"2004-7-1", "2004-3季度", "2004-下半年"},   {"2004-9-9", "2004-3季度", "2004-下半年"},
        {"2004-10-10", "2004-4季度", "2004-下半年"}, {"2004-12-31", "2004-4季度", "2004-下半年"}};
    for (const auto& [date, quarter, half] : months) {
        EXPECT_EQ(keyOf(Span::Quarter, date), QString::fromUtf8(quarter)) << date;
        EXPECT_EQ(keyOf(Span::HalfYear, date), QString::fromUtf8(half)) << date;
        EXPECT_EQ(keyOf(Span::Year, date), u"2004年") << date;
    }
}

TEST(TimeKeys, AMonthOutsideOneToTwelveHasNoQuarterAndNoHalfYear) {
    for (const char* date : {"", "2004-13-1", "2004-01-1", "2004-0-1"}) {
        EXPECT_EQ(keyOf(Span::Quarter, date), u"none") << date;
        EXPECT_EQ(keyOf(Span::HalfYear, date), u"none") << date;
    }
    EXPECT_EQ(keyOf(Span::Month, "2004-13-1"), u"2004-13");
    EXPECT_EQ(keyOf(Span::Year, ""), u"年");
}

class Turnover : public testing::Test {
protected:
    Session& session() { return books.session(); }
    /// Counts, and writes the work table as the command does. Out: the result, "key value" a row.
    QString count(int statistic) {
        const auto rows = countTurnover(session(), turnoverStatistics()[std::size_t(statistic)]);
        if (!rows)
            return QStringLiteral("nothing");
        fillTable(session().cn, "saleTable", *rows);
        return shown(session().saleTable);
    }
    QString shown(const RecordsetPtr& result) {
        QStringList rows;
        for (int i = 0; i < result->RecordCount(); ++i)
            rows << toText(result->valueAt(i, 0)) + u' ' + toText(result->valueAt(i, 1));
        return rows.join(u';');
    }
    /// The same by the statement over the work table in the file.
    QString counted() {
        RecordsetPtr result;
        session().reopen(result, "Select 日期, Sum(实收) As 营业额 From saleTable Group By 日期");
        return shown(result);
    }

    TestBooks books;
};

TEST_F(Turnover, EveryLineIsARowAndTheKeysStandInTheOrderOfTexts) {
    books.addLine("1", "c", "p", "2004-10-02", 1, 5, 1);
    books.addLine("2", "c", "p", "2004-02-28", 1, 7.25, 1);
    books.addLine("3", "c", "p", "2004-02-01", 1, 0, 1);
    books.addLine("4", "c", "p", "2003-12-31", 1, -2, 1);
    session().open_rs();
    EXPECT_EQ(count(0), u"2003-12 -2;2004-10 5;2004-2 7.25") << "October stands before February";
    EXPECT_EQ(books.stored("SELECT 日期, 实收 FROM saleTable"),
              u"2004-10|5.0;2004-2|7.25;2004-2|0.0;2003-12|-2.0");
    EXPECT_EQ(session().turnoverTitle, u"营 业 额 统 计(按月)");
    EXPECT_EQ(count(1), u"2003-4季度 -2;2004-1季度 7.25;2004-4季度 5");
    EXPECT_EQ(session().turnoverTitle, u"营 业 额 统 计(按季度)");
    EXPECT_EQ(count(2), u"2003-下半年 -2;2004-上半年 7.25;2004-下半年 5");
    EXPECT_EQ(session().turnoverTitle, u"营 业 额 统 计(按半年)");
    EXPECT_EQ(count(3), u"2003年 -2;2004年 12.25");
    EXPECT_EQ(session().turnoverTitle, u"营 业 额 统 计(按年)");
}

TEST_F(Turnover, WhatIsShownIsWhatTheStatementGivesOverTheWorkTable) {
    for (int i = 0; i < 60; ++i)
        books.addLine(QString::number(i), "c", "p", QDate(2000, 1, 31).addDays(29 * i).toString(Qt::ISODate),
                      1, 0.1 * i - 1, 1);
    books.changeBehind("UPDATE buyList SET 日期 = NULL WHERE 流水号 IN (1, 7)");
    books.changeBehind("UPDATE buyList SET 实付 = NULL WHERE 流水号 IN (3, 30)");
    session().open_rs();
    for (int statistic = 0; statistic < 4; ++statistic) {
        const QString result = count(statistic);
        EXPECT_EQ(result, counted()) << statistic;
        EXPECT_TRUE(result.contains(u';'));
    }
}

TEST_F(Turnover, ALineWithoutADateTakesTheKeyOfTheLineBeforeIt) {
    books.addLine("1", "c", "p", "2004-01-01", 1, 1, 1);
    books.addLine("2", "c", "p", "2004-05-01", 1, 2, 1);
    books.addLine("3", "c", "p", "2004-05-01", 1, 4, 1);
    books.addLine("4", "c", "p", "2004-09-01", 1, 8, 1);
    books.changeBehind("UPDATE buyList SET 日期 = NULL WHERE 流水号 IN (1, 3)");
    session().open_rs();
    EXPECT_EQ(count(1), u" 1;2004-2季度 6;2004-3季度 8") << "the first has none before it";
    EXPECT_EQ(count(2), u" 1;2004-上半年 6;2004-下半年 8");
    EXPECT_EQ(count(0), u" 5;2004-5 2;2004-9 8") << "by month it has a key of its own";
    EXPECT_EQ(count(3), u"2004年 10;年 5");
}

TEST_F(Turnover, APeriodLeftOnTheLinesDoesNotCount) {
    books.addLine("1", "c", "p", "2004-01-01", 1, 1, 1);
    books.addLine("2", "c", "p", "2005-01-01", 1, 2, 1);
    session().open_rs();
    session().buyList->setFilter("日期 >= #2005-1-1#");
    EXPECT_EQ(count(3), u"2004年 1;2005年 2");
}

TEST_F(Turnover, WithoutLinesNothingChanges) {
    books.execute("INSERT INTO saleTable VALUES ('2001年', 3)");
    session().open_rs();
    session().turnoverTitle = QStringLiteral("before");
    EXPECT_EQ(count(0), u"nothing");
    EXPECT_EQ(books.stored("SELECT * FROM saleTable"), u"2001年|3.0");
    EXPECT_EQ(session().turnoverTitle, u"before");
}

TEST_F(Turnover, ASecondCountTakesThePlaceOfTheFirst) {
    books.addLine("1", "c", "p", "2004-01-01", 1, 1, 1);
    session().open_rs();
    count(0);
    session().reopen(session().scratch, "Select * From saleTable"); // its rows are in memory now
    EXPECT_EQ(count(3), u"2004年 1");
    EXPECT_EQ(counted(), u"2004年 1");
    session().reopen(session().scratch, "Select * From saleTable");
    EXPECT_EQ(session().scratch->RecordCount(), 1);
}

TEST_F(Turnover, TheChartHasTheLastTwentyFourSpans) {
    for (int i = 0; i < 30; ++i)
        books.addLine("1", "c", "p", QStringLiteral("%1-06-01").arg(1990 + i), 1, i, 1);
    session().open_rs();
    count(3);
    QList<SpanTurnover> spans = lastSpans(session().saleTable);
    ASSERT_EQ(spans.size(), 24);
    EXPECT_EQ(spans.first().label, u"1996年");
    EXPECT_EQ(spans.first().value, 6);
    EXPECT_EQ(spans.last().label, u"2019年");
    books.changeBehind("DELETE FROM buyList WHERE 流水号 > 3");
    session().open_rs();
    count(3);
    spans = lastSpans(session().saleTable);
    ASSERT_EQ(spans.size(), 24);
    EXPECT_EQ(spans[2].label, u"1992年");
    EXPECT_EQ(spans[3].label, u"");
    EXPECT_EQ(spans[23].value, 0);
}

} // namespace

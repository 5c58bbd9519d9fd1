#include "analysis/periodCopies.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

#include <random>

namespace {

class PeriodCopiesTest : public testing::Test {
protected:
    Session& session() { return books.session(); }
    void SetUp() override {
        books.addClient("7", "甲");
        books.addClient("8", "乙");
        books.addClient("9", "丙");
        books.addProduct("p", "纸", 5, 1, 2); // of 2004-1-5
        books.addLine("1", "7", "p", "2003-12-31", 1, 100, 40);
        books.addLine("2", "7", "p", "2004-03-05", 2, 100, 40);
        books.addLine("3", "8", "p", "2004-09-30", 1, 50, 20);
        books.addLine("4", "8", "p", "2004-10-01", 1, 30, 20);
        books.addLine("5", "9", "p", "2004-03-06", 1, 10, 5);
        books.addLine("6", "9", "p", "2004-03-06", -1, -10, 5);
        books.execute("INSERT INTO return_Bank (日期, 产品编号) VALUES ('2004-03-01', 'p'), "
                      "('2005-03-01', 'p')");
        books.execute("INSERT INTO no_use_Bank (日期, 产品编号) VALUES ('2004-04-01', 'p')");
        session().open_rs();
        client_totals_recount(session().cn, session().clientTable, session().buyList);
    }
    void build(const char* condition, PeriodCopies copies = PeriodCopies::All) {
        buildPeriodCopies(session(), QString::fromUtf8(condition), copies);
    }
    int count(const RecordsetPtr& cursor) { return cursor->isOpen() ? cursor->RecordCount() : -1; }

    TestBooks books;
};

TEST_F(PeriodCopiesTest, SixCopiesHoldThePeriodAndTheirCursorsAreOpen) {
    build("日期 >= #2004-1-1# And 日期 <= #2004-12-31#");
    EXPECT_EQ(count(session().clientTable2), 3);
    EXPECT_EQ(count(session().buyList2), 5);
    EXPECT_EQ(count(session().productTable2), 1);
    EXPECT_EQ(count(session().product_Bank2), 1);
    EXPECT_EQ(count(session().return_Bank2), 1);
    EXPECT_EQ(count(session().no_use_Bank2), 1);
    EXPECT_EQ(books.stored("SELECT name FROM sqlite_master WHERE name = 'out_of_Bank2'"), u"")
        << "transfers have no copy";
}

TEST_F(PeriodCopiesTest, TheCopyOfACustomerCarriesTheTotalsOfThePeriodAlone) {
    build("日期 = #2004-3-5#");
    EXPECT_EQ(books.stored("SELECT 客户编号, 消费合计, 差额利润, 购买数, 差额利润率 FROM clientTable2"),
              u"7|100.0|20.0|2.0|20%");
    EXPECT_EQ(books.stored("SELECT 消费合计 FROM clientTable WHERE 客户编号 = '7'"), u"200.0")
        << "the customer himself keeps his own";
}

TEST_F(PeriodCopiesTest, ACustomerWhoseLinesSumToNothingPaidHasZeroInAllFourFields) {
    build("日期 = #2004-3-6#");
    EXPECT_EQ(books.stored("SELECT 客户编号, 消费合计, 差额利润, 购买数, 差额利润率 FROM clientTable2"),
              u"9|0.0|0.0|0.0|0");
}

TEST_F(PeriodCopiesTest, TheThirdQuarterEndsBeforeTheFirstOfOctober) {
    build("日期 >= #2004-7-1# And 日期 < #2004-10-1#");
    EXPECT_EQ(books.stored("SELECT 订单号 FROM buyList2"), u"3");
}

TEST_F(PeriodCopiesTest, TheConditionStaysAsFilterOnLinesAndProducts) {
    build("日期 < #2004-1-5#");
    EXPECT_EQ(session().buyList->Filter(), u"日期 < #2004-1-5#");
    EXPECT_EQ(count(session().buyList), 1);
    EXPECT_EQ(session().productTable->Filter(), u"日期 < #2004-1-5#");
    EXPECT_EQ(count(session().productTable), 0);
}

TEST_F(PeriodCopiesTest, AnImpossibleMonthLosesTheCopiesAndLeavesTheFilters) {
    build("日期 >= #2004-1-1#");
    session().buyList->setFilter("客户编号 = '7'");
    build("日期 >= #2004-13-1#");
    for (const auto& cursor : {session().clientTable2, session().buyList2, session().productTable2,
                               session().product_Bank2, session().return_Bank2, session().no_use_Bank2})
        EXPECT_FALSE(cursor->isOpen());
    EXPECT_EQ(books.stored("SELECT name FROM sqlite_master WHERE name IN ('clientTable2', 'buyList2', "
                           "'productTable2', 'product_Bank2', 'return_Bank2', 'no_use_Bank2')"),
              u"");
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = '7'");
}

TEST_F(PeriodCopiesTest, AMissingCopyIsMadeAndAnOldOneReplaced) {
    books.execute("DROP TABLE return_Bank2");
    build("日期 >= #2004-1-1#");
    EXPECT_EQ(count(session().return_Bank2), 2);
    build("日期 >= #2005-1-1#");
    EXPECT_EQ(count(session().return_Bank2), 1);
    EXPECT_EQ(count(session().buyList2), 0);
}

TEST_F(PeriodCopiesTest, TheRegisterGetsCustomersLinesAndProductsOnly) {
    build("日期 >= #2004-1-1#", PeriodCopies::ForTheRegister);
    EXPECT_EQ(count(session().productTable2), 1);
    EXPECT_FALSE(session().product_Bank2->isOpen());
    EXPECT_FALSE(session().return_Bank2->isOpen());
    EXPECT_EQ(count(session().buyList), 5) << "the filter is put all the same";
}

TEST_F(PeriodCopiesTest, LinesInAnyOrderGiveTheCopiesThatTheEngineWouldSelect) {
    std::mt19937 random(3);
    for (int i = 0; i < 400; ++i) {
        const QString client = QStringList{"7", "8", "9", "a1", "A1", "gone"}[qsizetype(random() % 6)];
        books.addLine(QString::number(100 + i / 3), client, "p",
                      QStringLiteral("200%1-0%2-15").arg(3 + random() % 3).arg(1 + random() % 9),
                      int(random() % 5), int(random() % 100), 3);
    }
    books.addClient("A1", "丁");
    books.execute("INSERT INTO clientTable (单位名称) VALUES ('没有编号')");
    books.execute("INSERT INTO buyList (订单号, 日期, 实付) VALUES ('999', '2004-05-15', 77)");
    books.changeBehind("DELETE FROM buyList WHERE rowid % 7 = 0");
    session().open_rs();
    session().buyList->MoveFirst();
    session().buyList->Delete();
    build("日期 >= #2004-1-1# And 日期 <= #2004-12-31#");
    const QString inPeriod = QStringLiteral("日期 >= '2004-01-01' AND 日期 <= '2004-12-31'");
    EXPECT_EQ(
        books.stored("SELECT 订单号, 客户编号, 日期, 数量, 实付 FROM buyList2 ORDER BY rowid"),
        books.stored(
            QStringLiteral("SELECT 订单号, 客户编号, 日期, 数量, 实付 FROM buyList WHERE %1 ORDER BY rowid")
                .arg(inPeriod)));
    EXPECT_EQ(
        books.stored("SELECT 客户编号, 单位名称, 消费合计, 购买数 FROM clientTable2 ORDER BY rowid"),
        books.stored(QStringLiteral("SELECT 客户编号, 单位名称, (SELECT sum(实付) FROM buyList l WHERE "
                                    "l.客户编号 = c.客户编号 AND %1), (SELECT sum(数量) FROM buyList l WHERE "
                                    "l.客户编号 = c.客户编号 AND %1) FROM clientTable c WHERE 客户编号 IN "
                                    "(SELECT 客户编号 FROM buyList WHERE %1) ORDER BY rowid")
                         .arg(inPeriod)));
    EXPECT_EQ(count(session().buyList2), count(session().buyList));
}

TEST_F(PeriodCopiesTest, ANumberWithBlanksIsCopiedByItselfAndCountedWithoutThem) {
    books.changeBehind("INSERT INTO clientTable (客户编号, 单位名称) VALUES (' 7', '空格')");
    books.addLine("50", " 7", "p", "2004-03-05", 1, 30, 1);
    session().open_rs();
    build("日期 = #2004-3-5#");
    EXPECT_EQ(books.stored("SELECT 单位名称, 消费合计 FROM clientTable2 ORDER BY rowid"),
              u"甲|100.0;空格|100.0");
}

TEST_F(PeriodCopiesTest, TotalsThatCannotBeCountedLeaveTheCustomersInTheCopy) {
    books.changeBehind("UPDATE buyList SET 实付 = 1e308, 差额利润 = 1e308 WHERE 客户编号 = '8'");
    books.addLine("51", "8", "p", "2004-09-30", 1, 1e308, 1e308);
    books.changeBehind("UPDATE clientTable SET 消费合计 = 5");
    session().open_rs();
    build("日期 >= #2004-1-1#");
    EXPECT_EQ(books.stored("SELECT 客户编号, 消费合计 FROM clientTable2 ORDER BY rowid"),
              u"7|100.0;8|5.0;9|5.0");
}

TEST_F(PeriodCopiesTest, EachCopyIsOneTransaction) {
    build("日期 >= #2004-1-1#");
    const int before = session().cn.commits();
    build("日期 >= #2004-1-1#");
    EXPECT_EQ(session().cn.commits(), before + 6);
}

TEST_F(PeriodCopiesTest, EachAskerGetsItsPeriodNumber) {
    const std::pair<int, int> marks[] = {{1, 7},   {2, 9},   {3, 4},   {11, 12}, {15, 16}, {18, 19},
                                         {20, 21}, {23, 23}, {17, 17}, {7, 7},   {4, 4}};
    for (const auto& [before, after] : marks) {
        session().showSource = ShowSource(before);
        showPeriodSource(session());
        EXPECT_EQ(session().showSource, ShowSource(after)) << before;
    }
    EXPECT_EQ(session().clientShowSource, ShowSource(7));
    EXPECT_EQ(session().saleShowSource, ShowSource(9));
    EXPECT_EQ(session().stockShowSource, ShowSource(4));
}

TEST_F(PeriodCopiesTest, TheYearsOfTheLinesAscendEachOnce) {
    EXPECT_EQ(yearsOfLines(session()), (QStringList{"2003", "2004"}));
    TestBooks empty;
    empty.session().open_rs();
    EXPECT_EQ(yearsOfLines(empty.session()), QStringList());
}

TEST_F(PeriodCopiesTest, ALineWithoutADateHasNoYear) {
    session().buyList->AddNew();
    session().buyList->Fields("订单号").setValue(QStringLiteral("9"));
    session().buyList->Update();
    EXPECT_EQ(yearsOfLines(session()), (QStringList{"2003", "2004"}));
}

TEST_F(PeriodCopiesTest, TheOlderDialogFiltersTheShownCursorAndKeepsItsFirstAndLastDate) {
    session().showSource = ShowSource(2);
    filterShownCursor(session(), "日期 >= #2004-1-1# And 日期 <= #2004-9-30#");
    EXPECT_EQ(count(session().buyList), 4);
    EXPECT_EQ(session().buyList->Sort(), u"日期");
    EXPECT_EQ(session().periodDate1 + u'/' + session().periodDate2, u"2004-3-5/2004-9-30");
    filterShownCursor(session(), "日期 > #2010-1-1#");
    EXPECT_EQ(session().periodDate1 + session().periodDate2, u"");
    session().showSource = ShowSource(3);
    filterShownCursor(session(), "日期 >= #2004-1-1#");
    EXPECT_EQ(session().periodDate1 + u'/' + session().periodDate2, u"2004-1-5/2004-1-5");
    session().showSource = ShowSource(18);
    session().reopen(session().return_Bank, "Select * From return_Bank");
    session().periodDate1 = "x";
    filterShownCursor(session(), "日期 > #2005-1-1#");
    EXPECT_EQ(count(session().return_Bank), 1);
    EXPECT_EQ(session().periodDate1, u"x") << "kept for customers, lines and products only";
}

/// Every cell of a table as the cursor over it has it, rows parted by ";".
QString cellsOf(const Recordset& cursor) {
    QString cells;
    for (int row = 0; row < cursor.RecordCount(); ++row) {
        for (int field = 0; field < cursor.fieldCount(); ++field)
            cells += fieldText(cursor.valueAt(row, field)) + u'|';
        cells += u';';
    }
    return cells;
}

TEST_F(PeriodCopiesTest, WhatIsInMemoryOfTheRowsIsTheCopysTooAndIsWhatItsFileHolds) {
    books.changeBehind("UPDATE buyList SET 品名 = NULL, 折扣 = '' WHERE 订单号 = '3'");
    session().open_rs();
    session().buyList->setFilter("订单号 = '5'");
    session().buyList->Delete();
    session().buyList->clearFilter();
    session().buyList->MoveFirst();
    session().buyList->Fields("品名").setValue(QStringLiteral("未保存"));
    session().buyList->setSort("实付 desc");
    session().buyList->image().loadAllColumns();
    session().clientTable->image().loadAllColumns();
    build("日期 >= #2004-01-01# And 日期 <= #2004-12-31#");
    for (const RecordsetPtr& copy : {session().buyList2, session().clientTable2}) {
        SCOPED_TRACE(copy->image().table().toStdString());
        EXPECT_TRUE(copy->image().isLoaded(copy->image().columnIndex("客户编号")));
        const QString inMemory = cellsOf(*copy);
        Session fresh(books.path());
        Recordset stored(fresh.cn);
        stored.Open("Select * From " + copy->image().table());
        EXPECT_EQ(inMemory, cellsOf(stored));
        EXPECT_GT(stored.RecordCount(), 1);
    }
}

TEST_F(PeriodCopiesTest, ACopysTextsAreItsOwn) {
    session().buyList->image().loadAllColumns();
    build("日期 >= #2004-01-01# And 日期 <= #2004-12-31#");
    session().buyList2->MoveFirst();
    session().buyList2->Fields("品名").setValue(QStringLiteral("只在这里"));
    session().buyList2->Update();
    session().buyList2->setFilter("品名 = '只在这里'");
    EXPECT_EQ(session().buyList2->RecordCount(), 1);
    session().buyList->setFilter("品名 = '只在这里'");
    EXPECT_EQ(session().buyList->RecordCount(), 0);
}

} // namespace

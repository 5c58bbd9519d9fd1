#include "support/errorOf.h"
#include "support/printQt.h"
#include "support/scratchFile.h"

#include <gtest/gtest.h>

namespace {

class FilterSort : public testing::Test {
protected:
    FilterSort()
        : m_file(QStringLiteral(
              "CREATE TABLE t (客户编号 TEXT(20) COLLATE NOCASE, 产品编号 TEXT(20) COLLATE NOCASE,"
              "品名 TEXT(50) COLLATE NOCASE, 日期 DATETEXT, 数量 REAL, 次数 INTEGER);")) {}

    void row(const QString& values) {
        m_file.connection().execute(QStringLiteral("INSERT INTO t VALUES (%1)").arg(values));
    }

    RecordsetPtr open() { return m_file.open(QStringLiteral("Select * From t")); }

    RecordsetPtr sample() {
        row("'7','p1','O''Neil','2004-01-05',-1,1");
        row("'7','p2','aXb','2004-12-31',2,2");
        row("'8','p1','','2005-01-01',3,NULL");
        row("'8','P1',NULL,NULL,NULL,3");
        row("'9','p3','键盘','2004-01-05 08:00:00',2.5,4");
        return open();
    }

    /// Positions in base order of the rows that pass, such as "1,3".
    QString passing(const RecordsetPtr& rs, const QString& filter) {
        rs->setFilter(filter);
        QStringList rows;
        for (int i = 0; i < rs->RecordCount(); ++i)
            rows << QString::number(rs->rowAt(i) + 1);
        return rows.join(u',');
    }

    ScratchFile m_file;
};

TEST_F(FilterSort, TextsThatAreAccepted) {
    const RecordsetPtr rs = sample();
    const std::pair<const char*, const char*> cases[] = {
        {"客户编号='7' And 产品编号 = 'p1'", "1"},
        {"(日期 >= #2004-1-1#) And (日期 <= #2004-12-31#)", "1,2,5"},
        {"产品编号 = 'p3' Or 品名 Like '%x%'", "2,5"},
        {"数量 <= -1", "1"},
        {"数量 <= 2", "1,2"},
        {"数量 <= '2'", "1,2"},
        {"品名 Like '%%'", "1,2,3,5"},
        {"品名 Like '*'", "1,2,3,5"},
        {"品名 Like '%a*%'", "2"},
        {"品名 Like 'a%'", "2"},
        {"品名 Like 'AXB'", "2"},
        {"品名 = 'O''Neil'", "1"},
        {"品名 = ''", "3"},
        {"[品名] <> 'aXb'", "1,3,5"},
        {"产品编号 = 'P1'", "1,3,4"},
        {"日期 = #2004-1-5#", "1"},
        {"日期 = #2004/01/05 8:00#", "5"},
        {"日期 = '2004年1月5日'", "1"},
        {"客户编号 = 7", "1,2"},
        {"次数 > 1", "2,4,5"},
        {"数量 = 2.5e0", "5"},
        {"客户编号 = '7' Or 客户编号 = '8' And 产品编号 = 'p1'", "1,2,3,4"},
        {"  客户编号   =   '9'  ", "5"},
        {"品名 Like '%%' AND 数量 > 0 oR 客户编号 < '8'", "1,2,3,5"},
        {"客户编号 >= '8'", "3,4,5"},
    };
    for (const auto& [filter, rows] : cases)
        EXPECT_EQ(passing(rs, filter), QString(rows)) << filter;
}

TEST_F(FilterSort, TextsThatAreRefusedLeaveViewPositionAndFilter) {
    const RecordsetPtr rs = sample();
    rs->setFilter("客户编号 = '8'");
    rs->MoveNext();
    for (const char* filter :
         {"品名 Like '%a%b%'",  "品名 Like '%a'",    "产品编号 = ''' Or 品名 Like '%'%'",
          "客户编号 = 'it's'",  "客户编号 = 'a",     "日期 >= #2004-13-1#",
          "日期 = #2004-2-30#", "日期 = #2004--1#",  "(客户编号 = '1' Or 产品编号 = '2') And 品名 = '3'",
          "无此列 = '1'",       "客户编号 = ",       "   ",
          "客户编号",           "客户编号 = Null",   "数量 Like '%1%'",
          "日期 Like '%1%'",    "数量 = 'abc'",      "数量 = #2004-1-1#",
          "日期 = 5",           "日期 = 'abc'",      "客户编号 == '1'",
          "客户编号 = '1' Or",  "(客户编号 = '1'",   "客户编号 = '1')",
          "Not 客户编号 = '1'", "客户编号 In ('1')", "客户编号 = '1' 产品编号",
          "客户编号 ; '1'",     "[客户编号 = '1'"}) {
        EXPECT_EQ(errorOf([&] { rs->setFilter(filter); }), 3001) << filter;
        EXPECT_EQ(rs->RecordCount(), 2);
        EXPECT_EQ(rs->AbsolutePosition(), 2);
        EXPECT_EQ(rs->Filter(), u"客户编号 = '8'");
    }
}

TEST_F(FilterSort, UnderscoreQuestionMarkAndBracketStandForThemselves) {
    row("'1','p','a_b',NULL,1,1");
    row("'2','p','axb',NULL,1,1");
    row("'3','p','a?b[c',NULL,1,1");
    const RecordsetPtr rs = open();
    EXPECT_EQ(passing(rs, "品名 Like '%a_b%'"), u"1");
    EXPECT_EQ(passing(rs, "品名 Like '%?%'"), u"3");
    EXPECT_EQ(passing(rs, "品名 Like '%[%'"), u"3");
}

TEST_F(FilterSort, EqualityKnowsNoCaseOfLettersAndNothingElse) {
    row("'1','p','abc',NULL,1,1");
    row("'2','p','ABC',NULL,1,1");
    row("'3','p','Ａ',NULL,1,1");
    row("'4','p','A ',NULL,1,1");
    row("'5','p','é',NULL,1,1");
    const RecordsetPtr rs = open();
    EXPECT_EQ(passing(rs, "品名 = 'Abc'"), u"1,2");
    EXPECT_EQ(passing(rs, "品名 = 'A'"), u"");
    EXPECT_EQ(passing(rs, "品名 = 'A '"), u"4");
    EXPECT_EQ(passing(rs, "品名 = 'É'"), u"");
}

TEST_F(FilterSort, SortPutsDigitsThenChineseByPinyinThenLetters) {
    for (const char* name :
         {"Zebra", "鼠标", "apple", "2004-9", "打印纸", "硒鼓", "2004-10", "阿尔法", "键盘", "2004-2"})
        row(QStringLiteral("'1','p','%1',NULL,1,1").arg(QString(name)));
    const RecordsetPtr rs = open();
    rs->setSort("品名");
    EXPECT_EQ(column(rs, "品名"), u"2004-10,2004-2,2004-9,阿尔法,打印纸,键盘,鼠标,硒鼓,apple,Zebra");
    rs->setSort("品名 Desc");
    EXPECT_EQ(column(rs, "品名"), u"Zebra,apple,硒鼓,鼠标,键盘,打印纸,阿尔法,2004-9,2004-2,2004-10");
    rs->setSort("");
    EXPECT_EQ(column(rs, "品名"), u"Zebra,鼠标,apple,2004-9,打印纸,硒鼓,2004-10,阿尔法,键盘,2004-2");
}

TEST_F(FilterSort, SortIsStableOverTheBaseOrderAndDescendingKeepsTies) {
    row("'1','a','x',NULL,2,1");
    row("'2','a','X',NULL,1,2");
    row("'3','b','x',NULL,NULL,3");
    row("'4','b',NULL,NULL,2,4");
    const RecordsetPtr rs = open();
    rs->setSort("数量");
    EXPECT_EQ(column(rs, "客户编号"), u"3,2,1,4");
    rs->setSort("品名");
    EXPECT_EQ(column(rs, "客户编号"), u"4,1,2,3");
    rs->setSort("数量 desc");
    EXPECT_EQ(column(rs, "客户编号"), u"1,4,2,3");
    rs->setSort("产品编号 DESC, 次数 Desc");
    EXPECT_EQ(column(rs, "客户编号"), u"4,3,2,1");
    rs->setSort("[数量] Asc");
    EXPECT_EQ(column(rs, "客户编号"), u"3,2,1,4");
    EXPECT_EQ(errorOf([&] { rs->setSort("无此列"); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->setSort("数量 down"); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->setSort("数量,"); }), 3001);
    EXPECT_EQ(rs->Sort(), u"[数量] Asc");
}

TEST_F(FilterSort, DigitTextsSortLikeTheCollatorSortsThem) {
    row("'1','10','1',NULL,1,1");
    row("'2','9','1',NULL,1,1");
    row("'3','1001','1',NULL,1,1");
    row("'4','101','1',NULL,1,1");
    row("'5','','1',NULL,1,1");
    const RecordsetPtr rs = open();
    rs->setSort("产品编号");
    EXPECT_EQ(column(rs, "产品编号"), u",10,1001,101,9");
    rs->AddNew();
    rs->Fields("产品编号").setValue(QStringLiteral("A1"));
    rs->Update();
    rs->setSort("产品编号");
    EXPECT_EQ(column(rs, "产品编号"), u",10,1001,101,9,A1");
}

TEST_F(FilterSort, FilterOnAndOffGoesToTheFirstRowAndKeepsTheSort) {
    const RecordsetPtr rs = sample();
    rs->setSort("数量 Desc");
    rs->MoveLast();
    rs->clearFilter();
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    EXPECT_EQ(column(rs, "数量"), u"3,2.5,2,-1,Null");
    rs->setFilter("客户编号 = '7'");
    EXPECT_EQ(column(rs, "数量"), u"2,-1");
    rs->Requery();
    EXPECT_EQ(rs->Filter(), u"");
    EXPECT_EQ(rs->Sort(), u"数量 Desc");
    EXPECT_EQ(column(rs, "数量"), u"3,2.5,2,-1,Null");
}

TEST_F(FilterSort, AChangeOfARowNeverMovesItBeforeTheNextAssignment) {
    const RecordsetPtr rs = sample();
    rs->setFilter("客户编号 = '7'");
    rs->setSort("数量");
    rs->Fields("数量").setValue(99.0);
    rs->Fields("客户编号").setValue(QStringLiteral("0"));
    rs->Update();
    EXPECT_EQ(column(rs, "数量"), u"99,2");
    rs->setFilter("客户编号 = '7'");
    EXPECT_EQ(column(rs, "数量"), u"2");
}

TEST_F(FilterSort, ASortReordersTheRowsShownWhateverTheyHaveBecome) {
    const RecordsetPtr rs = sample();
    rs->setFilter("客户编号 = '7'");
    rs->Fields("客户编号").setValue(QStringLiteral("0"));
    rs->Fields("数量").setValue(9.0);
    const RecordsetPtr other = open();
    other->moveTo(1);
    other->Fields("客户编号").setValue(QStringLiteral("0"));
    other->Update();
    other->moveTo(2);
    other->Fields("客户编号").setValue(QStringLiteral("7"));
    other->Update();
    rs->setSort("数量");
    EXPECT_EQ(column(rs, "数量"), u"2,9");
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    rs->setSort("数量 Desc");
    EXPECT_EQ(column(rs, "数量"), u"9,2");
    rs->setSort("");
    EXPECT_EQ(column(rs, "产品编号"), u"p1,p2") << "back in base order";
    EXPECT_EQ(rs->pendingCount(), 1);
    rs->setFilter("客户编号 = '7'");
    EXPECT_EQ(column(rs, "产品编号"), u"p1") << "only a Filter judges anew";
    EXPECT_EQ(column(rs, "数量"), u"3");
}

TEST_F(FilterSort, ASortJudgesTheRowsAddedBehindTheFilter) {
    const RecordsetPtr rs = sample();
    const auto add = [&rs](const char* customer, double quantity) {
        rs->AddNew();
        rs->Fields("客户编号").setValue(QString::fromUtf8(customer));
        rs->Fields("数量").setValue(quantity);
    };
    rs->setFilter("客户编号 = '7'");
    add("7", 1);
    rs->Update();
    add("x", 0);
    rs->Update();
    add("y", 0);
    EXPECT_EQ(column(rs, "数量"), u"-1,2,1,0,0") << "until then they stand at the end in any case";
    rs->setSort("数量");
    EXPECT_EQ(column(rs, "数量"), u"-1,1,2");
    EXPECT_EQ(rs->pendingCount(), 1);
    rs->CancelBatch();
    add("z", 0);
    rs->setSort("");
    EXPECT_EQ(column(rs, "数量"), u"-1,2,1") << "a hidden row that is cancelled leaves none unjudged";
    rs->clearFilter();
    EXPECT_EQ(column(rs, "客户编号"), u"7,7,8,8,9,7,x,z");
}

TEST_F(FilterSort, AfterASortTheBaseOrderOfManyRowsComesBack) {
    m_file.connection().execute(
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 1999)"
        "INSERT INTO t SELECT i % 2, i, i % 3, NULL, (i * 7) % 2000, i FROM n");
    for (const char* source :
         {"Select * From t", "Select * From t Where 次数 >= 0", "Select * From t Order By 数量 Desc"}) {
        const RecordsetPtr rs = m_file.open(QString::fromUtf8(source));
        for (const char* filter : {"客户编号 = '1'", "次数 < 20", "次数 >= 0"}) {
            rs->clearFilter();
            rs->setSort("");
            rs->setFilter(filter);
            const QString base = column(rs, "次数");
            rs->setSort("品名 Desc, 数量 Desc");
            EXPECT_NE(column(rs, "次数"), base);
            rs->setSort("");
            EXPECT_EQ(column(rs, "次数"), base) << source << filter;
        }
        rs->setSort("数量");
        rs->moveTo(5);
        const QString gone = rs->Fields("次数").text();
        rs->Delete();
        rs->setSort("");
        EXPECT_EQ(rs->RecordCount(), 1999);
        EXPECT_FALSE(column(rs, "次数").split(u',').contains(gone));
        rs->AddNew();
        rs->Fields("次数").setValue(gone.toDouble());
        rs->Fields("数量").setValue(gone.toDouble() * 7 - 2000 * int(gone.toDouble() * 7 / 2000));
        rs->Update();
    }
}

TEST_F(FilterSort, FilterAndSortUsePendingValues) {
    const RecordsetPtr rs = sample();
    rs->Fields("客户编号").setValue(QStringLiteral("zz"));
    rs->Fields("数量").setValue(50.0);
    rs->AddNew();
    rs->Fields("客户编号").setValue(QStringLiteral("ZZ"));
    rs->setFilter("客户编号 = 'zz'");
    EXPECT_EQ(column(rs, "客户编号"), u"zz,ZZ");
    rs->setFilter("客户编号 = '7'");
    EXPECT_EQ(rs->RecordCount(), 1);
    rs->clearFilter();
    rs->setSort("数量 Desc");
    EXPECT_EQ(column(rs, "数量"), u"50,3,2.5,2,Null,Null");
    EXPECT_EQ(rs->pendingCount(), 2);
}

TEST_F(FilterSort, RepeatedEqualityUsesAnIndexThatFollowsInsertsUpdatesAndDeletes) {
    const RecordsetPtr rs = sample();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(passing(rs, "客户编号 = '7'"), u"1,2");
    rs->clearFilter();
    rs->AddNew();
    rs->Fields("客户编号").setValue(QStringLiteral("7"));
    rs->Update();
    EXPECT_EQ(passing(rs, "客户编号 = '7'"), u"1,2,6");
    rs->Delete();
    EXPECT_EQ(passing(rs, "客户编号 = '7'"), u"2,6");
    rs->MoveLast();
    rs->Fields("客户编号").setValue(QStringLiteral("8"));
    rs->Update();
    EXPECT_EQ(passing(rs, "客户编号 = '7'"), u"2");
    EXPECT_EQ(passing(rs, "客户编号 = '8' And 数量 > 0"), u"3");
}

} // namespace

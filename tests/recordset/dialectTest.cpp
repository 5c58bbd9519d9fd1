#include "recordset/dialect.h"

#include "support/errorOf.h"
#include "support/printQt.h"
#include "support/scratchFile.h"

#include <gtest/gtest.h>

namespace {

class Dialect : public testing::Test {
protected:
    Dialect()
        : m_file(QStringLiteral(
              "CREATE TABLE buyList (流水号 INTEGER, 订单号 TEXT(20) COLLATE NOCASE, 客户编号 TEXT(20) "
              "COLLATE NOCASE,"
              "产品编号 TEXT(20) COLLATE NOCASE, 日期 DATETEXT, 数量 REAL, 实付 REAL, 差额利润 REAL);"
              "CREATE TABLE clientTable (流水号 INTEGER, 客户编号 TEXT(20) COLLATE NOCASE, 地区 TEXT(50) "
              "COLLATE NOCASE,"
              "业务员编号 TEXT(20) COLLATE NOCASE, 消费合计 REAL);"
              "CREATE TABLE saleTable (日期 TEXT(50) COLLATE NOCASE, 实收 REAL);"
              "CREATE TABLE counts (日期 TEXT(50) COLLATE NOCASE, 客户编号 TEXT(20) COLLATE NOCASE, 订单号 "
              "TEXT(20) COLLATE NOCASE);")) {
        execute("INSERT INTO clientTable VALUES "
                "(1,'7','广东','s1',10),(2,'A1','北京','S1',20),(3,'9',NULL,'s2',NULL),"
                "(5,'8','','s2',5),(9,'x','广东',NULL,1)");
        execute("INSERT INTO buyList VALUES "
                "(1,'1','7','p1','2004-01-05',1,10,4),(2,'1','7','p2','2004-01-05',2,20,5),"
                "(3,'2','a1','p1','2004-12-31',3,30,6),(4,'3','7','p3','2005-02-01',4,40,7),(7,'2','A1','P2',"
                "'2004-12-31',5,5,1)");
        execute("INSERT INTO saleTable VALUES ('2004-9',1),('2004-10',2),('2004-2',4),('2004-10',8)");
        execute("INSERT INTO counts VALUES "
                "('2004-1','7','1'),('2004-1','7','2'),('2004-2','7',NULL),('2004-1','b','3'),('2004-2','7','"
                "4')");
    }

    void execute(const QString& sql) { m_file.connection().execute(sql); }
    RecordsetPtr open(const QString& source) { return m_file.open(source); }
    QString cells(const QString& source) {
        const RecordsetPtr rs = open(source);
        QStringList rows;
        for (int i = 0; i < rs->RecordCount(); ++i) {
            QStringList row;
            for (int f = 0; f < rs->fieldCount(); ++f)
                row << (isNull(rs->valueAt(i, f)) ? QStringLiteral("Null") : toText(rs->valueAt(i, f)));
            rows << row.join(u' ');
        }
        return rows.join(u';');
    }

    ScratchFile m_file;
};

TEST_F(Dialect, WordsInAnyCaseBlanksFreeAndCommasWithOrWithout) {
    EXPECT_EQ(open("Select * From buyList ")->RecordCount(), 5);
    EXPECT_EQ(open("select *  from  buyList")->RecordCount(), 5);
    EXPECT_EQ(cells("Select 产品编号,数量 , 实付 From buyList Where 客户编号 = '7'"),
              u"p1 1 10;p2 2 20;p3 4 40");
    m_file.run("Select * InTo copy From clientTable");
    EXPECT_EQ(m_file.stored("SELECT count(*) FROM copy"), u"5");
}

TEST_F(Dialect, WhereComparesTextsWithoutCaseAndKeepsBaseOrder) {
    EXPECT_EQ(column(open("Select * From buyList Where 客户编号 = 'A1'"), "流水号"), u"3,7");
    EXPECT_EQ(column(open("Select * From buyList Where 客户编号 = '7' And (日期 >= #2004-1-1# And 日期 <= "
                          "#2004-12-31#)"),
                     "流水号"),
              u"1,2");
    EXPECT_EQ(column(open("Select * From clientTable Where 业务员编号 = 's1'"), "流水号"), u"1,2");
}

TEST_F(Dialect, NotLeavesNullOut) {
    EXPECT_EQ(column(open("Select * From clientTable Where Not 地区 = '广东'"), "流水号"), u"2,5");
}

TEST_F(Dialect, InTakesASelectOrAList) {
    EXPECT_EQ(
        column(open("Select 客户编号 From clientTable Where 客户编号 In (Select 客户编号 From buyList)"),
               "客户编号"),
        u"7,A1");
    EXPECT_EQ(column(open("Select * From clientTable Where 客户编号 In (Select 客户编号 From buyList Where "
                          "日期 >= #2005-1-1#)"),
                     "客户编号"),
              u"7");
    EXPECT_EQ(column(open("Select * From clientTable Where 客户编号 In ('a1', '8')"), "客户编号"), u"A1,8");
}

TEST_F(Dialect, DatesThatDoNotExistAndStrayQuotesFailAndDoNothing) {
    for (const char* source : {"Select * Into t2 From buyList Where 日期 >= #2004-13-1#",
                               "Select * Into t2 From buyList Where 日期 = #2004-2-30#",
                               "Select * Into t2 From buyList Where 日期 >= #2004--1#",
                               "Select * From buyList Where 客户编号 = 'it's'",
                               "Select * From clientTable Where 客户编号 In (Select 客户编号 From buyList "
                               "Where 日期 = #2004-2-30#)"})
        EXPECT_EQ(errorOf([&] { m_file.run(source); }), 3001) << source;
    EXPECT_FALSE(m_file.connection().hasTable("t2"));
}

TEST_F(Dialect, AStatementOutsideTheDialectIsAnErrorAndNeverAGuess) {
    for (const char* source :
         {"", "Update t Set a = 1", "Select From t", "Select * From", "Select * From t Where",
          "Select Max(a) From t", "Select * From t; Drop Table t", "Drop t", "Delete From t",
          "Select * From t Order", "Select a, Sum(b) From t", "Select * From t Group By a",
          "Select * From a, b", "Select Top x * From t", "Select * From t Where a In ()",
          "Select * From t Where a In (Select * From u)", "Delete * From t Where a = 1"})
        EXPECT_EQ(errorOf([&] { parseStatement(source); }), 3001) << source;
}

TEST_F(Dialect, UnknownTablesAndColumnsAreNamedErrors) {
    EXPECT_EQ(errorOf([&] { open("Select * From missing"); }), 3078);
    EXPECT_EQ(errorOf([&] { open("Select nix From buyList"); }), 3265);
    EXPECT_EQ(errorOf([&] { open("Select Sum(nix) As a From buyList"); }), 3265);
    EXPECT_EQ(errorOf([&] { open("Select * From buyList Where nix = 'a'"); }), 3001);
    EXPECT_NE(errorOf([&] { open("Select * From buyList Where Not nix = 'a'"); }), 0);
    EXPECT_NE(errorOf([&] { open("Select * From clientTable Where 客户编号 In (Select nix From buyList)"); }),
              0);
    EXPECT_EQ(errorOf([&] { m_file.run("Drop Table missing"); }), 3376);
    EXPECT_EQ(errorOf([&] { m_file.run("Delete * From missing"); }), 3078);
}

TEST_F(Dialect, SumSkipsNullsAddsInBaseOrderAndIsNullOverNothing) {
    EXPECT_EQ(cells("Select Sum(消费合计) As 营业额总合 From clientTable"), u"36");
    EXPECT_EQ(
        cells("Select Sum(消费合计) As totalA, Count(地区) As 数量 From clientTable Where 客户编号 = 'none'"),
        u"Null 0");
    execute("INSERT INTO saleTable VALUES ('z',1e16),('z',1),('z',-1e16)");
    // 1e16 + 1 loses the 1: a compensated sum would give 1.
    EXPECT_EQ(cells("Select 日期, Sum(实收) As s From saleTable Where 日期 = 'z' Group By 日期"), u"z 0");
    execute("INSERT INTO saleTable VALUES ('y',1),('y',1e16),('y',-1e16),('x',1e16),('x',-1e16),('x',1)");
    EXPECT_EQ(cells("Select 日期, Sum(实收) As s From saleTable Where 日期 >= 'x' Group By 日期"),
              u"x 1;y 0;z 0");
}

TEST_F(Dialect, CountCountsEmptyTextsAndNoNulls) {
    EXPECT_EQ(cells("Select Count(地区) As 数量 From clientTable "), u"4");
    EXPECT_EQ(open("Select Count(地区) As 数量 From clientTable ")->Fields(0).type(), ColumnType::Integer);
}

TEST_F(Dialect, GroupsStandInTheOrderOfTheirColumns) {
    EXPECT_EQ(cells("Select 日期, Sum(实收) As 营业额 From saleTable Group By 日期"),
              u"2004-10 10;2004-2 4;2004-9 1");
    EXPECT_EQ(cells("Select 地区, Count(客户编号) As n From clientTable Group By 地区"),
              u"Null 1; 1;北京 1;广东 2");
    EXPECT_EQ(cells("Select 日期, 订单号, 客户编号, Sum(数量) As 购物数, Sum(实付) As 购物金额 From buyList "
                    "Group By 日期, 订单号, 客户编号 "),
              u"2004-1-5 1 7 3 30;2004-12-31 2 a1 8 35;2005-2-1 3 7 4 40");
    EXPECT_EQ(open("Select 日期, Sum(数量) As n From buyList Group By 日期")->Fields("日期").type(),
              ColumnType::Date);
}

TEST_F(Dialect, OrderByAnAggregatePutsTiesInTheOrderOfTheGroup) {
    EXPECT_EQ(
        cells("Select 地区, Count(地区) As 数量 From clientTable Group By 地区 Order By Count(地区) desc"),
        u"广东 2; 1;北京 1;Null 0");
    EXPECT_EQ(cells("Select 业务员编号, Sum(消费合计) As 营业额, Count(业务员编号) As 客户数 From "
                    "clientTable Group By 业务员编号 "
                    "Order By Sum(消费合计) desc"),
              u"s1 30 2;s2 5 2;Null 1 0");
    EXPECT_EQ(cells("Select 订单号, Sum(实付) As 购买额, Sum(差额利润) As 差额利润, Sum(数量) As 购买量 From "
                    "buyList Group By 订单号 "
                    "Order By Sum(实付) desc"),
              u"3 40 7 4;2 35 7 8;1 30 9 3");
}

TEST_F(Dialect, DistinctIsAscending) {
    EXPECT_EQ(cells("Select distinct 订单号 From buyList "), u"1;2;3");
    EXPECT_EQ(cells("Select distinct 客户编号 From counts Where 日期 = '2004-1'"), u"7;b");
}

TEST_F(Dialect, OrderByOfATableCursorIsItsBaseOrder) {
    const RecordsetPtr rs = open("Select 日期 From buyList Order By 日期");
    EXPECT_EQ(column(rs, "日期"), u"2004-1-5,2004-1-5,2004-12-31,2004-12-31,2005-2-1");
    EXPECT_EQ(rs->fieldCount(), 1);
    rs->setSort("日期 Desc");
    rs->setSort("");
    EXPECT_EQ(column(rs, "日期"), u"2004-1-5,2004-1-5,2004-12-31,2004-12-31,2005-2-1");
}

TEST_F(Dialect, SelectIntoKeepsTypesLengthsSerialsAndOrder) {
    m_file.run("Select 流水号, 客户编号, 地区 As 区, 消费合计 As 数 Into copy From clientTable");
    EXPECT_EQ(m_file.stored("SELECT name || ' ' || type FROM pragma_table_info('copy')"),
              u"流水号 INTEGER,客户编号 TEXT(20),区 TEXT(50),数 REAL");
    const RecordsetPtr rs = open("Select * From copy");
    EXPECT_EQ(column(rs, "流水号"), u"1,2,3,5,9");
    rs->AddNew();
    rs->Update();
    EXPECT_EQ(rs->Fields("流水号").text(), u"10");
    EXPECT_EQ(open("Select * From copy Where 客户编号 = 'a1'")->RecordCount(), 1);
}

TEST_F(Dialect, SelectIntoAnExistingTableFailsAndTheOldTableStands) {
    EXPECT_EQ(errorOf([&] { m_file.run("Select * Into saleTable From clientTable"); }), 3010);
    EXPECT_EQ(m_file.stored("SELECT count(*) FROM saleTable"), u"4");
}

TEST_F(Dialect, SelectTopOneIntoMakesTheEmptyTableOfAnEmptySource) {
    m_file.run(
        "Select Top 1 * Into clientTable3 From clientTable Where 客户编号 In (Select 客户编号 From buyList)");
    EXPECT_EQ(m_file.stored("SELECT 客户编号 FROM clientTable3"), u"7");
    m_file.run("Delete * From clientTable3");
    m_file.run("Select Top 1 * Into clientTable2 From clientTable3");
    EXPECT_EQ(open("Select * From clientTable2")->RecordCount(), 0);
    EXPECT_EQ(open("Select * From clientTable2")->fieldCount(), 5);
}

TEST_F(Dialect, SelectIntoWithGroupsMakesACountColumn) {
    m_file.run(
        "Select 日期, 客户编号, Count(订单号) As 购买次数 Into t2 From counts Group By 日期, 客户编号 ");
    EXPECT_EQ(cells("Select * From t2"), u"2004-1 7 2;2004-1 b 1;2004-2 7 1");
    EXPECT_EQ(open("Select * From t2")->Fields("购买次数").type(), ColumnType::Integer);
    EXPECT_EQ(column(open("Select * From t2 Where Not 日期 = '2004-1'"), "日期"), u"2004-2");
}

TEST_F(Dialect, AnAliasMayEqualAColumnInsideTheAggregate) {
    EXPECT_EQ(cells("Select 订单号, Sum(差额利润) As 差额利润 From buyList Group By 订单号"), u"1 9;2 7;3 7");
}

TEST_F(Dialect, TopTakesTheFirstRowsInBaseOrder) {
    EXPECT_EQ(column(open("Select Top 2 * From buyList"), "流水号"), u"1,2");
}

TEST_F(Dialect, EveryStatementOnATableIsOneCommit) {
    const int before = m_file.connection().commits();
    m_file.run("Select * Into t2 From buyList Where 日期 >= #2004-1-1# And 日期 <= #2004-12-31#");
    EXPECT_EQ(m_file.connection().commits(), before + 1);
    m_file.run("Drop Table t2");
    EXPECT_EQ(m_file.connection().commits(), before + 2);
}

TEST_F(Dialect, ABatchIsOneCommitAlsoWhereAnErrorEndsIt) {
    const RecordsetPtr rs = open("Select * From saleTable");
    const int before = m_file.connection().commits();
    EXPECT_EQ(errorOf([&] {
                  WriteBatch batch(m_file.connection());
                  rs->Delete();
                  rs->MoveNext();
                  rs->Delete();
                  WriteBatch inner(m_file.connection());
                  rs->Fields("nix");
              }),
              3265);
    EXPECT_EQ(m_file.connection().commits(), before + 1);
    EXPECT_EQ(m_file.stored("SELECT count(*) FROM saleTable"), u"2");
}

TEST_F(Dialect, ABatchThatWritesNothingCommitsNothing) {
    const int before = m_file.connection().commits();
    WriteBatch batch(m_file.connection());
    open("Select * From saleTable")->MoveLast();
    batch.finish();
    EXPECT_EQ(m_file.connection().commits(), before);
}

TEST_F(Dialect, ColumnsReadInsideABatchShowItsRows) {
    WriteBatch batch(m_file.connection());
    const RecordsetPtr rs = open("Select * From saleTable");
    rs->AddNew();
    rs->Fields("日期").setValue(QStringLiteral("neu"));
    rs->Update();
    rs->setFilter("日期 = 'neu'");
    EXPECT_EQ(rs->RecordCount(), 1);
}

TEST_F(Dialect, ManyRowsAreReadByTwoLoadersLikeByOne) {
    execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 50000) INSERT INTO "
            "saleTable "
            "SELECT 'm' || (i % 100), i FROM n");
    execute("DELETE FROM saleTable WHERE rowid % 7 = 0");
    const RecordsetPtr rs = open("Select * From saleTable");
    Statement statement = m_file.connection().prepare("SELECT 日期, 实收 FROM saleTable ORDER BY rowid");
    for (int i = 0; i < rs->RecordCount(); ++i) {
        ASSERT_TRUE(statement.step());
        ASSERT_EQ(toText(rs->valueAt(i, 0)), statement.text(0));
        ASSERT_EQ(rs->numberAt(i, 1), statement.number(1));
    }
    EXPECT_FALSE(statement.step());
}

} // namespace

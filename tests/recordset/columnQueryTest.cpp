// Aggregates, groups and distinct values answered from the columns in memory, beside the engine's own answer.
#include "support/printQt.h"
#include "support/scratchFile.h"

#include <gtest/gtest.h>

#include <random>

namespace {

const char* const kSchema =
    "CREATE TABLE t (流水号 INTEGER, k TEXT(20) COLLATE NOCASE, n TEXT(20) COLLATE NOCASE, "
    "d DATETEXT, a REAL, b REAL);";

class ColumnQueries : public testing::Test {
protected:
    void insert(const QString& values) {
        file.connection().forgetImage(QStringLiteral("t"));
        file.connection().execute(QStringLiteral("INSERT INTO t VALUES ") + values);
    }
    static QString cells(const RecordsetPtr& rs, bool foldsKeys = false) {
        QStringList rows;
        for (int i = 0; i < rs->RecordCount(); ++i) {
            QStringList row;
            for (int f = 0; f < rs->fieldCount(); ++f) {
                const CellValue value = rs->valueAt(i, f);
                const bool isText = std::holds_alternative<QString>(value);
                const QString text = isNull(value) ? QStringLiteral("Null") : toText(value);
                row << (foldsKeys && isText ? text.toUpper() : text);
            }
            rows << row.join(u' ');
        }
        return rows.join(u';');
    }
    /// The engine's answer: nothing of the table is in memory.
    QString byEngine(const QString& source) {
        file.connection().forgetImage(QStringLiteral("t"));
        return cells(file.open(source));
    }
    QString byColumns(const QString& source) {
        const RecordsetPtr loaded = file.open(QStringLiteral("Select * From t"));
        return cells(file.open(source));
    }

    ScratchFile file{QString::fromUtf8(kSchema)};
};

TEST_F(ColumnQueries, TheTextOfAGroupIsThatOfItsFirstRow) {
    insert("(1,'a1','x',NULL,1,1),(2,'A1','y',NULL,2,1),(3,'b','x',NULL,4,1)");
    EXPECT_EQ(byColumns("Select k, Sum(a) As s From t Group By k"), u"a1 3;b 4");
    EXPECT_EQ(byColumns("Select distinct k From t"), u"a1;b");
}

TEST_F(ColumnQueries, SumsOverNothingAreNullAndCountsZero) {
    EXPECT_EQ(byColumns("Select Sum(a) As s, Count(k) As c From t"), u"Null 0");
    EXPECT_EQ(byColumns("Select k, Sum(a) As s From t Group By k"), u"");
    insert("(1,NULL,'x',NULL,NULL,1),(2,NULL,'','2004-01-05',3,1),(3,'','x',NULL,NULL,1)");
    EXPECT_EQ(byColumns("Select k, Sum(a) As s, Count(n) As c From t Group By k"), u"Null 3 2; Null 1");
}

TEST_F(ColumnQueries, SumsAreAddedInTheOrderOfTheRows) {
    insert("(1,'k','x',NULL,1e16,1),(2,'k','x',NULL,1,1),(3,'k','x',NULL,-1e16,1),(4,'k','x',NULL,1,1)");
    EXPECT_EQ(byColumns("Select Sum(a) As s From t"), u"1");
    EXPECT_EQ(byEngine("Select Sum(a) As s From t"), u"1");
}

TEST_F(ColumnQueries, GroupsStandInTheOrderOfTextsAndTiesOfAFigureByGroup) {
    insert("(1,'鼠标','x',NULL,5,1),(2,'Zebra','x',NULL,5,1),(3,'2','x',NULL,7,1),(4,'打印纸','x',NULL,5,1),"
           "(5,NULL,'x',NULL,NULL,1)");
    EXPECT_EQ(byColumns("Select k, Sum(a) As s From t Group By k"), u"Null Null;2 7;打印纸 5;鼠标 5;Zebra 5");
    EXPECT_EQ(byColumns("Select k, Sum(a) As s From t Group By k Order By Sum(a) desc"),
              u"2 7;打印纸 5;鼠标 5;Zebra 5;Null Null");
}

TEST_F(ColumnQueries, DeletedRowsDoNotCountAndPendingEditsNeitherUntilTheyAreWritten) {
    insert("(1,'a','x',NULL,1,1),(2,'a','x',NULL,2,1),(3,'b','x',NULL,4,1)");
    const RecordsetPtr rows = file.open("Select * From t");
    rows->Fields("a").setValue(100.0);
    EXPECT_EQ(cells(file.open("Select k, Sum(a) As s From t Group By k")), u"a 3;b 4");
    rows->Update();
    EXPECT_EQ(cells(file.open("Select k, Sum(a) As s From t Group By k")), u"a 102;b 4");
    rows->Delete();
    EXPECT_EQ(cells(file.open("Select k, Sum(a) As s From t Group By k")), u"a 2;b 4");
    rows->AddNew();
    rows->Fields("k").setValue(QStringLiteral("c"));
    EXPECT_EQ(cells(file.open("Select distinct k From t")), u"a;b");
    rows->Update();
    EXPECT_EQ(cells(file.open("Select distinct k From t")), u"a;b;c");
}

TEST_F(ColumnQueries, ATableMadeAgainIsNeverAnsweredFromItsOldColumns) {
    insert("(1,'a','x',NULL,1,1)");
    const RecordsetPtr old = file.open("Select * From t");
    file.run("Select * Into u From t");
    file.run("Drop Table t");
    file.connection().execute(QString::fromUtf8(kSchema));
    insert("(1,'z','x',NULL,9,1)");
    EXPECT_EQ(cells(file.open("Select k, Sum(a) As s From t Group By k")), u"z 9");
    EXPECT_EQ(old->RecordCount(), 1);
}

TEST_F(ColumnQueries, BothRoadsGiveTheSameOnRandomTables) {
    const char* const statements[] = {
        "Select k, Sum(a) As s, Count(b) As c From t Group By k",
        "Select k, Sum(a) As s, Count(k) As c From t Group By k Order By Sum(a) desc",
        "Select k, Count(k) As c From t Group By k Order By Count(k) desc",
        "Select d, k, n, Sum(a) As s, Sum(b) As q From t Group By d, k, n",
        "Select d, Count(k) As c From t Group By d",
        "Select distinct k From t",
        "Select distinct k From t Where n = 'x'",
        "Select k, Sum(a) As s From t Where d >= #2004-1-3# And d < #2004-1-6# Group By k",
        "Select Sum(a) As x, Sum(b) As y From t",
        "Select Count(n) As c From t ",
        "Select Sum(a) As x From t Where k = 'nobody'",
    };
    const char* const texts[] = {"a", "A", "b", "ä", "阿尔法", "打印纸", "1", "10", "2", "", "O''Neil", "ｘ"};
    std::mt19937 random(7);
    const auto upTo = [&random](unsigned n) { return random() % n; };
    for (int round = 0; round < 40; ++round) {
        file.connection().forgetImage("t");
        file.connection().execute("DELETE FROM t");
        const unsigned rows = upTo(60);
        QStringList values;
        for (unsigned i = 0; i < rows; ++i) {
            const auto text = [&] {
                return upTo(6) == 0 ? QStringLiteral("NULL")
                                    : u'\'' + QString::fromUtf8(texts[upTo(12)]) + u'\'';
            };
            const auto number = [&] {
                return upTo(5) == 0 ? QStringLiteral("NULL") : QString::number((int(upTo(400)) - 200) / 8.0);
            };
            const QString date =
                upTo(6) == 0 ? QStringLiteral("NULL") : QStringLiteral("'2004-01-0%1'").arg(1 + upTo(8));
            values
                << QStringLiteral("(%1,%2,%3,%4,%5,%6)").arg(i).arg(text(), text(), date, number(), number());
        }
        if (!values.isEmpty())
            insert(values.join(u','));
        QStringList byColumns;
        {
            const RecordsetPtr loaded = file.open("Select * From t");
            for (const char* statement : statements)
                byColumns << cells(file.open(statement), true);
        }
        file.connection().forgetImage("t");
        for (std::size_t i = 0; i < std::size(statements); ++i)
            EXPECT_EQ(byColumns[qsizetype(i)], cells(file.open(statements[i]), true))
                << round << ' ' << statements[i];
    }
}

} // namespace

#include "maintenance/takeOver.h"
#include "data/recount.h"
#include "data/schema.h"
#include "data/session.h"
#include "data/unfinished.h"
#include "import/importSource.h"
#include "recordset/error.h"
#include "recordset/textDate.h"
#include "recordset/textNumber.h"
#include "support/jetFile.h"
#include "support/printQt.h"
#include "support/smallDisk.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::unique_ptr<ImportSource> openMdbSourceOf(const QString& path) {
    return openImportSource(SourceKind::Mdb, path);
}

class TakeOver : public testing::Test {
protected:
    TakeOver() { QFile::copy(QStringLiteral(SAMPLES "/legacy/VelmorClientBank.mdb"), path()); }
    QString path() const { return folder.filePath("VelmorClientBank.mdb"); }
    static QJsonArray expectedTables() {
        QFile file(QStringLiteral(SAMPLES "/legacy/expected.json"));
        return file.open(QIODevice::ReadOnly)
                   ? QJsonDocument::fromJson(file.readAll()).object()["tables"].toArray()
                   : QJsonArray();
    }
    static QByteArray contents(const QString& name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList files() const {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    }
    /// Whether a take-over fails, the old file stands as it was, and nothing is beside it.
    bool failsAndLeavesNothing(const QByteArray& before) {
        try {
            takeOver(path());
            return false;
        } catch (const std::exception&) {
        }
        EXPECT_EQ(files(), QStringList{"VelmorClientBank.mdb"});
        EXPECT_EQ(contents(path()), before);
        return true;
    }
    void change(qsizetype at, const QByteArray& bytes) {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(at) && file.write(bytes) == bytes.size());
    }

    QTemporaryDir folder;
};

TEST_F(TakeOver, EveryTableComesOverCellByCell) {
    ASSERT_TRUE(isJetFile(path()));
    ASSERT_EQ(takeOverFault(path()), u"");
    takeOver(path());
    ASSERT_EQ(databaseFault(path()), u"");
    Session session(path());
    int cells = 0;
    for (const QJsonValue& each : expectedTables()) {
        const QJsonObject table = each.toObject();
        const QString name = table["name"].toString();
        RecordsetPtr rows;
        session.reopen(rows, QStringLiteral("Select * From ") + name);
        const QJsonArray wanted = table["rows"].toArray();
        ASSERT_EQ(rows->RecordCount(), wanted.size()) << name.toStdString();
        const QJsonArray columns = table["columns"].toArray();
        for (int row = 0; row < wanted.size(); ++row)
            for (int i = 0; i < columns.size(); ++i) {
                const QString column = columns[i].toObject()["name"].toString();
                const CellValue value = rows->valueAt(row, rows->fieldIndex(column));
                const QJsonValue expected = wanted[row].toArray()[i];
                ASSERT_EQ(isNull(value), expected.isNull())
                    << name.toStdString() << row << column.toStdString();
                if (expected.isNull())
                    continue;
                const QString text = toText(value);
                const bool number = columns[i].toObject()["type"].toString() == u"number";
                if (number && isNumeric(text))
                    ASSERT_NEAR(val(text), expected.toString().toDouble(), 1e-6)
                        << name.toStdString() << row << column.toStdString();
                else
                    ASSERT_EQ(text, expected.toString()) << name.toStdString() << row << column.toStdString();
                ++cells;
            }
    }
    EXPECT_GT(cells, 50000);
}

TEST_F(TakeOver, TheOldFileStaysByteForByteUnderAnotherName) {
    const QByteArray before = contents(path());
    const QString kept = takeOver(path()).kept;
    EXPECT_EQ(QFileInfo(kept).fileName(), u"VelmorClientBank-旧版.mdb");
    EXPECT_EQ(contents(kept), before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 2) << "nothing else is left";
}

TEST_F(TakeOver, TheBooksWorkOnAndTheRecountChangesNothing) {
    takeOver(path());
    Session session(path());
    session.open_rs();
    session.readCurrent();
    EXPECT_EQ(*session.nextClientNum, 1121);
    EXPECT_EQ(*session.nextOrderNum, 5584);
    EXPECT_EQ(*session.nextProductNum, 2151);
    Statement before = session.cn.prepare("SELECT group_concat(消费合计 || 差额利润率) FROM clientTable");
    before.step();
    const QString figures = before.text(0);
    client_totals_recount(session.cn, session.clientTable, session.buyList);
    Statement after = session.cn.prepare("SELECT group_concat(消费合计 || 差额利润率) FROM clientTable");
    after.step();
    EXPECT_EQ(after.text(0), figures);
}

TEST_F(TakeOver, WhatARunThatWasKilledLeftBehindIsSweptAway) {
    QFile half(unfinishedName(QFileInfo(path()).path()));
    QFile list(path() + ".unfinished");
    ASSERT_TRUE(half.open(QIODevice::WriteOnly) && half.write("half") == 4);
    ASSERT_TRUE(list.open(QIODevice::WriteOnly) && list.write(half.fileName().toUtf8() + '\n') > 0);
    half.close();
    list.close();
    clearUnfinished(path());
    EXPECT_FALSE(half.exists());
    EXPECT_FALSE(list.exists());
    takeOver(path());
    EXPECT_EQ(databaseFault(path()), u"");
}

TEST_F(TakeOver, AProtectedFileIsRefusedAndStays) {
    change(0x44, "\x12\x34");
    const QByteArray before = contents(path());
    EXPECT_TRUE(takeOverFault(path()).contains(u"密码")) << takeOverFault(path()).toStdString();
    EXPECT_TRUE(takeOverFault(path()).contains(path()));
    EXPECT_EQ(contents(path()), before);
}

TEST_F(TakeOver, AnotherProgramsJetFileIsRefusedByWhatItLacks) {
    QFile::remove(path());
    ASSERT_TRUE(QFile::copy(QStringLiteral(SAMPLES "/import/products.mdb"), path()));
    EXPECT_TRUE(takeOverFault(path()).contains(u"缺少表 clientTable")) << takeOverFault(path()).toStdString();
}

TEST_F(TakeOver, ACutFileIsRefused) {
    QFile::resize(path(), 600000);
    EXPECT_FALSE(takeOverFault(path()).isEmpty());
    EXPECT_TRUE(isJetFile(path()));
}

TEST_F(TakeOver, AFileOfThePresentFormatIsNoJetFile) {
    QFile::remove(path());
    createDatabase(path());
    EXPECT_FALSE(isJetFile(path()));
}

/// Old books made up for a test.
class InventedBooks : public ImportSource {
public:
    std::map<QString, SourceRows> books;

    QStringList tables() override {
        QStringList names;
        for (const auto& [name, rows] : books)
            names << name;
        return names;
    }
    SourceRows read(const QString& table) override { return books.at(table); }
};

TEST_F(TakeOver, WideTextsOtherColumnOrderAndMissingTablesAreMet) {
    InventedBooks old;
    old.books["CLIENTTABLE"] = {{"单位名称", "客户编号", "流水号", "另一列"},
                                {QString(150, u'长'), "8", "9", "x", "短", "7", "3", "y"}};
    old.books["buyList"] = {{"流水号", "订单号", "日期", "数量", "折扣"},
                            {"1", "21", "2004-1-5", "2.5", "87.5", "2", "22", "没有日期", "", QString()}};
    old.books["stock_Count_Bank"] = {{"实物数", "亏_盈"}, {"3", "5"}};
    takeOverFrom(old, path());
    ASSERT_EQ(databaseFault(path()), u"");
    Session session(path());
    session.open_rs();
    ASSERT_EQ(session.clientTable->RecordCount(), 2);
    EXPECT_EQ(session.clientTable->Fields("客户编号").text(), u"7") << "by their serials";
    session.clientTable->MoveLast();
    EXPECT_EQ(session.clientTable->Fields("单位名称").text(), QString(150, u'长'));
    EXPECT_EQ(session.clientTable->Fields("单位名称").DefinedSize(), 150);
    EXPECT_EQ(session.clientTable->Fields("流水号").text(), u"9");
    EXPECT_EQ(session.buyList->Fields("折扣").text(), u"87.5");
    EXPECT_EQ(session.buyList->Fields("日期").text(), u"2004-1-5");
    session.buyList->MoveLast();
    EXPECT_TRUE(isNull(session.buyList->Fields("日期").Value()));
    EXPECT_EQ(session.productTable->RecordCount(), 0) << "a missing table is empty";
    session.reopen(session.stock_Count_Bank, "Select * From stock_Count_Bank");
    EXPECT_EQ(session.stock_Count_Bank->Fields("亏_盈").text(), u"5");
    session.clientTable->AddNew();
    session.clientTable->Fields("客户编号").setValue(QStringLiteral("9"));
    session.clientTable->Update();
    EXPECT_EQ(session.clientTable->Fields("流水号").text(), u"10") << "serials go on from the highest";
}

TEST_F(TakeOver, ValuesThatCannotBeKeptAreNamedByTableRowAndColumn) {
    InventedBooks old;
    old.books["buyList"] = {{"流水号", "订单号", "日期", "数量", "折扣"},
                            {"3", "23", "2958466", "1,200", "九折", "1", "21", "2004-1-5", "2.5", "87.5",
                             "2", "22", QString(), "",      "",     "4", "24", " ",        " ",   " "}};
    const TakenOver result = takeOverFrom(old, path());
    EXPECT_EQ(result.lost, (QStringList{"buyList 第 3 行 日期：2958466", "buyList 第 3 行 数量：1,200"}));
}

TEST_F(TakeOver, DatesOfAllTimesComeOverAndOneBeyondTheCalendarIsNamed) {
    constexpr int lines = 37; // page of the definition of buyList
    JetFile books(path());
    const auto places = books.rows(lines);
    ASSERT_EQ(places.size(), 2000U);
    const SourceRows rows = openMdbSourceOf(path())->read("buyList");
    const double days[] = {-36522, 1000001, 2958466};
    for (int i = 0; i < 3; ++i) {
        const auto date = parseDate(rows.cell(i, int(rows.columns.indexOf("日期"))));
        ASSERT_TRUE(date &&
                    books.replaceDouble(places[std::size_t(i)], double(date->seconds) / 86400, days[i]));
    }
    ASSERT_TRUE(books.write(path()));
    EXPECT_EQ(takeOver(path()).lost, QStringList{"buyList 第 3 行 日期：2958466"});
    Session session(path());
    session.open_rs();
    EXPECT_EQ(session.buyList->Fields("日期").text(), u"1800-1-1");
    session.buyList->MoveNext();
    EXPECT_EQ(session.buyList->Fields("日期").text(), u"4637-11-27");
    session.buyList->MoveNext();
    EXPECT_TRUE(isNull(session.buyList->Fields("日期").Value()));
}

TEST_F(TakeOver, ARowThatWasMovedAndThenDeletedStaysOut) {
    JetFile books(path());
    const auto places = books.rows(JetFile::kFirstTable);
    ASSERT_EQ(places.size(), 120U);
    books.leadTo(places[0], places[119], JetFile::kElsewhere | JetFile::kUnlisted);
    books.setMarks(places[119], JetFile::kUnlisted);
    books.setRowCount(JetFile::kFirstTable, 118);
    ASSERT_TRUE(books.write(path()));
    takeOver(path());
    Session session(path());
    session.open_rs();
    EXPECT_EQ(session.clientTable->RecordCount(), 118);
}

TEST_F(TakeOver, AWriteThatFailsLeavesTheOldFileAndNothingBesideIt) {
    const QByteArray before = contents(path());
    int failures = 0;
    for (rlim_t limit = 0;; limit = limit + limit / 3 + 4096) {
        const FileSizeLimit small(limit);
        if (!failsAndLeavesNothing(before))
            break;
        ++failures;
    }
    EXPECT_GT(failures, 8);
    EXPECT_EQ(databaseFault(path()), u"");
}

TEST_F(TakeOver, AFullDiskLeavesTheOldFileAndNothingBesideIt) {
    constexpr int notAllowed = 2;
    constexpr int tookOver = 3;
    const QByteArray before = contents(path());
    int failures = 0;
    for (qint64 room = 0;; room += 150000) {
        const pid_t child = fork();
        if (child == 0) {
            if (!mountSmallDisk(QFile::encodeName(folder.path()), before.size() + room))
                std::_Exit(notAllowed);
            QFile file(path());
            if (!file.open(QIODevice::WriteOnly) || file.write(before) != before.size() || !file.flush())
                std::_Exit(notAllowed);
            file.close();
            const bool failed = failsAndLeavesNothing(before);
            std::_Exit(HasFailure() ? 1 : failed ? 0 : tookOver);
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFEXITED(status)) << "with room for " << room;
        if (WEXITSTATUS(status) == notAllowed)
            GTEST_SKIP() << "this machine allows no disk of our own";
        ASSERT_NE(WEXITSTATUS(status), 1) << "with room for " << room;
        if (WEXITSTATUS(status) == tookOver)
            break;
        ++failures;
    }
    EXPECT_GT(failures, 3);
}

TEST_F(TakeOver, ThatCannotPutTheNewFileInPlaceLeavesNothingBesideTheOldOne) {
    InventedBooks old;
    ASSERT_TRUE(QFile::remove(path()) && QDir().mkdir(path())); // which no file can replace
    EXPECT_THROW(takeOverFrom(old, path()), RuntimeError);
    EXPECT_EQ(files(), QStringList{"VelmorClientBank.mdb"});
}

TEST_F(TakeOver, ARefusalEndsInOneFullStop) {
    EXPECT_TRUE(takeOverRefusal(path(), "坏了").endsWith(u"坏了。"));
    EXPECT_TRUE(takeOverRefusal(path(), "坏了。").endsWith(u"坏了。"));
    QFile::resize(path(), 600001);
    const QString fault = takeOverFault(path());
    EXPECT_TRUE(fault.endsWith(u"已损坏。")) << fault.toStdString();
}

/// Old books whose tables are long in being read.
class LongBooks : public InventedBooks {
public:
    SourceRows read(const QString& table) override {
        for (int i = 0; i < 3 && signOfLife; ++i)
            signOfLife();
        return InventedBooks::read(table);
    }
};

TEST_F(TakeOver, TellsHowFarItIsWhileALongTableIsReadAndFilled) {
    LongBooks old;
    SourceRows& lines = old.books["buyList"];
    lines.begin({"订单号"});
    for (int i = 0; i < 5000; ++i)
        lines.add(QString::number(i));
    QStringList steps;
    takeOverFrom(old, path(),
                 [&](int done, int total) { steps << QStringLiteral("%1/%2").arg(done).arg(total); });
    const QString total = steps.last().section(u'/', 1);
    EXPECT_EQ(steps.last(), total + u'/' + total);
    EXPECT_EQ(steps.size(), total.toInt() + 3 + 2) << "three signs of the reader, one each 2000 rows";
    EXPECT_FALSE(old.signOfLife) << "what it called is gone";
}

/// Old books whose reading stops the process at a table.
class KillingBooks : public ImportSource {
public:
    KillingBooks(ImportSource& books, int killAt)
        : m_books(books)
        , m_left(killAt) {}
    QStringList tables() override { return m_books.tables(); }
    SourceRows read(const QString& table) override {
        if (m_left-- == 0)
            std::_Exit(9);
        return m_books.read(table);
    }

private:
    ImportSource& m_books;
    int m_left;
};

TEST_F(TakeOver, KilledInTheMiddleTheOldStateStandsAndTheNextRunSucceeds) {
    const QByteArray before = contents(path());
    for (int killAt = 0; killAt < 24; killAt += 4) {
        const pid_t child = fork();
        if (child == 0) {
            const auto books = openMdbSourceOf(path());
            KillingBooks killing(*books, killAt);
            takeOverFrom(killing, path());
            std::_Exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_EQ(WEXITSTATUS(status), 9) << killAt;
        EXPECT_EQ(contents(path()), before);
    }
    takeOver(path());
    EXPECT_EQ(databaseFault(path()), u"");
}

TEST_F(TakeOver, KilledAtAnyMomentTheOldStateStandsOrTheNewOne) {
    const QByteArray before = contents(path());
    int old = 0;
    for (int moment = 2; moment <= 200; moment += 9) {
        const pid_t child = fork();
        if (child == 0) {
            const itimerval killing{{0, 0}, {0, moment * 1000}};
            setitimer(ITIMER_REAL, &killing, nullptr); // its signal ends the process
            takeOver(path());
            std::_Exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        if (contents(path()) == before) {
            ++old;
            continue;
        }
        EXPECT_EQ(databaseFault(path()), u"") << moment;
        Session session(path());
        Statement rows = session.cn.prepare("SELECT (SELECT count(*) FROM clientTable) || ' ' || "
                                            "(SELECT count(*) FROM clientlineTable)");
        ASSERT_TRUE(rows.step());
        EXPECT_EQ(rows.text(0), u"120 15") << moment;
        EXPECT_TRUE(QDir(folder.path()).remove("VelmorClientBank-旧版.mdb"));
        QFile::remove(path());
        ASSERT_TRUE(QFile::copy(QStringLiteral(SAMPLES "/legacy/VelmorClientBank.mdb"), path()));
    }
    EXPECT_GT(old, 0);
    takeOver(path());
    EXPECT_EQ(databaseFault(path()), u"");
}

} // namespace

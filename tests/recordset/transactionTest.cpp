// Transactions on a disk that fails: what is in memory goes with what is in the file.
#include "recordset/error.h"
#include "recordset/ignoringErrors.h"
#include "support/errorOf.h"
#include "support/failingDisk.h"
#include "support/printQt.h"
#include "support/scratchFile.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

namespace {

const QString kTable = QStringLiteral(
    "CREATE TABLE t (流水号 INTEGER, k TEXT(5) COLLATE NOCASE, 数量 REAL);"
    "INSERT INTO t VALUES (1,'a',1);INSERT INTO t VALUES (2,'b',2);INSERT INTO t VALUES (3,'c',3);");

class Transaction : public testing::Test {
protected:
    RecordsetPtr open(const char* source = "Select * From t") { return file.open(QString::fromUtf8(source)); }
    QString stored() { return file.stored(QStringLiteral("SELECT k || 数量 FROM t ORDER BY rowid")); }
    /// The same by the cursors' image.
    QString inMemory() {
        const RecordsetPtr all = open();
        QStringList rows;
        for (int i = 0; i < all->RecordCount(); ++i)
            rows << toText(all->valueAt(i, 1)) + QString::number(all->numberAt(i, 2), 'f', 1);
        return rows.join(u',');
    }
    FileMark mark() { return readMark(file.connection().handle()); }
    Connection& connection() { return file.connection(); }
    /// Changes each of the three rows in its own way, in one action.
    void changeAll(const RecordsetPtr& rows) {
        WriteBatch batch(connection());
        rows->MoveFirst();
        rows->Fields(QStringLiteral("数量")).setValue(8.0);
        rows->Update();
        rows->Fields(QStringLiteral("数量")).setValue(9.0);
        rows->Update();
        rows->MoveNext();
        rows->Delete();
        rows->AddNew();
        rows->Fields(QStringLiteral("k")).setValue(QStringLiteral("d"));
        rows->Fields(QStringLiteral("数量")).setValue(4.0);
        rows->Update();
        batch.finish();
    }

    FailingDisk disk;
    ScratchFile file{kTable};
};

TEST_F(Transaction, EveryOneMarksTheFileAnew) {
    const FileMark first = mark();
    const int commits = connection().commits();
    const RecordsetPtr rows = open();
    rows->Fields("数量").setValue(5.0);
    rows->Update();
    const FileMark second = mark();
    EXPECT_EQ(second.before, first.now) << "a single write is a transaction too";
    changeAll(rows);
    EXPECT_EQ(mark().before, second.now);
    EXPECT_NE(mark().now, second.now);
    EXPECT_EQ(connection().commits(), commits + 2);
}

TEST_F(Transaction, AStatementOfItsOwnMarksTheFileToo) {
    const FileMark first = mark();
    file.run("Delete * From t");
    EXPECT_EQ(mark().before, first.now);
    EXPECT_NE(mark().now, first.now);
}

TEST_F(Transaction, AFileThatIsMarkedAsNewBearsNoMarkOfBefore) {
    open()->Delete();
    const FileMark before = mark();
    markAsNew(connection().handle());
    for (const qint32 fresh : {mark().now, mark().before}) {
        EXPECT_NE(fresh, before.now);
        EXPECT_NE(fresh, before.before);
        EXPECT_NE(fresh, 0);
    }
}

TEST_F(Transaction, AnActionWithoutAWriteMarksNothing) {
    const FileMark before = mark();
    const int commits = connection().commits();
    {
        WriteBatch batch(connection());
        open()->MoveLast();
        batch.finish();
    }
    EXPECT_EQ(mark(), before);
    EXPECT_EQ(connection().commits(), commits);
}

TEST_F(Transaction, ItsJournalBeginsWithTheFirstPage) {
    QByteArray record;
    disk.beforeChange = [&](int) {
        QFile journal(file.path() + "-journal");
        if (journal.open(QIODevice::ReadOnly) && journal.size() > 516 && record.isEmpty())
            record = journal.readAll().mid(512, 4);
    };
    const RecordsetPtr rows = open();
    rows->MoveLast();
    changeAll(rows);
    EXPECT_EQ(record.toHex(), "00000001");
}

TEST_F(Transaction, ARefusedStatementOfItsOwnLeavesTheMark) {
    const FileMark before = mark();
    EXPECT_THROW(connection().write("INSERT INTO none VALUES (1)"), RuntimeError);
    EXPECT_THROW(connection().write("INSERT INTO t VALUES (1)"), RuntimeError);
    EXPECT_EQ(mark(), before);
    EXPECT_FALSE(connection().inTransaction());
}

/// Every change that an action makes to the disk fails, once or for good, as a full disk or a broken one.
TEST_F(Transaction, WhateverCallFailsMemoryHoldsWhatTheFileHolds) {
    const QString before = stored();
    int failures = 0, booked = 0;
    for (const auto kind : {FailingDisk::Kind::Full, FailingDisk::Kind::Broken})
        for (const bool forGood : {false, true})
            for (int at = 0;; ++at) {
                connection().execute("DELETE FROM t");
                connection().execute("INSERT INTO t VALUES (1,'a',1),(2,'b',2),(3,'c',3)");
                connection().forgetImage("t");
                const RecordsetPtr rows = open();
                rows->setSort("k desc");
                disk.failAt(at, kind, forGood);
                QString said;
                try {
                    changeAll(rows);
                } catch (const DatabaseLost& lost) {
                    said = lost.text();
                }
                disk.heal();
                if (!disk.hasFailed())
                    break;
                ++failures;
                const bool isBooked = stored() != before;
                booked += isBooked;
                EXPECT_EQ(inMemory(), stored()) << at;
                EXPECT_EQ(said.contains("已全部撤回"), !isBooked && !said.contains("读不出"))
                    << said.toStdString();
                EXPECT_EQ(said.contains("已经全部记入"), isBooked) << said.toStdString() << at;
                EXPECT_EQ(column(rows, "k"), isBooked ? u"c,a,d" : u"c,b,a");
                rows->MoveFirst();
                rows->Fields("数量").setValue(7.0);
                rows->Update();
                EXPECT_EQ(inMemory(), stored()) << "the next write";
            }
    EXPECT_GT(failures, 15);
    std::printf("%d failing writes, %d of them behind the commit\n", failures, booked);
}

TEST_F(Transaction, AFailureBehindTheCommitIsToldAsBooked) {
    const RecordsetPtr rows = open();
    disk.failAt(1000, FailingDisk::Kind::Broken, false);
    changeAll(rows);
    const int last = disk.changes() - 1; // the journal is cut: the action stands
    connection().execute("DELETE FROM t");
    connection().execute("INSERT INTO t VALUES (1,'a',1),(2,'b',2),(3,'c',3)");
    connection().forgetImage("t");
    const RecordsetPtr again = open();
    disk.failAt(last, FailingDisk::Kind::Broken, false);
    disk.lieAboutFailure();
    try {
        changeAll(again);
        ADD_FAILURE() << "nothing failed";
    } catch (const DatabaseLost& lost) {
        EXPECT_TRUE(lost.text().contains("已经全部记入")) << lost.text().toStdString();
        EXPECT_EQ(lost.outcome(), Outcome::Booked);
    }
    disk.heal();
    EXPECT_EQ(stored(), u"a9.0,c3.0,d4.0");
    EXPECT_EQ(column(again, "k"), u"a,c,d");
}

TEST_F(Transaction, TakenBackACursorHasItsPendingEditsFilterSortAndRowAgain) {
    const RecordsetPtr rows = open();
    rows->setFilter("数量 >= 2");
    rows->setSort("k desc");
    rows->MoveLast();
    rows->Fields("k").setValue(QStringLiteral("typed"));
    rows->AddNew();
    rows->Fields("k").setValue(QStringLiteral("new"));
    rows->MoveFirst();
    rows->MoveNext();
    const QString shown = column(rows, "k");
    const int position = rows->AbsolutePosition();
    disk.failAt(0, FailingDisk::Kind::Full, true);
    EXPECT_THROW(
        {
            WriteBatch batch(connection());
            rows->UpdateBatch();
            rows->clearFilter();
            rows->MoveFirst();
            batch.finish();
        },
        DatabaseLost);
    disk.heal();
    connection().tellTakenBack();
    EXPECT_EQ(column(rows, "k"), shown);
    EXPECT_EQ(rows->AbsolutePosition(), position);
    EXPECT_EQ(rows->Filter(), u"数量 >= 2");
    EXPECT_EQ(rows->pendingCount(), 2);
    rows->UpdateBatch();
    EXPECT_EQ(file.stored("SELECT k FROM t ORDER BY rowid"), u"a,typed,c,new");
}

TEST_F(Transaction, TakenBackADroppedTableAndItsCursorStandAgainAndANewOneIsGone) {
    const RecordsetPtr rows = open();
    RecordsetPtr slot = open();
    disk.failAt(1000, FailingDisk::Kind::Full, false);
    try {
        WriteBatch batch(connection());
        file.run("Drop Table t");
        file.run("Select * Into other From sqlite_master_none");
        batch.finish();
    } catch (const RuntimeError&) { // the second statement: what was done stands
    }
    EXPECT_FALSE(connection().hasTable("t"));
    connection().execute("CREATE TABLE t (流水号 INTEGER, k TEXT(5) COLLATE NOCASE, 数量 REAL);"
                         "INSERT INTO t VALUES (1,'a',1)");
    const RecordsetPtr old = open();
    try {
        WriteBatch batch(connection());
        file.run("Select * Into made From t");
        file.run("Drop Table t");
        file.run("Select * Into t From made");
        reopen(slot, connection(), "Select * From t");
        disk.failAt(0, FailingDisk::Kind::Full, true);
        batch.finish();
        ADD_FAILURE() << "nothing failed";
    } catch (const DatabaseLost&) {
    }
    disk.heal();
    EXPECT_FALSE(connection().hasTable("made"));
    EXPECT_EQ(column(old, "k"), u"a");
    old->Fields("k").setValue(QStringLiteral("z"));
    old->Update();
    EXPECT_EQ(column(slot, "k"), u"z") << "the cursor that was opened meanwhile shows the old table";
}

TEST_F(Transaction, AfterAllRowsWentAndCameBackEveryCellIsThatOfTheFile) {
    const RecordsetPtr rows = open();
    rows->MoveNext();
    rows->Fields("数量").setValue(20.0);
    rows->Update();
    try {
        WriteBatch batch(connection());
        rows->MoveFirst();
        rows->Delete();
        file.run("Delete * From t");
        connection().image("t")->loadAllColumns();
        disk.failAt(0, FailingDisk::Kind::Broken, false);
        batch.finish();
    } catch (const DatabaseLost&) {
    }
    disk.heal();
    EXPECT_EQ(inMemory(), u"a1.0,b20.0,c3.0");
    EXPECT_EQ(column(rows, "k"), u"a,b,c");
}

TEST_F(Transaction, WhereErrorsArePassedOverAFullDiskEndsTheActionAndTheProgramLives) {
    const RecordsetPtr rows = open();
    IgnoringErrors errors;
    int after = 0;
    disk.failAt(0, FailingDisk::Kind::Full, true);
    EXPECT_THROW(
        {
            WriteBatch batch(connection());
            errors.run([&] { file.run("Drop Table none"); });
            errors.run([&] { file.run("Delete * From t"); });
            ++after;
            batch.finish();
        },
        ActionEnded);
    disk.heal();
    EXPECT_EQ(after, 0);
    EXPECT_EQ(inMemory(), u"a1.0,b2.0,c3.0");
}

TEST_F(Transaction, TheGateOpensOnceBeforeTheFirstWrite) {
    int asked = 0;
    connection().beforeFirstWrite = [&] { ++asked; };
    const RecordsetPtr rows = open();
    EXPECT_EQ(asked, 0) << "reading waits for nothing";
    changeAll(rows);
    changeAll(rows);
    EXPECT_EQ(asked, 1);
}

TEST_F(Transaction, AGateThatStaysShutIsAskedByEveryWrite) {
    int asked = 0;
    connection().beforeFirstWrite = [&] {
        if (++asked < 3)
            throw DatabaseLost(QStringLiteral("damaged"));
    };
    const RecordsetPtr rows = open();
    EXPECT_THROW(changeAll(rows), DatabaseLost);
    EXPECT_THROW(file.run("Delete * From t"), DatabaseLost);
    EXPECT_EQ(stored(), u"a1.0,b2.0,c3.0");
    changeAll(rows);
    changeAll(rows);
    EXPECT_EQ(asked, 3);
}

/// Another program in the file.
class Other {
public:
    explicit Other(const QString& path) { sqlite3_open(path.toUtf8().constData(), &m_db); }
    ~Other() { sqlite3_close(m_db); }
    void run(const char* sql) { ASSERT_EQ(sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr), SQLITE_OK); }

private:
    sqlite3* m_db = nullptr;
};

TEST_F(Transaction, AnotherProgramsLockIsWaitedForAsOftenAsTheUserWants) {
    Other other(file.path());
    sqlite3_busy_timeout(connection().handle(), 0);
    for (const char* held : {"BEGIN IMMEDIATE", "BEGIN; SELECT * FROM t"}) {
        const RecordsetPtr rows = open();
        other.run(held);
        int asked = 0;
        connection().askAgain = [&] {
            if (++asked == 3)
                other.run("COMMIT");
            return true;
        };
        rows->Fields("数量").setValue(5.0);
        WriteBatch batch(connection());
        rows->Update();
        batch.finish();
        EXPECT_EQ(asked, 3) << held;
        EXPECT_EQ(inMemory(), stored());
    }
}

TEST_F(Transaction, GivingUpTakesTheActionBackAndEndsNothingElse) {
    Other other(file.path());
    sqlite3_busy_timeout(connection().handle(), 0);
    connection().askAgain = [] { return false; };
    for (const char* held : {"BEGIN IMMEDIATE", "BEGIN; SELECT * FROM t"}) {
        const RecordsetPtr rows = open();
        rows->MoveLast();
        other.run(held);
        QString said = QStringLiteral("nothing");
        try {
            changeAll(rows);
        } catch (const ActionEnded& ended) {
            said = ended.text();
        }
        EXPECT_EQ(said, u"") << "the user knows";
        other.run("COMMIT");
        EXPECT_EQ(stored(), u"a1.0,b2.0,c3.0") << held;
        EXPECT_EQ(inMemory(), stored());
        EXPECT_EQ(rows->pendingCount(), 0);
        EXPECT_EQ(rows->AbsolutePosition(), 3);
    }
}

TEST_F(Transaction, NothingIsWrittenWhileTheUserIsAsked) {
    Other other(file.path());
    sqlite3_busy_timeout(connection().handle(), 0);
    const RecordsetPtr rows = open();
    other.run("BEGIN; SELECT * FROM t");
    bool asking = false;
    bool wait = true;
    connection().askAgain = [&] {
        if (std::exchange(asking, true))
            return false; // a write within would ask in its turn
        EXPECT_THROW(file.run("Delete * From t"), ActionEnded);
        EXPECT_THROW(WriteBatch(connection()).finish(), ActionEnded);
        other.run("COMMIT");
        asking = false;
        return std::exchange(wait, false);
    };
    changeAll(rows);
    EXPECT_EQ(stored(), u"a9.0,c3.0,d4.0") << "the action that waited, and nothing else";
}

TEST_F(Transaction, AFileThatCannotBeReadForAnotherProgramEndsTheActionAndTheProgramLives) {
    Other other(file.path());
    sqlite3_busy_timeout(connection().handle(), 0);
    other.run("BEGIN EXCLUSIVE");
    IgnoringErrors errors;
    EXPECT_THROW(open(), ActionEnded);
    EXPECT_THROW(errors.run([&] { connection().hasTable("t"); }), ActionEnded);
    other.run("COMMIT");
    EXPECT_EQ(inMemory(), u"a1.0,b2.0,c3.0");
    EXPECT_FALSE(connection().hasTable("other")) << "a statement that waited in vain asks anew";
}

TEST_F(Transaction, ItsCountIsOddWhileItIsUnderWay) {
    const RecordsetPtr rows = open();
    const unsigned before = connection().writeCount();
    EXPECT_EQ(before % 2, 0U);
    WriteBatch batch(connection());
    rows->Delete();
    EXPECT_EQ(connection().writeCount(), before + 1);
    batch.finish();
    EXPECT_EQ(connection().writeCount(), before + 2);
}

} // namespace

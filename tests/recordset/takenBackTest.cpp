// What an action that is taken back leaves in memory: every cursor and every cell as before it began.
#include "recordset/error.h"
#include "support/failingDisk.h"
#include "support/printQt.h"
#include "support/scratchFile.h"

#include <gtest/gtest.h>

namespace {

const QString kTable = QStringLiteral(
    "CREATE TABLE t (流水号 INTEGER, k TEXT(5) COLLATE NOCASE, 数量 REAL);"
    "INSERT INTO t VALUES (1,'a',1);INSERT INTO t VALUES (2,'b',2);INSERT INTO t VALUES (3,'c',3);");

class TakenBack : public testing::Test {
protected:
    RecordsetPtr open() { return file.open(QStringLiteral("Select * From t")); }
    QString stored() { return file.stored(QStringLiteral("SELECT k || 数量 FROM t ORDER BY rowid")); }
    Connection& connection() { return file.connection(); }
    static void set(const RecordsetPtr& rows, int position, const char* field, const CellValue& value) {
        rows->setAbsolutePosition(position);
        rows->Fields(QString::fromUtf8(field)).setValue(value);
        rows->Update();
    }
    /// An action that does its work and whose commit finds the disk full.
    template <typename Work> void fail(Work&& work) {
        try {
            WriteBatch batch(connection());
            work();
            disk.failAt(0, FailingDisk::Kind::Full, true);
            batch.finish();
            ADD_FAILURE() << "nothing failed";
        } catch (const DatabaseLost& lost) {
            EXPECT_EQ(lost.outcome(), Outcome::TakenBack);
        }
        disk.heal();
        connection().tellTakenBack();
    }

    FailingDisk disk;
    ScratchFile file{kTable};
};

TEST_F(TakenBack, ACellThatChangedTwiceIsAsItBegan) {
    const RecordsetPtr rows = open();
    connection().image("t")->loadAllColumns();
    fail([&] {
        set(rows, 1, "数量", 8.0);
        set(rows, 1, "数量", 9.0);
    });
    EXPECT_EQ(rows->numberAt(0, 2), 1);
}

TEST_F(TakenBack, ARowThatWasReadByItselfMeanwhileIsReadAnew) {
    const RecordsetPtr rows = open();
    fail([&] {
        set(rows, 1, "数量", 8.0);
        EXPECT_EQ(rows->numberAt(0, 2), 8);
    });
    EXPECT_EQ(rows->numberAt(0, 2), 1);
}

TEST_F(TakenBack, WhatWasSearchedMeanwhileIsFoundByTheTextsOfTheFile) {
    const RecordsetPtr rows = open();
    fail([&] {
        set(rows, 1, "k", QStringLiteral("c"));
        for (int i = 0; i < 4; ++i) // the first search alone makes no index
            rows->setFilter(i % 2 == 0 ? "k = 'b'" : "k = 'c'");
    });
    for (const char* k : {"a", "b", "c"}) {
        rows->setFilter(QStringLiteral("k = '%1'").arg(QString::fromUtf8(k)));
        EXPECT_EQ(column(rows, "k"), QString::fromUtf8(k));
    }
}

TEST_F(TakenBack, AFilterAndASortThatTheActionTookOffHoldAgain) {
    const RecordsetPtr rows = open();
    rows->setFilter("数量 >= 2");
    rows->setSort("k desc");
    fail([&] {
        set(rows, 1, "数量", 7.0);
        rows->clearFilter();
        rows->setSort("k");
    });
    EXPECT_EQ(rows->Filter(), u"数量 >= 2");
    EXPECT_EQ(rows->Sort(), u"k desc");
    EXPECT_EQ(column(rows, "k"), u"c,b");
    rows->clearFilter();
    EXPECT_EQ(column(rows, "k"), u"c,b,a") << "the next view is sorted too";
}

TEST_F(TakenBack, ANewRowThatIsGivenUpAfterwardsLeadsBackToTheRowBeforeIt) {
    const RecordsetPtr rows = open();
    rows->setAbsolutePosition(2);
    rows->AddNew();
    fail([&] { rows->Update(); });
    EXPECT_EQ(rows->RecordCount(), 4);
    rows->CancelUpdate();
    EXPECT_EQ(rows->AbsolutePosition(), 2);
    EXPECT_EQ(rows->RecordCount(), 3);
}

TEST_F(TakenBack, ABookmarkOfARowThatWasNewOnceStillLeadsToIt) {
    const RecordsetPtr rows = open();
    rows->AddNew();
    rows->Fields("k").setValue(QStringLiteral("d"));
    const Bookmark mark = rows->Bookmark();
    rows->Update();
    fail([&] { set(rows, 1, "数量", 7.0); });
    rows->MoveFirst();
    rows->setBookmark(mark);
    EXPECT_EQ(rows->Fields("k").text(), u"d");
}

/// Counts how often a cursor tells that its row or its view is another one.
class Listener : public RecordsetObserver {
public:
    explicit Listener(RecordsetPtr rows)
        : m_rows(std::move(rows)) {
        m_rows->observe(this);
    }
    ~Listener() override { m_rows->unobserve(this); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    void currentChanged() override { ++current; }
    void viewReset() override { ++resets; }

    int current = 0;
    int resets = 0;

private:
    RecordsetPtr m_rows;
};

TEST_F(TakenBack, ARowThatStayedTheCurrentOneIsNotToldAsAnother) {
    const RecordsetPtr rows = open();
    rows->setAbsolutePosition(2);
    const Listener boxes(rows);
    fail([&] {
        rows->Fields("数量").setValue(8.0);
        rows->Update();
    });
    EXPECT_EQ(boxes.resets, 1) << "the grid reads its rows again";
    EXPECT_EQ(boxes.current, 0) << "boxes keep what is typed into them";
}

TEST_F(TakenBack, AStatementBehindTheEnginesOwnRollbackGoesNowhere) {
    const RecordsetPtr rows = open();
    try {
        WriteBatch batch(connection());
        set(rows, 1, "数量", 8.0);
        connection().execute("ROLLBACK"); // as the engine does of itself on some faults
        EXPECT_THROW(set(rows, 2, "数量", 9.0), DatabaseLost);
        batch.finish();
        ADD_FAILURE() << "half an action is called whole";
    } catch (const DatabaseLost&) {
    }
    EXPECT_EQ(stored(), u"a1.0,b2.0,c3.0");
    EXPECT_EQ(rows->numberAt(0, 2), 1);
}

TEST_F(TakenBack, AnActionUnderWhichTheDiskFailedIsNeverBookedWhoeverPassedOverIt) {
    const RecordsetPtr rows = open();
    WriteBatch batch(connection());
    set(rows, 1, "数量", 8.0);
    connection().markFailed(); // as where rows were read
    EXPECT_THROW(batch.finish(), DatabaseLost);
    EXPECT_EQ(stored(), u"a1.0,b2.0,c3.0");
    EXPECT_EQ(rows->numberAt(0, 2), 1);
}

TEST_F(TakenBack, WhereNothingCanBeReadAfterwardsNobodySaysThatItIsTakenBack) {
    int unknown = 0;
    for (int at = 0;; ++at) {
        disk.failAt(at, FailingDisk::Kind::Broken, true);
        const RecordsetPtr rows = open();
        try {
            WriteBatch batch(connection());
            set(rows, 1, "数量", 8.0 + at);
            batch.finish();
        } catch (const DatabaseLost& lost) {
            EXPECT_EQ(lost.text().contains(u"读不出"), lost.outcome() == Outcome::Unknown) << at;
            EXPECT_NE(lost.text().contains(u"已全部撤回"), lost.outcome() != Outcome::TakenBack) << at;
            unknown += lost.outcome() == Outcome::Unknown;
        }
        disk.heal();
        if (!disk.hasFailed())
            break;
    }
    EXPECT_GT(unknown, 0);
}

TEST_F(TakenBack, ACommitThatFailsBesideAnotherErrorIsToldByTheNextWrite) {
    const RecordsetPtr rows = open();
    EXPECT_THROW(
        {
            WriteBatch batch(connection());
            set(rows, 1, "数量", 8.0);
            disk.failAt(0, FailingDisk::Kind::Full, true);
            ::fail(ErrorNumber::BadText, QStringLiteral("another"));
        },
        RuntimeError);
    disk.heal();
    EXPECT_EQ(stored(), u"a1.0,b2.0,c3.0");
    EXPECT_EQ(rows->numberAt(0, 2), 1);
    EXPECT_THROW(set(rows, 1, "数量", 7.0), DatabaseLost);
    rows->CancelBatch();
    set(rows, 1, "数量", 7.0);
    EXPECT_EQ(stored(), u"a7.0,b2.0,c3.0") << "told once";
}

TEST_F(TakenBack, AStatementOfItsOwnThatIsBookedAllTheSameIsReadFromTheFile) {
    const std::vector<CellValue> row{CellValue(), QStringLiteral("d"), 4.0};
    const RecordsetPtr rows = open();
    rows->setSort("k"); // the column is in memory
    disk.failAt(1000, FailingDisk::Kind::Broken, false);
    rows->AddNew(row);
    const int last = disk.changes() - 1; // the journal is cut: the row stands
    disk.failAt(last, FailingDisk::Kind::Broken, false);
    disk.lieAboutFailure();
    try {
        rows->AddNew(row);
        ADD_FAILURE() << "nothing failed";
    } catch (const DatabaseLost& lost) {
        EXPECT_EQ(lost.outcome(), Outcome::Booked);
    }
    disk.heal();
    connection().tellTakenBack();
    EXPECT_EQ(stored(), u"a1.0,b2.0,c3.0,d4.0,d4.0");
    EXPECT_EQ(column(rows, "k"), u"a,b,c,d,d");
    EXPECT_EQ(open()->RecordCount(), 5);
}

} // namespace

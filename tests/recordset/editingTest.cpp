#include "support/errorOf.h"
#include "support/printQt.h"
#include "support/scratchFile.h"

#include <gtest/gtest.h>

namespace {

class Editing : public testing::Test {
protected:
    Editing()
        : m_file(QStringLiteral(
              "CREATE TABLE t (流水号 INTEGER, k TEXT(5) COLLATE NOCASE, 数量 REAL, 日期 DATETEXT);"
              "INSERT INTO t VALUES (1,'a',1,NULL);INSERT INTO t VALUES (2,'b',2,NULL);")) {}

    RecordsetPtr open() { return m_file.open(QStringLiteral("Select * From t")); }
    QString stored() {
        return m_file.stored(QStringLiteral("SELECT k || ' ' || 数量 FROM t ORDER BY rowid"));
    }

    ScratchFile m_file;
};

TEST_F(Editing, PendingEditsStayWithTheirRowUntilUpdateBatchOrCancelBatch) {
    const RecordsetPtr rs = open();
    rs->Fields("数量").setValue(5.0);
    rs->MoveNext();
    rs->Fields("数量").setValue(9.0);
    rs->Update();
    EXPECT_EQ(stored(), u"a 1.0,b 9.0");
    rs->MoveFirst();
    EXPECT_EQ(rs->Fields("数量").number(), 5);
    EXPECT_EQ(toNumber(rs->Fields("数量").OriginalValue()), 1);
    rs->UpdateBatch(3);
    EXPECT_EQ(stored(), u"a 5.0,b 9.0");
    rs->Fields("数量").setValue(7.0);
    rs->MoveLast();
    rs->CancelBatch(3);
    EXPECT_EQ(rs->AbsolutePosition(), 2);
    rs->MoveFirst();
    EXPECT_EQ(rs->Fields("数量").number(), 5);
    rs->Fields("数量").setValue(7.0);
    rs->Requery();
    EXPECT_EQ(rs->Fields("数量").number(), 5);
    EXPECT_EQ(stored(), u"a 5.0,b 9.0");
}

TEST_F(Editing, WhatAnAssignmentStores) {
    const RecordsetPtr rs = open();
    const auto store = [&](const char* field, const CellValue& value) {
        rs->Fields(field).setValue(value);
        return toText(rs->Fields(field).Value());
    };
    EXPECT_EQ(store("k", CellValue(12.5)), u"12.5");
    EXPECT_EQ(store("k", CellValue(QString())), u"");
    EXPECT_FALSE(isNull(rs->Fields("k").Value()));
    EXPECT_EQ(errorOf([&] { store("k", Moment::fromDate({2004, 1, 5})); }), 3421);
    EXPECT_EQ(errorOf([&] { store("k", QStringLiteral("123456")); }), 3421);
    EXPECT_EQ(rs->Fields("k").text(), u"");
    EXPECT_EQ(store("数量", QStringLiteral("1,000")), u"1000");
    EXPECT_EQ(store("数量", QStringLiteral(" 5 ")), u"5");
    EXPECT_EQ(errorOf([&] { store("数量", QStringLiteral("")); }), 13);
    EXPECT_EQ(errorOf([&] { store("数量", QStringLiteral("abc")); }), 13);
    EXPECT_EQ(store("日期", QStringLiteral("2004年1月5日")), u"2004-1-5");
    EXPECT_EQ(errorOf([&] { store("日期", QStringLiteral("")); }), 13);
    EXPECT_EQ(errorOf([&] { store("日期", QStringLiteral("2004-13-45")); }), 13);
    EXPECT_EQ(store("数量", CellValue()), u"");
    EXPECT_TRUE(isNull(rs->Fields("数量").Value()));
    EXPECT_EQ(errorOf([&] { store("流水号", CellValue(9.0)); }), 3251);
    EXPECT_EQ(errorOf([&] { (void)rs->Fields("nix"); }), 3265);
    EXPECT_EQ(errorOf([&] { (void)rs->Fields(4); }), 3265);
    EXPECT_EQ(rs->Fields("K").DefinedSize(), 5);
    EXPECT_EQ(rs->Fields("数量").DefinedSize(), 8);
    EXPECT_EQ(rs->Fields("日期").DefinedSize(), 19);
    EXPECT_EQ(rs->Fields(0).DefinedSize(), 4);
    EXPECT_EQ(rs->Fields(0).Name(), u"流水号");
}

TEST_F(Editing, ANewRowIsNullStandsLastAndGetsItsSerialAtUpdate) {
    const RecordsetPtr rs = open();
    rs->MoveNext();
    rs->AddNew();
    EXPECT_EQ(rs->RecordCount(), 3);
    EXPECT_EQ(rs->AbsolutePosition(), 3);
    EXPECT_TRUE(isNull(rs->Fields("k").Value()));
    EXPECT_TRUE(isNull(rs->Fields("k").OriginalValue()));
    EXPECT_EQ(stored(), u"a 1.0,b 2.0");
    rs->Fields("k").setValue(QStringLiteral("c"));
    rs->Fields("数量").setValue(3.0);
    rs->Update();
    EXPECT_EQ(rs->Fields("流水号").text(), u"3");
    rs->Delete();
    rs->AddNew();
    rs->Update();
    EXPECT_EQ(rs->Fields("流水号").text(), u"4");
    rs->AddNew();
    rs->Fields("流水号").setValue(40.0);
    rs->Update();
    rs->AddNew();
    rs->Update();
    EXPECT_EQ(rs->Fields("流水号").text(), u"41");
}

TEST_F(Editing, CancelUpdateOfANewRowBringsBackTheRowBefore) {
    const RecordsetPtr rs = open();
    rs->MoveNext();
    rs->AddNew();
    rs->CancelUpdate();
    EXPECT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(rs->Fields("k").text(), u"b");
    rs->MoveNext();
    rs->AddNew();
    rs->CancelUpdate();
    EXPECT_TRUE(rs->isEOF());
    rs->CancelUpdate();
    rs->MoveFirst();
    rs->Fields("数量").setValue(8.0);
    rs->CancelUpdate();
    EXPECT_EQ(rs->Fields("数量").number(), 1);
    rs->setFilter("k = 'x'");
    rs->AddNew();
    rs->CancelUpdate();
    EXPECT_TRUE(rs->isBOF() && rs->isEOF());
}

TEST_F(Editing, ANewRowGivenUpBringsBackTheNewRowBeforeItThoughThatWasSavedMeanwhile) {
    const RecordsetPtr rs = open();
    rs->AddNew();
    rs->Fields("k").setValue(QStringLiteral("c"));
    rs->AddNew();
    rs->MovePrevious();
    rs->Update();
    rs->MoveNext();
    rs->CancelUpdate();
    ASSERT_EQ(rs->AbsolutePosition(), 3);
    EXPECT_EQ(rs->Fields("k").text(), u"c");
}

TEST_F(Editing, DeleteOfANewRowIsCancelUpdateAndDeleteWithoutRowFails) {
    const RecordsetPtr rs = open();
    rs->AddNew();
    rs->Delete();
    EXPECT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(rs->Fields("k").text(), u"a");
    rs->Delete();
    EXPECT_EQ(stored(), u"b 2.0");
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->Update(); }), 3021);
    rs->CancelBatch();
    EXPECT_EQ(stored(), u"b 2.0");
}

TEST_F(Editing, UpdateWithNothingPendingWritesNothing) {
    const RecordsetPtr rs = open();
    const int before = m_file.connection().commits();
    rs->Update();
    EXPECT_EQ(m_file.connection().commits(), before);
}

TEST_F(Editing, UpdateBatchWritesRowsThatAFilterHidesInOneCommit) {
    const RecordsetPtr rs = open();
    rs->Fields("数量").setValue(5.0);
    rs->MoveNext();
    rs->Fields("数量").setValue(6.0);
    rs->setFilter("k = 'b'");
    rs->AddNew();
    rs->Fields("k").setValue(QStringLiteral("c"));
    rs->Fields("数量").setValue(0.0);
    const int before = m_file.connection().commits();
    rs->UpdateBatch(3);
    EXPECT_EQ(m_file.connection().commits(), before + 1);
    EXPECT_EQ(stored(), u"a 5.0,b 6.0,c 0.0");
    EXPECT_EQ(rs->pendingCount(), 0);
}

TEST_F(Editing, CancelBatchRemovesNewRowsToo) {
    const RecordsetPtr rs = open();
    rs->AddNew();
    rs->AddNew();
    rs->CancelBatch(3);
    EXPECT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(rs->Fields("k").text(), u"a");
}

TEST_F(Editing, ADeletedRowLeavesEveryCursorAtOnceAndAnInsertedOneIsSeenAfterRequery) {
    const RecordsetPtr one = open();
    const RecordsetPtr two = open();
    two->setSort("k Desc");
    two->MoveNext();
    two->Fields("数量").setValue(77.0);
    one->Fields("k").setValue(QStringLiteral("z"));
    one->Update();
    EXPECT_EQ(two->Fields("k").text(), u"z");
    EXPECT_EQ(two->Fields("数量").number(), 77);
    EXPECT_EQ(toText(two->Fields("k").OriginalValue()), u"z");
    one->Delete();
    EXPECT_EQ(two->RecordCount(), 1);
    EXPECT_EQ(two->AbsolutePosition(), -1);
    EXPECT_FALSE(two->isEOF());
    EXPECT_EQ(two->pendingCount(), 0);
    one->AddNew();
    one->Fields("k").setValue(QStringLiteral("n"));
    one->Update();
    EXPECT_EQ(two->RecordCount(), 1);
    two->Requery();
    EXPECT_EQ(column(two, "k"), u"n,b");
}

TEST_F(Editing, TheLastWriterWinsByColumn) {
    const RecordsetPtr one = open();
    const RecordsetPtr two = open();
    one->Fields("数量").setValue(10.0);
    two->Fields("数量").setValue(20.0);
    two->Fields("k").setValue(QStringLiteral("q"));
    two->Update();
    one->Update();
    EXPECT_EQ(stored(), u"q 10.0,b 2.0");
}

TEST_F(Editing, DeleteAllActsLikeTheDeletionOfEachRow) {
    const RecordsetPtr one = open();
    const RecordsetPtr two = open();
    two->AddNew();
    two->MoveFirst();
    m_file.run("Delete * From t");
    EXPECT_EQ(one->RecordCount(), 0);
    EXPECT_FALSE(one->isEOF());
    one->MoveNext();
    EXPECT_TRUE(one->isEOF());
    EXPECT_EQ(two->RecordCount(), 1);
    m_file.run("Delete * From t");
    one->AddNew();
    one->Update();
    EXPECT_EQ(one->Fields("流水号").text(), u"3");
}

TEST_F(Editing, CursorsOverADroppedTableKeepTheirRowsForReadingOnly) {
    const RecordsetPtr rs = open();
    rs->Fields("数量").setValue(4.0);
    m_file.run("Select * Into u From t");
    m_file.run("Drop Table t");
    EXPECT_EQ(column(rs, "k"), u"a,b");
    EXPECT_EQ(errorOf([&] { rs->AddNew(); }), 3078);
    EXPECT_EQ(errorOf([&] { rs->Update(); }), 3078);
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), 3078);
    EXPECT_EQ(errorOf([&] { rs->UpdateBatch(); }), 3078);
    m_file.run("Select * Into t From u");
    EXPECT_EQ(errorOf([&] { rs->AddNew(); }), 3078);
    rs->Requery();
    EXPECT_EQ(rs->RecordCount(), 2);
    rs->AddNew();
    rs->Update();
    m_file.run("Drop Table t");
    EXPECT_EQ(errorOf([&] { rs->Requery(); }), 3078);
    EXPECT_EQ(rs->State(), 0);
}

TEST_F(Editing, AResultIsAFixedPicture) {
    const RecordsetPtr rs = m_file.open("Select k, Sum(数量) As s, Count(k) As c From t Group By k");
    m_file.run("Delete * From t");
    EXPECT_EQ(column(rs, "s"), u"1,2");
    EXPECT_EQ(errorOf([&] { rs->AddNew(); }), 3251);
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), 3251);
    EXPECT_EQ(errorOf([&] { rs->Fields("s").setValue(1.0); }), 3251);
    rs->setFilter("s > 1");
    EXPECT_EQ(rs->Fields("k").text(), u"b");
    rs->clearFilter();
    rs->setSort("k Desc");
    rs->Find("c = 1");
    EXPECT_EQ(rs->Fields("k").text(), u"b");
}

TEST_F(Editing, ReadCellsOneByOneAgreesWithReadingColumnsWhole) {
    const RecordsetPtr rs = open();
    EXPECT_EQ(rs->Fields("k").text(), u"a");
    rs->Fields("k").setValue(QStringLiteral("new"));
    rs->Update();
    EXPECT_EQ(rs->Fields("k").text(), u"new");
    rs->AddNew();
    rs->Fields("k").setValue(QStringLiteral("c"));
    rs->Update();
    EXPECT_EQ(rs->Fields("k").text(), u"c");
    rs->MoveFirst();
    rs->MoveNext();
    rs->Delete();
    rs->setFilter("k <> 'zzz'");
    EXPECT_EQ(column(rs, "k"), u"new,c");
}

class Listener : public RecordsetObserver {
public:
    explicit Listener(RecordsetPtr rs)
        : m_rs(std::move(rs)) {
        m_rs->observe(this);
    }
    ~Listener() override { m_rs->unobserve(this); }
    void currentChanged() override { ++current; }
    void rowChanged(int position) override { rows << position; }
    int current = 0;
    QList<int> rows;

private:
    RecordsetPtr m_rs;
};

TEST_F(Editing, AQuietWalkTellsOnceAndOnlyIfTheRowOrViewDiffers) {
    const RecordsetPtr rs = open();
    Listener listener(rs);
    rs->MoveNext();
    EXPECT_EQ(listener.current, 1);
    {
        QuietWalk walk(rs);
        rs->MoveFirst();
        rs->MoveNext();
    }
    EXPECT_EQ(listener.current, 1);
    {
        QuietWalk walk(rs);
        rs->MoveFirst();
        rs->MoveNext();
        rs->MoveFirst();
    }
    EXPECT_EQ(listener.current, 2);
    rs->MoveFirst();
    EXPECT_EQ(listener.current, 2);
    rs->setFilter("k = 'a'");
    EXPECT_EQ(listener.current, 3);
}

TEST_F(Editing, AnUpdateElsewhereIsToldToTheGridOfTheRow) {
    const RecordsetPtr rs = open();
    rs->setSort("k Desc");
    Listener listener(rs);
    const RecordsetPtr other = open();
    other->Fields("数量").setValue(3.0);
    EXPECT_TRUE(listener.rows.isEmpty());
    other->Update();
    EXPECT_EQ(listener.rows, QList<int>{1});
    EXPECT_EQ(listener.current, 0);
}

TEST_F(Editing, ThousandsOfDeletionsInASortedViewKeepEveryPosition) {
    m_file.run("Delete * From t");
    {
        WriteBatch batch(m_file.connection());
        const RecordsetPtr rs = open();
        for (int i = 0; i < 10'000; ++i) {
            rs->AddNew();
            rs->Fields("数量").setValue(double((i * 7919) % 10'000));
            rs->Update();
        }
        batch.finish();
    }
    const RecordsetPtr rs = open();
    rs->setSort("数量");
    const RecordsetPtr other = open();
    WriteBatch batch(m_file.connection());
    for (int i = 0; i < 6'000; ++i) {
        other->MoveFirst();
        other->Delete();
    }
    batch.finish();
    ASSERT_EQ(rs->RecordCount(), 4'000);
    double before = -1;
    for (int i = 0; i < 4'000; ++i) {
        EXPECT_LT(before, rs->numberAt(i, 2));
        before = rs->numberAt(i, 2);
        rs->setAbsolutePosition(i + 1);
        EXPECT_EQ(rs->AbsolutePosition(), i + 1);
    }
}

} // namespace

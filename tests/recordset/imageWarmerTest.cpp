// Columns that a thread reads ahead, handed over to images whose rows change meanwhile.
#include "recordset/imageWarmer.h"

#include "recordset/error.h"
#include "support/failingDisk.h"
#include "support/printQt.h"
#include "support/scratchFile.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace {

constexpr int kRows = 12'000; // more than one step of the reader

class Warming : public testing::Test {
protected:
    Warming() {
        file.connection().execute(
            QStringLiteral("WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                           "INSERT INTO t SELECT i, 'k' || (i % 100), i / 2.0, "
                           "date('2004-01-01', (i / 100) || ' days') FROM n")
                .arg(kRows));
        rows = file.open(QStringLiteral("Select * From t"));
        image = file.connection().image(QStringLiteral("t"));
    }
    void begin() {
        warmer = std::make_unique<ImageWarmer>(
            file.connection(), std::vector<WarmTable>{{QStringLiteral("t"),
                                                       {{QStringLiteral("k"), true, true, true},
                                                        {QStringLiteral("q")},
                                                        {QStringLiteral("d")},
                                                        {QStringLiteral("no such column")}}}});
        warmer->onEnd = [this] { ended = true; };
        warmer->start();
    }
    void end() {
        while (!ended)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    void set(int position, const char* field, const CellValue& value) {
        rows->setAbsolutePosition(position);
        rows->Fields(QString::fromLatin1(field)).setValue(value);
        rows->Update();
    }
    void add(const char* key) {
        rows->AddNew();
        rows->Fields(QStringLiteral("k")).setValue(QString::fromLatin1(key));
        rows->Update();
    }
    void remove(int position) {
        rows->setAbsolutePosition(position);
        rows->Delete();
    }
    /// What memory holds, and what an index, the distinct texts and a sort say of it, against the file.
    void expectAsInTheFile() {
        for (const char* column : {"k", "q", "d"})
            EXPECT_TRUE(image->isLoaded(image->columnIndex(QString::fromLatin1(column)))) << column;
        const RecordsetPtr all = file.open(QStringLiteral("Select * From t"));
        QStringList cells;
        for (int i = 0; i < all->RecordCount(); ++i)
            for (const int field : {1, 2, 3})
                cells << (isNull(all->valueAt(i, field)) ? QStringLiteral("Null")
                                                         : toText(all->valueAt(i, field)));
        const auto inMemory = cells.join(u',');
        file.connection().forgetImage(QStringLiteral("t"));
        const RecordsetPtr fresh = file.open(QStringLiteral("Select * From t"));
        file.connection().image(QStringLiteral("t"))->loadAllColumns();
        QStringList stored;
        for (int i = 0; i < fresh->RecordCount(); ++i)
            for (const int field : {1, 2, 3})
                stored << (isNull(fresh->valueAt(i, field)) ? QStringLiteral("Null")
                                                            : toText(fresh->valueAt(i, field)));
        EXPECT_TRUE(inMemory == stored.join(u','));
        for (const char* key : {"k7", "new", "k0"}) {
            all->setFilter(QStringLiteral("k = '%1'").arg(QString::fromLatin1(key)));
            EXPECT_EQ(
                QString::number(all->RecordCount()),
                file.stored(
                    QStringLiteral("SELECT count(*) FROM t WHERE k = '%1'").arg(QString::fromLatin1(key))))
                << key;
        }
        const std::vector<TextPool::Code>* codes =
            image->distinctTexts(image->columnIndex(QStringLiteral("k")));
        ASSERT_NE(codes, nullptr);
        QStringList texts;
        for (const TextPool::Code code : *codes)
            texts << (code == TextPool::Null
                          ? QStringLiteral("Null")
                          : image->column(image->columnIndex(QStringLiteral("k"))).text(code));
        EXPECT_EQ(texts.join(u','),
                  file.stored(QStringLiteral("SELECT DISTINCT k FROM t ORDER BY k COLLATE textorder")));
    }

    FailingDisk disk;
    ScratchFile file{
        QStringLiteral("CREATE TABLE t (流水号 INTEGER, k TEXT(20) COLLATE NOCASE, q REAL, d DATETEXT)")};
    RecordsetPtr rows;
    std::shared_ptr<TableImage> image;
    std::unique_ptr<ImageWarmer> warmer;
    bool ended = false;
};

TEST_F(Warming, ColumnsComeIntoMemoryAsTheyStandInTheFile) {
    begin();
    end();
    expectAsInTheFile();
}

TEST_F(Warming, RowsThatChangeComeAndGoMeanwhileAreRight) {
    begin();
    set(1, "k", QStringLiteral("new"));
    set(kRows, "q", 0.125);
    add("new");
    remove(5);
    remove(8'000);
    set(700, "d", CellValue());
    end();
    expectAsInTheFile();
}

TEST_F(Warming, RowsThatWereDeletedBeforeHaveTheirSlotsStill) {
    remove(1);
    remove(6'000);
    remove(rows->RecordCount());
    begin();
    add("new");
    end();
    expectAsInTheFile();
}

TEST_F(Warming, RowidsWithGapsFindTheirSlots) {
    file.connection().forgetImage(QStringLiteral("t"));
    file.connection().execute(QStringLiteral("UPDATE t SET rowid = rowid * 1000000000"));
    file.connection().execute(QStringLiteral("DELETE FROM t WHERE 流水号 % 7 = 0"));
    rows = file.open(QStringLiteral("Select * From t"));
    image = file.connection().image(QStringLiteral("t"));
    remove(3);
    begin();
    add("new");
    end();
    expectAsInTheFile();
}

TEST_F(Warming, AColumnThatWasReadMeanwhileStaysAndIsOrderedAllTheSame) {
    begin();
    rows->setFilter(QStringLiteral("k = 'k7'"));
    rows->clearFilter();
    set(1, "k", QStringLiteral("new"));
    end();
    expectAsInTheFile();
}

TEST_F(Warming, NothingIsHandedOverInTheMiddleOfAnAction) {
    const int column = image->columnIndex(QStringLiteral("q"));
    begin();
    try {
        WriteBatch batch(file.connection());
        set(1, "q", 77.0);
        add("new");
        for (int i = 0; i < 30; ++i)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        EXPECT_FALSE(image->isLoaded(column));
        disk.failAt(0, FailingDisk::Kind::Full, true);
        batch.finish();
        ADD_FAILURE() << "nothing failed";
    } catch (const DatabaseLost&) { // as it shall
    }
    disk.heal();
    file.connection().tellTakenBack();
    end();
    expectAsInTheFile();
}

TEST_F(Warming, AllRowsThatGoMeanwhileLeaveNothingBehind) {
    begin();
    runStatement(file.connection(), QStringLiteral("Delete * From t"));
    add("new");
    end();
    image->loadAllColumns();
    expectAsInTheFile();
}

TEST_F(Warming, ATableThatIsDroppedMeanwhileIsLetGo) {
    begin();
    rows->Close();
    runStatement(file.connection(), QStringLiteral("Drop Table t"));
    end();
    EXPECT_TRUE(image->isDropped());
}

TEST_F(Warming, RowsThatAnotherProgramPutAmongThemGiveThePassUp) {
    file.connection().forgetImage(QStringLiteral("t"));
    file.connection().execute(QStringLiteral("UPDATE t SET rowid = rowid * 1000000"));
    rows = file.open(QStringLiteral("Select * From t"));
    image = file.connection().image(QStringLiteral("t"));
    Connection other(file.path());
    other.execute(QStringLiteral("DELETE FROM t WHERE rowid = 5000000"));
    other.execute(QStringLiteral("INSERT INTO t (rowid, k) VALUES (7700000, 'x')"));
    begin();
    end();
    EXPECT_FALSE(image->isLoaded(image->columnIndex(QStringLiteral("q"))));
}

TEST_F(Warming, NobodyWaitsForAnotherProgramWhereRowsAreToBePutRight) {
    begin();
    set(1, "q", 77.0);
    Connection other(file.path());
    other.execute(QStringLiteral("BEGIN EXCLUSIVE"));
    end();
    other.execute(QStringLiteral("ROLLBACK"));
    EXPECT_EQ(rows->numberAt(0, 2), 77);
    EXPECT_TRUE(file.connection().isIdle());
}

TEST_F(Warming, AnotherProgramsLockLeavesTheColumnsToTheirFirstUse) {
    Connection other(file.path());
    other.execute(QStringLiteral("BEGIN EXCLUSIVE"));
    begin();
    end();
    EXPECT_FALSE(image->isLoaded(image->columnIndex(QStringLiteral("q"))));
    other.execute(QStringLiteral("ROLLBACK"));
    EXPECT_EQ(rows->numberAt(0, 2), 0.5);
}

TEST_F(Warming, TheProgramMayEndWhileTheThreadReadsAndWhileSomebodyWrites) {
    begin();
    warmer.reset();
    WriteBatch batch(file.connection());
    add("new");
    begin();
    warmer.reset();
    batch.finish();
    EXPECT_EQ(file.stored(QStringLiteral("SELECT count(*) FROM t")).toInt(), kRows + 1);
}

} // namespace

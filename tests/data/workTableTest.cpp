// Work tables and quiet saves on a disk that fails.
#include "data/workTable.h"
#include "recordset/ignoringErrors.h"
#include "support/failingDisk.h"
#include "support/smallDisk.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class WorkTable : public testing::Test {
protected:
    WorkTable() {
        books.execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200) "
                      "INSERT INTO productTable (产品编号, 品名) SELECT 'p' || i, '货物的名字' FROM n");
        session().open_rs();
    }
    Session& session() { return books.session(); }
    QString counted() { return books.stored("SELECT count(*), max(产地) FROM stock_Count_Bank"); }
    /// Makes a new count over an old one, while each change to the disk fails in its turn.
    template <typename Rebuild> void expectOldOrNew(Rebuild&& rebuild) {
        for (int at = 0;; ++at) {
            rebuild();
            books.changeBehind("UPDATE stock_Count_Bank SET 产地 = 'old'");
            bool isNew = true;
            disk.failAt(at, FailingDisk::Kind::Full, false);
            try {
                rebuild();
            } catch (const ActionEnded& ended) {
                isNew = ended.isBooked();
            }
            disk.heal();
            ASSERT_EQ(counted(), isNew ? u"200|Null" : u"200|old") << at;
            if (!disk.hasFailed()) {
                EXPECT_GT(at, 10);
                return;
            }
        }
    }

    FailingDisk disk;
    TestBooks books;
};

TEST_F(WorkTable, OnAFullDiskTheOldOneStandsUntilTheNewOneIsWhole) {
    expectOldOrNew([this] {
        IgnoringErrors errors;
        rebuildWorkTable(session(), session().stock_Count_Bank, QStringLiteral("stock_Count_Bank"),
                         {QStringLiteral("Select * Into stock_Count_Bank From productTable")}, errors);
    });
}

TEST_F(WorkTable, FilledRowByRowTheOldOneStandsToo) {
    expectOldOrNew([this] {
        rebuildFrom(session(), session().stock_Count_Bank, QStringLiteral("stock_Count_Bank"),
                    rowsOfTable(*session().productTable));
    });
}

/// Counts how often a grid is to read its rows again.
class Grid : public RecordsetObserver {
public:
    void viewReset() override { ++resets; }
    int resets = 0;
};

TEST_F(WorkTable, AQuietSaveThatFailsKeepsEveryRowPendingAndTellsTheGrid) {
    const RecordsetPtr rows = session().productTable;
    rows->Fields("品名").setValue(QStringLiteral("改"));
    rows->MoveLast();
    rows->Fields("品名").setValue(QStringLiteral("改"));
    Grid grid;
    rows->observe(&grid);
    QString said;
    {
        const FileSizeLimit full(1);
        said = saveQuietly(session(), rows);
    }
    EXPECT_TRUE(said.contains(u"没有保存")) << said.toStdString();
    EXPECT_EQ(rows->pendingCount(), 2);
    EXPECT_EQ(grid.resets, 1);
    EXPECT_EQ(saveQuietly(session(), rows), u"");
    EXPECT_EQ(books.stored("SELECT count(*) FROM productTable WHERE 品名 = '改'"), u"2");
    rows->unobserve(&grid);
}

TEST_F(WorkTable, AQuietSaveThatIsBookedAllTheSameSaysSo) {
    const RecordsetPtr rows = session().productTable;
    const auto save = [&](const char* name) {
        rows->Fields("品名").setValue(QString::fromUtf8(name));
        return saveQuietly(session(), rows);
    };
    disk.failAt(1000, FailingDisk::Kind::Broken, false);
    ASSERT_EQ(save("改一"), u"");
    disk.failAt(disk.changes() - 1, FailingDisk::Kind::Broken, false); // the last: the journal is cut
    disk.lieAboutFailure();
    const QString said = save("改二");
    disk.heal();
    EXPECT_TRUE(said.contains(u"已经全部记入")) << said.toStdString();
    EXPECT_FALSE(said.contains(u"没有保存")) << said.toStdString();
    EXPECT_EQ(rows->pendingCount(), 0);
    EXPECT_EQ(books.stored("SELECT count(*) FROM productTable WHERE 品名 = '改二'"), u"1");
}

} // namespace

// A settlement is killed at each of its calls to the disk; then another file is put in the place of the
// books, as the user guide tells it, and the program starts.
#include "data/journalFiles.h"
#include "data/schema.h"
#include "durability/childProcess.h"
#include "durability/orderWorker.h"
#include "maintenance/backup.h"
#include "support/failingDisk.h"
#include "support/printQt.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Works in a shop for some steps.
void workIn(const QString& path, unsigned seed, int steps) {
    Session session(path);
    ShopWorker worker(session, seed);
    worker.open();
    for (int i = 0; i < steps; ++i)
        worker.step();
}

/// A worker whose sale can be called by itself.
class Seller : public ShopWorker {
public:
    using ShopWorker::sell;
    using ShopWorker::ShopWorker;
};

/// Sells in a child process that ends before its n-th change to the disk; false where it came to its end.
bool sellAndDieAt(const QString& path, unsigned seed, int change) {
    return wasKilled(inChild([&] {
        FailingDisk disk;
        Session session(path);
        Seller worker(session, seed);
        worker.open();
        disk.failAt(-1, FailingDisk::Kind::Full, false);
        disk.beforeChange = [change](int number) {
            if (number == change)
                _exit(kKilled);
        };
        worker.sell();
    }));
}

void copyOver(const QString& from, const QString& to) {
    QFile::remove(to);
    ASSERT_TRUE(QFile::copy(from, to));
}

class BackupDrill : public testing::Test {
protected:
    BackupDrill() {
        createDatabase(path);
        workIn(path, 5, 60);
        EXPECT_TRUE(backUpDatabase(path, hourAgo));
        EXPECT_TRUE(QFile::copy(path, copiedHourAgo));
        workIn(path, 6, 40);
        createDatabase(otherShop);
        workIn(otherShop, 7, 50);
        EXPECT_TRUE(QFile::copy(path, before));
        EXPECT_TRUE(backUpDatabase(path, justBefore));
    }
    QString in(const char* name) { return folder.filePath(QString::fromUtf8(name)); }
    /// The books as they were before the sale, with nothing beside them.
    void startOver() {
        for (const QString& beside : QDir(folder.path()).entryList({"shop.mdb?*"}, QDir::Files))
            QFile::remove(folder.filePath(beside));
        copyOver(before, path);
    }

    QTemporaryDir folder;
    QString path = in("shop.mdb");
    QString hourAgo = in("hourAgo.mdb");
    QString copiedHourAgo = in("copiedHourAgo.mdb");
    QString justBefore = in("justBefore.mdb");
    QString otherShop = in("other.mdb");
    QString before = in("before.mdb");
};

TEST_F(BackupDrill, WhereverASaleIsKilledTheFilePutBackHoldsExactlyItsBooks) {
    int drills = 0, hot = 0, aside = 0;
    for (const QString& putBack : {hourAgo, copiedHourAgo, justBefore, before, otherShop}) {
        const QByteArray its = digestOfBooks(putBack);
        for (int change = 0;; ++change) {
            startOver();
            if (!sellAndDieAt(path, 11, change))
                break;
            hot += journalState(path) == JournalState::Ours;
            copyOver(putBack, path);
            aside += int(putStraysAside(path).size());
            ASSERT_EQ(databaseFault(path), u"") << putBack.toStdString() << change;
            ASSERT_EQ(digestOfBooks(path), its) << putBack.toStdString() << " killed at " << change;
            ++drills;
        }
    }
    EXPECT_GT(hot, drills / 5);
    EXPECT_GT(aside, hot / 2);
    std::printf("%d drills, %d with a journal to be rolled in, %d put aside\n", drills, hot, aside);
}

TEST_F(BackupDrill, WhereNothingIsPutBackTheJournalIsRolledInAndTheSaleIsWhollyThereOrNot) {
    const QByteArray old = digestOfBooks(before);
    QByteArray sold;
    for (int change = 0;; ++change) {
        startOver();
        const bool killed = sellAndDieAt(path, 11, change);
        EXPECT_EQ(putStraysAside(path), QStringList()) << change;
        ASSERT_EQ(databaseFault(path), u"") << change;
        const QByteArray now = digestOfBooks(path);
        if (!killed) {
            EXPECT_GT(change, 10);
            break;
        }
        sold = now != old ? now : sold;
        ASSERT_TRUE(now == old || now == sold) << change;
    }
}

TEST_F(BackupDrill, AForeignWriteAheadLogIsNeverTakenIn) {
    // A reader keeps the other shop's log from being folded into its file.
    const QString foreign = in("foreign.mdb");
    copyOver(otherShop, foreign);
    inChild([&] {
        Connection other(foreign);
        other.execute("PRAGMA journal_mode = WAL");
        other.execute("UPDATE clientTable SET 单位名称 = 'foreign'");
        _exit(kKilled);
    });
    startOver();
    ASSERT_TRUE(QFile::copy(foreign + "-wal", path + "-wal"));
    ASSERT_TRUE(QFile::copy(foreign + "-shm", path + "-shm"));
    const QStringList names = putStraysAside(path);
    EXPECT_EQ(names.size(), 2);
    EXPECT_TRUE(names.first().endsWith(".不属于此文件-wal")) << names.first().toStdString();
    EXPECT_EQ(digestOfBooks(path), digestOfBooks(before));
    EXPECT_FALSE(hasStrays(path));
}

TEST_F(BackupDrill, AJournalThatIsNotWrittenToItsEndStaysAndASecondStrayGetsANameOfItsOwn) {
    const auto put = [this](const char* ending, const QByteArray& bytes) {
        QFile file(path + QString::fromUtf8(ending));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    };
    put("-journal", QByteArray(700, '\0')); // as it is before its records are on the disk
    EXPECT_EQ(journalState(path), JournalState::Empty);
    EXPECT_EQ(putStraysAside(path), QStringList()) << "another program may be at it";
    EXPECT_TRUE(QFile::exists(path + "-journal"));
    for (const char* name : {".不属于此文件-journal", ".不属于此文件2-journal"}) {
        put("-journal", QByteArray(2000, 'x'));
        EXPECT_EQ(journalState(path), JournalState::Foreign) << "not a journal at all";
        EXPECT_EQ(putStraysAside(path), QStringList(path + QString::fromUtf8(name)));
    }
}

TEST_F(BackupDrill, AFileThatNobodyHasMarkedYetKeepsTheJournalOfWhoDoesNotMark) {
    // The first record of such a journal is not the first page.
    const QString unmarked = in("unmarked.mdb");
    createDatabase(unmarked);
    for (int writes = 0; journalState(unmarked) != JournalState::Ours; ++writes) {
        ASSERT_LT(writes, 30) << "no journal with its records on the disk";
        inChild([&] {
            Connection(unmarked).execute("PRAGMA user_version = 0; PRAGMA application_id = 0");
            FailingDisk disk;
            Connection other(unmarked);
            disk.beforeChange = [writes](int number) {
                if (number == writes)
                    _exit(kKilled);
            };
            other.execute("UPDATE counterCode SET counterNum = 99999");
        });
    }
    EXPECT_EQ(journalState(unmarked), JournalState::Ours);
    copyOver(before, path);
    copyOver(unmarked + "-journal", path + "-journal");
    EXPECT_EQ(journalState(path), JournalState::Unknown) << "it might be of this file as well";
    EXPECT_EQ(putStraysAside(path), QStringList(path + ".不属于此文件-journal"));
}

TEST_F(BackupDrill, APipeInTheJournalsPlaceIsPutAsideUnread) {
    startOver();
    const QByteArray name = QFile::encodeName(path + "-journal");
    ASSERT_EQ(mkfifo(name.constData(), 0600), 0);
    const int end = ::open(name.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC); // nobody need wait for us
    const QByteArray content(4096, 'j');
    ASSERT_EQ(::write(end, content.constData(), 4096), 4096);
    EXPECT_EQ(journalState(path), JournalState::Foreign);
    char read[4096];
    EXPECT_EQ(::read(end, read, sizeof read), 4096) << "nobody has read of it";
    ::close(end);
    EXPECT_EQ(putStraysAside(path).size(), 1);
    EXPECT_EQ(journalState(path), JournalState::None);
}

} // namespace

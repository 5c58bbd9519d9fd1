// Damaged books: what a start finds, and the way back to a backup.
#include "data/books.h"
#include "data/booksLock.h"
#include "data/immutableFile.h"
#include "data/schema.h"
#include "durability/childProcess.h"
#include "durability/orderWorker.h"
#include "maintenance/dailyBackup.h"
#include "maintenance/restore.h"
#include "support/printQt.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

int asked(const char* variable, int usual) {
    const int number = qEnvironmentVariableIntValue(variable);
    return number > 0 ? number : usual;
}

void workIn(const QString& path, unsigned seed, int steps) {
    Session session(path);
    OrderWorker worker(session, seed);
    worker.open();
    for (int i = 0; i < steps; ++i)
        worker.step();
}

void flipBit(const QString& path, qint64 bit) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(bit / 8));
    const QByteArray byte = file.read(1);
    file.seek(bit / 8);
    file.write(QByteArray(1, char(byte[0] ^ (1 << (bit % 8)))));
}

/// What a start does before its first write: its faults are told, nothing is changed. 0 where it finds
/// nothing, 2 where it refuses the file.
int startOn(const QString& path) {
    if (!databaseFault(path).isEmpty() || !structureFault(path).isEmpty())
        return 2;
    try {
        Session session(path);
        session.cn.beforeFirstWrite = [] { _exit(3); }; // the recount would write
        openBooks(session);
        totalsRecount(session)->finish();
    } catch (const std::exception&) {
        return 2;
    }
    return 0;
}

TEST(Damage, AFlippedBitIsFoundOrLeavesTheProgramAlive) {
    QTemporaryDir folder;
    const QString sound = folder.filePath("sound.mdb");
    const QString path = folder.filePath("shop.mdb");
    createDatabase(sound);
    workIn(sound, 3, 120);
    {
        Session session(sound); // from here on a total that differs is the flip's doing
        openBooks(session);
        totalsRecount(session)->finish();
    }
    const QByteArray whole = digestOfBooks(sound);
    std::mt19937 random(23);
    const qint64 bits = QFileInfo(sound).size() * 8;
    int found = 0, recounted = 0, passed = 0, harmless = 0;
    const int flips = asked("SHOP_FLIPS", 60);
    for (int flip = 0; flip < flips; ++flip) {
        QFile::remove(path);
        ASSERT_TRUE(QFile::copy(sound, path));
        flipBit(path, qint64(random() % quint64(bits)));
        const int status = inChild([&] { _exit(startOn(path)); });
        ASSERT_TRUE(WIFEXITED(status)) << "the program crashed at flip " << flip;
        found += WEXITSTATUS(status) == 2;
        recounted += WEXITSTATUS(status) == 3;
        if (WEXITSTATUS(status) == 0)
            ++(digestOfBooks(path) == whole ? harmless : passed);
    }
    EXPECT_GT(found, flips / 10);
    std::printf(
        "%d flipped bits: %d found by the check, %d by totals that differ, %d without effect, %d in rows "
        "that nothing can know to be wrong\n",
        flips, found, recounted, harmless, passed);
}

TEST(Damage, ABackupPutBackHasEveryRowAndTotalOfItsDay) {
    const int drills = asked("SHOP_RESTORES", 8);
    for (int drill = 0; drill < drills; ++drill) {
        QTemporaryDir folder;
        const QString path = folder.filePath("VelmorClientBank.mdb");
        createDatabase(path);
        std::vector<QByteArray> days;
        const QDate first(2026, 11, 1);
        for (int day = 0; day < 3; ++day) {
            workIn(path, unsigned(drill * 10 + day), 25);
            days.push_back(digestOfBooks(path));
            ASSERT_EQ(backUpDaily(
                          path, first.addDays(day), [] { return 0U; }, freeBytesOf),
                      u"");
        }
        workIn(path, unsigned(drill), 10);
        BooksLock lock(path);
        ASSERT_EQ(lock.fault(), u"");
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.seek(4096 * (1 + drill % 10));
        file.write(QByteArray(4096, '\x5a'));
        file.close();
        const std::vector<KeptBackup> backups = keptBackups(path);
        const std::size_t chosen = std::size_t(drill) % backups.size();
        const Restored result = restoreBackup(backups[chosen].path, path, lock);
        ASSERT_EQ(result.fault, u"") << drill;
        EXPECT_EQ(digestOfBooks(path), days[days.size() - 1 - chosen]) << drill;
    }
    std::printf("%d restores\n", drills);
}

} // namespace

// One copy of the program on one file, by whatever name it comes.
#include "data/booksLock.h"
#include "data/schema.h"
#include "support/printQt.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray name(const QString& path) {
    return QFile::encodeName(path);
}

class BooksLockTest : public testing::Test {
protected:
    BooksLockTest() { createDatabase(path); }
    void write(const QString& to, const QByteArray& bytes) {
        QFile file(to);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    QByteArray contents(const QString& of) {
        QFile file(of);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static int rights(const QString& of) {
        struct stat found {};
        return stat(name(of).constData(), &found) == 0 ? int(found.st_mode & 0777) : -1;
    }

    QTemporaryDir folder;
    QString path = folder.filePath("VelmorClientBank.mdb");
};

TEST_F(BooksLockTest, ASecondOneIsRefusedByEveryAlias) {
    const BooksLock first(path);
    ASSERT_EQ(first.fault(), u"");
    QDir(folder.path()).mkdir("beside");
    const QString symbolic = folder.filePath("beside/VelmorClientBank.mdb");
    const QString hard = folder.filePath("hard.mdb");
    ASSERT_TRUE(QFile::link(path, symbolic));
    ASSERT_EQ(::link(name(path).constData(), name(hard).constData()), 0);
    for (const QString& alias : {path, symbolic, hard, folder.filePath("beside/../VelmorClientBank.mdb")}) {
        const BooksLock second(alias);
        EXPECT_TRUE(second.fault().contains(u"不能同时打开两次")) << alias.toStdString();
        EXPECT_TRUE(second.fault().contains(alias));
    }
}

TEST_F(BooksLockTest, ASecondOneThatIsRefusedLeavesTheFileBesideAsItIs) {
    const BooksLock first(path);
    const QByteArray holder = contents(path + ".lock");
    { const BooksLock second(path); }
    EXPECT_FALSE(holder.isEmpty());
    EXPECT_EQ(contents(path + ".lock"), holder);
}

TEST_F(BooksLockTest, AProgramThatWasStartedMeanwhileDoesNotHoldIt) {
    QProcess other;
    {
        const QString made = folder.filePath("made.mdb");
        createDatabase(made);
        BooksLock lock(path);
        ASSERT_TRUE(lock.replaceBy(made)); // both descriptors are its own alone
        other.start("cat", QStringList());
        ASSERT_TRUE(other.waitForStarted());
    }
    EXPECT_EQ(BooksLock(path).fault(), u"");
    other.closeWriteChannel();
    EXPECT_TRUE(other.waitForFinished());
}

TEST_F(BooksLockTest, ItGoesWithItsHolderAndTakesTheFileBesideWithIt) {
    {
        const BooksLock first(path);
        EXPECT_EQ(rights(path + ".lock"), 0600);
        EXPECT_TRUE(contents(path + ".lock").startsWith(QByteArray::number(getpid()) + '\n'));
    }
    EXPECT_FALSE(QFile::exists(path + ".lock"));
    EXPECT_EQ(BooksLock(path).fault(), u"");
}

TEST_F(BooksLockTest, AnEmptyAGarbledAndAForeignLockFileNeverBlock) {
    for (const QByteArray& held :
         {QByteArray(), QByteArray("\0\xff garbage", 10), QByteArray("1\nsystemd\nelsewhere\n")}) {
        write(path + ".lock", held);
        EXPECT_EQ(BooksLock(path).fault(), u"") << held.toStdString();
    }
    QFile::remove(path + ".lock");
    QDir(folder.path()).mkdir("VelmorClientBank.mdb.lock");
    EXPECT_EQ(BooksLock(path).fault(), u"") << "a folder of that name";
}

TEST_F(BooksLockTest, ALockFileThatIsTheDatabaseItselfIsLeftAlone) {
    ASSERT_EQ(::link(name(path).constData(), name(path + ".lock").constData()), 0);
    const QByteArray before = contents(path);
    const BooksLock lock(path);
    EXPECT_EQ(lock.fault(), u"");
    EXPECT_EQ(contents(path), before);
}

TEST_F(BooksLockTest, AMissingFileAFolderAPipeAndADeviceAreToldAndNotOpened) {
    EXPECT_TRUE(BooksLock(folder.filePath("none.mdb")).fault().contains(u"文件不存在"));
    EXPECT_TRUE(BooksLock(folder.path()).fault().contains(u"这不是文件"));
    const QString pipe = folder.filePath("pipe.mdb");
    ASSERT_EQ(mkfifo(name(pipe).constData(), 0600), 0);
    EXPECT_TRUE(BooksLock(pipe).fault().contains(u"管道"));
    EXPECT_TRUE(BooksLock("/dev/zero").fault().contains(u"设备"));
    EXPECT_TRUE(databaseFault(pipe).contains(u"管道"));
}

TEST_F(BooksLockTest, ItLeavesTheEnginesOwnLocksAlone) {
    const BooksLock lock(path);
    sqlite3* db = nullptr;
    sqlite3_open(name(path).constData(), &db);
    EXPECT_EQ(sqlite3_exec(db, "BEGIN EXCLUSIVE; UPDATE counterCode SET counterNum = 5; COMMIT", nullptr,
                           nullptr, nullptr),
              SQLITE_OK);
    EXPECT_FALSE(lock.isUsedByOthers());
    EXPECT_EQ(sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_TRUE(lock.isUsedByOthers()) << "the lock of another descriptor, as of another program";
    sqlite3_close(db);
}

TEST_F(BooksLockTest, AFileThatTakesThePlaceIsLockedToo) {
    const QString made = folder.filePath("made.mdb");
    createDatabase(made);
    BooksLock lock(path);
    ASSERT_TRUE(lock.replaceBy(made));
    EXPECT_FALSE(QFile::exists(made));
    EXPECT_FALSE(BooksLock(path).fault().isEmpty());
    lock.release();
    EXPECT_EQ(BooksLock(path).fault(), u"");
}

TEST_F(BooksLockTest, AFileThatIsHeldItselfDoesNotTakeThePlace) {
    const QString made = folder.filePath("made.mdb");
    createDatabase(made);
    const BooksLock other(made);
    BooksLock lock(path);
    EXPECT_FALSE(lock.replaceBy(made));
    EXPECT_TRUE(QFile::exists(made));
    EXPECT_FALSE(BooksLock(path).fault().isEmpty()) << "the old one is held still";
}

TEST_F(BooksLockTest, AFileThatCameMeanwhileKeepsItsName) {
    const QString missing = folder.filePath("missing.mdb");
    const QString made = folder.filePath("made.mdb");
    createDatabase(made);
    BooksLock lock(missing);
    write(missing, "another's");
    EXPECT_FALSE(lock.replaceBy(made));
    EXPECT_EQ(contents(missing), "another's");
    QFile::remove(missing);
    EXPECT_TRUE(lock.replaceBy(made));
    EXPECT_FALSE(BooksLock(missing).fault().isEmpty()) << "held from now on";
}

TEST_F(BooksLockTest, OnlyTheOwnerMayReadWhatIsMade) {
    EXPECT_EQ(rights(path), 0600);
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    const BooksLock lock(path);
    EXPECT_EQ(rights(path), 0640) << "rights that its owner gave are kept";
}

} // namespace

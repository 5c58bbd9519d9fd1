// The last steps of a take-over, a restoring and a backup on disks that fail at one of them or do not know
// it.
#include "data/booksLock.h"
#include "data/immutableFile.h"
#include "data/schema.h"
#include "data/unfinished.h"
#include "durability/childProcess.h"
#include "import/importSource.h"
#include "maintenance/backup.h"
#include "maintenance/restore.h"
#include "maintenance/takeOver.h"
#include "recordset/error.h"
#include "support/printQt.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

bool foldersFlush = true;
const char* fixedName = nullptr; // part of a name that no file can be given another one for
bool diesAtRename = false;       // the process ends where a file is to get another name
int flushing = 0;                // what every flush fails with
bool knowsRights = true;         // sticks do not

int refused(int fault = EIO) {
    errno = fault;
    return -1;
}

} // namespace

// These stand before those of the system in this program.
extern "C" int fsync(int file) {
    struct stat about {};
    if (flushing != 0)
        return refused(flushing);
    const bool folder = fstat(file, &about) == 0 && S_ISDIR(about.st_mode);
    return folder && !foldersFlush ? refused() : int(syscall(SYS_fsync, file));
}

extern "C" int rename(const char* from, const char* to) noexcept {
    if (diesAtRename)
        _exit(kKilled);
    if (fixedName && std::strstr(from, fixedName))
        return refused();
    return int(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

extern "C" int chmod(const char* name, mode_t mode) noexcept {
    return knowsRights ? int(syscall(SYS_fchmodat, AT_FDCWD, name, mode)) : refused(EPERM);
}

namespace {

class NoBooks : public ImportSource {
public:
    QStringList tables() override { return {}; }
    SourceRows read(const QString&) override { return {}; }
};

class TakeOverSwap : public testing::Test {
protected:
    TakeOverSwap() {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write("old") == 3);
    }
    ~TakeOverSwap() override {
        foldersFlush = true;
        fixedName = nullptr;
    }
    QString path() const { return folder.filePath("VelmorClientBank.mdb"); }
    QString kept() const { return folder.filePath("VelmorClientBank-旧版.mdb"); }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
    static QByteArray contents(const QString& name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// What a take-over failed with.
    QString fault() const {
        NoBooks books;
        try {
            takeOverFrom(books, path());
        } catch (const RuntimeError& error) {
            return error.text();
        }
        return {};
    }

    QTemporaryDir folder;
};

TEST_F(TakeOverSwap, AFolderThatIsNotFlushedGivesTheOldFileItsNameBack) {
    foldersFlush = false;
    EXPECT_EQ(fault(), u"文件没有写入磁盘");
    EXPECT_EQ(contents(path()), "old");
    EXPECT_EQ(files(), QStringList{"VelmorClientBank.mdb"});
}

TEST_F(TakeOverSwap, AnOldFileThatCannotHaveItsNameBackKeepsItsSecondOneAndThatIsTold) {
    foldersFlush = false;
    fixedName = "旧版.mdb";
    EXPECT_EQ(fault(), "文件没有写入磁盘，旧文件现在叫 " + kept());
    EXPECT_EQ(contents(kept()), "old");
}

TEST_F(TakeOverSwap, ANewFileThatCannotHaveTheNameLeavesTheOldOneAlone) {
    fixedName = ".hengshanghui-";
    EXPECT_EQ(fault(), u"新数据库不能放到原来的位置");
    EXPECT_EQ(contents(path()), "old");
    EXPECT_EQ(files(), QStringList{"VelmorClientBank.mdb"});
}

TEST_F(TakeOverSwap, OnASoundDiskBothFilesStand) {
    EXPECT_EQ(fault(), u"");
    EXPECT_EQ(contents(kept()), "old");
    EXPECT_EQ(files().size(), 2);
}

TEST_F(TakeOverSwap, AnOlderSecondNameIsNotTakenAgain) {
    QFile older(kept());
    ASSERT_TRUE(older.open(QIODevice::WriteOnly) && older.write("older") == 5);
    older.close();
    EXPECT_EQ(fault(), u"");
    EXPECT_EQ(contents(kept()), "older");
    EXPECT_EQ(contents(folder.filePath("VelmorClientBank-旧版2.mdb")), "old");
}

TEST_F(TakeOverSwap, TheLockGoesOverToTheNewFile) {
    BooksLock lock(path());
    NoBooks books;
    takeOverFrom(books, path(), {}, &lock);
    EXPECT_FALSE(BooksLock(path()).fault().isEmpty()) << "the new file is held";
    EXPECT_EQ(BooksLock(kept()).fault(), u"") << "the old one is let go";
}

TEST_F(TakeOverSwap, KilledBetweenTheNamesTheNextStartTakesTheSecondOneAway) {
    ASSERT_TRUE(wasKilled(inChild([&] {
        diesAtRename = true;
        fault();
    })));
    EXPECT_TRUE(QFile::exists(kept()));
    clearUnfinished(path());
    EXPECT_EQ(contents(path()), "old");
    EXPECT_EQ(files(), QStringList{"VelmorClientBank.mdb"});
}

class OddDisk : public testing::Test {
protected:
    OddDisk() {
        createDatabase(path);
        EXPECT_TRUE(backUpDatabase(path, backup));
    }
    ~OddDisk() override {
        fixedName = nullptr;
        flushing = 0;
        knowsRights = true;
    }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    QTemporaryDir folder;
    QString path = folder.filePath("VelmorClientBank.mdb");
    QString backup = folder.filePath("backup.mdb");
};

TEST_F(OddDisk, AStickThatKnowsNoRightsAndNoFlushTakesABackup) {
    for (const int fault : {EINVAL, ENOSYS, ENOTSUP}) {
        QFile::remove(backup);
        QFile old(backup);
        ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
        old.close();
        flushing = fault;
        knowsRights = false;
        EXPECT_TRUE(backUpDatabase(path, backup)) << fault;
        EXPECT_EQ(structureFault(backup), u"");
    }
}

TEST_F(OddDisk, ADiskThatCannotWriteABackupToItsEndKeepsTheOldOne) {
    QFile old(backup);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    const QStringList before = files();
    flushing = EIO;
    EXPECT_FALSE(backUpDatabase(path, backup));
    EXPECT_EQ(files(), before);
    EXPECT_EQ(QFileInfo(backup).size(), 3);
}

TEST_F(OddDisk, ARestoredFileThatCannotHaveTheNameLeavesNoSecondNameOfTheBooks) {
    BooksLock lock(path);
    const QStringList before = files();
    fixedName = ".hengshanghui-";
    EXPECT_NE(restoreBackup(backup, path, lock).fault, u"");
    EXPECT_EQ(files(), before);
}

TEST_F(OddDisk, ARestoringKilledBetweenTheNamesIsTakenBackByTheNextStart) {
    const QStringList before = files();
    ASSERT_TRUE(wasKilled(inChild([&] {
        BooksLock lock(path);
        diesAtRename = true;
        restoreBackup(backup, path, lock);
    })));
    EXPECT_GT(files().size(), before.size() + 1);
    clearUnfinished(path);
    QFile::remove(path + ".lock");
    EXPECT_EQ(files(), before);
}

} // namespace

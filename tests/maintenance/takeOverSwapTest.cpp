// The last steps of a take-over on a disk that fails at one of them.
#include "import/importSource.h"
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

int refused() {
    errno = EIO;
    return -1;
}

} // namespace

// These stand before those of the system in this program.
extern "C" int fsync(int file) {
    struct stat about {};
    const bool folder = fstat(file, &about) == 0 && S_ISDIR(about.st_mode);
    return folder && !foldersFlush ? refused() : int(syscall(SYS_fsync, file));
}

extern "C" int rename(const char* from, const char* to) noexcept {
    if (fixedName && std::strstr(from, fixedName))
        return refused();
    return int(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
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

} // namespace

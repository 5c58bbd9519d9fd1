// The lock of the books on a file system that knows no locks of open files: there the lock file holds.
#include "data/booksLock.h"
#include "data/schema.h"
#include "support/printQt.h"

#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

bool knowsLocks = true;

} // namespace

// This stands before that of the system in this program.
extern "C" int fcntl(int file, int command, ...) {
    va_list rest;
    va_start(rest, command);
    void* argument = va_arg(rest, void*);
    va_end(rest);
    if (command == F_OFD_SETLK && !knowsLocks) {
        errno = EINVAL;
        return -1;
    }
    return int(syscall(SYS_fcntl, file, command, argument));
}

namespace {

class NoLocks : public testing::Test {
protected:
    NoLocks() {
        createDatabase(path);
        knowsLocks = false;
    }
    ~NoLocks() override { knowsLocks = true; }
    void write(const QByteArray& bytes) {
        QFile file(path + ".lock");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    QTemporaryDir folder;
    QString path = folder.filePath("VelmorClientBank.mdb");
};

TEST_F(NoLocks, ASecondOneIsRefusedAsLongAsTheFirstLives) {
    {
        const BooksLock first(path);
        EXPECT_EQ(first.fault(), u"");
        EXPECT_TRUE(BooksLock(path).fault().contains(u"不能同时打开两次"));
        EXPECT_TRUE(BooksLock(path).fault().contains(u"不能同时打开两次")) << "a refusal takes nothing away";
    }
    EXPECT_FALSE(QFile::exists(path + ".lock"));
    EXPECT_EQ(BooksLock(path).fault(), u"");
}

TEST_F(NoLocks, AnEmptyAndAGarbledLockFileAndThatOfADeadProcessNeverBlock) {
    const QByteArray dead = "4194303\nhengshanghui\n" + QSysInfo::machineHostName().toUtf8() + '\n';
    for (const QByteArray& held : {QByteArray(), QByteArray("\0\xff garbage", 10), dead}) {
        write(held);
        EXPECT_EQ(BooksLock(path).fault(), u"") << held.toStdString();
    }
}

TEST_F(NoLocks, AFileThatTakesThePlaceIsHeldToo) {
    const QString made = folder.filePath("made.mdb");
    createDatabase(made);
    BooksLock lock(path);
    ASSERT_TRUE(lock.replaceBy(made));
    EXPECT_TRUE(BooksLock(path).fault().contains(u"不能同时打开两次"));
    lock.release();
    EXPECT_EQ(BooksLock(path).fault(), u"");
}

} // namespace

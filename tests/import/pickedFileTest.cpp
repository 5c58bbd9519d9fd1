// Files that the user picks and the program leaves alone.
#include "import/pickedFile.h"
#include "import/importSource.h"
#include "support/printQt.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class Picked : public testing::Test {
protected:
    QByteArray name(const char* file) const {
        return QFile::encodeName(folder.filePath(QString::fromUtf8(file)));
    }
    QString make(const char* file, const QByteArray& contents = "a,b\n1,2\n") const {
        QFile made(folder.filePath(QString::fromUtf8(file)));
        EXPECT_TRUE(made.open(QIODevice::WriteOnly) && made.write(contents) == contents.size());
        return made.fileName();
    }
    static QString refusal(const QString& path, const QStringList& own = {}) {
        try {
            openImportSource(SourceKind::Txt, path, own);
        } catch (const ImportError& error) {
            return error.text();
        }
        return {};
    }

    QTemporaryDir folder;
};

TEST_F(Picked, WhatIsNoOrdinaryFileIsRefusedAtOnceAndUnopened) {
    ASSERT_EQ(mkfifo(name("fifo.txt").constData(), 0600), 0);
    ASSERT_EQ(symlink("fifo.txt", name("link.txt").constData()), 0);
    ASSERT_EQ(symlink("/dev/zero", name("zero.txt").constData()), 0);
    ASSERT_EQ(symlink("nowhere", name("nowhere.txt").constData()), 0);
    ASSERT_TRUE(QDir(folder.path()).mkdir("folder.txt"));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, name("socket.txt").constData(), sizeof address.sun_path);
    ASSERT_EQ(bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    QElapsedTimer clock;
    clock.start();
    for (const char* file : {"fifo.txt", "link.txt", "zero.txt", "folder.txt", "socket.txt"}) {
        const QString path = folder.filePath(QString::fromUtf8(file));
        EXPECT_EQ(refusal(path), QStringLiteral("不是普通的文件，不能读取：%1").arg(path));
    }
    for (const char* file : {"nowhere.txt", "missing.txt"}) {
        const QString path = folder.filePath(QString::fromUtf8(file));
        EXPECT_EQ(refusal(path), QStringLiteral("文件不能打开：%1").arg(path));
    }
    EXPECT_LT(clock.elapsed(), 5000);
    ::close(socket);
}

/// Whether another process finds this one's lock on a file.
bool isLocked(const QByteArray& path) {
    const pid_t child = fork();
    if (child == 0) {
        struct flock lock {};
        lock.l_type = F_WRLCK;
        std::_Exit(fcntl(::open(path.constData(), O_RDWR), F_SETLK, &lock) == 0 ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status) == 1;
}

TEST_F(Picked, AnOwnFileIsRefusedByAnyAliasAndItsLocksStand) {
    const QString books = make("books.mdb");
    const QString journal = make("books.mdb-journal");
    ASSERT_EQ(symlink(name("books.mdb").constData(), name("soft.txt").constData()), 0);
    ASSERT_EQ(link(name("books.mdb").constData(), name("hard.txt").constData()), 0);
    ASSERT_EQ(link(name("books.mdb-journal").constData(), name("journal.txt").constData()), 0);
    ASSERT_EQ(symlink(name(".").constData(), name("round").constData()), 0);
    const int held = ::open(name("books.mdb").constData(), O_RDWR | O_CLOEXEC);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    ASSERT_EQ(fcntl(held, F_SETLK, &lock), 0);
    for (const char* file :
         {"books.mdb", "soft.txt", "hard.txt", "journal.txt", "round/books.mdb", "round/soft.txt"}) {
        const QString path = folder.filePath(QString::fromUtf8(file));
        EXPECT_EQ(refusal(path, {books, journal, books + ".lock"}),
                  QStringLiteral("这是本系统正在使用的文件，不能导入：%1").arg(path));
        EXPECT_TRUE(isLocked(name("books.mdb"))) << file;
    }
    EXPECT_EQ(refusal(make("other.txt"), {books, journal}), u"");
    ::close(held);
}

TEST_F(Picked, AMemoFileThatIsNoneLeavesTheMemosEmpty) {
    for (const char* table : {"memo_types.dbf"})
        ASSERT_TRUE(QFile::copy(QStringLiteral(SAMPLES "/import/edge/") + QString::fromUtf8(table),
                                folder.filePath(QString::fromUtf8(table))));
    ASSERT_EQ(symlink("/dev/zero", name("memo_types.fpt").constData()), 0);
    const SourceRows rows =
        openImportSource(SourceKind::Dbf, folder.filePath("memo_types.dbf"))->read("memo_types");
    EXPECT_GT(rows.rowCount(), 0);
}

TEST_F(Picked, AMemoFileThatIsAnOwnFileIsNotOpenedAndItsLocksStand) {
    const QString books = make("books.mdb");
    ASSERT_TRUE(QFile::copy(QStringLiteral(SAMPLES "/import/edge/memo_types.dbf"),
                            folder.filePath("memo_types.dbf")));
    ASSERT_EQ(link(name("books.mdb").constData(), name("memo_types.fpt").constData()), 0);
    const int held = ::open(name("books.mdb").constData(), O_RDWR | O_CLOEXEC);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    ASSERT_EQ(fcntl(held, F_SETLK, &lock), 0);
    const auto source = openImportSource(SourceKind::Dbf, folder.filePath("memo_types.dbf"), {books});
    EXPECT_GT(source->read("memo_types").rowCount(), 0);
    EXPECT_TRUE(isLocked(name("books.mdb")));
    ::close(held);
}

TEST_F(Picked, AFileOfMoreThanAGibibyteIsRefusedUnread) {
    const QString path = make("large.txt");
    ASSERT_TRUE(QFile::resize(path, (qint64(1) << 30) + 1)); // a hole: it takes no room
    EXPECT_EQ(refusal(path), QStringLiteral("文件太大：%1").arg(path));
}

} // namespace

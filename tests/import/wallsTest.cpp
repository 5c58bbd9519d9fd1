// The walls behind which foreign files are read, tried from within.
#include "import/readerProcess.h"
#include "support/printQt.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kNoWalls = 4; // exit code of the probe
constexpr int kNobody = 65534;

class Walls : public testing::Test {
protected:
    Walls() {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write("books") == 5);
    }
    QString path() const { return folder.filePath("books"); }
    QByteArray contents() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// What the probe says of each way out; empty without walls.
    QStringList ways(const QStringList& words) {
        QProcess probe;
        probe.start(QStringLiteral(WALL_PROBE), QStringList{path()} + words);
        probe.closeWriteChannel();
        EXPECT_TRUE(probe.waitForFinished());
        EXPECT_TRUE(probe.exitStatus() == QProcess::NormalExit &&
                    (probe.exitCode() == 0 || probe.exitCode() == kNoWalls))
            << probe.exitCode();
        return QString::fromUtf8(probe.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    }
    void expectNoWayOut(const QStringList& words) {
        const QStringList tried = ways(words);
        if (tried.isEmpty())
            GTEST_SKIP() << "this kernel has no such walls";
        for (const QString& way : tried)
            EXPECT_TRUE(way.endsWith(u": refused")) << way.toStdString();
        EXPECT_GE(tried.size(), 38);
        EXPECT_EQ(contents(), "books");
        std::printf("%lld ways out, each refused\n", static_cast<long long>(tried.size()));
    }

    QTemporaryDir folder;
};

TEST_F(Walls, LeaveNoFileNoNetworkNoProcessAndNoSettingInReach) {
    expectNoWayOut({});
}

TEST_F(Walls, BoundMemoryTimeAndFilesToo) {
    QProcess probe;
    probe.start(QStringLiteral(WALL_PROBE), {path()});
    QByteArray said;
    while (!said.contains("run another program") && probe.waitForReadyRead())
        said += probe.readAllStandardOutput();
    if (said.isEmpty())
        GTEST_SKIP() << "this kernel has no such walls";
    const auto bound = [&probe](__rlimit_resource of) {
        rlimit found{RLIM_INFINITY, RLIM_INFINITY};
        EXPECT_EQ(prlimit(pid_t(probe.processId()), of, nullptr, &found), 0);
        EXPECT_EQ(found.rlim_cur, found.rlim_max) << of;
        return found.rlim_max;
    };
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_EQ(bound(RLIMIT_AS), rlim_t(1) << 30) << "as much as the probe asked for";
#endif
    EXPECT_LE(bound(RLIMIT_CPU), 600U) << "seconds";
    for (const auto none : {RLIMIT_FSIZE, RLIMIT_NPROC, RLIMIT_CORE, RLIMIT_NOFILE})
        EXPECT_EQ(bound(none), 0U) << none;
    probe.closeWriteChannel();
    EXPECT_TRUE(probe.waitForFinished());
}

TEST_F(Walls, AreTheSameForAnotherUser) {
    if (getuid() != 0)
        GTEST_SKIP() << "only the administrator can become another user";
    ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0777), 0);
    ASSERT_EQ(chmod(QFile::encodeName(path()).constData(), 0666), 0);
    expectNoWayOut({QString::number(kNobody)});
}

TEST_F(Walls, StandWhereTheProbeFindsThem) {
    EXPECT_EQ(wallsState(), !ways({}).isEmpty());
}

} // namespace

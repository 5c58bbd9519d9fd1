// The real program is started in a folder of its own, without a screen.
#include "data/schema.h"
#include "support/printQt.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sqlite3.h>

namespace {

class Start : public testing::Test {
protected:
    Start() {
        QFile::copy(QStringLiteral(SHOP_PROGRAM), program());
        QFile::copy(QStringLiteral(SHOP_READER), reader());
    }
    QString reader() const { return folder.filePath("hengshanghui-reader"); }
    QString program() const { return folder.filePath("hengshanghui"); }
    QString path() const { return folder.filePath("VelmorClientBank.mdb"); }

    void begin(QProcess& process) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        process.setProcessEnvironment(environment);
        process.start(program(), {});
        ASSERT_TRUE(process.waitForStarted());
    }
    /// Starts the program, which must end by itself with code 1; what it says on stderr.
    QString endOf() {
        QProcess process;
        begin(process);
        EXPECT_TRUE(process.waitForFinished(30'000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 1);
        return QString::fromUtf8(process.readAllStandardError());
    }
    void expectEnd(const QString& cause) {
        const QByteArray before = bytes();
        const QString said = endOf();
        EXPECT_TRUE(said.contains(path())) << said.toStdString();
        EXPECT_TRUE(said.contains(cause)) << said.toStdString();
        EXPECT_EQ(bytes(), before);
    }
    QByteArray bytes() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QByteArray& content) {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    /// Whether the process is still there after its shop has opened.
    static bool opens(QProcess& process, const QString& path) {
        for (int i = 0; i < 400; ++i) {
            if (process.waitForFinished(25))
                return false;
            if (QFile::exists(path + ".lock"))
                return true;
        }
        return false;
    }
    QTemporaryDir folder;
};

TEST_F(Start, TheVersionIsTheProjectsAndIsSaidWithoutScreenOrBooks) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "none such");
    process.setProcessEnvironment(environment);
    process.start(program(), {"--version"});
    ASSERT_TRUE(process.waitForFinished(30'000));
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardOutput(), "衡商汇 " PROJECT_VERSION_TEXT "\n");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 2) << "nothing is written";
}

TEST_F(Start, WithoutTheFile) {
    expectEnd("文件不存在");
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(Start, WithAFileThatIsNoDatabase) {
    write("a letter");
    expectEnd("不是本系统的数据库");
}

TEST_F(Start, WithTheAccessFileOfAnotherProgram) {
    QFile::copy(QStringLiteral(SAMPLES "/import/orders.mdb"), path());
    expectEnd("缺少表 clientTable");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 3) << "nothing new beside it";
}

TEST_F(Start, WithOldBooksAndNoReaderForThem) {
    QFile::copy(QStringLiteral(SAMPLES "/legacy/VelmorClientBank.mdb"), path());
    QFile::remove(reader());
    expectEnd("找不到读取 Access 文件的程序");
}

TEST_F(Start, WithATruncatedFile) {
    createDatabase(path());
    write(bytes().left(20'000));
    expectEnd("被截断");
}

TEST_F(Start, WithATableMissing) {
    createDatabase(path());
    sqlite3* db = nullptr;
    sqlite3_open(path().toUtf8().constData(), &db);
    sqlite3_exec(db, "DROP TABLE product_Bank", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    expectEnd("缺少表 product_Bank");
}

TEST_F(Start, WithTheFileLockedByAnotherProgram) {
    createDatabase(path());
    sqlite3* db = nullptr;
    sqlite3_open(path().toUtf8().constData(), &db);
    sqlite3_exec(db, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    // Reading the file here would drop the lock: the system gives it up with any handle of this process.
    EXPECT_TRUE(endOf().contains("已锁定"));
    sqlite3_close(db);
}

TEST_F(Start, ASecondCopyOnTheSameFileIsRefusedAndTheFirstGoesOn) {
    createDatabase(path());
    QProcess first;
    begin(first);
    ASSERT_TRUE(opens(first, path()));
    EXPECT_TRUE(endOf().contains("不能同时打开两次"));
    EXPECT_EQ(first.state(), QProcess::Running);
    first.kill();
    first.waitForFinished();
    QProcess again;
    begin(again);
    EXPECT_TRUE(opens(again, path())) << "the lock of a killed program is no lock";
    again.kill();
    again.waitForFinished();
}

TEST_F(Start, DamageInsideIsReportedByNumberFileAndWordsAndEndsTheProcess) {
    createDatabase(path());
    sqlite3* db = nullptr;
    sqlite3_open(path().toUtf8().constData(), &db);
    sqlite3_exec(db, "INSERT INTO buyList (订单号, 日期) VALUES ('1', 'no date')", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    const QString said = endOf();
    EXPECT_TRUE(said.contains("错误 13")) << said.toStdString();
    EXPECT_TRUE(said.contains("no date")) << said.toStdString();
    EXPECT_TRUE(said.contains(path())) << said.toStdString();
}

} // namespace

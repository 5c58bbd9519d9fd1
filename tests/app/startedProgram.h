#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sqlite3.h>

/// The real program in a folder of its own, started without a screen for a user whose data folder is in a
/// folder of the test.
class Start : public testing::Test {
protected:
    Start() {
        QFile::copy(QStringLiteral(SHOP_PROGRAM), program());
        QFile::copy(QStringLiteral(SHOP_READER), reader());
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("XDG_DATA_HOME", home.filePath("share"));
    }
    QString reader() const { return folder.filePath("hengshanghui-reader"); }
    QString program() const { return folder.filePath("hengshanghui"); }
    virtual QString booksFolder() const { return folder.path(); }
    QString path() const { return booksFolder() + "/VelmorClientBank.mdb"; }

    void begin(QProcess& process, const QStringList& arguments = {}) {
        beginAs(process, program(), arguments);
    }
    void beginAs(QProcess& process, const QString& program, const QStringList& arguments = {}) {
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        ASSERT_TRUE(process.waitForStarted());
    }
    void run(const char* sql) {
        sqlite3* db = nullptr;
        sqlite3_open(path().toUtf8().constData(), &db);
        EXPECT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
        sqlite3_close(db);
    }
    QStringList dailyBackups() const {
        return QDir(booksFolder() + "/备份").entryList({"*.mdb"}, QDir::Files);
    }
    /// Whether the start has come to its last job, with the program at work.
    bool comesUp(QProcess& process) const {
        for (int i = 0; i < 400; ++i) {
            if (process.waitForFinished(25))
                return false;
            if (!dailyBackups().isEmpty())
                return true;
        }
        return false;
    }
    /// A figure of the books.
    double figure(const char* sql) const {
        sqlite3* db = nullptr;
        sqlite3_open(path().toUtf8().constData(), &db);
        sqlite3_stmt* query = nullptr;
        sqlite3_prepare_v2(db, sql, -1, &query, nullptr);
        const double found = sqlite3_step(query) == SQLITE_ROW ? sqlite3_column_double(query, 0) : -1;
        sqlite3_finalize(query);
        sqlite3_close(db);
        return found;
    }
    static void end(QProcess& process) {
        process.kill();
        process.waitForFinished();
    }
    /// Starts the program, which must end by itself with code 1; what it says on stderr.
    QString endOf(const QStringList& arguments = {}) {
        QProcess process;
        begin(process, arguments);
        EXPECT_TRUE(process.waitForFinished(30'000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 1);
        return QString::fromUtf8(process.readAllStandardError());
    }
    void expectEnd(const QString& cause, const QStringList& arguments = {}) {
        const QByteArray before = bytes();
        const QString said = endOf(arguments);
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
    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

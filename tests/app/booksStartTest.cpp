// Where the real program finds its books.
#include "app/startedProgram.h"
#include "data/schema.h"
#include "support/printQt.h"

#include <unistd.h>

namespace {

/// What stands in a folder, with what the files hold.
QMap<QString, QByteArray> contentsOf(const QString& folder) {
    QMap<QString, QByteArray> found;
    for (const QFileInfo& info :
         QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
        QFile file(info.filePath());
        found[info.fileName()] = info.isFile() && file.open(QIODevice::ReadOnly) ? file.readAll() : "folder";
    }
    return found;
}

/// Without a screen, and without anything that asks for one.
class ScreenlessStart : public Start {
protected:
    ScreenlessStart() { environment.insert("QT_QPA_PLATFORM", "none such"); }
};

TEST_F(ScreenlessStart, HelpIsChineseAndNeedsNeitherScreenNorBooks) {
    for (const QStringList& words :
         {QStringList{"--help"}, QStringList{"-h"}, QStringList{"--books", "--help"}}) {
        QProcess process;
        begin(process, words);
        ASSERT_TRUE(process.waitForFinished(30'000));
        EXPECT_EQ(process.exitCode(), 0);
        const QString said = QString::fromUtf8(process.readAllStandardOutput());
        EXPECT_TRUE(said.startsWith("用法：hengshanghui")) << said.toStdString();
        EXPECT_TRUE(said.contains(home.filePath("share/hengshanghui")));
    }
    EXPECT_EQ(contentsOf(folder.path()).size(), 2) << "nothing is written";
    EXPECT_TRUE(contentsOf(home.path()).isEmpty());
}

TEST_F(Start, AnOptionThatIsNoneIsNamedAndNothingIsOpened) {
    createDatabase(path());
    for (const QStringList& words :
         {QStringList{"--boks", "x"}, QStringList{"shop.mdb"}, QStringList{"--books"}}) {
        QProcess process;
        begin(process, words);
        ASSERT_TRUE(process.waitForFinished(30'000));
        EXPECT_EQ(process.exitCode(), 2);
        const QString said = QString::fromUtf8(process.readAllStandardError());
        EXPECT_TRUE(said.contains(words.front()) && said.contains("--help")) << said.toStdString();
    }
    EXPECT_FALSE(QFile::exists(path() + ".lock"));
}

/// Books in a folder that the command line names.
class BooksAsked : public Start {
protected:
    BooksAsked() {
        QDir(home.path()).mkdir("shop");
        createDatabase(path());
    }
    QString booksFolder() const override { return home.filePath("shop"); }
};

TEST_F(BooksAsked, AreOpenedAndAllThatBelongsToThemStandsBesideThem) {
    const auto before = contentsOf(folder.path());
    run("INSERT INTO clientTable (客户编号, 消费合计) VALUES ('7', 12)");
    QProcess process;
    process.setWorkingDirectory(home.path());
    begin(process, {"--books", "shop"});
    ASSERT_TRUE(comesUp(process)) << process.readAllStandardError().toStdString();
    EXPECT_TRUE(QFile::exists(path() + ".lock"));
    QProcess other;
    begin(other, {"--books=" + booksFolder()});
    ASSERT_TRUE(other.waitForFinished(30'000));
    EXPECT_TRUE(QString::fromUtf8(other.readAllStandardError()).contains("不能同时打开两次"));
    end(process);
    EXPECT_EQ(contentsOf(folder.path()), before) << "nothing is written beside the program";
    EXPECT_FALSE(QFile::exists(home.filePath("share")));
}

TEST_F(BooksAsked, GoBeforeThoseBesideTheProgram) {
    ASSERT_TRUE(QFile::copy(path(), folder.filePath("VelmorClientBank.mdb")));
    const auto before = contentsOf(folder.path());
    QProcess process;
    begin(process, {"--books", booksFolder()});
    ASSERT_TRUE(comesUp(process));
    end(process);
    EXPECT_EQ(contentsOf(folder.path()), before);
}

TEST_F(BooksAsked, ABackupIsPutBackThere) {
    run("INSERT INTO clientTable (客户编号) VALUES ('kept')");
    const QString backup = home.filePath("backup.mdb");
    ASSERT_TRUE(QFile::copy(path(), backup));
    run("DELETE FROM clientTable");
    const auto before = contentsOf(folder.path());
    QProcess process;
    begin(process, {"--restore", backup, "--books", booksFolder()});
    ASSERT_TRUE(comesUp(process)) << process.readAllStandardError().toStdString();
    end(process);
    EXPECT_EQ(figure("SELECT count(*) FROM clientTable"), 1);
    EXPECT_EQ(QDir(booksFolder()).entryList({"*恢复前*.mdb"}).size(), 1);
    EXPECT_EQ(contentsOf(folder.path()), before);
}

TEST_F(BooksAsked, OfAnOldInstallationAreMetThere) {
    ASSERT_TRUE(QFile::remove(path()) &&
                QFile::copy(QStringLiteral(SAMPLES "/legacy/VelmorClientBank.mdb"), path()));
    ASSERT_TRUE(QFile::remove(reader()));
    expectEnd("找不到读取文件的程序", {"--books", booksFolder()});
}

TEST_F(BooksAsked, AFolderThatIsNotThereOrNoneOrEmptyIsToldAndNothingIsMade) {
    EXPECT_TRUE(endOf({"--books", home.filePath("none")}).contains("文件夹不存在"));
    EXPECT_FALSE(QFile::exists(home.filePath("none")));
    EXPECT_TRUE(endOf({"--books", path()}).contains("这不是文件夹"));
    ASSERT_TRUE(QFile::remove(path()));
    expectEnd("文件不存在", {"--books", booksFolder()});
    EXPECT_TRUE(contentsOf(booksFolder()).isEmpty());
}

/// A program that an installation has put there: the empty books lie beside it under their own name.
class InstalledStart : public Start {
protected:
    InstalledStart() { createDatabase(folder.filePath("VelmorClientBank-empty.mdb")); }
    QString booksFolder() const override { return home.filePath("share/hengshanghui"); }
};

TEST_F(InstalledStart, TheFirstOneMakesAnEmptyShopAndTheNextOpensItAgain) {
    const auto before = contentsOf(folder.path());
    QProcess process;
    begin(process);
    ASSERT_TRUE(comesUp(process)) << process.readAllStandardError().toStdString();
    end(process);
    EXPECT_EQ(figure("SELECT count(*) FROM clientTable"), 0);
    run("INSERT INTO clientTable (客户编号, 消费合计) VALUES ('7', 12)");
    QDir(booksFolder() + "/备份").removeRecursively();
    QProcess again;
    begin(again);
    ASSERT_TRUE(comesUp(again));
    end(again);
    EXPECT_EQ(figure("SELECT count(*) FROM clientTable"), 1);
    EXPECT_EQ(contentsOf(folder.path()), before) << "the program's folder is never written";
}

TEST_F(InstalledStart, AUsedFolderWithoutItsFileIsToldAndNoShopIsMade) {
    ASSERT_TRUE(QDir().mkpath(booksFolder()));
    expectEnd("文件不存在");
    EXPECT_TRUE(endOf().contains("没有另开一家空店"));
    EXPECT_TRUE(contentsOf(booksFolder()).isEmpty());
    ASSERT_TRUE(QDir().rmdir(booksFolder()) && QFile::link("/no such disk/shop", booksFolder()));
    EXPECT_TRUE(endOf().contains("不能使用数据文件夹"));
}

TEST_F(InstalledStart, AFirstOneThatCannotMakeItsFolderIsTold) {
    QFile inTheWay(home.filePath("share"));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    EXPECT_TRUE(endOf().contains("不能建立数据文件夹"));
}

TEST_F(InstalledStart, BooksBesideTheProgramGoBeforeTheUsersFolder) {
    ASSERT_TRUE(
        QFile::copy(folder.filePath("VelmorClientBank-empty.mdb"), folder.filePath("VelmorClientBank.mdb")));
    QProcess process;
    begin(process);
    ASSERT_TRUE(opens(process, folder.filePath("VelmorClientBank.mdb")));
    end(process);
    EXPECT_FALSE(QFile::exists(booksFolder()));
}

TEST_F(InstalledStart, AnEmptyFolderAskedForNamesTheEmptyBooksToCopy) {
    ASSERT_TRUE(QDir().mkpath(home.filePath("second")));
    const QString said = endOf({"--books", home.filePath("second")});
    EXPECT_TRUE(said.contains(folder.filePath("VelmorClientBank-empty.mdb"))) << said.toStdString();
    EXPECT_TRUE(contentsOf(home.filePath("second")).isEmpty());
}

TEST_F(InstalledStart, AFirstOneWithABackupStartsOnThatBackup) {
    const QString backup = home.filePath("backup.mdb");
    ASSERT_TRUE(QFile::copy(folder.filePath("VelmorClientBank-empty.mdb"), backup));
    sqlite3* db = nullptr;
    sqlite3_open(backup.toUtf8().constData(), &db);
    sqlite3_exec(db, "INSERT INTO clientTable (客户编号) VALUES ('moved')", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    QProcess process;
    begin(process, {"--restore", backup});
    ASSERT_TRUE(comesUp(process)) << process.readAllStandardError().toStdString();
    end(process);
    EXPECT_EQ(figure("SELECT count(*) FROM clientTable"), 1);
}

TEST_F(InstalledStart, OfTwoFirstOnesTogetherOneLives) {
    QProcess one, other;
    begin(one);
    begin(other);
    for (int i = 0; i < 1200 && one.state() == QProcess::Running && other.state() == QProcess::Running; ++i)
        one.waitForFinished(25), other.waitForFinished(1);
    QProcess& living = one.state() == QProcess::Running ? one : other;
    QProcess& refused = &living == &one ? other : one;
    EXPECT_EQ(living.state(), QProcess::Running) << "both ended";
    EXPECT_TRUE(QString::fromUtf8(refused.readAllStandardError()).contains("不能同时打开两次"));
    end(living);
    end(refused);
    EXPECT_EQ(databaseFault(path()), "");
}

} // namespace

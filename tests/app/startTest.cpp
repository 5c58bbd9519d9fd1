// The real program is started in a folder of its own, without a screen.
#include "app/startedProgram.h"
#include "data/schema.h"
#include "support/printQt.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

TEST_F(Start, TheVersionIsTheProjectsAndIsSaidWithoutScreenOrBooks) {
    QProcess process;
    environment.insert("QT_QPA_PLATFORM", "none such");
    begin(process, {"--version"});
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
    expectEnd("找不到读取文件的程序");
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

TEST_F(Start, WithAPipeInItsPlace) {
    ASSERT_EQ(mkfifo(path().toUtf8().constData(), 0600), 0);
    EXPECT_TRUE(endOf().contains("管道"));
}

TEST_F(Start, WithAColumnOfAnotherType) {
    createDatabase(path());
    run("ALTER TABLE counterCode DROP COLUMN counterNum2; ALTER TABLE counterCode ADD COLUMN counterNum2 "
        "TEXT(5)");
    expectEnd("表 counterCode 的列 counterNum2 的类型是");
}

TEST_F(Start, WithAColumnOfNoKnownType) {
    createDatabase(path());
    run("ALTER TABLE productTable ADD COLUMN 附件 BLOB");
    expectEnd("表 productTable：列 附件");
}

TEST_F(Start, DamageThatOnlyTheCheckSeesEndsItBehindTheWindowAndNothingIsWritten) {
    createDatabase(path());
    // Totals that a recount would change, and a page of a table that no start reads.
    run("INSERT INTO clientTable (客户编号, 消费合计) VALUES ('7', 12);"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
        "INSERT INTO return_Bank (产品编号) SELECT i FROM n");
    sqlite3* db = nullptr;
    sqlite3_open(path().toUtf8().constData(), &db);
    sqlite3_stmt* root = nullptr;
    sqlite3_prepare_v2(db, "SELECT rootpage FROM sqlite_master WHERE name = 'return_Bank'", -1, &root,
                       nullptr);
    ASSERT_EQ(sqlite3_step(root), SQLITE_ROW);
    const qint64 page = sqlite3_column_int64(root, 0);
    sqlite3_finalize(root);
    sqlite3_close(db);
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek((page - 1) * 4096));
    file.write(QByteArray(200, '\x7f'));
    file.close();
    expectEnd("已损坏");
    EXPECT_EQ(dailyBackups(), QStringList()) << "damage is not backed up";
}

TEST_F(Start, TheDaysBackupIsMadeAndTotalsThatWereWrongAreRight) {
    createDatabase(path());
    run("INSERT INTO clientTable (客户编号, 消费合计) VALUES ('7', 12)");
    QProcess process;
    begin(process);
    ASSERT_TRUE(comesUp(process));
    // The backup is made in a thread of its own beside the recount.
    for (int i = 0; i < 400 && figure("SELECT 消费合计 FROM clientTable") != 0; ++i)
        process.waitForFinished(25);
    EXPECT_EQ(figure("SELECT 消费合计 FROM clientTable"), 0);
    end(process);
    EXPECT_EQ(dailyBackups(),
              QStringList("VelmorClientBank-" + QDate::currentDate().toString(Qt::ISODate) + ".mdb"));
}

TEST_F(Start, WhatAKilledProcessLeftHalfMadeIsClearedAway) {
    createDatabase(path());
    const QString half = folder.filePath(".hengshanghui-half");
    QFile file(half), list(path() + ".unfinished");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("half") == 4);
    ASSERT_TRUE(list.open(QIODevice::WriteOnly) && list.write(half.toUtf8() + '\n') > 0);
    file.close();
    list.close();
    QProcess process;
    begin(process);
    ASSERT_TRUE(comesUp(process));
    end(process);
    EXPECT_FALSE(file.exists());
}

TEST_F(Start, AForeignLogIsLeftWhereItIsWhileAnotherProgramIsAtTheFile) {
    createDatabase(path());
    sqlite3* db = nullptr;
    sqlite3_open(path().toUtf8().constData(), &db);
    sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    QFile log(path() + "-wal");
    ASSERT_TRUE(log.open(QIODevice::WriteOnly) && log.write("log") == 3);
    log.close();
    EXPECT_TRUE(endOf().contains("已锁定"));
    EXPECT_TRUE(log.exists());
    EXPECT_FALSE(QFile::exists(path() + ".不属于此文件-wal"));
    sqlite3_close(db);
}

TEST_F(Start, AReportThatNoFileMayTakeEndsWithoutASignal) {
    QProcess process;
    process.setStandardErrorFile(folder.filePath("said"));
    process.setChildProcessModifier([] {
        const rlimit none{0, 0};
        setrlimit(RLIMIT_FSIZE, &none);
    });
    begin(process);
    ASSERT_TRUE(process.waitForFinished(30'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 1);
}

TEST_F(Start, AForeignJournalIsPutAsideAndTold) {
    createDatabase(path());
    QFile journal(path() + "-journal");
    ASSERT_TRUE(journal.open(QIODevice::WriteOnly) && journal.write(QByteArray(6000, 'j')) == 6000);
    journal.close();
    QProcess process;
    begin(process);
    ASSERT_TRUE(comesUp(process));
    end(process);
    EXPECT_TRUE(QString::fromUtf8(process.readAllStandardError()).contains("不属于"));
    EXPECT_TRUE(QFile::exists(path() + ".不属于此文件-journal"));
}

TEST_F(Start, ABackupIsPutBackByTheCommandLineAndTheProgramStartsOnIt) {
    createDatabase(path());
    run("INSERT INTO clientTable (客户编号) VALUES ('kept')");
    const QString backup = folder.filePath("backup.mdb");
    ASSERT_TRUE(QFile::copy(path(), backup));
    write("damaged");
    QProcess process;
    begin(process, {"--restore", backup});
    ASSERT_TRUE(comesUp(process)) << process.readAllStandardError().toStdString();
    end(process);
    EXPECT_TRUE(bytes().startsWith("SQLite format 3"));
    EXPECT_TRUE(QString::fromUtf8(process.readAllStandardError()).contains("恢复前"));
    QProcess none;
    begin(none, {"--restore", folder.filePath("none.mdb")});
    ASSERT_TRUE(none.waitForFinished(30'000));
    EXPECT_EQ(none.exitCode(), 1);
    EXPECT_TRUE(QString::fromUtf8(none.readAllStandardError()).contains("没有恢复"));
}

/// Double starts of this run: 6, or as many as the environment asks for.
int doubleStarts() {
    const int asked = qEnvironmentVariableIntValue("SHOP_DOUBLE_STARTS");
    return asked > 0 ? asked : 6;
}

TEST_F(Start, OfTwoThatStartTogetherByAnyAliasOneLives) {
    createDatabase(path());
    QDir(folder.path()).mkdir("beside");
    const QString beside = folder.filePath("beside/");
    const auto linkHard = [](const QString& from, const QString& to) {
        return ::link(from.toUtf8().constData(), to.toUtf8().constData()) == 0;
    };
    ASSERT_TRUE(linkHard(program(), beside + "hengshanghui") &&
                linkHard(reader(), beside + "hengshanghui-reader"));
    int alone = 0;
    for (int i = 0; i < doubleStarts(); ++i) {
        const QString alias = beside + "VelmorClientBank.mdb";
        QFile::remove(alias);
        QDir(folder.filePath("备份")).removeRecursively();
        ASSERT_TRUE(i % 3 == 0 ? linkHard(path(), alias) : QFile::link(path(), alias));
        QProcess one, other;
        beginAs(one, program());
        beginAs(other, i % 3 == 2 ? program() : beside + "hengshanghui");
        for (int wait = 0;
             wait < 1200 && one.state() == QProcess::Running && other.state() == QProcess::Running; ++wait)
            one.waitForFinished(25), other.waitForFinished(1);
        QProcess& living = one.state() == QProcess::Running ? one : other;
        QProcess& refused = &living == &one ? other : one;
        EXPECT_EQ(living.state(), QProcess::Running) << "both ended";
        EXPECT_EQ(refused.state(), QProcess::NotRunning) << "both live";
        EXPECT_TRUE(QString::fromUtf8(refused.readAllStandardError()).contains("不能同时打开两次"));
        alone += living.state() == QProcess::Running && refused.state() == QProcess::NotRunning;
        end(living);
        end(refused);
    }
    std::printf("%d double starts, one alive in %d\n", doubleStarts(), alone);
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

TEST_F(Start, ANulInAStoredTextDoesNotCutTheReport) {
    createDatabase(path());
    run("INSERT INTO buyList (订单号, 日期) VALUES ('1', 'no' || char(0) || 'date')");
    const QString said = endOf();
    EXPECT_TRUE(said.contains("date")) << said.toStdString();
    EXPECT_TRUE(said.contains("数据库：" + path())) << said.toStdString();
}

TEST_F(Start, AnActionThatEndsIsToldAndTheNextEventComes) {
    QProcess process;
    beginAs(process, QStringLiteral(DISPATCH_PROBE), {"ended"});
    ASSERT_TRUE(process.waitForFinished(30'000));
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardOutput(), "given up\nthe next event\n");
}

TEST_F(Start, AFileThatFailsEndsTheProgramWithItsReport) {
    QProcess process;
    beginAs(process, QStringLiteral(DISPATCH_PROBE), {"damaged"});
    ASSERT_TRUE(process.waitForFinished(30'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(process.readAllStandardOutput(), "");
    const QString said = QString::fromUtf8(process.readAllStandardError());
    EXPECT_TRUE(said.contains("torn") && said.contains("the books")) << said.toStdString();
}

TEST_F(Start, AnActionThatEndsBeforeTheBooksAreOpenEndsTheProgram) {
    QProcess process;
    beginAs(process, QStringLiteral(DISPATCH_PROBE), {"early"});
    ASSERT_TRUE(process.waitForFinished(30'000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(process.readAllStandardOutput(), "") << "no half-open books";
    EXPECT_TRUE(QString::fromUtf8(process.readAllStandardError()).contains("given up"));
}

} // namespace

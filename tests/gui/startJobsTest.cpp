// What a start does behind its first window, and what the window says of it.
#include "app/startJobs.h"
#include "data/books.h"
#include "durability/childProcess.h"
#include "support/otherProgram.h"
#include "support/shopWindow.h"
#include "support/smallDisk.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

namespace {

class StartJobsTest : public ShopWindow {
protected:
    /// A page of a table that no start reads.
    void damage() {
        books.execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
                      "INSERT INTO return_Bank (产品编号) SELECT i FROM n");
        const int page =
            books.stored("SELECT rootpage FROM sqlite_master WHERE name = 'return_Bank'").toInt();
        // By another process: to close a handle of the file here would drop the engine's locks.
        ASSERT_EQ(inChild([&] {
                      QFile file(books.path());
                      if (!file.open(QIODevice::ReadWrite) || !file.seek((page - 1) * 4096) ||
                          file.write(QByteArray(200, '\x7f')) != 200)
                          _exit(1);
                  }),
                  0);
    }
    const QDate today{2026, 11, 22};
};

TEST_F(StartJobsTest, DamageIsToldThoughNothingIsWrittenAndIsNotBackedUp) {
    damage();
    StartJobs jobs(session(), today);
    QString told;
    jobs.onDamage = [&](const QString& fault) { told = fault; };
    jobs.start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !told.isEmpty(); }, 30'000));
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(books.path()).dir().filePath("备份")));
    EXPECT_THROW(session().cn.write("DELETE FROM clientTable"), DatabaseLost);
}

TEST_F(StartJobsTest, ABackupThatCannotBeMadeIsTold) {
    QFile inTheWay(QFileInfo(books.path()).dir().filePath("备份"));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    StartJobs jobs(session(), today);
    QString told;
    jobs.onNoBackup = [&](const QString& fault) { told = fault; };
    jobs.start();
    EXPECT_FALSE(QTest::qWaitFor([&] { return !told.isEmpty(); }, 300)) << "it waits for the totals";
    jobs.startRecount();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !told.isEmpty(); }, 30'000));
    EXPECT_TRUE(told.contains(u"今天的自动备份没有做成")) << told.toStdString();
}

TEST_F(StartJobsTest, TotalsThatWerePutRightAreToldByTheNumberOfTheirCustomers) {
    books.addClient("7");
    books.addClient("8");
    books.changeBehind("UPDATE clientTable SET 消费合计 = 12");
    start();
    EXPECT_TRUE(status().contains(u"2 位客户")) << status().toStdString();
    EXPECT_EQ(books.stored("SELECT sum(消费合计) FROM clientTable"), u"0.0");
    main.reset();
    start();
    EXPECT_EQ(status(), u"") << "nothing is wrong any more";
}

TEST_F(StartJobsTest, TotalsThatCannotBeWrittenAreToldAndTheShopOpens) {
    books.addClient("7");
    books.changeBehind("UPDATE clientTable SET 消费合计 = 12");
    {
        const FileSizeLimit full(1);
        start();
    }
    EXPECT_TRUE(status().contains(u"这次没有改正")) << status().toStdString();
    EXPECT_EQ(session().activeViewName, u"dataInputFm1");
    EXPECT_EQ(books.stored("SELECT 消费合计 FROM clientTable"), u"12.0");
}

/// The program as it starts: the totals of two customers are wrong, and nothing has put them right yet.
class BehindTheFirstScreen : public StartJobsTest {
protected:
    BehindTheFirstScreen() {
        books.addClient("7", "红木行", "王平");
        books.addClient("8", "文具店", "李明");
        books.addProduct("p1", "纸", 10, 2, 5);
        books.addLine("21", "7", "p1", "2004-01-05", 5, 25, 2);
        books.changeBehind("UPDATE clientTable SET 消费合计 = 12, 差额利润率 = 'x'");
        main = std::make_unique<MDIForm1>(session(), prompts);
        registerAll(*main, prompts);
        jobs = std::make_unique<StartJobs>(session(), today);
        wireBooks(*main, *jobs, prompts, onActionEnded);
        main->show();
        jobs->start();
        startShop(*main);
        main->host().beforeFigures = [this] { jobs->finish(); };
        drive = std::make_unique<Driver>(*main);
    }
    ~BehindTheFirstScreen() override {
        session().cn.askAgain = nullptr;
        main->host().beforeFigures = nullptr;
        jobs.reset();
    }
    QString totals() { return books.stored("SELECT 消费合计 FROM clientTable ORDER BY 客户编号"); }
    QString shownTotals() {
        return drive->cell("DataGrid1", 0, "消费合计") + u' ' + drive->text("Text3(13)");
    }

    std::unique_ptr<StartJobs> jobs;
    std::function<void(const QString&)> onActionEnded;
};

TEST_F(BehindTheFirstScreen, TheRegisterShowsTheStoredTotalsUntilTheRecountLands) {
    EXPECT_EQ(shownTotals(), u"12 12");
    bool quiet = false;
    jobs->onQuiet = [&] { quiet = true; };
    recountBehind(*main, *jobs);
    EXPECT_TRUE(QTest::qWaitFor([&] { return quiet; }, 30'000));
    EXPECT_EQ(shownTotals(), u"25 25");
    EXPECT_EQ(totals(), u"25.0;0.0");
    EXPECT_TRUE(status().contains(u"2 位客户")) << status().toStdString();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return !QDir(QFileInfo(books.path()).dir().filePath("备份")).isEmpty(QDir::Files); }, 30'000))
        << "the day's backup follows";
}

TEST_F(BehindTheFirstScreen, AFilterAPositionAPendingEditAndTypedBoxesStayAsTheyAre) {
    session().clientTable->setFilter("客户编号 = '7'");
    session().clientTable->MoveFirst();
    session().clientTable->Fields("联系人").setValue(QStringLiteral("王"));
    drive->type("Text3(8)", "改过的名字");
    jobs->finish();
    EXPECT_EQ(totals(), u"25.0;0.0");
    EXPECT_EQ(session().clientTable->Filter(), u"客户编号 = '7'");
    EXPECT_EQ(session().clientTable->AbsolutePosition(), 1);
    EXPECT_EQ(session().clientTable->pendingCount(), 1);
    EXPECT_EQ(drive->text("Text3(8)"), u"改过的名字");
    EXPECT_EQ(drive->text("Text3(13)"), u"25");
    EXPECT_EQ(books.stored("SELECT 联系人 FROM clientTable WHERE 客户编号 = '7'"), u"王平");
}

TEST_F(BehindTheFirstScreen, ASavedCustomerComesAfterTheRecountWhichDoesNotUndoHim) {
    drive->type("Text3(8)", "改过的名字");
    drive->click("Command5");
    EXPECT_EQ(books.stored("SELECT 单位名称, 消费合计, 差额利润率 FROM clientTable"),
              u"改过的名字|25.0|;文具店|0.0|0");
    recountBehind(*main, *jobs);
    QCoreApplication::processEvents();
    jobs->finish();
    EXPECT_EQ(books.stored("SELECT 消费合计, 差额利润率 FROM clientTable WHERE 客户编号 = '7'"), u"25.0|")
        << "once only";
}

TEST_F(BehindTheFirstScreen, TheHelpAndAReadSearchDoNotWaitAndAPurchaseWhichWritesItsBasketDoes) {
    main->host().openHelp(QStringLiteral("dataInputFm1"));
    drive->type("Text2", "红木行");
    drive->click("Command2");
    EXPECT_EQ(totals(), u"12.0;12.0");
    drive->click("Command7");
    ASSERT_NE(window("buyFm1"), nullptr);
    EXPECT_EQ(totals(), u"25.0;0.0");
    window("buyFm1")->close();
}

TEST_F(BehindTheFirstScreen, WhoShowsSortsOrExportsTheTotalsWaits) {
    const std::function<void()> who[] = {
        [this] { main->host().show(QStringLiteral("maintainFm1")); },
        [this] { main->host().sortBy(QStringLiteral("消费合计")); },
        [this] { main->host().openWindow(QStringLiteral("orderFm1"), ViewHost::MainWindow::Stays); },
        [this] { prompts.mayWrite(books.path() + QStringLiteral(".csv")); }};
    for (const auto& act : who) {
        books.changeBehind("UPDATE clientTable SET 消费合计 = 12");
        openBooks(session());
        StartJobs again(session(), today);
        wireBooks(*main, again, prompts, onActionEnded);
        again.start();
        main->host().beforeFigures = [&again] { again.finish(); };
        act();
        EXPECT_EQ(totals(), u"25.0;0.0");
        main->host().beforeFigures = nullptr;
    }
}

TEST_F(BehindTheFirstScreen, AFileThatAnotherProgramWritesIsTriedAgainAndNobodyIsAsked) {
    bool quiet = false;
    session().cn.askAgain = [&] {
        ADD_FAILURE() << "nobody has asked for it";
        return false;
    };
    jobs->onQuiet = [&] { quiet = true; };
    {
        const OtherProgram other(books.path(), kWrites);
        recountBehind(*main, *jobs);
        EXPECT_FALSE(QTest::qWaitFor([&] { return quiet; }, 500));
        EXPECT_EQ(totals(), u"12.0;12.0");
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return quiet; }, 30'000));
    EXPECT_EQ(totals(), u"25.0;0.0");
}

TEST_F(BehindTheFirstScreen, AnEndOfTheProgramBeforeTheRecountMakesNoBackup) {
    jobs.reset();
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(books.path()).dir().filePath("备份")));
    EXPECT_EQ(totals(), u"12.0;12.0");
}

} // namespace

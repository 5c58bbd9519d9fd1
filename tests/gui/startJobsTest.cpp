// What a start does behind its first window, and what the window says of it.
#include "app/startJobs.h"
#include "durability/childProcess.h"
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
    StartJobs jobs(session().cn, today);
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
    StartJobs jobs(session().cn, today);
    QString told;
    jobs.onNoBackup = [&](const QString& fault) { told = fault; };
    jobs.start();
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

} // namespace

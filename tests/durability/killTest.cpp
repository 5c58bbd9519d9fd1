// A child process works in the shop and is killed at random moments; after each kill the books must be whole.
#include "data/schema.h"
#include "durability/shopWorker.h"
#include "support/printQt.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// The checks walk all lines for each product: a shop that grows for ever would only make them slow.
constexpr int kKillsOfOneShop = 20;

/// Kills of this run: 50, or as many as the environment asks for.
int killCount() {
    const int asked = qEnvironmentVariableIntValue("SHOP_KILLS");
    return asked > 0 ? asked : 50;
}

TEST(Durability, KilledAtRandomMomentsTheBooksHoldWholeActionsAndEveryAcknowledgedOne) {
    QTemporaryDir folder;
    std::mt19937 random(7);
    Acknowledged acknowledged;
    int orders = 0;
    QString path;
    for (int kill = 0; kill < killCount(); ++kill) {
        if (kill % kKillsOfOneShop == 0) {
            path = folder.filePath(QStringLiteral("shop%1.mdb").arg(kill));
            createDatabase(path);
            orders += acknowledged.orders;
        }
        QProcess child;
        child.start(QCoreApplication::applicationDirPath() + "/durability_worker",
                    {path, QString::number(kill)});
        ASSERT_TRUE(child.waitForStarted());
        // The first line says that the shop is open; from then on any moment will do.
        QByteArray said;
        QElapsedTimer since;
        const int moment = int(random() % 400);
        while (!since.isValid() || since.elapsed() < moment) {
            ASSERT_EQ(child.state(), QProcess::Running) << child.readAllStandardError().toStdString();
            child.waitForReadyRead(5);
            said += child.readAllStandardOutput();
            if (!since.isValid() && said.contains('\n'))
                since.start();
        }
        child.kill();
        child.waitForFinished();
        said += child.readAllStandardOutput();
        const QByteArray whole = said.left(said.lastIndexOf('\n'));
        acknowledged = Acknowledged::fromText(QString::fromLatin1(whole.mid(whole.lastIndexOf('\n') + 1)));
        ASSERT_EQ(databaseFault(path), u"") << "kill " << kill;
        const QStringList faults = faultsOfBooks(path, acknowledged);
        ASSERT_TRUE(faults.isEmpty()) << "kill " << kill << ": " << faults.join("; ").toStdString();
    }
    orders += acknowledged.orders;
    EXPECT_GT(orders, killCount() / 2) << "the child hardly worked";
    std::printf("%d kills, %d orders settled\n", killCount(), orders);
}

} // namespace

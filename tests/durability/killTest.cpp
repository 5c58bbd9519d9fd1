// A child process works in the shop and is killed at random moments; after each kill the books must be whole.
#include "data/schema.h"
#include "durability/orderWorker.h"
#include "support/printQt.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
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

/// Lets a worker work for some milliseconds after it has opened its shop, and kills it. Gives what it said.
QByteArray workAndKill(const QStringList& arguments, int milliseconds) {
    QProcess child;
    child.start(QCoreApplication::applicationDirPath() + "/durability_worker", arguments);
    EXPECT_TRUE(child.waitForStarted());
    // The first line says that the shop is open; from then on any moment will do.
    QByteArray said;
    QElapsedTimer since;
    while (!since.isValid() || since.elapsed() < milliseconds) {
        if (child.state() != QProcess::Running) {
            ADD_FAILURE() << child.readAllStandardError().toStdString();
            return said;
        }
        child.waitForReadyRead(5);
        said += child.readAllStandardOutput();
        if (!since.isValid() && said.contains('\n'))
            since.start();
    }
    child.kill();
    child.waitForFinished();
    return said + child.readAllStandardOutput();
}

/// The last line that was said to its end.
QString lastLine(const QByteArray& said) {
    const QByteArray whole = said.left(said.lastIndexOf('\n'));
    return QString::fromLatin1(whole.mid(whole.lastIndexOf('\n') + 1));
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
        const QByteArray said = workAndKill({path, QString::number(kill)}, int(random() % 400));
        acknowledged = Acknowledged::fromText(lastLine(said));
        ASSERT_EQ(databaseFault(path), u"") << "kill " << kill;
        const QStringList faults = faultsOfBooks(path, acknowledged);
        ASSERT_TRUE(faults.isEmpty()) << "kill " << kill << ": " << faults.join("; ").toStdString();
    }
    orders += acknowledged.orders;
    EXPECT_GT(orders, killCount() / 2) << "the child hardly worked";
    std::printf("%d kills, %d orders settled\n", killCount(), orders);
}

TEST(Durability, AnActionOnOrdersOrStockIsWhollyThereOrWhollyAbsentAfterAKill) {
    QTemporaryDir folder;
    std::mt19937 random(11);
    const QString path = folder.filePath(QStringLiteral("orders.mdb"));
    const QString replay = folder.filePath(QStringLiteral("replay.mdb"));
    createDatabase(path);
    int actions = 0;
    int unfinished = 0;
    for (int kill = 0; kill < killCount(); ++kill) {
        QFile::remove(replay);
        ASSERT_TRUE(QFile::copy(path, replay));
        const QByteArray said =
            workAndKill({path, QString::number(kill), QStringLiteral("orders")}, int(random() % 300));
        const int steps = lastLine(said).toInt();
        ASSERT_EQ(databaseFault(path), u"") << "kill " << kill;
        const QByteArray left = digestOfBooks(path);
        // The same worker with the same seed on the books as they were, in this process and unharmed.
        Session session(replay);
        OrderWorker worker(session, unsigned(kill));
        worker.open();
        for (int i = 0; i < steps; ++i)
            worker.step();
        const QByteArray acknowledged = digestOfBooks(replay);
        const QString last = worker.lastAction();
        worker.step();
        const QByteArray next = digestOfBooks(replay);
        ASSERT_TRUE(left == acknowledged || left == next)
            << "kill " << kill << " after " << steps << " actions: in the middle of "
            << worker.lastAction().toStdString() << ", behind " << last.toStdString();
        actions += steps;
        unfinished += left == acknowledged && acknowledged != next;
    }
    EXPECT_GT(actions, killCount()) << "the child hardly worked";
    std::printf("%d kills, %d actions, %d of them killed before their end\n", killCount(), actions,
                unfinished);
}

} // namespace

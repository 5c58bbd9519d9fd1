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

/// Kills of this run: 50, or as many as the environment asks for.
int killCount() {
    const int asked = qEnvironmentVariableIntValue("SHOP_KILLS");
    return asked > 0 ? asked : 50;
}

TEST(Durability, KilledAtRandomMomentsTheBooksHoldWholeActionsAndEveryAcknowledgedOne) {
    QTemporaryDir folder;
    const QString path = folder.filePath("VelmorClientBank.mdb");
    createDatabase(path);
    std::mt19937 random(7);
    Acknowledged acknowledged;
    for (int kill = 0; kill < killCount(); ++kill) {
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
        const QStringList faults = faultsOfBooks(path, acknowledged);
        ASSERT_TRUE(faults.isEmpty()) << "kill " << kill << ": " << faults.join("; ").toStdString();
    }
    EXPECT_GT(acknowledged.orders, killCount() / 2) << "the child hardly worked";
    std::printf("%d kills, at the end %s (customers, products, stock-ins, orders)\n", killCount(),
                qUtf8Printable(acknowledged.text()));
}

} // namespace

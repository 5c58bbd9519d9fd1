// The same shop on a disk whose power is cut: everything not yet synced is lost, kept or torn at random.
#include "data/schema.h"
#include "durability/cutDisk.h"
#include "durability/shopWorker.h"
#include "recordset/error.h"
#include "support/printQt.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

constexpr int kCuts = 100;

/// Works until the power goes; what was acknowledged by then.
Acknowledged workUntilCut(CutDisk& disk, const QString& path, unsigned seed, std::mt19937& random) {
    Acknowledged acknowledged;
    try {
        Session session(path);
        ShopWorker worker(session, seed);
        worker.open();
        acknowledged = worker.acknowledged();
        disk.cutAfter(int(random() % 400));
        for (;;) {
            worker.step();
            acknowledged = worker.acknowledged();
        }
    } catch (const RuntimeError&) {
    } catch (const DatabaseLost&) {
    }
    EXPECT_TRUE(disk.isCut());
    return acknowledged;
}

QStringList faultsAfterCut(const QString& path, const Acknowledged& acknowledged) {
    try {
        return faultsOfBooks(path, acknowledged);
    } catch (const std::exception& error) {
        return {QString::fromUtf8(error.what())};
    }
}

TEST(PowerCut, AfterEveryCutTheBooksHoldWholeActionsAndEveryAcknowledgedOne) {
    CutDisk disk;
    const QTemporaryDir folder; // the engine never sees it: its disk is in memory
    const QString path = folder.filePath("shop.mdb");
    createDatabase(path);
    std::mt19937 random(11);
    int orders = 0;
    for (int cut = 0; cut < kCuts; ++cut) {
        const Acknowledged acknowledged = workUntilCut(disk, path, unsigned(cut), random);
        disk.powerOn(random);
        const QStringList faults = faultsAfterCut(path, acknowledged);
        ASSERT_TRUE(faults.isEmpty()) << "cut " << cut << ": " << faults.join("; ").toStdString();
        orders = acknowledged.orders;
    }
    EXPECT_GT(orders, kCuts / 2);
    std::printf("%d cuts, %d disk operations, %d orders at the end\n", kCuts, disk.operations(), orders);
}

TEST(PowerCut, ADiskThatLiesAboutSyncIsFoundOut) {
    int damaged = 0;
    for (int cut = 0; cut < 20; ++cut) {
        CutDisk disk;
        const QTemporaryDir folder; // the engine never sees it: its disk is in memory
        const QString path = folder.filePath("shop.mdb");
        createDatabase(path);
        std::mt19937 random(unsigned(cut) + 1);
        disk.lieAboutSync();
        const Acknowledged acknowledged = workUntilCut(disk, path, unsigned(cut), random);
        disk.powerOn(random);
        damaged += !faultsAfterCut(path, acknowledged).isEmpty();
    }
    EXPECT_GT(damaged, 5) << "the shim does no harm, so that the test above proves nothing";
}

} // namespace

// Actions of a shop on a disk that fails at each of their calls in turn: books and memory stay whole, and the
// next action works.
#include "data/schema.h"
#include "durability/orderWorker.h"
#include "recordset/error.h"
#include "support/failingDisk.h"
#include "support/printQt.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// Steps of this run, each of which fails once: 60, or as many as the environment asks for.
int stepCount() {
    const int asked = qEnvironmentVariableIntValue("SHOP_FAILING_WRITES");
    return asked > 0 ? asked : 60;
}

QString rowsOf(const RecordsetPtr& cursor) {
    QString text;
    for (int row = 0; row < cursor->RecordCount(); ++row)
        for (int field = 0; field < cursor->fieldCount(); ++field)
            text += fieldText(cursor->valueAt(row, field)) + u'|';
    return text;
}

/// That of the last action in the file. A count that is made anew may leave the same rows.
qint64 markOf(const QString& path) {
    Connection connection(path);
    Statement mark = connection.prepare("PRAGMA user_version");
    mark.step();
    return mark.integer(0);
}

/// What the open images and the file say of the lasting tables, where they differ.
QStringList differences(Session& session, const QString& path) {
    Session fresh(path);
    QStringList names;
    for (const char* table :
         {"clientTable", "buyList", "productTable", "product_Bank", "return_Bank", "counterCode"}) {
        RecordsetPtr inMemory, inFile;
        session.reopen(inMemory, QStringLiteral("Select * From ") + QLatin1String(table));
        fresh.reopen(inFile, QStringLiteral("Select * From ") + QLatin1String(table));
        if (rowsOf(inMemory) != rowsOf(inFile))
            names << QLatin1String(table);
    }
    return names;
}

TEST(FailingWrites, LeaveBooksAndMemoryWholeAndAreToldAsTheyAre) {
    QTemporaryDir folder;
    const QString path = folder.filePath("shop.mdb");
    createDatabase(path);
    FailingDisk disk;
    Session session(path);
    OrderWorker worker(session, 3);
    worker.open();
    for (int i = 0; i < 40; ++i)
        worker.step();
    std::mt19937 random(5);
    int failures = 0, booked = 0, reports = 0, ends = 0;
    for (int i = 0; i < stepCount(); ++i) {
        const QByteArray before = digestOfBooks(path);
        const qint64 markBefore = markOf(path);
        disk.failAt(int(random() % 14), random() % 2 ? FailingDisk::Kind::Full : FailingDisk::Kind::Broken,
                    random() % 2 == 0);
        if (random() % 4 == 0)
            disk.lieAboutFailure();
        QString said;
        try {
            worker.step();
        } catch (const DatabaseLost& lost) {
            said = lost.text();
            ++reports;
        } catch (const ActionEnded& action) {
            said = action.text();
            ++ends;
        }
        disk.heal();
        session.cn.tellTakenBack();
        failures += disk.hasFailed();
        const bool changed = digestOfBooks(path) != before;
        if (said.contains(u"已全部撤回")) {
            EXPECT_FALSE(changed) << i << ' ' << worker.lastAction().toStdString() << said.toStdString();
        }
        if (said.contains(u"已经全部记入")) {
            EXPECT_NE(markOf(path), markBefore) << i << ' ' << worker.lastAction().toStdString();
            ++booked;
        }
        ASSERT_EQ(differences(session, path), QStringList())
            << i << ' ' << worker.lastAction().toStdString() << ' ' << said.toStdString();
    }
    Statement check = session.cn.prepare("PRAGMA integrity_check");
    ASSERT_TRUE(check.step());
    EXPECT_EQ(check.text(0), u"ok");
    EXPECT_GT(failures, stepCount() / 3);
    std::printf("%d failing calls, %d reports, %d actions ended, %d behind the commit\n", failures, reports,
                ends, booked);
}

} // namespace

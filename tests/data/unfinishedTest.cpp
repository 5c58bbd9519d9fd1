// Half-made files, which a process that is killed leaves to the next start.
#include "data/unfinished.h"
#include "durability/childProcess.h"
#include "support/printQt.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class HalfMade : public testing::Test {
protected:
    HalfMade() { write(books); }
    static void write(const QString& name) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
    }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    QTemporaryDir folder;
    QString books = folder.filePath("VelmorClientBank.mdb");
    QString list = books + ".unfinished";
};

TEST_F(HalfMade, OfTwoAtOnceBothGoWithTheirJournals) {
    ASSERT_TRUE(wasKilled(inChild([&] {
        const Unfinished day(books, unfinishedName(folder.path()));
        const Unfinished byHand(books, unfinishedName(folder.path()));
        for (const QString& name : {day.path(), byHand.path()}) {
            write(name);
            write(name + "-journal");
        }
        _exit(kKilled);
    })));
    EXPECT_EQ(files().size(), 6);
    EXPECT_EQ(QFile(list).permissions() & 0x77, QFile::Permissions()) << "its owner's alone";
    clearUnfinished(books);
    EXPECT_EQ(files(), QStringList("VelmorClientBank.mdb"));
}

TEST_F(HalfMade, OneThatIsDoneLeavesTheOtherOnTheList) {
    ASSERT_TRUE(wasKilled(inChild([&] {
        const Unfinished day(books, unfinishedName(folder.path()));
        write(day.path());
        { const Unfinished byHand(books, unfinishedName(folder.path())); }
        _exit(kKilled);
    })));
    EXPECT_EQ(files().size(), 3);
    clearUnfinished(books);
    EXPECT_EQ(files(), QStringList("VelmorClientBank.mdb"));
}

} // namespace

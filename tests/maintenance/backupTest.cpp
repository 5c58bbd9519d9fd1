#include "maintenance/backup.h"
#include "support/smallDisk.h"
#include "support/testBooks.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

class Backup : public testing::Test {
protected:
    Backup() { books.addClient("7", "甲"); }
    QString target(const char* name = "copy.mdb") { return folder.filePath(QString::fromUtf8(name)); }
    QByteArray contents(const QString& name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QString& name, const QByteArray& bytes) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    bool backUp(const QString& name) { return backUpDatabase(books.path(), name); }
    QStringList files() { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    TestBooks books;
    QTemporaryDir folder;
};

TEST_F(Backup, TheCopyIsAWholeDatabaseWithEveryRow) {
    ASSERT_TRUE(backUp(target()));
    EXPECT_EQ(databaseFault(target()), u"");
    Session copy(target());
    Statement rows = copy.cn.prepare("SELECT 单位名称 FROM clientTable");
    ASSERT_TRUE(rows.step());
    EXPECT_EQ(rows.text(0), u"甲");
    EXPECT_EQ(files(), QStringList{"copy.mdb"}) << "nothing beside it";
}

TEST_F(Backup, AnOlderCopyIsReplaced) {
    write(target(), "old");
    ASSERT_TRUE(backUp(target()));
    EXPECT_EQ(databaseFault(target()), u"");
}

TEST_F(Backup, TheRightsThatItsOwnerGaveToAnOlderCopyAreKept) {
    ASSERT_TRUE(backUp(target()));
    EXPECT_EQ(QFile(target()).permissions() & 0x77, QFile::Permissions());
    ASSERT_TRUE(QFile::setPermissions(target(), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    ASSERT_TRUE(backUp(target()));
    EXPECT_EQ(QFile(target()).permissions() & 0x77, QFile::ReadGroup);
}

TEST_F(Backup, TheDatabaseItselfIsNoTargetByWhateverName) {
    const QByteArray before = contents(books.path());
    const QFileInfo info(books.path());
    const QString links[] = {target("symbolic.mdb"), target("hard.mdb")};
    ASSERT_TRUE(QFile::link(books.path(), links[0]));
    ASSERT_EQ(::link(QFile::encodeName(books.path()).constData(), QFile::encodeName(links[1]).constData()),
              0);
    EXPECT_FALSE(backUp(books.path()));
    EXPECT_FALSE(backUp(info.path() + "/./../" + info.dir().dirName() + '/' + info.fileName()));
    EXPECT_FALSE(backUp(links[0]));
    EXPECT_FALSE(backUp(links[1]));
    EXPECT_EQ(contents(books.path()), before);
}

TEST_F(Backup, AFolderAMissingFolderAndNoNameAreNoTargets) {
    EXPECT_FALSE(backUp(folder.path()));
    EXPECT_FALSE(backUp(folder.path() + '/'));
    EXPECT_FALSE(backUp(target("missing/copy.mdb")));
    EXPECT_FALSE(backUp(QString()));
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(Backup, AFolderThatCannotBeWrittenLeavesTheOldCopy) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root may write everywhere";
    write(target(), "old");
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_FALSE(backUp(target()));
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(contents(target()), "old");
}

TEST_F(Backup, AFullDiskLeavesTheOldCopyAndNothingHalf) {
    write(target(), "old");
    const bool made = [this] {
        const FileSizeLimit full(20000);
        return backUp(target());
    }();
    EXPECT_FALSE(made);
    EXPECT_EQ(contents(target()), "old");
    EXPECT_EQ(files(), QStringList{"copy.mdb"});
}

TEST_F(Backup, ADamagedDatabaseIsNotPassedOffAsACopy) {
    QFile file(books.path());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(4096 * 3);
    file.write(QByteArray(4096 * 4, '\x5a'));
    file.close();
    EXPECT_FALSE(backUp(target()));
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(Backup, ANameWithoutAnEndingGetsOne) {
    EXPECT_EQ(withDefaultEnding("/x/备份"), u"/x/备份.mdb");
    EXPECT_EQ(withDefaultEnding("/x/a.bak"), u"/x/a.bak");
}

TEST_F(Backup, APlainCopyIsWholePrivateAndTakesNoNameThatIsTaken) {
    const QByteArray much = QByteArray(3'000'000, 'a') + "end";
    write(target("source"), much);
    ASSERT_TRUE(copyPrivately(target("source"), target()));
    EXPECT_EQ(contents(target()), much);
    EXPECT_EQ(QFile::permissions(target()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    write(target("source"), "other");
    EXPECT_FALSE(copyPrivately(target("source"), target()));
    EXPECT_EQ(contents(target()), much) << "it was there first";
    EXPECT_FALSE(copyPrivately(target("missing"), target("new.mdb")));
    EXPECT_EQ(files(), (QStringList{"copy.mdb", "source"}));
}

TEST_F(Backup, APlainCopyOntoAFullDiskLeavesNothing) {
    write(target("source"), QByteArray(3'000'000, 'a'));
    const bool copied = [this] {
        const FileSizeLimit full(2'000'000);
        return copyPrivately(target("source"), target());
    }();
    EXPECT_FALSE(copied);
    EXPECT_EQ(files(), QStringList{"source"});
}

} // namespace

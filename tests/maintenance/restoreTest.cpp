// Daily backups, and putting one back.
#include "maintenance/restore.h"
#include "data/booksLock.h"
#include "data/journalFiles.h"
#include "data/unfinished.h"
#include "durability/childProcess.h"
#include "maintenance/backup.h"
#include "maintenance/dailyBackup.h"
#include "support/smallDisk.h"
#include "support/testBooks.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

const QDate kToday(2026, 11, 22);

QStringList dayTexts(const std::vector<QDate>& days) {
    QStringList texts;
    for (const QDate& day : days)
        texts << day.toString(Qt::ISODate);
    return texts;
}

class DailyBackups : public testing::Test {
protected:
    DailyBackups() { books.addClient("7", "甲"); }
    QString backUp(const QDate& day = kToday, qint64 freeBytes = qint64(1) << 40) {
        return backUpDaily(
            books.path(), day, [this] { return writes; }, [freeBytes](const QString&) { return freeBytes; });
    }
    QStringList kept() {
        QStringList days;
        for (const KeptBackup& backup : keptBackups(books.path()))
            days << backup.day.toString(Qt::ISODate);
        return days;
    }
    static int rights(const QString& of) {
        struct stat found {};
        return stat(QFile::encodeName(of).constData(), &found) == 0 ? int(found.st_mode & 0777) : -1;
    }

    TestBooks books;
    unsigned writes = 0;
};

TEST_F(DailyBackups, OneIsMadeADayWithWhatTheBooksHold) {
    EXPECT_EQ(backUp(), u"");
    books.addClient("8", "乙");
    EXPECT_EQ(backUp(), u"") << "the second start of a day makes none";
    const std::vector<KeptBackup> backups = keptBackups(books.path());
    ASSERT_EQ(backups.size(), 1U);
    EXPECT_EQ(QFileInfo(backups[0].path).fileName(), u"VelmorClientBank-2026-11-22.mdb");
    EXPECT_EQ(backupContents(backups[0].path).customers, 1);
    EXPECT_EQ(rights(backups[0].path), 0600);
    EXPECT_EQ(rights(backupFolder(books.path())), 0700);
    EXPECT_EQ(QDir(backupFolder(books.path())).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(DailyBackups, ACommitInBetweenMakesItAnew) {
    int asked = 0;
    const QString fault = backUpDaily(
        books.path(), kToday,
        [&] {
            // Asked whether it stands still twice, what the count is, and whether it has stood still.
            ++asked;
            if (asked == 4)
                books.changeBehind("UPDATE clientTable SET 单位名称 = '后来'");
            return asked < 4 ? 0U : 2U;
        },
        [](const QString&) { return qint64(1) << 40; });
    EXPECT_EQ(fault, u"");
    Session copy(keptBackups(books.path())[0].path);
    Statement name = copy.cn.prepare("SELECT 单位名称 FROM clientTable");
    ASSERT_TRUE(name.step());
    EXPECT_EQ(name.text(0), u"后来");
}

TEST_F(DailyBackups, BooksThatNeverStandStillGiveNone) {
    writes = 1;
    EXPECT_TRUE(backUp().contains(u"一直在改动"));
    EXPECT_EQ(kept(), QStringList());
}

TEST_F(DailyBackups, SevenDaysFourWeeksAndTwelveMonthsAreKept) {
    std::vector<QDate> days;
    for (QDate day(2025, 9, 1); day <= kToday; day = day.addDays(1))
        days.push_back(day);
    EXPECT_EQ(dayTexts(daysToKeep(days)).join(u' '),
              u"2026-11-22 2026-11-21 2026-11-20 2026-11-19 2026-11-18 2026-11-17 2026-11-16 2026-11-15 "
              u"2026-11-08 2026-11-01 2026-10-31 2026-09-30 2026-08-31 2026-07-31 2026-06-30 2026-05-31 "
              u"2026-04-30 2026-03-31 2026-02-28 2026-01-31 2025-12-31");
    EXPECT_EQ(daysToKeep({}).size(), 0U);
    // A shop that was shut for a year keeps its last days.
    EXPECT_EQ(dayTexts(daysToKeep({QDate(2024, 1, 1), QDate(2024, 1, 2)})),
              (QStringList{"2024-01-02", "2024-01-01"}));
}

TEST_F(DailyBackups, OlderOnesGoWhenTodaysStands) {
    for (int back = 60; back > 0; --back)
        ASSERT_EQ(backUp(kToday.addDays(-back)), u"");
    ASSERT_EQ(backUp(), u"");
    EXPECT_EQ(kept().first(), u"2026-11-22");
    EXPECT_LE(kept().size(), 7 + 4 + 3);
    EXPECT_GE(kept().size(), 10);
}

TEST_F(DailyBackups, NeverTakeMoreThanAQuarterOfTheFreeDiskTheOldestGoFirst) {
    const qint64 size = QFileInfo(books.path()).size();
    for (int back = 5; back > 0; --back)
        ASSERT_EQ(backUp(kToday.addDays(-back)), u"");
    // Room for two and a half, what the five take counted as free.
    ASSERT_EQ(backUp(kToday, 5 * size), u"");
    EXPECT_EQ(kept(), (QStringList{"2026-11-22", "2026-11-21"}));
    EXPECT_TRUE(backUp(kToday.addDays(1), size).contains(u"磁盘空间不足"));
    EXPECT_EQ(kept().size(), 2) << "what there is stays";
}

TEST_F(DailyBackups, AFullDiskIsToldAndLeavesNothingHalf) {
    for (int i = 0; i < 40; ++i)
        books.addClient(QString::number(100 + i), QString(100, QChar(u'长')));
    QString fault;
    {
        const FileSizeLimit limit(20'000);
        fault = backUp();
    }
    EXPECT_TRUE(fault.contains(u"没有做成")) << fault.toStdString();
    EXPECT_EQ(QDir(backupFolder(books.path())).entryList(QDir::Files | QDir::Hidden), QStringList());
}

TEST_F(DailyBackups, OtherFilesInTheFolderAreLeftAlone) {
    ASSERT_EQ(backUp(), u"");
    QFile other(QDir(backupFolder(books.path())).filePath("VelmorClientBank-mine.mdb"));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    for (int day = 1; day < 20; ++day)
        ASSERT_EQ(backUp(kToday.addDays(day)), u"");
    EXPECT_TRUE(other.exists());
}

TEST_F(DailyBackups, ThoseOfAnotherShopInTheFolderAreNeitherListedNorRemoved) {
    ASSERT_EQ(backUp(), u"");
    QFile other(QDir(backupFolder(books.path())).filePath("AnotherShop-2020-01-01.mdb"));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    EXPECT_EQ(kept(), QStringList("2026-11-22"));
    for (int day = 1; day < 20; ++day)
        ASSERT_EQ(backUp(kToday.addDays(day)), u"");
    EXPECT_TRUE(other.exists());
}

class Restoring : public testing::Test {
protected:
    Restoring() {
        createDatabase(path);
        addCustomer("first");
        EXPECT_TRUE(backUpDatabase(path, backup));
        addCustomer("second");
    }
    void addCustomer(const char* name) {
        Connection books(path);
        books.write(
            QStringLiteral("INSERT INTO clientTable (客户编号) VALUES ('%1')").arg(QString::fromUtf8(name)));
    }
    QString customers(const QString& of) {
        Connection books(of);
        Statement all = books.prepare("SELECT group_concat(客户编号) FROM clientTable");
        all.step();
        return all.text(0);
    }
    QStringList files() { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
    static void setRights(const QString& of, QFile::Permissions rights) {
        ASSERT_TRUE(QFile::setPermissions(of, rights));
    }
    /// Half an action in the file, and the journal that takes it back.
    static void leaveJournal(const QString& of) {
        ASSERT_TRUE(wasKilled(inChild([&] {
            Connection books(of);
            books.execute("PRAGMA cache_size = 2");
            WriteBatch batch(books);
            books.write("UPDATE clientTable SET 客户编号 = 'half'");
            books.write("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
                        "INSERT INTO clientTable (客户编号) SELECT i FROM n");
            _exit(kKilled);
        })));
        ASSERT_EQ(journalState(of), JournalState::Ours);
    }

    QTemporaryDir folder;
    QString path = folder.filePath("VelmorClientBank.mdb");
    QString backup = folder.filePath("backup.mdb");
};

TEST_F(Restoring, PutsACopyInThePlaceAndKeepsWhatStoodThere) {
    BooksLock lock(path);
    const Restored result = restoreBackup(backup, path, lock);
    EXPECT_EQ(result.fault, u"");
    EXPECT_EQ(customers(path), u"first");
    EXPECT_EQ(customers(result.kept), u"first,second");
    EXPECT_EQ(customers(backup), u"first") << "the backup stays";
    EXPECT_FALSE(BooksLock(path).fault().isEmpty()) << "the new file is held";
    const Restored again = restoreBackup(backup, path, lock);
    EXPECT_NE(again.kept, result.kept);
}

TEST_F(Restoring, WorksWhereTheFileIsMissing) {
    QFile::remove(path);
    BooksLock lock(path);
    const Restored result = restoreBackup(backup, path, lock);
    EXPECT_EQ(result.fault, u"");
    EXPECT_EQ(result.kept, u"");
    EXPECT_EQ(customers(path), u"first");
    EXPECT_FALSE(BooksLock(path).fault().isEmpty());
}

TEST_F(Restoring, WhatIsDamagedIsNotPutBack) {
    QFile file(backup);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(8192);
    file.write(QByteArray(4096, 'x'));
    file.close();
    const QString pipe = folder.filePath("pipe.mdb");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    BooksLock lock(path);
    const QStringList before = files();
    for (const QString& bad :
         {backup, folder.filePath("none.mdb"), folder.path(), path, path + ".lock", pipe}) {
        EXPECT_NE(restoreBackup(bad, path, lock).fault, u"") << bad.toStdString();
        EXPECT_EQ(customers(path), u"first,second");
    }
    EXPECT_EQ(files(), before) << "nothing half is left";
}

TEST_F(Restoring, TheJournalOfTheOldBooksGoesWithThem) {
    leaveJournal(path);
    BooksLock lock(path);
    const Restored result = restoreBackup(backup, path, lock);
    EXPECT_EQ(result.fault, u"");
    EXPECT_FALSE(QFile::exists(path + "-journal"));
    EXPECT_EQ(customers(path), u"first");
    EXPECT_EQ(journalState(result.kept), JournalState::Ours);
    EXPECT_EQ(customers(result.kept), u"first,second") << "the half action is taken back";
}

TEST_F(Restoring, AJournalThatMayBeOfTheOldBooksGoesWithThemToo) {
    // As a program that does not mark begins one: its first record is the second page.
    constexpr int sector = 512, pageSize = 4096, number = 4;
    QByteArray journal(sector + number + pageSize + number, '\1');
    journal.replace(0, 8, QByteArray::fromHex("d9d505f920a163d7"));
    qToBigEndian<quint32>(sector, journal.data() + 20);
    qToBigEndian<quint32>(pageSize, journal.data() + 24);
    qToBigEndian<quint32>(2, journal.data() + sector);
    QFile file(path + "-journal");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(journal) == journal.size());
    file.close();
    ASSERT_EQ(journalState(path), JournalState::Unknown);
    BooksLock lock(path);
    const Restored result = restoreBackup(backup, path, lock);
    ASSERT_EQ(result.fault, u"");
    EXPECT_FALSE(QFile::exists(path + "-journal"));
    QFile kept(result.kept + "-journal");
    EXPECT_TRUE(kept.open(QIODevice::ReadOnly) && kept.readAll() == journal);
}

TEST_F(Restoring, ABackupIsTakenWithItsOwnJournalAndWithNoOther) {
    Connection(backup).write("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
                             "INSERT INTO clientTable (客户编号) SELECT 'old' FROM n");
    leaveJournal(backup); // some of its pages bear the half action already
    BooksLock lock(path);
    EXPECT_EQ(restoreBackup(backup, path, lock).fault, u"");
    EXPECT_TRUE(customers(path).startsWith("first,old"));
    EXPECT_FALSE(customers(path).contains("half"));
    EXPECT_EQ(journalState(backup), JournalState::Ours) << "the backup stays as it is";
    QFile::remove(backup);
    ASSERT_TRUE(QFile::copy(path, backup)); // another file under the journal's name
    ASSERT_EQ(journalState(backup), JournalState::Foreign);
    EXPECT_EQ(restoreBackup(backup, path, lock).fault, u"");
    EXPECT_TRUE(customers(path).startsWith("first,old"));
    EXPECT_FALSE(customers(path).contains("half"));
}

TEST_F(Restoring, TheRestoredFileBearsNoMarkOfTheBackup) {
    BooksLock lock(path);
    ASSERT_EQ(restoreBackup(backup, path, lock).fault, u"");
    Connection restored(path), from(backup);
    const FileMark now = readMark(restored.handle()), then = readMark(from.handle());
    EXPECT_NE(now.now, then.now);
    EXPECT_NE(now.before, then.now) << "a journal of the backup is none of the restored file";
}

TEST_F(Restoring, AJournalOfTheBooksIsNoneOfTheirBackup) {
    ASSERT_TRUE(backUpDatabase(path, backup));
    leaveJournal(path); // of the very next action
    ASSERT_TRUE(QFile::copy(path + "-journal", backup + "-journal"));
    EXPECT_EQ(journalState(backup), JournalState::Foreign);
}

TEST_F(Restoring, BooksThatAnotherProgramIsAtAreLeftAlone) {
    BooksLock lock(path);
    {
        Connection other(path);
        other.execute("BEGIN IMMEDIATE");
        EXPECT_TRUE(restoreBackup(backup, path, lock).fault.contains(u"已锁定"));
    }
    EXPECT_EQ(customers(path), u"first,second");
}

TEST_F(Restoring, RightsThatTheOwnerGaveToTheBooksAreKept) {
    const auto shared = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    setRights(path, shared);
    setRights(backup, QFile::ReadOwner);
    BooksLock lock(path);
    ASSERT_EQ(restoreBackup(backup, path, lock).fault, u"");
    EXPECT_EQ(QFile(path).permissions() & 0x77, QFile::ReadGroup);
}

TEST_F(Restoring, WhereTheBooksAreMissingTheRestoredFileIsItsOwnersAlone) {
    setRights(backup, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    QFile::remove(path);
    BooksLock lock(path);
    ASSERT_EQ(restoreBackup(backup, path, lock).fault, u"");
    EXPECT_EQ(QFile(path).permissions() & 0x77, QFile::Permissions());
}

TEST_F(Restoring, AFullDiskLeavesTheBooksAndNothingHalf) {
    BooksLock lock(path);
    const QStringList before = files();
    Restored result;
    {
        const FileSizeLimit limit(20'000);
        result = restoreBackup(backup, path, lock);
    }
    EXPECT_NE(result.fault, u"");
    EXPECT_EQ(files(), before);
    EXPECT_EQ(customers(path), u"first,second");
}

TEST_F(Restoring, TheRestoredFileIsItsOwnersAlone) {
    BooksLock lock(path);
    ASSERT_EQ(restoreBackup(backup, path, lock).fault, u"");
    EXPECT_EQ(QFile(path).permissions() & 0x77, QFile::Permissions());
}

TEST_F(Restoring, ANameThatWasOneTooManyWhenTheProcessDiedGoesAtTheNextStart) {
    const QString second = folder.filePath("second.mdb");
    ASSERT_EQ(::link(QFile::encodeName(path).constData(), QFile::encodeName(second).constData()), 0);
    QFile list(path + ".unfinished");
    ASSERT_TRUE(list.open(QIODevice::WriteOnly) && list.write((second + '\n' + backup + '\n').toUtf8()) > 0);
    list.close();
    clearUnfinished(path);
    EXPECT_FALSE(QFile::exists(second));
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_TRUE(QFile::exists(backup)) << "a file of its own is no second name";
}

} // namespace

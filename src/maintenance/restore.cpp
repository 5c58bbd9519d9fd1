#include "maintenance/restore.h"

#include "data/booksLock.h"
#include "data/immutableFile.h"
#include "data/journalFiles.h"
#include "data/schema.h"
#include "data/unfinished.h"
#include "maintenance/backup.h"
#include "recordset/statement.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString kJournal = QStringLiteral("-journal");

int count(sqlite3* db, const char* sql) {
    Statement statement(db, QString::fromUtf8(sql));
    return statement.step() ? int(statement.integer(0)) : 0;
}

/// Why the copy of a backup cannot serve; empty if it can. A journal that is its own is rolled in here.
QString faultOfCopy(const QString& copy) {
    if (QString fault = databaseFault(copy); !fault.isEmpty())
        return fault;
    if (const QString structure = structureFault(copy); !structure.isEmpty())
        return QStringLiteral("文件已损坏（%1）").arg(structure);
    markDatabase(copy);
    return {};
}

/// A name beside the books for what stood there, which nothing has yet, journal included.
QString keptName(const QString& path) {
    const QFileInfo info(path);
    const QString day = QDate::currentDate().toString(Qt::ISODate);
    for (int i = 1;; ++i) {
        QString name = info.dir().filePath(
            QStringLiteral("%1-恢复前-%2%3.mdb")
                .arg(info.completeBaseName(), day, i == 1 ? QString() : QStringLiteral("-%1").arg(i)));
        if (!QFileInfo::exists(name) && !QFileInfo::exists(name + kJournal))
            return name;
    }
}

bool giveSecondName(const QString& path, const QString& name) {
    return ::link(QFile::encodeName(path).constData(), QFile::encodeName(name).constData()) == 0 ||
           copyPrivately(path, name);
}

/// Gives the old books, and what belongs to them, a second name; both names lead to them until the new file
/// takes the first one.
bool keepOld(const QString& path, const QString& kept) {
    const JournalState state = journalState(path);
    const bool own = state == JournalState::Ours || state == JournalState::Unknown; // it may be its own
    if ((own && !giveSecondName(path + kJournal, kept + kJournal)) || !giveSecondName(path, kept)) {
        QFile::remove(kept + kJournal);
        return false;
    }
    return (!own || flushFile(kept + kJournal)) && flushFile(kept);
}

void takeRightsOf(const QString& path, const QString& copy) {
    struct stat before {};
    if (stat(QFile::encodeName(path).constData(), &before) == 0)
        ::chmod(QFile::encodeName(copy).constData(), before.st_mode & 07777);
}

Restored failed(const QString& why) {
    return {{}, QStringLiteral("没有恢复：%1").arg(why)};
}

/// Puts the finished copy into the place of the books, which keep a name.
Restored swapIn(const QString& copy, const QString& path, BooksLock& lock) {
    const QString kept = keptName(path);
    const NotedName journal(path, kept + kJournal);
    const NotedName books(path, kept);
    const bool there = QFileInfo::exists(path);
    if (there && !keepOld(path, kept))
        return failed(QStringLiteral("原来的文件不能改名保留。"));
    if (!lock.replaceBy(copy)) {
        QFile::remove(kept + kJournal);
        QFile::remove(kept);
        return failed(QStringLiteral("恢复的文件不能放到原来的位置。"));
    }
    QFile::remove(path + kJournal); // it has gone with the old file
    flushFile(QFileInfo(path).absolutePath());
    return {there ? kept : QString(), {}};
}

} // namespace

BackupContents backupContents(const QString& backup) {
    try {
        const DatabaseHandle db = openImmutable(backup);
        return {count(db.get(), "SELECT count(DISTINCT 订单号) FROM buyList"),
                count(db.get(), "SELECT count(*) FROM clientTable"),
                {}};
    } catch (const std::exception& error) {
        return {0, 0, QString::fromUtf8(error.what())};
    }
}

Restored restoreBackup(const QString& backup, const QString& path, BooksLock& lock) {
    if (const QString fault = kindFault(backup); !fault.isEmpty())
        return failed(QStringLiteral("%1\n%2。").arg(backup, fault));
    if (isSameFile(backup, path))
        return failed(QStringLiteral("选中的就是正在使用的数据文件。"));
    if (lock.isUsedByOthers())
        return failed(QStringLiteral("数据文件正被另一个程序使用（已锁定）。"));
    const Unfinished copy(path, unfinishedName(QFileInfo(path).absolutePath()));
    if (!copyPrivately(backup, copy.path()) || (journalState(backup) == JournalState::Ours &&
                                                !copyPrivately(backup + kJournal, copy.path() + kJournal)))
        return failed(QStringLiteral("备份不能读取，或者磁盘已满。"));
    if (QString fault = faultOfCopy(copy.path()); !fault.isEmpty())
        return failed(fault.replace(copy.path(), backup));
    QFile::remove(copy.path() + kJournal); // empty by now
    takeRightsOf(path, copy.path());
    if (!flushFile(copy.path()))
        return failed(QStringLiteral("文件没有写入磁盘。"));
    return swapIn(copy.path(), path, lock);
}

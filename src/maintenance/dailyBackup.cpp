#include "maintenance/dailyBackup.h"

#include "maintenance/backup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStorageInfo>

#include <algorithm>
#include <chrono>
#include <set>
#include <thread>
#include <utility>

namespace {

constexpr int kDays = 7;
constexpr int kWeeks = 4;
constexpr int kMonths = 12;
constexpr int kMostTries = 20;
constexpr int kMostWaits = 100;
constexpr std::chrono::milliseconds kWait(50);

QString nameOf(const QString& databasePath, const QDate& day) {
    return QDir(backupFolder(databasePath))
        .filePath(QStringLiteral("%1-%2.mdb")
                      .arg(QFileInfo(databasePath).completeBaseName(), day.toString(Qt::ISODate)));
}

bool makeFolder(const QString& folder) {
    return QFileInfo(folder).isDir() ||
           (QDir().mkdir(folder) &&
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

qint64 bytesOf(const std::vector<KeptBackup>& backups) {
    qint64 sum = 0;
    for (const KeptBackup& backup : backups)
        sum += backup.size;
    return sum;
}

/// Bytes that all backups together may take.
qint64 roomFor(const std::vector<KeptBackup>& backups, qint64 freeNow) {
    return (freeNow + bytesOf(backups)) / 4;
}

/// Removes what is not to be kept, and then the oldest until the rest has room; today's stays.
void thinOut(const QString& databasePath, qint64 room) {
    std::vector<QDate> days;
    for (const KeptBackup& backup : keptBackups(databasePath))
        days.push_back(backup.day);
    const std::vector<QDate> keep = daysToKeep(days);
    for (const KeptBackup& backup : keptBackups(databasePath))
        if (std::find(keep.begin(), keep.end(), backup.day) == keep.end())
            QFile::remove(backup.path);
    std::vector<KeptBackup> left = keptBackups(databasePath);
    while (left.size() > 1 && bytesOf(left) > room) {
        QFile::remove(left.back().path);
        left.pop_back();
    }
}

enum class Copied { Yes, Failed, NeverStill };

/// Waits until no transaction is under way, some seconds at most.
bool standsStill(const std::function<unsigned()>& writeCount) {
    for (int i = 0; i < kMostWaits && writeCount() % 2 != 0; ++i)
        std::this_thread::sleep_for(kWait);
    return writeCount() % 2 == 0;
}

/// A commit in between makes the copy anew; while one is under way it is not begun.
Copied makeCopy(const QString& databasePath, const QString& target,
                const std::function<unsigned()>& writeCount) {
    for (int i = 0; i < kMostTries && standsStill(writeCount); ++i) {
        const unsigned before = writeCount();
        bool moved = false;
        const auto stoodStill = [&] {
            moved = before % 2 != 0 || writeCount() != before;
            return !moved;
        };
        if (backUpStill(databasePath, target, stoodStill))
            return Copied::Yes;
        if (!moved)
            return Copied::Failed;
        std::this_thread::sleep_for(kWait);
    }
    return Copied::NeverStill;
}

} // namespace

QString backupFolder(const QString& databasePath) {
    return QFileInfo(databasePath).dir().filePath(QStringLiteral("备份"));
}

std::vector<KeptBackup> keptBackups(const QString& databasePath) {
    const QRegularExpression name(
        QStringLiteral("^%1-(\\d{4}-\\d{2}-\\d{2})\\.mdb$")
            .arg(QRegularExpression::escape(QFileInfo(databasePath).completeBaseName())));
    std::vector<KeptBackup> backups;
    for (const QFileInfo& file : QDir(backupFolder(databasePath)).entryInfoList(QDir::Files)) {
        const QDate day = QDate::fromString(name.match(file.fileName()).captured(1), Qt::ISODate);
        if (day.isValid())
            backups.push_back({file.filePath(), day, file.size()});
    }
    std::sort(backups.begin(), backups.end(),
              [](const KeptBackup& a, const KeptBackup& b) { return a.day > b.day; });
    return backups;
}

std::vector<QDate> daysToKeep(std::vector<QDate> days) {
    std::sort(days.begin(), days.end(), std::greater<>());
    std::vector<QDate> keep;
    std::set<QDate> weeks;
    std::set<std::pair<int, int>> months;
    int count = 0;
    for (const QDate& day : days) {
        const bool firstOfWeek = weeks.insert(day.addDays(1 - day.dayOfWeek())).second;
        const bool firstOfMonth = months.insert({day.year(), day.month()}).second;
        if (count++ < kDays || (firstOfWeek && int(weeks.size()) <= kWeeks) ||
            (firstOfMonth && int(months.size()) <= kMonths))
            keep.push_back(day);
    }
    return keep;
}

QString backUpDaily(const QString& databasePath, const QDate& today,
                    const std::function<unsigned()>& writeCount,
                    const std::function<qint64(const QString&)>& freeBytes) {
    const QString target = nameOf(databasePath, today);
    if (QFileInfo::exists(target))
        return {};
    if (!makeFolder(backupFolder(databasePath)))
        return QStringLiteral("今天的自动备份没有做成：不能建立文件夹“备份”。");
    const qint64 room = roomFor(keptBackups(databasePath), freeBytes(backupFolder(databasePath)));
    if (QFileInfo(databasePath).size() > room)
        return QStringLiteral("今天的自动备份没有做成：磁盘空间不足。");
    // The oldest make room for it first.
    thinOut(databasePath, room - QFileInfo(databasePath).size());
    switch (makeCopy(databasePath, target, writeCount)) {
    case Copied::Failed:
        return QStringLiteral("今天的自动备份没有做成：文件夹“备份”不能写入，或者磁盘已满。");
    case Copied::NeverStill:
        return QStringLiteral("今天的自动备份没有做成：数据一直在改动。");
    default:
        thinOut(databasePath, room);
        return {};
    }
}

qint64 freeBytesOf(const QString& folder) {
    return QStorageInfo(folder).bytesAvailable();
}

#pragma once

#include <QDate>
#include <QString>

#include <functional>
#include <vector>

/// A backup in the folder of the daily ones.
struct KeptBackup {
    QString path;
    QDate day;
    qint64 size = 0; // bytes
};

/// The folder `备份` beside the database.
QString backupFolder(const QString& databasePath);

/// The backups there, the latest first.
std::vector<KeptBackup> keptBackups(const QString& databasePath);

/// Of these days those whose backups stay: the last 7 that have one, the last of each of the last 4 weeks
/// (from Monday on) and of each of the last 12 months that have one.
std::vector<QDate> daysToKeep(std::vector<QDate> days);

/// Why today's backup could not be made; empty where it was made or is there. It is made once a day, checked;
/// older ones go by daysToKeep, and the oldest first where all of them would take more than a quarter of the
/// disk that is free without them. `stoodStill` as for backUpStill: where the books changed meanwhile, it is
/// made anew. For a thread of its own. `freeBytes` tells the free bytes of the disk of a folder.
QString backUpDaily(const QString& databasePath, const QDate& today,
                    const std::function<unsigned()>& writeCount,
                    const std::function<qint64(const QString&)>& freeBytes);

/// Free bytes of the disk that a folder is on, for its user.
qint64 freeBytesOf(const QString& folder);

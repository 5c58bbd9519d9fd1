#include "maintenance/backup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <sqlite3.h>

#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct CloseDatabase {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;

Database open(const QString& path, int flags) {
    sqlite3* db = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &db, flags, nullptr);
    Database database(db);
    return code == SQLITE_OK ? std::move(database) : nullptr;
}

/// The pages of the source as one moment shows them; a writer in between makes the copy begin anew.
bool copyPages(const QString& source, const QString& target) {
    const Database from = open(source, SQLITE_OPEN_READONLY);
    const Database to = open(target, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    if (!from || !to)
        return false;
    sqlite3_busy_timeout(from.get(), 5000);
    sqlite3_backup* backup = sqlite3_backup_init(to.get(), "main", from.get(), "main");
    if (!backup)
        return false;
    sqlite3_backup_step(backup, -1);
    return sqlite3_backup_finish(backup) == SQLITE_OK;
}

bool isSound(const QString& path) {
    const Database db = open(path, SQLITE_OPEN_READONLY);
    sqlite3_stmt* check = nullptr;
    if (!db || sqlite3_prepare_v2(db.get(), "PRAGMA quick_check", -1, &check, nullptr) != SQLITE_OK)
        return false;
    const bool sound = sqlite3_step(check) == SQLITE_ROW &&
                       qstrcmp(reinterpret_cast<const char*>(sqlite3_column_text(check, 0)), "ok") == 0;
    sqlite3_finalize(check);
    return sound;
}

bool flush(const QString& path) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY);
    if (file < 0)
        return false;
    const bool flushed = fsync(file) == 0;
    ::close(file);
    return flushed;
}

/// Whether both names lead to one file, through links of either kind.
bool isSameFile(const QString& one, const QString& other) {
    struct stat first {};
    struct stat second {};
    return stat(QFile::encodeName(one).constData(), &first) == 0 &&
           stat(QFile::encodeName(other).constData(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

/// A name in the target's folder that nothing has yet; the file is there, empty.
QString temporaryName(const QString& target) {
    QTemporaryFile file(QFileInfo(target).dir().filePath(QStringLiteral(".backup-XXXXXX")));
    file.setAutoRemove(false);
    return file.open() ? file.fileName() : QString();
}

} // namespace

bool backUpDatabase(const QString& source, const QString& target) {
    const QFileInfo info(target);
    if (info.isDir() || info.fileName().isEmpty() || isSameFile(source, target))
        return false;
    const QString copy = temporaryName(target);
    if (copy.isEmpty())
        return false;
    const bool made =
        copyPages(source, copy) && isSound(copy) && flush(copy) &&
        chmod(QFile::encodeName(copy).constData(), 0644) == 0 &&
        std::rename(QFile::encodeName(copy).constData(), QFile::encodeName(target).constData()) == 0;
    QFile::remove(copy + QStringLiteral("-journal"));
    if (!made)
        QFile::remove(copy);
    else
        flush(info.absolutePath());
    return made;
}

QString withDefaultEnding(const QString& name) {
    return QFileInfo(name).suffix().isEmpty() ? name + QStringLiteral(".mdb") : name;
}

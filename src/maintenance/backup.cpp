#include "maintenance/backup.h"

#include "data/booksLock.h"
#include "data/immutableFile.h"
#include "data/unfinished.h"
#include "recordset/fileMark.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 kBlock = 1 << 20; // bytes

DatabaseHandle openDatabase(const QString& path, int flags) {
    sqlite3* db = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &db, flags, nullptr);
    DatabaseHandle handle(db);
    return code == SQLITE_OK ? std::move(handle) : nullptr;
}

bool run(sqlite3* db, const char* sql) {
    return sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

/// The pages of the source as one moment shows them; a writer in between makes the copy begin anew.
bool copyPages(sqlite3* from, const QString& target) {
    const DatabaseHandle to = openDatabase(target, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    // The copy counts only when it is whole, and is flushed then: it needs no journal on the way.
    if (!to || !run(to.get(), "PRAGMA journal_mode = OFF") || !run(to.get(), "PRAGMA synchronous = OFF"))
        return false;
    sqlite3_backup* backup = sqlite3_backup_init(to.get(), "main", from, "main");
    if (!backup)
        return false;
    sqlite3_backup_step(backup, -1);
    if (sqlite3_backup_finish(backup) != SQLITE_OK)
        return false;
    markAsNew(to.get());
    return true;
}

/// Makes the file that only its owner may read, as the engine finds it and fills it.
bool makePrivate(const QString& path) {
    const int file =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    return file >= 0 && ::close(file) == 0;
}

/// Sticks and shares that know no rights, or not these, keep what they have.
void keepRightsOf(const QString& target, const QString& copy) {
    struct stat before {};
    if (stat(QFile::encodeName(target).constData(), &before) == 0 &&
        chmod(QFile::encodeName(copy).constData(), before.st_mode & 07777) != 0)
        errno = 0;
}

using OpenSource = std::function<DatabaseHandle()>;

bool makeBackup(const QString& source, const QString& target, const OpenSource& open,
                const std::function<bool()>& stoodStill) {
    const QFileInfo info(target);
    if (info.isDir() || info.fileName().isEmpty() || isSameFile(source, target))
        return false;
    const Unfinished copy(source, unfinishedName(info.absolutePath()));
    if (!makePrivate(copy.path()))
        return false;
    const DatabaseHandle from = open();
    if (!from || !copyPages(from.get(), copy.path()) || !stoodStill() ||
        !structureFault(copy.path()).isEmpty() || !flushFile(copy.path()))
        return false;
    keepRightsOf(target, copy.path());
    if (std::rename(QFile::encodeName(copy.path()).constData(), QFile::encodeName(target).constData()) != 0)
        return false;
    flushFile(info.absolutePath());
    return true;
}

bool backUp(const QString& source, const QString& target, const OpenSource& open,
            const std::function<bool()>& stoodStill) {
    try {
        return makeBackup(source, target, open, stoodStill);
    } catch (const std::exception&) { // the disk of the copy is full, mostly
        return false;
    }
}

} // namespace

bool copyPrivately(const QString& from, const QString& to) {
    QFile source(from);
    QFile copy(to);
    if (!source.open(QIODevice::ReadOnly) ||
        !copy.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
        return false;
    bool whole = true;
    while (whole && !source.atEnd()) {
        const QByteArray block = source.read(kBlock);
        whole = !block.isEmpty() && copy.write(block) == block.size();
    }
    whole = copy.flush() && whole;
    if (!whole)
        copy.remove();
    return whole;
}

bool flushFile(const QString& path) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool flushed = fsync(file) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
    ::close(file);
    return flushed;
}

bool backUpDatabase(const QString& source, const QString& target) {
    const auto open = [&source] {
        DatabaseHandle from = openDatabase(source, SQLITE_OPEN_READONLY);
        if (from)
            sqlite3_busy_timeout(from.get(), 5000);
        return from;
    };
    return backUp(source, target, open, [] { return true; });
}

bool backUpStill(const QString& source, const QString& target, const std::function<bool()>& stoodStill) {
    return backUp(
        source, target, [&source] { return openImmutable(source); }, stoodStill);
}

QString withDefaultEnding(const QString& name) {
    return QFileInfo(name).suffix().isEmpty() ? name + QStringLiteral(".mdb") : name;
}

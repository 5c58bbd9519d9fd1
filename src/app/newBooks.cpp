#include "app/newBooks.h"

#include "app/booksPlace.h"
#include "data/schema.h"
#include "maintenance/backup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray encoded(const QString& path) {
    return QFile::encodeName(path);
}

QString systemWords() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// Keeps other first starts of this user waiting; a file system without such locks lets them run.
class FirstStartLock {
public:
    explicit FirstStartLock(const QString& folder)
        : m_folder(::open(encoded(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (m_folder >= 0)
            flock(m_folder, LOCK_EX);
    }
    ~FirstStartLock() {
        if (m_folder >= 0)
            ::close(m_folder);
    }
    FirstStartLock(const FirstStartLock&) = delete;
    FirstStartLock& operator=(const FirstStartLock&) = delete;

private:
    int m_folder;
};

/// What an earlier process left half-made goes, and nothing else that may have the name.
void removeHalf(const QString& half) {
    struct stat found {};
    if (lstat(encoded(half).constData(), &found) != 0 || !S_ISDIR(found.st_mode))
        return;
    const QString file = half + u'/' + databaseFileName();
    QFile::remove(file + QStringLiteral("-journal"));
    QFile::remove(file);
    rmdir(encoded(half).constData());
}

/// Fills the half-made folder; what went wrong, empty if nothing did.
QString fill(const QString& half, const QString& emptyBooks) {
    const QString file = half + u'/' + databaseFileName();
    if (!copyPrivately(emptyBooks, file))
        return QStringLiteral("空的数据文件 %1 不能复制到这里，请看看磁盘是不是满了。").arg(emptyBooks);
    try {
        markDatabase(file);
    } catch (const std::exception& error) {
        return QStringLiteral("空的数据文件 %1 不能使用：%2")
            .arg(emptyBooks, QString::fromUtf8(error.what()));
    }
    if (const QString fault = databaseFault(file); !fault.isEmpty())
        return QStringLiteral("空的数据文件 %1 不能使用：%2").arg(emptyBooks, fault);
    return flushFile(file) && flushFile(half) ? QString() : systemWords();
}

QString make(const QString& folder, const QString& emptyBooks) {
    const QString parent = QFileInfo(folder).absolutePath();
    if (!QDir().mkpath(parent))
        return QStringLiteral("不能建立文件夹 %1。").arg(parent);
    const FirstStartLock lock(parent);
    if (!isFirstStart(folder))
        return {};
    const QString half = parent + QStringLiteral("/.hengshanghui-unfinished");
    removeHalf(half);
    if (mkdir(encoded(half).constData(), 0700) != 0)
        return systemWords();
    const auto gone = qScopeGuard([&half] { removeHalf(half); });
    if (QString fault = fill(half, emptyBooks); !fault.isEmpty())
        return fault;
    if (std::rename(encoded(half).constData(), encoded(folder).constData()) != 0) {
        QString words = systemWords();
        return isFirstStart(folder) ? words : QString();
    }
    flushFile(parent);
    return {};
}

} // namespace

bool isFirstStart(const QString& dataFolder) {
    struct stat found {};
    return lstat(encoded(dataFolder).constData(), &found) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

QString makeFirstBooks(const QString& dataFolder, const QString& emptyBooks) {
    const QString fault = make(dataFolder, emptyBooks);
    return fault.isEmpty() ? QString() : QStringLiteral("不能建立数据文件夹 %1\n%2").arg(dataFolder, fault);
}

#include "data/ownFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <optional>
#include <sys/stat.h>

namespace {

constexpr int kMostLinks = 40; // one behind the other, as the system itself follows them

std::optional<struct stat> statusOf(const QString& path) {
    struct stat status {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return status;
}

/// Whether both names lead to one file or folder that exists.
bool isSame(const QString& one, const QString& other) {
    const auto first = statusOf(one);
    const auto second = statusOf(other);
    return first && second && first->st_dev == second->st_dev && first->st_ino == second->st_ino;
}

/// The name behind all links, also where the last of them leads to nothing.
QFileInfo behindLinks(const QString& path) {
    QFileInfo file(path);
    for (int i = 0; i < kMostLinks && file.isSymLink(); ++i)
        file.setFile(file.symLinkTarget());
    return file;
}

/// Whether a file made under the one name would stand under the other. Names that differ in their case alone
/// are one name on some disks.
bool isSamePlace(const QFileInfo& one, const QFileInfo& other) {
    return one.fileName().compare(other.fileName(), Qt::CaseInsensitive) == 0 &&
           isSame(one.absolutePath(), other.absolutePath());
}

} // namespace

bool isOwnFile(const QString& path, const QString& databasePath) {
    static const QStringList endings{QString(), QStringLiteral("-journal"), QStringLiteral("-wal"),
                                     QStringLiteral("-shm"), QStringLiteral(".lock")};
    const QFileInfo target = behindLinks(path);
    // What belongs to a database stands beside the file itself, not beside a link to it.
    const QString database = behindLinks(databasePath).absoluteFilePath();
    for (const QString& ending : endings) {
        const QString own = database + ending;
        if (isSame(path, own) || isSamePlace(target, QFileInfo(own)))
            return true;
    }
    return isSamePlace(target, QFileInfo(databasePath));
}

QString ownFileRefusal(const QString& path) {
    return QStringLiteral("不能写入 %1：这是正在使用的数据文件。请另选一个文件名。").arg(path);
}

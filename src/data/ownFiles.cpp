#include "data/ownFiles.h"

#include "data/booksLock.h"

#include <QFileInfo>
#include <QStringList>

namespace {

constexpr int kMostLinks = 40; // one behind the other, as the system itself follows them

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
           isSameFile(one.absolutePath(), other.absolutePath());
}

} // namespace

QStringList ownFiles(const QString& databasePath) {
    // What belongs to a database stands beside the file itself, not beside a link to it.
    const QString database = behindLinks(databasePath).absoluteFilePath();
    QStringList names{database};
    for (const char16_t* ending : {u"-journal", u"-wal", u"-shm", u".lock", u".unfinished"})
        names << database + QString::fromUtf16(ending);
    return names;
}

bool isOwnFile(const QString& path, const QString& databasePath) {
    const QFileInfo target = behindLinks(path);
    for (const QString& own : ownFiles(databasePath))
        if (isSameFile(path, own) || isSamePlace(target, QFileInfo(own)))
            return true;
    return isSamePlace(target, QFileInfo(databasePath));
}

QString ownFileRefusal(const QString& path) {
    return QStringLiteral("不能写入 %1：这是正在使用的数据文件。请另选一个文件名。").arg(path);
}

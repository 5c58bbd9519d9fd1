#include "app/booksPlace.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

/// A link that leads to nothing is there too: its file is missed, and not made anew elsewhere.
bool isThere(const QString& path) {
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}

} // namespace

BooksFolder placeOfBooks(const std::optional<QString>& asked, const Surroundings& around) {
    if (asked)
        return {BooksPlace::Asked, *asked};
    if (around.isBeside || !around.installed)
        return {BooksPlace::Beside, around.programFolder};
    return {BooksPlace::UsersData, around.dataFolder};
}

Surroundings lookAround(const QString& programFolder) {
    return {programFolder, usersDataFolder(), isThere(programFolder + u'/' + databaseFileName()),
            isThere(emptyBooks(programFolder))};
}

QString databaseFileName() {
    return QStringLiteral("VelmorClientBank.mdb");
}

QString emptyBooks(const QString& programFolder) {
    return programFolder + QStringLiteral("/VelmorClientBank-empty.mdb");
}

QString usersDataFolder() {
    const QString home = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir::cleanPath(QDir::home().absoluteFilePath(home) + QStringLiteral("/hengshanghui"));
}

QString folderFault(const QString& folder) {
    const QFileInfo info(folder);
    if (info.isDir())
        return {};
    const QString why = isThere(folder) ? QStringLiteral("这不是文件夹。") : QStringLiteral("文件夹不存在。");
    return QStringLiteral("不能使用数据文件夹 %1\n%2").arg(folder, why);
}

QString missingBooksHint(const BooksFolder& books, const Surroundings& around) {
    const QString path = books.path + u'/' + databaseFileName();
    if (books.place == BooksPlace::Beside || isThere(path))
        return {};
    if (books.place == BooksPlace::UsersData)
        return QStringLiteral("\n这个文件夹以前用过，所以没有另开一家空店。请恢复备份，或者把数据文件放回去；"
                              "要从空店开始，先把文件夹 %1 改名。")
            .arg(books.path);
    return around.installed
               ? QStringLiteral("\n要在这个文件夹里开一家新店，把空的数据文件 %1 复制进去，改名为 %2。")
                     .arg(emptyBooks(around.programFolder), databaseFileName())
               : QString();
}

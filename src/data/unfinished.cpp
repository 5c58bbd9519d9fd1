#include "data/unfinished.h"

#include "data/booksLock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QRandomGenerator>

namespace {

const QString kSign = QStringLiteral(".hengshanghui-");

/// A backup by hand and the day's may be at the list at once.
QMutex& listMutex() {
    static QMutex mutex;
    return mutex;
}

QString listOf(const QString& databasePath) {
    return databasePath + QStringLiteral(".unfinished");
}

QStringList namesIn(const QString& list) {
    QFile file(list);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList names;
    for (const QByteArray& line : file.read(1 << 20).split('\n'))
        if (!line.isEmpty())
            names << QString::fromUtf8(line);
    return names;
}

void writeNames(const QString& list, const QStringList& names) {
    if (names.isEmpty()) {
        QFile::remove(list);
        return;
    }
    QFile file(list);
    if (!file.open(QIODevice::WriteOnly))
        return; // then a killed process leaves its file: nothing else is lost
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(names.join(u'\n').toUtf8() + '\n');
}

void removeWithJournal(const QString& path) {
    QFile::remove(path + QStringLiteral("-journal"));
    QFile::remove(path);
}

} // namespace

NotedName::NotedName(const QString& databasePath, const QString& path)
    : m_list(listOf(databasePath))
    , m_path(path) {
    const QMutexLocker held(&listMutex());
    writeNames(m_list, namesIn(m_list) << m_path);
}

NotedName::~NotedName() {
    const QMutexLocker held(&listMutex());
    QStringList names = namesIn(m_list);
    names.removeAll(m_path);
    writeNames(m_list, names);
}

Unfinished::~Unfinished() {
    removeWithJournal(path());
}

QString unfinishedName(const QString& folder) {
    for (;;) {
        QString name =
            QDir(folder).filePath(kSign + QString::number(QRandomGenerator::global()->generate(), 36));
        if (!QFileInfo::exists(name))
            return name;
    }
}

void clearUnfinished(const QString& databasePath) {
    // Whatever the list says, nothing goes but a half-made file by its sign and a name that is one too many.
    for (const QString& name : namesIn(listOf(databasePath))) {
        const QString journal = databasePath + QStringLiteral("-journal");
        if (QFileInfo(name).fileName().startsWith(kSign))
            removeWithJournal(name);
        else if ((name != databasePath && isSameFile(name, databasePath)) ||
                 (name != journal && isSameFile(name, journal)))
            QFile::remove(name);
    }
    QFile::remove(listOf(databasePath));
}

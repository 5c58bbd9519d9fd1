#pragma once

#include <QString>
#include <QStringList>

/// A name that is written down beside the database while the object lives, so that what a killed process
/// leaves under it, in whatever folder, is known and cleared by the next start: a second name of the books or
/// of their journal until they have given up the first one.
class NotedName {
public:
    NotedName(const QString& databasePath, const QString& path);
    ~NotedName();
    NotedName(const NotedName&) = delete;
    NotedName& operator=(const NotedName&) = delete;

    const QString& path() const { return m_path; }

private:
    QString m_list;
    QString m_path;
};

/// A file that is being made under a name of its own until it is whole.
class Unfinished {
public:
    /// `path`: the half-made file, not there yet.
    Unfinished(const QString& databasePath, const QString& path)
        : m_name(databasePath, path) {}
    /// Removes the file, unless it has got another name, with what the engine left beside it.
    ~Unfinished();
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

    const QString& path() const { return m_name.path(); }

private:
    NotedName m_name;
};

/// A name in a folder that nothing has yet, hidden, which says what it is.
QString unfinishedName(const QString& folder);

/// Removes what earlier processes left unfinished, and second names of the books where the first one is
/// there.
void clearUnfinished(const QString& databasePath);

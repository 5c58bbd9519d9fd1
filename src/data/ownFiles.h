#pragma once

#include <QString>
#include <QStringList>

/// Whether writing a file of this name would write into the open database or into what belongs to it: its
/// journal, its write-ahead log with the shared index, its lock. Every spelling and every link counts, also
/// to one of them that does not exist at the moment. No file is opened: closing a descriptor of the database
/// would drop the locks that its connection holds.
bool isOwnFile(const QString& path, const QString& databasePath);

/// The open database and the names of what belongs to it, whether they are there or not.
QStringList ownFiles(const QString& databasePath);

/// What to tell the user of such a name.
QString ownFileRefusal(const QString& path);

#pragma once

#include <QString>
#include <QStringList>

/// Makes a database file with the system's empty tables. `path` must not exist yet. Throws
/// RuntimeError(Engine).
void createDatabase(const QString& path);

/// Why the file cannot be used as the system's database, in words that name the file and the cause; empty if
/// it can. Reads only; what a crash broke off and left in the journal is taken back, as at any opening.
QString databaseFault(const QString& path);

/// Tables that must be there at start; work copies may be missing.
QStringList requiredTables();

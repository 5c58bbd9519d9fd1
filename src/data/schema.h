#pragma once

#include <QString>
#include <QStringList>

/// Makes a database file with the system's empty tables, which only its owner may read. `path` must not exist
/// yet. Throws RuntimeError(Engine), DatabaseLost.
void createDatabase(const QString& path);

/// Gives a file that is the copy of another one a mark of its own, so that no journal of the other is taken
/// for its. Throws RuntimeError(Engine), DatabaseLost.
void markDatabase(const QString& path);

/// Why the file cannot be used as the system's database, in words that name the file and the cause; empty if
/// it can. Reads only; what a crash broke off and left in the journal is taken back, as at any opening.
QString databaseFault(const QString& path);

/// Tables that must be there at start; work copies may be missing.
QStringList requiredTables();

#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class BooksLock;
class ImportSource;

/// Whether the file is a Jet database, as old installations keep their books in.
bool isJetFile(const QString& path);

/// Why a Jet file cannot be taken over (protected, damaged, not this system's), naming the file; empty if it
/// can. Reads only.
QString takeOverFault(const QString& path);

/// The words in which a take-over is refused or has failed: the file, and why, as one sentence.
QString takeOverRefusal(const QString& path, const QString& why);

/// What came of a take-over.
struct TakenOver {
    QString kept; // path of the old file now
    /// The values that could not be kept as they were, a line each: table, row as it is seen now, column,
    /// value.
    QStringList lost;
};

/// Turns the Jet file into a database of the present format under the same name. Every table of the system
/// comes over with its rows in their order; a text wider than its column widens the column. The old file
/// stays beside it under another name. A process that is killed at any moment leaves the old state or the new
/// one; a failure leaves the old file and nothing beside it. `progress` is told tables done and in all, also
/// again and again while a long table is under way. `lock`: the lock on the old file, where it is held; it
/// holds the new one afterwards.
/// Throws ImportError, RuntimeError, DatabaseLost.
TakenOver takeOver(const QString& path, const std::function<void(int, int)>& progress = {},
                   BooksLock* lock = nullptr);

/// The same from tables that are open already.
TakenOver takeOverFrom(ImportSource& source, const QString& path,
                       const std::function<void(int, int)>& progress = {}, BooksLock* lock = nullptr);

#pragma once

#include <QtGlobal>

class QByteArray;
struct sqlite3;

/// The mark by which a rollback journal is known to belong to a file: every transaction writes a fresh random
/// one into the first page before anything else, beside the one that it takes the place of. So the first page
/// is the first record of the transaction's journal, and a journal is of this file where its record bears the
/// file's mark (the page was not written yet) or the mark before it (it was).
struct FileMark {
    qint32 now = 0;    // user_version; 0 in a file that no transaction has marked
    qint32 before = 0; // application_id

    bool operator==(const FileMark&) const = default;
};

/// The mark in the first bytes of a first page; at least 100 of them.
FileMark markIn(const QByteArray& page);

/// Writes a fresh mark as the first write of a transaction that is open, and gives it. Throws RuntimeError,
/// DatabaseLost.
FileMark writeFreshMark(sqlite3* db);

/// Gives a file that was just made, or copied, a mark that no journal knows. Throws RuntimeError,
/// DatabaseLost.
void markAsNew(sqlite3* db);

/// The mark that the file holds now. Throws RuntimeError, DatabaseLost.
FileMark readMark(sqlite3* db);

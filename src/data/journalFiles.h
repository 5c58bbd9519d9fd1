#pragma once

#include <QString>
#include <QStringList>

/// What stands beside a database file as its rollback journal.
enum class JournalState {
    None,
    Empty,   // nothing of an action has reached the file; the engine passes over it
    Ours,    // of the action that was broken off in this file; the engine takes it back
    Foreign, // of another file, or of this name's file before another one was put in its place
    Unknown, // of a program that does not mark what it writes: it may be of this file or of another one
};

/// Tells a journal by the mark that its first record and the file bear. Reads the file: for use before the
/// engine has it open. What is no database has no journal of its own.
JournalState journalState(const QString& databasePath);

/// Moves what the engine would take for the file's own and is not to names that say so: a foreign or unknown
/// journal, and any write-ahead log with its index, which this system never writes. Gives the new names.
/// Throws RuntimeError(Engine) where one cannot be moved: the file must not be opened.
QStringList putStraysAside(const QString& databasePath);

/// Whether there is anything that putStraysAside would move.
bool hasStrays(const QString& databasePath);

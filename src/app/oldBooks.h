#pragma once

#include <QString>

class BooksLock;
class Prompts;

enum class OldBooks {
    None,      // the file is not that of an old installation
    TakenOver, // it was, and is in the present format now
    Declined,  // the user wants it left as it is
    Refused,   // it cannot be taken over; `fault` says why
};

struct OldBooksResult {
    OldBooks outcome = OldBooks::None;
    QString fault;
};

/// Where the database is that of an old installation: says so, asks, and takes it over. `lock`: the lock on
/// it, where it is held; it goes over to the new file.
OldBooksResult meetOldBooks(const QString& databasePath, Prompts& prompts, BooksLock* lock = nullptr);

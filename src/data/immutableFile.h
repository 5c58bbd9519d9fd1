#pragma once

#include <QString>

#include <memory>

struct sqlite3;
struct CloseDatabase {
    void operator()(sqlite3* db) const;
};
using DatabaseHandle = std::unique_ptr<sqlite3, CloseDatabase>;

/// Opens a database as the bytes of its file are: no lock is taken or waited for, no journal beside it is
/// looked at, nothing is written. Who reads it so must know that nobody writes. Throws RuntimeError,
/// DatabaseLost.
DatabaseHandle openImmutable(const QString& path);

/// What the engine's check finds wrong with the structure of a file that nobody writes, in its words; empty
/// if it is sound. What a structure can bear, a figure with another digit, it does not see.
QString structureFault(const QString& path);

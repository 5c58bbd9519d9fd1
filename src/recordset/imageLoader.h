#pragma once

#include "recordset/columnStore.h"

#include <memory>
#include <vector>

class Connection;
struct sqlite3;

/// Rows read from a table, in the order of their rowids.
struct LoadedRows {
    std::vector<qint64> rowids;
    std::vector<ColumnStore> columns; // as many cells each as there are rowids
};

/// Reads columns on a connection of its own, some rows at a time, for a thread beside the one that writes.
class RangeLoader {
public:
    /// `expected`: how many rows to make room for. Throws RuntimeError where the file or the table cannot be
    /// read.
    RangeLoader(const QString& path, const QString& table, const std::vector<ColumnInfo>& columns,
                qint64 expected);
    ~RangeLoader();
    RangeLoader(const RangeLoader&) = delete;
    RangeLoader& operator=(const RangeLoader&) = delete;

    /// Appends the rows of these rowids, which lie behind those read before. Throws RuntimeError, and
    /// TypeMismatch where a date cannot be read.
    void read(qint64 first, qint64 last);
    LoadedRows take();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

/// Reads the named columns of every row. Two threads share the work, each on a connection of its own, except
/// inside a transaction, whose rows a second connection cannot see. Throws RuntimeError.
LoadedRows loadRows(Connection& connection, const QString& table, const std::vector<ColumnInfo>& columns);

/// Gives an open database the aggregate by which rows are read.
void registerGatherRows(sqlite3* db);

#pragma once

#include "recordset/columnStore.h"

#include <vector>

class Connection;

/// Rows read from a table, in the order of their rowids.
struct LoadedRows {
    std::vector<qint64> rowids;
    std::vector<ColumnStore> columns; // as many cells each as there are rowids
};

/// Reads the named columns of every row. Two threads share the work, each on a connection of its own, except
/// inside a transaction, whose rows a second connection cannot see. Throws RuntimeError.
LoadedRows loadRows(Connection& connection, const QString& table, const std::vector<ColumnInfo>& columns);

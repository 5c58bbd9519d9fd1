#pragma once

#include "recordset/dialect.h"
#include "recordset/tableImage.h"

#include <memory>

class Connection;

/// Answers a statement with aggregates, Group By or distinct over one table from the table's columns in
/// memory, as a picture. In: the statement, the columns that it gives ("*" spelled out) and how they are
/// declared. Out: the same rows in the same order as the engine's answer (groups ascending by their columns,
/// or by the statement's own order and ties by the groups; sums added in the order of the rows); where texts
/// that differ in the case of A-Z are one group, it bears the text of its first row. Null where the table is
/// not in memory or the statement is none of these: then the engine answers.
std::shared_ptr<TableImage> queryColumns(Connection& connection, const SqlStatement& statement,
                                         const std::vector<SelectItem>& items,
                                         const std::vector<ColumnInfo>& columns);

/// The same over these rows of an image at hand, whatever table and condition the statement names.
std::shared_ptr<TableImage> queryImage(const TableImage& image, std::vector<Row> rows,
                                       const SqlStatement& statement, const std::vector<SelectItem>& items,
                                       const std::vector<ColumnInfo>& columns);

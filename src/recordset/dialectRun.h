#pragma once

#include "recordset/dialect.h"
#include "recordset/tableImage.h"

class Connection;

/// Runs Select Into, Delete and Drop Table. Throws TableExists, TableMissing, DropMissing, NoSuchField,
/// Engine.
void runParsed(Connection& connection, const SqlStatement& statement);

/// Runs a query with aggregates, Group By or distinct into a fixed picture.
std::shared_ptr<TableImage> runQuery(Connection& connection, const SqlStatement& statement);

/// The same over a picture at hand, all its rows; the table that the statement names is not looked at. Throws
/// BadText for a statement that columns alone cannot answer.
std::shared_ptr<TableImage> runQueryOn(const TableImage& picture, const SqlStatement& statement);

/// The live rows of an image that meet the statement's Where, in base order.
std::vector<Row> rowsWhere(Connection& connection, const TableImage& image, const SqlStatement& statement);

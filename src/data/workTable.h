#pragma once

#include "data/recount.h"
#include "data/session.h"

class IgnoringErrors;

/// Makes a work table anew and opens its cursor: the old table dropped, then the statements that make it, all
/// in one transaction. The cursor is closed first, so that whoever still shows the old rows is cut off
/// instead of reading them in for keeping. Each statement runs whatever became of the one before; where the
/// table is missing in the end, the cursor stays closed.
void rebuildWorkTable(Session& session, RecordsetPtr& cursor, const QString& table,
                      const QStringList& statements, IgnoringErrors& errors);

/// The same with an empty table that has the columns of another one.
void rebuildEmpty(Session& session, RecordsetPtr& cursor, const QString& table, const QString& shapedLike,
                  IgnoringErrors& errors);

/// The same, the table filled by `fill` before its cursor opens; where that fails there is no table.
void rebuildWith(Session& session, RecordsetPtr& cursor, const QString& table, const QString& shapedLike,
                 const std::function<void()>& fill, IgnoringErrors& errors);

/// Empties a table and fills it with the rows of a picture, column by column under their own names, all in
/// one transaction. Cursors that have the table open lose its rows and must be opened anew. Throws
/// RuntimeError.
void fillTable(Connection& connection, const QString& table, const TableImage& rows,
               const Progress& progress = {});

/// The same with rows of another table of the same columns, by their rowids, in this order.
void fillTableFrom(Connection& connection, const QString& table, const QString& source,
                   const std::vector<qint64>& rowids, const Progress& progress = {});

/// Writes the pending edits of a cursor, errors passed over: a row that is refused stays pending. Where the
/// disk fails, or another program holds the file, all rows stay so, and the answer says why; else it is
/// empty.
QString saveQuietly(Session& session, const RecordsetPtr& cursor);

/// Rows that belong into a work table of the same columns: the table that they are in, and their rowids in
/// order.
struct RowsOfTable {
    QString source;
    std::vector<qint64> rowids;
};

/// The rows that a cursor over a table shows.
RowsOfTable rowsOfTable(const Recordset& cursor);

/// Makes a work table anew with these rows and opens its cursor, which shows what it showed until the copy
/// stands. Other cursors that have the table open keep the rows they have. Errors are passed over statement
/// by statement.
void rebuildFrom(Session& session, RecordsetPtr& cursor, const QString& table, const RowsOfTable& rows,
                 const Progress& progress = {});

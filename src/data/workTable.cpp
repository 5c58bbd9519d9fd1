#include "data/workTable.h"

#include "recordset/dialect.h"
#include "recordset/ignoringErrors.h"

namespace {

constexpr int kRowsATell = 20'000;

/// Empties the table for rows that are written past its image, which is forgotten: it would not know them.
void emptyForWriting(Connection& connection, const QString& table) {
    if (connection.standingImage(table))
        runStatement(connection, QStringLiteral("Delete * From ") + table);
    else
        connection.write(QStringLiteral("DELETE FROM ") + quotedName(table));
    connection.forgetImage(table);
}

/// Runs `insert` once for each of `count` rows, which `bind(row)` gives its values.
template <typename Bind>
void insertRows(Connection& connection, Statement& insert, int count, const Progress& progress, Bind&& bind) {
    for (int row = 0; row < count; ++row) {
        bind(row);
        connection.write(insert);
        if (progress && (row + 1) % kRowsATell == 0)
            progress(row + 1, count);
    }
}

/// Rowids without a gap, both ends included.
struct Run {
    qint64 first;
    qint64 last;
};

/// Ascending neighbours go together, so many at most that their progress is seen.
std::vector<Run> runsOf(const std::vector<qint64>& rowids) {
    std::vector<Run> runs;
    for (const qint64 rowid : rowids) {
        if (!runs.empty() && rowid == runs.back().last + 1 && rowid - runs.back().first < kRowsATell)
            runs.back().last = rowid;
        else
            runs.push_back({rowid, rowid});
    }
    return runs;
}

void bindCell(Statement& insert, int position, const ColumnStore& column, std::size_t row) {
    if (column.info.type != ColumnType::Text)
        return insert.bind(position, column.value(row));
    if (const TextPool::Code code = column.codes[row]; code != TextPool::Null)
        insert.bindBytes(position, column.pool.text(code));
    else
        insert.bind(position, CellValue{});
}

} // namespace

void rebuildWorkTable(Session& session, RecordsetPtr& cursor, const QString& table,
                      const QStringList& statements, IgnoringErrors& errors) {
    WriteBatch batch(session.cn);
    if (cursor->isOpen())
        cursor->Close();
    errors.run([&] { runStatement(session.cn, QStringLiteral("Drop Table ") + table); });
    for (const QString& statement : statements)
        errors.run([&] { runStatement(session.cn, statement); });
    errors.run([&] { batch.finish(); });
    errors.run([&] { session.reopen(cursor, QStringLiteral("Select * From ") + table); });
}

void rebuildEmpty(Session& session, RecordsetPtr& cursor, const QString& table, const QString& shapedLike,
                  IgnoringErrors& errors) {
    rebuildWorkTable(session, cursor, table,
                     {QStringLiteral("Select Top 0 * Into %1 From %2").arg(table, shapedLike),
                      QStringLiteral("Delete * From ") + table},
                     errors);
}

void rebuildWith(Session& session, RecordsetPtr& cursor, const QString& table, const QString& shapedLike,
                 const std::function<void()>& fill, IgnoringErrors& errors) {
    WriteBatch batch(session.cn);
    rebuildEmpty(session, cursor, table, shapedLike, errors);
    if (cursor->isOpen()) {
        cursor->Close();
        bool filled = false;
        errors.run([&] {
            emptyForWriting(session.cn, table);
            fill();
            filled = true;
        });
        if (!filled) // half a copy is none
            errors.run([&] { runStatement(session.cn, QStringLiteral("Drop Table ") + table); });
    }
    errors.run([&] { batch.finish(); });
    errors.run([&] { session.reopen(cursor, QStringLiteral("Select * From ") + table); });
}

void fillTable(Connection& connection, const QString& table, const TableImage& rows,
               const Progress& progress) {
    QStringList names;
    for (int i = 0; i < rows.columnCount(); ++i)
        names << quotedName(rows.info(i).name);
    const QString places = QStringList(names.size(), QStringLiteral("?")).join(u',');
    WriteBatch batch(connection);
    emptyForWriting(connection, table);
    Statement insert = connection.prepare(
        QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(quotedName(table), names.join(u','), places));
    insertRows(connection, insert, int(rows.size()), progress, [&](int row) {
        for (int i = 0; i < rows.columnCount(); ++i)
            bindCell(insert, i + 1, rows.column(i), std::size_t(row));
    });
    batch.finish();
}

void fillTableFrom(Connection& connection, const QString& table, const QString& source,
                   const std::vector<qint64>& rowids, const Progress& progress) {
    WriteBatch batch(connection);
    emptyForWriting(connection, table);
    Statement insert =
        connection.prepare(QStringLiteral("INSERT INTO %1 SELECT * FROM %2 WHERE rowid BETWEEN ? AND ?")
                               .arg(quotedName(table), quotedName(source)));
    const std::vector<Run> runs = runsOf(rowids);
    int done = 0;
    for (const Run& run : runs) {
        insert.bind(1, run.first);
        insert.bind(2, run.last);
        connection.write(insert);
        const int before = std::exchange(done, done + int(run.last - run.first) + 1);
        if (progress && done / kRowsATell != before / kRowsATell)
            progress(done, int(rowids.size()));
    }
    batch.finish();
}

QString saveQuietly(Session& session, const RecordsetPtr& cursor) {
    IgnoringErrors errors;
    try {
        errors.run([&] {
            if (!cursor->hasRows())
                return;
            WriteBatch batch(session.cn);
            cursor->UpdateBatch(3);
            batch.finish();
        });
        return {};
    } catch (const ActionEnded& ended) {
        session.cn.tellTakenBack();
        return ended.isBooked() ? ended.text()
                                : QStringLiteral("修改没有保存，仍然留在表格里。") + ended.text();
    }
}

RowsOfTable rowsOfTable(const Recordset& cursor) {
    RowsOfTable rows{cursor.image().table(), {}};
    rows.rowids.reserve(std::size_t(cursor.RecordCount()));
    cursor.eachRow([&](RowId row) { rows.rowids.push_back(cursor.image().rowid(Row(row))); });
    return rows;
}

void rebuildFrom(Session& session, RecordsetPtr& cursor, const QString& table, const RowsOfTable& rows,
                 const Progress& progress) {
    IgnoringErrors errors;
    WriteBatch batch(session.cn);
    auto fresh = std::make_shared<Recordset>(session.cn);
    rebuildEmpty(session, fresh, table, rows.source, errors);
    errors.run([&] { fillTableFrom(session.cn, table, rows.source, rows.rowids, progress); });
    errors.run([&] { batch.finish(); });
    errors.run([&] { session.reopen(cursor, QStringLiteral("Select * From ") + table); });
}

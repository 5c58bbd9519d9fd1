#pragma once

#include "import/tableReader.h"

#include <QFile>

// The readers in this process, without walls.

inline SourceFile bytesOf(const QString& path) {
    QFile file(path);
    return SourceFile(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
}

inline SourceRows readTable(TableReader& reader, const QString& table = {}) {
    SourceRows rows;
    reader.read(table, rows);
    return rows;
}

inline SourceRows readDbf(const QString& path) {
    const QString memos = memoPathOf(path);
    const auto reader = dbfReader(
        bytesOf(path),
        memos.isEmpty() ? std::nullopt : std::optional(MemoFile{bytesOf(memos), isFoxProMemo(memos)}));
    return readTable(*reader);
}

/// Every cell, row by row.
inline std::vector<QString> cellsOf(const SourceRows& rows) {
    std::vector<QString> cells;
    for (int row = 0; row < rows.rowCount(); ++row)
        for (int column = 0; column < rows.columns.size(); ++column)
            cells.push_back(rows.cell(row, column));
    return cells;
}

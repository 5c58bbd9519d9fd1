#pragma once

#include "recordset/columnStore.h"

#include <QStringList>

#include <functional>
#include <vector>

/// One column of a table that is written into a file.
struct ExportColumn {
    QString caption;
    double width = 0; // in digits
};

/// A table on its way into a file. Its cells are asked for one by one, row after row.
struct ExportTable {
    QString title;    // above the captions; empty: none
    QStringList head; // what belongs to the title, in one line below it, by the columns
    std::vector<ExportColumn> columns;
    int rows = 0;
    std::function<CellValue(int row, int column)> cell;
};

enum class ExportEnd {
    Whole,   // the file stands in its place
    Stopped, // nothing was written
    Failed,  // the file cannot be written; what stood there before stays
};

/// Told how many rows are done, every now and then; false to stop.
using ExportSteps = std::function<bool(int done)>;

/// Whether a text column holds the texts of numbers.
bool keepsNumbers(const ColumnInfo& column);

/// What a cell is for other programs: a number also where it is kept as its text, the column's value else.
CellValue exportedValue(const ColumnInfo& column, CellValue value);

/// Whether a row is one of those behind which the progress is told.
inline bool isStep(int row) {
    return row % 256 == 255;
}

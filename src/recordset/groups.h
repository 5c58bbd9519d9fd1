#pragma once

#include "recordset/tableImage.h"

#include <vector>

/// Rows parted into groups, which are numbered in the order in which they first occur.
struct Groups {
    std::vector<Row> of;     // the group of each row, as long as the rows
    std::vector<Row> firsts; // the first row of each group
};

/// Parts rows by the values of these columns of the image; texts that differ in the case of A-Z alone are one
/// value, and so are Nulls. Without a column all rows are one group, none where there are no rows.
Groups groupRows(const TableImage& image, const std::vector<int>& columns, const std::vector<Row>& rows);

/// Sum of a column of numbers by group, added in the order of the rows; NaN (Null) for a group of Nulls only.
std::vector<double> sumByGroup(const ColumnStore& column, const std::vector<Row>& rows, const Groups& groups);

/// How many cells of a column are not Null, by group.
std::vector<qint32> countByGroup(const ColumnStore& column, const std::vector<Row>& rows,
                                 const Groups& groups);

/// These cells of a column, in this order, as a column of its own.
ColumnStore picked(const ColumnStore& column, const std::vector<Row>& rows);

#pragma once

#include "recordset/recordset.h"

/// A recordset as it was when a transaction began.
struct Recordset::Before {
    QString source;
    std::shared_ptr<TableImage> image;
    std::vector<int> fields;
    quint64 opening = 0;
    Keyset keyset;
    QString filterText;
    QString sortText;
    std::vector<SortKey> sort;
    int pageSize = 0;
    PendingEdits edits;
    std::vector<AddedRow> added;
    std::map<RowId, Row> insertedAs;
    Position position;
    std::optional<RowId> row;
    /// The rows shown, where a Filter or a Sort was worked out before rows changed under it.
    std::optional<RowView> view;
    std::size_t judged = 0;
    quint64 viewVersion = 0;
};

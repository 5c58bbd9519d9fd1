#pragma once

#include "recordset/columnStore.h"

/// Finds the rows of one text column by the codes of their texts. The first search is a scan; a column
/// searched again gets an index over the rows there are, and rows added later are scanned behind it.
class EqualityIndex {
public:
    /// Appends to `rows` the rows below `limit` that bear one of the codes and are not marked in `deleted`
    /// (one mark a row slot), ascending.
    void collect(const ColumnStore& column, const std::vector<TextPool::Code>& codes, Row limit,
                 const std::vector<char>& deleted, std::vector<Row>& rows);
    /// A row got another text: an index that holds it is forgotten.
    void cellChanged(Row row);
    std::size_t memory() const;

private:
    void build(const ColumnStore& column);

    int m_uses = 0;
    Row m_covered = 0;         // rows below this slot are in the index
    std::vector<Row> m_starts; // by code: where its rows begin in m_rows
    std::vector<Row> m_rows;
};

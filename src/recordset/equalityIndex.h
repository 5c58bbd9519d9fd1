#pragma once

#include "recordset/columnStore.h"

#include <optional>

/// Finds the rows of one text column by the codes of their texts. The first search is a scan; a column
/// searched again gets an index over the rows there are. Rows added later are scanned behind it, and so are
/// those of it whose text was changed.
class EqualityIndex {
public:
    /// Appends to `rows` the rows below `limit` that bear one of the codes and are not marked in `deleted`
    /// (one mark a row slot), ascending.
    void collect(const ColumnStore& column, const std::vector<TextPool::Code>& codes, Row limit,
                 const std::vector<char>& deleted, std::vector<Row>& rows);
    /// How many rows a search would look at, nothing where it would have to scan the column.
    std::optional<std::size_t> countEqual(const ColumnStore& column,
                                          const std::vector<TextPool::Code>& codes) const;
    /// A row got another text.
    void cellChanged(Row row);
    void build(const ColumnStore& column);
    std::size_t memory() const;

private:
    bool isCurrent(const ColumnStore& column) const;
    std::size_t postings(TextPool::Code code) const;

    int m_uses = 0;
    Row m_covered = 0;         // rows below this slot are in the index
    std::vector<Row> m_starts; // by code: where its rows begin in m_rows
    std::vector<Row> m_rows;
    std::vector<Row> m_changed; // rows of the index that got another text, ascending
};

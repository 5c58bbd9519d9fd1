#include "recordset/tableImage.h"

#include <algorithm>

void TableImage::transactionBegun() {
    m_undo = std::make_unique<Undo>();
    m_undo->size = size();
    for (const ColumnStore& column : m_columns)
        m_undo->loaded.push_back(char(column.loaded));
}

void TableImage::noteCells(Row row, const CellChanges& cells) {
    if (!m_undo || row >= m_undo->size)
        return;
    for (const auto& [column, value] : cells)
        if (const ColumnStore& store = m_columns[std::size_t(column)]; store.loaded)
            m_undo->cells.push_back({row, column, store.value(row)});
}

/// The column will be read anew on its next use.
void TableImage::unload(int column) {
    ColumnStore& store = m_columns[std::size_t(column)];
    ColumnStore empty;
    empty.info = store.info;
    store = std::move(empty);
    m_indexes[std::size_t(column)] = {};
    m_ranks[std::size_t(column)].clear();
    m_distinct[std::size_t(column)].clear();
    m_ascending[std::size_t(column)] = 0;
}

void TableImage::transactionTakenBack() {
    const auto undo = std::exchange(m_undo, nullptr);
    if (!undo)
        return;
    for (DistinctTexts& distinct : m_distinct)
        distinct.clear(); // counted anew where it is asked for again
    m_dropped = false;
    m_readRows.clear();
    // Later notes first: a cell that changed twice ends as it began.
    for (auto cell = undo->cells.rbegin(); cell != undo->cells.rend(); ++cell)
        setCell(cell->row, cell->column, cell->value);
    // What came into memory during the transaction showed its rows, not those of the file.
    for (int column = 0; column < columnCount(); ++column)
        if (!undo->loaded[std::size_t(column)] && m_columns[std::size_t(column)].loaded)
            unload(column);
    // The marks as they were before all rows went include the rows that had gone one by one.
    if (undo->all)
        std::copy(undo->all->begin(), undo->all->end(), m_deleted.begin());
    for (const Row row : undo->deleted)
        m_deleted[row] = 0;
    std::fill(m_ascending.begin(), m_ascending.end(), 0); // found out without the rows that are back
    std::fill(m_deleted.begin() + undo->size, m_deleted.end(), char(1));
    m_deletedCount = Row(std::count(m_deleted.begin(), m_deleted.end(), char(1)));
}

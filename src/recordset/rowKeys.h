#pragma once

#include "recordset/tableImage.h"

#include <map>

/// A row as a cursor knows it: a slot of the image, or, with the highest bit set, a new row that only this
/// cursor has so far.
using RowId = std::uint32_t;
inline constexpr RowId kNewRowBit = 0x80000000U;

inline bool isNewRow(RowId row) {
    return (row & kNewRowBit) != 0;
}

/// Edits of a cursor that are not updated yet, by row; new rows come last, in the order of their AddNew.
class PendingEdits {
public:
    bool empty() const { return m_rows.empty(); }
    bool has(RowId row) const { return m_rows.count(row) > 0; }
    /// The pending value of a cell, null where there is none.
    const CellValue* find(RowId row, int column) const;
    void set(RowId row, int column, const CellValue& value);
    void addRow(RowId row) { m_rows[row]; }
    const CellChanges& cells(RowId row) const { return m_rows.at(row); }
    void drop(RowId row) { m_rows.erase(row); }
    void clear() { m_rows.clear(); }
    const std::map<RowId, CellChanges>& rows() const { return m_rows; }
    std::size_t size() const { return m_rows.size(); }

private:
    std::map<RowId, CellChanges> m_rows;
};

/// The rows that a cursor holds, in base order: the slots below `prefix`, then `rows`.
struct Keyset {
    Row prefix = 0;
    std::vector<RowId> rows;

    /// All of them in base order, deleted ones left out.
    std::vector<RowId> sequence(const TableImage& image) const;
    /// How many these are.
    std::size_t count(const TableImage& image) const;
    /// Those of these rows that it holds, in base order.
    std::vector<RowId> inBaseOrder(std::vector<RowId> some) const;
};

/// One column of a sort, by image column.
struct SortKey {
    int column = 0;
    bool descending = false;
};

/// Whether the rows of a keyset stand in the ascending order of a column as they are stored. False for a
/// column of texts.
bool ascends(const Keyset& keyset, const SortKey& key, const TableImage& image);

/// `rows` in the order of the keys, stable; Null first ascending, last descending. Pending values count.
std::vector<RowId> sortedRows(std::vector<RowId> rows, const std::vector<SortKey>& keys,
                              const TableImage& image, const PendingEdits& edits);

/// Sorts indexes by their keys (one a possible index), stable.
void stableSort(std::vector<quint32>& order, const std::vector<quint64>& keys);

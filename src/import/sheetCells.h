#pragma once

#include "import/sourceRows.h"

#include <string>
#include <string_view>
#include <vector>

/// Texts in UTF-8 one behind the other, told apart by their number.
class TextHeap {
public:
    /// Gives the text's number. Throws ImportError where there are more texts than a table can hold.
    quint32 add(std::string_view text);
    quint32 count() const { return quint32(m_ends.size()); }
    std::string_view text(quint32 number) const {
        const std::size_t start = number == 0 ? 0 : m_ends[number - 1];
        return std::string_view(m_bytes).substr(start, m_ends[number] - start);
    }

private:
    std::string m_bytes;
    std::vector<quint32> m_ends;
};

/// The cells of a worksheet, sparse, in the order in which they come: by rows mostly, not always.
class SheetCells {
public:
    /// Rows and columns that a worksheet of a kind can have.
    struct Bounds {
        int rows;
        int columns;
    };
    static constexpr Bounds kWidest{1 << 20, 1 << 14};

    /// `shared`: texts that several cells may have. `bounds`: within the widest.
    SheetCells(const TextHeap& shared, const Bounds& bounds)
        : m_shared(shared)
        , m_bounds(bounds) {}

    /// A cell beyond the bounds is left out.
    void put(int row, int column, std::string_view text);
    /// The same with one of the shared texts; without it there is no cell.
    void putShared(int row, int column, quint32 number);

    /// The cells as a table that begins at the first cell there is; its first row names the columns. Of cells
    /// written twice the later one counts. There are no cells without a value, so that the last one ends the
    /// last row that counts.
    void table(RowSink& sink);

private:
    /// Row, column, whether its text is shared, and the text's number; 20, 14, 1 and 29 bits.
    using Cell = quint64;

    static quint64 placeOf(Cell cell) { return cell >> 30; }
    static int rowOf(Cell cell) { return int(cell >> 44); }
    static int columnOf(Cell cell) { return int(placeOf(cell) & (kWidest.columns - 1)); }
    std::string_view textOf(Cell cell) const;
    bool holds(int row, int column) const {
        return row >= 0 && row < m_bounds.rows && column >= 0 && column < m_bounds.columns;
    }
    void add(int row, int column, quint32 text);
    void putInOrder();

    const TextHeap& m_shared;
    Bounds m_bounds;
    TextHeap m_own;
    std::vector<Cell> m_cells;
};

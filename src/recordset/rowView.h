#pragma once

#include "recordset/rowKeys.h"

#include <optional>
#include <vector>

/// The ordered rows that a cursor shows. A deleted row leaves a hole, so that deleting costs no move of a
/// million entries; `place` is an index with holes counted, `position` one without. Both count from 0.
class RowView {
public:
    using Place = std::uint32_t;

    void assign(std::vector<RowId> rows);
    void clear() { assign({}); }

    Place size() const { return Place(m_rows.size() - m_holes.size()); }
    /// Calls `visit(row)` for every row in order.
    template <typename Visit> void each(Visit&& visit) const {
        for (Place place = 0; place < end(); ++place)
            if (m_holes.empty() || !isHole(place))
                visit(m_rows[place]);
    }
    /// One past the last place.
    Place end() const { return Place(m_rows.size()); }
    RowId at(Place place) const { return m_rows[place]; }
    Place positionOf(Place place) const;
    Place placeAt(Place position) const;
    std::optional<Place> find(RowId row) const;
    /// First place from `place` on that is no hole, or end().
    Place liveFrom(Place place) const;
    /// Last place before `place` that is no hole, or nothing.
    std::optional<Place> liveBefore(Place place) const;

    void append(RowId row);
    void replace(Place place, RowId row);
    void punch(Place place);
    /// Closes the holes if there are many; `tracked` goes on naming the same gap between rows.
    void tidy(Place& tracked);

private:
    bool isHole(Place place) const;
    void buildInverse() const;
    bool foundInTail(RowId row, Place& place) const;

    std::vector<RowId> m_rows;
    std::vector<Place> m_holes;           // ascending
    bool m_ascending = true;              // rows ascend, so that one is found by halving
    mutable std::vector<Place> m_inverse; // slot -> place, built on the first search of an unordered view
};

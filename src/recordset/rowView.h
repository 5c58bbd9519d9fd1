#pragma once

#include "recordset/rowKeys.h"

#include <algorithm>
#include <optional>
#include <vector>

/// The ordered rows that a cursor shows: the slots below a prefix, which take no memory, and rows one by one
/// behind them. A deleted row leaves a hole, so that deleting costs no move of a million entries; `place` is
/// an index with holes counted, `position` one without. Both count from 0.
class RowView {
public:
    using Place = std::uint32_t;
    /// With more holes than these a view is packed.
    static constexpr std::size_t kMostHoles = 4096;

    /// These rows in this order.
    void assign(std::vector<RowId> rows) { assign(0, {}, std::move(rows)); }
    /// The slots below `prefix` without `holes` (ascending), then these rows, none of which is below it.
    void assign(Row prefix, std::vector<Place> holes, std::vector<RowId> rows);
    void clear() { assign({}); }

    Place size() const { return end() - Place(m_holes.size()); }
    /// Calls `visit(row)` for every row in order.
    template <typename Visit> void each(Visit&& visit) const {
        Place place = 0;
        for (const Place hole : m_holes) {
            eachFrom(place, hole, visit);
            place = hole + 1;
        }
        eachFrom(place, end(), visit);
    }
    /// One past the last place.
    Place end() const { return m_prefix + Place(m_rows.size()); }
    RowId at(Place place) const { return place < m_prefix ? place : m_rows[place - m_prefix]; }
    Place positionOf(Place place) const;
    Place placeAt(Place position) const;
    std::optional<Place> find(RowId row) const;
    /// Whether the rows ascend from the first place to the last.
    bool ascends() const { return m_ascending; }
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
    template <typename Visit> void eachFrom(Place first, Place last, Visit&& visit) const {
        for (; first < std::min(last, Place(m_prefix)); ++first)
            visit(RowId(first));
        for (; first < last; ++first)
            visit(m_rows[first - m_prefix]);
    }
    bool isHole(Place place) const;
    void joinPrefix();
    std::optional<Place> findBehind(RowId row) const;
    void buildInverse() const;
    bool foundInTail(RowId row, Place& place) const;

    Row m_prefix = 0;
    std::vector<RowId> m_rows;            // behind the prefix
    std::vector<Place> m_holes;           // ascending
    bool m_ascending = true;              // rows behind the prefix ascend, so that one is found by halving
    mutable std::vector<Place> m_inverse; // slot, counted from the prefix, -> place: built on the first
                                          // search of an unordered view
};

/// All rows of a keyset in base order, deleted ones left out.
RowView wholeView(const Keyset& keyset, const TableImage& image);

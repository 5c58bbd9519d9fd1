#include "recordset/rowView.h"

#include <algorithm>

namespace {
constexpr std::size_t kMostHoles = 4096;
constexpr RowView::Place kNowhere = 0xFFFFFFFFU;
} // namespace

void RowView::assign(std::vector<RowId> rows) {
    m_rows = std::move(rows);
    m_holes.clear();
    m_inverse.clear();
    m_ascending = std::is_sorted(m_rows.begin(), m_rows.end());
}

bool RowView::isHole(Place place) const {
    return std::binary_search(m_holes.begin(), m_holes.end(), place);
}

RowView::Place RowView::positionOf(Place place) const {
    return place - Place(std::lower_bound(m_holes.begin(), m_holes.end(), place) - m_holes.begin());
}

RowView::Place RowView::placeAt(Place position) const {
    // The hole number i has holes[i] - i rows before it; those with no more than `position` lie in front.
    Place low = 0;
    Place high = Place(m_holes.size());
    while (low < high) {
        const Place middle = (low + high) / 2;
        if (m_holes[middle] - middle <= position)
            low = middle + 1;
        else
            high = middle;
    }
    return position + low;
}

void RowView::buildInverse() const {
    Row top = 0;
    for (const RowId row : m_rows)
        if (!isNewRow(row))
            top = std::max(top, row + 1);
    m_inverse.assign(top, kNowhere);
    for (Place place = 0; place < end(); ++place)
        if (!isNewRow(m_rows[place]))
            m_inverse[m_rows[place]] = place;
}

bool RowView::foundInTail(RowId row, Place& place) const {
    constexpr Place tail = 64;
    const Place last = end() > tail ? end() - tail : 0;
    for (place = end(); place > last;)
        if (m_rows[--place] == row)
            return true;
    place = kNowhere;
    return false;
}

std::optional<RowView::Place> RowView::find(RowId row) const {
    Place place = kNowhere;
    if (m_ascending) {
        const auto at = std::lower_bound(m_rows.begin(), m_rows.end(), row);
        if (at != m_rows.end() && *at == row)
            place = Place(at - m_rows.begin());
    } else if (isNewRow(row)) {
        const auto at = std::find(m_rows.rbegin(), m_rows.rend(), row);
        if (at != m_rows.rend())
            place = Place(m_rows.rend() - at) - 1;
    } else if (m_inverse.empty() && foundInTail(row, place)) {
        // A row added a moment ago stands at the end.
    } else {
        if (m_inverse.empty())
            buildInverse();
        if (row < m_inverse.size())
            place = m_inverse[row];
    }
    return place == kNowhere || isHole(place) ? std::nullopt : std::optional(place);
}

RowView::Place RowView::liveFrom(Place place) const {
    while (place < end() && isHole(place))
        ++place;
    return place;
}

std::optional<RowView::Place> RowView::liveBefore(Place place) const {
    while (place > 0)
        if (!isHole(--place))
            return place;
    return std::nullopt;
}

void RowView::append(RowId row) {
    m_ascending = m_ascending && (m_rows.empty() || m_rows.back() < row);
    m_rows.push_back(row);
    m_inverse.clear();
}

void RowView::replace(Place place, RowId row) {
    m_rows[place] = row;
    m_ascending = m_ascending && (place == 0 || m_rows[place - 1] < row) &&
                  (place + 1 == end() || row < m_rows[place + 1]);
    m_inverse.clear();
}

void RowView::punch(Place place) {
    m_holes.insert(std::lower_bound(m_holes.begin(), m_holes.end(), place), place);
}

void RowView::tidy(Place& tracked) {
    if (m_holes.size() <= kMostHoles)
        return;
    tracked = positionOf(tracked);
    std::vector<RowId> rows;
    rows.reserve(size());
    std::size_t hole = 0;
    for (Place place = 0; place < end(); ++place) {
        if (hole < m_holes.size() && m_holes[hole] == place)
            ++hole;
        else
            rows.push_back(m_rows[place]);
    }
    assign(std::move(rows));
}

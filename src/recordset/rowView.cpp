#include "recordset/rowView.h"

#include <algorithm>

namespace {
constexpr RowView::Place kNowhere = 0xFFFFFFFFU;
} // namespace

RowView wholeView(const Keyset& keyset, const TableImage& image) {
    RowView view;
    if (image.deletedCount() > RowView::kMostHoles) {
        view.assign(keyset.sequence(image));
        return view;
    }
    std::vector<RowId> behind;
    for (const RowId row : keyset.rows)
        if (isNewRow(row) || !image.isDeleted(row))
            behind.push_back(row);
    view.assign(keyset.prefix, image.deletedBelow(keyset.prefix), std::move(behind));
    return view;
}

void RowView::assign(Row prefix, std::vector<Place> holes, std::vector<RowId> rows) {
    m_prefix = prefix;
    m_rows = std::move(rows);
    m_holes = std::move(holes);
    m_inverse.clear();
    m_ascending = std::is_sorted(m_rows.begin(), m_rows.end());
    joinPrefix();
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
    Row top = m_prefix;
    for (const RowId row : m_rows)
        if (!isNewRow(row))
            top = std::max(top, row + 1);
    m_inverse.assign(top - m_prefix, kNowhere);
    for (Place place = m_prefix; place < end(); ++place)
        if (const RowId row = at(place); !isNewRow(row))
            m_inverse[row - m_prefix] = place;
}

bool RowView::foundInTail(RowId row, Place& place) const {
    constexpr Place tail = 64;
    const Place last = std::max(Place(m_prefix), end() > tail ? end() - tail : 0);
    for (place = end(); place > last;)
        if (at(--place) == row)
            return true;
    place = kNowhere;
    return false;
}

/// The place of a row behind the prefix, holes and all.
std::optional<RowView::Place> RowView::findBehind(RowId row) const {
    Place place = kNowhere;
    if (m_ascending) {
        const auto found = std::lower_bound(m_rows.begin(), m_rows.end(), row);
        if (found != m_rows.end() && *found == row)
            place = m_prefix + Place(found - m_rows.begin());
    } else if (isNewRow(row)) {
        const auto found = std::find(m_rows.rbegin(), m_rows.rend(), row);
        if (found != m_rows.rend())
            place = m_prefix + Place(m_rows.rend() - found) - 1;
    } else if (m_inverse.empty() && foundInTail(row, place)) {
        // A row added a moment ago stands at the end.
    } else {
        if (m_inverse.empty())
            buildInverse();
        if (row - m_prefix < m_inverse.size())
            place = m_inverse[row - m_prefix];
    }
    return place == kNowhere ? std::nullopt : std::optional(place);
}

std::optional<RowView::Place> RowView::find(RowId row) const {
    const auto place = row < m_prefix ? std::optional<Place>(row) : findBehind(row);
    return place && !isHole(*place) ? place : std::nullopt;
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

/// A row that goes on where the prefix ends belongs to it.
void RowView::joinPrefix() {
    if (m_rows.size() != 1 || m_rows.front() != m_prefix)
        return;
    ++m_prefix;
    m_rows.clear();
    m_ascending = true;
}

void RowView::append(RowId row) {
    m_ascending = m_ascending && (m_rows.empty() || m_rows.back() < row);
    m_rows.push_back(row);
    m_inverse.clear();
    joinPrefix();
}

void RowView::replace(Place place, RowId row) {
    if (at(place) == row)
        return;
    const std::size_t index = place - m_prefix; // the rows of the prefix are what they are
    m_rows[index] = row;
    m_ascending = m_ascending && (index == 0 || m_rows[index - 1] < row) &&
                  (index + 1 == m_rows.size() || row < m_rows[index + 1]);
    m_inverse.clear();
    joinPrefix();
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
    each([&rows](RowId row) { rows.push_back(row); });
    assign(std::move(rows));
}

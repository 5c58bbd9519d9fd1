#include "recordset/error.h"
#include "recordset/predicate.h"
#include "recordset/recordset.h"

#include <algorithm>

namespace {

[[noreturn]] void noCurrentRow() {
    fail(ErrorNumber::NoCurrentRow, QStringLiteral("没有当前记录"));
}

} // namespace

bool Recordset::isBOF() const {
    requireOpen();
    return place() == Place::BeforeFirst || place() == Place::None;
}

bool Recordset::isEOF() const {
    requireOpen();
    return place() == Place::AfterLast || place() == Place::None;
}

void Recordset::goFirst() {
    m_position = m_view.size() == 0 ? Position{Place::None, 0} : Position{Place::OnRow, m_view.liveFrom(0)};
}

void Recordset::moveToEnd(bool last) {
    requireOpen();
    if (place() == Place::None)
        noCurrentRow();
    goFirst();
    if (last && place() == Place::OnRow)
        m_position.at = *m_view.liveBefore(m_view.end());
    settle();
}

void Recordset::MoveFirst() {
    moveToEnd(false);
}

void Recordset::MoveLast() {
    moveToEnd(true);
}

void Recordset::MoveNext() {
    requireOpen();
    if (place() == Place::AfterLast || place() == Place::None)
        noCurrentRow();
    const RowView::Place from = place() == Place::BeforeFirst ? 0
                                : place() == Place::OnRow     ? m_position.at + 1
                                                              : m_position.at;
    const RowView::Place next = m_view.liveFrom(from);
    if (place() == Place::BeforeFirst && m_view.size() == 0)
        m_position = {Place::None, 0};
    else
        m_position =
            next < m_view.end() ? Position{Place::OnRow, next} : Position{Place::AfterLast, m_view.end()};
    settle();
}

void Recordset::MovePrevious() {
    requireOpen();
    if (place() == Place::BeforeFirst || place() == Place::None)
        noCurrentRow();
    const auto previous = m_view.liveBefore(place() == Place::AfterLast ? m_view.end() : m_position.at);
    if (previous)
        m_position = {Place::OnRow, *previous};
    else if (place() == Place::AfterLast)
        m_position = {Place::None, 0};
    else
        m_position = {Place::BeforeFirst, 0};
    settle();
}

int Recordset::RecordCount() const {
    requireOpen();
    return int(m_view.size());
}

int Recordset::wholeCount() const {
    requireOpen();
    return int(m_keyset.count(*m_image));
}

int Recordset::AbsolutePosition() const {
    requireOpen();
    if (m_view.size() == 0)
        return -1;
    switch (place()) {
    case Place::OnRow:
        return int(m_view.positionOf(m_position.at)) + 1;
    case Place::BeforeFirst:
        return -2;
    case Place::AfterLast:
        return -3;
    default:
        return -1;
    }
}

void Recordset::setAbsolutePosition(int position) {
    requireOpen();
    if (m_view.size() == 0)
        noCurrentRow();
    if (position <= 0)
        fail(ErrorNumber::BadText, QStringLiteral("位置无效：%1").arg(position));
    if (position > RecordCount())
        m_position = {Place::AfterLast, m_view.end()};
    else
        m_position = {Place::OnRow, m_view.placeAt(RowView::Place(position - 1))};
    settle();
}

int Recordset::PageSize() const {
    requireOpen();
    return m_pageSize;
}

void Recordset::setPageSize(int rows) {
    requireOpen();
    m_pageSize = rows;
}

int Recordset::PageCount() const {
    requireOpen();
    return m_pageSize < 1 ? 0 : int((qint64(RecordCount()) + m_pageSize - 1) / m_pageSize);
}

int Recordset::AbsolutePage() const {
    const int position = AbsolutePosition();
    if (position < 0)
        return position;
    return m_pageSize < 1 ? -1 : (position - 1) / m_pageSize + 1;
}

void Recordset::setAbsolutePage(int page) {
    requireOpen();
    const qint64 position = (qint64(page) - 1) * m_pageSize + 1;
    setAbsolutePosition(int(std::clamp<qint64>(position, -1, INT32_MAX)));
}

::Bookmark Recordset::Bookmark() const {
    return {m_opening, requireRow()};
}

void Recordset::setBookmark(const ::Bookmark& bookmark) {
    requireOpen();
    const auto inserted = m_insertedAs.find(bookmark.row);
    const RowId row = inserted == m_insertedAs.end() ? bookmark.row : inserted->second;
    if (bookmark.opening != m_opening || !moveToRow(row))
        fail(ErrorNumber::BadText, QStringLiteral("书签无效"));
}

bool Recordset::moveToRow(RowId row) {
    const auto place = m_view.find(row);
    if (!place)
        return false;
    m_position = {Place::OnRow, *place};
    settle();
    return true;
}

QString Recordset::Filter() const {
    requireOpen();
    return m_filterText;
}

QString Recordset::Sort() const {
    requireOpen();
    return m_sortText;
}

void Recordset::show(RowView view) {
    m_view = std::move(view);
    m_judged = m_keyset.rows.size();
    ++m_viewVersion;
    notify([](RecordsetObserver& observer) { observer.viewReset(); });
}

void Recordset::showAllRows() {
    show(viewOf({}, m_sort));
}

bool Recordset::standsInOrder(const std::vector<SortKey>& keys) const {
    return keys.empty() || (keys.size() == 1 && m_edits.empty() && ascends(m_keyset, keys.front(), *m_image));
}

RowView Recordset::viewOf(const QString& filter, const std::vector<SortKey>& keys) const {
    if (filter.isEmpty() && standsInOrder(keys))
        return wholeView(m_keyset, *m_image);
    RowView view;
    view.assign(sorted(rowsOfFilter(filter), keys));
    return view;
}

std::vector<RowId> Recordset::sorted(std::vector<RowId> rows, const std::vector<SortKey>& keys) const {
    if (keys.empty())
        return rows; // moved, not copied
    return sortedRows(std::move(rows), keys, *m_image, m_edits);
}

std::vector<RowId> Recordset::rowsOfFilter(const QString& text) const {
    return text.isEmpty() ? m_keyset.sequence(*m_image)
                          : Predicate(parseFilter(text), *m_image, m_fields).select(m_keyset, m_edits);
}

void Recordset::setFilter(const QString& text) {
    requireOpen();
    RowView view = viewOf(text, m_sort);
    m_filterText = text;
    show(std::move(view));
    goFirst();
    settle();
}

/// The rows shown under a Filter, in base order. The Filter is not worked out again, since a changed row
/// keeps its membership until the next one; only rows added behind the Filter have never been judged by it.
std::vector<RowId> Recordset::rowsUnderFilter() const {
    std::vector<RowId> shown;
    shown.reserve(m_view.size());
    m_view.each([&shown](RowId row) { shown.push_back(row); });
    const auto added = m_keyset.rows.begin() + std::ptrdiff_t(m_judged);
    std::vector<RowId> rows =
        Keyset{m_keyset.prefix, {m_keyset.rows.begin(), added}}.inBaseOrder(std::move(shown));
    if (added == m_keyset.rows.end())
        return rows;
    const Keyset unjudged{0, {added, m_keyset.rows.end()}};
    for (const RowId row : Predicate(parseFilter(m_filterText), *m_image, m_fields).select(unjudged, m_edits))
        rows.push_back(row);
    return rows;
}

std::vector<SortKey> Recordset::sortKeys(const QString& text) const {
    std::vector<SortKey> keys;
    for (const SortColumn& column : parseSort(text)) {
        const int index = m_image->columnIndex(column.column);
        if (std::find(m_fields.begin(), m_fields.end(), index) == m_fields.end())
            fail(ErrorNumber::BadText, QStringLiteral("排序的列不存在：%1").arg(column.column), text);
        keys.push_back({index, column.descending});
    }
    return keys;
}

void Recordset::setSort(const QString& text) {
    requireOpen();
    std::vector<SortKey> keys = sortKeys(text);
    RowView view;
    if (m_filterText.isEmpty())
        view = viewOf({}, keys);
    else
        view.assign(sorted(rowsUnderFilter(), keys));
    m_sort = std::move(keys);
    m_sortText = text;
    show(std::move(view));
    goFirst();
    settle();
}

int Recordset::searchStart(int skip, Direction direction) const {
    const int step = direction == Direction::Forward ? skip : -skip;
    switch (place()) {
    case Place::None:
        noCurrentRow();
    case Place::AfterLast:
        return RecordCount();
    case Place::BeforeFirst:
        return step;
    default: {
        const RowView::Place at = m_view.liveFrom(m_position.at);
        return int(at < m_view.end() ? m_view.positionOf(at) : m_view.size()) + step;
    }
    }
}

std::optional<int> Recordset::positionOf(RowId row) const {
    const auto place = m_view.find(row);
    return place ? std::optional(int(m_view.positionOf(*place))) : std::nullopt;
}

/// Position of the first of these rows, which ascend as the view does, that stands in the view at or behind
/// `from`.
std::optional<int> Recordset::firstShown(const std::vector<Row>& rows, RowId from) const {
    for (auto row = std::lower_bound(rows.begin(), rows.end(), from); row != rows.end(); ++row)
        if (const auto position = positionOf(*row))
            return position;
    return std::nullopt;
}

/// Position of the first match from `from` on by way of the column's index, the count of rows (or -1
/// backward) where there is none; nothing where the index cannot tell or a scan is as quick.
std::optional<int> Recordset::findIndexed(const Predicate& predicate, int from, bool forward) const {
    constexpr int worthAnIndex = 5000;
    constexpr std::size_t fewMatches = 200;
    const int nowhere = forward ? RecordCount() : -1;
    if (!m_edits.empty() || m_image->isPicture() || RecordCount() < worthAnIndex)
        return std::nullopt;
    const auto rows = predicate.indexedRows();
    const bool halves = forward && m_view.ascends();
    if (!rows || (rows->size() > fewMatches && !halves))
        return std::nullopt;
    if (halves)
        return from >= nowhere ? nowhere : firstShown(*rows, rowAt(std::max(0, from))).value_or(nowhere);
    int best = nowhere;
    for (const Row row : *rows)
        if (const auto position = positionOf(row);
            position &&
            (forward ? *position >= from && *position < best : *position <= from && *position > best))
            best = *position;
    return best;
}

void Recordset::Find(const QString& text, int skip, Direction direction) {
    requireOpen();
    Condition condition;
    condition.clause = parseFind(text);
    const Predicate predicate(condition, *m_image, m_fields);
    const bool forward = direction == Direction::Forward;
    int position = searchStart(skip, direction);
    const int count = RecordCount();
    if (!forward && position >= count)
        position = count - 1;
    const auto scanTo = [&](int end) {
        while (position != end && !predicate.test(rowAt(position), m_edits))
            position += forward ? 1 : -1;
        return position != end;
    };
    // The next match is often near, and then it costs less than all that the index knows.
    constexpr int near = 500;
    const bool inside = position >= 0 && position < count;
    const int far = forward ? count : -1;
    const int end =
        forward ? int(std::min<qint64>(count, qint64(position) + near)) : std::max(-1, position - near);
    if (inside && !scanTo(end) && end != far) {
        if (const auto found = findIndexed(predicate, position, forward))
            position = *found;
        else
            scanTo(far);
    }
    if (position >= 0 && position < count)
        m_position = {Place::OnRow, m_view.placeAt(RowView::Place(position))};
    else
        m_position = forward ? Position{Place::AfterLast, m_view.end()} : Position{Place::BeforeFirst, 0};
    settle();
}

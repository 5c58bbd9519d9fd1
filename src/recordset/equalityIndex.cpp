#include "recordset/equalityIndex.h"

#include <algorithm>

namespace {

/// As many rows behind the index are scanned before it is worth building anew.
constexpr std::size_t kLongestTail = 50'000;
/// With more changed rows than these it is built anew as well.
constexpr std::size_t kMostChanged = 2'000;

template <typename IsWanted>
void scan(Row from, Row to, const std::vector<char>& deleted, IsWanted&& isWanted, std::vector<Row>& rows) {
    for (Row row = from; row < to; ++row)
        if (isWanted(row) && !deleted[row])
            rows.push_back(row);
}

void scanEqual(const ColumnStore& column, const std::vector<TextPool::Code>& codes, Row from, Row to,
               const std::vector<char>& deleted, std::vector<Row>& rows) {
    // One code is by far the most frequent case, and compared alone it is a plain loop.
    if (codes.size() == 1)
        return scan(
            from, to, deleted, [&, code = codes.front()](Row row) { return column.codes[row] == code; },
            rows);
    scan(
        from, to, deleted,
        [&](Row row) { return std::find(codes.begin(), codes.end(), column.codes[row]) != codes.end(); },
        rows);
}

} // namespace

void EqualityIndex::build(const ColumnStore& column) {
    m_changed.clear();
    m_covered = Row(column.codes.size());
    m_starts.assign(column.pool.last() + 2, 0);
    for (const TextPool::Code code : column.codes)
        ++m_starts[code + 1];
    for (std::size_t code = 1; code < m_starts.size(); ++code)
        m_starts[code] += m_starts[code - 1];
    m_rows.resize(m_covered);
    std::vector<Row> next(m_starts.begin(), m_starts.end() - 1);
    for (Row row = 0; row < m_covered; ++row)
        m_rows[next[column.codes[row]]++] = row;
}

bool EqualityIndex::isCurrent(const ColumnStore& column) const {
    return m_covered > 0 && column.codes.size() - m_covered <= kLongestTail &&
           m_changed.size() <= kMostChanged;
}

std::size_t EqualityIndex::postings(TextPool::Code code) const {
    return std::size_t(code) + 1 < m_starts.size() ? m_starts[code + 1] - m_starts[code] : 0;
}

std::optional<std::size_t> EqualityIndex::countEqual(const ColumnStore& column,
                                                     const std::vector<TextPool::Code>& codes) const {
    if (!isCurrent(column))
        return std::nullopt;
    std::size_t count = m_changed.size() + column.codes.size() - m_covered;
    for (const TextPool::Code code : codes)
        count += postings(code);
    return count;
}

void EqualityIndex::collect(const ColumnStore& column, const std::vector<TextPool::Code>& codes, Row limit,
                            const std::vector<char>& deleted, std::vector<Row>& rows) {
    if (codes.empty())
        return;
    if (m_covered == 0 && ++m_uses < 2)
        return scanEqual(column, codes, 0, limit, deleted, rows);
    if (!isCurrent(column))
        build(column);
    const auto first = std::ptrdiff_t(rows.size());
    const auto isWanted = [&](Row row) { return row < limit && !deleted[row]; };
    for (const TextPool::Code code : codes)
        for (std::size_t i = 0; i < postings(code); ++i)
            if (const Row row = m_rows[m_starts[code] + i];
                isWanted(row) && !std::binary_search(m_changed.begin(), m_changed.end(), row))
                rows.push_back(row);
    for (const Row row : m_changed)
        if (isWanted(row) && std::find(codes.begin(), codes.end(), column.codes[row]) != codes.end())
            rows.push_back(row);
    if (codes.size() > 1 || !m_changed.empty())
        std::sort(rows.begin() + first, rows.end());
    scanEqual(column, codes, m_covered, limit, deleted, rows);
}

void EqualityIndex::cellChanged(Row row) {
    if (row >= m_covered || m_changed.size() > kMostChanged)
        return; // with so many the index is built anew at its next use
    const auto place = std::lower_bound(m_changed.begin(), m_changed.end(), row);
    if (place == m_changed.end() || *place != row)
        m_changed.insert(place, row);
}

std::size_t EqualityIndex::memory() const {
    return (m_starts.capacity() + m_rows.capacity() + m_changed.capacity()) * sizeof(Row);
}

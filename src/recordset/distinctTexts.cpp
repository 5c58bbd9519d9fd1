#include "recordset/distinctTexts.h"

#include <algorithm>

namespace {

/// Each moves the codes behind it; with more doubts than these all are put in order anew.
constexpr std::size_t kFew = 200;

} // namespace

void DistinctTexts::count(const ColumnStore& column, const std::vector<char>& deleted) {
    clear();
    m_counts.assign(std::size_t(column.pool.last()) + 1, 0);
    for (std::size_t row = 0; row < column.codes.size(); ++row)
        m_counts[column.codes[row]] += deleted[row] == 0;
}

void DistinctTexts::change(TextPool::Code code, int by) {
    if (!isCounted())
        return;
    if (code >= m_counts.size())
        m_counts.resize(std::size_t(code) + 1, 0);
    const qint32 before = std::exchange(m_counts[code], m_counts[code] + by);
    if ((before == 0) != (m_counts[code] == 0))
        m_doubts.push_back(code);
}

void DistinctTexts::orderAll(const std::vector<quint32>& ranks) {
    m_order.clear();
    for (TextPool::Code code = 0; code < m_counts.size(); ++code)
        if (m_counts[code] > 0)
            m_order.push_back(code);
    std::sort(m_order.begin(), m_order.end(),
              [&](TextPool::Code a, TextPool::Code b) { return ranks[a] < ranks[b]; });
    m_isOrdered = true;
    m_hasTies = std::adjacent_find(m_order.begin(), m_order.end(), [&](TextPool::Code a, TextPool::Code b) {
                    return ranks[a] == ranks[b];
                }) != m_order.end();
}

void DistinctTexts::settle(TextPool::Code code, const std::vector<quint32>& ranks) {
    const auto place =
        std::lower_bound(m_order.begin(), m_order.end(), code,
                         [&](TextPool::Code a, TextPool::Code b) { return ranks[a] < ranks[b]; });
    const bool stands = place != m_order.end() && *place == code;
    if (stands && m_counts[code] == 0)
        m_order.erase(place);
    else if (!stands && m_counts[code] > 0) {
        m_hasTies = m_hasTies || (place != m_order.end() && ranks[*place] == ranks[code]);
        m_order.insert(place, code);
    }
}

const std::vector<TextPool::Code>* DistinctTexts::ordered(const std::vector<quint32>& ranks) {
    const std::vector<TextPool::Code> doubts = std::exchange(m_doubts, {});
    // Among texts that share a rank halving would miss one.
    if (!m_isOrdered || m_hasTies || doubts.size() > kFew)
        orderAll(ranks);
    else
        for (const TextPool::Code code : doubts)
            settle(code, ranks);
    return m_hasTies ? nullptr : &m_order;
}

std::size_t DistinctTexts::memory() const {
    return m_counts.capacity() * sizeof(qint32) + m_order.capacity() * sizeof(TextPool::Code);
}

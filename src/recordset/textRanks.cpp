#include "recordset/textRanks.h"

#include "recordset/collation.h"

#include <algorithm>
#include <numeric>

namespace {

/// Each new text moves the ranks behind it; with more of them than these all are put in order anew.
constexpr std::size_t kFew = 50;

} // namespace

const std::vector<quint32>& TextRanks::of(const TextPool& pool) {
    const std::size_t size = std::size_t(pool.last()) + 1;
    if (m_ranks.empty() || m_ranks.size() + kFew < size)
        rankAll(pool);
    while (m_ranks.size() < size)
        take(pool, TextPool::Code(m_ranks.size()));
    return m_ranks;
}

void TextRanks::rankAll(const TextPool& pool) {
    m_order.resize(pool.last());
    std::iota(m_order.begin(), m_order.end(), TextPool::Code(1));
    const std::vector<quint32> ranks = Collation().ranks(pool, m_order);
    m_ranks.assign(1, 0);
    m_ranks.insert(m_ranks.end(), ranks.begin(), ranks.end());
    std::sort(m_order.begin(), m_order.end(),
              [this](TextPool::Code a, TextPool::Code b) { return m_ranks[a] < m_ranks[b]; });
}

void TextRanks::take(const TextPool& pool, TextPool::Code code) {
    const Collation collation;
    const auto place =
        std::lower_bound(m_order.begin(), m_order.end(), code, [&](TextPool::Code a, TextPool::Code b) {
            return collation.compare(pool.text(a), pool.text(b)) < 0;
        });
    const quint32 before = place == m_order.begin() ? 0 : m_ranks[*(place - 1)];
    if (place != m_order.end() && collation.compare(pool.text(*place), pool.text(code)) == 0) {
        m_ranks.push_back(m_ranks[*place]);
    } else {
        std::for_each(place, m_order.end(), [this](TextPool::Code behind) { ++m_ranks[behind]; });
        m_ranks.push_back(before + 1);
    }
    m_order.insert(place, code);
}

std::size_t TextRanks::memory() const {
    return m_ranks.capacity() * sizeof(quint32) + m_order.capacity() * sizeof(TextPool::Code);
}

#include "recordset/textRanks.h"

#include "recordset/collation.h"

#include <algorithm>
#include <numeric>

namespace {

/// With more new texts than this share of all, all are put in order anew.
constexpr std::size_t kFewOf = 20;

} // namespace

const std::vector<quint32>& TextRanks::of(const TextPool& pool) {
    const std::size_t size = std::size_t(pool.last()) + 1;
    if (m_ranks.empty() || (size - m_ranks.size()) * kFewOf > size)
        rankAll(pool);
    else if (m_ranks.size() < size)
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

/// Puts the codes from `first` on among those that are ranked.
void TextRanks::take(const TextPool& pool, TextPool::Code first) {
    const Collation collation;
    const auto compared = [&](TextPool::Code a, TextPool::Code b) {
        return collation.compare(pool.text(a), pool.text(b));
    };
    std::vector<TextPool::Code> fresh(pool.last() + 1 - first);
    std::iota(fresh.begin(), fresh.end(), first);
    std::sort(fresh.begin(), fresh.end(),
              [&](TextPool::Code a, TextPool::Code b) { return compared(a, b) < 0; });
    std::vector<TextPool::Code> order;
    order.reserve(m_order.size() + fresh.size());
    auto from = m_order.cbegin();
    for (const TextPool::Code code : fresh) {
        const auto place =
            std::lower_bound(from, m_order.cend(), code,
                             [&](TextPool::Code a, TextPool::Code b) { return compared(a, b) < 0; });
        order.insert(order.end(), from, place);
        order.push_back(code);
        from = place;
    }
    order.insert(order.end(), from, m_order.cend());
    const auto isTie = [&](TextPool::Code a, TextPool::Code b) {
        return a < first && b < first ? m_ranks[a] == m_ranks[b] : compared(a, b) == 0;
    };
    std::vector<quint32> ranks(std::size_t(pool.last()) + 1, 0);
    for (std::size_t i = 0; i < order.size(); ++i) {
        const quint32 before = i == 0 ? 0 : ranks[order[i - 1]];
        ranks[order[i]] = i > 0 && isTie(order[i - 1], order[i]) ? before : before + 1;
    }
    m_ranks = std::move(ranks);
    m_order = std::move(order);
}

std::size_t TextRanks::memory() const {
    return m_ranks.capacity() * sizeof(quint32) + m_order.capacity() * sizeof(TextPool::Code);
}

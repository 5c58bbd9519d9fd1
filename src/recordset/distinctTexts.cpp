#include "recordset/distinctTexts.h"

#include <algorithm>
#include <iterator>

namespace {

/// Each moves the codes behind it; more of them are settled in one pass.
constexpr std::size_t kFew = 64;

struct ByRank {
    const std::vector<quint32>& ranks;
    bool operator()(TextPool::Code a, TextPool::Code b) const {
        return ranks[a] != ranks[b] ? ranks[a] < ranks[b] : a < b;
    }
};

int countTies(const std::vector<TextPool::Code>& order, const std::vector<quint32>& ranks) {
    int ties = 0;
    for (std::size_t i = 1; i < order.size(); ++i)
        ties += ranks[order[i - 1]] == ranks[order[i]];
    return ties;
}

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
    std::sort(m_order.begin(), m_order.end(), ByRank{ranks});
    m_isOrdered = true;
    m_ties = countTies(m_order, ranks);
}

int DistinctTexts::tiesAround(Codes::const_iterator place, const std::vector<quint32>& ranks) const {
    const bool before = place != m_order.begin() && ranks[*(place - 1)] == ranks[*place];
    const bool behind = place + 1 != m_order.end() && ranks[*(place + 1)] == ranks[*place];
    return int(before) + int(behind);
}

/// Lets a code take its place or give it up.
void DistinctTexts::settle(TextPool::Code code, const std::vector<quint32>& ranks) {
    auto place = std::lower_bound(m_order.begin(), m_order.end(), code, ByRank{ranks});
    const bool stands = place != m_order.end() && *place == code;
    if (stands == (m_counts[code] > 0))
        return;
    // Among three that share a rank the one in the middle parts a pair and makes two.
    if (stands) {
        const int ties = tiesAround(place, ranks);
        place = m_order.erase(place);
        m_ties -= ties == 2 ? 1 : ties;
    } else {
        place = m_order.insert(place, code);
        const int ties = tiesAround(place, ranks);
        m_ties += ties == 2 ? 1 : ties;
    }
}

/// The same for many codes in one pass over all.
void DistinctTexts::settleMany(Codes doubts, const std::vector<quint32>& ranks) {
    const ByRank byRank{ranks};
    std::sort(doubts.begin(), doubts.end(), byRank);
    doubts.erase(std::unique(doubts.begin(), doubts.end()), doubts.end());
    Codes codes;
    codes.reserve(m_order.size() + doubts.size());
    std::set_difference(m_order.begin(), m_order.end(), doubts.begin(), doubts.end(),
                        std::back_inserter(codes), byRank);
    std::erase_if(doubts, [this](TextPool::Code code) { return m_counts[code] == 0; });
    const auto middle = codes.insert(codes.end(), doubts.begin(), doubts.end());
    std::inplace_merge(codes.begin(), middle, codes.end(), byRank);
    m_order = std::move(codes);
    m_ties = countTies(m_order, ranks);
}

const std::vector<TextPool::Code>* DistinctTexts::ordered(const std::vector<quint32>& ranks) {
    Codes doubts = std::exchange(m_doubts, {});
    if (!m_isOrdered)
        orderAll(ranks);
    else if (doubts.size() > kFew)
        settleMany(std::move(doubts), ranks);
    else
        for (const TextPool::Code code : doubts)
            settle(code, ranks);
    return m_ties > 0 ? nullptr : &m_order;
}

std::size_t DistinctTexts::memory() const {
    return m_counts.capacity() * sizeof(qint32) + m_order.capacity() * sizeof(TextPool::Code);
}

#include "recordset/collation.h"

#include <QLocale>

#include <algorithm>
#include <numeric>
#include <optional>

namespace {

QString utf16(std::string_view text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

/// Letters of a text that its sort key is made of: nearly every text is far shorter. Longer ones whose keys
/// are alike are compared whole.
constexpr qsizetype kKeyLetters = 1000;
constexpr std::size_t kKeyBytes = 4 * kKeyLetters;

QString keyText(std::string_view text) {
    return utf16(text.substr(0, kKeyBytes)).left(kKeyLetters);
}

constexpr std::size_t kMostPackedDigits = 18; // 11 to the power of 18 fits into 64 bits

/// A text of ASCII digits as a number whose order is the order of the text, or nothing. The collator orders
/// such texts digit by digit, a shorter one first, so that most keys need no call of it.
std::optional<quint64> packedDigits(std::string_view text) {
    if (text.size() > kMostPackedDigits)
        return std::nullopt;
    quint64 packed = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        packed = packed * 11 + quint64(c - '0' + 1);
    }
    for (std::size_t i = text.size(); i < kMostPackedDigits; ++i)
        packed *= 11;
    return packed;
}

/// Ranks of items already ordered by `order`, with `same(a, b)` telling ties between neighbours.
template <typename Same> std::vector<quint32> ranked(const std::vector<quint32>& order, Same&& same) {
    std::vector<quint32> ranks(order.size());
    quint32 rank = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i == 0 || !same(order[i - 1], order[i]))
            ++rank;
        ranks[order[i]] = rank;
    }
    return ranks;
}

std::vector<quint32> identity(std::size_t size) {
    std::vector<quint32> order(size);
    std::iota(order.begin(), order.end(), 0U);
    return order;
}

std::optional<std::vector<quint32>> digitRanks(const TextPool& pool,
                                               const std::vector<TextPool::Code>& codes) {
    std::vector<std::pair<quint64, quint32>> keys;
    keys.reserve(codes.size());
    for (const TextPool::Code code : codes) {
        const auto packed = packedDigits(pool.text(code));
        if (!packed)
            return std::nullopt;
        keys.emplace_back(*packed, quint32(keys.size()));
    }
    std::sort(keys.begin(), keys.end());
    std::vector<quint32> ranks(keys.size());
    quint32 rank = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (i == 0 || keys[i - 1].first != keys[i].first)
            ++rank;
        ranks[keys[i].second] = rank;
    }
    return ranks;
}

} // namespace

Collation::Collation()
    : m_collator(QLocale(QLocale::Chinese, QLocale::China)) {
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
}

int Collation::compare(std::string_view a, std::string_view b) const {
    return m_collator.compare(utf16(a), utf16(b));
}

std::vector<quint32> Collation::ranks(const TextPool& pool, const std::vector<TextPool::Code>& codes) const {
    if (auto ranks = digitRanks(pool, codes))
        return *std::move(ranks);
    std::vector<QCollatorSortKey> keys;
    keys.reserve(codes.size());
    for (const TextPool::Code code : codes)
        keys.push_back(m_collator.sortKey(keyText(pool.text(code))));
    // A text of so many bytes may be longer than its key.
    const auto isLong = [&](quint32 i) { return pool.text(codes[i]).size() > std::size_t(kKeyLetters); };
    const auto compared = [&](quint32 a, quint32 b) {
        const int byKey = keys[a].compare(keys[b]);
        if (byKey != 0 || a == b || (!isLong(a) && !isLong(b)))
            return byKey;
        return compare(pool.text(codes[a]), pool.text(codes[b]));
    };
    std::vector<quint32> order = identity(codes.size());
    std::sort(order.begin(), order.end(), [&](quint32 a, quint32 b) { return compared(a, b) < 0; });
    return ranked(order, [&](quint32 a, quint32 b) { return compared(a, b) == 0; });
}

#include "import/sourceColumn.h"

#include <utility>

namespace {

/// By the length and the last bytes: of texts in a column the beginnings are often the same.
std::size_t placeOf(std::string_view text) {
    std::uint64_t word = text.size();
    for (std::size_t i = text.size() > 8 ? text.size() - 8 : 0; i < text.size(); ++i)
        word = word << 8 ^ std::uint8_t(text[i]) ^ word >> 56;
    return std::size_t(word * 0x9E3779B97F4A7C15ULL >> 48);
}

} // namespace

SourceColumn::SourceColumn()
    : m_ends(1, 0) {}

void SourceColumn::add(std::string_view text) {
    Code& recent = m_recent[placeOf(text) % kRecent];
    if (recent == TextPool::Null || held(recent) != text) {
        m_bytes.append(text);
        m_ends.push_back(std::uint32_t(m_bytes.size()));
        recent = Code(m_ends.size() - 1);
    }
    m_codes.push_back(recent);
}

ColumnStore SourceColumn::moveInto(const ColumnInfo& info) {
    ColumnStore store;
    store.info = info;
    store.loaded = true;
    store.pool = TextPool(std::exchange(m_bytes, {}), std::exchange(m_ends, {}));
    store.codes = std::exchange(m_codes, {});
    *this = SourceColumn();
    return store;
}

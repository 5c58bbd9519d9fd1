#include "recordset/textPool.h"

#include "recordset/error.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

constexpr std::size_t kFirstSlots = 64;

char foldedByte(char c) {
    return c >= 'A' && c <= 'Z' ? char(c + 32) : c;
}

/// Eight bytes at a time: adds 0x20 to every byte that is A-Z.
std::uint64_t foldedWord(std::uint64_t word) {
    constexpr std::uint64_t ones = 0x0101010101010101ULL;
    const std::uint64_t low = word & (0x7F * ones);
    const std::uint64_t aboveZ = low + (0x7F - 'Z') * ones;
    const std::uint64_t fromA = low + (0x80 - 'A') * ones;
    const std::uint64_t upper = ~word & (0x80 * ones) & (fromA ^ aboveZ);
    return word | (upper >> 2);
}

std::uint32_t foldedHash(std::string_view text) {
    constexpr std::uint64_t prime = 0x9E3779B97F4A7C15ULL;
    std::uint64_t hash = text.size() * prime;
    std::size_t at = 0;
    std::uint64_t word = 0;
    for (; at + 8 <= text.size(); at += 8) {
        std::memcpy(&word, text.data() + at, 8);
        hash = (hash ^ foldedWord(word)) * prime;
        hash ^= hash >> 32;
    }
    if (at < text.size()) {
        word = 0;
        std::memcpy(&word, text.data() + at, text.size() - at);
        hash = (hash ^ foldedWord(word)) * prime;
        hash ^= hash >> 32;
    }
    return std::uint32_t(hash ^ (hash >> 29));
}

} // namespace

std::string foldedAscii(std::string_view text) {
    std::string folded(text);
    for (char& c : folded)
        c = foldedByte(c);
    return folded;
}

bool equalFolded(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (foldedByte(a[i]) != foldedByte(b[i]))
            return false;
    return true;
}

TextPool::TextPool()
    : m_data(std::make_shared<Data>()) {
    m_data->ends.assign(1, 0);
    m_data->slots.resize(kFirstSlots);
}

TextPool::TextPool(std::string bytes, std::vector<std::uint32_t> ends)
    : m_data(std::make_shared<Data>()) {
    m_data->bytes = std::move(bytes);
    m_data->ends = std::move(ends);
    m_data->hasCaseVariants = true; // a text under two codes is found as variants are
}

TextPool TextPool::copy() const {
    TextPool copy;
    *copy.m_data = *m_data;
    return copy;
}

TextPool::Code TextPool::intern(std::string_view text) {
    if (m_data->slots.empty())
        placeAll();
    const std::uint32_t hash = foldedHash(text);
    const std::size_t mask = m_data->slots.size() - 1;
    std::size_t at = hash & mask;
    for (; m_data->slots[at].code != Null; at = (at + 1) & mask) {
        if (m_data->slots[at].hash != hash)
            continue;
        const std::string_view held = this->text(m_data->slots[at].code);
        if (held == text)
            return m_data->slots[at].code;
        m_data->hasCaseVariants = m_data->hasCaseVariants || equalFolded(held, text);
    }
    if (m_data->bytes.size() + text.size() > UINT32_MAX)
        fail(ErrorNumber::Engine, QStringLiteral("一列文字的总量超过 4 GB"));
    m_data->bytes.append(text);
    m_data->ends.push_back(std::uint32_t(m_data->bytes.size()));
    const Code code = last();
    m_data->slots[at] = {code, hash};
    if (std::size_t(code) * 2 > m_data->slots.size())
        grow();
    return code;
}

template <typename Visit> void TextPool::visitChain(std::string_view text, Visit&& visit) const {
    if (m_data->slots.empty())
        placeAll();
    const std::uint32_t hash = foldedHash(text);
    const std::size_t mask = m_data->slots.size() - 1;
    for (std::size_t at = hash & mask; m_data->slots[at].code != Null; at = (at + 1) & mask)
        if (m_data->slots[at].hash == hash)
            visit(m_data->slots[at].code);
}

TextPool::Code TextPool::find(std::string_view text) const {
    Code found = Null;
    visitChain(text, [&](Code code) {
        if (this->text(code) == text)
            found = code;
    });
    return found;
}

std::vector<TextPool::Code> TextPool::findEqual(std::string_view text) const {
    std::vector<Code> codes;
    visitChain(text, [&](Code code) {
        if (equalFolded(this->text(code), text))
            codes.push_back(code);
    });
    return codes;
}

std::vector<TextPool::Code> TextPool::containing(std::string_view folded) const {
    const auto isLetter = [](char c) { return c >= 'a' && c <= 'z'; };
    // All texts are searched as the one piece that they are.
    const std::string foldedBytes =
        std::any_of(folded.begin(), folded.end(), isLetter) ? foldedAscii(m_data->bytes) : std::string();
    const std::string_view bytes = foldedBytes.empty() ? m_data->bytes : foldedBytes;
    const std::vector<std::uint32_t>& ends = m_data->ends;
    std::vector<Code> codes;
    const char* from = bytes.data();
    const char* const last = from + bytes.size();
    auto end = ends.begin();
    while (const void* found = memmem(from, std::size_t(last - from), folded.data(), folded.size())) {
        const auto at = std::size_t(static_cast<const char*>(found) - bytes.data());
        end = std::upper_bound(end, ends.end(), at);
        const bool isInside = at + folded.size() <= *end; // and does not go on into the next text
        if (isInside)
            codes.push_back(Code(end - ends.begin()));
        from = bytes.data() + (isInside ? *end : at + 1);
    }
    return codes;
}

TextPool::Code TextPool::foldClass(Code code) const {
    if (code == Null || !m_data->hasCaseVariants)
        return code;
    Code lowest = code;
    for (const Code other : findEqual(text(code)))
        lowest = std::min(lowest, other);
    return lowest;
}

std::size_t TextPool::memory() const {
    return m_data->bytes.capacity() + m_data->ends.capacity() * sizeof(m_data->ends[0]) +
           m_data->slots.capacity() * sizeof(Slot);
}

void TextPool::grow() {
    std::vector<Slot> old(m_data->slots.size() * 2);
    old.swap(m_data->slots);
    for (const Slot& slot : old)
        if (slot.code != Null)
            place(slot);
}

void TextPool::place(Slot slot) const {
    const std::size_t mask = m_data->slots.size() - 1;
    std::size_t at = slot.hash & mask;
    while (m_data->slots[at].code != Null)
        at = (at + 1) & mask;
    m_data->slots[at] = slot;
}

void TextPool::placeAll() const {
    m_data->slots.resize(std::bit_ceil(std::max(kFirstSlots, m_data->ends.size() * 2)));
    for (Code code = 1; code <= last(); ++code)
        place({code, foldedHash(text(code))});
}

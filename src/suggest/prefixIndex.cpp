#include "suggest/prefixIndex.h"

#include <algorithm>
#include <cstring>

namespace {

bool beginsWith(const char* key, const std::string& prefix) {
    return std::strncmp(key, prefix.c_str(), prefix.size()) == 0;
}

/// The first eight bytes of a key as a number whose order is theirs.
quint64 headOf(const char* key) {
    quint64 head = 0;
    for (int i = 0; i < 8; ++i) {
        head = head << 8 | quint8(*key);
        if (*key)
            ++key;
    }
    return head;
}

quint32 hashOf(const QStringList& keys) {
    return quint32(qHash(keys, 0));
}

} // namespace

struct PrefixIndex::Found {
    const std::string prefix;
    const std::size_t most;
    const std::function<bool(qint64)>& wanted;
    std::vector<std::pair<std::string, qint64>> rows; // with the key that each was found by

    bool has(qint64 row) const {
        return std::any_of(rows.begin(), rows.end(), [row](const auto& each) { return each.second == row; });
    }
};

void PrefixIndex::add(qint64 row, const QStringList& keys) {
    for (const QString& key : keys) {
        const std::string bytes = key.toStdString();
        if (bytes.empty())
            continue;
        m_entries.push_back({quint32(m_text.size()), quint32(m_rows.size())});
        m_text.append(bytes.c_str(), std::strlen(bytes.c_str()) + 1);
    }
    m_rows.push_back(row);
    m_hashes.push_back(hashOf(keys));
}

void PrefixIndex::build() {
    struct Keyed {
        quint64 head;
        Entry entry;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(m_entries.size());
    for (const Entry& entry : m_entries)
        keyed.push_back({headOf(m_text.data() + entry.key), entry});
    std::sort(keyed.begin(), keyed.end(), [this](const Keyed& a, const Keyed& b) {
        if (a.head != b.head)
            return a.head < b.head;
        const int order = std::strcmp(m_text.data() + a.entry.key, m_text.data() + b.entry.key);
        return order != 0 ? order < 0 : a.entry.row < b.entry.row;
    });
    // Every key stands once in the text, in order, so that neighbours lie beside each other.
    std::string text;
    quint32 last = 0;
    for (std::size_t i = 0; i < keyed.size(); ++i) {
        const char* key = m_text.data() + keyed[i].entry.key;
        if (i == 0 || std::strcmp(key, text.data() + last) != 0) {
            last = quint32(text.size());
            text.append(key, std::strlen(key) + 1);
        }
        m_entries[i] = {last, keyed[i].entry.row};
    }
    text.shrink_to_fit();
    m_text = std::move(text);
    m_entries.shrink_to_fit();
    m_rows.shrink_to_fit();
    m_hashes.shrink_to_fit();
}

bool PrefixIndex::isBuilt(qint64 row, const QStringList& keys) const {
    const auto at = std::lower_bound(m_rows.begin(), m_rows.end(), row);
    return at != m_rows.end() && *at == row && m_hashes[std::size_t(at - m_rows.begin())] == hashOf(keys);
}

void PrefixIndex::put(qint64 row, const QStringList& keys) {
    if (m_later.count(row) == 0 && isBuilt(row, keys))
        return;
    std::vector<std::string>& held = m_later[row];
    for (const std::string& key : held)
        m_laterKeys.erase({key, row});
    held.clear();
    for (const QString& key : keys)
        if (!key.isEmpty()) {
            held.push_back(key.toStdString());
            m_laterKeys.emplace(held.back(), row);
        }
}

void PrefixIndex::addBuilt(Found& found) const {
    auto entry = std::lower_bound(m_entries.begin(), m_entries.end(), found.prefix,
                                  [this](const Entry& each, const std::string& prefix) {
                                      return std::strcmp(m_text.data() + each.key, prefix.c_str()) < 0;
                                  });
    for (std::size_t rows = 0; rows < found.most && entry != m_entries.end(); ++entry) {
        const char* key = m_text.data() + entry->key;
        if (!beginsWith(key, found.prefix))
            break;
        const qint64 row = m_rows[entry->row];
        if (m_later.count(row) > 0 || found.has(row) || !found.wanted(row))
            continue;
        found.rows.emplace_back(key, row);
        ++rows;
    }
}

void PrefixIndex::addLater(Found& found) const {
    auto key = m_laterKeys.lower_bound({found.prefix, std::numeric_limits<qint64>::min()});
    for (std::size_t rows = 0; rows < found.most && key != m_laterKeys.end(); ++key) {
        if (!beginsWith(key->first.c_str(), found.prefix))
            break;
        if (found.has(key->second) || !found.wanted(key->second))
            continue;
        found.rows.push_back(*key);
        ++rows;
    }
}

std::vector<qint64> PrefixIndex::find(const QString& prefix, int most,
                                      const std::function<bool(qint64)>& wanted) const {
    Found found{prefix.toStdString(), std::size_t(std::max(0, most)), wanted, {}};
    if (found.prefix.empty())
        return {};
    addBuilt(found);
    addLater(found);
    std::stable_sort(found.rows.begin(), found.rows.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<qint64> rows;
    for (std::size_t i = 0; i < std::min(found.rows.size(), found.most); ++i)
        rows.push_back(found.rows[i].second);
    return rows;
}

std::size_t PrefixIndex::memory() const {
    std::size_t bytes = m_text.capacity() + m_entries.capacity() * sizeof(Entry) +
                        m_rows.capacity() * (sizeof(qint64) + sizeof(quint32));
    constexpr std::size_t node = 64; // of a tree or a hash, about
    for (const auto& [row, keys] : m_later)
        for (const std::string& key : keys)
            bytes += 2 * (key.size() + node);
    return bytes;
}

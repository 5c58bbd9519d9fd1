#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

/// Finds the rows one of whose keys begins with a text, without looking at the others. Most keys are added at
/// once and put in order by build(); rows that change later are put beside them. Rows are named by their
/// rowids. It knows no table.
class PrefixIndex {
public:
    /// Adds the keys of the next row; rows come in ascending order, before build().
    void add(qint64 row, const QStringList& keys);
    /// Puts what was added in order. More can be added with put() alone.
    void build();

    /// The keys of a row are these now, or the row is new; costs nothing where they were these before.
    void put(qint64 row, const QStringList& keys);
    /// Rows that were put with other keys: what each had before stays in memory.
    int putCount() const { return int(m_later.size()); }

    /// The first rows in the order of their keys that have a key beginning with `prefix`, each once, at most
    /// `most`; those that are not `wanted` are passed over. Nothing for an empty text.
    std::vector<qint64> find(const QString& prefix, int most,
                             const std::function<bool(qint64 row)>& wanted) const;

    /// Bytes in memory.
    std::size_t memory() const;

private:
    struct Entry {
        quint32 key; // where it begins in m_text
        quint32 row; // index into m_rows
    };
    struct Found;

    /// Whether build() put a row in order with these keys.
    bool isBuilt(qint64 row, const QStringList& keys) const;
    void addBuilt(Found& found) const;
    void addLater(Found& found) const;

    std::string m_text; // keys in UTF-8, each ended by a NUL
    std::vector<Entry> m_entries;
    std::vector<qint64> m_rows;
    std::vector<quint32> m_hashes; // of the keys of each
    std::set<std::pair<std::string, qint64>> m_laterKeys;
    std::unordered_map<qint64, std::vector<std::string>> m_later; // keys of the rows that were put
};

#pragma once

#include "recordset/columnStore.h"

/// The distinct texts of a column's live rows in the order of texts, Null first, kept while rows come and go.
class DistinctTexts {
public:
    /// Counts the rows anew; `deleted` has one mark a row slot.
    void count(const ColumnStore& column, const std::vector<char>& deleted);
    bool isCounted() const { return !m_counts.empty(); }
    /// Rows that bear a text came or went.
    void add(TextPool::Code code) { change(code, 1); }
    void remove(TextPool::Code code) { change(code, -1); }
    void clear() { *this = {}; }
    /// Their codes in the order of `ranks` (see TextRanks::of), null where two of them share a rank: which of
    /// those is shown, and where, is told by their rows alone.
    const std::vector<TextPool::Code>* ordered(const std::vector<quint32>& ranks);
    std::size_t memory() const;

private:
    void change(TextPool::Code code, int by);
    void orderAll(const std::vector<quint32>& ranks);
    void settle(TextPool::Code code, const std::vector<quint32>& ranks);

    std::vector<qint32> m_counts;         // rows by code
    std::vector<TextPool::Code> m_order;  // those with rows
    std::vector<TextPool::Code> m_doubts; // codes whose first row came or whose last one went since
    bool m_isOrdered = false;
    bool m_hasTies = false;
};

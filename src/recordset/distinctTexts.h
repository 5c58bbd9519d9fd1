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
    using Codes = std::vector<TextPool::Code>;

    void change(TextPool::Code code, int by);
    void orderAll(const std::vector<quint32>& ranks);
    void settle(TextPool::Code code, const std::vector<quint32>& ranks);
    void settleMany(Codes doubts, const std::vector<quint32>& ranks);
    int tiesAround(Codes::const_iterator place, const std::vector<quint32>& ranks) const;

    std::vector<qint32> m_counts; // rows by code
    Codes m_order;                // those with rows, by rank and code
    Codes m_doubts;               // codes whose first row came or whose last one went since
    bool m_isOrdered = false;
    int m_ties = 0; // neighbours that share a rank
};

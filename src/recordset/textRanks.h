#pragma once

#include "recordset/textPool.h"

#include <QtGlobal>

/// The order of the texts of a pool. It follows a pool that takes texts in, and a few new ones cost no new
/// sorting.
class TextRanks {
public:
    /// Rank of every code in the order of texts, texts that it finds equal sharing one; index 0 is Null's and
    /// holds 0.
    const std::vector<quint32>& of(const TextPool& pool);
    void clear() { *this = {}; }
    std::size_t memory() const;

private:
    void rankAll(const TextPool& pool);
    void take(const TextPool& pool, TextPool::Code first);

    std::vector<quint32> m_ranks;
    std::vector<TextPool::Code> m_order; // the codes by rank
};

#pragma once

#include "recordset/textPool.h"

#include <QCollator>

#include <string_view>
#include <vector>

/// The order of texts: digits, then Chinese by pinyin, then letters, without case (the collator of the
/// Chinese locale). For order alone; equality is equalFolded.
class Collation {
public:
    Collation();

    int compare(std::string_view a, std::string_view b) const;
    /// Ranks from 1 of the given codes of a pool, in their order; texts that the collation finds equal share
    /// one.
    std::vector<quint32> ranks(const TextPool& pool, const std::vector<TextPool::Code>& codes) const;

private:
    QCollator m_collator;
};

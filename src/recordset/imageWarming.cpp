// The part of an image that takes over columns which a thread has read.
#include "recordset/connection.h"
#include "recordset/dialect.h"
#include "recordset/statement.h"
#include "recordset/tableImage.h"

#include <QScopeGuard>

#include <algorithm>

WarmSource TableImage::beginWarming() {
    m_changedRows.emplace();
    const bool isDense = size() > 0 && m_rowids.front() == 1 && m_rowids.back() == qint64(size());
    return {size(), isDense ? std::vector<qint64>() : m_rowids, m_deleted};
}

void TableImage::endWarming() {
    m_changedRows.reset();
}

ColumnStore TableImage::columnCopy(int column) const {
    ColumnStore copy = this->column(column);
    copy.pool = copy.pool.copy();
    return copy;
}

/// Rows that may be others than the thread saw: changed, deleted or added since.
std::vector<Row> TableImage::rowsToPutRight(Row known) const {
    std::vector<Row> rows = *m_changedRows;
    for (Row row = known; row < size(); ++row)
        rows.push_back(row);
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void TableImage::putRight(WarmedColumn& warmed, Row row) const {
    const bool isText = warmed.store.info.type == ColumnType::Text;
    const bool wasSeen = row < warmed.missing.size() && !warmed.missing[row];
    if (warmed.distinct && wasSeen)
        warmed.distinct->remove(warmed.store.codes[row]);
    if (warmed.read && !isDeleted(row)) {
        Statement& statement =
            m_connection->cached(QStringLiteral("SELECT %1 FROM %2 WHERE rowid = ?")
                                     .arg(quotedName(warmed.store.info.name), quotedName(m_table)));
        const auto reset = qScopeGuard([&statement] { statement.reset(); });
        statement.bind(1, m_rowids[row]);
        if (statement.step())
            warmed.store.set(row, statement.value(0, warmed.store.info.type));
    }
    if (warmed.index)
        warmed.index->cellChanged(row);
    if (warmed.distinct && isText && !isDeleted(row))
        warmed.distinct->add((warmed.read ? warmed.store : m_columns[std::size_t(warmed.column)]).codes[row]);
}

bool TableImage::adopt(WarmedColumn&& warmed) {
    constexpr std::size_t most = 5000; // rows that are read one by one
    const auto at = std::size_t(warmed.column);
    const bool stands = m_columns[at].loaded;
    if (!m_changedRows || m_dropped || warmed.read == stands)
        return false;
    if (!warmed.read && !m_columns[at].pool.isSameAs(warmed.original))
        return false;
    const Row known = Row(warmed.missing.size());
    const std::vector<Row> rows = rowsToPutRight(known);
    if (rows.size() > most)
        return false;
    if (warmed.read)
        warmed.store.resize(m_rowids.size());
    for (const Row row : rows)
        putRight(warmed, row);
    if (warmed.read) {
        m_columns[at] = std::move(warmed.store);
        m_columns[at].loaded = true;
        m_ascending[at] = 0;
    }
    if (warmed.index)
        m_indexes[at] = *std::move(warmed.index);
    if (warmed.ranks)
        m_ranks[at] = *std::move(warmed.ranks);
    if (warmed.distinct)
        m_distinct[at] = *std::move(warmed.distinct);
    return true;
}

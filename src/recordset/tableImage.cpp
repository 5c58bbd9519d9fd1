#include "recordset/tableImage.h"

#include "recordset/connection.h"
#include "recordset/dialect.h"
#include "recordset/error.h"
#include "recordset/imageLoader.h"
#include "recordset/shownText.h"

#include <QScopeGuard>

#include <algorithm>
#include <cstring>
#include <numeric>

namespace {

/// Rows whose columns are not in memory are read one by one; after this many the columns are read whole.
constexpr int kMostRowReads = 1000;
constexpr std::size_t kMostRowsKept = 500;

template <typename T> std::size_t bytes(const std::vector<T>& cells) {
    return cells.capacity() * sizeof(T);
}

} // namespace

TableImage::TableImage(Connection& connection, QString table, const std::vector<ColumnInfo>& columns)
    : TableImage(columns) {
    m_connection = &connection;
    m_table = std::move(table);
    for (ColumnStore& column : m_columns)
        column.loaded = false;
}

TableImage::TableImage(const std::vector<ColumnInfo>& columns)
    : m_columns(columns.size())
    , m_indexes(columns.size())
    , m_ranks(columns.size())
    , m_distinct(columns.size())
    , m_ascending(columns.size(), 0) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        m_columns[i].info = columns[i];
        m_columns[i].loaded = true;
        if (columns[i].type == ColumnType::Serial)
            m_serialColumn = int(i);
    }
}

TableImage::TableImage(std::vector<ColumnStore> columns)
    : m_columns(std::move(columns))
    , m_indexes(m_columns.size())
    , m_ranks(m_columns.size())
    , m_distinct(m_columns.size())
    , m_ascending(m_columns.size(), 0) {
    const ColumnStore& first = m_columns.front();
    const std::size_t rows =
        first.codes.size() + first.numbers.size() + first.integers.size() + first.moments.size();
    m_rowids.resize(rows);
    std::iota(m_rowids.begin(), m_rowids.end(), qint64(1));
    m_deleted.assign(rows, 0);
}

void TableImage::loadRows(const QStringList& columns) {
    std::vector<int> indices;
    if (m_serialColumn >= 0)
        indices.push_back(m_serialColumn);
    for (const QString& column : columns)
        if (const int index = columnIndex(column); index >= 0 && index != m_serialColumn)
            indices.push_back(index);
    std::vector<ColumnInfo> wanted;
    for (const int index : indices)
        wanted.push_back(info(index));
    LoadedRows loaded = ::loadRows(*m_connection, m_table, wanted);
    m_rowids = std::move(loaded.rowids);
    m_deleted.assign(m_rowids.size(), 0);
    m_lastRowid = m_rowids.empty() ? 0 : m_rowids.back();
    for (std::size_t i = 0; i < indices.size(); ++i) {
        m_columns[std::size_t(indices[i])] = std::move(loaded.columns[i]);
        m_columns[std::size_t(indices[i])].loaded = true;
    }
    if (m_serialColumn >= 0)
        for (const qint32 number : m_columns[std::size_t(m_serialColumn)].integers)
            m_lastSerial = std::max(m_lastSerial, number);
}

void TableImage::load(const std::vector<int>& columns) const {
    std::vector<ColumnInfo> wanted;
    std::vector<ColumnStore*> targets;
    for (const int index : columns) {
        ColumnStore& target = m_columns[std::size_t(index)];
        if (target.loaded || std::find(targets.begin(), targets.end(), &target) != targets.end())
            continue;
        wanted.push_back(target.info);
        targets.push_back(&target);
    }
    if (targets.empty())
        return;
    if (m_dropped)
        fail(ErrorNumber::TableMissing, QStringLiteral("表 %1 已不存在").arg(m_table));
    LoadedRows loaded = ::loadRows(*m_connection, m_table, wanted);
    for (std::size_t i = 0; i < targets.size(); ++i) {
        if (loaded.rowids == m_rowids)
            *targets[i] = std::move(loaded.columns[i]);
        else
            fillColumn(*targets[i], loaded.columns[i], loaded.rowids);
        targets[i]->loaded = true;
    }
}

void TableImage::fillColumn(ColumnStore& column, const ColumnStore& loaded,
                            const std::vector<qint64>& rowids) const {
    const std::vector<Row> slots = rowsOf(rowids);
    if (slots.size() != rowids.size())
        fail(ErrorNumber::Engine, QStringLiteral("表 %1 被别的程序改动").arg(m_table));
    column = loaded.spread(slots, m_rowids.size());
}

void TableImage::takeColumns(const TableImage& source, const std::vector<Row>& rows,
                             const QStringList& but) const {
    if (rows.size() != m_rowids.size() || m_dropped)
        return;
    for (ColumnStore& column : m_columns) {
        const int from = source.columnIndex(column.info.name);
        if (column.loaded || from < 0 || !source.isLoaded(from) ||
            source.info(from).type != column.info.type || but.contains(column.info.name))
            continue;
        const ColumnInfo info = column.info;
        column = source.column(from).gathered(rows);
        column.info = info;
    }
}

void TableImage::loadAllColumns() const {
    std::vector<int> all;
    for (int i = 0; i < columnCount(); ++i)
        all.push_back(i);
    load(all);
}

int TableImage::columnIndex(const QString& name) const {
    for (int i = 0; i < columnCount(); ++i)
        if (info(i).name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

std::vector<Row> TableImage::deletedBelow(Row limit) const {
    std::vector<Row> rows;
    if (m_deletedCount == 0)
        return rows;
    const char* const first = m_deleted.data();
    for (const char* mark = first; mark && mark < first + limit; ++mark) {
        mark = static_cast<const char*>(std::memchr(mark, 1, std::size_t(first + limit - mark)));
        if (!mark)
            break;
        rows.push_back(Row(mark - first));
    }
    return rows;
}

std::optional<quint64> TableImage::ascendsTo(int column, Row limit) const {
    const ColumnStore& store = this->column(column);
    Row& known = m_ascending[std::size_t(column)];
    Row last = std::min(known, limit);
    while (last > 0 && isDeleted(last - 1))
        --last;
    quint64 before = last == 0 ? 0 : store.ordinal(last - 1);
    for (; known < limit; ++known) {
        if (isDeleted(known))
            continue;
        if (store.ordinal(known) < before)
            return std::nullopt;
        before = store.ordinal(known);
    }
    return before;
}

const ColumnStore& TableImage::column(int column) const {
    if (!m_columns[std::size_t(column)].loaded)
        load({column});
    return m_columns[std::size_t(column)];
}

TextPool::Code TableImage::internText(int column, const QString& text) const {
    const QByteArray utf8 = text.toUtf8();
    this->column(column);
    return m_columns[std::size_t(column)].pool.intern({utf8.constData(), std::size_t(utf8.size())});
}

bool TableImage::isHeld(int column) const {
    if (!m_columns[std::size_t(column)].loaded && (m_rowReads > kMostRowReads || m_dropped))
        loadAllColumns();
    return m_columns[std::size_t(column)].loaded;
}

CellValue TableImage::value(Row row, int column) const {
    if (isHeld(column))
        return m_columns[std::size_t(column)].value(row);
    const ReadRow& read = readRow(row);
    return read.cut[std::size_t(column)] ? this->column(column).value(row) : read.cells[std::size_t(column)];
}

QString TableImage::shown(Row row, int column) const {
    if (isHeld(column))
        return m_columns[std::size_t(column)].shown(row);
    const CellValue& value = readRow(row).cells[std::size_t(column)];
    const auto* text = std::get_if<QString>(&value);
    return text ? shownText(*text) : fieldText(value);
}

const TableImage::ReadRow& TableImage::readRow(Row row) const {
    const auto held = m_readRows.find(row);
    if (held != m_readRows.end())
        return held->second;
    if (m_readRows.size() >= kMostRowsKept)
        m_readRows.clear();
    Statement& statement =
        m_connection->cached(QStringLiteral("SELECT * FROM %1 WHERE rowid = ?").arg(quotedName(m_table)));
    statement.bind(1, m_rowids[row]);
    const auto reset = qScopeGuard([&statement] { statement.reset(); });
    ReadRow read{std::vector<CellValue>(m_columns.size()), std::vector<char>(m_columns.size())};
    if (statement.step())
        for (int i = 0; i < columnCount(); ++i)
            readCell(statement, i, read);
    ++m_rowReads; // one that failed costs nothing that reading all columns would save
    return m_readRows[row] = std::move(read);
}

void TableImage::readCell(const Statement& statement, int column, ReadRow& read) const {
    const auto at = std::size_t(column);
    const ColumnType type = info(column).type;
    read.cut[at] = type == ColumnType::Text && statement.bytes(column).size() > kMostShownBytes;
    read.cells[at] = read.cut[at] ? shownText(statement.bytes(column)) : statement.value(column, type);
}

std::vector<Row> TableImage::rowsOf(const std::vector<qint64>& rowids) const {
    std::vector<Row> rows;
    rows.reserve(rowids.size());
    auto from = m_rowids.begin();
    for (const qint64 rowid : rowids) {
        if (from != m_rowids.end() && *from != rowid)
            from = std::lower_bound(from, m_rowids.end(), rowid);
        if (from == m_rowids.end())
            break;
        if (*from != rowid)
            continue;
        const Row row = Row(from - m_rowids.begin());
        if (!isDeleted(row))
            rows.push_back(row);
        ++from;
    }
    return rows;
}

void TableImage::collectEqual(int column, const std::vector<TextPool::Code>& codes, Row limit,
                              std::vector<Row>& rows) const {
    m_indexes[std::size_t(column)].collect(this->column(column), codes, limit, m_deleted, rows);
}

std::optional<std::size_t> TableImage::countEqual(int column,
                                                  const std::vector<TextPool::Code>& codes) const {
    return m_indexes[std::size_t(column)].countEqual(this->column(column), codes);
}

const std::vector<quint32>& TableImage::textRanks(int column) const {
    return m_ranks[std::size_t(column)].of(this->column(column).pool);
}

const std::vector<TextPool::Code>* TableImage::distinctTexts(int column) const {
    const ColumnStore& store = this->column(column);
    if (store.pool.hasCaseVariants())
        return nullptr;
    DistinctTexts& distinct = m_distinct[std::size_t(column)];
    if (!distinct.isCounted())
        distinct.count(store, m_deleted);
    return distinct.ordered(textRanks(column));
}

void TableImage::requireWritable() const {
    if (isPicture())
        fail(ErrorNumber::ReadOnly, QStringLiteral("查询结果不能修改"));
    if (m_dropped)
        fail(ErrorNumber::TableMissing, QStringLiteral("表 %1 已不存在").arg(m_table));
}

template <typename Notice> void TableImage::tell(Notice&& notice) {
    const std::vector<ImageClient*> clients = m_clients;
    for (ImageClient* client : clients)
        if (std::find(m_clients.begin(), m_clients.end(), client) != m_clients.end())
            notice(*client);
}

void TableImage::setCell(Row row, int column, const CellValue& value) {
    ColumnStore& store = m_columns[std::size_t(column)];
    if (store.loaded) {
        const bool counts = !store.codes.empty() && !isDeleted(row);
        if (counts)
            m_distinct[std::size_t(column)].remove(store.codes[row]);
        store.set(row, value);
        if (counts)
            m_distinct[std::size_t(column)].add(store.codes[row]);
    }
    m_ascending[std::size_t(column)] = std::min(m_ascending[std::size_t(column)], row);
    m_indexes[std::size_t(column)].cellChanged(row);
}

Statement& TableImage::insertStatement(const CellChanges& cells) {
    const bool same =
        m_insertStatement &&
        std::equal(cells.begin(), cells.end(), m_insertedColumns.begin(), m_insertedColumns.end(),
                   [](const auto& cell, int column) { return cell.first == column; });
    if (same)
        return *m_insertStatement;
    m_insertedColumns.clear();
    QString names = QStringLiteral("rowid");
    QString marks = QStringLiteral("?");
    for (const auto& [column, value] : cells) {
        m_insertedColumns.push_back(column);
        names += QStringLiteral(", ") + quotedName(info(column).name);
        marks += QStringLiteral(", ?");
    }
    m_insertStatement = &m_connection->cached(
        QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(quotedName(m_table), names, marks));
    return *m_insertStatement;
}

Row TableImage::insert(CellChanges stored) {
    requireWritable();
    const auto isSerial = [this](const auto& cell) { return cell.first == m_serialColumn; };
    if (m_serialColumn >= 0 && std::none_of(stored.begin(), stored.end(), isSerial))
        stored.emplace_back(m_serialColumn, m_lastSerial + 1);
    Statement& statement = insertStatement(stored);
    statement.bind(1, m_lastRowid + 1);
    for (std::size_t i = 0; i < stored.size(); ++i)
        statement.bind(int(i) + 2, stored[i].second);
    m_connection->write(statement);

    const Row row = size();
    m_rowids.push_back(++m_lastRowid);
    m_deleted.push_back(0);
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (m_columns[i].loaded) {
            m_columns[i].appendNull();
            m_distinct[i].add(TextPool::Null);
        }
    for (const auto& [column, value] : stored) {
        setCell(row, column, value);
        if (column == m_serialColumn && !isNull(value))
            m_lastSerial = std::max(m_lastSerial, std::get<qint32>(value));
    }
    return row;
}

void TableImage::update(Row row, const CellChanges& cells) {
    requireWritable();
    QStringList assignments;
    for (const auto& [column, value] : cells)
        assignments << quotedName(info(column).name) + QStringLiteral(" = ?");
    Statement& statement =
        m_connection->cached(QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?")
                                 .arg(quotedName(m_table), assignments.join(QStringLiteral(", "))));
    for (std::size_t i = 0; i < cells.size(); ++i)
        statement.bind(int(i) + 1, cells[i].second);
    statement.bind(int(cells.size()) + 1, m_rowids[row]);
    m_connection->write(statement);
    noteCells(row, cells);
    for (const auto& [column, value] : cells)
        setCell(row, column, value);
    m_readRows.erase(row);
    if (m_changedRows)
        m_changedRows->push_back(row);
    tell([row](ImageClient& client) { client.rowUpdated(row); });
}

void TableImage::remove(Row row) {
    requireWritable();
    Statement& statement =
        m_connection->cached(QStringLiteral("DELETE FROM %1 WHERE rowid = ?").arg(quotedName(m_table)));
    statement.bind(1, m_rowids[row]);
    m_connection->write(statement);
    tell([row](ImageClient& client) { client.rowAboutToBeDeleted(row); });
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (!m_columns[i].codes.empty())
            m_distinct[i].remove(m_columns[i].codes[row]);
    m_deleted[row] = 1;
    ++m_deletedCount;
    if (m_changedRows)
        m_changedRows->push_back(row);
    if (m_undo)
        m_undo->deleted.push_back(row);
    tell([row](ImageClient& client) { client.rowDeleted(row); });
}

void TableImage::removeAll() {
    requireWritable();
    m_connection->write(QStringLiteral("DELETE FROM %1").arg(quotedName(m_table)));
    if (m_undo && !m_undo->all)
        m_undo->all = m_deleted;
    std::fill(m_deleted.begin(), m_deleted.end(), char(1));
    m_deletedCount = size();
    for (DistinctTexts& distinct : m_distinct)
        distinct.clear();
    endWarming(); // nothing is left to be read
    tell([](ImageClient& client) { client.allRowsDeleted(); });
}

void TableImage::appendPictureRow(const std::vector<CellValue>& cells) {
    m_rowids.push_back(qint64(m_rowids.size()) + 1);
    m_deleted.push_back(0);
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        m_columns[i].appendNull();
        m_columns[i].set(m_rowids.size() - 1, cells[i]);
    }
}

std::size_t TableImage::memory() const {
    std::size_t total = bytes(m_rowids) + bytes(m_deleted);
    for (const ColumnStore& column : m_columns)
        total += column.memory();
    return total;
}

std::size_t TableImage::indexMemory() const {
    std::size_t total = 0;
    for (const EqualityIndex& index : m_indexes)
        total += index.memory();
    for (const TextRanks& ranks : m_ranks)
        total += ranks.memory();
    for (const DistinctTexts& distinct : m_distinct)
        total += distinct.memory();
    return total;
}

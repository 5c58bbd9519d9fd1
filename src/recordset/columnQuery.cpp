#include "recordset/columnQuery.h"

#include "recordset/connection.h"
#include "recordset/dialectRun.h"
#include "recordset/groups.h"
#include "recordset/rowKeys.h"

#include <algorithm>
#include <numeric>

namespace {

/// The image columns that the rows are grouped by; nothing where one of them is not there.
std::optional<std::vector<int>> groupColumns(const TableImage& image, const SqlStatement& statement,
                                             const std::vector<SelectItem>& items) {
    QStringList names = statement.groupBy;
    if (statement.distinct)
        for (const SelectItem& item : items)
            names << item.column;
    std::vector<int> columns;
    for (const QString& name : names)
        columns.push_back(image.columnIndex(name));
    if (std::find(columns.begin(), columns.end(), -1) != columns.end())
        return std::nullopt;
    return columns;
}

bool same(const SelectItem& a, const SelectItem& b) {
    return a.kind == b.kind && a.column.compare(b.column, Qt::CaseInsensitive) == 0;
}

class ColumnQuery {
public:
    ColumnQuery(const TableImage& image, const SqlStatement& statement, const std::vector<SelectItem>& items,
                std::vector<int> groupBy)
        : m_image(image)
        , m_statement(statement)
        , m_items(items)
        , m_groupBy(std::move(groupBy)) {}

    /// Whether each column is a group's own, a count, or the sum of a column of numbers, and the order is by
    /// such columns.
    bool isAnswerable() const {
        for (const SelectItem& item : m_items) {
            const int column = m_image.columnIndex(item.column);
            if (column < 0 || !isAnswerable(item, column))
                return false;
        }
        return std::all_of(m_statement.orderBy.begin(), m_statement.orderBy.end(),
                           [this](const OrderItem& order) { return itemOf(order) >= 0; });
    }

    std::shared_ptr<TableImage> run(const std::vector<ColumnInfo>& columns, std::vector<Row> rows) {
        m_rows = std::move(rows);
        m_groups = groupRows(m_image, m_groupBy, m_rows);
        if (m_groupBy.empty())
            m_groups.firsts.resize(1, 0); // one row of totals, also over no rows
        m_figures.resize(m_items.size());
        for (std::size_t i = 0; i < m_items.size(); ++i)
            m_figures[i] = figuresOf(m_items[i]);
        const std::vector<Row> order = resultOrder();
        std::vector<ColumnStore> results;
        for (std::size_t i = 0; i < m_items.size(); ++i) {
            results.push_back(resultOf(i, order));
            results.back().info = columns[i];
            results.back().loaded = true;
        }
        return std::make_shared<TableImage>(std::move(results));
    }

private:
    bool isAnswerable(const SelectItem& item, int column) const {
        if (item.kind == SelectItem::Kind::Count)
            return true;
        if (item.kind == SelectItem::Kind::Sum)
            return m_image.info(column).type == ColumnType::Number;
        return std::find(m_groupBy.begin(), m_groupBy.end(), column) != m_groupBy.end();
    }

    /// The selected column that an order names, -1 where it selects none such.
    int itemOf(const OrderItem& order) const {
        for (std::size_t i = 0; i < m_items.size(); ++i)
            if (same(m_items[i], order.item))
                return int(i);
        return -1;
    }

    /// An aggregate's figures, one a group; empty for a group's own column.
    ColumnStore figuresOf(const SelectItem& item) const {
        const ColumnStore& source = m_image.column(m_image.columnIndex(item.column));
        ColumnStore figures;
        figures.info.type = item.kind == SelectItem::Kind::Sum ? ColumnType::Number : ColumnType::Integer;
        if (item.kind == SelectItem::Kind::Sum)
            figures.numbers = sumByGroup(source, m_rows, m_groups);
        else if (item.kind == SelectItem::Kind::Count)
            figures.integers = countByGroup(source, m_rows, m_groups);
        return figures;
    }

    ColumnStore resultOf(std::size_t item, const std::vector<Row>& order) const {
        if (m_items[item].isAggregate())
            return picked(m_figures[item], order);
        std::vector<Row> rows;
        for (const Row group : order)
            rows.push_back(m_groups.firsts[group]);
        return picked(m_image.column(m_image.columnIndex(m_items[item].column)), rows);
    }

    /// The groups in the order of the result, cut to the statement's Top.
    std::vector<Row> resultOrder() const {
        std::vector<Row> order = groupOrder();
        for (auto by = m_statement.orderBy.rbegin(); by != m_statement.orderBy.rend(); ++by)
            if (by->item.isAggregate())
                sortBy(order, m_figures[std::size_t(itemOf(*by))], by->descending);
        if (m_statement.top >= 0)
            order.resize(std::min(order.size(), std::size_t(m_statement.top)));
        return order;
    }

    /// Numbers of the groups, ordered by the statement's plain columns and then by the group columns.
    std::vector<Row> groupOrder() const {
        std::vector<Row> order(m_groups.firsts.size());
        std::iota(order.begin(), order.end(), 0U);
        if (m_groupBy.empty())
            return order;
        std::vector<SortKey> keys;
        for (const OrderItem& by : m_statement.orderBy)
            if (!by.item.isAggregate())
                keys.push_back({m_image.columnIndex(by.item.column), by.descending});
        for (const int column : m_groupBy)
            keys.push_back({column, false});
        const std::vector<RowId> sorted = sortedRows(m_groups.firsts, keys, m_image, {});
        std::vector<Row> groupOf(m_image.size());
        for (const Row group : order)
            groupOf[m_groups.firsts[group]] = group;
        for (std::size_t i = 0; i < sorted.size(); ++i)
            order[i] = groupOf[sorted[i]];
        return order;
    }

    static void sortBy(std::vector<Row>& order, const ColumnStore& result, bool descending) {
        std::vector<quint64> keys(order.size());
        for (Row group = 0; group < keys.size(); ++group)
            keys[group] = descending ? ~result.ordinal(group) : result.ordinal(group);
        stableSort(order, keys);
    }

    const TableImage& m_image;
    const SqlStatement& m_statement;
    const std::vector<SelectItem>& m_items;
    std::vector<int> m_groupBy;
    std::vector<Row> m_rows;
    Groups m_groups;
    std::vector<ColumnStore> m_figures; // by item
};

std::optional<ColumnQuery> answerable(const TableImage& image, const SqlStatement& statement,
                                      const std::vector<SelectItem>& items) {
    auto groupBy = groupColumns(image, statement, items);
    if (!groupBy)
        return std::nullopt;
    ColumnQuery query(image, statement, items, *std::move(groupBy));
    return query.isAnswerable() ? std::optional(std::move(query)) : std::nullopt;
}

/// The distinct texts of one column of the whole table, which the image keeps; null for any other statement.
std::shared_ptr<TableImage> keptDistinct(const TableImage& image, const SqlStatement& statement,
                                         const std::vector<SelectItem>& items,
                                         const std::vector<ColumnInfo>& columns) {
    if (!statement.distinct || items.size() != 1 || items.front().isAggregate() || statement.where ||
        !statement.groupBy.isEmpty() || !statement.orderBy.empty() || statement.top >= 0 ||
        columns.front().type != ColumnType::Text)
        return nullptr;
    const int column = image.columnIndex(items.front().column);
    const std::vector<TextPool::Code>* codes = image.distinctTexts(column);
    if (!codes)
        return nullptr;
    std::vector<ColumnStore> result(1);
    result.front().info = columns.front();
    result.front().loaded = true;
    result.front().pool = image.column(column).pool;
    result.front().codes = *codes;
    return std::make_shared<TableImage>(std::move(result));
}

std::vector<Row> liveRows(const TableImage& image) {
    return Keyset{image.size(), {}}.sequence(image);
}

} // namespace

std::shared_ptr<TableImage> queryColumns(Connection& connection, const SqlStatement& statement,
                                         const std::vector<SelectItem>& items,
                                         const std::vector<ColumnInfo>& columns) {
    const auto image = connection.standingImage(statement.table);
    if (!image || (statement.where && !statement.where->isFilter()))
        return nullptr;
    if (auto kept = keptDistinct(*image, statement, items, columns))
        return kept;
    auto query = answerable(*image, statement, items);
    if (!query)
        return nullptr;
    return query->run(columns, statement.where ? rowsWhere(connection, *image, statement) : liveRows(*image));
}

std::shared_ptr<TableImage> queryImage(const TableImage& image, std::vector<Row> rows,
                                       const SqlStatement& statement, const std::vector<SelectItem>& items,
                                       const std::vector<ColumnInfo>& columns) {
    auto query = answerable(image, statement, items);
    return query ? query->run(columns, std::move(rows)) : nullptr;
}

#include "recordset/dialectRun.h"

#include "recordset/columnQuery.h"
#include "recordset/connection.h"
#include "recordset/error.h"
#include "recordset/predicate.h"

#include <numeric>

namespace {

ColumnInfo sourceColumn(const std::vector<ColumnInfo>& columns, const QString& name) {
    for (const ColumnInfo& column : columns)
        if (column.name.compare(name, Qt::CaseInsensitive) == 0)
            return column;
    fail(ErrorNumber::NoSuchField, QStringLiteral("没有此列：%1").arg(name));
}

ColumnInfo resultColumn(const std::vector<ColumnInfo>& source, const SelectItem& item) {
    ColumnInfo column = sourceColumn(source, item.column);
    if (item.kind == SelectItem::Kind::Sum)
        column = ColumnInfo::fromDeclaration(item.name(), QStringLiteral("REAL"));
    else if (item.kind == SelectItem::Kind::Count)
        column = ColumnInfo::fromDeclaration(item.name(), QStringLiteral("INTEGER"));
    column.name = item.name();
    return column;
}

/// The columns that a statement gives, "*" spelled out.
std::vector<SelectItem> spelledItems(const SqlStatement& statement, const std::vector<ColumnInfo>& source) {
    std::vector<SelectItem> items;
    for (const SelectItem& item : statement.items) {
        if (item.kind != SelectItem::Kind::All) {
            items.push_back(item);
            continue;
        }
        for (const ColumnInfo& column : source)
            items.push_back({SelectItem::Kind::Column, column.name, {}});
    }
    return items;
}

std::vector<ColumnInfo> resultColumns(const std::vector<ColumnInfo>& source,
                                      const std::vector<SelectItem>& items) {
    std::vector<ColumnInfo> columns;
    for (const SelectItem& item : items)
        columns.push_back(resultColumn(source, item));
    return columns;
}

QString itemText(const SelectItem& item) {
    const QString column = quotedName(item.column);
    if (item.kind == SelectItem::Kind::Sum)
        return QStringLiteral("plain_sum(%1)").arg(column);
    return item.kind == SelectItem::Kind::Count ? QStringLiteral("COUNT(%1)").arg(column) : column;
}

QString orderText(const SelectItem& item, bool descending, const std::vector<ColumnInfo>& source) {
    QString text = itemText(item);
    if (!item.isAggregate() && sourceColumn(source, item.column).type == ColumnType::Text)
        text += QStringLiteral(" COLLATE textorder");
    return descending ? text + QStringLiteral(" DESC") : text;
}

/// The order of the result: the statement's own, ties by the group columns; without one the group or distinct
/// columns; else the order of insertion.
QString orderClause(const SqlStatement& statement, const std::vector<SelectItem>& items,
                    const std::vector<ColumnInfo>& source) {
    QStringList parts;
    for (const OrderItem& order : statement.orderBy)
        parts << orderText(order.item, order.descending, source);
    for (const QString& group : statement.groupBy)
        parts << orderText({SelectItem::Kind::Column, group, {}}, false, source);
    if (statement.distinct)
        for (const SelectItem& item : items)
            parts << orderText(item, false, source);
    if (!statement.isResult())
        parts << QStringLiteral("rowid");
    return parts.isEmpty() ? QString() : QStringLiteral(" ORDER BY ") + parts.join(QStringLiteral(", "));
}

QString selectText(const SqlStatement& statement, const std::vector<SelectItem>& items,
                   const std::vector<ColumnInfo>& source) {
    QStringList columns;
    for (const SelectItem& item : items)
        columns << itemText(item);
    QStringList groups;
    for (const QString& group : statement.groupBy)
        groups << quotedName(sourceColumn(source, group).name);
    QString text = statement.distinct ? QStringLiteral("SELECT DISTINCT ") : QStringLiteral("SELECT ");
    text += columns.join(QStringLiteral(", ")) + QStringLiteral(" FROM ") + quotedName(statement.table);
    text += renderWhere(statement);
    if (!groups.isEmpty())
        text += QStringLiteral(" GROUP BY ") + groups.join(QStringLiteral(", "));
    text += orderClause(statement, items, source);
    if (statement.top >= 0)
        text += QStringLiteral(" LIMIT %1").arg(statement.top);
    return text;
}

void selectInto(Connection& connection, const SqlStatement& statement) {
    const std::vector<ColumnInfo> source = connection.columns(statement.table);
    if (connection.hasTable(statement.into))
        fail(ErrorNumber::TableExists, QStringLiteral("表 %1 已存在").arg(statement.into));
    const std::vector<SelectItem> items = spelledItems(statement, source);
    QStringList declarations;
    for (const SelectItem& item : items) {
        const ColumnInfo column = resultColumn(source, item);
        declarations << quotedName(column.name) + u' ' + column.declaration;
    }
    const QString insert = QStringLiteral("INSERT INTO %1 ").arg(quotedName(statement.into)) +
                           selectText(statement, items, source);
    WriteBatch batch(connection);
    connection.write(QStringLiteral("SAVEPOINT making"));
    try {
        connection.write(QStringLiteral("CREATE TABLE %1 (%2)")
                             .arg(quotedName(statement.into), declarations.join(QStringLiteral(", "))));
        connection.write(insert);
    } catch (const RuntimeError&) {
        connection.write(QStringLiteral("ROLLBACK TO making"));
        connection.write(QStringLiteral("RELEASE making"));
        throw;
    }
    connection.write(QStringLiteral("RELEASE making"));
    batch.finish();
}

void deleteAll(Connection& connection, const SqlStatement& statement) {
    connection.image(statement.table)->removeAll();
}

void dropTable(Connection& connection, const SqlStatement& statement) {
    if (!connection.hasTable(statement.table))
        fail(ErrorNumber::DropMissing, QStringLiteral("要删除的表 %1 不存在").arg(statement.table));
    const auto image = connection.standingImage(statement.table);
    // Cursors that are open keep their rows for reading, so the columns not read yet must come in now.
    if (image && image->hasClients())
        image->loadAllColumns();
    connection.write(QStringLiteral("DROP TABLE ") + quotedName(statement.table));
    if (image)
        image->markDropped();
    connection.forgetImage(statement.table);
}

} // namespace

void runParsed(Connection& connection, const SqlStatement& statement) {
    switch (statement.kind) {
    case SqlStatement::Kind::SelectInto:
        return selectInto(connection, statement);
    case SqlStatement::Kind::DeleteAll:
        return deleteAll(connection, statement);
    default:
        return dropTable(connection, statement);
    }
}

std::shared_ptr<TableImage> runQuery(Connection& connection, const SqlStatement& statement) {
    const std::vector<ColumnInfo> source = connection.columns(statement.table);
    const std::vector<SelectItem> items = spelledItems(statement, source);
    const std::vector<ColumnInfo> columns = resultColumns(source, items);
    if (auto picture = queryColumns(connection, statement, items, columns))
        return picture;
    auto picture = std::make_shared<TableImage>(columns);
    Statement query = connection.prepare(selectText(statement, items, source));
    std::vector<CellValue> cells(columns.size());
    while (query.step()) {
        for (std::size_t i = 0; i < columns.size(); ++i)
            cells[i] = query.value(int(i), columns[i].type);
        picture->appendPictureRow(cells);
    }
    return picture;
}

std::shared_ptr<TableImage> runQueryOn(const TableImage& picture, const SqlStatement& statement) {
    std::vector<ColumnInfo> source;
    for (int i = 0; i < picture.columnCount(); ++i)
        source.push_back(picture.info(i));
    const std::vector<SelectItem> items = spelledItems(statement, source);
    std::vector<Row> rows(picture.size());
    std::iota(rows.begin(), rows.end(), 0U);
    auto result = queryImage(picture, std::move(rows), statement, items, resultColumns(source, items));
    if (!result || statement.where)
        fail(ErrorNumber::BadText, QStringLiteral("不能从内存回答的语句"));
    return result;
}

std::vector<Row> rowsWhere(Connection& connection, const TableImage& image, const SqlStatement& statement) {
    if (statement.where->isFilter()) {
        std::vector<int> fields;
        for (int i = 0; i < image.columnCount(); ++i)
            fields.push_back(i);
        return Predicate(*statement.where, image, fields).select({image.size(), {}}, {});
    }
    Statement query = connection.prepare(QStringLiteral("SELECT rowid FROM %1%2 ORDER BY rowid")
                                             .arg(quotedName(statement.table), renderWhere(statement)));
    std::vector<qint64> rowids;
    while (query.step())
        rowids.push_back(query.integer(0));
    return image.rowsOf(rowids);
}

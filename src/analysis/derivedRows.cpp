#include "analysis/derivedRows.h"

#include "recordset/groups.h"

namespace {

ColumnStore textColumn(const QString& name) {
    ColumnStore column;
    column.info = ColumnInfo::fromDeclaration(name, QStringLiteral("TEXT(50) COLLATE NOCASE"));
    column.loaded = true;
    return column;
}

} // namespace

std::vector<Row> shownRows(const Recordset& cursor) {
    std::vector<Row> rows;
    rows.reserve(std::size_t(cursor.RecordCount()));
    cursor.eachRow([&](RowId row) { rows.push_back(row); });
    return rows;
}

ColumnStore keysOfDates(const Recordset& cursor, const std::vector<Row>& rows, const QString& name,
                        const std::function<std::optional<QString>(const QString& date)>& keyOf) {
    const int dates = cursor.imageColumn(cursor.fieldIndex(QStringLiteral("日期")));
    const Groups days = groupRows(cursor.image(), {dates}, rows);
    ColumnStore keys = textColumn(name);
    std::vector<TextPool::Code> codes; // by day, Null for one without a key
    for (const Row first : days.firsts) {
        const auto key = keyOf(fieldText(cursor.image().value(first, dates)));
        codes.push_back(key ? keys.pool.intern(key->toStdString()) : TextPool::Null);
    }
    TextPool::Code code = keys.pool.intern({});
    keys.codes.reserve(rows.size());
    for (const Row day : days.of) {
        if (codes[day] != TextPool::Null)
            code = codes[day];
        keys.codes.push_back(code);
    }
    return keys;
}

ColumnStore trimmedTexts(const Recordset& cursor, const std::vector<Row>& rows, const QString& column) {
    const ColumnStore& texts = cursor.image().column(cursor.imageColumn(cursor.fieldIndex(column)));
    ColumnStore trimmed = textColumn(texts.info.name);
    std::vector<TextPool::Code> codes(std::size_t(texts.pool.last()) + 1, TextPool::Null);
    trimmed.codes.reserve(rows.size());
    for (const Row row : rows) {
        TextPool::Code& code = codes[texts.codes[row]];
        if (code == TextPool::Null)
            code = trimmed.pool.intern(fieldText(texts.value(row)).toStdString());
        trimmed.codes.push_back(code);
    }
    return trimmed;
}

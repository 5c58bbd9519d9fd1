#include "export/exportTable.h"

#include "recordset/textNumber.h"

bool keepsNumbers(const ColumnInfo& column) {
    static const QStringList names{QStringLiteral("折扣"), QStringLiteral("亏_盈"),
                                   QStringLiteral("差额利润率")};
    return column.type == ColumnType::Text && names.contains(column.name);
}

CellValue exportedValue(const ColumnInfo& column, CellValue value) {
    if (!keepsNumbers(column))
        return value;
    const QString text = fieldText(value);
    const auto number = parseNumeric(text);
    // A text that says its number in another form than ours stays as it was typed.
    return number && plainNumber(*number) == text ? CellValue(*number) : value;
}

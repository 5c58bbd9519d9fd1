#pragma once

#include "recordset/textDate.h"

#include <QString>

#include <variant>

/// What a column of a declared type holds.
enum class ColumnType { Text, Number, Date, Integer, Serial };

/// Null, text, number, 32-bit integer (serial, Count) or date.
using CellValue = std::variant<std::monostate, QString, double, qint32, Moment>;

inline bool isNull(const CellValue& value) {
    return std::holds_alternative<std::monostate>(value);
}

/// The value joined to the empty text: Null "", a number in its plain form, a date as dateText.
QString toText(const CellValue& value);

/// toText with the blanks taken off both ends: what boxes, grids and reports show.
QString fieldText(const CellValue& value);

/// The value in arithmetic: Null counts 0. Throws TypeMismatch for a text that is no number.
double toNumber(const CellValue& value);

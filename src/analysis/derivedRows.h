#pragma once

#include "recordset/recordset.h"

#include <functional>

/// The rows that a cursor shows, in its order.
std::vector<Row> shownRows(const Recordset& cursor);

/// A text column that is made from a cursor's 日期: `keyOf(date as text)` once for each distinct date. A date
/// that gives nothing gets the key of the row before it, at first "". In: rows of the cursor's image.
ColumnStore keysOfDates(const Recordset& cursor, const std::vector<Row>& rows, const QString& name,
                        const std::function<std::optional<QString>(const QString& date)>& keyOf);

/// A column of texts with the blanks off both ends, Null as the empty text.
ColumnStore trimmedTexts(const Recordset& cursor, const std::vector<Row>& rows, const QString& column);

#pragma once

#include "recordset/recordset.h"

/// Moves on from a row that was just deleted: to the following row, at the end to the last one.
void moveOnAfterDeletion(const RecordsetPtr& cursor);

/// Brings a cursor that stands beyond an end back to the row of that end.
void backOntoARow(const RecordsetPtr& cursor);

/// Makes the first row whose column holds this key current. Without such a row the cursor stands behind its
/// end and the answer is false; so it is, and nothing moves, on a closed or empty cursor.
bool findKey(const RecordsetPtr& cursor, const QString& column, const QString& key);

/// Takes the Filter off a cursor that is open. To clear none would put all its rows in order once more.
void clearAnyFilter(const RecordsetPtr& cursor);

/// First and last 日期 of a cursor, as boxes and heads show them; both empty without rows.
struct DateSpan {
    QString first;
    QString last;
};

/// The same without a move or a sort; rows without a date apart.
DateSpan dateSpanOf(const Recordset& cursor);

/// Sorts a cursor by 日期, which stays its order, and leaves it on its last row.
DateSpan sortByDate(const RecordsetPtr& cursor);

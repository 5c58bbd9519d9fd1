#include "data/cursorMoves.h"

#include "data/session.h"

void moveOnAfterDeletion(const RecordsetPtr& cursor) {
    cursor->MoveNext();
    if (cursor->isEOF() && cursor->RecordCount() > 0)
        cursor->MoveLast();
}

void backOntoARow(const RecordsetPtr& cursor) {
    if (!cursor->hasRows())
        return;
    if (cursor->isEOF())
        cursor->MoveLast();
    else if (cursor->isBOF())
        cursor->MoveFirst();
}

bool findKey(const RecordsetPtr& cursor, const QString& column, const QString& key) {
    if (!cursor->hasRows())
        return false;
    cursor->MoveFirst();
    cursor->Find(keyCondition(column, key));
    return !cursor->isEOF();
}

void clearAnyFilter(const RecordsetPtr& cursor) {
    if (cursor->isOpen() && !cursor->Filter().isEmpty())
        cursor->clearFilter();
}

DateSpan sortByDate(const RecordsetPtr& cursor) {
    if (!cursor->hasRows())
        return {};
    static const QString date = QStringLiteral("日期");
    const QuietWalk walk(cursor);
    cursor->setSort(date);
    DateSpan span{cursor->Fields(date).text(), {}};
    cursor->MoveLast();
    span.last = cursor->Fields(date).text();
    return span;
}

DateSpan dateSpanOf(const Recordset& cursor) {
    const ColumnStore& dates =
        cursor.image().column(cursor.imageColumn(cursor.fieldIndex(QStringLiteral("日期"))));
    std::optional<RowId> first;
    std::optional<RowId> last;
    cursor.eachRow([&](RowId row) {
        if (dates.moments[row] == ColumnStore::NullMoment)
            return;
        if (!first || dates.moments[row] < dates.moments[*first])
            first = row;
        if (!last || dates.moments[row] > dates.moments[*last])
            last = row;
    });
    return first ? DateSpan{fieldText(dates.value(*first)), fieldText(dates.value(*last))} : DateSpan();
}

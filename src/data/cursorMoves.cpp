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

#include "analysis/clientDates.h"

#include "data/sourceTable.h"

const DateSpan& noDates() {
    static const DateSpan dates{QStringLiteral("0000-0-0"), QStringLiteral("0000-0-0")};
    return dates;
}

DateSpan datesOfLines(Session& session, const RecordsetPtr& /*shown*/) {
    clearAnyFilter(session.buyList);
    return sortByDate(session.buyList);
}

DateSpan datesOfLinesOrNone(Session& session, const RecordsetPtr& shown) {
    const DateSpan dates = datesOfLines(session, shown);
    return session.buyList->hasRows() ? dates : noDates();
}

void inTableOrder(Session& session, ShowSource code) {
    const RecordsetPtr& clients = *sourceCursor(session, code);
    if (!clients->isOpen())
        return;
    clients->setSort({});
    if (clients->hasRows())
        clients->MoveFirst();
}

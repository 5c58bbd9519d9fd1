#include "data/books.h"

void openBooks(Session& session) {
    session.viewReturnState = QStringLiteral("Open");
    session.safetyStock = 2;
    session.open_rs();
    session.readCurrent();
}

int recountTotals(Session& session, const Progress& progress) {
    if (!session.clientTable->isOpen() || !session.buyList->isOpen())
        return 0;
    session.clientTable->clearFilter();
    session.buyList->clearFilter();
    return client_totals_recount(session.cn, session.clientTable, session.buyList, progress);
}

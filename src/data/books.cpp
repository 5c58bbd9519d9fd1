#include "data/books.h"

void openBooks(Session& session) {
    session.viewReturnState = QStringLiteral("Open");
    session.safetyStock = 2;
    session.open_rs();
    session.readCurrent();
}

std::unique_ptr<TotalsRecount> totalsRecount(Session& session) {
    RecordsetPtr clients;
    RecordsetPtr lines;
    reopen(clients, session.cn, QStringLiteral("Select * From clientTable"));
    reopen(lines, session.cn, QStringLiteral("Select * From buyList"));
    return std::make_unique<TotalsRecount>(session.cn, clients, lines);
}

#include "query/queries.h"

#include "data/cursorMoves.h"
#include "data/orderInHand.h"
#include "data/sourceTable.h"
#include "query/fieldLists.h"
#include "recordset/ignoringErrors.h"

#include <QSet>

namespace {

const QString& clientNumber() {
    static const QString name = QStringLiteral("客户编号");
    return name;
}

/// The order numbers of the lines, each once.
QStringList ordersOf(const Recordset& lines) {
    const int field = lines.fieldIndex(QStringLiteral("订单号"));
    QSet<QString> seen;
    QStringList orders;
    for (int i = 0; i < lines.RecordCount(); ++i)
        if (const QString order = fieldText(lines.valueAt(i, field)); !seen.contains(order)) {
            seen.insert(order);
            orders << order;
        }
    return orders;
}

} // namespace

void applySearch(Session& session, ShowSource source, const QString& field, const QString& value) {
    const SourceRow* row = sourceRow(source);
    if (!row || !row->searched)
        return;
    if (source == ShowSource::Lines)
        session.viewReturnState = QStringLiteral("Close");
    const RecordsetPtr cursor = session.*row->cursor;
    IgnoringErrors errors;
    // Filter and sort go together: a refused condition leaves the cursor as it stands.
    errors.run([&] {
        const QuietWalk walk(cursor);
        cursor->setFilter(searchCondition(field, value));
        cursor->setSort(field);
    });
}

QStringList sortFields(Session& session) {
    const SourceRow* row = sourceRow(ShowSource(session.orderCode));
    if (!row || !row->sorted || !(session.*row->cursor)->isOpen())
        return {};
    return (session.*row->cursor)->fieldNames();
}

void applySort(Session& session, const QString& field) {
    const SourceRow* row = sourceRow(ShowSource(session.orderCode));
    if (!row || !row->sorted)
        return;
    IgnoringErrors errors;
    errors.run([&] {
        (session.*row->cursor)->setSort(session.sortDirection == 2 ? field + QStringLiteral(" Desc") : field);
    });
}

QStringList ordersOfClient(Session& session) {
    const RecordsetPtr& lines = session.buyList;
    if (!lines->isOpen())
        return {};
    const QString condition = keyCondition(clientNumber(), session.currentClientNum);
    lines->setFilter(condition);
    if (session.showSource != ShowSource::PeriodClients || !session.buyList2->isOpen())
        return ordersOf(*lines);
    Recordset period(session.cn);
    period.Open(QStringLiteral("Select * From buyList2 Where ") + condition);
    return ordersOf(period);
}

void takeOrder(Session& session, const QString& order) {
    session.currentOrderNum = order;
    session.refreshCustomer();
    setup_rs_total(session);
    Temp_Order_Form(session);
}

void takePurchaseRecord(Session& session) {
    setup_rs_total(session);
    session.orderTotals->setFilter(keyCondition(clientNumber(), session.currentClientNum));
    const RecordsetPtr& clients = session.clientTable;
    if (!clients->isOpen() ||
        (clients->currentRow() && clients->Fields(clientNumber()).text() == session.currentClientNum))
        return;
    const QuietWalk walk(clients);
    clients->clearFilter();
    if (!findKey(clients, clientNumber(), session.currentClientNum))
        backOntoARow(clients);
}

QString productSearchColumn(const QString& column) {
    static const QStringList searched{QStringLiteral("产品编号"), QStringLiteral("品名"),
                                      QStringLiteral("规格"), QStringLiteral("产地"), QStringLiteral("厂家")};
    return searched.contains(column) ? column : searched.first();
}

void searchProducts(Session& session, const QString& column, const QString& text) {
    IgnoringErrors errors;
    errors.run([&] {
        session.productTable->setFilter(productSearchColumn(column) + QStringLiteral(" Like '%") + text +
                                        QStringLiteral("%'"));
    });
}

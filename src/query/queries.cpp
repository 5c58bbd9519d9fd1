#include "query/queries.h"

#include "data/orderInHand.h"
#include "data/sourceTable.h"
#include "query/fieldLists.h"
#include "recordset/ignoringErrors.h"

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
    lines->setFilter(keyCondition(QStringLiteral("客户编号"), session.currentClientNum));
    const int field = lines->fieldIndex(QStringLiteral("订单号"));
    QStringList orders;
    for (int i = 0; i < lines->RecordCount(); ++i)
        if (const QString order = fieldText(lines->valueAt(i, field)); !orders.contains(order))
            orders << order;
    return orders;
}

void takeOrder(Session& session, const QString& order) {
    session.currentOrderNum = order;
    if (session.clientTable->hasRows() && session.clientTable->currentRow())
        session.currentContact = session.clientTable->Fields(QStringLiteral("联系人")).text();
    setup_rs_total(session);
    Temp_Order_Form(session);
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

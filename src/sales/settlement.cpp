#include "sales/settlement.h"

#include "data/cursorMoves.h"
#include "recordset/textNumber.h"
#include "sales/clientTotals.h"

namespace {

void appendLines(const RecordsetPtr& lines, const RecordsetPtr& basket) {
    for (int row = 0; row < basket->RecordCount(); ++row) {
        lines->AddNew();
        for (int field = 1; field < basket->fieldCount(); ++field)
            lines->Fields(field).setValue(basket->valueAt(row, field));
        lines->Update();
    }
}

/// The number rises only if a line really bears it.
void takeOrderNumber(Session& session) {
    if (!findKey(session.buyList, QStringLiteral("订单号"), counterText(session.nextOrderNum)))
        return;
    session.nextOrderNum = session.nextOrderNum.value_or(0) + 1;
    writeCounter(session, QStringLiteral("counterNum2"), *session.nextOrderNum);
}

/// Requery puts the filter off and goes to the first row, but the register counts on the buyer's row. It is
/// found again by its identity, since two customers may bear one number. A filter that has ceased to show him
/// (his name was changed since the search) is given up for him.
void requeryInPlace(const RecordsetPtr& clients) {
    const auto row = clients->currentRow();
    const QString filter = clients->Filter();
    clients->Requery();
    if (!filter.isEmpty())
        clients->setFilter(filter);
    if (!row || clients->moveToRow(*row))
        return;
    clients->clearFilter();
    clients->moveToRow(*row);
}

void refreshBuyer(Session& session) {
    const RecordsetPtr& lines = session.buyList;
    if (!lines->hasRows())
        return;
    lines->setFilter(keyCondition(QStringLiteral("客户编号"), session.currentClientNum));
    // Without a customer to write on, the sale is booked all the same; the next start counts his totals.
    if (session.clientTable->currentRow()) {
        const LineSums sums = sumsOfView(lines);
        writeClientTotals(session.clientTable, sums, rateText(marginRate(sums)));
    }
    requeryInPlace(session.clientTable);
}

void takeOffStock(const RecordsetPtr& products, const RecordsetPtr& basket) {
    const int number = basket->fieldIndex(QStringLiteral("产品编号"));
    const int quantity = basket->fieldIndex(QStringLiteral("数量"));
    for (int row = 0; row < basket->RecordCount(); ++row) {
        if (!findKey(products, QStringLiteral("产品编号"), fieldText(basket->valueAt(row, number))))
            continue;
        Field stock = products->Fields(QStringLiteral("数量"));
        stock.setValue(stock.number() - basket->numberAt(row, quantity));
        products->Update();
    }
}

void showLastProduct(const RecordsetPtr& products, const RecordsetPtr& basket) {
    if (!products->hasRows())
        return;
    basket->MoveLast();
    if (!findKey(products, QStringLiteral("产品编号"), basket->Fields(QStringLiteral("产品编号")).text()))
        products->MoveLast();
}

} // namespace

QString settlementQuestion(const BasketTotals& totals) {
    return QStringLiteral("购买总数量： ") + plainNumber(totals.quantity) + QStringLiteral("\n总金额：") +
           plainNumber(totals.paid) + QStringLiteral("\n确认结算吗？");
}

bool canSettle(Session& session, const RecordsetPtr& basket) {
    return session.clientTable->isOpen() && session.buyList->isOpen() && basket->hasRows();
}

void settle(Session& session, const RecordsetPtr& basket) {
    const QuietWalk lineWalk(session.buyList);
    const QuietWalk clientWalk(session.clientTable);
    const QuietWalk basketWalk(basket);
    WriteBatch batch(session.cn);
    appendLines(session.buyList, basket);
    takeOrderNumber(session);
    refreshBuyer(session);
    session.reopen(session.productTable, QStringLiteral("Select * From productTable"));
    takeOffStock(session.productTable, basket);
    showLastProduct(session.productTable, basket);
    clearBasket(session, basket);
    batch.finish();
}

#include "sales/settledOrder.h"

#include "recordset/textNumber.h"

namespace {

double sumOf(const RecordsetPtr& lines, const QString& column) {
    const int field = lines->fieldIndex(column);
    double sum = 0;
    for (int row = 0; row < lines->RecordCount(); ++row)
        sum += lines->numberAt(row, field);
    return sum;
}

} // namespace

SettledOrder orderOfBasket(Session& session, const RecordsetPtr& basket) {
    return {session.currentClientNum,
            fieldText(basket->valueAt(0, basket->fieldIndex(QStringLiteral("订单号")))),
            basketTotals(basket)};
}

QString settledText(const SettledOrder& settled) {
    return QStringLiteral("订单 %1 已结算：%2 件，%3")
        .arg(settled.order, plainNumber(settled.totals.quantity), plainNumber(settled.totals.paid));
}

bool takeSettledOrder(Session& session, const SettledOrder& settled) {
    const RecordsetPtr& lines = session.buyList;
    if (!lines->isOpen())
        return false;
    const QuietWalk walk(lines);
    const QString before = lines->Filter();
    lines->setFilter(keyCondition(QStringLiteral("客户编号"), settled.client) + QStringLiteral(" And ") +
                     keyCondition(QStringLiteral("订单号"), settled.order));
    if (!lines->hasRows()) {
        lines->setFilter(before);
        return false;
    }
    session.currentClientNum = settled.client;
    session.refreshCustomer();
    session.currentOrderNum = settled.order;
    session.periodDate1 = fieldText(lines->valueAt(0, lines->fieldIndex(QStringLiteral("日期"))));
    session.orderQuantity = plainNumber(sumOf(lines, QStringLiteral("数量")));
    session.orderAmount = plainNumber(sumOf(lines, QStringLiteral("实付")));
    return true;
}

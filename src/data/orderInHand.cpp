#include "data/orderInHand.h"

void Temp_Order_Form(Session& session) {
    const QString order = session.currentOrderNum.isEmpty() ? QStringLiteral("1") : session.currentOrderNum;
    const QString condition = keyCondition(QStringLiteral("客户编号"), session.currentClientNum) +
                              QStringLiteral(" And ") + keyCondition(QStringLiteral("订单号"), order);
    session.buyList->setFilter(condition);
    session.orderTotals->setFilter(condition);
    const bool found = session.orderTotals->hasRows();
    const auto text = [&](const QString& field) {
        return found ? session.orderTotals->Fields(field).text() : QString();
    };
    session.periodDate1 = text(QStringLiteral("日期"));
    session.orderAmount = text(QStringLiteral("购物金额"));
    session.orderQuantity = text(QStringLiteral("购物数"));
}

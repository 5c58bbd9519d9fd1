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

void setup_rs_total(Session& session) {
    const QString columns =
        QStringLiteral("Select 日期, 订单号, 客户编号, Sum(数量) As 购物数, Sum(实付) As 购物金额 From ");
    const QString groups = QStringLiteral(" Group By 日期, 订单号, 客户编号");
    if (session.showSource == ShowSource::PeriodClients)
        session.reopen(session.orderTotals, columns + QStringLiteral("buyList2") + groups);
    else
        session.reopen(session.orderTotals, columns + QStringLiteral("buyList") + groups + u' ');
}

bool hasLines(Session& session, const QString& client) {
    Recordset lines(session.cn);
    lines.Open(QStringLiteral("Select * From buyList Where ") +
               keyCondition(QStringLiteral("客户编号"), client));
    return lines.hasRows();
}

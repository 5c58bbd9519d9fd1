#pragma once

#include "sales/basket.h"

/// An order that was just settled, for whoever tells of it or prints it.
struct SettledOrder {
    QString client;
    QString order;
    BasketTotals totals;
};

/// The order that a basket becomes when it is settled; the basket has rows.
SettledOrder orderOfBasket(Session& session, const RecordsetPtr& basket);

/// "订单 6705 已结算：11 件，882.825".
QString settledText(const SettledOrder& settled);

/// Makes a settled order the one in hand, for its report: the lines filtered to it, its day, quantity and
/// amount as they are now. False where none of it is left, and all stays as it was.
bool takeSettledOrder(Session& session, const SettledOrder& settled);

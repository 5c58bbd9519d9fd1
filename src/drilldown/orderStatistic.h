#pragma once

#include "data/recount.h"
#include "data/session.h"

/// Sums over all orders, as texts.
struct OrderFigures {
    QString turnover;
    QString margin;
    QString quantity;
};

/// What the orders bring in.
struct OrderStatistic {
    std::shared_ptr<TableImage> orders; // one row an order, with the columns of orderTable
    OrderFigures figures;
};

/// Counts the orders of a source (Lines or PeriodLines): one row for each 订单号 with the sums of its lines
/// and the 客户编号 of its first line in the order in which the source's cursor shows them, blank for lines
/// without an order number. A cursor that is closed has none. Filter and row of that cursor are as before in
/// the end. Throws RuntimeError.
OrderStatistic calculation_order(Session& session, ShowSource source);

/// Shows the orders on session.orderTable, those that bring most first, until a copy of them is in the file.
void openOrders(Session& session, const OrderStatistic& statistic);

/// Writes the orders into orderTable and opens the cursor there, in the same order.
void writeOrders(Session& session, const OrderStatistic& statistic, const Progress& progress = {});

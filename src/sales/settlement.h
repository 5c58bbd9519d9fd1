#pragma once

#include "sales/basket.h"

/// The question that settlement asks: quantity, amount, and whether to settle.
QString settlementQuestion(const BasketTotals& totals);

/// Whether there is something to settle: customers and lines open, the basket not empty.
bool canSettle(Session& session, const RecordsetPtr& basket);

/// Turns the basket into order lines, uses the order number up, writes the customer's four figures, takes the
/// quantities off the stock and empties the basket: one transaction. The customers' cursor must stand on the
/// buyer; its row and filter are kept. Afterwards the lines are filtered to the buyer, and the products,
/// reopened, stand on the last product of the basket.
void settle(Session& session, const RecordsetPtr& basket);

#pragma once

#include "data/recount.h"
#include "data/session.h"

/// Writes 消费合计, 差额利润, 购买数 and the rate text with its "%" ("0%" where nothing was paid) into the
/// current row of a customer cursor, and updates it.
void writeClientTotals(const RecordsetPtr& clients, const LineSums& sums, const QString& rate);

/// The register's own recomputation: the three sums of the customer of the current line, over the lines that
/// the shared cursor holds; no rate.
void cost_profit_num_register(Session& session);

/// The purchase view's: the same with the rate, which is held in single precision.
void cost_profit_num_purchase(Session& session);

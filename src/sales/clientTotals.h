#pragma once

#include "data/recount.h"
#include "data/session.h"

/// Writes 消费合计, 差额利润 and 购买数 into the current row of a customer cursor, and updates it.
void writeClientSums(const RecordsetPtr& clients, const LineSums& sums);

/// Writes 消费合计, 差额利润, 购买数 and the rate text with its "%" ("0%" where nothing was paid) into the
/// current row of a customer cursor, and updates it.
void writeClientTotals(const RecordsetPtr& clients, const LineSums& sums, const QString& rate);

/// What becomes of the rate where a view recomputes one customer: the register writes none, the purchase view
/// holds it in single precision.
enum class KeptRate { None, SinglePrecision };

/// Rewrites the three sums of the customer of the current line, over the lines that the shared cursor holds,
/// which the caller has reduced to his. The customers' filter is cleared, and they stand on him. Nothing in
/// the program calls it: a settlement writes the figures itself.
void cost_profit_num(Session& session, KeptRate rate);

#pragma once

#include "recordset/recordset.h"

#include <functional>

/// Told how far a long loop has come: rows done, rows in all.
using Progress = std::function<void(int, int)>;

/// The sums of a customer's lines that his stored totals are made of.
struct LineSums {
    double paid = 0;     // 实付, in the currency of the shop
    double margin = 0;   // 差额利润
    double quantity = 0; // 数量

    void add(double linePaid, double lineMargin, double lineQuantity);
};

/// Margin rate in percent, 0 where nothing was paid.
double marginRate(const LineSums& sums);

/// Sums over all rows that the cursor shows, in their order. Leaves the position.
LineSums sumsOfView(const RecordsetPtr& lines);

/// Rebuilds 消费合计, 差额利润, 购买数 and 差额利润率 of every customer from the lines that bear his number
/// (case of A-Z apart). Writes only what changes, in one transaction. Afterwards no Filter is on, the
/// customers stand on their first row, the lines are requeried. A customer cursor that is closed or empty is
/// left alone. Gives the number of customers whose totals changed.
int client_totals_recount(Connection& connection, const RecordsetPtr& clients, const RecordsetPtr& lines,
                          const Progress& progress = {});

/// 差额利润 := 实付 - 成本 * 数量 on every line of the cursor, the position kept (the first row where there
/// was none).
void lineMarginRefresh(Connection& connection, const RecordsetPtr& lines);

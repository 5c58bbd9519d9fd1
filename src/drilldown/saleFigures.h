#pragma once

#include "data/recount.h"
#include "data/session.h"

/// The four indicators of sold goods, as texts.
struct SaleFigures {
    QString turnover; // 实付, in the currency of the shop
    QString margin;   // 差额利润, likewise
    QString quantity; // 数量
    QString clients;  // how many customers
};

/// The table of order lines that a code stands for: "buyList2" for PeriodLines, else "buyList".
QString linesTable(ShowSource code);

/// The indicators of a whole table of lines, in one statement; the customers are those of the customer table
/// of the same source who have lines. In: Lines or PeriodLines. Throws RuntimeError.
SaleFigures sales_Count(Session& session, ShowSource code);

/// The indicators of the lines that a cursor shows; each customer number among them, its case
/// told apart, counts once.
SaleFigures rs2_Count(const RecordsetPtr& lines);

/// Limits the lines to one product and gives their indicators, nought without any. Throws RuntimeError.
SaleFigures singleCount(const RecordsetPtr& lines, const QString& product);

/// Makes the first line of a product current, the last line of all where it has none. Nothing without rows.
void findProduct(const RecordsetPtr& lines, const QString& product);

/// The customers of `clients` whose 客户编号 is that of one of the lines, in the order of their cursor.
std::vector<RowId> customersWithLines(const Recordset& clients, const Recordset& lines);

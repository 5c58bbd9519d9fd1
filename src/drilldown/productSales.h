#pragma once

#include "data/session.h"
#include "data/workTable.h"

/// A product that its sales or its buyers are asked for.
struct ProductAsked {
    QString number;
    QString name;
};

/// The product of the cursor's current row, with 产品编号 and 品名; nothing without a row.
std::optional<ProductAsked> productOfRow(const RecordsetPtr& cursor);

/// Opens session.productLines on the sales of a product, from the whole table or the period copy (Lines or
/// PeriodLines), and makes it the product in hand. Out: whether there are any. Throws RuntimeError.
bool openProductLines(Session& session, const ProductAsked& product, ShowSource source);

/// Opens session.productClients on the customers who bought a product, in the order of their table, and makes
/// it the product in hand. Out: the rows that belong into clientTable3. Throws RuntimeError.
RowsOfTable openProductClients(Session& session, const ProductAsked& product, ShowSource source);

/// Writes them into clientTable3 and opens session.productClients there. A cut of the best customers that is
/// on screen keeps its rows.
void writeProductClients(Session& session, const RowsOfTable& rows, const Progress& progress = {});

/// The choice of data of the sales: the period's only while its copy is there.
ShowSource salesSource(const Session& session);

/// Shows all lines on the shared cursor, which is "Select * From buyList ", in the order of their table. Who
/// has it open keeps it, and what is being edited on it. Throws RuntimeError.
void showWholeLines(Session& session);

/// Turnover and pieces of all lines of a source, "0" without any. Throws RuntimeError.
struct SaleTotals {
    QString amount;
    QString count;
};
SaleTotals calculation_L2_L4(Session& session, ShowSource source);

/// The same of the lines that a cursor shows.
SaleTotals saleTotals(const RecordsetPtr& lines);

/// Hands a sales list to its report: totals of what the cursor shows. Where it is the list of a period, which
/// stands on all lines, the period's Filter is put on them again if something has cleared it.
void handSalesList(Session& session, ShowSource source);

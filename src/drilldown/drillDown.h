#pragma once

#include "drilldown/productSales.h"
#include "shell/viewHost.h"

class Prompts;

/// Takes the customer in hand whom a command means: the one in the current row of the customer view or
/// register in front; with another view in front he stays who he is. False where there is none.
bool takeCustomerInFront(ViewHost& host);

/// The purchases of this customer with their shares (tempTable2Fm2). Nothing opens without lines.
void showClientLines(ViewHost& host);

/// The orders of this customer, one to be chosen (tempTable2Fm22); without lines that is told.
void showClientOrders(ViewHost& host, Prompts& prompts);

/// The purchases of this customer with the panel of their shares (tempTable3Fm3). Nothing opens without
/// lines.
void showClientStatistic(ViewHost& host);

/// The sales of a product (goodsSalesFm2), from the whole table or the period copy (Lines or PeriodLines);
/// without any that is told.
void showSalesOf(ViewHost& host, Prompts& prompts, const ProductAsked& product, ShowSource lines);

/// The customers who bought a product (tempTable1Fm1), from the lines of the whole table or the period copy.
void showClientsOf(ViewHost& host, const ProductAsked& product, ShowSource lines);

/// The same for the product in the current row of the view in front; a view without products is told.
void showOneProductSales(ViewHost& host, Prompts& prompts);
void showProductClients(ViewHost& host, Prompts& prompts);

/// Asks for a period of the sales, from their whole on; nothing without any.
void askSalesPeriod(ViewHost& host);

/// All sold goods with their indicators (statisticFm2); one that is in front goes back to the whole table.
void showAllSales(ViewHost& host);

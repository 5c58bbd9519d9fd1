#pragma once

#include "data/session.h"

#include <QStringList>

/// Value and quantity of the stock.
struct StockSums {
    double value = 0;    // 成本 times 数量, in the currency of the shop
    double quantity = 0; // 数量
};

/// Sums over all rows that the cursor shows; zero without rows. Leaves the position. Throws Overflow.
StockSums stockSums(const RecordsetPtr& products);

/// The same, and the cursor ends on its last row.
StockSums stock_Count(const RecordsetPtr& products);

/// Puts the product of the current row, from the table or its period copy by its code, alone on a
/// cursor of its own. False without a current row.
bool pickOneProduct(Session& session, const RecordsetPtr& products, ShowSource code);

/// The code that the views of the sales stock start with: that of the copy only while there is one.
ShowSource stockSource(const Session& session);

/// The lines that show a product's row: "name----value" a column, each followed by an empty line.
QStringList oneProductLines(const RecordsetPtr& product);

/// Filters the cursor on the products at or below the safety stock.
void filterShortfall(const Session& session, const RecordsetPtr& products);

/// Adds to the safety stock. Throws Overflow beyond 16 bits.
void changeSafetyStock(Session& session, int by);

/// Deletes the current row of the stock-in history, and nothing else: the sales stock keeps its quantity. The
/// row behind it becomes current, at the end the last one.
void deleteStockIn(Session& session);

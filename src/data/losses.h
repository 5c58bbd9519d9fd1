#pragma once

#include "recordset/recordset.h"

/// What a deletion takes with it, in the words that stand below its question: the stored figures, not the
/// edits that were never saved.

/// The current customer and a number of his lines.
QString lossOfClient(const RecordsetPtr& clients, int lines);

/// The current line of an order or a basket.
QString lossOfLine(const RecordsetPtr& lines);

/// All lines of an order.
QString lossOfOrder(const RecordsetPtr& lines);

/// The current product with its stock.
QString lossOfProduct(const RecordsetPtr& products);

/// The current row of the stock-in history.
QString lossOfStockIn(const RecordsetPtr& history);

/// A whole table, whatever part of it is shown.
QString lossOfTable(Connection& connection, const QString& table);

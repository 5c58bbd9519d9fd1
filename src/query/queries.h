#pragma once

#include "data/session.h"

#include <QStringList>

/// Puts a search on the cursor of a code, and sorts it by the field. A condition that the cursor refuses
/// leaves filter and sort as they were; a code without a cursor changes nothing.
void applySearch(Session& session, ShowSource source, const QString& field, const QString& value);

/// The columns of the cursor that orderCode names, in their order; none for a code without a cursor or a
/// closed one.
QStringList sortFields(Session& session);

/// Sorts the cursor that orderCode names by a field, descending if sortDirection is 2. A name that the cursor
/// does not have leaves it as it was.
void applySort(Session& session, const QString& field);

/// Filters the order lines on the customer in hand and gives the numbers of his orders, each once and in the
/// order of the lines: of those in the period copy where showSource is 7.
QStringList ordersOfClient(Session& session);

/// Takes an order of the customer in hand in hand: his name and contact, its lines and totals. Throws
/// RuntimeError.
void takeOrder(Session& session, const QString& order);

/// Opens the order totals and limits them to the customer in hand, on whom the cursor of customers comes to
/// stand. Throws RuntimeError.
void takePurchaseRecord(Session& session);

/// Filters the products by a column of their list; any other column counts as 产品编号. A text that breaks
/// the condition leaves the filter as it was.
void searchProducts(Session& session, const QString& column, const QString& text);

/// The column that a product search goes by: the given one if it is one of those searched, else 产品编号.
QString productSearchColumn(const QString& column);

#pragma once

#include "data/session.h"

#include <QStringList>

/// The rules of the customer register, without its window. Box texts are in the order of the register's
/// boxes.

/// The columns of the 17 detail boxes, in box order.
const QStringList& registerColumns();
/// Indices of the boxes that hold numbers.
const std::vector<int>& registerNumberBoxes();

/// Texts of the boxes for the current customer: trimmed, the two totals as plain numbers. Empty texts without
/// a row.
QStringList record_Display(Session& session);

/// Writes the boxes into the current customer, and always 0 into 差额利润 and "" into 差额利润率: saving a
/// customer wipes these two figures until the next recount or settlement. That is meant.
void record_Write(Session& session, const QStringList& boxes);

/// Adds a customer and, if his number is the proposed one, uses that number up. The new customer is current
/// and the customer in hand.
void addClient(Session& session, const QStringList& boxes);

/// Writes the boxes into the current customer.
void saveClient(Session& session, const QStringList& boxes);

/// Deletes the current customer, then his lines as far as deleteLinesOf finds them.
void deleteClient(Session& session);

/// Deletes the lines of a customer, searching from the second row in the cursor's present order: a first row
/// that is his stays, without its customer. That is meant.
void deleteLinesOf(Session& session, const QString& clientNum);

/// How many lines would go with the current customer.
int linesThatGo(Session& session);

/// Puts the five-column search on the customers; false where no text can be searched so and nothing was
/// changed.
bool searchClients(Session& session, const QString& text);

/// First and last date of the lines; sorts them by 日期 and leaves them on the last row. Both empty without
/// lines.
void set_date1_date2(Session& session);

/// Reopens the lines cursor on the customer in hand, with a further condition if one is given. Nothing in the
/// program calls it.
void rs2_Search(Session& session, const QString& condition);

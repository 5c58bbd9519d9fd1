#pragma once

#include "data/session.h"

#include <QStringList>

#include <span>

/// One of the three roads on which stock leaves other than by sale: everything in which they differ.
struct StockOut {
    const char16_t* chooser;
    const char16_t* dialog;
    const char16_t* caption; // of the chooser
    const char16_t* action;  // caption of the chooser's button
    const char16_t* table;   // the history
    RecordsetPtr Session::*history;
    const char16_t* amountColumn;
    const char16_t* quantityCaption;
    const char16_t* amountCaption;
    const char16_t* zeroMessage;
    const char16_t* question;
    const char16_t* excessMessage;
    bool searchCaught;      // a search text that breaks the condition is told, else it is a run-time error
    bool writeCaught;       // a refused history column is told and the booking goes on, else a run-time error
    const char16_t* report; // of the print routine, over the whole table
    const char16_t* periodReport; // the same over a period
};

std::span<const StockOut> stockOuts();
const StockOut* findStockOut(QStringView chooser);

/// Texts of the chooser's boxes without a product, the date apart: it is always today's.
QStringList clearChoice();

/// The conditions of the movement's button.
bool canMoveStock(const Session& session);

/// Quantity on hand of the current product. Throws NoCurrentRow.
double stockOnHand(const Session& session);

/// Whether a typed quantity of the current product has an amount that can be reckoned with. More than the
/// stock counts as such: it is cut to the stock.
bool amountFits(const Session& session, const QString& quantity);

/// Amount that a quantity of the current product stands for, at cost.
double amountAtCost(const Session& session, double quantity);

/// What the dialog holds.
struct Movement {
    double quantity = 0;
    double amount = 0; // currency
    QString remark;
};

enum class MoveResult {
    Booked,
    WriteFailed, // a column refused its text: the row stands without it and what follows, the stock is
                 // corrected
};

/// Appends a history row from the chooser's boxes and the movement, and takes the quantity off the current
/// product: one transaction. A negative quantity adds to it. Throws RuntimeError where the road does not
/// catch a refused column.
MoveResult bookStockOut(Session& session, const StockOut& road, const QStringList& boxes,
                        const Movement& movement);

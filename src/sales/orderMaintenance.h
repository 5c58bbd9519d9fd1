#pragma once

#include "data/session.h"
#include "sales/basket.h"

#include <QStringList>

#include <functional>

/// What a person knows an order by besides its number.
struct OrderFacts {
    QString customer; // number and name, as far as the customer is there
    QString day;
};

/// The rules of changing finished orders, without the view: the order list, the lines of the chosen order,
/// and what their changes do to stock and customers. Box texts are in the order of a line's boxes.
class OrderMaintenance {
public:
    explicit OrderMaintenance(Session& session);

    /// The distinct order numbers; follows the lines only where it is requeried.
    const RecordsetPtr& orders() const { return m_orders; }
    /// The lines of the chosen order; an empty table of the same shape before that.
    const RecordsetPtr& lines() const { return m_lines; }
    bool orderChosen() const { return m_chosen; }

    /// Opens both cursors, and the shared ones on lines and products anew; no order is chosen.
    void open();
    /// Chooses the current order and stands on its last line. Gives its number.
    QString chooseOrder();
    /// Moves the order list to an order number; false, on the last order, where there is none such.
    bool findOrder(const QString& number);

    /// Whose the chosen order is and its day, by its first line; empty without one.
    OrderFacts facts() const;
    /// Pieces and money of all lines. Leaves the position.
    BasketTotals totals() const;
    /// Pieces of the current line's product that its customer has bought altogether; leaves the shared lines
    /// filtered on both. 0 without a line.
    double boughtOfProduct();

    /// Box texts of the current line.
    QStringList record_Display() const;
    /// Saves the boxes into the current line and corrects the stock: one transaction. What a column refuses
    /// stops the writing of the boxes behind it, and saving goes on without a word: that is meant. Ends on
    /// the last line.
    void save(const QStringList& boxes);

    struct Deleted {
        bool toldTotals = false; // the stock was given back to a product that is there
    };
    /// Deletes the current line and gives its quantity back: one transaction.
    Deleted deleteLine();
    /// Deletes every line of the chosen order, the quantities given back: one transaction. `yield` runs after
    /// each.
    void deleteOrder(const std::function<void()>& yield);

private:
    struct KeptLine;

    void record_Write(const QStringList& boxes);
    void payback();
    void giveBack(const KeptLine& line, bool& toProduct);
    bool returnLine(const KeptLine& line);
    void addProduct(const KeptLine& line);
    bool findProduct(const QString& number);
    /// Recomputes the totals of currentClientNum, whoever that is: that is meant.
    void cost_profit_num();

    Session& m_session;
    RecordsetPtr m_orders;
    RecordsetPtr m_lines;
    bool m_chosen = false;
    double oldQuantity = 0; // of the line being saved, 0 when idle
};

/// Whether a quantity of a product can stand in a line, told in the message otherwise (empty: it can). It is
/// compared with the whole stock, though the line's old quantity has left that already: that is meant. Leaves
/// the products' cursor on the product.
QString orderStockFault(Session& session, const QString& productNum, const QString& quantity);

/// Amounts of a line after a change of quantity or discount. A discount that is "0" or empty, below 0 or not
/// below 100 becomes "100".
LineAmounts orderLineAmounts(const QString& quantity, const QString& price, const QString& discount);

/// The message with an order's totals.
QString orderTotalsText(const BasketTotals& totals);

#pragma once

#include "data/boxFault.h"
#include "data/session.h"

#include <QStringList>

#include <optional>

/// The rules of a basket line, without the purchase window. Box texts are in the order of the line's boxes.

/// Indices of the line boxes that the rules speak of.
namespace LineBox {
inline constexpr int Order = 0, Client = 1, Product = 2, Date = 3, Name = 4, Place = 5, Spec = 6, Maker = 7,
                     Price = 8, Unit = 9, Quantity = 10, Due = 11, Discount = 12, Paid = 13, Count = 14;
}

/// The columns of the 14 line boxes, in box order.
const QStringList& lineColumns();

/// Val of a typed number; one beyond all bounds is more than any other.
double valOrMost(const QString& text);

/// What a change of quantity or discount gives: amount due and paid, in the shop's currency, and the discount
/// in percent of the price, "100" for one that is empty, not above 0 or not below 100.
struct LineAmounts {
    QString due;
    QString discount;
    QString paid;
};
LineAmounts lineAmounts(const QString& quantity, const QString& price, const QString& discount);

/// Whether a typed discount is only begun: its value is still 0, as of "", "0.", "-". More digits may make a
/// discount of it.
bool isBegunDiscount(const QString& typed);

/// Whether a discount is so small that it looks like tenths of the price, taken for percent: above 0, below
/// 10.
bool looksLikeTenths(const QString& discount);

/// Whether a line of these texts can be reckoned with: its amounts stay far from the largest number there is,
/// so that those of many lines can be added up.
bool lineFits(const QString& quantity, const QString& price, double unitCost);

/// Box texts of a new line for the current product: order number, customer, today, the product, amounts 0.
QStringList Record_display3(Session& session);

/// Box texts of the current basket row.
QStringList Record_display5(const RecordsetPtr& basket);

/// The first box that cannot stand, nothing if the line is good.
std::optional<BoxFault> text4_check(const QStringList& boxes);

/// Stores the boxes in the current row of a line's cursor (not yet updated), in their order; texts but the
/// discount cut to their columns. Throws RuntimeError where a column refuses its value, with those before it
/// assigned.
void writeLineBoxes(const RecordsetPtr& line, const QStringList& boxes);

/// Stores what the current row's 实付, 成本 and 数量 give as its 差额利润. Throws Overflow.
void writeLineMargin(const RecordsetPtr& line);

/// Stores the boxes, the unit cost and the margin in the current basket row (not yet updated), the discount
/// as the number that it is. Throws RuntimeError where a column refuses its value, with part of the row
/// assigned.
void writeRecord5(const RecordsetPtr& basket, QStringList boxes, double unitCost);

/// Puts every column of the current basket row back to what the table holds. Nothing in the program calls it.
void reture_OriginalValue(const RecordsetPtr& basket);

/// Empties the basket table, made again if it is missing, and gives a cursor on it. A period copy that lay in
/// it is gone, and with it the period.
RecordsetPtr openBasket(Session& session);

/// The row of the basket that holds a product, searched from the first row; found: it is current, else the
/// basket stays where it was.
bool check_Repeat_ProductNum(const RecordsetPtr& basket, const QString& productNum);

/// Whole pieces of a product that a customer has bought before, rounded after each line. The filter of the
/// lines is off afterwards.
qint32 product_Num3(Session& session, const QString& clientNum, const QString& productNum);

struct BasketTotals {
    double quantity = 0; // pieces
    double paid = 0;     // currency
};
BasketTotals basketTotals(const RecordsetPtr& basket);

/// Stored quantity of a product, wherever the products' cursor stands and whatever it is filtered to; nothing
/// for a product that is not in stock at all.
struct StockRow {
    RowId row;
    double quantity;
};
std::optional<StockRow> stockOf(Session& session, const QString& productNum);

/// The row of the one product that bears exactly this number, whatever Filter is on; nothing where none or
/// several bear it.
std::optional<RowId> productOfNumber(Session& session, const QString& productNum);

/// Whether a typed quantity of a product can be sold.
struct StockCheck {
    enum class Result { Passes, SoldOut, TooMany };
    Result result = Result::Passes;
    std::optional<StockRow> stock; // nothing for a product that is not in stock at all: it passes
    double left = 0;               // what the stock would be after the sale
};
StockCheck checkStock(Session& session, const QString& productNum, const QString& quantity);

/// Recomputes 合计, 实付 and 差额利润 of the current basket row from its own columns, as pending edits.
void recomputeLine(const RecordsetPtr& basket);

/// Whether the current basket row can be reckoned with after `text` has been typed into a field of its. More
/// than the stock counts as such: that has a message of its own.
bool basketRowFits(Session& session, const RecordsetPtr& basket, int field, const QString& text);

enum class BasketEdit { Done, TooMany };
/// What follows an edit in the basket's grid: the products' filter goes and their cursor stands on the line's
/// product; without such a product all sums are 0; more than stored plus available is put back.
BasketEdit afterBasketEdit(Session& session, const RecordsetPtr& basket);

/// "保存修改": writes all pending edits and recomputes every row; failed statements are passed over.
void saveBasket(Session& session, const RecordsetPtr& basket);

/// Deletes every row of the basket, yielding to the message queue after each without letting the user in.
void clearBasket(Session& session, const RecordsetPtr& basket);

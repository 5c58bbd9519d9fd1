#pragma once

#include "data/boxFault.h"
#include "data/session.h"

#include <QStringList>

#include <functional>
#include <optional>

/// The rules of product registration and stock-in, without the window. Box texts are in the order of the
/// eleven boxes.

namespace ProductBox {
inline constexpr int Date = 0, Number = 1, Name = 2, Spec = 3, Place = 4, Maker = 5, Unit = 6, Quantity = 7,
                     Cost = 8, Discount = 9, Price = 10, Count = 11;
}

/// The columns of the boxes, in box order.
const QStringList& productColumns();

/// Their captions, in the same order.
const QStringList& productBoxCaptions();

/// Texts of an empty form: today, quantity, cost and price "0".
QStringList clearRecord(Session& session);

/// Box texts of the current product; an empty form without one.
QStringList displayRecord(Session& session);

/// Writes the boxes into the current row of a cursor shaped like productTable: numbers by Val, 折扣
/// unconverted. Throws RuntimeError where a column refuses.
void writeRecord(const RecordsetPtr& target, const QStringList& boxes);

/// The first box that a new product cannot stand with; nothing if all are good.
std::optional<BoxFault> text2_Check(const QStringList& boxes);
/// The same without the quantity.
std::optional<BoxFault> text2_Check2(const QStringList& boxes);

enum class RegisterResult { Saved, Duplicate, WriteFailed };

/// Writes a new product into history and stock and uses its number up if it is the proposed one: one
/// transaction. A number that the stock-in history holds is a duplicate, whether the stock has it or not.
/// `yield` runs once between the history's row buffer and its update. On WriteFailed nothing is written.
RegisterResult registerProduct(Session& session, const QStringList& boxes,
                               const std::function<void()>& yield = {});

/// Whether an answer can be added to the current product's stock: numeric, and the sum finite.
bool canAddStock(Session& session, const QString& answer);

/// Books a stock-in of the current product: a history row with today's boxes, and the quantity of the stock
/// row raised by the answer (which may be negative): one transaction. False where the history refused its
/// row; then nothing is written.
bool addStock(Session& session, const QStringList& boxes, const QString& answer,
              const std::function<void()>& yield);

/// Deletes the current product from the stock alone; the histories keep their rows.
void deleteProduct(Session& session);

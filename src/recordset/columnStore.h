#pragma once

#include "recordset/cellValue.h"
#include "recordset/textPool.h"

#include <QString>

#include <cmath>
#include <limits>
#include <vector>

/// Slot of a row in an image; rows keep their slot for the life of the image.
using Row = std::uint32_t;

/// A column as the schema declares it.
struct ColumnInfo {
    QString name;
    QString declaration; // as in the schema, such as "TEXT(20) COLLATE NOCASE"
    ColumnType type = ColumnType::Text;
    int definedSize = 0; // text: characters; number 8; integers 4; date 19

    /// Reads type and size from a declared type.
    static ColumnInfo fromDeclaration(const QString& name, const QString& declaredType);
};

/// The cells of one column, one a row slot. Null is a code 0, a NaN (which the storage cannot hold) or the
/// lowest integer. Only the vector of the column's type is in use.
struct ColumnStore {
    static constexpr qint32 NullInteger = std::numeric_limits<qint32>::min();
    /// Made in front for rows that come: the first of them shall not move all the others.
    static constexpr std::size_t kRoom = 65'536;
    static constexpr qint64 NullMoment = std::numeric_limits<qint64>::min();

    ColumnInfo info;
    bool loaded = false;
    TextPool pool;
    std::vector<TextPool::Code> codes;
    std::vector<double> numbers;
    std::vector<qint32> integers;
    std::vector<qint64> moments;

    CellValue value(std::size_t row) const;
    QString text(TextPool::Code code) const;
    /// What is shown of a cell: fieldText, of a long text its beginning.
    QString shown(std::size_t row) const;
    void set(std::size_t row, const CellValue& value);
    void appendNull();
    void reserve(std::size_t rows);
    void resize(std::size_t rows);
    /// Sort key of a cell, Null lowest, for the types other than text.
    quint64 ordinal(std::size_t row) const;
    std::size_t memory() const;
    /// These cells, the texts under the same codes, at `slots` (one a cell) of a column of so many rows; Null
    /// elsewhere.
    ColumnStore spread(const std::vector<Row>& slots, std::size_t rows) const;
    /// A column of its own with the cells of these rows, in this order.
    ColumnStore gathered(const std::vector<Row>& rows) const;
};

/// Keys whose unsigned order is the order of the values; 0 is left to Null.
quint64 ordinalOf(double number);
quint64 ordinalOf(qint64 number);

/// What assigning `value` to a column of this kind stores. Throws TypeMismatch or TextTooLong.
CellValue converted(const CellValue& value, const ColumnInfo& column);

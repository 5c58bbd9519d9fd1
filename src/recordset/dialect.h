#pragma once

#include "recordset/condition.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class TokenReader;

/// One entry of a select list: all columns, a column, or an aggregate of one.
struct SelectItem {
    enum class Kind { All, Column, Sum, Count };
    Kind kind = Kind::All;
    QString column;
    QString alias; // empty: the column's own name

    QString name() const { return alias.isEmpty() ? column : alias; }
    bool isAggregate() const { return kind == Kind::Sum || kind == Kind::Count; }
};

struct OrderItem {
    SelectItem item;
    bool descending = false;
};

/// A statement of the system's own SQL dialect, parsed.
struct SqlStatement {
    enum class Kind { Select, SelectInto, DeleteAll, DropTable };
    Kind kind = Kind::Select;
    QString table;
    QString into;
    bool distinct = false;
    int top = -1;
    std::vector<SelectItem> items;
    std::optional<Condition> where;
    QStringList groupBy;
    std::vector<OrderItem> orderBy;

    /// Whether it gives a read-only picture (aggregate, Group By, distinct) and no table cursor.
    bool isResult() const;
};

/// Parses one statement. Throws RuntimeError(BadText) for a text outside the dialect, never guesses.
SqlStatement parseStatement(const QString& text);

/// Parses "Select ..." and leaves the reader behind it.
SqlStatement parseSelect(TokenReader& reader);

/// The condition in SQLite's words. Throws RuntimeError(BadText) for an impossible date or Like pattern.
QString renderCondition(const Condition& condition);

/// " WHERE ..." or nothing.
QString renderWhere(const SqlStatement& statement);

/// A name as SQLite takes it, in double quotes.
QString quotedName(const QString& name);

/// A text as a SQLite literal, in single quotes.
QString quotedText(const QString& text);

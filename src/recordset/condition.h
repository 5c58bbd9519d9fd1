#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class TokenReader;
struct SqlStatement;

enum class CompareOp { Equal, NotEqual, Less, Greater, LessEqual, GreaterEqual, Like };

struct Literal {
    enum class Kind { Text, Number, Date };
    Kind kind = Kind::Text;
    QString text; // what stands between the marks, or the digits
};

/// `column op literal`, such as 客户编号 = '7'.
struct Clause {
    QString column;
    CompareOp op = CompareOp::Equal;
    Literal literal;
};

/// A parsed condition. Filter and Find know Clause, And, Or; statements also Not and In.
struct Condition {
    enum class Kind { Clause, And, Or, Not, InSelect, InList };
    Kind kind = Kind::Clause;
    Clause clause;                        // Clause; its column also for InSelect, InList
    std::vector<Condition> parts;         // And, Or, Not
    std::shared_ptr<SqlStatement> select; // InSelect
    QStringList list;                     // InList

    /// Whether only clauses, And and Or occur, so that a Predicate can be compiled of it.
    bool isFilter() const;
};

/// Parses a Filter text. Throws RuntimeError(BadText) for anything outside the filter grammar.
Condition parseFilter(const QString& text);

/// Parses a Find text: exactly one clause. Throws RuntimeError(BadText).
Clause parseFind(const QString& text);

/// Parses a Where condition and leaves the reader behind it.
Condition parseWhere(TokenReader& reader);

/// One column of a Sort text.
struct SortColumn {
    QString column;
    bool descending = false;
};

/// Parses a Sort text, "" gives no column. Throws RuntimeError(BadText).
std::vector<SortColumn> parseSort(const QString& text);

/// A stored key as the inside of a quoted literal: the apostrophe doubled.
QString quotedInside(const QString& text);

/// The run of a Like pattern between its wildcards. Throws RuntimeError(BadText) for a wildcard at the start
/// only or one left inside.
struct LikePattern {
    enum class Kind { Anything, Equals, StartsWith, Contains };
    Kind kind = Kind::Equals;
    QString text;
};
LikePattern parseLike(const QString& pattern);

#include "recordset/dialect.h"

#include "recordset/error.h"
#include "recordset/textDate.h"
#include "recordset/tokenizer.h"

namespace {

SelectItem parseItem(TokenReader& reader) {
    SelectItem item;
    if (reader.takeSymbol(u"*"))
        return item;
    const bool call = reader.peekNext().isSymbol(u"(");
    const Token name = reader.peek();
    if (call) {
        if (!name.isWord(u"Sum") && !name.isWord(u"Count"))
            reader.refuse();
        item.kind = name.isWord(u"Sum") ? SelectItem::Kind::Sum : SelectItem::Kind::Count;
        reader.take();
        reader.expectSymbol(u"(");
        item.column = reader.expectName();
        reader.expectSymbol(u")");
    } else {
        item.kind = SelectItem::Kind::Column;
        item.column = reader.expectName();
    }
    return item;
}

std::vector<SelectItem> parseItems(TokenReader& reader) {
    std::vector<SelectItem> items;
    do {
        SelectItem item = parseItem(reader);
        if (item.kind != SelectItem::Kind::All && reader.takeWord(u"As"))
            item.alias = reader.expectName();
        items.push_back(item);
    } while (reader.takeSymbol(u","));
    return items;
}

int parseTop(TokenReader& reader) {
    if (!reader.takeWord(u"Top"))
        return -1;
    bool ok = false;
    const int count = reader.take().text.toInt(&ok);
    if (!ok || count < 0)
        reader.refuse();
    return count;
}

void parseGroupBy(TokenReader& reader, SqlStatement& statement) {
    if (!reader.takeWord(u"Group"))
        return;
    reader.expectWord(u"By");
    do
        statement.groupBy << reader.expectName();
    while (reader.takeSymbol(u","));
}

void parseOrderBy(TokenReader& reader, SqlStatement& statement) {
    if (!reader.takeWord(u"Order"))
        return;
    reader.expectWord(u"By");
    do {
        OrderItem order{parseItem(reader), false};
        if (order.item.kind == SelectItem::Kind::All)
            reader.refuse();
        if (reader.takeWord(u"Desc"))
            order.descending = true;
        else
            reader.takeWord(u"Asc");
        statement.orderBy.push_back(order);
    } while (reader.takeSymbol(u","));
}

SqlStatement parseDelete(TokenReader& reader) {
    SqlStatement statement;
    statement.kind = SqlStatement::Kind::DeleteAll;
    reader.expectWord(u"Delete");
    reader.expectSymbol(u"*");
    reader.expectWord(u"From");
    statement.table = reader.expectName();
    return statement;
}

SqlStatement parseDrop(TokenReader& reader) {
    SqlStatement statement;
    statement.kind = SqlStatement::Kind::DropTable;
    reader.expectWord(u"Drop");
    reader.expectWord(u"Table");
    statement.table = reader.expectName();
    return statement;
}

/// A list of columns beside an aggregate must be grouped by, "*" never stands with a Group By.
bool listIsSound(const SqlStatement& statement) {
    bool aggregate = false;
    for (const SelectItem& item : statement.items)
        aggregate = aggregate || item.isAggregate();
    if (!aggregate && statement.groupBy.isEmpty())
        return true;
    for (const SelectItem& item : statement.items)
        if (item.kind == SelectItem::Kind::All ||
            (item.kind == SelectItem::Kind::Column &&
             !statement.groupBy.contains(item.column, Qt::CaseInsensitive)))
            return false;
    return !statement.distinct;
}

QString opText(CompareOp op) {
    switch (op) {
    case CompareOp::Equal:
        return QStringLiteral("=");
    case CompareOp::NotEqual:
        return QStringLiteral("<>");
    case CompareOp::Less:
        return QStringLiteral("<");
    case CompareOp::Greater:
        return QStringLiteral(">");
    case CompareOp::LessEqual:
        return QStringLiteral("<=");
    default:
        return QStringLiteral(">=");
    }
}

QString renderLiteral(const Literal& literal) {
    if (literal.kind == Literal::Kind::Number)
        return literal.text;
    if (literal.kind == Literal::Kind::Text)
        return quotedText(literal.text);
    const auto moment = parseDateLiteral(literal.text);
    if (!moment)
        fail(ErrorNumber::BadText, QStringLiteral("日期不存在：%1").arg(literal.text));
    return quotedText(QString::fromLatin1(isoText(*moment)));
}

QString renderLike(const Clause& clause) {
    const LikePattern pattern = parseLike(clause.literal.text);
    const QString column = quotedName(clause.column);
    const QString text = QStringLiteral("lower(%1)").arg(quotedText(pattern.text));
    switch (pattern.kind) {
    case LikePattern::Kind::Anything:
        return column + QStringLiteral(" IS NOT NULL");
    case LikePattern::Kind::Equals:
        return column + QStringLiteral(" = ") + quotedText(pattern.text);
    case LikePattern::Kind::StartsWith:
        return QStringLiteral("instr(lower(%1), %2) = 1").arg(column, text);
    default:
        return QStringLiteral("instr(lower(%1), %2) > 0").arg(column, text);
    }
}

QString renderClause(const Clause& clause) {
    if (clause.op == CompareOp::Like)
        return renderLike(clause);
    return quotedName(clause.column) + u' ' + opText(clause.op) + u' ' + renderLiteral(clause.literal);
}

QString renderJoined(const Condition& condition, const QString& word) {
    QStringList parts;
    for (const Condition& part : condition.parts)
        parts << u'(' + renderCondition(part) + u')';
    return parts.join(word);
}

QString renderIn(const Condition& condition) {
    QStringList list;
    for (const QString& text : condition.list)
        list << quotedText(text);
    QString inside = list.join(QStringLiteral(", "));
    if (condition.kind == Condition::Kind::InSelect)
        inside = QStringLiteral("SELECT %1 FROM %2%3")
                     .arg(quotedName(condition.select->items.front().column),
                          quotedName(condition.select->table), renderWhere(*condition.select));
    return quotedName(condition.clause.column) + QStringLiteral(" IN (") + inside + u')';
}

} // namespace

bool SqlStatement::isResult() const {
    if (distinct || !groupBy.isEmpty())
        return true;
    for (const SelectItem& item : items)
        if (item.isAggregate())
            return true;
    return false;
}

SqlStatement parseSelect(TokenReader& reader) {
    SqlStatement statement;
    reader.expectWord(u"Select");
    statement.distinct = reader.takeWord(u"distinct");
    statement.top = parseTop(reader);
    statement.items = parseItems(reader);
    if (reader.takeWord(u"Into")) {
        statement.kind = SqlStatement::Kind::SelectInto;
        statement.into = reader.expectName();
    }
    reader.expectWord(u"From");
    statement.table = reader.expectName();
    if (reader.takeWord(u"Where"))
        statement.where = parseWhere(reader);
    parseGroupBy(reader, statement);
    parseOrderBy(reader, statement);
    if (!listIsSound(statement))
        reader.refuse();
    return statement;
}

SqlStatement parseStatement(const QString& text) {
    TokenReader reader(text);
    SqlStatement statement = reader.peek().isWord(u"Delete") ? parseDelete(reader)
                             : reader.peek().isWord(u"Drop") ? parseDrop(reader)
                                                             : parseSelect(reader);
    reader.expectEnd();
    return statement;
}

QString renderCondition(const Condition& condition) {
    switch (condition.kind) {
    case Condition::Kind::Clause:
        return renderClause(condition.clause);
    case Condition::Kind::And:
        return renderJoined(condition, QStringLiteral(" AND "));
    case Condition::Kind::Or:
        return renderJoined(condition, QStringLiteral(" OR "));
    case Condition::Kind::Not:
        return QStringLiteral("NOT (") + renderCondition(condition.parts.front()) + u')';
    default:
        return renderIn(condition);
    }
}

QString renderWhere(const SqlStatement& statement) {
    return statement.where ? QStringLiteral(" WHERE ") + renderCondition(*statement.where) : QString();
}

QString quotedName(const QString& name) {
    QString doubled = name;
    return u'"' + doubled.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString quotedText(const QString& text) {
    return u'\'' + quotedInside(text) + u'\'';
}

#include "recordset/condition.h"

#include "recordset/dialect.h"
#include "recordset/error.h"
#include "recordset/tokenizer.h"

#include <optional>

namespace {

constexpr int kDeepestNesting = 100;

std::optional<CompareOp> compareOp(const Token& token) {
    if (token.isWord(u"Like"))
        return CompareOp::Like;
    if (token.kind != Token::Kind::Symbol)
        return std::nullopt;
    static const std::pair<QStringView, CompareOp> symbols[] = {
        {u"=", CompareOp::Equal},   {u"<>", CompareOp::NotEqual},  {u"<", CompareOp::Less},
        {u">", CompareOp::Greater}, {u"<=", CompareOp::LessEqual}, {u">=", CompareOp::GreaterEqual},
    };
    for (const auto& [symbol, op] : symbols)
        if (token.text == symbol)
            return op;
    return std::nullopt;
}

std::optional<Literal::Kind> literalKind(const Token& token) {
    switch (token.kind) {
    case Token::Kind::Text:
        return Literal::Kind::Text;
    case Token::Kind::Number:
        return Literal::Kind::Number;
    case Token::Kind::Date:
        return Literal::Kind::Date;
    default:
        return std::nullopt;
    }
}

class ConditionParser {
public:
    enum class Grammar { Filter, Statement };

    ConditionParser(TokenReader& reader, Grammar grammar)
        : m_reader(reader)
        , m_grammar(grammar) {}

    Condition parse() { return anyOf(); }

    Clause clause() {
        Clause result;
        result.column = m_reader.expectName();
        const auto op = compareOp(m_reader.peek());
        if (!op)
            m_reader.refuse();
        m_reader.take();
        result.op = *op;
        const auto kind = literalKind(m_reader.peek());
        if (!kind)
            m_reader.refuse();
        result.literal = {*kind, m_reader.take().text};
        return result;
    }

private:
    struct Factor {
        Condition condition;
        bool bracketedOr = false;
    };

    static bool containsOr(const Condition& condition) {
        if (condition.kind == Condition::Kind::Or)
            return true;
        for (const Condition& part : condition.parts)
            if (containsOr(part))
                return true;
        return false;
    }

    /// "Select c From t [Where ...]", the one form that stands inside In.
    static bool isPlainColumn(const SqlStatement& select) {
        return select.kind == SqlStatement::Kind::Select && !select.distinct && select.top < 0 &&
               select.groupBy.isEmpty() && select.orderBy.empty() && select.items.size() == 1 &&
               select.items.front().kind == SelectItem::Kind::Column;
    }

    static Condition joined(Condition::Kind kind, std::vector<Condition> parts) {
        if (parts.size() == 1)
            return std::move(parts.front());
        Condition result;
        result.kind = kind;
        result.parts = std::move(parts);
        return result;
    }

    Condition anyOf() {
        if (++m_depth > kDeepestNesting)
            m_reader.refuse();
        std::vector<Condition> parts;
        do
            parts.push_back(allOf());
        while (m_reader.takeWord(u"Or"));
        --m_depth;
        return joined(Condition::Kind::Or, std::move(parts));
    }

    Condition allOf() {
        std::vector<Condition> parts;
        bool bracketedOr = false;
        do {
            Factor next = factor();
            bracketedOr = bracketedOr || next.bracketedOr;
            parts.push_back(std::move(next.condition));
        } while (m_reader.takeWord(u"And"));
        if (m_grammar == Grammar::Filter && bracketedOr && parts.size() > 1)
            m_reader.refuse();
        return joined(Condition::Kind::And, std::move(parts));
    }

    Factor factor() {
        if (m_grammar == Grammar::Statement && m_reader.takeWord(u"Not"))
            return {negated(), false};
        if (m_reader.takeSymbol(u"(")) {
            Condition inside = anyOf();
            m_reader.expectSymbol(u")");
            const bool hasOr = containsOr(inside);
            return {std::move(inside), hasOr};
        }
        if (m_grammar == Grammar::Statement && m_reader.peekNext().isWord(u"In"))
            return {memberOf(), false};
        Condition single;
        single.clause = clause();
        return {std::move(single), false};
    }

    Condition negated() {
        if (++m_depth > kDeepestNesting)
            m_reader.refuse();
        Condition result;
        result.kind = Condition::Kind::Not;
        result.parts.push_back(factor().condition);
        --m_depth;
        return result;
    }

    Condition memberOf() {
        Condition result;
        result.clause.column = m_reader.expectName();
        m_reader.expectWord(u"In");
        m_reader.expectSymbol(u"(");
        if (m_reader.peek().isWord(u"Select")) {
            result.kind = Condition::Kind::InSelect;
            result.select = std::make_shared<SqlStatement>(parseSelect(m_reader));
            if (!isPlainColumn(*result.select))
                m_reader.refuse();
        } else {
            result.kind = Condition::Kind::InList;
            do {
                if (m_reader.peek().kind != Token::Kind::Text)
                    m_reader.refuse();
                result.list << m_reader.take().text;
            } while (m_reader.takeSymbol(u","));
        }
        m_reader.expectSymbol(u")");
        return result;
    }

    TokenReader& m_reader;
    Grammar m_grammar;
    int m_depth = 0;
};

bool isWildcard(QChar c) {
    return c == u'%' || c == u'*';
}

} // namespace

bool Condition::isFilter() const {
    if (kind != Kind::Clause && kind != Kind::And && kind != Kind::Or)
        return false;
    for (const Condition& part : parts)
        if (!part.isFilter())
            return false;
    return true;
}

Condition parseFilter(const QString& text) {
    TokenReader reader(text);
    Condition condition = ConditionParser(reader, ConditionParser::Grammar::Filter).parse();
    reader.expectEnd();
    return condition;
}

Clause parseFind(const QString& text) {
    TokenReader reader(text);
    Clause clause = ConditionParser(reader, ConditionParser::Grammar::Filter).clause();
    reader.expectEnd();
    return clause;
}

Condition parseWhere(TokenReader& reader) {
    return ConditionParser(reader, ConditionParser::Grammar::Statement).parse();
}

std::vector<SortColumn> parseSort(const QString& text) {
    std::vector<SortColumn> columns;
    TokenReader reader(text);
    if (reader.peek().kind == Token::Kind::End)
        return columns;
    do {
        SortColumn column{reader.expectName(), false};
        if (reader.takeWord(u"Desc"))
            column.descending = true;
        else
            reader.takeWord(u"Asc");
        columns.push_back(column);
    } while (reader.takeSymbol(u","));
    reader.expectEnd();
    return columns;
}

QString quotedInside(const QString& text) {
    QString doubled = text;
    return doubled.replace(u'\'', QStringLiteral("''"));
}

LikePattern parseLike(const QString& pattern) {
    qsizetype first = 0;
    qsizetype last = pattern.size();
    while (first < last && isWildcard(pattern[first]))
        ++first;
    while (last > first && isWildcard(pattern[last - 1]))
        --last;
    const bool atStart = first > 0;
    const bool atEnd = last < pattern.size();
    const QString inside = pattern.mid(first, last - first);
    if (inside.isEmpty() && atStart)
        return {LikePattern::Kind::Anything, {}};
    if (inside.contains(u'%') || inside.contains(u'*') || (atStart && !atEnd))
        fail(ErrorNumber::BadText, QStringLiteral("Like 的通配符位置不对"), pattern);
    if (!atStart && !atEnd)
        return {LikePattern::Kind::Equals, inside};
    return {atStart ? LikePattern::Kind::Contains : LikePattern::Kind::StartsWith, inside};
}

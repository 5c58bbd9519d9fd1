#include "recordset/tokenizer.h"

#include "recordset/error.h"

namespace {

[[noreturn]] void refuseText(const QString& source) {
    fail(ErrorNumber::BadText, QStringLiteral("条件或语句有语法错误"), source);
}

bool isNameStart(QChar c) {
    return c.isLetter() || c == u'_' || c.isSurrogate();
}

bool isAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

class Tokenizer {
public:
    explicit Tokenizer(const QString& source)
        : m_source(source) {}

    std::vector<Token> run() {
        std::vector<Token> tokens;
        while (skipBlanks())
            tokens.push_back(next());
        tokens.push_back({});
        return tokens;
    }

private:
    bool skipBlanks() {
        while (m_at < m_source.size() && m_source[m_at].isSpace())
            ++m_at;
        return m_at < m_source.size();
    }

    QChar at(qsizetype index) const { return index < m_source.size() ? m_source[index] : QChar(); }

    Token next() {
        const QChar c = m_source[m_at];
        if (c == u'\'')
            return quoted();
        if (c == u'[')
            return {Token::Kind::BracketedName, enclosed(u']')};
        if (c == u'#')
            return {Token::Kind::Date, enclosed(u'#')};
        if (startsNumber())
            return number();
        if (isNameStart(c))
            return name();
        return symbol();
    }

    Token quoted() {
        QString text;
        for (++m_at;; ++m_at) {
            if (m_at >= m_source.size())
                refuseText(m_source);
            if (m_source[m_at] == u'\'') {
                ++m_at;
                if (at(m_at) != u'\'')
                    return {Token::Kind::Text, text};
            }
            text += m_source[m_at];
        }
    }

    QString enclosed(QChar end) {
        const qsizetype close = m_source.indexOf(end, m_at + 1);
        if (close < 0 || close == m_at + 1)
            refuseText(m_source);
        QString inside = m_source.mid(m_at + 1, close - m_at - 1);
        m_at = close + 1;
        return inside;
    }

    bool startsNumber() const {
        qsizetype from = m_at;
        if (at(from) == u'-' || at(from) == u'+')
            ++from;
        if (at(from) == u'.')
            ++from;
        return isAsciiDigit(at(from));
    }

    Token number() {
        const qsizetype start = m_at++;
        const auto digits = [this] {
            while (isAsciiDigit(at(m_at)))
                ++m_at;
        };
        digits();
        if (at(m_at) == u'.') {
            ++m_at;
            digits();
        }
        if (at(m_at) == u'e' || at(m_at) == u'E') {
            const qsizetype sign = at(m_at + 1) == u'-' || at(m_at + 1) == u'+' ? 1 : 0;
            if (isAsciiDigit(at(m_at + 1 + sign))) {
                m_at += 1 + sign;
                digits();
            }
        }
        if (isNameStart(at(m_at)))
            refuseText(m_source);
        return {Token::Kind::Number, m_source.mid(start, m_at - start)};
    }

    Token name() {
        const qsizetype start = m_at;
        while (isNameStart(at(m_at)) || at(m_at).isDigit() || at(m_at).isMark())
            ++m_at;
        return {Token::Kind::Name, m_source.mid(start, m_at - start)};
    }

    Token symbol() {
        for (const auto two : {u"<>", u"<=", u">="})
            if (QStringView(m_source).mid(m_at, 2) == two) {
                m_at += 2;
                return {Token::Kind::Symbol, QString::fromUtf16(two)};
            }
        if (!QStringView(u"=<>(),*").contains(m_source[m_at]))
            refuseText(m_source);
        return {Token::Kind::Symbol, QString(m_source[m_at++])};
    }

    const QString& m_source;
    qsizetype m_at = 0;
};

} // namespace

std::vector<Token> tokenize(const QString& source) {
    return Tokenizer(source).run();
}

Token TokenReader::take() {
    Token token = peek();
    if (m_at + 1 < m_tokens.size())
        ++m_at;
    return token;
}

bool TokenReader::takeWord(QStringView word) {
    if (!peek().isWord(word))
        return false;
    take();
    return true;
}

bool TokenReader::takeSymbol(QStringView symbol) {
    if (!peek().isSymbol(symbol))
        return false;
    take();
    return true;
}

void TokenReader::expectWord(QStringView word) {
    if (!takeWord(word))
        refuse();
}

void TokenReader::expectSymbol(QStringView symbol) {
    if (!takeSymbol(symbol))
        refuse();
}

QString TokenReader::expectName() {
    if (peek().kind != Token::Kind::Name && peek().kind != Token::Kind::BracketedName)
        refuse();
    return take().text;
}

void TokenReader::expectEnd() {
    if (peek().kind != Token::Kind::End)
        refuse();
}

void TokenReader::refuse() const {
    refuseText(m_source);
}

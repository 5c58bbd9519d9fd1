#pragma once

#include <QString>
#include <QStringView>

#include <vector>

/// One piece of a condition, sort list or statement.
struct Token {
    enum class Kind { Name, BracketedName, Text, Number, Date, Symbol, End };
    Kind kind = Kind::End;
    /// Name without brackets; inside of a quoted text (doubled quotes made single) or date; digits; symbol.
    QString text;

    bool isWord(QStringView word) const {
        return kind == Kind::Name && text.compare(word, Qt::CaseInsensitive) == 0;
    }
    bool isSymbol(QStringView symbol) const { return kind == Kind::Symbol && text == symbol; }
};

/// Splits `source` into tokens, an End token last. Throws RuntimeError(BadText) for an unclosed quote,
/// bracket or date, and for a character that starts no token.
std::vector<Token> tokenize(const QString& source);

/// Reads tokens one after the other; every refusal names the whole source text.
class TokenReader {
public:
    explicit TokenReader(const QString& source)
        : m_source(source)
        , m_tokens(tokenize(source)) {}

    const Token& peek() const { return m_tokens[m_at]; }
    const Token& peekNext() const { return m_tokens[std::min(m_at + 1, m_tokens.size() - 1)]; }
    Token take();
    bool takeWord(QStringView word);
    bool takeSymbol(QStringView symbol);
    void expectWord(QStringView word);
    void expectSymbol(QStringView symbol);
    /// A column or table name.
    QString expectName();
    void expectEnd();
    [[noreturn]] void refuse() const;

private:
    QString m_source;
    std::vector<Token> m_tokens;
    std::size_t m_at = 0;
};

#include "recordset/textTest.h"

#include <algorithm>

namespace {

bool holds(CompareOp op, int order) {
    switch (op) {
    case CompareOp::Less:
        return order < 0;
    case CompareOp::Greater:
        return order > 0;
    case CompareOp::LessEqual:
        return order <= 0;
    default:
        return order >= 0;
    }
}

} // namespace

TextTest::TextTest(const Clause& clause)
    : m_op(clause.op) {
    QString text = clause.literal.text;
    if (m_op == CompareOp::Like) {
        const LikePattern pattern = parseLike(text);
        m_like = pattern.kind;
        text = pattern.text;
        if (m_like == LikePattern::Kind::Equals)
            m_op = CompareOp::Equal;
    }
    m_text = text.toStdString();
    m_folded = foldedAscii(m_text);
}

bool TextTest::operator()(std::string_view text) const {
    if (m_op == CompareOp::Like)
        return like(text);
    if (m_op == CompareOp::Equal)
        return equalFolded(text, m_text);
    if (m_op == CompareOp::NotEqual)
        return !equalFolded(text, m_text);
    if (equalFolded(text, m_text))
        return m_op == CompareOp::LessEqual || m_op == CompareOp::GreaterEqual;
    return holds(m_op, m_collation.compare(text, m_text));
}

bool TextTest::like(std::string_view text) const {
    if (m_like == LikePattern::Kind::Anything)
        return true;
    if (m_like == LikePattern::Kind::StartsWith)
        return text.size() >= m_text.size() && equalFolded(text.substr(0, m_text.size()), m_text);
    return text.size() >= m_text.size() && foldedAscii(text).find(m_folded) != std::string::npos;
}

std::vector<char> TextTest::hits(const TextPool& pool) const {
    std::vector<char> hits(std::size_t(pool.last()) + 1, 0);
    if (m_op == CompareOp::Like && m_like == LikePattern::Kind::Contains) {
        for (const TextPool::Code code : pool.containing(m_folded))
            hits[code] = 1;
        return hits;
    }
    for (TextPool::Code code = 1; code <= pool.last(); ++code)
        hits[code] = (*this)(pool.text(code));
    return hits;
}

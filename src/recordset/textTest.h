#pragma once

#include "recordset/collation.h"
#include "recordset/condition.h"

#include <string>
#include <vector>

/// The test of one text column by a clause of a condition, on UTF-8.
class TextTest {
public:
    /// Throws RuntimeError(BadText) for a Like with its wildcards in wrong places.
    explicit TextTest(const Clause& clause);

    bool isEquality() const { return m_op == CompareOp::Equal; }
    const std::string& text() const { return m_text; }
    bool operator()(std::string_view text) const;
    /// By code: 1 where the text of the pool passes. Null never does.
    std::vector<char> hits(const TextPool& pool) const;

private:
    bool like(std::string_view text) const;

    CompareOp m_op;
    LikePattern::Kind m_like = LikePattern::Kind::Equals;
    std::string m_text;
    std::string m_folded;
    Collation m_collation;
};

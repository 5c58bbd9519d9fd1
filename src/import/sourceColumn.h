#pragma once

#include "recordset/columnStore.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

/// The texts of a source column as they come: bytes one behind the other, and which of them a row has. A text
/// that came a little earlier is not held again, so that a column of few texts is small; a column of many is
/// no larger than the texts and eight bytes a row.
class SourceColumn {
public:
    SourceColumn();

    void add(std::string_view text);
    void addNull() { m_codes.push_back(TextPool::Null); }
    bool isNull(std::size_t row) const { return m_codes[row] == TextPool::Null; }
    std::string_view text(std::size_t row) const { return held(m_codes[row]); }

    /// The same cells as a column of a table's picture. Nothing stays here.
    ColumnStore moveInto(const ColumnInfo& info);

private:
    using Code = TextPool::Code;
    static constexpr std::size_t kRecent = 1024; // places for texts that came a little earlier

    std::string_view held(Code code) const {
        return std::string_view(m_bytes).substr(m_ends[code - 1], m_ends[code] - m_ends[code - 1]);
    }

    std::string m_bytes;
    std::vector<std::uint32_t> m_ends; // m_ends[c] is where the text of code c ends
    std::vector<Code> m_codes;         // of the rows
    std::array<Code, kRecent> m_recent{};
};

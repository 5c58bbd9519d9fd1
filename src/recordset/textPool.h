#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// A-Z made a-z, every other byte of the UTF-8 text as it is: the rule of equality for texts.
std::string foldedAscii(std::string_view text);
bool equalFolded(std::string_view a, std::string_view b);

/// The distinct texts of one column as UTF-8, each under a code. Append-only: a code keeps its text as long
/// as the pool lives. Code 0 stands for Null and is never given out.
class TextPool {
public:
    using Code = std::uint32_t;
    static constexpr Code Null = 0;

    TextPool();
    /// Texts that another kept, one behind the other: the text of code c goes from ends[c - 1] to ends[c].
    /// One text may stand under several codes. What finds them is made when one is looked for.
    TextPool(std::string bytes, std::vector<std::uint32_t> ends);

    Code intern(std::string_view text);
    /// The code of exactly this text, Null if it is not held.
    Code find(std::string_view text) const;
    /// The codes of all texts equal to this one without regard to the case of A-Z.
    std::vector<Code> findEqual(std::string_view text) const;
    /// One code for all texts that are equal without regard to the case of A-Z.
    Code foldClass(Code code) const;

    std::string_view text(Code code) const {
        return {m_bytes.data() + m_ends[code - 1], m_ends[code] - m_ends[code - 1]};
    }
    /// The highest code given out.
    Code last() const { return Code(m_ends.size() - 1); }
    std::size_t memory() const;

private:
    struct Slot {
        Code code = Null;
        std::uint32_t hash = 0;
    };

    template <typename Visit> void visitChain(std::string_view text, Visit&& visit) const;
    void grow();
    void place(Slot slot) const;
    void placeAll() const;

    std::string m_bytes;
    std::vector<std::uint32_t> m_ends; // m_ends[c] is where the text of code c ends
    mutable std::vector<Slot> m_slots; // none until a text is looked for
    bool m_hasCaseVariants = false;
};

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A-Z made a-z, every other byte of the UTF-8 text as it is: the rule of equality for texts.
std::string foldedAscii(std::string_view text);
bool equalFolded(std::string_view a, std::string_view b);

/// The distinct texts of one column as UTF-8, each under a code. Append-only: a code keeps its text as long
/// as the pool lives. Code 0 stands for Null and is never given out. A pool that is assigned is the same
/// pool: what the one takes in is in the other.
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
    /// The codes of the texts that contain one (which is folded, see foldedAscii, and not empty) without
    /// regard to the case of A-Z, ascending.
    std::vector<Code> containing(std::string_view folded) const;
    /// One code for all texts that are equal without regard to the case of A-Z.
    Code foldClass(Code code) const;

    std::string_view text(Code code) const {
        const Data& data = *m_data;
        return {data.bytes.data() + data.ends[code - 1], data.ends[code] - data.ends[code - 1]};
    }
    /// Whether some texts are equal but for the case of A-Z.
    bool hasCaseVariants() const { return m_data->hasCaseVariants; }
    bool isSameAs(const TextPool& other) const { return m_data == other.m_data; }
    /// A pool of its own with the same texts under the same codes.
    TextPool copy() const;
    /// The highest code given out.
    Code last() const { return Code(m_data->ends.size() - 1); }
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

    struct Data {
        std::string bytes;
        std::vector<std::uint32_t> ends; // ends[c] is where the text of code c ends
        std::vector<Slot> slots;         // none until a text is looked for
        bool hasCaseVariants = false;
    };

    std::shared_ptr<Data> m_data;
};

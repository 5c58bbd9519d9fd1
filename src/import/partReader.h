#pragma once

#include <QIODevice>
#include <QString>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Reads a part of a workbook, XML in UTF-8, element by element as it is unpacked; names count without their
/// name space. It knows no more of XML than workbooks are made of, and so takes a fraction of the time of a
/// reader that knows all of it. What a workbook never holds is refused, with ImportError: a document type and
/// with it every entity of its own, elements nested without end, another encoding, and XML that is none.
class PartReader {
public:
    static constexpr std::size_t kDeepest = 256;
    static constexpr std::size_t kLongest = 32U << 20; // bytes of one text or tag

    explicit PartReader(std::unique_ptr<QIODevice> part);

    /// The next child of the element that is open, which becomes the open one. False at the end of that
    /// element, which then is closed. Texts and what else stands between them is passed over.
    bool child();
    /// Passes over the rest of the element that is open.
    void skip();
    /// The texts within the element that is open, its end included. UTF-8, valid until the next call.
    std::string_view text();

    /// Of the element that was opened or closed last.
    bool is(std::string_view name) const { return m_name == name; }
    /// An attribute of the element that was opened last, as it stands there; empty without it. Valid until
    /// the next call.
    std::string_view raw(std::string_view name) const;
    /// The same as a text.
    QString attribute(std::string_view name) const;

private:
    enum class Token { Start, End, Text, Passed, Document };
    struct Attribute {
        std::string_view name;
        std::string_view value;
    };

    Token next();
    Token takeMarkup();
    Token takeStart(std::string_view tag);
    Token takeEnd(std::string_view tag);
    void takeAttributes(std::string_view rest);
    void takeDeclaration(std::string_view declaration);
    void close();
    bool refill();
    std::size_t find(std::string_view what, std::size_t from);
    std::size_t findTagEnd();
    bool has(std::string_view start);
    /// What lies before a place of the buffer, which is read then up to `behind`.
    std::string_view take(std::size_t from, std::size_t to, std::size_t behind);

    std::unique_ptr<QIODevice> m_part;
    std::string m_buffer;
    std::size_t m_at = 0;     // what is read of the buffer
    std::string_view m_piece; // of a text
    bool m_isPlain = false;   // a text whose signs all mean themselves
    std::string m_name;       // without its name space
    std::vector<Attribute> m_attributes;
    std::vector<std::string> m_open; // names as they stand
    std::size_t m_depth = 0;
    bool m_closes = false; // the element that was opened last has no content
    bool m_begun = false;
    std::string m_text;
};

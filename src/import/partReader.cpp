#include "import/partReader.h"

#include "import/tableReader.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace {

constexpr std::size_t kPiece = 256U << 10; // bytes

[[noreturn]] void damaged() {
    throw ImportError(QStringLiteral("工作簿已损坏。"));
}
[[noreturn]] void refuseEntities() {
    throw ImportError(QStringLiteral("工作簿里有不合规定的实体或文档类型，不能读取。"));
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::string_view withoutPrefix(std::string_view name) {
    return name.substr(name.find(':') + 1); // the whole of one without a colon
}

void appendSign(std::string& text, char32_t code) {
    const bool isSign = code == '\t' || code == '\n' || code == '\r' || (code >= ' ' && code < 0xD800) ||
                        (code >= 0xE000 && code <= 0x10FFFF && code != 0xFFFE && code != 0xFFFF);
    if (!isSign)
        damaged();
    text += QString::fromUcs4(&code, 1).toStdString();
}

/// The sign that an entity stands for, "amp" or "#x4E00".
void appendEntity(std::string& text, std::string_view entity) {
    constexpr std::pair<std::string_view, char> known[] = {
        {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    for (const auto& [name, sign] : known)
        if (entity == name) {
            text += sign;
            return;
        }
    if (entity.substr(0, 1) != "#")
        refuseEntities();
    const bool isHex = entity.substr(0, 2) == "#x";
    entity.remove_prefix(isHex ? 2 : 1);
    quint32 code = 0;
    const auto end = entity.data() + entity.size();
    if (const auto read = std::from_chars(entity.data(), end, code, isHex ? 16 : 10);
        read.ec != std::errc() || read.ptr != end)
        damaged();
    appendSign(text, code);
}

/// Line ends are one sign, entities the one that they stand for.
void appendDecoded(std::string& text, std::string_view raw) {
    for (std::size_t at = 0; at < raw.size();) {
        const std::size_t next = std::min(raw.find_first_of("&\r", at), raw.size());
        text.append(raw.substr(at, next - at));
        if (next == raw.size())
            return;
        at = next + 1;
        if (raw[next] == '\r') {
            text += '\n';
            at += raw.substr(at, 1) == "\n" ? 1 : 0;
            continue;
        }
        const std::size_t end = raw.find(';', at);
        if (end == std::string_view::npos)
            damaged();
        appendEntity(text, raw.substr(at, end - at));
        at = end + 1;
    }
}

} // namespace

PartReader::PartReader(std::unique_ptr<QIODevice> part)
    : m_part(std::move(part)) {
    refill();
    if (has("\xEF\xBB\xBF"))
        m_at += 3;
    while (next() != Token::Start) // the document's one element
        if (m_depth == 0 && !m_piece.empty())
            damaged();
}

bool PartReader::refill() {
    if (m_buffer.size() - m_at > kLongest)
        throw ImportError(QStringLiteral("有一格的内容太长，不能读取。"));
    m_buffer.erase(0, m_at);
    m_at = 0;
    const std::size_t held = m_buffer.size();
    m_buffer.resize(held + kPiece);
    const qint64 come = m_part->read(m_buffer.data() + held, qint64(kPiece));
    m_buffer.resize(held + std::size_t(std::max<qint64>(0, come)));
    return come > 0;
}

bool PartReader::has(std::string_view start) {
    while (m_buffer.size() - m_at < start.size())
        if (!refill())
            return false;
    return std::string_view(m_buffer).substr(m_at, start.size()) == start;
}

/// Places count from what is not read yet, so that they stay right when more comes.
std::size_t PartReader::find(std::string_view what, std::size_t from) {
    for (;;) {
        const std::size_t found = std::string_view(m_buffer).substr(m_at).find(what, from);
        if (found != std::string_view::npos)
            return found;
        const std::size_t held = m_buffer.size() - m_at;
        from = std::max(from, held < what.size() ? 0 : held - what.size() + 1);
        if (!refill())
            return std::string_view::npos;
    }
}

/// Within quotes a ">" ends nothing.
std::size_t PartReader::findTagEnd() {
    char quote = 0;
    for (std::size_t at = 1;; ++at) {
        if (m_at + at >= m_buffer.size() && !refill())
            damaged();
        const char c = m_buffer[m_at + at];
        if (quote != 0)
            quote = c == quote ? 0 : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == '>')
            return at;
    }
}

std::string_view PartReader::take(std::size_t from, std::size_t to, std::size_t behind) {
    const std::string_view taken = std::string_view(m_buffer).substr(m_at + from, to - from);
    m_at += behind;
    return taken;
}

PartReader::Token PartReader::next() {
    m_piece = {};
    if (std::exchange(m_closes, false)) {
        close();
        return Token::End;
    }
    if (m_at == m_buffer.size() && !refill()) {
        if (m_depth > 0 || !m_begun)
            damaged();
        return Token::Document;
    }
    if (m_buffer[m_at] == '<')
        return takeMarkup();
    const std::size_t end = find("<", 0);
    const std::size_t length = end == std::string_view::npos ? m_buffer.size() - m_at : end;
    m_piece = take(0, length, length);
    m_isPlain = false;
    if (m_depth == 0 && std::all_of(m_piece.begin(), m_piece.end(), isBlank))
        m_piece = {};
    return Token::Text;
}

PartReader::Token PartReader::takeMarkup() {
    const auto whole = [this](std::string_view end, std::size_t from) {
        const std::size_t found = find(end, from);
        if (found == std::string_view::npos)
            damaged();
        return found;
    };
    if (has("<![CDATA[")) {
        const std::size_t end = whole("]]>", 9);
        m_piece = take(9, end, end + 3);
        m_isPlain = true;
        return Token::Text;
    }
    if (has("<!--")) {
        const std::size_t end = whole("-->", 4);
        take(0, 0, end + 3);
        return Token::Passed;
    }
    if (has("<!"))
        refuseEntities();
    if (has("<?")) {
        const std::size_t end = whole("?>", 2);
        takeDeclaration(take(2, end, end + 2));
        return Token::Passed;
    }
    const std::size_t end = findTagEnd();
    const std::string_view tag = take(1, end, end + 1);
    return tag.substr(0, 1) == "/" ? takeEnd(tag.substr(1)) : takeStart(tag);
}

void PartReader::takeDeclaration(std::string_view declaration) {
    if (declaration.substr(0, 4) != "xml ")
        return;
    takeAttributes(declaration.substr(4));
    std::string encoding(raw("encoding"));
    std::transform(encoding.begin(), encoding.end(), encoding.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; });
    if (!encoding.empty() && encoding != "UTF-8" && encoding != "US-ASCII")
        throw ImportError(QStringLiteral("工作簿的编码不是 UTF-8，不能读取。"));
}

PartReader::Token PartReader::takeStart(std::string_view tag) {
    if (tag.substr(tag.size() - std::min<std::size_t>(tag.size(), 1)) == "/") {
        m_closes = true;
        tag.remove_suffix(1);
    }
    const std::size_t nameEnd = std::min(tag.find_first_of(" \t\r\n"), tag.size());
    if (nameEnd == 0 || (m_depth == 0 && m_begun))
        damaged();
    if (m_depth == kDeepest)
        throw ImportError(QStringLiteral("工作簿的嵌套太深，不能读取。"));
    m_begun = true;
    if (m_open.size() == m_depth)
        m_open.emplace_back();
    m_open[m_depth++] = tag.substr(0, nameEnd);
    m_name = withoutPrefix(tag.substr(0, nameEnd));
    takeAttributes(tag.substr(nameEnd));
    return Token::Start;
}

PartReader::Token PartReader::takeEnd(std::string_view tag) {
    while (!tag.empty() && isBlank(tag.back()))
        tag.remove_suffix(1);
    if (m_depth == 0 || m_open[m_depth - 1] != tag)
        damaged();
    close();
    return Token::End;
}

void PartReader::close() {
    m_name = withoutPrefix(m_open[--m_depth]);
}

void PartReader::takeAttributes(std::string_view rest) {
    m_attributes.clear();
    for (;;) {
        while (!rest.empty() && isBlank(rest.front()))
            rest.remove_prefix(1);
        if (rest.empty())
            return;
        const std::size_t nameEnd = rest.find_first_of("= \t\r\n");
        const std::size_t quote = rest.find_first_of("\"'");
        if (nameEnd == std::string_view::npos || quote == std::string_view::npos || quote < nameEnd)
            damaged();
        const std::size_t end = rest.find(rest[quote], quote + 1);
        if (end == std::string_view::npos)
            damaged();
        m_attributes.push_back(
            {withoutPrefix(rest.substr(0, nameEnd)), rest.substr(quote + 1, end - quote - 1)});
        rest.remove_prefix(end + 1);
    }
}

bool PartReader::child() {
    for (;;) {
        switch (next()) {
        case Token::Start:
            return true;
        case Token::End:
        case Token::Document:
            return false;
        default:
            break;
        }
    }
}

void PartReader::skip() {
    const std::size_t outside = m_depth - 1;
    while (m_depth > outside)
        next();
}

std::string_view PartReader::text() {
    m_text.clear();
    const std::size_t outside = m_depth - 1;
    while (m_depth > outside) {
        if (next() != Token::Text)
            continue;
        if (m_text.size() + m_piece.size() > kLongest)
            throw ImportError(QStringLiteral("有一格的内容太长，不能读取。"));
        if (m_isPlain)
            m_text.append(m_piece);
        else
            appendDecoded(m_text, m_piece);
    }
    if (!QByteArrayView(m_text.data(), qsizetype(m_text.size())).isValidUtf8())
        damaged();
    return m_text;
}

std::string_view PartReader::raw(std::string_view name) const {
    for (const Attribute& each : m_attributes)
        if (each.name == name)
            return each.value;
    return {};
}

QString PartReader::attribute(std::string_view name) const {
    std::string text;
    appendDecoded(text, raw(name));
    return QString::fromStdString(text);
}

#include "import/textReader.h"

#include <QStringDecoder>

#include <algorithm>
#include <cstring>

namespace {

constexpr qint64 kPiece = qint64(1) << 20;       // bytes
constexpr std::size_t kLongestField = 32U << 20; // bytes
constexpr qsizetype kMostColumns = 4096;

/// The text of a file piece by piece, none cut within a line's end or a sign.
class Pieces {
public:
    Pieces(const SourceFile& file, qint64 start)
        : m_file(file)
        , m_at(start) {}

    /// Empty at the end.
    QByteArray next() {
        for (qint64 length = kPiece; m_at < m_file.size(); length *= 2) {
            QByteArray piece = m_file.read(m_at, length);
            if (piece.size() < std::min(length, m_file.size() - m_at))
                m_at = m_file.size(); // cut short meanwhile
            if (m_at + piece.size() < m_file.size()) {
                // These two are part of no other sign in any encoding read here but UTF-16.
                const qsizetype end = std::max(piece.lastIndexOf('\n'), piece.lastIndexOf('\r')) + 1;
                if (end == 0)
                    continue;
                piece.truncate(end);
            }
            m_at += piece.size();
            return piece;
        }
        return {};
    }

private:
    const SourceFile& m_file;
    qint64 m_at;
};

bool isUtf8(const SourceFile& file) {
    Pieces pieces(file, 0);
    for (QByteArray piece = pieces.next(); !piece.isEmpty(); piece = pieces.next())
        if (!QByteArrayView(piece).isValidUtf8())
            return false;
    return true;
}

/// The text of a file as UTF-8: by its byte order mark, else strict UTF-8, else the Chinese encoding of
/// Windows.
class DecodedPieces {
public:
    explicit DecodedPieces(const SourceFile& file)
        : m_file(file)
        , m_pieces(file, startOf(file.read(0, 3))) {
        const QByteArray mark = file.read(0, 3);
        m_isUtf16 = startOf(mark) == 0 && (mark.startsWith("\xFF\xFE") || mark.startsWith("\xFE\xFF"));
        m_isUtf8 = !m_isUtf16 && (startOf(mark) > 0 || isUtf8(file));
    }

    /// Empty at the end.
    QByteArray next() {
        if (m_isUtf16)
            return nextOfUtf16();
        const QByteArray piece = m_pieces.next();
        if (!m_isUtf8)
            return decodeGbk(piece).toUtf8();
        // A mark promises UTF-8 and does not make it so.
        return QByteArrayView(piece).isValidUtf8() ? piece : QString::fromUtf8(piece).toUtf8();
    }

private:
    static qint64 startOf(const QByteArray& mark) { return mark == "\xEF\xBB\xBF" ? 3 : 0; }

    QByteArray nextOfUtf16() {
        const QByteArray piece = m_file.read(m_at, kPiece);
        m_at += piece.size();
        return QString(m_utf16(piece)).toUtf8();
    }

    const SourceFile& m_file;
    Pieces m_pieces;
    bool m_isUtf16 = false;
    bool m_isUtf8 = false;
    qint64 m_at = 0;
    QStringDecoder m_utf16{QStringDecoder::Utf16};
};

QStringList columnNames(const QStringList& header) {
    QStringList names;
    for (const QString& name : header) {
        const QString trimmed = name.trimmed();
        names << (trimmed.isEmpty() ? QStringLiteral("F%1").arg(names.size() + 1) : trimmed);
    }
    return names;
}

class TextReader : public TableReader {
public:
    explicit TextReader(const SourceFile& file)
        : m_file(file) {}

    void read(const QString& /*table*/, RowSink& sink) override {
        DecodedPieces pieces(m_file);
        QByteArray piece = pieces.next();
        DelimitedParser parser(delimiterOf({piece.constData(), std::size_t(piece.size())}), sink);
        for (; !piece.isEmpty(); piece = pieces.next()) {
            parser.take({piece.constData(), std::size_t(piece.size())});
            sink.alive();
        }
        parser.finish();
    }

private:
    SourceFile m_file;
};

} // namespace

char delimiterOf(std::string_view start) {
    int counts[3] = {};
    constexpr std::string_view candidates = ",\t;";
    bool quoted = false;
    for (const char c : start) {
        if (c == '"')
            quoted = !quoted;
        else if (!quoted && (c == '\r' || c == '\n'))
            break;
        else if (const auto index = candidates.find(c); !quoted && index != std::string_view::npos)
            ++counts[index];
    }
    if (counts[1] > counts[0] && counts[1] >= counts[2])
        return '\t';
    return counts[2] > counts[0] ? ';' : ',';
}

DelimitedParser::DelimitedParser(char delimiter, RowSink& sink)
    : m_delimiter(delimiter)
    , m_sink(sink) {}

void DelimitedParser::take(std::string_view piece) {
    for (std::size_t at = 0; at < piece.size();) {
        const std::size_t end = takeRun(piece, at);
        if (end == at)
            takeSign(piece[at++]);
        else
            at = end;
    }
}

std::size_t DelimitedParser::takeRun(std::string_view piece, std::size_t at) {
    const char first = piece[at];
    std::size_t end = at;
    if (m_state == State::Quoted) {
        end = std::min(piece.find('"', at), piece.size());
        keep(piece.substr(at, end - at));
        return end;
    }
    if (m_state == State::QuoteInQuoted || first == '"' || endsField(first))
        return at;
    while (end < piece.size() && !endsField(piece[end]))
        ++end;
    const std::string_view run = piece.substr(at, end - at);
    m_state = State::Plain;
    if (end == piece.size()) {
        keep(run);
        return end;
    }
    endField(run, piece[end]);
    return end + 1;
}

void DelimitedParser::takeSign(char c) {
    const bool ends = endsField(c);
    switch (m_state) {
    case State::LineStart:
        if (c == '\r' || c == '\n')
            return;
        [[fallthrough]];
    case State::FieldStart:
        if (ends)
            return endField({}, c);
        m_state = State::Quoted; // what is no quote is the start of a run
        return;
    case State::QuoteInQuoted:
        if (ends)
            return endField({}, c);
        m_state = c == '"' ? State::Quoted : State::Plain;
        return keep({&c, 1});
    case State::Plain:
        return ends ? endField({}, c) : keep({&c, 1});
    case State::Quoted: // a run ends only at a quote
        m_state = State::QuoteInQuoted;
    }
}

void DelimitedParser::keep(std::string_view part) {
    m_field.append(part);
    if (m_field.size() > kLongestField)
        throw ImportError(QStringLiteral("有一格的内容太长，不能读取。"));
}

void DelimitedParser::endField(std::string_view rest, char end) {
    if (!m_field.empty() || rest.size() > kLongestField) {
        keep(rest);
        rest = m_field;
    }
    if (m_inHeader) {
        m_header << QString::fromUtf8(rest.data(), qsizetype(rest.size()));
        if (m_header.size() > kMostColumns)
            throw ImportError(QStringLiteral("列数太多，不能读取。"));
    } else if (m_column++ < m_width) {
        m_sink.text(rest);
    }
    m_field.clear();
    m_state = State::FieldStart;
    if (end != m_delimiter)
        endLine();
}

void DelimitedParser::endLine() {
    if (m_inHeader) {
        m_width = m_header.size();
        m_sink.begin(columnNames(m_header));
        m_inHeader = false;
    } else {
        for (; m_column < m_width; ++m_column)
            m_sink.null();
    }
    m_column = 0;
    m_state = State::LineStart;
}

void DelimitedParser::finish() {
    if (m_state != State::LineStart)
        endField({}, '\n');
    if (m_inHeader)
        m_sink.begin({});
}

std::unique_ptr<TableReader> textReader(const SourceFile& file) {
    return std::make_unique<TextReader>(file);
}

QString decodeGbk(const QByteArray& bytes) {
    QStringDecoder decoder("GB18030", QStringDecoder::Flag::Stateless);
    return decoder.isValid() ? QString(decoder(bytes)) : QString::fromLocal8Bit(bytes);
}

void loadTextConverters() {
    // The converter stays with its library once it was used.
    static const QString read = decodeGbk("\xB4\xF2\xD3\xA1\xD6\xBD\x81\x30\x81\x30") +
                                QString(QStringDecoder(QStringDecoder::Utf16)("\xFF\xFE\xB8\x7E"));
}

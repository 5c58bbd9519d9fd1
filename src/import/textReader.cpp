#include "import/textReader.h"

#include <QStringDecoder>

namespace {

/// One pass over the text, field by field.
class Parser {
public:
    Parser(const QString& text, QChar delimiter)
        : m_at(text.cbegin())
        , m_end(text.cend())
        , m_delimiter(delimiter) {}

    bool atEnd() const { return m_at == m_end; }
    /// Puts the fields of the next line at the end of a list; none for an empty line.
    template <typename List> void line(List& fields) {
        if (lineEnds())
            return;
        do
            fields.push_back(field());
        while (takeDelimiter());
        lineEnds();
    }

private:
    bool isLineEnd() const { return *m_at == u'\r' || *m_at == u'\n'; }
    /// Takes a line end; true also at the end of the text.
    bool lineEnds() {
        if (atEnd())
            return true;
        if (!isLineEnd())
            return false;
        if (*m_at == u'\r' && m_at + 1 != m_end && m_at[1] == u'\n')
            ++m_at;
        ++m_at;
        return true;
    }
    bool takeDelimiter() {
        if (atEnd() || *m_at != m_delimiter)
            return false;
        ++m_at;
        return true;
    }
    QString plain() {
        const auto* start = m_at;
        while (!atEnd() && *m_at != m_delimiter && !isLineEnd())
            ++m_at;
        return QString(start, m_at - start);
    }
    QString field() {
        if (atEnd() || *m_at != u'"')
            return plain();
        QString text;
        for (++m_at; !atEnd(); ++m_at) {
            if (*m_at == u'"') {
                if (m_at + 1 == m_end || m_at[1] != u'"') {
                    ++m_at;
                    return text + plain();
                }
                ++m_at;
            }
            text += *m_at;
        }
        return text;
    }

    const QChar* m_at;
    const QChar* m_end;
    QChar m_delimiter;
};

QStringList columnNames(const QStringList& header) {
    QStringList names;
    for (const QString& name : header) {
        const QString trimmed = name.trimmed();
        names << (trimmed.isEmpty() ? QStringLiteral("F%1").arg(names.size() + 1) : trimmed);
    }
    return names;
}

class TextSource : public ImportSource {
public:
    explicit TextSource(const QString& path)
        : m_path(path)
        , m_bytes(contentsOf(path)) {}

    QStringList tables() override { return {tableOfFile(m_path)}; }
    SourceRows read(const QString& /*table*/) override { return parseDelimited(decodeText(m_bytes)); }

private:
    QString m_path;
    QByteArray m_bytes;
};

} // namespace

QString decodeText(const QByteArray& bytes) {
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
        return QStringDecoder(QStringDecoder::Utf16)(bytes);
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return QString::fromUtf8(bytes.mid(3));
    return isUtf8(bytes) ? QString::fromUtf8(bytes) : decodeGbk(bytes);
}

QChar delimiterOf(const QString& text) {
    int counts[3] = {};
    const QString candidates = QStringLiteral(",\t;");
    bool quoted = false;
    for (const QChar c : text) {
        if (c == u'"')
            quoted = !quoted;
        else if (!quoted && (c == u'\r' || c == u'\n'))
            break;
        else if (const auto index = candidates.indexOf(c); !quoted && index >= 0)
            ++counts[index];
    }
    if (counts[1] > counts[0] && counts[1] >= counts[2])
        return u'\t';
    return counts[2] > counts[0] ? u';' : u',';
}

SourceRows parseDelimited(const QString& text) {
    Parser parser(text, delimiterOf(text));
    QStringList header;
    while (!parser.atEnd() && header.isEmpty())
        parser.line(header);
    SourceRows rows;
    rows.columns = columnNames(header);
    const std::size_t width = std::size_t(header.size());
    while (!parser.atEnd()) {
        const std::size_t before = rows.cells.size();
        parser.line(rows.cells);
        if (rows.cells.size() > before)
            rows.cells.resize(before + width);
    }
    return rows;
}

std::unique_ptr<ImportSource> openTextSource(const QString& path) {
    return std::make_unique<TextSource>(path);
}

#include "import/biffRecords.h"

#include <algorithm>

bool RecordReader::next() {
    if (!m_bytes.has(m_at, 4))
        return false;
    m_type = m_bytes.u16(m_at);
    const qsizetype length = m_bytes.u16(m_at + 2);
    if (!m_bytes.has(m_at + 4, length))
        return false;
    m_data = m_stream.mid(m_at + 4, length);
    m_at += 4 + length;
    return true;
}

std::vector<QByteArray> RecordReader::withContinuations() {
    std::vector<QByteArray> parts{m_data};
    while (m_bytes.has(m_at, 4) && m_bytes.u16(m_at) == Biff::Continue && next())
        parts.push_back(m_data);
    return parts;
}

bool StringReader::settle() {
    while (m_part < m_parts.size() && m_at >= m_parts[m_part].size()) {
        ++m_part;
        m_at = 0;
    }
    return m_part < m_parts.size();
}

quint8 StringReader::byte() {
    if (!settle()) {
        m_cut = true;
        return 0;
    }
    return quint8(m_parts[m_part][m_at++]);
}

quint32 StringReader::number(int bytes) {
    quint32 value = 0;
    for (int i = 0; i < bytes; ++i)
        value |= quint32(byte()) << (8 * i);
    return value;
}

void StringReader::skip(quint32 bytes) {
    while (bytes > 0 && settle()) {
        const auto step = std::min<qsizetype>(bytes, m_parts[m_part].size() - m_at);
        m_at += step;
        bytes -= quint32(step);
    }
}

bool StringReader::takeSigns(QString& text, quint32 count, bool wide) {
    while (count > 0) {
        if (m_part < m_parts.size() && m_at >= m_parts[m_part].size()) {
            // Cut by the end of a record: the next one begins with flags of its own.
            ++m_part;
            m_at = 0;
            if (m_part >= m_parts.size() || m_parts[m_part].isEmpty())
                return false;
            wide = m_parts[m_part][m_at++] & 1;
        }
        if (m_part >= m_parts.size())
            return false;
        const ByteReader bytes(m_parts[m_part]);
        const int width = wide ? 2 : 1;
        const auto fit = std::min<qsizetype>(count, (bytes.size() - m_at) / width);
        if (fit == 0)
            return false;
        for (qsizetype i = 0; i < fit; ++i, m_at += width)
            text += wide ? QChar(bytes.u16(m_at)) : QChar(bytes.u8(m_at));
        count -= quint32(fit);
    }
    return true;
}

std::optional<QString> StringReader::string(int lengthBytes) {
    const quint32 length = number(lengthBytes);
    const quint8 flags = byte();
    const quint32 runs = flags & 8 ? number(2) : 0;
    const quint32 extra = flags & 4 ? number(4) : 0;
    QString text(QLatin1String(""));
    if (m_cut || !takeSigns(text, length, flags & 1))
        return std::nullopt;
    skip(runs * 4);
    skip(extra);
    return text;
}

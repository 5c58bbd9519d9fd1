#pragma once

#include <QByteArray>

#include <cstring>

/// Bytes of a file, read with every bound checked: what lies beyond the end reads as zero.
class ByteReader {
public:
    explicit ByteReader(const QByteArray& bytes)
        : m_data(bytes.constData())
        , m_size(bytes.size()) {}

    qsizetype size() const { return m_size; }
    bool has(qsizetype at, qsizetype length) const {
        return at >= 0 && length >= 0 && at <= m_size && length <= m_size - at;
    }
    quint8 u8(qsizetype at) const { return quint8(read<quint8>(at)); }
    quint16 u16(qsizetype at) const { return read<quint16>(at); }
    quint32 u32(qsizetype at) const { return read<quint32>(at); }
    quint64 u64(qsizetype at) const { return read<quint64>(at); }
    double f64(qsizetype at) const { return read<double>(at); }
    QByteArray part(qsizetype at, qsizetype length) const {
        return has(at, length) ? QByteArray(m_data + at, length) : QByteArray();
    }

private:
    /// Little-endian, as the formats read here and this machine both are.
    template <typename Value> Value read(qsizetype at) const {
        Value value{};
        if (has(at, qsizetype(sizeof(Value))))
            std::memcpy(&value, m_data + at, sizeof(Value));
        return value;
    }

    const char* m_data;
    qsizetype m_size;
};

#pragma once

#include "import/byteReader.h"

#include <QString>

#include <optional>
#include <vector>

/// Record numbers of the workbook stream. Layout: [MS-XLS], published by its maker.
namespace Biff {
inline constexpr quint16 Formula = 0x0006, Eof = 0x000A, DateMode = 0x0022, FilePass = 0x002F,
                         Continue = 0x003C, BoundSheet = 0x0085, MulRk = 0x00BD, RString = 0x00D6,
                         Xf = 0x00E0, Sst = 0x00FC, LabelSst = 0x00FD, Number = 0x0203, Label = 0x0204,
                         BoolErr = 0x0205, String = 0x0207, Rk = 0x027E, Format = 0x041E, Bof = 0x0809;
}

/// The records of a workbook stream, one after the other.
class RecordReader {
public:
    RecordReader(const QByteArray& stream, qsizetype at)
        : m_bytes(stream)
        , m_stream(stream)
        , m_at(at) {}

    /// Goes to the next record; false at the end or where the rest is no whole record.
    bool next();
    quint16 type() const { return m_type; }
    const QByteArray& data() const { return m_data; }
    /// The parts of the present record and of the CONTINUE records behind it, which are taken.
    std::vector<QByteArray> withContinuations();

private:
    ByteReader m_bytes;
    const QByteArray& m_stream;
    qsizetype m_at;
    quint16 m_type = 0;
    QByteArray m_data;
};

/// Strings over the parts of a record and its continuations: one cut by a part's end goes on after a new flag
/// byte, which may switch between one- and two-byte signs; the rest of a string goes on without one.
class StringReader {
public:
    explicit StringReader(std::vector<QByteArray> parts)
        : m_parts(std::move(parts)) {}

    bool atEnd() const { return m_part >= m_parts.size(); }
    quint32 number(int bytes);
    void skip(quint32 bytes);
    /// A string with a length of two bytes, or one, before its flags. Nothing where it is cut.
    std::optional<QString> string(int lengthBytes = 2);

private:
    bool settle();
    quint8 byte();
    bool takeSigns(QString& text, quint32 count, bool wide);

    std::vector<QByteArray> m_parts;
    std::size_t m_part = 0;
    qsizetype m_at = 0;
    bool m_cut = false;
};

#pragma once

#include <QByteArray>
#include <QFile>
#include <QtEndian>

#include <cstring>
#include <vector>

/// An Access file as its bytes, to be changed in ways that no program at hand can bring about.
class JetFile {
public:
    static constexpr int kFirstTable = 24; // page of the definition of the table that was made first

    // Marks of a row in its page.
    static constexpr quint16 kElsewhere = 0x4000; // moved: here stands where it is now
    static constexpr quint16 kUnlisted = 0x8000;  // what a row was moved to; with the other mark: deleted

    struct Place {
        int page;
        int row;
    };

    explicit JetFile(const QString& path) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            m_bytes = file.readAll();
    }
    bool write(const QString& path) const {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(m_bytes) == m_bytes.size();
    }

    /// The rows of a table as they lie in its pages, deleted ones left out.
    std::vector<Place> rows(int table) const {
        std::vector<Place> places;
        for (int page = 0; page < m_bytes.size() / kPage; ++page) {
            if (m_bytes[page * kPage] != 1 || word32(page * kPage + 4) != quint32(table))
                continue;
            for (int row = 0; row < word16(page * kPage + 12); ++row)
                if ((word16(mark({page, row})) & kMarks) == 0)
                    places.push_back({page, row});
        }
        return places;
    }
    void setMarks(Place place, quint16 marks) {
        putWord(mark(place), quint16((word16(mark(place)) & ~kMarks) | marks));
    }
    /// Makes the bytes of a row the place of another, as where it was moved there.
    void leadTo(Place from, Place to, quint16 marks = kElsewhere) {
        const quint32 place = qToLittleEndian(quint32(to.page << 8 | to.row));
        std::memcpy(m_bytes.data() + start(from), &place, 4);
        setMarks(from, marks);
    }
    void setRowCount(int table, int rows) { putWord(table * kPage + 16, quint16(rows)); }

    /// Replaces a number of eight bytes in a row. False where it is not there.
    bool replaceDouble(Place place, double from, double to) {
        const QByteArray searched(reinterpret_cast<const char*>(&from), 8);
        const qsizetype at = m_bytes.indexOf(searched, start(place));
        if (at < 0 || at + 8 > end(place))
            return false;
        std::memcpy(m_bytes.data() + at, &to, 8);
        return true;
    }
    /// Replaces a text by one of the same length everywhere, however it is stored. How often.
    int replaceText(const QString& from, const QString& to) {
        int count = 0;
        for (const auto& [searched, put] :
             {std::pair(from.toUtf8(), to.toUtf8()), std::pair(utf16(from), utf16(to))})
            for (qsizetype at = m_bytes.indexOf(searched); at >= 0; at = m_bytes.indexOf(searched, at + 1)) {
                m_bytes.replace(at, put.size(), put);
                ++count;
            }
        return count;
    }

private:
    static constexpr int kPage = 4096;
    static constexpr quint16 kMarks = 0xE000;

    static QByteArray utf16(const QString& text) {
        return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    }
    quint16 word16(qsizetype at) const { return qFromLittleEndian<quint16>(m_bytes.constData() + at); }
    quint32 word32(qsizetype at) const { return qFromLittleEndian<quint32>(m_bytes.constData() + at); }
    void putWord(qsizetype at, quint16 value) { qToLittleEndian(value, m_bytes.data() + at); }
    static qsizetype mark(Place place) { return place.page * kPage + 14 + 2 * place.row; }
    qsizetype start(Place place) const { return place.page * kPage + (word16(mark(place)) & ~kMarks); }
    /// Rows lie from the end of their page towards its head.
    qsizetype end(Place place) const {
        return place.row == 0 ? (place.page + 1) * qsizetype(kPage) : start({place.page, place.row - 1});
    }

    QByteArray m_bytes;
};

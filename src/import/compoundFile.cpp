#include "import/compoundFile.h"

#include "import/byteReader.h"
#include "import/tableReader.h"

#include <vector>

namespace {

constexpr quint32 kLastSector = 0xFFFFFFF0; // sector numbers from here on are marks
constexpr int kDirectoryEntry = 128;
constexpr int kHeaderSectors = 109; // of the allocation table, in the header itself

[[noreturn]] void damaged() {
    throw ImportError(QStringLiteral("文件已损坏，或者不是 Excel 97 文件。"));
}

class CompoundFile {
public:
    explicit CompoundFile(const QByteArray& file)
        : m_file(file)
        , m_bytes(m_file) {
        static const QByteArray signature("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
        if (!file.startsWith(signature))
            damaged();
        const int shift = m_bytes.u16(30);
        if (shift != 9 && shift != 12)
            damaged();
        m_sectorSize = 1 << shift;
        m_miniCutoff = m_bytes.u32(56);
        readAllocationTable();
        m_directory = chain(m_bytes.u32(48), m_allocation, m_bytes, m_sectorSize, m_sectorSize);
        readMiniStream();
    }

    QByteArray stream(const QString& name) const {
        const ByteReader directory(m_directory);
        for (qsizetype at = 0; at + kDirectoryEntry <= directory.size(); at += kDirectoryEntry)
            if (directory.u8(at + 66) == 2 && entryName(at).compare(name, Qt::CaseInsensitive) == 0)
                return entryStream(at);
        damaged();
    }

private:
    QString entryName(qsizetype at) const {
        const ByteReader directory(m_directory);
        const int length = directory.u16(at + 64);
        QString name;
        for (int i = 0; i + 2 < length && i < 62; i += 2)
            name += QChar(directory.u16(at + i));
        return name;
    }

    QByteArray entryStream(qsizetype at) const {
        const ByteReader directory(m_directory);
        const quint32 start = directory.u32(at + 116);
        const quint32 size = directory.u32(at + 120);
        QByteArray bytes = size < m_miniCutoff
                               ? chain(start, m_miniAllocation, ByteReader(m_mini), kMiniSector, 0)
                               : chain(start, m_allocation, m_bytes, m_sectorSize, m_sectorSize);
        if (bytes.size() < qsizetype(size))
            damaged();
        bytes.truncate(qsizetype(size));
        return bytes;
    }

    void appendTable(std::vector<quint32>& table, quint32 sector) const {
        const qsizetype at = (qsizetype(sector) + 1) * m_sectorSize;
        if (sector >= kLastSector || !m_bytes.has(at, m_sectorSize))
            damaged();
        for (int i = 0; i < m_sectorSize; i += 4)
            table.push_back(m_bytes.u32(at + i));
    }

    void readAllocationTable() {
        const quint32 count = m_bytes.u32(44);
        const qsizetype sectors = m_bytes.size() / m_sectorSize;
        if (qsizetype(count) > sectors)
            damaged();
        std::vector<quint32> places;
        for (int i = 0; i < kHeaderSectors && places.size() < count; ++i)
            places.push_back(m_bytes.u32(76 + 4 * i));
        quint32 next = m_bytes.u32(68);
        for (qsizetype seen = 0; places.size() < count && next < kLastSector; ++seen) {
            const qsizetype at = (qsizetype(next) + 1) * m_sectorSize;
            if (seen > sectors || !m_bytes.has(at, m_sectorSize))
                damaged();
            for (int i = 0; i + 4 < m_sectorSize && places.size() < count; i += 4)
                places.push_back(m_bytes.u32(at + i));
            next = m_bytes.u32(at + m_sectorSize - 4);
        }
        for (const quint32 sector : places)
            appendTable(m_allocation, sector);
    }

    void readMiniStream() {
        const ByteReader directory(m_directory);
        const QByteArray table =
            m_bytes.u32(64) == 0 ? QByteArray()
                                 : chain(m_bytes.u32(60), m_allocation, m_bytes, m_sectorSize, m_sectorSize);
        const ByteReader entries(table);
        for (qsizetype at = 0; at + 4 <= entries.size(); at += 4)
            m_miniAllocation.push_back(entries.u32(at));
        if (!m_miniAllocation.empty())
            m_mini = chain(directory.u32(116), m_allocation, m_bytes, m_sectorSize, m_sectorSize);
    }

    /// The sectors of a chain one after the other. `offset` is where sector 0 begins.
    static QByteArray chain(quint32 sector, const std::vector<quint32>& table, const ByteReader& bytes,
                            qsizetype sectorSize, qsizetype offset) {
        QByteArray result;
        for (std::size_t seen = 0; sector < kLastSector; ++seen) {
            const qsizetype at = offset + qsizetype(sector) * sectorSize;
            if (seen > table.size() || sector >= table.size() || !bytes.has(at, 1))
                damaged();
            result += bytes.part(at, std::min(sectorSize, bytes.size() - at));
            sector = table[sector];
        }
        return result;
    }

    static constexpr int kMiniSector = 64;

    QByteArray m_file;
    ByteReader m_bytes;
    int m_sectorSize = 512;
    quint32 m_miniCutoff = 4096;
    std::vector<quint32> m_allocation;
    std::vector<quint32> m_miniAllocation;
    QByteArray m_directory;
    QByteArray m_mini;
};

} // namespace

QByteArray compoundStream(const QByteArray& file, const QString& name) {
    return CompoundFile(file).stream(name);
}

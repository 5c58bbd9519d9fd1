#include "import/dbfMemo.h"

#include "import/byteReader.h"

#include <QDir>
#include <QFileInfo>
#include <QtEndian>

namespace {

constexpr qint64 kLargestMemoFile = qint64(256) << 20;
constexpr qsizetype kBlock = 512;

quint32 bigEndian(const QByteArray& bytes, qsizetype at) {
    return qFromBigEndian(ByteReader(bytes).u32(at));
}

} // namespace

QString memoPathOf(const QString& tablePath) {
    const QFileInfo table(tablePath);
    for (const QFileInfo& each : table.dir().entryInfoList(QDir::Files)) {
        const QString ending = each.suffix().toLower();
        if (each.completeBaseName() == table.completeBaseName() && (ending == u"fpt" || ending == u"dbt") &&
            each.size() <= kLargestMemoFile)
            return each.filePath();
    }
    return {};
}

bool isFoxProMemo(const QString& path) {
    return path.endsWith(u"fpt", Qt::CaseInsensitive);
}

DbfMemo::DbfMemo(const std::optional<MemoFile>& memos)
    : m_memos(memos)
    , m_file(memos ? m_memos->file.bytes() : QByteArray()) {}

QByteArray DbfMemo::text(quint32 block) const {
    return m_memos && m_memos->isFoxPro ? foxPro(block) : dBase(block);
}

QByteArray DbfMemo::foxPro(quint32 block) const {
    const ByteReader file(m_file);
    const qsizetype size = qFromBigEndian(file.u16(6));
    const qsizetype at = qsizetype(block) * std::max<qsizetype>(size, 1);
    return file.has(at, 8) ? file.part(at + 8, bigEndian(m_file, at + 4)) : QByteArray();
}

QByteArray DbfMemo::dBase(quint32 block) const {
    const ByteReader file(m_file);
    const qsizetype at = qsizetype(block) * kBlock;
    if (!file.has(at, 8))
        return {};
    if (file.u32(at) == 0x0008FFFF) // the length counts these eight bytes
        return file.part(at + 8, qsizetype(file.u32(at + 4)) - 8);
    const qsizetype end = m_file.indexOf("\x1A", at);
    return m_file.mid(at, end < 0 ? -1 : end - at);
}

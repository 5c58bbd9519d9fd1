#include "import/tableServer.h"

#include <QDataStream>
#include <QFile>

#include <algorithm>

namespace {

constexpr std::size_t kCellsPerPart = 20000;

void sendLength(QFile& out, qint64 length) {
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << length;
    out.write(bytes);
    out.flush();
}

/// One part: what `fill` writes, in the byte order of this machine.
template <typename Fill> void sendPart(QFile& out, Fill&& fill) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    fill(stream);
    sendLength(out, bytes.size());
    out.write(bytes);
    out.flush();
}

void sendRows(QFile& out, const SourceRows& rows) {
    sendPart(out, [&rows](QDataStream& stream) { stream << rows.columns; });
    for (std::size_t at = 0; at < rows.cells.size(); at += kCellsPerPart)
        sendPart(out, [&rows, at](QDataStream& stream) {
            const std::size_t end = std::min(rows.cells.size(), at + kCellsPerPart);
            for (std::size_t i = at; i < end; ++i)
                stream << rows.cells[i];
        });
    sendLength(out, AnswerPart::End);
}

} // namespace

void serveTables(ImportSource& source, QFile& in, QFile& out) {
    source.signOfLife = [&out] { sendLength(out, AnswerPart::SignOfLife); };
    sendPart(out, [&source](QDataStream& stream) { stream << source.tables(); });
    sendLength(out, AnswerPart::End);
    for (QByteArray name = in.readLine(); !name.isEmpty(); name = in.readLine())
        sendRows(out, source.read(QString::fromUtf8(name.chopped(1))));
}

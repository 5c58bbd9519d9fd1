#include "import/importSource.h"

#include "import/mdbProcess.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>

namespace {

constexpr qint64 kLargestSource = qint64(1) << 30;

} // namespace

void SourceRows::trimEnd() {
    const auto width = std::size_t(columns.size());
    if (width == 0)
        return cells.clear();
    cells.resize(cells.size() / width * width);
    while (!cells.empty() && std::all_of(cells.end() - long(width), cells.end(),
                                         [](const QString& cell) { return cell.isNull(); }))
        cells.resize(cells.size() - width);
}

std::unique_ptr<ImportSource> openImportSource(SourceKind kind, const QString& path) {
    switch (kind) {
    case SourceKind::Dbf:
        return openDbfSource(path);
    case SourceKind::Txt:
        return openTextSource(path);
    case SourceKind::Xls:
        return openXlsSource(path);
    default:
        return openMdbInProcess(path);
    }
}

QString tableOfFile(const QString& path) {
    return QFileInfo(path).fileName().chopped(4);
}

QByteArray contentsOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ImportError(QStringLiteral("文件不能打开：%1").arg(path));
    if (file.size() > kLargestSource)
        throw ImportError(QStringLiteral("文件太大：%1").arg(path));
    return file.readAll();
}

QString decodeGbk(const QByteArray& bytes) {
    QStringDecoder decoder("GB18030", QStringDecoder::Flag::Stateless);
    return decoder.isValid() ? QString(decoder(bytes)) : QString::fromLocal8Bit(bytes);
}

bool isUtf8(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return !decoder.hasError();
}

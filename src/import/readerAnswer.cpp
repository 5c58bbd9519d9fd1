#include "import/readerAnswer.h"

#include "import/byteReader.h"
#include "import/tableServer.h"

namespace {

constexpr qsizetype kNumber = sizeof(quint32);
constexpr qsizetype kLongestText = 200; // signs

void require(bool holds) {
    if (!holds)
        throw BadAnswer();
}

bool startsSign(char c) {
    return (quint8(c) & 0xC0) != 0x80;
}

} // namespace

QStringList textsOf(const QByteArray& content, quint32 most) {
    const ByteReader bytes(content);
    const quint32 count = bytes.u32(0);
    require(bytes.has(0, kNumber) && count <= most);
    QStringList texts;
    qsizetype at = kNumber;
    for (quint32 i = 0; i < count; ++i) {
        const qsizetype length = bytes.u32(at);
        require(bytes.has(at, kNumber) && bytes.has(at + kNumber, length));
        const QByteArray text = content.mid(at + kNumber, length);
        require(QByteArrayView(text).isValidUtf8());
        texts << QString::fromUtf8(text);
        at += kNumber + length;
    }
    require(at == content.size());
    return texts;
}

void takeBlock(const QByteArray& content, SourceRows& rows) {
    const ByteReader bytes(content);
    const qsizetype count = bytes.u32(0);
    require(bytes.has(0, kNumber) && count > 0 && count <= Frame::BlockRows && !rows.columns.isEmpty());
    const qsizetype cells = count * rows.columns.size();
    const qsizetype texts = kNumber + cells * kNumber;
    require(bytes.has(0, texts));
    qsizetype end = texts;
    for (qsizetype cell = 0; cell < cells; ++cell) {
        const quint32 length = bytes.u32(kNumber + cell * kNumber);
        const qsizetype size = length == Frame::Null ? 0 : qsizetype(length);
        require(bytes.has(end, size) && (size == 0 || startsSign(content[end])));
        end += size;
    }
    require(end == content.size() && QByteArrayView(content).sliced(texts).isValidUtf8());
    const char* text = content.constData() + texts;
    for (qsizetype cell = 0; cell < cells; ++cell) {
        const quint32 length = bytes.u32(kNumber + cell * kNumber);
        if (length == Frame::Null) {
            rows.null();
        } else {
            rows.text({text, length});
            text += length;
        }
    }
}

QString shownText(const QByteArray& content) {
    return QString::fromUtf8(content.left(4 * kLongestText)).left(kLongestText).simplified();
}

#include "bigFiles.h"

#include "import/zipFile.h"

#include <QByteArray>
#include <QFile>

#include <shapefil.h>

#include <cstring>

namespace {

constexpr int kSharedTexts = 5000;

QByteArray cellOf(int row, int column) {
    static const char* const words[] = {"客户", "公司", "北京市", "0755-", "说明文字"};
    return column < 5 ? QByteArray(words[column]) + QByteArray::number(row) : QByteArray::number(row * 0.25);
}

void append(QByteArray& bytes, quint64 value, int size) {
    for (int i = 0; i < size; ++i)
        bytes += char(value >> (8 * i));
}

QByteArray record(quint16 type, const QByteArray& data) {
    QByteArray bytes;
    append(bytes, type, 2);
    append(bytes, quint64(data.size()), 2);
    return bytes + data;
}

QByteArray cellHead(int row, int column) {
    QByteArray head;
    append(head, quint64(row), 2);
    append(head, quint64(column), 2);
    append(head, 0, 2);
    return head;
}

QByteArray label(int row, int column, const QString& text) {
    QByteArray data = cellHead(row, column);
    append(data, quint64(text.size()), 2);
    data += '\1';
    for (const QChar sign : text)
        append(data, sign.unicode(), 2);
    return record(0x0204, data);
}

QByteArray number(int row, int column, double value) {
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    QByteArray data = cellHead(row, column);
    append(data, bits, 8);
    return record(0x0203, data);
}

QByteArray workbook(int rows) {
    const QByteArray bof =
        record(0x0809, QByteArray("\x00\x06\x05\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00", 16));
    const QByteArray end = record(0x000A, {});
    QByteArray sheetHead;
    const QByteArray name("\x05\x00Sheet", 7);
    const qsizetype start = bof.size() + 4 + 6 + name.size() + end.size();
    append(sheetHead, quint64(start), 4);
    append(sheetHead, 0, 2);
    QByteArray stream = bof + record(0x0085, sheetHead + name) + end + bof;
    for (int column = 0; column < 7; ++column)
        stream += label(0, column, QStringLiteral("列%1").arg(column + 1));
    for (int row = 1; row <= rows; ++row)
        for (int column = 0; column < 7; ++column)
            stream += column < 5 ? label(row, column, QString::fromUtf8(cellOf(row, column)))
                                 : number(row, column, row * 0.25);
    return stream + end;
}

/// A compound file with one stream.
QByteArray compoundFile(QByteArray stream) {
    constexpr int sector = 512;
    constexpr quint32 last = 0xFFFFFFFE;
    constexpr quint32 table = 0xFFFFFFFD;
    constexpr quint32 unused = 0xFFFFFFFF;
    const qsizetype size = stream.size();
    stream.resize((size + sector - 1) / sector * sector, '\0');
    const auto data = quint32(stream.size() / sector);
    quint32 tables = 1;
    while (tables * 128 < data + 1 + tables + (tables > 109 ? 1 + (tables - 109) / 127 : 0))
        ++tables;
    const quint32 further = tables > 109 ? (tables - 109 + 126) / 127 : 0;
    // Sectors: the stream, the directory, the allocation table, its own list.
    const quint32 directory = data;
    const quint32 firstTable = data + 1;
    const quint32 firstFurther = firstTable + tables;
    QByteArray head("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
    head += QByteArray(16, '\0');
    append(head, 0x3E, 2);
    append(head, 3, 2);
    append(head, 0xFFFE, 2);
    append(head, 9, 2);
    append(head, 6, 2);
    head += QByteArray(10, '\0');
    append(head, tables, 4);
    append(head, directory, 4);
    append(head, 0, 4);
    append(head, 4096, 4);
    append(head, last, 4);
    append(head, 0, 4);
    append(head, further ? firstFurther : last, 4);
    append(head, further, 4);
    for (quint32 i = 0; i < 109; ++i)
        append(head, i < tables ? firstTable + i : unused, 4);
    QByteArray entries;
    const auto entry = [&entries](const QString& name, int type, quint32 start, quint32 length) {
        QByteArray bytes;
        for (const QChar sign : name)
            append(bytes, sign.unicode(), 2);
        bytes.resize(64, '\0');
        append(bytes, quint64(name.size() * 2 + 2), 2);
        append(bytes, quint64(type), 1);
        append(bytes, 1, 1);
        append(bytes, 0xFFFFFFFF, 4);
        append(bytes, 0xFFFFFFFF, 4);
        append(bytes, type == 5 ? 1 : 0xFFFFFFFF, 4);
        bytes.resize(116, '\0');
        append(bytes, start, 4);
        append(bytes, length, 4);
        bytes.resize(128, '\0');
        entries += bytes;
    };
    entry(QStringLiteral("Root Entry"), 5, last, 0);
    entry(QStringLiteral("Workbook"), 2, 0, quint32(size));
    entries.resize(sector, '\0');
    QByteArray allocation;
    for (quint32 i = 0; i < data; ++i)
        append(allocation, i + 1 < data ? i + 1 : last, 4);
    append(allocation, last, 4);
    for (quint32 i = 0; i < tables + further; ++i)
        append(allocation, i < tables ? table : 0xFFFFFFFC, 4);
    allocation.resize(qsizetype(tables) * sector, '\xFF');
    QByteArray list;
    for (quint32 i = 0; i < further; ++i) {
        for (quint32 k = 0; k < 127; ++k) {
            const quint32 index = 109 + i * 127 + k;
            append(list, index < tables ? firstTable + index : unused, 4);
        }
        append(list, i + 1 < further ? firstFurther + i + 1 : last, 4);
    }
    return head + stream + entries + allocation + list;
}

} // namespace

void writeBigText(const QString& path, int rows) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write("客户编号,单位名称,地址,电话,联系人,手机,邮政编码\r\n");
    for (int row = 0; row < rows; ++row) {
        QByteArray line;
        for (int column = 0; column < 7; ++column)
            line += cellOf(row, column) + (column < 6 ? "," : "\r\n");
        file.write(line);
    }
}

void writeBigDbf(const QString& path, int rows) {
    DBFHandle table = DBFCreate(QFile::encodeName(path).constData());
    for (int column = 0; column < 7; ++column)
        DBFAddField(table, qPrintable(QStringLiteral("C%1").arg(column)), column < 5 ? FTString : FTDouble,
                    30, column < 5 ? 0 : 2);
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < 7; ++column) {
            if (column < 5)
                DBFWriteStringAttribute(table, row, column, cellOf(row, column).constData());
            else
                DBFWriteDoubleAttribute(table, row, column, row * 0.25);
        }
    DBFClose(table);
}

void writeBigXls(const QString& path, int rows) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(compoundFile(workbook(rows)));
}

void writeBigXlsx(const QString& path, int rows) {
    XlsxParts parts;
    parts.styles = "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/></cellXfs>";
    for (int i = 0; i < kSharedTexts; ++i)
        parts.strings += QStringLiteral("<si><t>打印纸 A4 %1</t></si>").arg(i).toUtf8();
    parts.rows = "<row r=\"1\">";
    for (int i = 0; i < 7; ++i)
        parts.rows += "<c r=\"" + QByteArray(1, char('A' + i)) + "1\" t=\"inlineStr\"><is><t>c" +
                      QByteArray::number(i) + "</t></is></c>";
    parts.rows += "</row>";
    for (int row = 2; row <= rows + 1; ++row) {
        const QByteArray number = QByteArray::number(row);
        const QByteArray text = QByteArray::number(row % kSharedTexts);
        parts.rows += "<row r=\"" + number + "\"><c r=\"A" + number + "\" t=\"s\"><v>" + text +
                      "</v></c><c r=\"B" + number + "\"><v>" + number + "</v></c><c r=\"C" + number +
                      "\"><v>" + number + ".25</v></c><c r=\"D" + number + "\" s=\"1\"><v>" +
                      QByteArray::number(40000 + row % 5000) + "</v></c><c r=\"E" + number +
                      "\" t=\"s\"><v>" + text + "</v></c><c r=\"F" + number + "\" t=\"inlineStr\"><is><t>" +
                      number + "</t></is></c><c r=\"G" + number + "\"><f>B" + number + "*2</f><v>" +
                      QByteArray::number(2 * row) + "</v></c></row>";
    }
    writeZip(path, parts.content());
}

// dBase and FoxPro tables written field by field, as no sample has them.
#include "import/importSource.h"
#include "import/readHere.h"
#include "support/printQt.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

namespace {

struct DbfField {
    QByteArray name;
    char type;
    int size;
};

void putLittle(QByteArray& bytes, qsizetype at, quint32 value, int size) {
    for (int i = 0; i < size; ++i)
        bytes[at + i] = char(value >> (8 * i));
}

/// A table of that version byte: its fields, and its records without their marks of deletion.
QByteArray dbfTable(quint8 version, const std::vector<DbfField>& fields,
                    const std::vector<QByteArray>& records) {
    int length = 1;
    for (const DbfField& field : fields)
        length += field.size;
    // FoxPro keeps 263 bytes between the end of its fields and the first record.
    const int headerLength = 32 + 32 * int(fields.size()) + 1 + (version >= 0x30 ? 263 : 0);
    QByteArray bytes(headerLength, '\0');
    bytes[0] = char(version);
    putLittle(bytes, 4, quint32(records.size()), 4);
    putLittle(bytes, 8, quint32(headerLength), 2);
    putLittle(bytes, 10, quint32(length), 2);
    bytes[29] = 0x7A;
    qsizetype at = 32;
    for (const DbfField& field : fields) {
        bytes.replace(at, field.name.size(), field.name);
        bytes[at + 11] = field.type;
        bytes[at + 16] = char(field.size);
        at += 32;
    }
    bytes[at] = '\r';
    for (const QByteArray& record : records)
        bytes += ' ' + record;
    return bytes + '\x1A';
}

QByteArray fourBytes(quint32 value) {
    QByteArray bytes(4, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

class Dbf : public testing::Test {
protected:
    SourceRows read(const QByteArray& table) {
        QFile file(folder.filePath("table.dbf"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(table) == table.size());
        file.close();
        return readDbf(file.fileName());
    }

    QTemporaryDir folder;
};

TEST_F(Dbf, AnEmptyDateAndTimeIsNullAndNoDate) {
    const quint32 day = quint32(QDate(2024, 3, 5).toJulianDay());
    for (const int version : {0x30, 0x31, 0x32}) {
        const SourceRows rows = read(dbfTable(quint8(version), {{"K", 'C', 1}, {"T", 'T', 8}, {"D", 'D', 8}},
                                              {"a" + fourBytes(day) + fourBytes(48005000) + "20240305",
                                               "b" + fourBytes(day) + fourBytes(0) + "20240305",
                                               "c" + QByteArray(8, ' ') + QByteArray(8, ' '),
                                               "d" + QByteArray(8, '\0') + QByteArray(8, '\0'),
                                               "e" + fourBytes(0) + fourBytes(1000) + "00000000"}));
        ASSERT_EQ(rows.rowCount(), 5) << version;
        EXPECT_EQ(rows.cell(0, 1), u"2024-3-5 13:20:05") << version;
        EXPECT_EQ(rows.cell(1, 1), u"2024-3-5") << version;
        EXPECT_EQ(rows.cell(1, 2), u"2024-3-5") << version;
        for (int row = 2; row < 5; ++row)
            for (int column = 1; column < 3; ++column)
                EXPECT_TRUE(rows.cell(row, column).isNull())
                    << version << ' ' << row << ' ' << rows.cell(row, column).toStdString();
    }
}

TEST_F(Dbf, ATimeIsRoundedToTheNearestSecond) {
    const QByteArray day = fourBytes(quint32(QDate(2024, 3, 5).toJulianDay()));
    const SourceRows rows = read(dbfTable(
        0x30, {{"T", 'T', 8}}, {day + fourBytes(48004500), day + fourBytes(48005499), day + fourBytes(499)}));
    EXPECT_EQ(cellsOf(rows), (std::vector<QString>{"2024-3-5 13:20:05", "2024-3-5 13:20:05", "2024-3-5"}));
}

TEST_F(Dbf, AFileThatNamesItsChineseEncodingIsNotGuessedToBeUtf8) {
    // These two bytes are a letter in UTF-8 as well.
    QByteArray table = dbfTable(0x03, {{"NAME", 'C', 2}}, {"\xC4\xA3"});
    for (const int language : {0x4D, 0x7A}) {
        table[29] = char(language);
        EXPECT_EQ(read(table).cell(0, 0), u"模") << language;
    }
    table[29] = 0;
    EXPECT_EQ(read(table).cell(0, 0), u"\u0123") << "without a word the whole file is looked at";
}

TEST_F(Dbf, IsReadWithoutAnyFileInTheTemporaryFolder) {
    const QTemporaryDir temporary;
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(temporary.path()));
    EXPECT_EQ(readDbf(QStringLiteral(SAMPLES "/import/products.dbf")).rowCount(), 150);
    EXPECT_EQ(QDir(temporary.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System),
              QStringList())
        << "a kill now would leave it there";
    before.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
}

TEST_F(Dbf, IsTheFileOfThatNameWhateverItsEndingAndWhateverStandsBesideIt) {
    for (const char* other : {"shop.dbf", "shop.DBF", "shop.cpg"}) {
        QFile file(folder.filePath(QString::fromUtf8(other)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(dbfTable(0x03, {{"OTHER", 'C', 1}}, {"x"}));
    }
    const QString path = folder.filePath("shop.Dbf");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(dbfTable(0x03, {{"OWN", 'C', 1}}, {"a", "b"}));
    file.close();
    const SourceRows rows = openImportSource(SourceKind::Dbf, path)->read("shop");
    EXPECT_EQ(rows.columns, QStringList{"OWN"});
    EXPECT_EQ(rows.rowCount(), 2);
}

} // namespace

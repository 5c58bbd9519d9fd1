#include "recordset/shownText.h"
#include "recordset/collation.h"
#include "recordset/columnStore.h"
#include "support/scratchFile.h"

#include <gtest/gtest.h>

namespace {

TEST(ShownText, ATextUpToTheLimitIsWholeWithoutItsBlanks) {
    EXPECT_EQ(shownText(QStringLiteral("  纸 笔  ")), u"纸 笔");
    const QString most(kShownLetters, u'长');
    EXPECT_EQ(shownText(QStringLiteral("  ") + most + QStringLiteral("  ")), most);
    EXPECT_EQ(shownText(most + u'x'), most + u'…');
    EXPECT_EQ(beginningOf(QStringLiteral(" 纸 ")), u" 纸 ");
}

TEST(ShownText, ALetterOfTwoUnitsIsNotTorn) {
    const QString text = QStringLiteral("ab𠀀c");
    EXPECT_EQ(shownText(text, 3), u"ab…");
    EXPECT_EQ(shownText(text, 4), QStringLiteral("ab𠀀…"));
}

TEST(ShownText, OfBytesIsThatOfTheirText) {
    for (const QString& letter :
         {QStringLiteral("x"), QStringLiteral("é"), QStringLiteral("长"), QStringLiteral("𠀀")})
        for (const int count : {0, 1, 499, 500, 501, 999, 1000, 1001, 4000}) {
            const QString text = QStringLiteral("  x") + letter.repeated(count) + QStringLiteral("  ");
            EXPECT_EQ(shownText(text.toUtf8().toStdString()), shownText(text))
                << letter.toStdString() << count;
        }
    EXPECT_EQ(shownText(std::string(100'000, ' ')), u"");
}

TEST(ShownText, OfACellIsThatOfItsValue) {
    ColumnStore column;
    column.info = ColumnInfo::fromDeclaration("a", "TEXT(20)");
    column.resize(3);
    column.set(1, QString(4000, u'长'));
    column.set(2, QStringLiteral(" 纸 "));
    EXPECT_EQ(column.shown(0), u"");
    EXPECT_EQ(column.shown(1), QString(kShownLetters, u'长') + u'…');
    EXPECT_EQ(column.shown(2), u"纸");
}

TEST(ShownText, OfARowReadByItselfIsShortAndItsValueWhole) {
    ScratchFile file(
        QStringLiteral("CREATE TABLE t (品名 TEXT(20), 数量 REAL);"
                       "INSERT INTO t VALUES (' ' || replace(hex(zeroblob(2000)), '00', '长'), 3);"
                       "INSERT INTO t VALUES (' 纸 ', 4);"));
    const RecordsetPtr rows = file.open(QStringLiteral("Select * From t"));
    const int name = rows->fieldIndex(QStringLiteral("品名"));
    EXPECT_EQ(rows->shownAt(0, name), QString(kShownLetters, u'长') + u'…');
    EXPECT_EQ(rows->shownAt(1, name), u"纸");
    EXPECT_EQ(rows->numberAt(0, rows->fieldIndex(QStringLiteral("数量"))), 3);
    EXPECT_EQ(toText(rows->valueAt(0, name)), u' ' + QString(2000, u'长'));
    EXPECT_EQ(toText(rows->valueAt(1, name)), u" 纸 ");
    EXPECT_EQ(rows->shownAt(0, name), QString(kShownLetters, u'长') + u'…');
}

TEST(Collating, TextsThatDifferBehindTheirKeysAreOrderedAsWhole) {
    const std::string start(1500, 'x');
    TextPool pool;
    const std::vector<TextPool::Code> codes{
        pool.intern(start + "b"), pool.intern(start + "a"),           pool.intern("y"),
        pool.intern(start),       pool.intern(start.substr(0, 1000)), pool.intern(start + "B")};
    EXPECT_EQ(Collation().ranks(pool, codes), (std::vector<quint32>{4, 3, 5, 2, 1, 4}));
}

} // namespace

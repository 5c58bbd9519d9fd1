// Access files in states that the samples are not in, made by changing bytes of a sample.
#include "import/importSource.h"
#include "support/jetFile.h"
#include "support/printQt.h"

#include <QDate>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

constexpr int kProducts = 150;

class Mdb : public testing::Test {
protected:
    QString changed() const { return folder.filePath("changed.mdb"); }
    SourceRows read(const JetFile& file, const QString& table = QStringLiteral("商品库存")) {
        EXPECT_TRUE(file.write(changed()));
        return openImportSource(SourceKind::Mdb, changed())->read(table);
    }
    static QStringList column(const SourceRows& rows, const QString& name) {
        QStringList texts;
        for (int row = 0; row < rows.rowCount(); ++row)
            texts << rows.cell(row, int(rows.columns.indexOf(name)));
        return texts;
    }

    QTemporaryDir folder;
    JetFile products{QStringLiteral(SAMPLES "/import/products.mdb")};
};

TEST_F(Mdb, ARowThatWasMovedComesOnceAndOneThatWasMovedAndThenDeletedDoesNot) {
    const auto places = products.rows(JetFile::kFirstTable);
    ASSERT_EQ(places.size(), std::size_t(kProducts));
    const QStringList before = column(read(products), "产品编号");
    // The first was moved to where the last lies, and the third over the fourth to where the 120th lies; the
    // second was moved to where the 100th lies and then deleted.
    products.leadTo(places[0], places[149]);
    products.setMarks(places[149], JetFile::kUnlisted);
    products.leadTo(places[2], places[3]);
    products.leadTo(places[3], places[119], JetFile::kElsewhere | JetFile::kUnlisted);
    products.setMarks(places[119], JetFile::kUnlisted);
    products.leadTo(places[1], places[99], JetFile::kElsewhere | JetFile::kUnlisted);
    products.setMarks(places[99], JetFile::kUnlisted);
    products.setRowCount(JetFile::kFirstTable, kProducts - 5);
    QStringList left = before;
    for (const int gone : {99, 3, 2, 1, 0})
        left.removeAt(gone);
    const SourceRows rows = read(products);
    QStringList came = column(rows, "产品编号");
    came.sort();
    left.sort();
    EXPECT_EQ(came, left);
    EXPECT_EQ(rows.cellCount(), std::size_t(rows.rowCount() * rows.columns.size()));
}

TEST_F(Mdb, AMovedRowToWhichNothingLeadsStaysWhereTheTableCountsIt) {
    const auto places = products.rows(JetFile::kFirstTable);
    products.setMarks(places[5], JetFile::kUnlisted);
    EXPECT_EQ(read(products).rowCount(), kProducts);
}

TEST_F(Mdb, FewerRowsThanTheTableCountsAreADamagedFile) {
    const auto places = products.rows(JetFile::kFirstTable);
    products.setMarks(places[5], JetFile::kUnlisted | JetFile::kElsewhere);
    EXPECT_THROW(read(products), ImportError);
}

TEST_F(Mdb, ADamagedTableLeavesTheOthersOfItsFileReadable) {
    JetFile several(QStringLiteral(SAMPLES "/import/edge/several_tables.mdb"));
    several.setRowCount(JetFile::kFirstTable, 21);
    ASSERT_TRUE(several.write(changed()));
    const auto source = openImportSource(SourceKind::Mdb, changed());
    EXPECT_THROW(source->read("客户资料"), ImportError);
    EXPECT_EQ(source->read("订单明细").rowCount(), 40);
    EXPECT_THROW(source->read("客户资料"), ImportError);
    EXPECT_EQ(source->read("Products").rowCount(), 10);
}

TEST_F(Mdb, DatesOfAllTimesAreReadAndANumberThatIsNoDayStaysANumber) {
    const auto places = products.rows(JetFile::kFirstTable);
    const std::pair<double, const char*> dates[] = {
        {-1, "1899-12-29"},      {-1.25, "1899-12-29 6:00:00"},
        {-657434, "100-1-1"},    {-36522, "1800-1-1"},
        {0.5, "12:00:00"},       {1000000.75, "4637-11-26 18:00:00"},
        {1000001, "4637-11-27"}, {2958465, "9999-12-31"},
        {2958466, "2958466"},    {-657435, "-657435"}};
    const QStringList before = column(read(products), "日期");
    for (std::size_t row = 0; row < std::size(dates); ++row) {
        const QDate day = QDate::fromString(before[qsizetype(row)], "yyyy-M-d");
        ASSERT_TRUE(
            products.replaceDouble(places[row], double(QDate(1899, 12, 30).daysTo(day)), dates[row].first))
            << row;
    }
    const QStringList after = column(read(products), "日期");
    for (std::size_t row = 0; row < std::size(dates); ++row)
        EXPECT_EQ(after[qsizetype(row)], QString::fromUtf8(dates[row].second));
    EXPECT_EQ(after.mid(std::size(dates)), before.mid(std::size(dates)));
}

TEST_F(Mdb, TablesThatTheEngineKeepsForItselfAreNotListed) {
    JetFile several(QStringLiteral(SAMPLES "/import/edge/several_tables.mdb"));
    ASSERT_GT(several.replaceText("Products", "~TMPCLP1"), 0);
    ASSERT_TRUE(several.write(changed()));
    QStringList tables = openImportSource(SourceKind::Mdb, changed())->tables();
    tables.sort();
    QStringList wanted{"客户资料", "订单明细", "空表", "选项_2024"};
    wanted.sort();
    EXPECT_EQ(tables, wanted);
}

TEST_F(Mdb, ALongTableIsReadWithSignsOfLife) {
    const auto source = openImportSource(SourceKind::Mdb, QStringLiteral(SAMPLES "/import/orders.mdb"));
    int signs = 0;
    source->signOfLife = [&signs] { ++signs; };
    EXPECT_EQ(source->read("销售明细").rowCount(), 2000);
    EXPECT_GE(signs, 10);
}

TEST_F(Mdb, WhatTheEnvironmentTellsTheLibraryIsNotHeard) {
    const QStringList names = column(read(products), "品名");
    const QStringList quantities = column(read(products), "数量");
    for (const auto& [name, value] :
         {std::pair{"MDBICONV", "ISO-8859-1"}, {"MDB_JET3_CHARSET", "latin1"}, {"MDBOPTS", "no_memo"}})
        qputenv(name, value);
    EXPECT_EQ(column(read(products), "品名"), names);
    EXPECT_EQ(column(read(products), "数量"), quantities);
    for (const char* name : {"MDBICONV", "MDB_JET3_CHARSET", "MDBOPTS"})
        qunsetenv(name);
}

} // namespace

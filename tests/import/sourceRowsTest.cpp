#include "import/sourceRows.h"

#include "import/readHere.h"
#include "recordset/connection.h"
#include "recordset/recordset.h"
#include "recordset/tableImage.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

TEST(SourceRows, AreTheSameBeforeAndInTheirPicture) {
    std::vector<QString> cells;
    for (int row = 0; row < 5000; ++row) {
        cells.push_back(QString::number(row % 1500)); // more than are looked back for
        cells.push_back(row % 7 == 0 ? QString() : QStringLiteral("客户%1").arg(row % 3));
        cells.push_back(row % 5 == 0 ? QLatin1String("") : QString(row % 40, u'长'));
    }
    SourceRows rows({"a", "b", "c"}, cells);
    EXPECT_EQ(rows.rowCount(), 5000);
    EXPECT_EQ(cellsOf(rows), cells);
    const auto picture = rows.picture();
    EXPECT_EQ(picture->size(), 5000U);
    EXPECT_EQ(cellsOf(rows), cells);
    for (int row = 0; row < 5000; ++row)
        for (int column = 0; column < 3; ++column)
            EXPECT_EQ(rows.cell(row, column).isNull(), cells[std::size_t(row * 3 + column)].isNull());
    EXPECT_EQ(rows.picture(), picture);
}

TEST(SourceRows, OfTheirPictureOneTextHeldTwiceIsOneToFilterAndSort) {
    SourceRows rows;
    rows.begin({"n", "text"});
    for (int row = 0; row < 6000; ++row) {
        rows.add(QString::number(row));
        rows.add(QString::number(row % 2000)); // comes again after too many others
    }
    const TestBooks books;
    Connection connection(books.path());
    Recordset grid(connection);
    grid.OpenPicture(rows.picture());
    grid.setFilter("text = '7'");
    EXPECT_EQ(grid.RecordCount(), 3);
    grid.setFilter({});
    grid.setSort("text, n");
    grid.MoveFirst();
    QStringList first;
    for (int i = 0; i < 6; ++i, grid.MoveNext())
        first << grid.Fields("n").text();
    EXPECT_EQ(first, (QStringList{"0", "2000", "4000", "1", "2001", "4001"}));
}

TEST(SourceRows, TheColumnsThatAreTakenComeInTheirOrderAndTheRestGoes) {
    SourceRows rows({"a", "b", "c"}, {"1", "2", "3", "4", "5", "6"});
    const SourceRows taken = rows.takeColumns({2, 0});
    EXPECT_EQ(taken.columns, (QStringList{"c", "a"}));
    EXPECT_EQ(cellsOf(taken), (std::vector<QString>{"3", "1", "6", "4"}));
    EXPECT_EQ(rows.rowCount(), 0);
    EXPECT_TRUE(rows.columns.isEmpty());
}

TEST(SourceRows, WithoutARowHaveAPictureAllTheSame) {
    SourceRows rows({"a", "b"}, {});
    EXPECT_EQ(rows.picture()->columnCount(), 2);
    EXPECT_EQ(rows.picture()->size(), 0U);
}

} // namespace

#include "data/warmUp.h"

#include "support/printQt.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

TEST(WarmUp, EveryColumnThatIsReadAheadIsThere) {
    TestBooks books;
    for (const WarmTable& table : columnsToWarm())
        for (const WarmColumn& column : table.columns)
            EXPECT_GE(books.session().cn.image(table.table)->columnIndex(column.name), 0)
                << table.table.toStdString() << ' ' << column.name.toStdString();
}

TEST(WarmUp, AfterItNoColumnOfTheThreeTablesIsLeftToAFirstClick) {
    TestBooks books;
    QStringList warmed;
    for (const WarmTable& table : columnsToWarm())
        for (const WarmColumn& column : table.columns)
            warmed << table.table + u'.' + column.name;
    // Those that the start has read.
    warmed << QStringLiteral("buyList.日期") << QStringLiteral("buyList.数量")
           << QStringLiteral("buyList.实付") << QStringLiteral("buyList.差额利润")
           << QStringLiteral("clientTable.消费合计") << QStringLiteral("clientTable.购买数")
           << QStringLiteral("clientTable.差额利润") << QStringLiteral("clientTable.差额利润率");
    for (const char* table : {"buyList", "clientTable", "productTable"}) {
        const auto image = books.session().cn.image(QString::fromLatin1(table));
        for (int i = 0; i < image->columnCount(); ++i)
            EXPECT_TRUE(image->info(i).type == ColumnType::Serial ||
                        warmed.contains(QString::fromLatin1(table) + u'.' + image->info(i).name))
                << table << ' ' << image->info(i).name.toStdString();
    }
}

} // namespace

#include "controls/dataGrid.h"
#include "controls/moveButtons.h"
#include "export/csvFile.h"
#include "support/scriptedPrompts.h"
#include "support/smallDisk.h"
#include "support/testBooks.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace {

class Grid : public testing::Test {
protected:
    Grid() {
        for (const char* number : {"3", "1", "2"})
            books.addClient(number, QStringLiteral("单,\"位\"%1").arg(QLatin1String(number)));
        books.session().open_rs();
        clients = books.session().clientTable;
    }
    ~Grid() override { grid.unbind(); }
    QString firstColumn() const {
        QStringList texts;
        for (int i = 0; i < grid.model()->rowCount(); ++i)
            texts << grid.model()->index(i, 1).data().toString();
        return texts.join(u',');
    }
    TestBooks books;
    ScriptedPrompts prompts;
    RecordsetPtr clients;
    DataGrid grid{prompts};
};

TEST_F(Grid, FollowsRowsFilterSortAndPositionOfItsCursor) {
    QAbstractItemModelTester tester(grid.model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    grid.bind(clients);
    EXPECT_EQ(firstColumn(), u"3,1,2");
    clients->setSort("客户编号");
    EXPECT_EQ(firstColumn(), u"1,2,3");
    clients->MoveLast();
    EXPECT_EQ(grid.currentIndex().row(), 2);
    clients->AddNew();
    clients->Fields("客户编号").setValue(QStringLiteral("9"));
    EXPECT_EQ(firstColumn(), u"1,2,3,9");
    clients->Update();
    clients->Delete();
    EXPECT_EQ(firstColumn(), u"1,2,3");
    clients->setFilter("客户编号 = '2'");
    EXPECT_EQ(firstColumn(), u"2");
    clients->setFilter("客户编号 = 'x'");
    EXPECT_EQ(grid.model()->rowCount(), 0);
    EXPECT_FALSE(grid.currentIndex().isValid());
    clients->clearFilter();
    runStatement(books.session().cn, "Delete * From clientTable");
    EXPECT_EQ(grid.model()->rowCount(), 0);
}

TEST_F(Grid, SeesWhatAnotherCursorUpdatesAndDeletes) {
    QAbstractItemModelTester tester(grid.model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    grid.bind(clients);
    RecordsetPtr other;
    reopen(other, books.session().cn, "Select * From clientTable");
    other->Fields("客户编号").setValue(QStringLiteral("30"));
    EXPECT_EQ(firstColumn(), u"3,1,2");
    other->Update();
    EXPECT_EQ(firstColumn(), u"30,1,2");
    other->MoveNext();
    other->Delete();
    EXPECT_EQ(firstColumn(), u"30,2");
}

TEST_F(Grid, ADeletionLeavesTheCursorWhereItStoodAndNotWhereTheGridWent) {
    grid.bind(clients);
    clients->MoveFirst();
    clients->Delete();
    EXPECT_EQ(clients->AbsolutePosition(), -1) << "on the row that is gone";
    clients->MoveNext();
    EXPECT_EQ(clients->Fields("客户编号").text(), u"1");
    EXPECT_EQ(grid.currentIndex().row(), 0);
}

TEST_F(Grid, RowHandlerRunsOnceForAWalk) {
    int calls = 0;
    grid.bind(clients);
    grid.setRowHandler([&] { ++calls; });
    {
        QuietWalk walk(clients);
        clients->MoveLast();
        clients->MoveFirst();
        clients->MoveNext();
    }
    EXPECT_EQ(calls, 1);
    moveInRecordset(clients, 3);
    EXPECT_EQ(calls, 2);
    moveInRecordset(clients, 2);
    EXPECT_EQ(calls, 2) << "the last row stays";
}

TEST_F(Grid, MovesPastTheEndsStayOnTheFirstAndTheLastRow) {
    for (const auto& [button, end] : {std::pair(1, 1), std::pair(2, 3)}) {
        moveInRecordset(clients, button == 1 ? 0 : 3);
        for (int i = 0; i < 2; ++i) {
            moveInRecordset(clients, button);
            EXPECT_EQ(clients->AbsolutePosition(), end);
            EXPECT_TRUE(clients->currentRow());
        }
    }
    clients->MovePrevious();
    moveInRecordset(clients, 1);
    EXPECT_EQ(clients->AbsolutePosition(), 1);
}

TEST_F(Grid, ExportsTheShownColumnsAsCsv) {
    grid.bind(clients, {"流水号"});
    for (int i = 2; i < grid.model()->columnCount(); ++i)
        grid.setColumnHidden(i, clients->fieldInfo(i).name != u"单位名称");
    QTemporaryDir folder;
    ASSERT_EQ(writeCsv(folder.filePath("a.csv"), grid.exportTable()), ExportEnd::Whole);
    QFile file(folder.filePath("a.csv"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.startsWith("\xEF\xBB\xBF")) << "spreadsheets know UTF-8 by its mark";
    EXPECT_EQ(
        QString::fromUtf8(bytes),
        u"客户编号,单位名称\r\n3,\"单,\"\"位\"\"3\"\r\n1,\"单,\"\"位\"\"1\"\r\n2,\"单,\"\"位\"\"2\"\r\n");
}

TEST_F(Grid, AListThatDoesNotFitOnTheDiskLeavesTheFileBeforeIt) {
    grid.bind(clients);
    QTemporaryDir folder;
    QFile file(folder.filePath("a.csv"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("before") == 6);
    file.close();
    {
        const FileSizeLimit full(16);
        EXPECT_EQ(writeCsv(file.fileName(), grid.exportTable()), ExportEnd::Failed);
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "before");
}

TEST_F(Grid, SelectedRowsAreCopiedPartedByTabs) {
    grid.bind(clients, {"流水号"});
    for (int i = 2; i < grid.model()->columnCount(); ++i)
        grid.setColumnHidden(i, true);
    grid.selectRow(1);
    EXPECT_EQ(grid.selectedText(), u"客户编号\n1");
}

TEST_F(Grid, NumbersStandRightDatesInTheMiddleTextsLeft) {
    books.addProduct("p", "纸", 1, 1, 1);
    books.session().open_rs();
    grid.bind(books.session().productTable);
    const auto alignment = [&](const char* field) {
        const int column = books.session().productTable->fieldIndex(QString::fromUtf8(field));
        return Qt::Alignment(grid.model()->index(0, column).data(Qt::TextAlignmentRole).toInt());
    };
    EXPECT_TRUE(alignment("数量") & Qt::AlignRight);
    EXPECT_EQ(alignment("日期"), Qt::AlignCenter);
    EXPECT_TRUE(alignment("品名") & Qt::AlignLeft);
}

TEST_F(Grid, NumbersKeptAsTextsStandRightToo) {
    books.addProduct("p", "纸", 1, 1, 1);
    books.session().open_rs();
    for (const auto& [table, field] :
         {std::pair("productTable", "折扣"), {"stock_Count_Bank", "亏_盈"}, {"clientTable", "差额利润率"}}) {
        const ColumnInfo info{QString::fromUtf8(field), QStringLiteral("TEXT(20)"), ColumnType::Text, 20};
        EXPECT_TRUE(fieldAlignment(info) & Qt::AlignRight) << table << field;
    }
    grid.bind(books.session().productTable);
    grid.setEditable(true);
    grid.show();
    for (const auto& [field, side] :
         {std::pair("折扣", Qt::AlignRight), {"数量", Qt::AlignRight}, {"品名", Qt::AlignLeft}}) {
        grid.edit(grid.model()->index(0, books.session().productTable->fieldIndex(QString::fromUtf8(field))));
        const auto editors = grid.viewport()->findChildren<QLineEdit*>("cellEditor");
        ASSERT_FALSE(editors.isEmpty());
        EXPECT_TRUE(editors.last()->alignment() & side) << field;
        grid.commitEditor();
    }
}

TEST_F(Grid, TypedLettersFindNoRow) {
    grid.bind(clients);
    grid.show();
    grid.setCurrentIndex(grid.model()->index(0, clients->fieldIndex("客户编号")));
    QTest::keyClicks(&grid, "2");
    EXPECT_EQ(clients->AbsolutePosition(), 1);
}

TEST_F(Grid, AnEmptyGridSaysWhetherTheTableTheConditionOrThePeriodIsEmpty) {
    grid.setEmptyText("还没有客户。");
    EXPECT_EQ(grid.emptyText(), u"还没有客户。") << "before it is bound";
    grid.bind(clients);
    clients->setFilter("客户编号 = '99'");
    EXPECT_EQ(grid.emptyText(), u"没有符合条件的记录，按“全库显示”看全部");
    clients->clearFilter();
    while (clients->hasRows()) {
        clients->MoveFirst();
        clients->Delete();
    }
    EXPECT_EQ(grid.emptyText(), u"还没有客户。");
    clients->Close();
    EXPECT_EQ(grid.emptyText(), u"该时间段没有数据");
}

TEST_F(Grid, ColumnsAreFittedWhenTheirFirstRowsAppear) {
    const int column = clients->fieldIndex("单位名称");
    clients->Fields(column).setValue(QString("很长很长很长很长很长的单位名称"));
    clients->setFilter("客户编号 = '99'");
    grid.bind(clients);
    const int empty = grid.columnWidth(column);
    clients->clearFilter();
    EXPECT_GT(grid.columnWidth(column), empty);
    const int fitted = grid.columnWidth(column);
    grid.setColumnWidth(column, fitted + 40);
    clients->setFilter("客户编号 = '99'");
    clients->clearFilter();
    EXPECT_EQ(grid.columnWidth(column), fitted + 40) << "what the user has set stays";
}

TEST_F(Grid, ColumnsAreFittedToAFirstRowThatIsAddedFieldByField) {
    books.changeBehind("DELETE FROM clientTable");
    books.session().open_rs();
    clients = books.session().clientTable;
    grid.bind(clients);
    const int company = clients->fieldIndex("单位名称");
    const int address = clients->fieldIndex("地址");
    const int empty = grid.columnWidth(company);
    clients->AddNew();
    clients->Fields(company).setValue(QString("很长很长很长很长很长的单位名称"));
    clients->Fields(address).setValue(QString("也很长很长很长很长很长的一个地址"));
    clients->Update();
    const int fitted = grid.columnWidth(company);
    EXPECT_GT(fitted, empty);
    EXPECT_GT(grid.columnWidth(address), fitted);
    grid.setColumnWidth(company, fitted + 40);
    clients->AddNew();
    clients->Fields(company).setValue(QString("短"));
    clients->Update();
    EXPECT_EQ(grid.columnWidth(company), fitted + 40) << "what the user has set stays";
}

} // namespace

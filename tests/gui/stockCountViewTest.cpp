#include "controls/dataGrid.h"
#include "reports/paperView.h"
#include "support/shopWindow.h"

namespace {

class Counting : public ShopWindow {
protected:
    Counting() {
        books.addProduct("p1", "打印纸", 10, 2.5, 9);
        books.addProduct("p2", "硒鼓", 2, 10, 30);
        books.execute("UPDATE productTable SET 日期 = '2004-03-01' WHERE 产品编号 = 'p1'");
    }
    void open() {
        start();
        drive->choose("count_stock1");
    }
    QString counted() {
        return books.stored("SELECT 产品编号, 实物数, 亏_盈 FROM stock_Count_Bank ORDER BY rowid");
    }
};

TEST_F(Counting, ANewCountShowsTheStockByDate) {
    open();
    EXPECT_EQ(main->host().active()->caption(), u"库存盘点");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "产品编号"), u"p2");
    EXPECT_EQ(drive->text("Text1"), u"2/2");
    EXPECT_EQ(drive->text("Text2") + u'/' + drive->text("Text3"), u"2004-1-5/2004-3-1");
    EXPECT_EQ(session().displayDate2, u"2004-3-1");
    EXPECT_TRUE(drive->find<DataGrid>("DataGrid1")->isColumnHidden(0));
    EXPECT_EQ(counted(), u"p1|0.0|0;p2|0.0|0");
    EXPECT_FALSE(enabled("Toolbar1(2)"));
    for (int i = 3; i <= 7; ++i)
        EXPECT_TRUE(enabled(qPrintable(QStringLiteral("Toolbar1(%1)").arg(i))));
}

TEST_F(Counting, AnEmptyStockIsNotCounted) {
    books.execute("DELETE FROM productTable");
    open();
    EXPECT_TRUE(main->host().isActive("dataInputFm1"));
}

TEST_F(Counting, WhatIsTypedIsSavedOrGivenUpTogether) {
    open();
    drive->editCell("DataGrid1", 0, "实物数", "3");
    drive->editCell("DataGrid1", 1, "亏_盈", "少一件");
    EXPECT_EQ(counted(), u"p1|0.0|0;p2|0.0|0");
    drive->click("Command2");
    EXPECT_EQ(counted(), u"p1|0.0|少一件;p2|3.0|0");
    drive->editCell("DataGrid1", 0, "实物数", "8");
    drive->click("Command3");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "实物数"), u"3");
    EXPECT_EQ(books.stored("SELECT sum(数量) FROM productTable"), u"12.0");
}

TEST_F(Counting, ClearingAsksNothing) {
    open();
    drive->editCell("DataGrid1", 0, "实物数", "3");
    drive->click("Command2");
    drive->click("Command7");
    EXPECT_EQ(counted(), u"p1|0.0|0;p2|0.0|0");
    EXPECT_EQ(status(), u"已清空并保存 2 条的实物数");
}

TEST_F(Counting, ANewCountInFrontOnlyTakesItsFilterOff) {
    open();
    drive->editCell("DataGrid1", 0, "实物数", "3");
    drive->click("Command2");
    session().stock_Count_Bank->setFilter("产品编号 = 'p1'");
    drive->choose("count_stock1");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
    EXPECT_EQ(counted(), u"p1|0.0|0;p2|3.0|0") << "a count in front of the user is not made anew";
    drive->choose("show_stock");
    drive->choose("count_stock1");
    EXPECT_EQ(counted(), u"p1|0.0|0;p2|0.0|0");
}

TEST_F(Counting, LeavingKeepsWhatIsTypedAndTheStatusBarCountsIt) {
    open();
    drive->editCell("DataGrid1", 0, "实物数", "3");
    drive->choose("show_stock");
    EXPECT_TRUE(status().contains(u"1")) << status().toStdString();
    drive->choose("count_stock2");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "实物数"), u"3");
    drive->choose("maintain_product");
    drive->click("Command12");
    EXPECT_TRUE(main->host().isActive("stock_CountFm1"));
    EXPECT_EQ(drive->cell("DataGrid1", 0, "实物数"), u"3");
    drive->click("Command2");
    EXPECT_EQ(counted(), u"p1|0.0|0;p2|3.0|0");
}

TEST_F(Counting, GoingOnFromTheMenuTestsForNoRowsAndFromStockInDoes) {
    start();
    drive->choose("maintain_product");
    drive->click("Command12");
    EXPECT_TRUE(main->host().isActive("productRegisterFm1"));
    drive->choose("count_stock2");
    EXPECT_TRUE(main->host().isActive("stock_CountFm1"));
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    EXPECT_EQ(drive->text("Text2") + u'/' + drive->text("Text3"), u"0000-0-0/0000-0-0");
    for (const char* button : {"Command2", "Command3", "Command7", "Command1(0)"})
        drive->click(QString::fromUtf8(button));
    drive->choose("maintain_product");
    drive->click("Command13");
    EXPECT_TRUE(main->host().isActive("stock_CountFm1"));
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
}

TEST_F(Counting, SearchAndSortWorkOnTheCountWithItsOwnCode) {
    open();
    drive->click("Toolbar1(4)");
    EXPECT_EQ(session().showSource, ShowSource(15)) << "the whole-show code of this view";
    drive->click("Toolbar1(3)");
    EXPECT_EQ(session().showSource, ShowSource(17));
    EXPECT_EQ(session().searchCode, 17);
    Driver search(*window("searchFm1"));
    search.clickItem("List1", "品名");
    search.type("Text2", "纸");
    search.click("Command1");
    EXPECT_EQ(drive->rows("DataGrid1"), 1);
    EXPECT_EQ(drive->text("Text1"), u"1/1");
    drive->click("Toolbar1(4)");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
    EXPECT_EQ(drive->text("Text1"), u"2/2");
    drive->click("Toolbar1(6)");
    EXPECT_EQ(session().orderCode, 17);
    Driver order(*window("orderFm1"));
    order.clickItem("List1", "数量");
    order.click("Command1");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "产品编号"), u"p1");
}

TEST_F(Counting, TheCountIsPrintedWithWhatIsTyped) {
    open();
    drive->editCell("DataGrid1", 0, "实物数", "3");
    drive->click("Toolbar1(7)");
    TopWindow* report = window("showprint_rs17");
    ASSERT_NE(report, nullptr);
    EXPECT_EQ(session().report.reportFormTitle, u"库 存 盘 点");
    EXPECT_EQ(Driver(*report).entries("Combo1").last(), u"实物数方框");
    bool found = false;
    for (const PageRecording::Item& item : report->findChild<PaperSheet*>("Picture2")->recording().items())
        found = found || item.text == u"3";
    EXPECT_TRUE(found);
    EXPECT_FALSE(main->isVisible());
    report->close();
}

TEST_F(Counting, ACellThatItsColumnRefusesKeepsItsOldValue) {
    open();
    drive->clickCell("DataGrid1", 0, "实物数");
    auto* grid = drive->find<DataGrid>("DataGrid1");
    EXPECT_FALSE(
        grid->model()->setData(grid->model()->index(0, grid->recordset()->fieldIndex("实物数")), "abc"));
    EXPECT_EQ(drive->cell("DataGrid1", 0, "实物数"), u"0");
}

} // namespace

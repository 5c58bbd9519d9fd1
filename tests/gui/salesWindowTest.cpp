// The sales window beside the register, and whatever else the main window shows meanwhile.
#include "support/drillShop.h"

#include <QApplication>
#include <QLineEdit>

namespace {

class SalesWindow : public SalesShop {
protected:
    void openWindow() {
        begin();
        chooseInMenu("产品销售显示");
        ASSERT_NE(window("goodsSalesFm1"), nullptr);
        sales = std::make_unique<Driver>(*window("goodsSalesFm1"));
    }
    QString totals() { return sales->text("Label2") + u' ' + sales->text("Label4"); }
    std::unique_ptr<Driver> sales;
};

TEST_F(SalesWindow, ShowsAllLinesBesideTheRegisterWithTheirTotals) {
    openWindow();
    EXPECT_EQ(window("goodsSalesFm1")->windowTitle(), u"产品销售显示");
    EXPECT_FALSE(main->isEnabled());
    EXPECT_EQ(sales->rows("DataGrid1"), 6);
    EXPECT_EQ(totals(), u"12 110");
    EXPECT_EQ(session().showSource, ShowSource::Lines);
    auto* grid = sales->find<DataGrid>("DataGrid1");
    for (const char* column : {"流水号", "成本"})
        EXPECT_TRUE(grid->isColumnHidden(grid->recordset()->fieldIndex(QString::fromUtf8(column))));
    sales->click("return");
    EXPECT_TRUE(main->isEnabled());
    EXPECT_EQ(inFront(), u"dataInputFm1");
}

TEST_F(SalesWindow, OfNoLinesShowsZerosAndItsCommandsDoNothing) {
    start();
    chooseInMenu("产品销售显示");
    sales = std::make_unique<Driver>(*window("goodsSalesFm1"));
    EXPECT_EQ(totals(), u"0 0");
    for (const char* command :
         {"client_show", "show_sales", "select_time", "whole_show", "search", "order", "print"})
        sales->click(QString::fromUtf8(command));
    for (const char* name : {"searchFm1", "orderFm1", "timeDefineFm2", "showprint_rs2"})
        EXPECT_EQ(window(name), nullptr) << name;
}

TEST_F(SalesWindow, APeriodIsShownInItAndTheRegisterKeepsWhatWasTyped) {
    openWindow();
    view().find<QLineEdit>("Text3(1)")->setText("typed");
    sales->click("select_time");
    EXPECT_EQ(session().showSource, ShowSource::Lines);
    confirmYear("2004");
    EXPECT_EQ(sales->rows("DataGrid1"), 5);
    EXPECT_EQ(totals(), u"10 90");
    EXPECT_EQ(session().saleShowSource, ShowSource::PeriodLines);
    EXPECT_EQ(view().find<QLineEdit>("Text3(1)")->text(), u"typed");
    sales->click("whole_show");
    EXPECT_EQ(sales->rows("DataGrid1"), 6);
    EXPECT_EQ(totals(), u"12 110");
    EXPECT_EQ(session().saleShowSource, ShowSource::Lines);
    EXPECT_EQ(session().buyList->Filter(), u"") << "the period's own is gone with the reopening";
}

TEST_F(SalesWindow, SearchesAndSortsItsOwnLines) {
    openWindow();
    sales->click("search");
    Driver dialog(*window("searchFm1"));
    dialog.clickItem("List1", "客户编号");
    dialog.type("Text2", "2");
    dialog.click("Command1");
    EXPECT_EQ(sales->rows("DataGrid1"), 2);
    sales->click("order");
    Driver sorting(*window("orderFm1"));
    sorting.clickItem("List1", "实付");
    sorting.click("Command1");
    EXPECT_EQ(sales->cell("DataGrid1", 0, "实付"), u"10");
    sales->click("print");
    const QStringList page = this->page("showprint_rs2");
    for (const char* text : {"合计件数：3", "营业额：30", "时间：2004-1-31/2004-5-20"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text << page.join(u' ').toStdString();
    EXPECT_EQ(session().buyList->Sort(), u"实付") << "the print leaves the order";
}

TEST_F(SalesWindow, ThePeriodsListPrintsUnderThePeriodsWords) {
    openWindow();
    sales->click("select_time");
    confirmYear("2003");
    sales->click("print");
    const QStringList page = this->page("showprint_rs9");
    for (const char* text : {"合计件数：2", "营业额：20", "时间：2003/"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text << page.join(u' ').toStdString();
    EXPECT_TRUE(window("goodsSalesFm1")->isEnabled());
}

TEST_F(SalesWindow, GoesToTheSalesAndTheBuyersOfItsProductInTheMainWindow) {
    openWindow();
    for (int row = 0; row < sales->rows("DataGrid1"); ++row)
        if (sales->cell("DataGrid1", row, "产品编号") == u"p2")
            sales->clickCell("DataGrid1", row, "产品编号");
    sales->click("show_sales");
    EXPECT_TRUE(main->isEnabled());
    EXPECT_EQ(inFront(), u"goodsSalesFm2");
    EXPECT_EQ(labels({"Label2", "Label4"}), u"p2 笔");
    sales->click("client_show");
    EXPECT_EQ(inFront(), u"tempTable1Fm1");
    EXPECT_EQ(clients(), u"1");
    EXPECT_NE(window("goodsSalesFm1"), nullptr) << "it stays beside";
    EXPECT_TRUE(print("showprint_rs5").contains("p2产品编号"));
    EXPECT_TRUE(window("goodsSalesFm1")->isEnabled());
}

TEST_F(SalesWindow, ClosesWithEveryDialogWhenAPurchaseBegins) {
    openWindow();
    sales->click("show_sales");
    drive->choose("management_client");
    sales->click("select_time");
    view().click("Command7");
    for (const char* name : {"goodsSalesFm1", "timeDefineFm2"})
        EXPECT_EQ(window(name), nullptr) << name;
    ASSERT_NE(window("buyFm1"), nullptr);
    window("buyFm1")->close();
}

TEST_F(SalesWindow, OpensOnAllLinesWhateverASaleOrASearchHasLeft) {
    begin();
    sell("1", "3");
    chooseInMenu("产品销售显示");
    sales = std::make_unique<Driver>(*window("goodsSalesFm1"));
    EXPECT_EQ(sales->rows("DataGrid1"), 7);
    EXPECT_EQ(totals(), u"15 140");
}

TEST_F(SalesWindow, ASearchByDateShowsThePeriodInIt) {
    openWindow();
    sales->click("search");
    Driver(*window("searchFm1")).clickItem("List1", "日期");
    confirmYear("2003");
    EXPECT_EQ(sales->rows("DataGrid1"), 1);
    EXPECT_EQ(totals(), u"2 20");
    sales->click("show_sales");
    EXPECT_EQ(column("订单号"), u"9001");
}

TEST_F(SalesWindow, AWholeAskedForInItLeavesTheMainWindowsViewItsRowsAndItsEdits) {
    openWindow();
    sales->click("show_sales");
    drive->choose("show_sales");
    search("客户编号", "2");
    sales->click("whole_show");
    EXPECT_EQ(view().rows("DataGrid1"), 6);
    view().click("Command1(3)");
    EXPECT_EQ(of("Text1"), u"6/6") << "the buttons move what is seen";
    drive->choose("maintain_Data2");
    view().editCell("DataGrid1", 0, "品名", "typed");
    sales->click("whole_show");
    view().click("Command3");
    EXPECT_EQ(books.stored("SELECT count(*) FROM buyList WHERE 品名 = 'typed'"), u"1");
}

TEST_F(SalesWindow, FollowsLinesThatAnotherViewHasOpenedAnew) {
    openWindow();
    sales->click("show_sales");
    drive->choose("management_client"); // the register opens its cursors
    for (int row = 0; row < sales->rows("DataGrid1"); ++row)
        if (sales->cell("DataGrid1", row, "产品编号") == u"p2")
            sales->clickCell("DataGrid1", row, "产品编号");
    sales->click("client_show");
    EXPECT_EQ(labels({"Label2", "Label4"}), u"p2 笔") << "the row that is seen";
    sales->click("search");
    Driver dialog(*window("searchFm1"));
    dialog.clickItem("List1", "客户编号");
    dialog.type("Text2", "2");
    dialog.click("Command1");
    EXPECT_EQ(sales->rows("DataGrid1"), 2);
}

TEST_F(SalesWindow, BesideItTheViewInFrontActsOnItsOwnRows) {
    openWindow();
    sales->click("show_sales");
    drive->choose("show_sales");
    choosePeriod("2004");
    sales->click("whole_show");
    EXPECT_EQ(view().rows("DataGrid1"), 5);
    const QStringList page = print("print_rs9");
    EXPECT_TRUE(page.contains("营业额：90")) << page.join(u' ').toStdString();
}

TEST_F(SalesWindow, BesideItTheStockViewsKeepTheirCommandsAndTheirRows) {
    openWindow();
    sales->click("show_sales");
    drive->choose("show_stock");
    search("产品编号", "p2");
    sales->click("select_time");
    confirmYear("2004");
    EXPECT_EQ(session().showSource, ShowSource::Products);
    view().click("Command5");
    EXPECT_NE(window("stockFm3"), nullptr);
    window("stockFm3")->close();
    sales->click("select_time");
    window("timeDefineFm2")->close();
    EXPECT_EQ(session().stockShowSource, ShowSource::Products);
    drive->choose("show_whole_client");
    drive->choose("show_stock");
    EXPECT_EQ(view().rows("DataGrid1"), 2);
}

TEST_F(SalesWindow, ACancelledPeriodLeavesASearchInTheViewInFront) {
    openWindow();
    sales->click("show_sales");
    drive->choose("show_whole_client");
    search("客户编号", "2");
    sales->click("select_time");
    window("timeDefineFm2")->close();
    EXPECT_EQ(view().rows("DataGrid1"), 1);
    EXPECT_EQ(session().showSource, ShowSource::Clients);
}

TEST_F(SalesWindow, APeriodChosenInItSinceIsNotThatOfTheRowsInFront) {
    openWindow();
    sales->click("select_time");
    confirmYear("2003");
    sales->click("show_sales");
    sales->click("select_time");
    confirmYear("2004");
    const QStringList texts = print("showprint_rs_temp");
    EXPECT_TRUE(texts.contains("时间：2003/")) << texts.join(u' ').toStdString();
    EXPECT_FALSE(texts.join(u' ').contains("2004-12-31")) << "the days below the page";
}

TEST_F(SalesWindow, ASortInItLeavesTheOtherRowsOfTheViewInFront) {
    openWindow();
    sales->click("show_sales");
    drive->choose("show_sales");
    choosePeriod("2004");
    sales->click("whole_show");
    view().click("Command1(3)");
    sales->click("order");
    Driver sorting(*window("orderFm1"));
    sorting.clickItem("List1", "实付");
    sorting.click("Command1");
    EXPECT_EQ(of("Text1"), u"5/5");
}

TEST_F(SalesWindow, BesideItTheOrdersKeepTheirDays) {
    openWindow();
    sales->click("show_sales");
    drive->choose("show_sales");
    view().click("orderStatistic");
    Driver orders(*window("statisticFm5"));
    sales->click("show_sales"); // behind the orders
    orders.click("select_time");
    confirmYear("2004");
    EXPECT_EQ(orders.rows("DataGrid1"), 4);
    orders.click("print");
    EXPECT_TRUE(page("print_rs_order").contains("时间：2004/"));
}

TEST_F(SalesWindow, BesideTheStockStatisticTheViewInFrontStillMoves) {
    begin();
    drive->choose("data_statistic1");
    chooseInMenu("库存统计");
    drive->choose("show_whole_client");
    QEvent activated(QEvent::WindowActivate);
    QApplication::sendEvent(window("statisticFm4"), &activated);
    EXPECT_EQ(session().showSource, ShowSource::Products);
    view().click("Command1(3)");
    EXPECT_EQ(of("Text1"), u"3/3");
    EXPECT_FALSE(print("showprint_rs1").isEmpty());
}

TEST_F(SalesWindow, APeriodConfirmedInItLeavesAnOrderInFrontAsItIs) {
    openWindow();
    sales->click("show_sales");
    drive->choose("management_client");
    chooseClient("1");
    drive->choose("show_one_client2");
    Driver(*window("order_Form_NumFm1")).click("Command1");
    ASSERT_EQ(inFront(), u"tempTable2Fm22");
    sales->click("select_time");
    confirmYear("2004");
    const QStringList page = print("showprint_rs22");
    EXPECT_TRUE(page.contains("时间：2003-6-1")) << page.join(u' ').toStdString();
    EXPECT_FALSE(page.contains("2004-1-31")) << "a line of the period";
    sales->click("whole_show");
    EXPECT_FALSE(print("showprint_rs22").contains("2004-1-31")) << "nor one of the whole";
}

} // namespace

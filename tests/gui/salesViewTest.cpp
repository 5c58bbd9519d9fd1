// All sold goods, and from there down to one product, its buyers and the orders.
#include "support/drillShop.h"

#include <QApplication>
#include <QLineEdit>

namespace {

class Sales : public DrillShop {
protected:
    void open() {
        begin();
        drive->choose("show_sales");
    }
    QString figures() { return labels({"Label5", "Label7", "Label9", "Label11"}); }
    void search(const char* field, const char* value) {
        drive->click("Toolbar1(3)");
        ASSERT_NE(window("searchFm1"), nullptr);
        Driver dialog(*window("searchFm1"));
        dialog.clickItem("List1", QString::fromUtf8(field));
        dialog.type("Text2", QString::fromUtf8(value));
        dialog.click("Command1");
    }
    void sort(const char* field, const char* button = "Toolbar1(5)") {
        drive->click(QString::fromUtf8(button));
        ASSERT_NE(window("orderFm1"), nullptr);
        Driver dialog(*window("orderFm1"));
        dialog.clickItem("List1", QString::fromUtf8(field));
        dialog.click("Command1");
    }
    void count(std::optional<QString> answer) {
        prompts.expectInput("请输入产品编号：", "单项产品统计", std::move(answer));
        view().click("singleCount");
    }
};

TEST_F(Sales, ComeUpOnTheirFirstRowByDateWithTheFourFiguresOfTheWhole) {
    open();
    EXPECT_EQ(inFront(), u"statisticFm2");
    EXPECT_EQ(main->host().active()->caption(), u"产品销售显示");
    EXPECT_EQ(column("订单号"), u"9001 9003 9002 9002 9004 9005");
    EXPECT_EQ(of("Text1"), u"1/6");
    EXPECT_EQ(period(), u"2003-6-1/2004-5-21");
    EXPECT_EQ(figures(), u"110 66 12 3");
    EXPECT_EQ(labels({"Label1", "Label4", "Label6", "Label8", "Label10"}),
              u"已销售产品统计 营业额 差额利润 销售量 客户数");
    EXPECT_TRUE(hidden("流水号"));
    EXPECT_FALSE(hidden("成本"));
    EXPECT_EQ(session().showSource, ShowSource::Lines);
}

TEST_F(Sales, ASearchLeftByAnotherViewGoesWhenTheWholeIsLoadedAndOneOfItsOwnStays) {
    begin();
    session().buyList->setFilter("客户编号 = '3'");
    drive->choose("show_sales");
    EXPECT_EQ(view().rows("DataGrid1"), 6);
    search("客户编号", "2");
    EXPECT_EQ(view().rows("DataGrid1"), 2);
    main->host().showOrActivate("statisticFm2");
    EXPECT_EQ(view().rows("DataGrid1"), 2);
}

TEST_F(Sales, TheFiguresFollowASearchAndTheListsOwnHeadSpeaksOfItsRows) {
    open();
    search("客户编号", "2");
    EXPECT_EQ(figures(), u"30 18 3 1");
    const QStringList page = print("print_rs2");
    for (const char* text : {"已 销 售 产 品 统 计", "营业额：30", "差额利润：18", "销售量：3", "客户数：1"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text << page.join(u' ').toStdString();
    drive->click("Toolbar1(4)");
    EXPECT_EQ(figures(), u"110 66 12 3");
    EXPECT_EQ(view().rows("DataGrid1"), 6);
}

TEST_F(Sales, ASearchWithoutHitsShowsZeros) {
    open();
    search("客户编号", "nobody");
    EXPECT_EQ(figures(), u"0 0 0 0");
    EXPECT_EQ(of("Text1"), u"0/0");
    EXPECT_TRUE(print("print_rs2").isEmpty());
}

TEST_F(Sales, WithoutRowsAnActivationShowsNoDates) {
    open();
    session().buyList->setFilter("客户编号 = 'nobody'");
    main->host().showOrActivate("statisticFm2");
    EXPECT_EQ(of("Text1"), u"0/0");
    EXPECT_EQ(period(), u"0000-0-0/0000-0-0");
}

TEST_F(Sales, ChosenAgainFromTheMenuTheyGoBackToTheWhole) {
    open();
    choosePeriod("2004");
    search("客户编号", "2");
    drive->choose("show_sales");
    EXPECT_EQ(view().rows("DataGrid1"), 6);
    EXPECT_EQ(figures(), u"110 66 12 3");
    EXPECT_EQ(session().saleShowSource, ShowSource::Lines);
    EXPECT_EQ(period(), u"2003-6-1/2004-5-21");
}

TEST_F(Sales, OfAPeriodAreItsCopyAndPrintUnderItsWords) {
    open();
    choosePeriod("2004");
    EXPECT_EQ(column("订单号"), u"9003 9002 9002 9004 9005");
    EXPECT_EQ(figures(), u"90 54 10 3");
    EXPECT_EQ(period(), u"2004/");
    EXPECT_EQ(session().showSource, ShowSource::PeriodLines);
    const QStringList page = print("print_rs9");
    EXPECT_TRUE(page.contains("时间：2004/")) << page.join(u' ').toStdString();
    EXPECT_TRUE(page.contains("营业额：90"));
    EXPECT_FALSE(page.join(u' ').contains("差额利润：")) << "the period's report leaves it out";
}

TEST_F(Sales, AnotherViewAndBackIsStillThePeriod) {
    open();
    choosePeriod("2004");
    drive->choose("data_statistic1");
    drive->choose("show_sales");
    EXPECT_EQ(view().rows("DataGrid1"), 5);
    EXPECT_EQ(session().showSource, ShowSource::PeriodLines);
}

TEST_F(Sales, ASortKeepsTheProductInHandAndCountsWhatIsShown) {
    open();
    chooseRow("产品编号", "p2");
    EXPECT_EQ(session().currentProductNum, u"p2");
    sort("实付", "Toolbar1(6)");
    EXPECT_EQ(column("实付"), u"40 20 20 10 10 10");
    EXPECT_EQ(view().cell("DataGrid1", session().buyList->AbsolutePosition() - 1, "产品编号"), u"p2");
    EXPECT_EQ(of("Text1"), QStringLiteral("%1/6").arg(session().buyList->AbsolutePosition()));
    EXPECT_EQ(figures(), u"110 66 12 3");
}

TEST_F(Sales, ASortWhoseProductIsNotShownEndsOnTheLastRow) {
    open();
    chooseRow("产品编号", "p2");
    search("产品编号", "p1");
    session().currentProductNum = "p2";
    sort("日期");
    EXPECT_EQ(of("Text1"), u"5/5");
}

TEST_F(Sales, ARowChangeKeepsTheProductOfTheRow) {
    open();
    EXPECT_EQ(session().currentProductNum, u"p1");
    for (int i = 0; i < 3; ++i)
        view().click("Command1(2)");
    EXPECT_EQ(session().currentProductNum, session().buyList->Fields("产品编号").text());
    search("客户编号", "nobody");
    EXPECT_FALSE(session().currentProductNum.isEmpty()) << "without a row it stays";
}

TEST_F(Sales, OfOneProductCountEachCustomerOnce) {
    open();
    count("p1");
    EXPECT_EQ(of("Label1"), u"p1号产品销售统计");
    EXPECT_EQ(figures(), u"100 60 10 3");
    EXPECT_EQ(view().rows("DataGrid1"), 5);
    count("p2");
    EXPECT_EQ(figures(), u"10 6 2 1");
    drive->click("Toolbar1(4)");
    EXPECT_EQ(of("Label1"), u"已销售产品统计");
}

TEST_F(Sales, OfAProductThatIsNotThereAreFourZeros) {
    open();
    count("none");
    EXPECT_EQ(of("Label1"), u"none号产品销售统计");
    EXPECT_EQ(figures(), u"0 0 0 0");
    count("o'k");
    EXPECT_EQ(figures(), u"0 0 0 0") << "an apostrophe breaks nothing";
}

TEST_F(Sales, ABlankOrCancelledNumberDoesNothing) {
    open();
    count(QString());
    count("  ");
    count(std::nullopt);
    EXPECT_EQ(of("Label1"), u"已销售产品统计");
    EXPECT_EQ(view().rows("DataGrid1"), 6);
}

TEST_F(Sales, OfOneProductInAPeriodAreThePeriods) {
    open();
    choosePeriod("2004");
    count("p1");
    EXPECT_EQ(figures(), u"80 48 8 3");
    EXPECT_EQ(session().buyList2->Filter(), u"产品编号 = 'p1'");
}

TEST_F(Sales, TheSalesListPrintsWhatIsShownWithItsTotals) {
    open();
    search("客户编号", "2");
    chooseInMenu("打印销售清单");
    const QStringList page = this->page("showprint_rs2");
    for (const char* text : {"销售清单", "合计件数：3", "营业额：30", "时间：2003-6-1/2004-5-21"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text << page.join(u' ').toStdString();
    EXPECT_TRUE(main->isVisible());
}

TEST_F(Sales, TheSalesListOfAPeriodHasThePeriodsFilterAgain) {
    open();
    choosePeriod("2004");
    session().buyList->clearFilter();
    chooseInMenu("打印销售清单");
    const QStringList page = this->page("showprint_rs9");
    for (const char* text : {"合计件数：10", "营业额：90", "时间：2004/"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text << page.join(u' ').toStdString();
    EXPECT_FALSE(page.contains("2003-6-1"));
}

TEST_F(Sales, OfOneProductAreListedNewestFirstWithoutWhatTheyCost) {
    open();
    chooseRow("产品编号", "p1");
    view().click("Command3");
    EXPECT_EQ(inFront(), u"goodsSalesFm2");
    EXPECT_EQ(main->host().active()->caption(), u"某项产品销售显示");
    EXPECT_EQ(column("订单号"), u"9005 9004 9002 9003 9001");
    EXPECT_EQ(session().productLines->Sort(), u"日期 desc");
    EXPECT_TRUE(hidden("流水号"));
    EXPECT_TRUE(hidden("成本"));
    EXPECT_TRUE(hidden("差额利润"));
    EXPECT_FALSE(hidden("实付"));
    EXPECT_EQ(labels({"Label1", "Label2", "Label3", "Label4", "Label5", "Label6", "Label7", "Label8"}),
              u"产品编号： p1 品名 纸 总件数： 10 营业额： 100");
    EXPECT_EQ(session().showSource, ShowSource::Lines) << "that of the view that asked";
}

TEST_F(Sales, OfOneProductPrintTheirOwnDaysInTheHead) {
    begin();
    drive->choose("show_stock");
    chooseRow("产品编号", "p2");
    drive->choose("show_one_sale_product");
    session().periodDate1 = "1999-1-1"; // of a window that was open beside
    session().scratch = session().clientTable;
    const QStringList page = print("showprint_rs_temp");
    for (const char* text : {"笔--产品销售清单", "时间：2004-3-5/2004-3-5", "合计件数：2", "营业额：10"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text << page.join(u' ').toStdString();
}

TEST_F(Sales, OfOneProductInAPeriodAreThePeriodsFromTheSalesAndFromTheStock) {
    open();
    choosePeriod("2004");
    chooseRow("产品编号", "p1");
    drive->choose("show_one_sale_product");
    EXPECT_EQ(column("订单号"), u"9005 9004 9002 9003");
    EXPECT_TRUE(print("showprint_rs_temp").contains("时间：2004/"));
    drive->choose("show_stock");
    choosePeriod("2004");
    chooseRow("产品编号", "p1");
    drive->choose("show_one_sale_product");
    EXPECT_EQ(column("订单号"), u"9005 9004 9002 9003");
    drive->choose("show_stock");
    drive->choose("show_stock");
    chooseRow("产品编号", "p1");
    drive->choose("show_one_sale_product");
    EXPECT_EQ(view().rows("DataGrid1"), 5) << "the whole stock asks for all sales";
}

TEST_F(Sales, AProductWithoutAnyIsTold) {
    begin();
    books.addProduct("p3", "墨", 1, 1, 1);
    session().openMainCursors();
    drive->choose("show_stock");
    chooseRow("产品编号", "p3");
    prompts.expectMessage("该产品无销售！");
    drive->choose("show_one_sale_product");
    EXPECT_EQ(inFront(), u"stockFm1");
}

TEST_F(Sales, TheWaysToAProductSayWhereToStartFrom) {
    begin();
    prompts.expectMessage("请看库存显示或看销售显示！");
    drive->choose("show_one_sale_product");
    prompts.expectMessage("请先看销售显示！");
    drive->choose("show_product_client");
    drive->choose("show_stock");
    prompts.expectMessage("请先看销售显示！");
    drive->choose("show_product_client");
    EXPECT_EQ(inFront(), u"stockFm1");
}

TEST_F(Sales, TheBuyersOfAProductAreCustomersFromTheFirstOn) {
    open();
    chooseRow("产品编号", "p1");
    view().click("Command4");
    EXPECT_EQ(inFront(), u"tempTable1Fm1");
    EXPECT_EQ(main->host().active()->caption(), u"某项产品客户资料") << "set when the view is shown";
    EXPECT_EQ(clients(), u"1 2 3");
    EXPECT_EQ(of("Text1"), u"1/3");
    EXPECT_TRUE(hidden("流水号"));
    EXPECT_EQ(labels({"Label1", "Label2", "Label3", "Label4"}), u"产品编号： p1 品名： 纸");
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientTable3"), u"3");
    const QStringList page = print("showprint_rs5");
    EXPECT_TRUE(page.contains("购买'纸'的客户资料")) << page.join(u' ').toStdString();
    EXPECT_TRUE(page.contains("p1产品编号"));
}

TEST_F(Sales, TheBuyersInAPeriodAreThoseOfItsLines) {
    open();
    choosePeriod("2003");
    chooseRow("产品编号", "p1");
    drive->choose("show_product_client");
    EXPECT_EQ(clients(), u"1");
}

TEST_F(Sales, TheBuyersLeaveACutOnItsScreen) {
    begin();
    drive->choose("data_statistic1");
    cutByRank("1");
    drive->choose("show_sales");
    chooseRow("产品编号", "p1");
    drive->choose("show_product_client");
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1");
    EXPECT_TRUE(print("print_rs8").contains("联系人1"));
}

TEST_F(Sales, UnderASearchWithoutHitsThereIsNoProductToGoTo) {
    open();
    search("客户编号", "nobody");
    view().click("Command3");
    view().click("Command4");
    EXPECT_EQ(inFront(), u"statisticFm2");
    EXPECT_FALSE(status().isEmpty());
}

TEST_F(Sales, WhileThePeriodDialogStandsOpenACountIsOfWhatIsShown) {
    open();
    choosePeriod("2004");
    drive->click("Toolbar1(2)");
    count("p1");
    EXPECT_EQ(figures(), u"80 48 8 3");
    window("timeDefineFm2")->close();
    EXPECT_EQ(view().rows("DataGrid1"), 6) << "the asker has said the whole";
    EXPECT_EQ(figures(), u"110 66 12 3");
}

TEST_F(Sales, TheGatewayOfTheStockOpensThem) {
    begin();
    drive->choose("maintain_product");
    session().buyList->setFilter("客户编号 = 'nobody'");
    view().click("Command9");
    EXPECT_EQ(inFront(), u"statisticFm2");
    EXPECT_EQ(view().rows("DataGrid1"), 6);
}

// What each order comes to.

TEST_F(Sales, OrdersStandInAWindowInTheMainWindowsPlace) {
    open();
    view().click("orderStatistic");
    ASSERT_NE(window("statisticFm5"), nullptr);
    EXPECT_FALSE(main->isVisible());
    Driver orders(*window("statisticFm5"));
    EXPECT_EQ(window("statisticFm5")->windowTitle(), u"按订单号统计购买额");
    QStringList rows;
    for (int i = 0; i < orders.rows("DataGrid1"); ++i)
        rows << orders.cell("DataGrid1", i, "订单号") + u' ' + orders.cell("DataGrid1", i, "购买额");
    EXPECT_EQ(rows.join(u'|'), u"9002 50|9001 20|9004 20|9003 10|9005 10");
    EXPECT_EQ(orders.text("Label5") + u' ' + orders.text("Label7") + u' ' + orders.text("Label9"),
              u"110 66 12");
    EXPECT_EQ(orders.text("Text1"), u"1/5");
    EXPECT_EQ(books.stored("SELECT count(*) FROM orderTable"), u"5");
    orders.click("return");
    EXPECT_EQ(window("statisticFm5"), nullptr);
    EXPECT_TRUE(main->isVisible());
}

TEST_F(Sales, OrdersPrintUnderThePeriodOfTheSales) {
    open();
    choosePeriod("2004");
    view().click("orderStatistic");
    session().periodDate1 = "1999-1-1"; // of a window that was open beside
    Driver orders(*window("statisticFm5"));
    EXPECT_EQ(orders.rows("DataGrid1"), 4);
    orders.click("print");
    const QStringList page = this->page("print_rs_order");
    for (const char* text :
         {"订 单 号 购 买 额", "时间：2004/", "营业额(合计)/90", "差额利润(合计)/54", "销售量(合计)/10"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text << page.join(u' ').toStdString();
    EXPECT_TRUE(window("statisticFm5")->isEnabled());
    EXPECT_FALSE(main->isVisible()) << "the window stands in its place still";
}

TEST_F(Sales, OrdersAreCountedAnewForAPeriodThatTheirWindowAsksFor) {
    open();
    view().click("orderStatistic");
    Driver orders(*window("statisticFm5"));
    orders.click("select_time");
    confirmYear("2003");
    EXPECT_EQ(orders.rows("DataGrid1"), 1);
    EXPECT_EQ(orders.text("Label5"), u"20");
    EXPECT_FALSE(main->isVisible());
    orders.click("select_time");
    window("timeDefineFm2")->close();
    EXPECT_EQ(orders.rows("DataGrid1"), 5) << "cancelled, the whole is shown as the asker has said";
    orders.click("return");
    EXPECT_EQ(session().showSource, ShowSource::Lines);
    EXPECT_EQ(view().rows("DataGrid1"), 6);
    EXPECT_EQ(period(), u"2003-6-1/2004-5-21");
}

TEST_F(Sales, OrdersAreThoseOfTheSalesThatAreSeenAlsoWhileThePeriodDialogStandsOpen) {
    open();
    choosePeriod("2004");
    drive->click("Toolbar1(2)");
    view().click("orderStatistic");
    EXPECT_EQ(Driver(*window("statisticFm5")).rows("DataGrid1"), 4);
}

TEST_F(Sales, OrdersOfALostPeriodAreNone) {
    open();
    view().click("orderStatistic");
    Driver orders(*window("statisticFm5"));
    orders.click("select_time");
    Driver dialog(*window("timeDefineFm2"));
    dialog.pick("Combo1", "2003");
    dialog.pick("Combo2", "12");
    dialog.click("Option3");
    dialog.click("Command1"); // the month 13 loses the copies
    EXPECT_EQ(orders.rows("DataGrid1"), 0);
    EXPECT_EQ(orders.text("Label5") + orders.text("Label7") + orders.text("Label9"), u"000");
    EXPECT_EQ(books.stored("SELECT count(*) FROM orderTable"), u"0");
}

TEST_F(Sales, OrdersKeepTheDaysThatWereCountedWhateverComesUpBehindTheirWindow) {
    open();
    view().click("orderStatistic");
    Driver orders(*window("statisticFm5"));
    main->host().show("dataInputFm1");
    orders.click("print");
    EXPECT_TRUE(page("print_rs_order").contains("时间：2003-6-1/2004-5-21"));
}

TEST_F(Sales, CustomersOfAPeriodAreCountedAfterTheEvaluationHasEmptiedTheirCopy) {
    open();
    choosePeriod("2004");
    drive->choose("data_statistic1");
    drive->choose("show_sales");
    EXPECT_EQ(figures(), u"90 54 10 3");
}

TEST_F(Sales, ASearchAfterTheCountOfAProductIsUnderTheTitleOfAll) {
    open();
    count("p1");
    search("客户编号", "2");
    EXPECT_EQ(of("Label1"), u"已销售产品统计");
    EXPECT_EQ(figures(), u"30 18 3 1");
}

TEST_F(Sales, OrdersOfNoSalesOpenNothing) {
    open();
    search("客户编号", "nobody");
    view().click("orderStatistic");
    EXPECT_EQ(window("statisticFm5"), nullptr);
    EXPECT_TRUE(main->isVisible());
}

TEST_F(Sales, OrdersLeaveASearchInTheSalesAsItStands) {
    open();
    search("客户编号", "2");
    view().click("Command1(3)");
    view().click("orderStatistic");
    Driver(*window("statisticFm5")).click("return");
    EXPECT_EQ(view().rows("DataGrid1"), 2);
    EXPECT_EQ(of("Text1"), u"2/2");
    EXPECT_EQ(figures(), u"30 18 3 1");
}

// The sales window beside the register.

class SalesWindow : public Sales {
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

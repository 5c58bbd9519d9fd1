// All sold goods, and from there down to one product, its buyers and the orders.
#include "support/drillShop.h"

namespace {

class Sales : public SalesShop {};

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

} // namespace

// What each order comes to, in a window in the main window's place.
#include "support/drillShop.h"

namespace {

class OrderStatisticWindow : public SalesShop {};

TEST_F(OrderStatisticWindow, OrdersStandInAWindowInTheMainWindowsPlace) {
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

TEST_F(OrderStatisticWindow, OrdersPrintUnderThePeriodOfTheSales) {
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

TEST_F(OrderStatisticWindow, OrdersAreCountedAnewForAPeriodThatTheirWindowAsksFor) {
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

TEST_F(OrderStatisticWindow, OrdersAreThoseOfTheSalesThatAreSeenAlsoWhileThePeriodDialogStandsOpen) {
    open();
    choosePeriod("2004");
    drive->click("Toolbar1(2)");
    view().click("orderStatistic");
    EXPECT_EQ(Driver(*window("statisticFm5")).rows("DataGrid1"), 4);
}

TEST_F(OrderStatisticWindow, OrdersOfALostPeriodAreNone) {
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

TEST_F(OrderStatisticWindow, OrdersKeepTheDaysThatWereCountedWhateverComesUpBehindTheirWindow) {
    open();
    view().click("orderStatistic");
    Driver orders(*window("statisticFm5"));
    main->host().show("dataInputFm1");
    orders.click("print");
    EXPECT_TRUE(page("print_rs_order").contains("时间：2003-6-1/2004-5-21"));
}

TEST_F(OrderStatisticWindow, CustomersOfAPeriodAreCountedAfterTheEvaluationHasEmptiedTheirCopy) {
    open();
    choosePeriod("2004");
    drive->choose("data_statistic1");
    drive->choose("show_sales");
    EXPECT_EQ(figures(), u"90 54 10 3");
}

TEST_F(OrderStatisticWindow, ASearchAfterTheCountOfAProductIsUnderTheTitleOfAll) {
    open();
    count("p1");
    search("客户编号", "2");
    EXPECT_EQ(of("Label1"), u"已销售产品统计");
    EXPECT_EQ(figures(), u"30 18 3 1");
}

TEST_F(OrderStatisticWindow, OrdersOfNoSalesOpenNothing) {
    open();
    search("客户编号", "nobody");
    view().click("orderStatistic");
    EXPECT_EQ(window("statisticFm5"), nullptr);
    EXPECT_TRUE(main->isVisible());
}

TEST_F(OrderStatisticWindow, OrdersLeaveASearchInTheSalesAsItStands) {
    open();
    search("客户编号", "2");
    view().click("Command1(3)");
    view().click("orderStatistic");
    Driver(*window("statisticFm5")).click("return");
    EXPECT_EQ(view().rows("DataGrid1"), 2);
    EXPECT_EQ(of("Text1"), u"2/2");
    EXPECT_EQ(figures(), u"30 18 3 1");
}

} // namespace

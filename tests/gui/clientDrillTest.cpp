// From a customer down to his purchases, his shares and his orders.
#include "controls/figureCard.h"
#include "support/drillShop.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QToolTip>
#include <QtTest/QTest>

namespace {

class ClientDrill : public DrillShop {
protected:
    QStringList card() {
        QStringList texts;
        for (const CardText& each : view().find<FigureCard>("Picture1")->texts())
            texts << each.text;
        return texts;
    }
    QString shares() { return labels({"Label2", "Label3", "Label5", "Label6", "Label8", "Label9"}); }
};

TEST_F(ClientDrill, ThePurchasesOfTheCustomerInTheRegister) {
    begin();
    chooseClient("1");
    drive->choose("show_one_client1");
    EXPECT_EQ(inFront(), u"tempTable2Fm2");
    EXPECT_EQ(main->host().active()->caption(), u"某客户购买产品清单");
    EXPECT_EQ(column("订单号"), u"9001 9002 9002");
    EXPECT_TRUE(hidden("流水号"));
    EXPECT_FALSE(hidden("成本"));
    EXPECT_EQ(shares(), u"70 63.63% 42 63.63% 8 66.66%");
    EXPECT_EQ(labels({"Label10", "Label11", "Label12", "Label13"}), u"单位名称： 单位1 联系人： 联系人1");
    EXPECT_EQ(of("Text1"), u"3/3") << "the walk over the lines ends on the last";
    EXPECT_EQ(books.stored("SELECT count(*), min(客户编号) FROM tempTable2"), u"3|1");
    EXPECT_EQ(main->findChild<QLabel*>("viewCaption")->text(), u"某客户购买产品清单");
}

TEST_F(ClientDrill, TheShareLabelsSayWhoseShareTheyAre) {
    begin();
    for (const char* command : {"show_one_client1", "statistic_one_client"}) {
        drive->choose(QString::fromUtf8(command));
        QStringList tips;
        for (const char* label : {"Label3", "Label6", "Label9"})
            tips << main->host().active()->findChild<QLabel*>(label)->toolTip();
        EXPECT_EQ(tips.join(u' '), u"占总消费额比率 占总差额利润比率 占总销售量比率") << command;
    }
    QStringList onCard;
    for (const CardText& each : view().find<FigureCard>("Picture1")->texts())
        if (!each.tip.isEmpty())
            onCard << each.text + each.tip;
    EXPECT_EQ(onCard,
              (QStringList{"63.63%占总消费额比率", "63.63%占总差额利润比率", "66.66%占总销售量比率"}));
}

TEST_F(ClientDrill, TheCardShowsTheTipOfTheShareUnderThePointer) {
    begin();
    drive->choose("statistic_one_client");
    auto* figures = view().find<FigureCard>("Picture1");
    const double unit = figures->fontMetrics().height() / 4.0;
    const QPoint share(int(131 * unit) + 6, int(8 * unit) + 6);
    QHelpEvent asked(QEvent::ToolTip, share, figures->mapToGlobal(share));
    QApplication::sendEvent(figures, &asked);
    EXPECT_EQ(QToolTip::text(), u"占总差额利润比率");
    QHelpEvent beside(QEvent::ToolTip, {2, 2}, figures->mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(figures, &beside);
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text().isEmpty(); }));
}

TEST_F(ClientDrill, ACustomerWithoutLinesOpensNothingAndLeavesTheWorkTableEmpty) {
    fillTwoProducts();
    books.addClient("4", "单位4");
    start();
    chooseClient("1");
    drive->choose("statistic_one_client");
    drive->choose("management_client");
    chooseClient("4");
    for (const char* command : {"statistic_one_client", "show_one_client1"}) {
        drive->choose(QString::fromUtf8(command));
        EXPECT_EQ(inFront(), u"dataInputFm1") << command;
        EXPECT_EQ(books.stored("SELECT count(*) FROM tempTable2"), u"0");
        EXPECT_FALSE(status().isEmpty());
    }
}

TEST_F(ClientDrill, OnAnEmptyShopTheCommandsOpenNothing) {
    start();
    for (const char* command :
         {"show_one_client1", "show_one_client2", "statistic_one_client", "show_sales"}) {
        main->host().say({});
        drive->choose(QString::fromUtf8(command));
        EXPECT_EQ(inFront(), u"dataInputFm1") << command;
        EXPECT_FALSE(status().isEmpty()) << command;
    }
}

TEST_F(ClientDrill, ASearchLeftInTheRegisterNamesTheCustomerAndGoes) {
    begin();
    session().clientTable->setFilter("客户编号 = '2'");
    drive->choose("show_one_client1");
    EXPECT_EQ(column("客户编号"), u"2 2");
    EXPECT_EQ(session().clientTable->Filter(), u"");
    EXPECT_EQ(session().clientTable->Fields("客户编号").text(), u"2") << "the cursor stays on its row";
}

TEST_F(ClientDrill, ASearchWithoutHitsInTheRegisterMeansNobody) {
    begin();
    session().clientTable->setFilter("客户编号 = 'nobody'");
    drive->choose("show_one_client1");
    EXPECT_EQ(inFront(), u"dataInputFm1");
    EXPECT_EQ(session().clientTable->Filter(), u"");
}

TEST_F(ClientDrill, WithAnotherViewInFrontItIsTheCustomerInHand) {
    begin();
    chooseClient("2");
    drive->choose("show_sales");
    drive->choose("show_one_client1");
    EXPECT_EQ(column("客户编号"), u"2 2");
    EXPECT_EQ(of("Label11"), u"单位2");
}

TEST_F(ClientDrill, EachCustomerViewNamesTheCustomerOfItsOwnRow) {
    begin();
    drive->choose("data_statistic1");
    chooseClient("3");
    drive->choose("show_one_client1");
    EXPECT_EQ(of("Label11"), u"单位3");
    drive->choose("show_whole_client");
    chooseClient("2");
    view().click("Command8");
    EXPECT_EQ(of("Label11"), u"单位2");
    drive->choose("statistic_achievement");
    chooseRow("业务员编号", "乙");
    drive->choose("statistic_achievement2");
    drive->choose("statistic_one_client");
    EXPECT_EQ(card().first(), u"3号客户");
    drive->choose("show_sales");
    chooseRow("产品编号", "p2");
    view().click("Command4");
    drive->choose("show_one_client1");
    EXPECT_EQ(of("Label11"), u"单位1") << "a buyer of the product";
}

TEST_F(ClientDrill, OfAPeriodTheLinesAndTheTotalsAreThePeriods) {
    begin();
    drive->choose("data_statistic1");
    choosePeriod("2004");
    chooseClient("1");
    drive->choose("show_one_client1");
    EXPECT_EQ(column("订单号"), u"9002 9002");
    EXPECT_EQ(shares(), u"50 55.55% 30 55.55% 6 60%");
    EXPECT_TRUE(print("showprint_rs6").contains("合计金额：50"));
}

TEST_F(ClientDrill, OfACutOfTheWholeTheLinesAreAllAndOfAPeriodsCutThePeriods) {
    begin();
    drive->choose("data_statistic1");
    choosePeriod("2004");
    drive->click("Toolbar1(4)");
    cutByTurnover("50");
    drive->choose("statistic_one_client");
    EXPECT_EQ(column("订单号"), u"9001 9002 9002") << "a period of an hour ago is not meant";
    EXPECT_EQ(session().showSource, ShowSource::BestClients);
    drive->choose("data_statistic1");
    drive->click("Toolbar1(4)");
    choosePeriod("2004");
    cutByTurnover("50");
    drive->choose("statistic_one_client");
    EXPECT_EQ(column("订单号"), u"9002 9002");
    EXPECT_EQ(of("Label3"), u"55.55%") << "beside the totals of the period";
}

TEST_F(ClientDrill, TheStatisticIsDrawnInThreeRowsAndTakesTheDatesOfTheEvaluation) {
    begin();
    drive->choose("data_statistic1");
    choosePeriod("2004");
    drive->click("Toolbar1(4)");
    chooseClient("1");
    drive->choose("statistic_one_client");
    EXPECT_EQ(inFront(), u"tempTable3Fm3");
    EXPECT_EQ(main->host().active()->caption(), u"购物统计") << "set when the view is shown";
    EXPECT_EQ(card(), (QStringList{"1号客户", "2003-6-1/2004-5-21", "购物分析统计", "消费合计：", "70",
                                   "63.63%", "差额利润：", "42", "63.63%", "购买数：", "8", "66.66%"}));
    EXPECT_EQ(period(), u"2003-6-1/2004-5-21");
}

TEST_F(ClientDrill, WithoutAnEvaluationTheDatesAreThoseOfAllLinesOrThePeriodsWords) {
    begin();
    session().buyList->setFilter("客户编号 = 'nobody'");
    chooseClient("1");
    drive->choose("statistic_one_client");
    EXPECT_EQ(period(), u"2003-6-1/2004-5-21");
    EXPECT_EQ(main->findChild<View*>("statisticFm1"), nullptr) << "nothing is loaded for it";
    drive->choose("show_whole_client");
    choosePeriod("2004");
    drive->choose("statistic_one_client");
    EXPECT_EQ(period(), u"2004/");
    EXPECT_EQ(column("订单号"), u"9002 9002");
}

TEST_F(ClientDrill, TheStatisticPrintsWithItsOwnDatesAndSums) {
    begin();
    chooseClient("1");
    drive->choose("statistic_one_client");
    session().periodDate1 = "1999-1-1"; // of a window that was open beside
    const QStringList page = print("print_rs_single");
    EXPECT_TRUE(page.contains("时间：2003-6-1/2004-5-21")) << page.join(u' ').toStdString();
    for (const char* text : {"购物清单", "消费合计：70", "差额利润：42", "购物数：8", "纸", "笔"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text;
}

TEST_F(ClientDrill, AShareOfAHundredLeavesTheTextThatStood) {
    fill();
    books.changeBehind("DELETE FROM buyList WHERE 客户编号 <> '1'");
    start();
    chooseClient("1");
    drive->choose("show_one_client1");
    EXPECT_EQ(labels({"Label2", "Label3"}), u"60 ") << "blank at first";
}

TEST_F(ClientDrill, TheListIsSortedOnItsOwnCursorAndShowSourceStays) {
    begin();
    chooseClient("1");
    drive->choose("show_one_client1");
    const ShowSource before = session().showSource;
    drive->click("Toolbar1(6)");
    ASSERT_NE(window("orderFm1"), nullptr);
    EXPECT_EQ(session().orderCode, 6);
    EXPECT_EQ(session().showSource, before);
    Driver dialog(*window("orderFm1"));
    dialog.clickItem("List1", "实付");
    dialog.click("Command1");
    EXPECT_EQ(column("实付"), u"40 20 10");
    EXPECT_EQ(session().buyList->Sort().contains(u"实付"), false);
}

TEST_F(ClientDrill, ACommandThatFindsNothingLeavesTheViewInFrontItsSource) {
    fillTwoProducts();
    books.addClient("4", "单位4");
    start();
    chooseClient("4");
    drive->choose("show_sales");
    chooseBehindItsMenu("show_one_client1");
    EXPECT_EQ(inFront(), u"statisticFm2");
    EXPECT_EQ(session().showSource, ShowSource::Lines);
    EXPECT_FALSE(print("print_rs2").isEmpty());
}

TEST_F(ClientDrill, ASaleInBetweenIsInTheListWhenItIsAskedForAgain) {
    begin();
    chooseClient("1");
    drive->choose("show_one_client1");
    EXPECT_EQ(of("Label2"), u"70");
    sell("1", "3");
    drive->choose("show_one_client1");
    EXPECT_EQ(view().rows("DataGrid1"), 4);
    EXPECT_EQ(of("Label2"), u"100");
}

TEST_F(ClientDrill, ARowChosenInACustomerViewIsTheCustomerInHand) {
    begin();
    drive->choose("show_whole_client");
    chooseClient("2");
    drive->choose("show_sales");
    drive->choose("show_one_client1");
    EXPECT_EQ(of("Label11"), u"单位2");
    drive->choose("data_statistic1");
    view().click("Command1(3)");
    EXPECT_EQ(session().currentClientNum, u"3") << "by the move buttons too";
}

TEST_F(ClientDrill, WhileThePeriodDialogStandsOpenTheCustomerIsThatOfTheRowThatIsSeen) {
    begin();
    drive->choose("show_whole_client");
    choosePeriod("2004");
    drive->click("Toolbar1(2)");
    chooseClient("3");
    view().click("Command8");
    EXPECT_EQ(of("Label11"), u"单位3");
    EXPECT_EQ(column("订单号"), u"9005");
}

TEST_F(ClientDrill, AllCustomersAskedForBehindAPeriodAreTheWholeForTheirCommandsToo) {
    begin();
    drive->choose("show_whole_client");
    choosePeriod("2004");
    chooseBehindItsMenu("show_whole_client");
    chooseClient("1");
    view().click("Command8");
    EXPECT_EQ(column("订单号"), u"9001 9002 9002");
}

TEST_F(ClientDrill, AskedForBehindItsMenuTheSourceOfTheViewInFrontStays) {
    begin();
    drive->choose("show_whole_client");
    choosePeriod("2004");
    chooseClient("1");
    chooseBehindItsMenu("show_one_client1");
    EXPECT_EQ(column("订单号"), u"9002 9002");
    EXPECT_EQ(session().showSource, ShowSource::PeriodClients);
}

TEST_F(ClientDrill, ACustomerTakenByHisNumberAloneBearsHisOwnName) {
    begin();
    chooseClient("1");
    drive->choose("show_sales");
    session().currentClientNum = "2"; // as the maintenance of orders leaves it
    drive->choose("show_one_client1");
    EXPECT_EQ(labels({"Label11", "Label13"}), u"单位2 联系人2");
    const QStringList page = print("showprint_rs6");
    for (const char* text : {"客户编号：2", "联系人：联系人2", "单位：单位2"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text;
}

TEST_F(ClientDrill, WhatWasTypedIntoTheRegisterStaysWhereACommandFindsNothing) {
    fillTwoProducts();
    books.addClient("4", "单位4");
    start();
    view().type("Text2", "单位4");
    view().click("Command2");
    view().type("Text3(3)", "555");
    drive->choose("show_one_client1");
    EXPECT_EQ(view().text("Text3(3)"), u"555");
    prompts.expectMessage("请先看销售显示！");
    drive->choose("show_product_client");
    EXPECT_EQ(view().text("Text3(3)"), u"555");
    view().click("Command5");
    EXPECT_EQ(books.stored("SELECT 电话 FROM clientTable WHERE 客户编号 = '4'"), u"555");
}

TEST_F(ClientDrill, AnEmptyListReadsANought) {
    begin();
    drive->choose("show_one_client1");
    session().tempTable2->setFilter("客户编号 = 'nobody'");
    EXPECT_EQ(of("Text1"), u"0");
}

TEST_F(ClientDrill, TheEvaluationOpensTheStockStatistic) {
    begin();
    drive->choose("data_statistic1");
    chooseInMenu("库存统计");
    EXPECT_NE(window("statisticFm4"), nullptr);
}

} // namespace

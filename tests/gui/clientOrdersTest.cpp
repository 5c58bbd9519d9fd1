// From a customer down to his orders, on screen and on paper.
#include "support/drillShop.h"

namespace {

class ClientOrders : public DrillShop {};

TEST_F(ClientOrders, OrdersOfACustomerWithoutAnyAreToldAndNoSearchStaysOnTheLines) {
    fillTwoProducts();
    books.addClient("4", "单位4");
    start();
    chooseClient("4");
    session().buyList->setFilter("客户编号 = '1'");
    prompts.expectMessage("该客户无购物记录！");
    drive->choose("show_one_client2");
    EXPECT_EQ(window("order_Form_NumFm1"), nullptr);
    EXPECT_EQ(session().buyList->Filter(), u"");
    EXPECT_EQ(inFront(), u"dataInputFm1");
}

TEST_F(ClientOrders, AnOrderIsChosenAndShownWithItsSums) {
    begin();
    chooseClient("1");
    drive->choose("show_one_client2");
    Driver dialog(*window("order_Form_NumFm1"));
    EXPECT_EQ(dialog.entries("List1"), (QStringList{"9001", "9002"})) << "each once";
    EXPECT_EQ(dialog.find<QListWidget>("List1")->currentRow(), 0);
    confirmOrder("9002");
    EXPECT_EQ(window("order_Form_NumFm1"), nullptr);
    EXPECT_EQ(inFront(), u"tempTable2Fm22");
    EXPECT_EQ(session().activeViewName, u"tempTable2Fm22");
    EXPECT_EQ(main->host().active()->caption(), u"某客户订单购物清单");
    EXPECT_EQ(column("产品编号"), u"p1 p2");
    EXPECT_TRUE(hidden("流水号"));
    EXPECT_EQ(labels({"Label11", "Label13", "Label6", "Label2", "Label4"}), u"单位1 联系人1 9002 6 50");
}

TEST_F(ClientOrders, ConfirmingAtOnceTakesTheFirstOrder) {
    begin();
    chooseClient("2");
    drive->choose("show_one_client2");
    confirmOrder();
    EXPECT_EQ(column("订单号"), u"9003");
    EXPECT_EQ(labels({"Label2", "Label4"}), u"1 10");
}

TEST_F(ClientOrders, LeavingTheOrderClearsItsFilterFromTheLines) {
    begin();
    drive->choose("show_one_client2");
    confirmOrder();
    EXPECT_NE(session().buyList->Filter(), u"");
    drive->choose("show_whole_client");
    EXPECT_EQ(session().buyList->Filter(), u"");
}

TEST_F(ClientOrders, TheDialogLeftPutsBackTheFilterThatStood) {
    begin();
    chooseClient("1");
    drive->choose("show_one_client2");
    confirmOrder("9002");
    const QString order = session().buyList->Filter();
    drive->choose("show_one_client2");
    EXPECT_NE(session().buyList->Filter(), order);
    Driver(*window("order_Form_NumFm1")).click("Command2");
    EXPECT_EQ(session().buyList->Filter(), order);
    EXPECT_EQ(column("产品编号"), u"p1 p2") << "the order in front is whole again";
}

TEST_F(ClientOrders, AnotherOrderIsShownInTheSameView) {
    begin();
    chooseClient("1");
    drive->choose("show_one_client2");
    confirmOrder("9002");
    drive->choose("show_one_client2");
    confirmOrder("9001");
    EXPECT_EQ(column("订单号"), u"9001");
    EXPECT_EQ(labels({"Label6", "Label2", "Label4"}), u"9001 2 20");
    EXPECT_TRUE(print("showprint_rs22").contains("时间：2003-6-1"));
}

TEST_F(ClientOrders, TheOrderPrintsUnderItsNumberWithItsDay) {
    begin();
    chooseClient("1");
    drive->choose("show_one_client2");
    confirmOrder("9002");
    session().periodDate1 = "1999-1-1"; // of a window that was open beside
    session().currentOrderNum = "9001";
    const QStringList page = print("showprint_rs22");
    for (const char* text :
         {"订单号：9002", "时间：2004-3-5", "单位名称：单位1", "合计件数：6", "合计金额：50"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text << page.join(u' ').toStdString();
}

TEST_F(ClientOrders, TheOrderIsSortedAsTheLinesAre) {
    begin();
    chooseClient("1");
    drive->choose("show_one_client2");
    confirmOrder("9002");
    const ShowSource before = session().showSource;
    drive->click("Toolbar1(5)");
    EXPECT_EQ(session().orderCode, 2);
    EXPECT_EQ(session().showSource, before);
    Driver dialog(*window("orderFm1"));
    dialog.clickItem("List1", "实付");
    dialog.click("Command1");
    EXPECT_EQ(column("实付"), u"10 40");
}

TEST_F(ClientOrders, InAPeriodTheOrdersAreThePeriodsAndTheLinesAreWhole) {
    begin();
    drive->choose("show_whole_client");
    choosePeriod("2004");
    chooseClient("1");
    view().click("Command9");
    EXPECT_EQ(Driver(*window("order_Form_NumFm1")).entries("List1"), QStringList{"9002"});
    confirmOrder();
    EXPECT_EQ(column("产品编号"), u"p1 p2");
    EXPECT_EQ(labels({"Label11", "Label13", "Label2", "Label4"}), u"单位1 联系人1 6 50");
}

TEST_F(ClientOrders, TheContactIsThatOfTheCustomerWhereverTheRegisterStands) {
    begin();
    drive->choose("data_statistic1");
    chooseClient("3");
    session().clientTable->MoveFirst();
    drive->choose("data_statistic1");
    chooseClient("2");
    drive->choose("show_one_client2");
    confirmOrder();
    EXPECT_EQ(of("Label13"), u"联系人2");
}

TEST_F(ClientOrders, ThePurchaseRecordIsPrintedFromTheListOfOrders) {
    begin();
    chooseClient("1");
    drive->choose("show_one_client2");
    chooseInMenu(*window("order_Form_NumFm1"), "打印购物记录");
    ASSERT_NE(window("print_rs_total"), nullptr);
    EXPECT_FALSE(window("order_Form_NumFm1")->isEnabled()) << "one report at a time";
    const QStringList page = this->page("print_rs_total");
    for (const char* text : {"单位1购物记录", "客户编号：1", "时间：2003-6-1/2004-3-5", "合计金额：70",
                             "合计数：8", "9001", "9002"})
        EXPECT_TRUE(page.contains(QString::fromUtf8(text))) << text << page.join(u' ').toStdString();
    EXPECT_FALSE(page.contains("9003")) << "another customer's order";
    EXPECT_TRUE(window("order_Form_NumFm1")->isEnabled());
}

TEST_F(ClientOrders, TheRegisterPrintsAnOrderAndLeavesNoFilterBehind) {
    begin();
    chooseClient("1");
    chooseInMenu("打印订单明细");
    confirmOrder("9002");
    EXPECT_EQ(inFront(), u"dataInputFm1");
    EXPECT_FALSE(main->isEnabled());
    const QStringList page = this->page("showprint_rs22");
    EXPECT_TRUE(page.contains("订单号：9002")) << page.join(u' ').toStdString();
    EXPECT_TRUE(page.contains("合计金额：50"));
    EXPECT_TRUE(main->isEnabled());
    EXPECT_EQ(session().buyList->Filter(), u"");
    drive->choose("show_one_client2");
    confirmOrder("9001");
    EXPECT_EQ(inFront(), u"tempTable2Fm22") << "the next choice is for the view again";
}

TEST_F(ClientOrders, TheRegisterTellsOfACustomerWithoutOrdersToPrint) {
    fillTwoProducts();
    books.addClient("4", "单位4");
    start();
    chooseClient("4");
    prompts.expectMessage("该客户无购物记录！");
    chooseInMenu("打印订单明细");
}

TEST_F(ClientOrders, WhileAnOrderIsChosenTheMainWindowTakesNoInputAndTheOrdersAreThoseOfTheirCustomer) {
    begin();
    chooseClient("1");
    drive->choose("show_one_client2");
    EXPECT_FALSE(main->isEnabled());
    session().currentClientNum = "2"; // whatever a window beside has done
    confirmOrder("9002");
    EXPECT_TRUE(main->isEnabled());
    EXPECT_EQ(column("产品编号"), u"p1 p2");
    EXPECT_EQ(labels({"Label11", "Label13", "Label6"}), u"单位1 联系人1 9002");
    drive->choose("management_client");
    chooseClient("1");
    chooseInMenu("打印订单明细");
    session().currentClientNum = "2";
    confirmOrder("9001");
    EXPECT_TRUE(page("showprint_rs22").contains("单位名称：单位1"));
    EXPECT_TRUE(main->isEnabled());
}

TEST_F(ClientOrders, WithoutAnOrderInThePeriodThereIsNothingToConfirm) {
    begin();
    session().currentOrderNum = "9005";
    drive->choose("show_whole_client");
    choosePeriod("2003");
    drive->choose("management_client");
    chooseClient("3");
    session().clientShowSource = ShowSource::PeriodClients; // as the print of a period leaves it
    drive->choose("show_one_client2");
    Driver dialog(*window("order_Form_NumFm1"));
    EXPECT_TRUE(dialog.entries("List1").isEmpty());
    EXPECT_EQ(dialog.text("emptyHint"), u"该时间段内没有订单。");
    dialog.click("Command1");
    EXPECT_NE(window("order_Form_NumFm1"), nullptr);
    EXPECT_EQ(inFront(), u"dataInputFm1");
}

TEST_F(ClientOrders, AnOrderPrintsItsOwnLinesWhateverAWindowBesideHasFiltered) {
    begin();
    chooseClient("1");
    drive->choose("show_one_client2");
    confirmOrder("9002");
    session().buyList->setFilter("客户编号 = '1'");
    EXPECT_EQ(of("Label6"), u"9002");
    const QStringList texts = print("showprint_rs22");
    EXPECT_TRUE(texts.contains("订单号：9002"));
    EXPECT_FALSE(texts.contains("2003-6-1")) << "a line of the other order";
}

} // namespace

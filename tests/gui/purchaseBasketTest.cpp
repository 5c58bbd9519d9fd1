// The basket, its settlement and the way out.
#include "support/purchaseWindow.h"

#include <QLineEdit>

namespace {

class PurchaseBasket : public Purchase {};

TEST_F(PurchaseBasket, BrowsingShowsTheBasketWithDateNumberAndTotals) {
    open();
    put(0, "4");
    buy->click("Command9");
    EXPECT_TRUE(buy->find<QWidget>("Frame3")->isVisible());
    EXPECT_EQ(buy->text("Label9"), u"4");
    EXPECT_EQ(buy->text("Label11"), u"20");
    EXPECT_EQ(buy->text("Label17"), u"2004-11-21");
    EXPECT_EQ(buy->text("Label19"), u"1001");
    EXPECT_EQ(buy->text("Text2"), u"1/1");
    buy->click("Command11");
    EXPECT_FALSE(buy->find<QWidget>("Frame3")->isVisible());
    EXPECT_EQ(line(2), u"p1") << "the current basket row stands in the line boxes";
}

TEST_F(PurchaseBasket, ARowChosenInTheBasketIsEditedInTheLine) {
    open();
    put(0, "4");
    put(1, "1");
    buy->click("Command9");
    buy->click("Command3(0)");
    EXPECT_EQ(buy->text("Text2"), u"1/2");
    buy->clickCell("DataGrid2", 1, "品名");
    EXPECT_EQ(line(2), u"p2");
    buy->clickCell("DataGrid2", 0, "品名");
    buy->click("Command11");
    type(10, "1");
    confirm();
    EXPECT_EQ(basket(), u"p1|1.0|100|5.0;p2|1.0|90|27.0");
}

TEST_F(PurchaseBasket, ALineTakenUpAgainIsReckonedWithItsOwnCost) {
    open();
    put(0, "4");
    choose(1); // of another cost
    buy->click("Command9");
    buy->clickCell("DataGrid2", 0, "品名");
    buy->click("Command11");
    type(10, "1");
    confirm();
    EXPECT_EQ(books.stored("SELECT 成本, 差额利润 FROM buyList2"), u"2.0|3.0");
}

TEST_F(PurchaseBasket, AnEditIsCheckedUnderAProductSearchWithoutHits) {
    open();
    put(1, "2");
    buy->type("Text3", "没有这个");
    buy->click("Command5");
    EXPECT_EQ(buy->rows("DataGrid1"), 0);
    buy->click("Command9");
    prompts.expectMessage("该产品订购数量超出现有库存数，现订购数量为现有库存数！");
    buy->editCell("DataGrid2", 0, "数量", "6");
    EXPECT_EQ(buy->cell("DataGrid2", 0, "数量"), u"2");
    EXPECT_EQ(buy->rows("DataGrid1"), 3);
}

TEST_F(PurchaseBasket, AnEditInTheBasketGridIsPendingUntilSaved) {
    open();
    put(1, "2");
    buy->click("Command9");
    buy->editCell("DataGrid2", 0, "数量", "3");
    EXPECT_EQ(buy->cell("DataGrid2", 0, "实付"), u"81");
    EXPECT_EQ(books.stored("SELECT 数量 FROM buyList2"), u"2.0");
    buy->click("Command12");
    EXPECT_EQ(basket(), u"p2|3.0|90|81.0");
    EXPECT_EQ(buy->text("Label9"), u"3");
    EXPECT_EQ(buy->text("Label13"), u"3");
    EXPECT_EQ(buy->text("Label15"), u"81");
}

TEST_F(PurchaseBasket, AnEditBeyondStoredPlusAvailableIsPutBack) {
    open();
    put(1, "2");
    buy->click("Command9");
    buy->editCell("DataGrid2", 0, "数量", "5");
    EXPECT_EQ(buy->cell("DataGrid2", 0, "数量"), u"5") << "3 in stock and 2 of the row itself";
    prompts.expectMessage("该产品订购数量超出现有库存数，现订购数量为现有库存数！");
    buy->editCell("DataGrid2", 0, "数量", "6");
    EXPECT_EQ(buy->cell("DataGrid2", 0, "数量"), u"2");
    EXPECT_EQ(buy->cell("DataGrid2", 0, "合计"), u"60");
}

TEST_F(PurchaseBasket, AnEditThatItsColumnRefusesKeepsTheOldValue) {
    open();
    put(1, "2");
    buy->click("Command9");
    buy->editCell("DataGrid2", 0, "数量", "abc");
    EXPECT_EQ(buy->cell("DataGrid2", 0, "数量"), u"2");
    buy->editCell("DataGrid2", 0, "日期", "2004-2-30");
    EXPECT_EQ(buy->cell("DataGrid2", 0, "日期"), u"2004-11-21");
}

TEST_F(PurchaseBasket, DeleteARowAndClear) {
    open();
    put(0, "4");
    put(1, "1");
    buy->click("Command9");
    prompts.expectConfirm("确认要删除该记录吗？", false);
    buy->click("Command7");
    EXPECT_EQ(buy->rows("DataGrid2"), 2);
    prompts.expectConfirm("确认要删除该记录吗？", true);
    buy->click("Command7");
    EXPECT_EQ(basket(), u"p1|4.0|100|20.0");
    EXPECT_EQ(buy->text("Label9"), u"4");
    EXPECT_EQ(left(1), u"3") << "the deleted row's figure goes";
    EXPECT_EQ(left(0), u"6");
    buy->click("Command8");
    EXPECT_EQ(basket(), u"");
    EXPECT_EQ(buy->text("Label9"), u"0");
    EXPECT_EQ(left(0), u"10");
    buy->click("Command7");
}

TEST_F(PurchaseBasket, TheRoadOfOneSaleThroughTheWindow) {
    open();
    put(0, "4");
    choose(1);
    type(10, "2");
    type(12, "90");
    confirm();
    prompts.expectConfirm("购买总数量： 6\n总金额：74\n确认结算吗？", false);
    buy->click("Command1");
    EXPECT_EQ(books.stored("SELECT count(*) FROM buyList"), u"0");
    prompts.expectConfirm("购买总数量： 6\n总金额：74\n确认结算吗？", true);
    buy->click("Command1");
    EXPECT_EQ(books.stored("SELECT 订单号, 客户编号, 产品编号, 日期, 单价, 数量, 合计, 折扣, 实付, 成本, "
                           "差额利润 FROM buyList ORDER BY rowid"),
              u"1001|7|p1|2004-11-21|5.0|4.0|20.0|100|20.0|2.0|12.0;1001|7|p2|2004-11-21|30.0|2.0|60.0|90|54."
              u"0|20.0|14.0");
    EXPECT_EQ(books.stored("SELECT 产品编号, 数量 FROM productTable ORDER BY rowid"),
              u"p1|6.0;p2|1.0;p3|0.0");
    EXPECT_EQ(books.stored("SELECT 消费合计, 差额利润, 购买数, 差额利润率 FROM clientTable"),
              u"74.0|26.0|6.0|35.13%");
    EXPECT_EQ(books.stored("SELECT * FROM counterCode"), u"1001.0|1002.0|1001.0");
    EXPECT_EQ(basket(), u"");
    EXPECT_EQ(left(0), u"6");
    EXPECT_EQ(buy->text("Text1"), u"2/3");
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = '7'") << "the filter on the buyer stays";
    EXPECT_EQ(buy->text("Label12") + buy->text("Label15") + buy->text("Text8"), u"00");
    choose(0);
    EXPECT_EQ(line(0), u"1002") << "the next order number";
    buy->click("Command13");
    buy->click("Command4");
    EXPECT_EQ(drive->text("Text3(13)"), u"74");
    EXPECT_EQ(drive->text("Text3(14)"), u"6");
}

TEST_F(PurchaseBasket, ABasketOfThirtyLinesBesideEarlierOnesThroughTheWindow) {
    for (int i = 1; i <= 30; ++i)
        books.addProduct(QStringLiteral("q%1").arg(i), QStringLiteral("货%1").arg(i), 100, 0.25 * i, 0.5 * i);
    books.addLine("9", "7", "p1", "2003-01-05", 2, 10, 2);
    open();
    for (int i = 0; i < 30; ++i)
        put(3 + i, "2");
    // Paid: 2 * 0.5 * (1 + ... + 30) = 465, the margin half of it; with the earlier line 475, 238.5 and 62
    // pieces.
    prompts.expectConfirm("购买总数量： 60\n总金额：465\n确认结算吗？", true);
    buy->click("Command1");
    EXPECT_EQ(books.stored("SELECT 消费合计, 差额利润, 购买数, 差额利润率 FROM clientTable"),
              u"475.0|238.5|62.0|50.21%");
    EXPECT_EQ(books.stored("SELECT count(*), sum(数量), sum(合计), sum(实付), sum(差额利润) FROM buyList "
                           "WHERE 订单号 = '1001'"),
              u"30|60.0|465.0|465.0|232.5");
    EXPECT_EQ(books.stored("SELECT count(*) FROM productTable WHERE 产品编号 LIKE 'q%' AND 数量 <> 98"),
              u"0");
    EXPECT_EQ(books.stored("SELECT counterNum2 FROM counterCode"), u"1002.0");
    EXPECT_EQ(basket(), u"");
}

TEST_F(PurchaseBasket, SettlingAnEmptyBasketDoesNothing) {
    open();
    buy->click("Command1");
}

TEST_F(PurchaseBasket, TheWayOutAsksWhileTheBasketIsFull) {
    open();
    put(0, "1");
    prompts.expectAsk("选购的产品还没有结帐，结帐吗？", true);
    prompts.expectConfirm("购买总数量： 1\n总金额：5\n确认结算吗？", true);
    buy->click("Command4");
    ASSERT_NE(window("buyFm1"), nullptr) << "settling does not close";
    EXPECT_EQ(books.stored("SELECT count(*) FROM buyList"), u"1");
    put(0, "1");
    prompts.expectAsk("选购的产品还没有结帐，结帐吗？", false);
    window("buyFm1")->close();
    EXPECT_EQ(window("buyFm1"), nullptr);
    EXPECT_TRUE(main->isVisible());
    EXPECT_EQ(books.stored("SELECT count(*) FROM buyList"), u"1");
}

TEST_F(PurchaseBasket, UnsavedChangesOfTheRegisterOutliveThePurchase) {
    start();
    drive->type("Text3(4)", "新传真");
    drive->click("Command7");
    buy = std::make_unique<Driver>(*window("buyFm1"));
    put(0, "2");
    prompts.expectConfirm("购买总数量： 2\n总金额：10\n确认结算吗？", true);
    buy->click("Command1");
    buy->click("Command4");
    EXPECT_EQ(drive->text("Text3(4)"), u"新传真");
    EXPECT_EQ(drive->text("Text3(13)"), u"10");
    EXPECT_EQ(drive->text("Text1"), u"1/1");
}

TEST_F(PurchaseBasket, OpensAfterItsBasketTableWasDropped) {
    start();
    runStatement(session().cn, "Drop Table buyList2");
    session().saleShowSource = ShowSource(9);
    drive->click("Command7");
    buy = std::make_unique<Driver>(*window("buyFm1"));
    put(0, "1");
    EXPECT_EQ(basket(), u"p1|1.0|100|5.0");
    EXPECT_EQ(session().saleShowSource, ShowSource(2));
    prompts.expectAsk("选购的产品还没有结帐，结帐吗？", false);
    buy->click("Command4");
}

TEST_F(PurchaseBasket, AShopWithoutProductsOpensAndTakesNothingUp) {
    books.execute("DELETE FROM productTable");
    open();
    EXPECT_EQ(buy->text("Text1"), u"0/0");
    buy->click("Command6(2)");
    buy->click("Command1");
    prompts.expectMessage("请选择产品！");
    buy->click("Command2");
}

TEST_F(PurchaseBasket, AWayOutWhoseQuestionIsLeftUnansweredLeavesWindowAndBasketAsTheyAre) {
    open();
    put(0, "4");
    for (const bool byCloseBox : {false, true}) {
        prompts.expectLeft("选购的产品还没有结帐，结帐吗？");
        if (byCloseBox)
            EXPECT_FALSE(window("buyFm1")->close());
        else
            buy->click("Command4");
        ASSERT_NE(window("buyFm1"), nullptr);
        EXPECT_TRUE(window("buyFm1")->isVisible());
        EXPECT_FALSE(main->isVisible());
        EXPECT_EQ(basket(), u"p1|4.0|100|20.0");
    }
}

TEST_F(PurchaseBasket, EditsThatAreSavedAreCountedAtTheFootOfTheWindow) {
    open();
    put(0, "4");
    put(1, "1");
    buy->click("Command9");
    buy->editCell("DataGrid2", 0, "数量", "3");
    buy->editCell("DataGrid2", 1, "折扣", "80");
    buy->click("Command12");
    EXPECT_EQ(buy->text("noticeText"), u"已保存 2 条");
    buy->click("Command12");
    EXPECT_EQ(buy->text("noticeText"), u"没有修改");
}

TEST_F(PurchaseBasket, ARefusedLineLeadsToItsBox) {
    open();
    choose(0);
    type(10, "2");
    type(3, "2004-2-30");
    prompts.expectMessage("日期格式错误！");
    buy->click("Command2");
    EXPECT_EQ(window("buyFm1")->focusWidget(), buy->find<QLineEdit>("Text4(3)"));
    EXPECT_EQ(buy->find<QLineEdit>("Text4(3)")->selectedText(), u"2004-2-30");
}

} // namespace

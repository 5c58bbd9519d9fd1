// Taking up products and filling a line.
#include "controls/dataGrid.h"
#include "support/purchaseWindow.h"

#include <QLineEdit>
#include <QtTest/QTest>

namespace {

class PurchaseLine : public Purchase {};

TEST_F(PurchaseLine, OpensOnTheCustomerWithTheMainWindowHidden) {
    open();
    EXPECT_FALSE(main->isVisible());
    EXPECT_EQ(buy->text("Label6"), u"红木行");
    EXPECT_EQ(buy->text("Label8"), u"王平");
    EXPECT_EQ(buy->text("Text1"), u"1/3");
    for (const char* total : {"Label9", "Label11", "Label12", "Label13", "Label14", "Label15"})
        EXPECT_EQ(buy->text(total), u"0") << total;
    EXPECT_FALSE(buy->find<QWidget>("Frame3")->isVisible());
    EXPECT_EQ(line(0), u"");
    buy->click("Command4");
    EXPECT_EQ(window("buyFm1"), nullptr);
    EXPECT_TRUE(main->isVisible());
}

TEST_F(PurchaseLine, TheColumnsThatHideTheCost) {
    open();
    auto* grid = buy->find<DataGrid>("DataGrid1");
    for (int i = 0; i < grid->model()->columnCount(); ++i) {
        const QString name = grid->model()->headerData(i, Qt::Horizontal, Qt::DisplayRole).toString();
        EXPECT_EQ(grid->isColumnHidden(i), name == u"流水号" || name == u"成本") << name.toStdString();
    }
}

TEST_F(PurchaseLine, TakingUpAProductFillsTheLineAndFocusesTheQuantity) {
    books.addLine("1", "7", "p2", "2003-01-01", 4, 1, 1);
    open();
    choose(1);
    EXPECT_EQ(line(0), u"1001");
    EXPECT_EQ(line(1), u"7");
    EXPECT_EQ(line(2), u"p2");
    EXPECT_EQ(line(3), u"2004-11-21");
    EXPECT_EQ(line(8), u"30");
    EXPECT_EQ(line(10), u"0");
    EXPECT_EQ(line(12), u"90");
    EXPECT_EQ(buy->text("Text8"), u"4");
    EXPECT_EQ(window("buyFm1")->focusWidget()->objectName(), u"Text4(10)");
    type(10, "2");
    EXPECT_EQ(line(11), u"60");
    EXPECT_EQ(line(13), u"54");
    EXPECT_EQ(left(1), u"1") << "shown, not stored";
    EXPECT_EQ(books.stored("SELECT 数量 FROM productTable WHERE 产品编号 = 'p2'"), u"3.0");
}

TEST_F(PurchaseLine, MovingByTheButtonsTakesUpTheProduct) {
    open();
    buy->click("Command6(2)");
    EXPECT_EQ(line(2), u"p2");
    EXPECT_EQ(buy->text("Text1"), u"2/3");
    prompts.expectMessage("该产品已售完！");
    buy->click("Command6(3)");
    EXPECT_EQ(line(2), u"p2") << "the line stays as it was";
    EXPECT_EQ(buy->text("Text1"), u"3/3");
}

TEST_F(PurchaseLine, ASoldOutProductIsRefusedEvenIfItIsInTheBasket) {
    open();
    put(1, "3");
    books.changeBehind("UPDATE productTable SET 数量 = 0 WHERE 产品编号 = 'p2'");
    buy->click("Command10");
    prompts.expectMessage("该产品已售完！");
    choose(1);
}

TEST_F(PurchaseLine, MoreThanTheStockIsRefusedAndTheQuantityGoesToZero) {
    open();
    choose(1);
    prompts.expectMessage("超出库存数，现有库存数3", "库存提示");
    type(10, "4");
    EXPECT_EQ(line(10), u"0");
    EXPECT_EQ(line(11), u"0");
    EXPECT_EQ(left(1), u"3");
    type(10, "3");
    EXPECT_EQ(line(11), u"90");
    EXPECT_EQ(left(1), u"0");
}

TEST_F(PurchaseLine, AbsurdQuantitiesMeetTheStockMessage) {
    open();
    choose(0);
    for (const char* text : {"1e308", "1e999", "10.01"}) {
        prompts.expectMessage("超出库存数，现有库存数10", "库存提示");
        buy->find<QLineEdit>("Text4(10)")->setText(text);
        EXPECT_EQ(line(10), u"0");
    }
    type(10, "-3");
    EXPECT_EQ(line(11), u"-15");
    EXPECT_EQ(left(0), u"13");
}

TEST_F(PurchaseLine, AProductWithoutStockLeftSaysSo) {
    open();
    choose(0);
    books.changeBehind("UPDATE productTable SET 数量 = 0");
    prompts.expectMessage("该产品已无库存！");
    type(10, "1");
}

TEST_F(PurchaseLine, LettersInTheQuantityAreRefusedAtConfirmation) {
    open();
    choose(0);
    type(10, "abc");
    prompts.expectMessage("请输入数量！");
    buy->click("Command2");
    type(10, "");
    prompts.expectMessage("请输入数量！");
    buy->click("Command2");
    EXPECT_EQ(basket(), u"");
}

TEST_F(PurchaseLine, ConfirmWithoutAProductAndWithEmptyBoxes) {
    open();
    prompts.expectMessage("请选择产品！");
    buy->click("Command2");
    choose(0);
    type(4, "");
    prompts.expectMessage("请输入品名！");
    buy->click("Command2");
    type(4, "纸");
    type(3, "2004-2-30");
    prompts.expectMessage("日期格式错误！");
    buy->click("Command2");
}

TEST_F(PurchaseLine, ALineThatAColumnRefusesIsDroppedAndTheReasonShown) {
    open();
    choose(0);
    type(10, "1");
    type(3, "2004-1-5 8:30");
    buy->click("Command2");
    EXPECT_EQ(basket(), u"");
    EXPECT_FALSE(buy->text("lineHint").isEmpty());
    EXPECT_EQ(line(10), u"1") << "nothing the user typed is lost";
    type(3, "2004-1-5");
    confirm();
    EXPECT_EQ(basket(), u"p1|1.0|100|5.0");
}

TEST_F(PurchaseLine, ConfirmStoresTheLineShowsTheTotalsAndEmptiesTheBoxes) {
    open();
    put(0, "4");
    EXPECT_EQ(basket(), u"p1|4.0|100|20.0");
    EXPECT_EQ(line(2), u"");
    EXPECT_EQ(left(0), u"6") << "the figure stays after confirmation";
    put(1, "2");
    EXPECT_EQ(buy->text("Label12"), u"6");
    EXPECT_EQ(buy->text("Label14"), u"74");
    prompts.expectMessage("请选择产品！");
    buy->click("Command2");
}

TEST_F(PurchaseLine, TheAccumulatedBoxAddsTheWholeBasketsQuantity) {
    books.addLine("1", "7", "p2", "2003-01-01", 4, 1, 1);
    open();
    put(0, "5");
    choose(1);
    type(10, "2");
    confirm();
    EXPECT_EQ(buy->text("Text8"), u"11") << "4 bought before, and 5 + 2 in the basket whatever the product";
}

TEST_F(PurchaseLine, ConfirmWithoutAChangeSaysItAndWritesNothing) {
    open();
    choose(0);
    confirm();
    EXPECT_EQ(basket(), u"");
    EXPECT_EQ(line(2), u"");
}

TEST_F(PurchaseLine, AQuantityOfZeroMakesALineWithoutAmounts) {
    open();
    choose(0);
    type(10, "5");
    type(10, "0");
    confirm();
    EXPECT_EQ(basket(), u"p1|0.0|100|0.0");
}

TEST_F(PurchaseLine, AProductInTheBasketIsShownAndChanged) {
    open();
    put(0, "4");
    prompts.expectMessage("已选购该产品！");
    choose(0);
    EXPECT_EQ(line(10), u"4");
    type(10, "6");
    confirm();
    EXPECT_EQ(basket(), u"p1|6.0|100|30.0");
}

TEST_F(PurchaseLine, DiscountBoxPutsA100ThatTheNextDigitReplaces) {
    open();
    choose(0);
    type(10, "2");
    auto* discount = buy->find<QLineEdit>("Text4(12)");
    type(12, "-5");
    EXPECT_EQ(discount->text(), u"100");
    EXPECT_EQ(discount->selectedText(), u"100");
    QTest::keyClick(discount, Qt::Key_8);
    EXPECT_EQ(discount->text(), u"8");
    QTest::keyClick(discount, Qt::Key_5);
    EXPECT_EQ(line(13), u"8.5");
    QTest::keyClick(discount, Qt::Key_0);
    EXPECT_EQ(discount->text(), u"100") << "850 is above 100";
    type(12, "87.5");
    EXPECT_EQ(line(13), u"8.75");
}

TEST_F(PurchaseLine, TheSmallButtonsStepByOneAndNeverBelowZero) {
    open();
    choose(0);
    buy->click("UpDown1(0)");
    buy->click("UpDown1(0)");
    EXPECT_EQ(line(10), u"2");
    EXPECT_EQ(line(13), u"10");
    buy->click("UpDown1(1)");
    buy->click("UpDown1(1)");
    buy->click("UpDown1(1)");
    EXPECT_EQ(line(10), u"0");
    type(12, "2");
    buy->click("UpDown2(1)");
    EXPECT_EQ(line(12), u"1");
    buy->click("UpDown2(1)");
    EXPECT_EQ(line(12), u"100") << "0 counts as full price";
    buy->click("UpDown2(0)");
    EXPECT_EQ(line(12), u"100");
}

TEST_F(PurchaseLine, CancelEmptiesTheLineLeavesMode2AndGivesTheStockFigureBack) {
    open();
    choose(0);
    type(10, "4");
    EXPECT_EQ(left(0), u"6");
    buy->click("Command13");
    EXPECT_EQ(left(0), u"10");
    EXPECT_EQ(line(2), u"");
    prompts.expectMessage("请输入订单号！");
    buy->click("Command2");
}

TEST_F(PurchaseLine, AnotherProductGivesTheUnconfirmedLineUp) {
    open();
    choose(0);
    type(10, "4");
    choose(1);
    EXPECT_EQ(left(0), u"10");
}

TEST_F(PurchaseLine, SearchAndShowAll) {
    open();
    buy->type("Text3", "硒");
    buy->click("Command5");
    EXPECT_EQ(buy->rows("DataGrid1"), 1);
    EXPECT_EQ(line(2), u"p2") << "a search takes its first product up";
    buy->click("Command10");
    EXPECT_EQ(buy->rows("DataGrid1"), 3);
    EXPECT_EQ(buy->text("Text1"), u"1/3");
    for (const char* text : {"'", "a%b", "x' Or '1"}) {
        buy->type("Text3", text);
        buy->click("Command5");
    }
    buy->type("Text3", "p1");
    buy->click("Command5");
    EXPECT_EQ(buy->rows("DataGrid1"), 1) << "the number is compared, and found inside the texts";
}

} // namespace

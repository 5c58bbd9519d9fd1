#include "controls/dataGrid.h"
#include "support/shopWindow.h"

#include <QSet>
#include <QTimer>

namespace {

class Orders : public ShopWindow {
protected:
    Orders() {
        books.addClient("7", "甲");
        books.addClient("8", "乙");
        books.addProduct("p1", "纸", 10, 2, 5);
        books.addProduct("p2", "笔", 3, 1, 4, "90");
        books.addLine("21", "7", "p1", "2004-01-05", 5, 5, 2);
        books.addLine("21", "7", "p2", "2004-01-05", 2, 2, 1);
        books.addLine("22", "8", "p1", "2004-01-06", 1, 1, 2);
    }
    void open() {
        start();
        drive->choose("maintain_order");
    }
    void choose(int row) { drive->clickCell("DataGrid2", row, "订单号"); }
    QString box(int index) { return drive->text(QStringLiteral("Text4(%1)").arg(index)); }
    void type(int index, const QString& text) { drive->type(QStringLiteral("Text4(%1)").arg(index), text); }
    QString sums() {
        return drive->text("Label5") + u'|' + drive->text("Label7") + u'|' + drive->text("Text3");
    }
    QString stock() { return books.stored("SELECT 数量 FROM productTable ORDER BY rowid"); }
    void expectTotals(const char* quantity, const char* paid) {
        prompts.expectMessage(QStringLiteral("总计购物数：%1\n总计金额数：%2")
                                  .arg(QString::fromUtf8(quantity), QString::fromUtf8(paid)));
    }
};

TEST_F(Orders, OpensWithItsOrdersAndEmptyLines) {
    open();
    EXPECT_EQ(main->host().active()->caption(), u"订单维护");
    EXPECT_EQ(drive->rows("DataGrid2"), 2);
    EXPECT_EQ(drive->rows("DataGrid1"), 0);
    EXPECT_EQ(drive->text("Text2") + u' ' + drive->text("Text5"), u"1/2 0/0");
    EXPECT_EQ(sums(), u"0|0|0");
    EXPECT_EQ(drive->text("Label3"), u"订单号");
    EXPECT_EQ(drive->find<QWidget>("Text1")->toolTip(), u"输入订单号");
    EXPECT_EQ(drive->find<QWidget>("Text3")->toolTip(), u"购买该产品总数");
    for (const char* column : {"流水号", "成本", "差额利润"}) {
        auto* grid = drive->find<DataGrid>("DataGrid1");
        EXPECT_TRUE(grid->isColumnHidden(grid->recordset()->fieldIndex(QString::fromUtf8(column)))) << column;
    }
    for (const char* button : {"Command2", "Command3", "Command4"})
        drive->click(QString::fromUtf8(button)); // nothing chosen: nothing asked
    for (int i = 2; i <= 7; ++i)
        EXPECT_FALSE(enabled(qPrintable(QStringLiteral("Toolbar1(%1)").arg(i))));
}

TEST_F(Orders, AnOrderClickedShowsItsLinesAndItsLastLineInTheBoxes) {
    open();
    choose(0);
    EXPECT_EQ(drive->text("Label3"), u"订单号： 21");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
    EXPECT_EQ(drive->text("Text5"), u"2/2");
    EXPECT_EQ(sums(), u"7|7|2");
    EXPECT_EQ(box(2) + box(10) + box(4), u"p22货");
}

TEST_F(Orders, ALineClickedIsShownWithTheFocusOnItsQuantity) {
    open();
    choose(0);
    drive->clickCell("DataGrid1", 0, "品名");
    EXPECT_EQ(box(2), u"p1");
    EXPECT_EQ(sums(), u"7|7|5");
    EXPECT_EQ(focused(), u"Text4(10)");
    drive->click("Command5(2)");
    EXPECT_EQ(box(2), u"p2") << "the boxes follow the row by any road";
    EXPECT_EQ(drive->text("Text5"), u"2/2");
    drive->click("Command1(3)");
    EXPECT_EQ(drive->text("Text2"), u"2/2");
    EXPECT_EQ(drive->text("Label3"), u"订单号： 21") << "moving in the orders chooses none";
}

TEST_F(Orders, ASearchFindsTheOrderAndLoadsNoLines) {
    open();
    drive->type("Text1", "22");
    drive->click("Command6");
    EXPECT_EQ(drive->text("Text2"), u"2/2");
    EXPECT_EQ(drive->rows("DataGrid1"), 0);
    drive->type("Text1", "9");
    prompts.expectMessage("无此订单号！");
    drive->click("Command6");
    EXPECT_EQ(drive->text("Text2"), u"2/2");
    drive->type("Text1", "it's");
    prompts.expectMessage("无此订单号！");
    drive->click("Command6");
    drive->type("Text1", "");
    drive->click("Command6");
}

TEST_F(Orders, QuantityAndDiscountRecomputeTheLine) {
    open();
    choose(0);
    drive->clickCell("DataGrid1", 0, "品名");
    type(10, "4");
    EXPECT_EQ(box(11) + u' ' + box(13), u"4 4");
    type(12, "50");
    EXPECT_EQ(box(13), u"2");
    type(12, "120");
    EXPECT_EQ(box(12), u"100");
    type(12, "-1");
    EXPECT_EQ(box(12), u"100");
    drive->click("UpDown1(0)");
    EXPECT_EQ(box(10), u"5");
    drive->click("UpDown2(1)");
    EXPECT_EQ(box(12), u"99");
    drive->click("UpDown2(0)");
    EXPECT_EQ(box(12), u"100");
}

TEST_F(Orders, AStepDownNeverGoesUnderZero) {
    open();
    choose(1);
    drive->click("UpDown1(1)");
    EXPECT_EQ(box(10), u"0");
    drive->click("UpDown1(1)");
    EXPECT_EQ(box(10), u"0");
}

TEST_F(Orders, AQuantityThatTheStockRefusesStaysWithTheOldAmounts) {
    open();
    choose(0);
    drive->clickCell("DataGrid1", 0, "品名");
    prompts.expectMessage("超出库存数，该产品现有库存10");
    type(10, "12"); // the 1 passes
    EXPECT_EQ(box(10), u"12");
    EXPECT_EQ(box(11), u"1");
    prompts.expectMessage("总计购物数：14\n总计金额数：3");
    drive->click("Command3");
    EXPECT_EQ(stock(), u"3.0;3.0") << "saved all the same";
}

TEST_F(Orders, SoldOutAndMissingProductsAreTold) {
    books.execute("UPDATE productTable SET 数量 = 0 WHERE 产品编号 = 'p1'");
    books.execute("DELETE FROM productTable WHERE 产品编号 = 'p2'");
    open();
    choose(0);
    prompts.expectMessage("库存中无此产品");
    type(10, "1");
    drive->clickCell("DataGrid1", 0, "品名");
    prompts.expectMessage("该产品已无库存！");
    type(10, "4");
    EXPECT_EQ(box(10), u"4");
}

TEST_F(Orders, ASaveCorrectsTheStockAndTellsTheTotals) {
    open();
    choose(0);
    drive->clickCell("DataGrid1", 0, "品名");
    type(10, "3");
    expectTotals("5", "5");
    drive->click("Command3");
    EXPECT_EQ(stock(), u"12.0;3.0");
    EXPECT_EQ(box(2), u"p2") << "on the last line";
    expectTotals("5", "5");
    drive->click("Command3");
    EXPECT_EQ(stock(), u"12.0;3.0") << "a second save never writes one line's boxes onto another";
    EXPECT_EQ(books.stored("SELECT 产品编号, 数量 FROM buyList ORDER BY rowid"), u"p1|3.0;p2|2.0;p1|1.0");
}

TEST_F(Orders, ARefusedDateIsShownNowhereAndSavingGoesOn) {
    open();
    choose(0);
    type(3, "2004-13-45");
    expectTotals("7", "7");
    drive->click("Command3");
    EXPECT_EQ(box(3), u"2004-1-5");
}

TEST_F(Orders, ALineIsDeletedAfterAQuestion) {
    open();
    choose(0);
    drive->clickCell("DataGrid1", 0, "品名");
    prompts.expectConfirm("确实要删除该记录吗？", false, "删除提示");
    drive->click("Command4");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
    type(10, "4");
    EXPECT_EQ(box(11), u"4") << "the boxes still recompute";
    prompts.expectConfirm("确实要删除该记录吗？", true, "删除提示");
    expectTotals("2", "2");
    drive->click("Command4");
    EXPECT_EQ(stock(), u"15.0;3.0");
    EXPECT_EQ(sums(), u"2|2|2");
    EXPECT_EQ(box(2), u"p2");
    EXPECT_EQ(session().currentClientNum, u"7");
}

TEST_F(Orders, TheLastLineTakesTheOrderAlong) {
    open();
    choose(1);
    prompts.expectConfirm("确实要删除该记录吗？", true, "删除提示");
    expectTotals("0", "0");
    drive->click("Command4");
    EXPECT_EQ(drive->rows("DataGrid2"), 1);
    EXPECT_EQ(drive->rows("DataGrid1"), 0);
    EXPECT_EQ(drive->text("Text3"), u"0");
    EXPECT_EQ(box(2), u"");
    EXPECT_EQ(drive->text("Text5"), u"0/0");
    drive->click("Command4");
}

TEST_F(Orders, AWholeOrderGoesWithoutAClosingMessage) {
    open();
    choose(0);
    prompts.expectConfirm("确实要删除该订单吗？", false, "删除提示");
    drive->click("Command2");
    prompts.expectConfirm("确实要删除该订单吗？", true, "删除提示");
    drive->click("Command2");
    EXPECT_EQ(drive->rows("DataGrid2"), 1);
    EXPECT_EQ(drive->rows("DataGrid1"), 0);
    EXPECT_EQ(stock(), u"15.0;5.0");
    EXPECT_EQ(sums(), u"0|0|0");
    EXPECT_EQ(box(2), u"");
}

TEST_F(Orders, AnotherOrderClickedWhileOneIsBeingDeletedIsNotChosen) {
    open();
    choose(0);
    prompts.expectConfirm("确实要删除该订单吗？", true, "删除提示");
    bool clicked = false;
    QTimer::singleShot(0, main.get(), [this, &clicked] {
        clicked = true;
        choose(1);
    });
    drive->click("Command2");
    EXPECT_TRUE(clicked) << "in the middle of it";
    EXPECT_EQ(books.stored("SELECT 订单号 FROM buyList"), u"22") << "only the order asked about is gone";
    EXPECT_EQ(stock(), u"15.0;5.0");
}

TEST_F(Orders, KeysGoFromBoxToBox) {
    open();
    choose(0);
    drive->key("Text4(10)", Qt::Key_Return);
    EXPECT_EQ(focused(), u"Text4(11)");
    drive->key("Text4(11)", Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(focused(), u"Text4(10)");
    drive->key("Text4(10)", Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(focused(), u"Text4(11)");
}

TEST_F(Orders, EachOpeningReadsTheBooksAfresh) {
    open();
    drive->choose("management_client");
    session().buyList->clearFilter();
    session().buyList->MoveLast();
    session().buyList->Delete();
    drive->choose("maintain_order");
    EXPECT_EQ(drive->rows("DataGrid2"), 1);
    EXPECT_EQ(session().buyList->Filter(), u"");
}

TEST_F(Orders, TheChosenOrderStandsWithItsCustomerItsDayAndItsAmount) {
    books.execute("UPDATE clientTable SET 联系人 = '王平' WHERE 客户编号 = '7'");
    open();
    EXPECT_EQ(drive->text("orderFacts"), u"");
    choose(0);
    EXPECT_EQ(drive->text("orderFacts"), u"　客户 7 甲 王平　2004-1-5　金额 7");
    EXPECT_GT(drive->find<QWidget>("Label3")->font().pointSizeF(), main->font().pointSizeF() * 1.3);
    choose(1);
    EXPECT_EQ(drive->text("orderFacts"), u"　客户 8 乙　2004-1-6　金额 1");
    EXPECT_EQ(session().clientTable->AbsolutePosition(), 1) << "the shared customers stay where they stand";
    books.changeBehind("DELETE FROM clientTable WHERE 客户编号 = '8'");
    choose(0);
    choose(1);
    EXPECT_EQ(drive->text("orderFacts"), u"　客户 8　2004-1-6　金额 1") << "a customer who is no more";
}

TEST_F(Orders, WhatStandsOfTheOrderFollowsItsLinesAndGoesWithThem) {
    open();
    choose(1);
    type(12, "50");
    expectTotals("1", "0.5");
    drive->click("Command3");
    EXPECT_EQ(drive->text("orderFacts"), u"　客户 8 乙　2004-1-6　金额 0.5");
    prompts.expectConfirm("确实要删除该订单吗？", true, "删除提示");
    drive->click("Command2");
    EXPECT_EQ(drive->text("orderFacts"), u"");
}

TEST_F(Orders, TheCommandsNameTheChosenOrderWhereTheListStandsOnAnotherOne) {
    open();
    const auto tips = [this] {
        QSet<QString> texts;
        for (const char* command : {"Command2", "Command3", "Command4"})
            texts << drive->find<QWidget>(QString::fromUtf8(command))->toolTip();
        return QStringList(texts.values()).join(u'|');
    };
    EXPECT_EQ(tips(), u"");
    choose(0);
    EXPECT_EQ(tips(), u"") << "both are one";
    drive->click("Command1(2)");
    EXPECT_EQ(tips(), u"对选中的订单 21，不是光标所在的订单");
    drive->click("Command1(1)");
    EXPECT_EQ(tips(), u"");
    drive->type("Text1", "22");
    drive->click("Command6");
    EXPECT_EQ(tips(), u"对选中的订单 21，不是光标所在的订单") << "a search chooses nothing";
    choose(1);
    EXPECT_EQ(tips(), u"");
    drive->click("Command1(0)");
    EXPECT_EQ(tips(), u"对选中的订单 22，不是光标所在的订单");
    prompts.expectConfirm("确实要删除该订单吗？", true, "删除提示");
    drive->click("Command2");
    EXPECT_EQ(tips(), u"") << "no order is chosen any more";
}

} // namespace

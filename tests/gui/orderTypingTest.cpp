// Figures typed into a finished order's line, held arrows, and the keys of its two grids.
#include "controls/dataGrid.h"
#include "support/shopWindow.h"

#include <QLineEdit>
#include <QTimer>
#include <QToolButton>
#include <QtTest/QTest>

namespace {

class OrderTyping : public ShopWindow {
protected:
    void SetUp() override {
        books.addClient("7", "甲");
        books.addProduct("p1", "纸", 10, 2, 5);
        books.addProduct("p2", "笔", 3, 1, 4, "90");
        books.addLine("21", "7", "p1", "2004-01-05", 5, 5, 2);
        books.addLine("21", "7", "p2", "2004-01-05", 2, 2, 1);
        books.addLine("22", "7", "p1", "2004-01-06", 1, 1, 2);
        start();
        drive->choose("maintain_order");
        drive->clickCell("DataGrid2", 0, "订单号");
        drive->clickCell("DataGrid1", 0, "品名");
    }
    QString box(int index) { return drive->text(QStringLiteral("Text4(%1)").arg(index)); }
    void type(int index, const QString& text) { drive->type(QStringLiteral("Text4(%1)").arg(index), text); }
};

TEST_F(OrderTyping, AHeldArrowShowsOneMessageAndStopsThere) {
    type(10, "8");
    auto* arrow = drive->find<QToolButton>("UpDown1(0)");
    arrow->setAutoRepeatDelay(1);
    arrow->setAutoRepeatInterval(1);
    prompts.expectMessage("超出库存数，该产品现有库存10");
    QTest::mousePress(arrow, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([this] { return prompts.done(); }));
    int ticks = 0;
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, [&ticks] { ++ticks; });
    clock.start(1);
    EXPECT_TRUE(QTest::qWaitFor([&ticks] { return ticks >= 20; }));
    EXPECT_EQ(box(10), u"11") << "the refused quantity stays, and rises no more";
    QTest::mouseRelease(arrow, Qt::LeftButton);
}

TEST_F(OrderTyping, ADoubleClickLeavesTheFocusWhereAClickPutsIt) {
    drive->doubleClickCell("DataGrid1", 1, "品名");
    EXPECT_EQ(focused(), u"Text4(10)");
    drive->keyAtFocus(Qt::Key_3, "3");
    EXPECT_EQ(box(2) + box(10), u"p23");
}

TEST_F(OrderTyping, ADiscountIsTypedDigitByDigit) {
    type(12, "0.5");
    EXPECT_EQ(box(12), u"0.5");
    EXPECT_EQ(box(11) + u' ' + box(13), u"5 0.025");
    EXPECT_EQ(drive->text("discountHint"), u"折扣是应付价的百分数，九折请输 90");
    for (const char* begun : {"", "0", "0.0", "-", "abc"}) {
        type(12, begun);
        EXPECT_EQ(box(12), QString::fromUtf8(begun));
        EXPECT_EQ(box(13), u"5") << begun;
        EXPECT_EQ(drive->text("discountHint"), u"");
        drive->keyAtFocus(Qt::Key_Return);
        EXPECT_EQ(box(12), u"100") << begun;
    }
    type(12, "0");
    prompts.expectMessage("总计购物数：7\n总计金额数：7");
    drive->click("Command3");
    EXPECT_EQ(books.stored("SELECT 折扣 FROM buyList"), u"100;100;100");
}

TEST_F(OrderTyping, ADiscountSetWithoutTypingIsPutRightAtOnce) {
    auto* discount = drive->find<QLineEdit>("Text4(12)");
    for (const char* text : {"0", "", "-1", "120"}) {
        discount->setText("50");
        discount->setText(text);
        EXPECT_EQ(box(12), u"100") << text;
    }
}

TEST_F(OrderTyping, ArrowKeysMoveInTheOrdersAndEnterChoosesOne) {
    drive->find<QWidget>("DataGrid2")->setFocus();
    drive->keyAtFocus(Qt::Key_Down);
    EXPECT_EQ(drive->text("Text2"), u"2/2");
    EXPECT_EQ(drive->text("Label3"), u"订单号： 21") << "a moved row chooses no order";
    drive->keyAtFocus(Qt::Key_Return);
    EXPECT_EQ(drive->text("Label3"), u"订单号： 22");
    drive->keyAtFocus(Qt::Key_Up);
    drive->keyAtFocus(Qt::Key_Space, " ");
    EXPECT_EQ(drive->text("Label3"), u"订单号： 21");
}

TEST_F(OrderTyping, ArrowKeysMoveInTheLinesTheBoxesFollowAndEnterFocusesTheQuantity) {
    drive->find<QWidget>("DataGrid1")->setFocus();
    drive->keyAtFocus(Qt::Key_Down);
    EXPECT_EQ(box(2), u"p2");
    EXPECT_EQ(focused(), u"DataGrid1");
    drive->keyAtFocus(Qt::Key_Enter);
    EXPECT_EQ(focused(), u"Text4(10)");
}

TEST_F(OrderTyping, ASignThatWouldOverflowTheLineIsNotTaken) {
    books.changeBehind("UPDATE buyList SET 单价 = 1e200");
    drive->choose("management_client");
    drive->choose("maintain_order");
    drive->clickCell("DataGrid2", 0, "订单号");
    books.changeBehind("UPDATE productTable SET 数量 = 1e140");
    session().reopen(session().productTable, "Select * From productTable ");
    type(10, "1e110");
    EXPECT_EQ(box(10), u"1e11");
    EXPECT_EQ(box(11), u"1E+211");
}

TEST_F(OrderTyping, TheQuestionsSayWhatWouldGo) {
    prompts.expectConfirm("确实要删除该记录吗？", false, "删除提示");
    drive->click("Command4");
    EXPECT_EQ(prompts.loss, u"订单 21 的 1 行：p1 货，5 件，5 元");
    prompts.expectConfirm("确实要删除该订单吗？", false, "删除提示");
    drive->click("Command2");
    EXPECT_EQ(prompts.loss, u"订单 21：2 行，7 元");
}

TEST_F(OrderTyping, AnOrderThatLostItsLastLineAsksForAnotherAndNotForTheWholeTable) {
    drive->clickCell("DataGrid2", 1, "订单号");
    prompts.expectConfirm("确实要删除该记录吗？", true, "删除提示");
    prompts.expectMessage("总计购物数：0\n总计金额数：0");
    drive->click("Command4");
    EXPECT_EQ(drive->find<DataGrid>("DataGrid1")->emptyText(), u"请在左边点一个订单号。");
}

} // namespace

// Figures typed into a line, held arrows, and the stock that the product grid shows meanwhile.
#include "controls/dataGrid.h"
#include "controls/hint.h"
#include "support/purchaseWindow.h"

#include <QLineEdit>
#include <QTimer>
#include <QToolButton>
#include <QtTest/QTest>

namespace {

/// Holds a mouse button on an arrow that repeats as fast as it can, until `reached`, and then for as long as
/// many more steps would take.
void holdUntil(QToolButton* arrow, const std::function<bool()>& reached) {
    arrow->setAutoRepeatDelay(1);
    arrow->setAutoRepeatInterval(1);
    QTest::mousePress(arrow, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor(reached));
    // The mouse is held and moves a little, as a hand does.
    QMouseEvent move(QEvent::MouseMove, QPointF(5, 5), arrow->mapToGlobal(QPointF(5, 5)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(arrow, &move);
    int ticks = 0;
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, [&ticks] { ++ticks; });
    clock.start(1);
    EXPECT_TRUE(QTest::qWaitFor([&ticks] { return ticks >= 20; }));
    QTest::mouseRelease(arrow, Qt::LeftButton);
}

class PurchaseTyping : public Purchase {
protected:
    void open() {
        Purchase::open();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window("buyFm1")));
    }
    QString hint() { return buy->text("discountHint"); }
    void keys(const char* box, const char* text) {
        buy->find<QLineEdit>(box)->setFocus();
        for (const char* c = text; *c; ++c)
            buy->keyAtFocus(Qt::Key_unknown, QString(QLatin1Char(*c)));
    }
    QString shownHint() {
        auto* label = window("buyFm1")->findChild<Hint*>("hint");
        return label && label->isVisible() ? label->text() : QString();
    }
};

TEST_F(PurchaseTyping, AHeldArrowShowsOneMessageAndStopsThere) {
    open();
    choose(1);
    prompts.expectMessage("超出库存数，现有库存数3", "库存提示");
    holdUntil(buy->find<QToolButton>("UpDown1(0)"), [this] { return prompts.done(); });
    EXPECT_EQ(line(10), u"0");
    holdUntil(buy->find<QToolButton>("UpDown2(1)"), [this] { return line(12) == u"70"; });
    buy->click("UpDown1(0)");
    EXPECT_EQ(line(10), u"1") << "a new press steps again";
}

TEST_F(PurchaseTyping, ADoubleClickLeavesTheFocusInTheQuantity) {
    open();
    buy->doubleClickCell("DataGrid1", 0, "品名");
    EXPECT_EQ(window("buyFm1")->focusWidget()->objectName(), u"Text4(10)");
    buy->keyAtFocus(Qt::Key_5, "5");
    EXPECT_EQ(line(10), u"5");
    EXPECT_EQ(line(2), u"p1");
    confirm();
    EXPECT_EQ(basket(), u"p1|5.0|100|25.0");
}

TEST_F(PurchaseTyping, ArrowKeysTakeNothingUpAndEnterOrTheSpaceBarDoes) {
    open();
    buy->find<QWidget>("DataGrid1")->setFocus();
    for (int i = 0; i < 2; ++i)
        buy->keyAtFocus(Qt::Key_Down);
    EXPECT_EQ(buy->text("Text1"), u"3/3") << "the sold-out product is passed over without a word";
    EXPECT_EQ(line(2), u"");
    buy->keyAtFocus(Qt::Key_Up);
    EXPECT_EQ(line(2), u"");
    buy->keyAtFocus(Qt::Key_Return);
    EXPECT_EQ(line(2), u"p2");
    EXPECT_EQ(window("buyFm1")->focusWidget()->objectName(), u"Text4(10)");
    buy->find<QWidget>("DataGrid1")->setFocus();
    buy->keyAtFocus(Qt::Key_Up);
    buy->keyAtFocus(Qt::Key_Space, " ");
    EXPECT_EQ(line(2), u"p1");
}

TEST_F(PurchaseTyping, ADiscountBelowOneCanBeTypedDigitByDigit) {
    open();
    choose(0);
    type(10, "2");
    keys("Text4(12)", "0");
    EXPECT_EQ(line(12), u"0");
    EXPECT_EQ(line(13), u"10") << "full price for the time being";
    EXPECT_EQ(hint(), u"");
    keys("Text4(12)", ".");
    EXPECT_EQ(line(12), u"0.");
    EXPECT_EQ(line(13), u"10");
    keys("Text4(12)", "5");
    EXPECT_EQ(line(12), u"0.5");
    EXPECT_EQ(line(13), u"0.05");
    EXPECT_EQ(hint(), u"折扣是应付价的百分数，九折请输 90");
    confirm();
    EXPECT_EQ(basket(), u"p1|2.0|0.5|0.05");
    EXPECT_EQ(hint(), u"");
}

TEST_F(PurchaseTyping, ADiscountThatIsOnlyBegunBecomesFullPriceWhenItsBoxIsLeft) {
    open();
    for (const char* begun : {"", "0", "0.0", ".", "-", "abc"}) {
        choose(1);
        type(10, "2");
        type(12, begun);
        EXPECT_EQ(line(12), QString::fromUtf8(begun));
        EXPECT_EQ(line(13), u"60") << begun;
        buy->keyAtFocus(Qt::Key_Tab);
        EXPECT_EQ(line(12), u"100") << begun;
        EXPECT_EQ(line(13), u"60");
    }
    type(12, "87.5");
    buy->keyAtFocus(Qt::Key_Tab);
    EXPECT_EQ(line(12), u"87.5");
    EXPECT_EQ(line(13), u"52.5");
}

TEST_F(PurchaseTyping, ConfirmAndTheArrowsMeetADiscountThatIsOnlyBegun) {
    open();
    choose(1);
    type(10, "1");
    type(12, "0");
    buy->click("UpDown1(0)");
    EXPECT_EQ(line(12), u"0") << "the discount is still being typed";
    EXPECT_EQ(line(13), u"60");
    confirm();
    EXPECT_EQ(basket(), u"p2|2.0|100|60.0");
}

TEST_F(PurchaseTyping, ADiscountSetWithoutTypingIsPutRightAtOnce) {
    open();
    choose(1);
    type(10, "1");
    for (const char* text : {"0", "", "-1", "100.5"}) {
        buy->find<QLineEdit>("Text4(12)")->setText("50");
        buy->find<QLineEdit>("Text4(12)")->setText(text);
        EXPECT_EQ(line(12), u"100") << text;
    }
    type(12, "-5");
    EXPECT_EQ(line(12), u"100") << "below 0 is no beginning of anything";
}

TEST_F(PurchaseTyping, AnUnconfirmedLineGivesItsStockFigureBackWhenTheBasketRowTakesItsPlace) {
    open();
    put(1, "1");
    choose(0);
    type(10, "4");
    EXPECT_EQ(left(0), u"6");
    buy->click("Command9");
    EXPECT_EQ(left(0), u"6") << "the line is still in the boxes";
    buy->click("Command11");
    EXPECT_EQ(line(2), u"p2");
    EXPECT_EQ(left(0), u"10");
    EXPECT_EQ(left(1), u"2") << "the confirmed one stays";
    choose(0);
    type(10, "4");
    buy->click("Command9");
    buy->clickCell("DataGrid2", 0, "品名");
    EXPECT_EQ(left(0), u"10");
}

TEST_F(PurchaseTyping, WithAnEmptyBasketTheLineAndItsStockFigureOutliveTheBrowsing) {
    open();
    choose(0);
    type(10, "4");
    buy->click("Command9");
    buy->click("Command11");
    EXPECT_EQ(line(10), u"4");
    EXPECT_EQ(left(0), u"6");
}

TEST_F(PurchaseTyping, ABasketLineChangedAfterBrowsingGivesItsFigureBackToo) {
    open();
    put(0, "4");
    buy->click("Command9");
    buy->click("Command11");
    type(10, "7");
    EXPECT_EQ(left(0), u"3");
    choose(1);
    EXPECT_EQ(left(0), u"10");
}

TEST_F(PurchaseTyping, DeletingABasketRowRecomputesTheAccumulatedQuantity) {
    books.addLine("1", "7", "p2", "2003-01-01", 4, 1, 1);
    open();
    put(0, "5");
    put(1, "2");
    EXPECT_EQ(buy->text("Text8"), u"11");
    buy->click("Command9");
    buy->clickCell("DataGrid2", 0, "品名");
    prompts.expectConfirm("确认要删除该记录吗？", true);
    buy->click("Command7");
    EXPECT_EQ(prompts.loss, u"订单 1001 的 1 行：p1 打印纸，5 件，25 元");
    EXPECT_EQ(buy->text("Text8"), u"6");
}

TEST_F(PurchaseTyping, ASignThatWouldOverflowTheLineIsNotTaken) {
    books.addProduct("p4", "钻", 1e140, 1, 1e200);
    open();
    choose(3);
    type(10, "1e110");
    EXPECT_EQ(line(10), u"1e11");
    EXPECT_EQ(line(11), u"1E+211");
    EXPECT_EQ(shownHint(), u"数字太大，不能计算；已保留原值");
    confirm();
}

TEST_F(PurchaseTyping, ABasketCellThatWouldOverflowKeepsItsValueWithAHint) {
    open();
    put(1, "2");
    buy->click("Command9");
    for (const char* text : {"1e308", "1e151", "1e999"}) {
        buy->editCell("DataGrid2", 0, "单价", text);
        EXPECT_EQ(buy->cell("DataGrid2", 0, "单价"), u"30");
        EXPECT_EQ(shownHint(), u"数字太大，不能计算；已保留原值") << text;
    }
    buy->editCell("DataGrid2", 0, "折扣", "1e308");
    EXPECT_EQ(buy->cell("DataGrid2", 0, "折扣"), u"90");
    prompts.expectMessage("该产品订购数量超出现有库存数，现订购数量为现有库存数！");
    buy->editCell("DataGrid2", 0, "数量", "1e140");
    EXPECT_EQ(buy->cell("DataGrid2", 0, "数量"), u"2") << "more than the stock has its own message";
}

TEST_F(PurchaseTyping, ARefusedCellSaysWhy) {
    open();
    put(1, "2");
    buy->click("Command9");
    buy->editCell("DataGrid2", 0, "数量", "abc");
    EXPECT_EQ(buy->cell("DataGrid2", 0, "数量"), u"2");
    EXPECT_EQ(shownHint(), u"“数量”要填数字；已保留原值");
    buy->editCell("DataGrid2", 0, "日期", "2004-2-30");
    EXPECT_EQ(shownHint(), u"“日期”要填日期，如 2004-2-1；已保留原值");
    buy->click("Command11");
    EXPECT_EQ(shownHint(), u"") << "the hint goes with its grid";
}

} // namespace

// A sale by the keyboard alone, a barcode reader's keys included.
#include "controls/dataGrid.h"
#include "controls/scanBurst.h"
#include "support/purchaseWindow.h"

#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest/QTest>

namespace {

TEST(ScanPace, SixSignsWithinATenthOfASecondAreAReaders) {
    ScanPace pace;
    for (int i = 0; i < 5; ++i)
        pace.add(u'6', 1000 + i * 20);
    EXPECT_FALSE(pace.isReader());
    pace.add(u'1', 1100);
    EXPECT_TRUE(pace.isReader());
    EXPECT_EQ(pace.signs(), u"666661");
    pace.add(u'2', 1110);
    EXPECT_EQ(pace.signs(), u"6666612");
}

TEST(ScanPace, SignsThatTakeLongerAreAPersons) {
    ScanPace pace;
    for (int i = 0; i < 10; ++i)
        pace.add(u'6', 1000 + i * 21);
    EXPECT_FALSE(pace.isReader());
}

TEST(ScanPace, AGapBeginsANewRun) {
    ScanPace pace;
    pace.add(u'2', 1000);
    for (int i = 0; i < 6; ++i)
        pace.add(QChar(u'0' + i), 1041 + i * 5);
    EXPECT_TRUE(pace.isReader());
    EXPECT_EQ(pace.signs(), u"012345") << "what a person typed before is none of it";
}

class TillKeys : public Purchase {
protected:
    void open() {
        Purchase::open();
        QTRY_VERIFY(window("buyFm1")->isActiveWindow()); // keys are commands of the window in front
    }
    QString basket() { return books.stored("SELECT 产品编号 FROM buyList2 ORDER BY rowid"); }
    QWidget* focusOf(QWidget* window) { return window->focusWidget() ? window->focusWidget() : window; }
    QString focusName(const char* name) { return focusOf(window(name))->objectName(); }
    /// A key to wherever the focus of a window is.
    void press(QWidget* window, int key) {
        ++keys;
        QTest::keyClick(focusOf(window), Qt::Key(key));
    }
    void press(int key) { press(window("buyFm1"), key); }
    void write(QWidget* window, const QString& text) {
        for (const QChar sign : text) {
            ++keys;
            QTest::keyClick(focusOf(window), char(sign.unicode()));
        }
    }
    void write(const QString& text) { write(window("buyFm1"), text); }
    /// A message is answered by a key as well.
    void expectTold(const char* text) {
        ++keys;
        prompts.expectMessage(QString::fromUtf8(text));
    }
    void compose(QWidget* box, const QString& text) {
        QInputMethodEvent event(text, {});
        QCoreApplication::sendEvent(box, &event);
    }
    /// Every clock of the window stands still until it is set.
    void setClocks(qint64 milliseconds) {
        time = milliseconds;
        for (ScanBurst* scan : window("buyFm1")->findChildren<ScanBurst*>())
            scan->now = [this] { return time; };
        for (EnterGuard* guard : window("buyFm1")->findChildren<EnterGuard*>())
            guard->now = [this] { return time; };
    }
    /// Keys as they come from the window system: each waits until the program is ready for it.
    void scan(const QString& number, const std::vector<Qt::Key>& end = {}) {
        const auto later = [this](const auto& send) {
            QTimer::singleShot(0, window("buyFm1"), [this, send] {
                time += 5;
                send(focusOf(window("buyFm1")));
            });
        };
        for (const QChar sign : number)
            later([sign](QWidget* box) { QTest::keyClick(box, char(sign.unicode())); });
        for (const Qt::Key key : end)
            later([key](QWidget* box) { QTest::keyClick(box, key); });
        bool sent = false;
        later([&sent](QWidget*) { sent = true; });
        QTRY_VERIFY(sent);
    }
    /// Until what is done a moment after the last sign has been done.
    void settleDown() { QTRY_VERIFY(!buy->find<QLineEdit>("Text3")->text().isEmpty()); }

    int keys = 0;
    qint64 time = 0;
};

TEST_F(TillKeys, ANumberAndEnterTakeTheProductUpWhateverFilterIsOn) {
    open();
    EXPECT_EQ(focusName("buyFm1"), u"Text3");
    write("p1");
    press(Qt::Key_Return);
    EXPECT_EQ(line(2), u"p1");
    EXPECT_EQ(focusName("buyFm1"), u"Text4(10)");
    session().productTable->setFilter("品名 Like '%纸%'");
    buy->type("Text3", "P2");
    buy->key("Text3", Qt::Key_Return);
    EXPECT_EQ(session().productTable->Filter(), u"");
    EXPECT_EQ(line(2), u"p2");
    EXPECT_EQ(buy->text("Text1"), u"2/3");
    session().productTable->setFilter("产品编号 = 'p1'");
    buy->type("Text3", "p1");
    buy->key("Text3", Qt::Key_Return);
    EXPECT_EQ(session().productTable->Filter(), u"") << "also one that shows it";
}

TEST_F(TillKeys, ANumberThatTwoProductsBearSearches) {
    books.addProduct("p2", "硒鼓乙", 5, 1, 1);
    open();
    buy->type("Text3", "p2");
    buy->key("Text3", Qt::Key_Return);
    EXPECT_EQ(buy->rows("DataGrid1"), 2);
    EXPECT_EQ(line(4), u"硒鼓") << "the first hit is taken up";
}

TEST_F(TillKeys, AnyOtherTextSearchesAsTheButtonDoes) {
    open();
    buy->type("Text3", "纸");
    buy->key("Text3", Qt::Key_Return);
    EXPECT_EQ(buy->rows("DataGrid1"), 1);
    EXPECT_EQ(line(2), u"p1");
    buy->type("Text3", "p1");
    buy->click("Command5");
    EXPECT_EQ(buy->rows("DataGrid1"), 1) << "the button searches numbers too";
}

TEST_F(TillKeys, ASoldOutNumberIsToldAndTheLineStays) {
    open();
    choose(0);
    buy->type("Text3", "p3");
    prompts.expectMessage("该产品已售完！");
    buy->key("Text3", Qt::Key_Return);
    EXPECT_EQ(line(2), u"p1");
    EXPECT_EQ(focusName("buyFm1"), u"Text3");
}

TEST_F(TillKeys, EnterInQuantityAndDiscountConfirmsAndTheNextSearchCanBegin) {
    open();
    for (const char* box : {"Text4(10)", "Text4(12)"}) {
        buy->type("Text3", "p1");
        buy->key("Text3", Qt::Key_Return);
        if (basket().isEmpty())
            type(10, "2");
        prompts.expectMessage("已记入购物表！");
        if (!basket().isEmpty())
            buy->type("Text4(12)", "50");
        buy->key(box, Qt::Key_Return);
        EXPECT_EQ(focusName("buyFm1"), u"Text3");
        EXPECT_EQ(buy->text("Text3"), u"");
        if (QString(box) == u"Text4(10)")
            prompts.expectMessage("已选购该产品！");
    }
    EXPECT_EQ(basket(), u"p1");
}

TEST_F(TillKeys, EnterElsewhereInTheLineIsNoConfirmation) {
    open();
    choose(0);
    type(10, "2");
    buy->key("Text4(4)", Qt::Key_Return);
    EXPECT_EQ(basket(), u"");
}

TEST_F(TillKeys, KeysPressTheButtonsThatSayThem) {
    open();
    const std::pair<const char*, const char*> tips[] = {{"Command2", "F3"},
                                                        {"Command9", "F6"},
                                                        {"Command1", "F9"},
                                                        {"Command4", "Esc"},
                                                        {"Command11", "Esc"}};
    for (const auto& [button, key] : tips)
        EXPECT_TRUE(buy->find<QPushButton>(button)->toolTip().contains(QString::fromUtf8(key))) << button;
    choose(0);
    type(10, "2");
    prompts.expectMessage("已记入购物表！");
    press(Qt::Key_F3);
    press(Qt::Key_F6);
    EXPECT_TRUE(buy->find<QWidget>("Frame3")->isVisible());
    press(Qt::Key_F3); // its button is out of sight
    press(Qt::Key_Escape);
    EXPECT_FALSE(buy->find<QWidget>("Frame3")->isVisible()) << "its own way back";
    prompts.expectConfirm("购买总数量： 2\n总金额：10\n确认结算吗？", true);
    press(Qt::Key_F9);
    EXPECT_EQ(basket(), u"");
    press(Qt::Key_Escape);
    EXPECT_EQ(window("buyFm1"), nullptr);
}

TEST_F(TillKeys, EscapeInACellOfTheBasketEndsTheEditingAlone) {
    open();
    put(0, "2");
    press(Qt::Key_F6);
    auto* grid = buy->find<DataGrid>("DataGrid2");
    buy->doubleClickCell("DataGrid2", 0, "数量");
    QWidget* editor = grid->viewport()->findChild<QWidget*>("cellEditor");
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, '9');
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_TRUE(buy->find<QWidget>("Frame3")->isVisible());
    EXPECT_EQ(buy->cell("DataGrid2", 0, "数量"), u"2");
}

TEST_F(TillKeys, WhileAnInputMethodComposesNoKeyIsACommand) {
    open();
    put(0, "2");
    auto* search = buy->find<QLineEdit>("Text3");
    search->setFocus();
    compose(search, "zhi");
    for (const int key : {Qt::Key_F3, Qt::Key_F6, Qt::Key_F9, Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter})
        press(key);
    ASSERT_NE(window("buyFm1"), nullptr);
    EXPECT_FALSE(buy->find<QWidget>("Frame3")->isVisible());
    EXPECT_EQ(line(2), u"");
    QInputMethodEvent end;
    end.setCommitString("纸");
    QCoreApplication::sendEvent(search, &end);
    prompts.expectMessage("已选购该产品！");
    press(Qt::Key_Return);
    EXPECT_EQ(line(2), u"p1");
}

TEST_F(TillKeys, AReadersSecondEnterIsSwallowedAndAPersonsIsNot) {
    open();
    setClocks(1000);
    write("p1");
    press(Qt::Key_Return);
    time += 49;
    press(Qt::Key_Return);
    EXPECT_EQ(basket(), u"") << "the line feed behind the number";
    EXPECT_EQ(line(2), u"p1");
    time += 10;
    expectTold("已记入购物表！");
    press(Qt::Key_Return);
    EXPECT_EQ(line(2), u"");
    EXPECT_EQ(focusName("buyFm1"), u"Text3");
}

TEST_F(TillKeys, ANumberReadIntoTheQuantityIsTheNextProduct) {
    books.addProduct("690123", "墨粉", 50, 1, 2);
    open();
    setClocks(1000);
    choose(0);
    time += 1000;
    write("2");
    time += 500;
    scan("690123", {Qt::Key_Return, Qt::Key_Return});
    settleDown();
    EXPECT_EQ(line(2), u"690123");
    EXPECT_EQ(line(10), u"0");
    EXPECT_EQ(basket(), u"p1") << "the line in the making is kept";
    EXPECT_EQ(books.stored("SELECT 数量 FROM buyList2"), u"2.0");
    EXPECT_EQ(focusName("buyFm1"), u"Text4(10)");
}

TEST_F(TillKeys, ANumberReadWhileTheQuantityIsStillZeroKeepsNothing) {
    books.addProduct("690123", "墨粉", 50, 1, 2);
    open();
    setClocks(1000);
    choose(0);
    time += 1000;
    scan("690123"); // no Enter: the pause after it ends the number
    settleDown();
    EXPECT_EQ(line(2), u"690123");
    EXPECT_EQ(basket(), u"");
}

TEST_F(TillKeys, ANumberWhoseFirstSignsExceedTheStockGivesNoMessage) {
    books.addProduct("990123", "墨粉", 50, 1, 2);
    open();
    setClocks(1000);
    choose(1); // 3 in stock, and the number begins with 9
    time += 1000;
    scan("990123");
    settleDown();
    EXPECT_EQ(line(2), u"990123");
    EXPECT_EQ(basket(), u"");
}

TEST_F(TillKeys, QuantitiesOfLinesThatFollowFastAreNoNumberOfAReader) {
    books.addProduct("p4", "本子", 100000, 1, 2);
    open();
    setClocks(1000);
    for (int i = 0; i < 2; ++i) {
        buy->type("Text3", i == 0 ? "p1" : "p4");
        press(Qt::Key_Return);
        write(i == 0 ? "6" : "60000"); // the sixth sign within no time at all
        if (i == 1)
            break;
        prompts.expectMessage("已记入购物表！");
        press(Qt::Key_Return);
    }
    EXPECT_EQ(line(10), u"60000");
}

TEST_F(TillKeys, ThreeSignsTypedFastAreAQuantity) {
    open();
    setClocks(1000);
    choose(0);
    time += 1000;
    scan("1.5");
    EXPECT_EQ(line(10), u"1.5");
    EXPECT_EQ(line(11), u"7.5");
    prompts.expectMessage("超出库存数，现有库存数10", "库存提示");
    type(10, "11");
}

class RegisterKeys : public TillKeys {
protected:
    RegisterKeys() { books.addClient("8", "红叶行", "李平"); }
};

TEST_F(RegisterKeys, ASecondEnterBuysWhereOneCustomerIsFound) {
    start();
    EXPECT_EQ(focused(), u"Text2");
    drive->type("Text2", "李平");
    drive->key("Text2", Qt::Key_Return);
    EXPECT_EQ(window("buyFm1"), nullptr) << "the first one searches";
    EXPECT_EQ(focused(), u"Text2") << "and the focus stays";
    QCoreApplication::processEvents();
    for (EnterGuard* guard : main->findChildren<EnterGuard*>())
        guard->now = [] { return qint64(1) << 40; };
    drive->key("Text2", Qt::Key_Return);
    ASSERT_NE(window("buyFm1"), nullptr);
    EXPECT_EQ(session().currentClientNum, u"8");
}

TEST_F(RegisterKeys, AfterASaleTheNextCustomerIsTypedOverTheLastOne) {
    start();
    for (EnterGuard* guard : main->findChildren<EnterGuard*>())
        guard->now = [this] { return time += 1000; };
    write(main.get(), "7");
    press(main.get(), Qt::Key_Return);
    press(main.get(), Qt::Key_Return);
    ASSERT_NE(window("buyFm1"), nullptr);
    QTRY_VERIFY(window("buyFm1")->isActiveWindow());
    press(Qt::Key_Escape);
    ASSERT_EQ(window("buyFm1"), nullptr);
    QTRY_VERIFY(main->isActiveWindow());
    EXPECT_EQ(focused(), u"Text2");
    EXPECT_EQ(drive->text("Text2"), u"7") << "his row stands there still";
    write(main.get(), "8");
    EXPECT_EQ(drive->text("Text2"), u"8");
    press(main.get(), Qt::Key_Return);
    EXPECT_EQ(drive->rows("DataGrid1"), 1);
    EXPECT_EQ(drive->cell("DataGrid1", 0, "客户编号"), u"8");
}

TEST_F(RegisterKeys, AmongSeveralTheArrowsChooseAndF2Buys) {
    start();
    drive->type("Text2", "平");
    for (EnterGuard* guard : main->findChildren<EnterGuard*>())
        guard->now = [this] { return time += 1000; };
    drive->key("Text2", Qt::Key_Return);
    drive->key("Text2", Qt::Key_Return);
    EXPECT_EQ(window("buyFm1"), nullptr) << "nobody bills the wrong one";
    drive->key("Text2", Qt::Key_Down);
    EXPECT_EQ(focused(), u"Text2");
    EXPECT_EQ(drive->text("Text3(0)"), u"8");
    press(main.get(), Qt::Key_F2);
    ASSERT_NE(window("buyFm1"), nullptr);
    EXPECT_EQ(session().currentClientNum, u"8");
}

TEST_F(RegisterKeys, AnotherTextSearchesAnew) {
    start();
    for (EnterGuard* guard : main->findChildren<EnterGuard*>())
        guard->now = [this] { return time += 1000; };
    drive->type("Text2", "李平");
    drive->key("Text2", Qt::Key_Return);
    drive->type("Text2", "王平");
    drive->key("Text2", Qt::Key_Return);
    EXPECT_EQ(window("buyFm1"), nullptr);
    EXPECT_EQ(drive->text("Text3(0)"), u"7");
    drive->click("Command4");
    drive->key("Text2", Qt::Key_Return);
    EXPECT_EQ(window("buyFm1"), nullptr) << "all are shown again: it searches";
}

TEST_F(RegisterKeys, NoKeyBuysWhileACustomerIsAdded) {
    start();
    drive->click("Command3");
    press(main.get(), Qt::Key_F2);
    EXPECT_EQ(window("buyFm1"), nullptr);
}

TEST_F(RegisterKeys, CtrlFGoesToTheSearchBoxWhereTheToolbarHasNoSearch) {
    start();
    drive->find<QLineEdit>("Text3(5)")->setFocus();
    QTest::keyClick(focusOf(main.get()), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(focused(), u"Text2");
    EXPECT_TRUE(drive->find<QPushButton>("Command7")->toolTip().contains("F2"));
}

TEST_F(RegisterKeys, EveryViewWithASearchBoxOfItsOwnIsLedToItByTheSameKey) {
    start();
    const std::pair<const char*, const char*> views[] = {{"paybackFm1", "Text1"},
                                                         {"productRegisterFm1", "Text3"},
                                                         {"stock_ReturnFm1", "Text4"},
                                                         {"maintainFm1", "Text2"}};
    for (const auto& [view, box] : views) {
        main->host().show(QString::fromUtf8(view));
        drive->find<QWidget>("DataGrid1")->setFocus();
        QTest::keyClick(focusOf(main.get()), Qt::Key_F, Qt::ControlModifier);
        EXPECT_EQ(focused(), QString::fromUtf8(box)) << view;
    }
}

TEST_F(TillKeys, ASaleOfThreeProductsTakesAtMostFortyFiveKeys) {
    books.execute("UPDATE clientTable SET 电话 = '62781234'");
    books.addClient("8", "红叶行", "李平");
    for (int i = 0; i < 3; ++i)
        books.addProduct(QStringLiteral("10%1").arg(50 + i), "货", 100, 1, 2);
    start();
    for (EnterGuard* guard : main->findChildren<EnterGuard*>())
        guard->now = [this] { return time += 1000; };
    write(main.get(), "62781234");
    press(main.get(), Qt::Key_Return);
    press(main.get(), Qt::Key_Return);
    ASSERT_NE(window("buyFm1"), nullptr);
    buy = std::make_unique<Driver>(*window("buyFm1"));
    for (EnterGuard* guard : window("buyFm1")->findChildren<EnterGuard*>())
        guard->now = [this] { return time += 1000; };
    QTRY_VERIFY(window("buyFm1")->isActiveWindow());
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(focusName("buyFm1"), u"Text3");
        write(QStringLiteral("10%1").arg(50 + i));
        press(Qt::Key_Return);
        write("12");
        EXPECT_EQ(line(10), u"12");
        expectTold("已记入购物表！");
        press(Qt::Key_Return);
    }
    ++keys;
    prompts.expectConfirm("购买总数量： 36\n总金额：72\n确认结算吗？", true);
    press(Qt::Key_F9);
    press(Qt::Key_Escape);
    EXPECT_EQ(window("buyFm1"), nullptr);
    EXPECT_EQ(books.stored("SELECT sum(数量) FROM buyList WHERE 客户编号 = '7'"), u"36.0");
    EXPECT_LE(keys, 45);
}

} // namespace

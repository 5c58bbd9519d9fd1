// Where windows stand, where the focus is when they come up, and the keys that every window knows.
#include "controls/dataGrid.h"
#include "controls/recordBoxes.h"
#include "shell/windowPlace.h"
#include "support/shopWindow.h"

#include <QListWidget>
#include <QScreen>
#include <QTextEdit>
#include <QtTest/QTest>

namespace {

TEST(WindowPlace, IsTheMiddleAndTheWholeFrameLiesOnTheScreen) {
    const QRect screen(0, 0, 960, 540);
    const QMargins frame(4, 32, 4, 4);
    EXPECT_EQ(windowPlace(screen, {400, 200}, frame, screen).center(), screen.center());
    EXPECT_EQ(windowPlace({0, 32, 300, 200}, {200, 100}, frame, screen).center(), QPoint(149, 131));
    for (const QSize& size : {QSize(760, 620), QSize(1240, 700), QSize(951, 503), QSize(10, 10)})
        for (const QRect& over : {screen, QRect(-500, -500, 10, 10), QRect(2000, 2000, 10, 10)}) {
            const QRect place = windowPlace(over, size, frame, screen);
            EXPECT_TRUE(screen.contains(place.marginsAdded(frame))) << size.width() << "x" << size.height();
            EXPECT_EQ(place.size(), size.boundedTo({952, 504}));
        }
    const QRect second(1920, 100, 800, 600);
    EXPECT_TRUE(second.contains(windowPlace(screen, {900, 900}, frame, second)));
}

TEST(WindowPlace, AWindowAsLargeAsTheScreenHasNoRoomForItsFrame) {
    const QMargins frame(4, 32, 4, 4);
    EXPECT_FALSE(fitsScreen({1280, 720}, frame, {1280, 720}));
    EXPECT_FALSE(fitsScreen({1280, 720}, frame, {1920, 755}));
    EXPECT_TRUE(fitsScreen({1280, 720}, frame, {1288, 756}));
}

/// Places every window that comes up without a place of its own somewhere else, as a window manager does.
class PlacingManager : public QObject {
protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* window = static_cast<QWidget*>(watched);
        if (event->type() == QEvent::Show && !window->testAttribute(Qt::WA_Moved))
            window->windowHandle()->setPosition(313, 171);
        return false;
    }
};

class Windows : public ShopWindow {
protected:
    Windows() {
        books.addClient("7", "红木行", "王平");
        books.addProduct("p1", "打印纸", 10, 2, 5);
        books.addLine("21", "7", "p1", "2004-01-05", 5, 5, 2);
    }
    QStringList tabOrder(QWidget* first, int count) {
        QStringList names;
        QWidget* at = first;
        while (names.size() < count) {
            if ((at->focusPolicy() & Qt::TabFocus) && at->isVisible() && at->isEnabled())
                names << at->objectName();
            at = at->nextInFocusChain();
            if (at == first)
                break;
        }
        return names;
    }
};

TEST_F(Windows, TheMainWindowOpensMaximisedWhereItsFrameDoesNotFit) {
    start();
    ASSERT_LT(main->screen()->availableSize().width(), 1288);
    EXPECT_TRUE(main->isMaximized());
    EXPECT_TRUE(main->screen()->availableGeometry().contains(main->geometry()));
}

TEST_F(Windows, NoViewMakesTheMainWindowHigherThanASmallScreen) {
    start();
    for (const char* view : {"dataInputFm1", "productRegisterFm1", "paybackFm1", "stockFm1",
                             "stock_ReturnFm1", "maintainFm2", "stock_CountFm1"}) {
        main->host().show(QString::fromUtf8(view));
        QCoreApplication::processEvents();
        EXPECT_LE(main->minimumSizeHint().height(), 540 - 36) << view;
        EXPECT_LE(main->minimumSizeHint().width(), 960 - 8) << view;
    }
}

TEST_F(Windows, TheMainWindowComesBackWhereItWasAfterAPurchase) {
    PlacingManager manager;
    start();
    main->installEventFilter(&manager);
    main->showNormal();
    main->windowHandle()->setPosition(40, 50); // dragged there by the user
    QCoreApplication::processEvents();
    for (int i = 0; i < 2; ++i) {
        const QPoint before = main->pos();
        drive->click("Command7");
        EXPECT_FALSE(main->isVisible());
        window("buyFm1")->close();
        EXPECT_TRUE(main->isVisible());
        QCoreApplication::processEvents(); // the window manager's answer
        EXPECT_EQ(main->pos(), before);
    }
    main->removeEventFilter(&manager);
}

TEST_F(Windows, DialogsStandInTheMiddleOfTheScreenAndHelpOverTheMainWindow) {
    start();
    main->showNormal();
    main->setGeometry(20, 60, 500, 400);
    const QRect screen = main->screen()->availableGeometry();
    for (const char* name : {"searchFm1", "timeDefineFm2", "product_displayFm1"}) {
        TopWindow* opened = main->host().openWindow(QString::fromUtf8(name), ViewHost::MainWindow::Stays);
        ASSERT_NE(opened, nullptr) << name;
        EXPECT_LE((opened->geometry().center() - screen.center()).manhattanLength(), 40) << name;
        EXPECT_TRUE(screen.contains(opened->geometry())) << name;
        opened->finish();
    }
    drive->click("Toolbar1(8)");
    const QSize help(940, 640);
    const QRect overMain = windowPlace(main->geometry(), help, likelyFrame(), screen);
    ASSERT_NE(overMain, windowPlace(screen, help, likelyFrame(), screen));
    EXPECT_EQ(window("manualFm1")->geometry(), overMain);
}

TEST_F(Windows, TheFirstFocusOfAViewIsWhereItsWorkStarts) {
    start();
    EXPECT_EQ(focused(), u"Text2");
    for (const auto& [view, first] : {std::pair("productRegisterFm1", "Text3"),
                                      {"paybackFm1", "Text1"},
                                      {"dataInputFm1", "Text2"},
                                      {"stockFm1", "DataGrid1"},
                                      {"stock_BankFm1", "DataGrid1"}}) {
        main->host().show(QString::fromUtf8(view));
        EXPECT_EQ(focused(), QString::fromUtf8(first)) << view;
        EXPECT_TRUE(main->host().active()->isAncestorOf(main->focusWidget())) << view;
    }
}

TEST_F(Windows, TheFocusStaysWhereItWasWhenTheMainWindowComesBack) {
    start();
    drive->find<QWidget>("Text3(4)")->setFocus();
    drive->click("Command7");
    QWidget* purchase = window("buyFm1");
    EXPECT_EQ(purchase->focusWidget()->objectName(), u"Text3");
    purchase->close();
    EXPECT_NE(focused(), u"Text2");
}

TEST_F(Windows, TheTabKeyGoesFromTheSearchToItsButtonsTheListTheFieldsAndTheCommands) {
    start();
    QStringList boxes;
    for (int i = 0; i < 17; ++i)
        boxes << QStringLiteral("Text3(%1)").arg(i);
    const QStringList moves{"Command1(0)", "Command1(1)", "Command1(2)", "Command1(3)"};
    EXPECT_EQ(tabOrder(main->focusWidget(), 30),
              (QStringList{"Text2", "Command2", "Command4", "DataGrid1"} + moves + boxes +
               QStringList{"Command3", "Command5", "Command6", "Command7", "Command8"}));
    main->host().show("productRegisterFm1");
    QStringList order = tabOrder(main->focusWidget(), 32);
    EXPECT_EQ(order.mid(0, 4), (QStringList{"Text3", "Command2", "Command3", "DataGrid1"}));
    EXPECT_EQ(order.indexOf("Text2(0)"), 8);
    EXPECT_EQ(order.mid(19), (QStringList{"Command8", "Command4", "Command5", "Command6", "Command7",
                                          "Command9", "Command10", "Command11", "Command12", "Command13",
                                          "Command14", "Command15", "Command16"}));
    main->host().show("paybackFm1");
    order = tabOrder(main->focusWidget(), 30);
    EXPECT_EQ(order.mid(0, 3), (QStringList{"Text1", "Command6", "DataGrid2"}));
    EXPECT_EQ(order.mid(7, 2), (QStringList{"Command2", "DataGrid1"}));
    EXPECT_EQ(order.indexOf("Text4(0)"), 13);
    EXPECT_EQ(order.mid(27), (QStringList{"Text3", "Command3", "Command4"}));
}

TEST_F(Windows, TheSearchWorksByKeysAlone) {
    start();
    main->host().show("stockFm1");
    drive->click("Toolbar1(3)");
    Driver dialog(*window("searchFm1"));
    EXPECT_EQ(window("searchFm1")->focusWidget()->objectName(), u"List1");
    for (int i = 0; i < 4; ++i)
        dialog.keyAtFocus(Qt::Key_Down);
    EXPECT_EQ(dialog.text("Text1"), u"") << "moving chooses nothing";
    dialog.keyAtFocus(Qt::Key_Return);
    const QString field = dialog.text("Text1");
    EXPECT_FALSE(field.isEmpty());
    EXPECT_EQ(window("searchFm1")->focusWidget()->objectName(), u"Text2");
    dialog.keyAtFocus(Qt::Key_unknown, QStringLiteral("规"));
    dialog.keyAtFocus(Qt::Key_Return);
    EXPECT_EQ(window("searchFm1"), nullptr);
    EXPECT_EQ(session().productTable->Filter(), field + QStringLiteral(" Like '%规%'"));
}

TEST_F(Windows, TheSortWorksByKeysAlone) {
    start();
    main->host().show("stockFm1");
    drive->click("Toolbar1(6)");
    Driver dialog(*window("orderFm1"));
    for (int i = 0; i < 2; ++i)
        dialog.keyAtFocus(Qt::Key_Down);
    dialog.keyAtFocus(Qt::Key_Space, QStringLiteral(" "));
    const QString field = dialog.text("Text1");
    EXPECT_FALSE(field.isEmpty());
    dialog.keyAtFocus(Qt::Key_Return);
    EXPECT_EQ(window("orderFm1"), nullptr) << "Enter on the chosen field goes on to the default button";
    EXPECT_EQ(session().productTable->Sort(), field + QStringLiteral(" Desc"));
}

TEST_F(Windows, TheOrdersSearchBoxSelectsItsTextOnFocus) {
    start();
    main->host().show("paybackFm1");
    drive->type("Text1", "21");
    drive->find<QWidget>("DataGrid2")->setFocus();
    auto* search = drive->find<QLineEdit>("Text1");
    search->setFocus();
    EXPECT_EQ(search->selectedText(), u"21");
}

TEST_F(Windows, AClickIntoABoxSelectsItsTextAndASecondOneSetsTheCursor) {
    start();
    ASSERT_TRUE(QTest::qWaitForWindowActive(main.get()));
    drive->find<QWidget>("Text2")->setFocus();
    auto* box = drive->find<QLineEdit>("Text3(8)");
    QTest::mouseClick(box, Qt::LeftButton);
    EXPECT_EQ(focused(), u"Text3(8)");
    EXPECT_EQ(box->selectedText(), u"红木行");
    QTest::mouseClick(box, Qt::LeftButton);
    EXPECT_EQ(box->selectedText(), u"");
}

TEST_F(Windows, AMenuOfABoxLeavesItsSelectionAsItIs) {
    start();
    auto* box = drive->find<QLineEdit>("Text3(8)");
    box->setFocus();
    box->setSelection(1, 1);
    QFocusEvent out(QEvent::FocusOut, Qt::PopupFocusReason);
    QFocusEvent in(QEvent::FocusIn, Qt::PopupFocusReason);
    QCoreApplication::sendEvent(box, &out);
    QCoreApplication::sendEvent(box, &in);
    EXPECT_EQ(box->selectedText(), u"木");
}

TEST_F(Windows, EscapeClosesHelpAndDialogsAsTheirOwnWayOut) {
    start();
    main->host().show("stockFm1");
    const std::pair<const char*, const char*> windows[] = {{"Toolbar1(8)", "manualFm1"},
                                                           {"Toolbar1(3)", "searchFm1"},
                                                           {"Toolbar1(5)", "orderFm1"},
                                                           {"Toolbar1(2)", "timeDefineFm2"}};
    for (const auto& [button, name] : windows) {
        drive->click(QString::fromUtf8(button));
        ASSERT_NE(window(name), nullptr) << name;
        Driver(*window(name)).keyAtFocus(Qt::Key_Escape);
        EXPECT_EQ(window(name), nullptr) << name;
    }
    EXPECT_EQ(session().productTable->Filter(), u"");
}

TEST_F(Windows, F1OpensHelpFromEveryWindowWhateverBecameOfTheMainWindow) {
    using Main = ViewHost::MainWindow;
    start();
    main->host().show("stockFm1");
    for (const auto& [name, mode] : {std::pair("searchFm1", Main::Stays),
                                     {"orderFm1", Main::Disabled},
                                     {"timeDefineFm2", Main::Disabled},
                                     {"product_displayFm1", Main::Disabled},
                                     {"buyFm1", Main::Hidden}}) {
        TopWindow* opened = main->host().openWindow(QString::fromUtf8(name), mode);
        ASSERT_TRUE(QTest::qWaitForWindowActive(opened)) << name;
        Driver(*opened).keyAtFocus(Qt::Key_F1);
        ASSERT_NE(window("manualFm1"), nullptr) << name;
        window("manualFm1")->finish();
        ASSERT_EQ(window(name), opened) << "help closes nothing else";
        opened->finish();
    }
}

TEST_F(Windows, AStatusTextGoesWhenTheViewChanges) {
    start();
    main->host().say({"told"});
    EXPECT_FALSE(status().isEmpty());
    drive->choose("show_stock");
    EXPECT_TRUE(status().isEmpty());
}

TEST_F(Windows, TheFiguresAreEmptyBesideTheBoxesWhereASearchFindsNothing) {
    start();
    main->host().show("productRegisterFm1");
    EXPECT_EQ(drive->text("Label7(0)") + drive->text("Label7(1)") + drive->text("Label7(2)"), u"10010");
    drive->type("Text3", "nothing");
    drive->click("Command2");
    EXPECT_EQ(drive->find<DataGrid>("DataGrid1")->emptyText(), u"没有符合条件的记录，按“全库显示”看全部");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(drive->text(QStringLiteral("Label7(%1)").arg(i)), u"");
    drive->click("Command3");
    EXPECT_EQ(drive->text("Label7(0)") + drive->text("Label7(1)") + drive->text("Label7(2)"), u"10010");
    prompts.expectConfirm("确实要删除此记录吗？", true);
    drive->click("Command7");
    EXPECT_EQ(prompts.loss, u"产品 p1 打印纸，库存 10");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(drive->text(QStringLiteral("Label7(%1)").arg(i)), u"");
}

TEST_F(Windows, DeletingACustomerSaysHowManyOfHisLinesGo) {
    books.addLine("22", "7", "p1", "2004-01-06", 1, 1, 2);
    start();
    prompts.expectConfirm("确实要删除该记录吗？", false);
    drive->click("Command8");
    EXPECT_EQ(prompts.loss, u"客户 7 及其 1 条购物记录");
}

TEST_F(Windows, ASignThatWouldOverflowAStockOutIsNotTaken) {
    books.addProduct("p2", "钻", 1e140, 1e200, 1);
    start();
    drive->choose("no_Sales_stock1");
    drive->clickCell("DataGrid1", 1, "品名");
    drive->click("Command5");
    Driver dialog(*window("stock_ReturnFm3"));
    dialog.type("Text6(0)", "1e110");
    EXPECT_EQ(dialog.text("Text6(0)"), u"1e11");
    EXPECT_EQ(dialog.text("Text6(1)"), u"1E+211");
}

} // namespace

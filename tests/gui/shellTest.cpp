#include "recordset/error.h"
#include "shell/menuTree.h"
#include "shell/toolbarTable.h"
#include "shell/version.h"
#include "support/shopWindow.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTextEdit>
#include <QToolButton>
#include <QtTest/QTest>

#include <set>

namespace {

class Shell : public ShopWindow {
protected:
    QAction* action(const QString& name) { return main->findChild<QAction*>(name); }
    QString buttonStates() {
        QString states;
        for (int i = 2; i <= 9; ++i)
            states += main->findChild<QToolButton*>(QStringLiteral("Toolbar1(%1)").arg(i))->isEnabled()
                          ? u'1'
                          : u'0';
        return states;
    }
};

/// A view that notes what is asked of it.
class NotingView : public View {
public:
    NotingView(const QString& name, QStringList& notes)
        : View(name, name)
        , m_notes(notes) {
        offer(ViewOperation::data_whole_show, [this] { m_notes << "whole"; });
        offer(ViewOperation::data_order, [this] { m_notes << "order"; });
        offer(ViewOperation::data_print, [this] { m_notes << "print"; });
        offer(ViewOperation::data_search, [this] { m_notes << "search"; });
        offer(ViewOperation::Time_AA, [this] { m_notes << "time"; });
    }
    void activate() override { m_notes << "activate"; }
    void leave() override { m_notes << "leave"; }

private:
    QStringList& m_notes;
};

TEST_F(Shell, TheRegisterIsTheFirstViewAfterStartAndItsToolbarIsOff) {
    start();
    EXPECT_EQ(main->windowTitle(), u"衡商汇__衡商汇系统");
    EXPECT_EQ(session().activeViewName, u"dataInputFm1");
    EXPECT_TRUE(main->host().isActive("dataInputFm1"));
    EXPECT_EQ(main->findChild<QListWidget*>("List2")->item(0)->text(), u"dataInputFm1");
    EXPECT_EQ(session().viewReturnState, u"Open");
    EXPECT_EQ(session().safetyStock, 2);
    EXPECT_EQ(buttonStates(), u"00000011");
    main->host().show("productRegisterFm1");
    EXPECT_EQ(buttonStates(), u"00000011");
}

TEST_F(Shell, StartRecountsTheCustomersTotals) {
    books.addClient("7");
    books.addLine("1", "7", "p", "2004-01-05", 2, 100, 40);
    start();
    EXPECT_EQ(books.stored("SELECT 消费合计, 差额利润率 FROM clientTable"), u"100.0|20%");
}

TEST_F(Shell, EveryMenuLeafIsACommand) {
    start();
    for (const MenuRow& row : menuTree()) {
        ASSERT_NE(action(row.control.toString()), nullptr) << row.control.toString().toStdString();
        EXPECT_EQ(action(row.control.toString())->text(), row.caption.toString());
        EXPECT_EQ(action(row.control.toString())->isSeparator(), row.caption.isEmpty());
        EXPECT_TRUE(action(row.control.toString())->isEnabled());
        EXPECT_TRUE(row.command.isEmpty() || main->commands().has(row.command.toString()))
            << row.command.toString().toStdString();
    }
}

TEST_F(Shell, OpeningTheMarketingMenuSetsTheWholeTableAndClosingItWithoutACommandPutsItBack) {
    start();
    session().showSource = ShowSource(7);
    QMenu* menu = action("data_input")->menu();
    Q_EMIT menu->aboutToShow();
    EXPECT_EQ(session().showSource, ShowSource(1));
    Q_EMIT menu->aboutToHide();
    QCoreApplication::processEvents();
    EXPECT_EQ(session().showSource, ShowSource(7));
    Q_EMIT menu->aboutToShow();
    Q_EMIT menu->aboutToHide();
    drive->choose("management_client");
    QCoreApplication::processEvents();
    EXPECT_EQ(session().showSource, ShowSource(1));
}

TEST_F(Shell, ACommandForTheViewInFrontClearsThreeFiltersAndLeavesTheView) {
    books.addClient("7");
    books.addClient("8");
    books.addProduct("p", "纸", 1, 1, 1);
    books.addLine("1", "7", "p", "2004-01-05", 1, 1, 1);
    start();
    View* view = main->host().active();
    session().clientTable->setFilter("客户编号 = '8'");
    session().buyList->setFilter("客户编号 = '8'");
    session().productTable->setFilter("产品编号 = 'x'");
    drive->choose("management_client");
    EXPECT_EQ(main->host().active(), view);
    EXPECT_EQ(session().clientTable->Filter() + session().buyList->Filter() +
                  session().productTable->Filter(),
              u"");
    EXPECT_EQ(main->findChild<QListWidget*>("List2")->count(), 1);
}

TEST_F(Shell, AViewIsUnloadedWhenAnotherTakesItsPlaceAndStatisticFm1OnlyHidden) {
    start();
    QStringList notes;
    main->host().registerView("statisticFm1", [&] { return new NotingView("statisticFm1", notes); });
    main->host().show("statisticFm1");
    EXPECT_EQ(main->findChild<View*>("dataInputFm1"), nullptr);
    drive->choose("maintain_product");
    EXPECT_NE(main->findChild<View*>("statisticFm1"), nullptr);
    EXPECT_FALSE(main->findChild<View*>("statisticFm1")->isVisible());
    drive->choose("management_client");
    EXPECT_EQ(main->findChild<View*>("productRegisterFm1"), nullptr);
    EXPECT_EQ(notes, (QStringList{"activate", "leave"}));
    EXPECT_EQ(main->findChild<QListWidget*>("List2")->count(), 4);
}

TEST_F(Shell, ClosingAndHidingUnknownNamesDoesNothing) {
    start();
    main->host().Fm_Close("nobody");
    main->host().Fm_Visible_Not("nobody");
    EXPECT_TRUE(main->host().isActive("dataInputFm1"));
}

TEST_F(Shell, EachViewGetsTheButtonsOfItsRowAndAnUnknownNameKeepsTheLast) {
    start();
    for (const ToolbarRow& row : toolbarTable()) {
        session().activeViewName = row.view.toString();
        main->Tool_show_control();
        QString expected;
        for (const bool on :
             {row.serves(ViewOperation::Time_AA), row.serves(ViewOperation::data_search),
              row.serves(ViewOperation::data_whole_show), row.serves(ViewOperation::data_order),
              row.serves(ViewOperation::data_order), row.serves(ViewOperation::data_print), true, true})
            expected += on ? u'1' : u'0';
        EXPECT_EQ(buttonStates(), expected) << row.view.toString().toStdString();
    }
    session().activeViewName = "userInfoFm1";
    main->Tool_show_control();
    session().activeViewName = "searchFm1";
    main->Tool_show_control();
    EXPECT_EQ(buttonStates(), u"11111111");
}

TEST_F(Shell, TheTableNamesTheShortfallListWithASmallLetterAndBothFormsCount) {
    ASSERT_NE(toolbarRow(u"stockFm2"), nullptr);
    EXPECT_EQ(toolbarRow(u"StockFm2"), toolbarRow(u"stockFm2"));
    EXPECT_TRUE(toolbarRow(u"StockFm2")->serves(ViewOperation::data_print));
    EXPECT_FALSE(toolbarRow(u"StockFm2")->serves(ViewOperation::data_order));
    EXPECT_EQ(toolbarRow(u"manualFm1"), nullptr);
}

TEST_F(Shell, ToolbarCommandsReachTheActiveViewSoFarAsTheTableHasThem) {
    start();
    QStringList notes;
    main->host().registerView("userInfoFm2", [&] { return new NotingView("userInfoFm2", notes); });
    main->host().show("userInfoFm2");
    notes.clear();
    session().viewReturnState = "Close";
    main->show_A();
    EXPECT_EQ(session().viewReturnState, u"Open");
    main->statistic_Time(); // the table has no period for this view
    drive->click("Toolbar1(3)");
    drive->click("Toolbar1(5)");
    EXPECT_EQ(session().sortDirection, 1);
    drive->click("Toolbar1(6)");
    EXPECT_EQ(session().sortDirection, 2);
    drive->click("Toolbar1(7)");
    EXPECT_EQ(notes, (QStringList{"whole", "activate", "search", "order", "order", "print"}));
}

TEST_F(Shell, ToolbarCommandsOnAViewWithoutThemDoNothing) {
    start();
    main->show_A();
    main->search_A();
    main->print_A();
    main->order_A(2);
    main->statistic_Time();
    EXPECT_TRUE(main->host().isActive("dataInputFm1"));
}

TEST_F(Shell, ShortcutsObeyTheToolbarTable) {
    start();
    QStringList notes;
    main->host().registerView("userInfoFm1", [&] { return new NotingView("userInfoFm1", notes); });
    main->activateWindow();
    QTest::keyClick(main.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(main.get(), Qt::Key_F5);
    EXPECT_TRUE(notes.isEmpty());
    main->host().show("userInfoFm1");
    notes.clear();
    QTest::keyClick(main.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(main.get(), Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(notes, (QStringList{"search", "print"}));
}

TEST_F(Shell, ExitAsksAndEndsOnlyOnOk) {
    start();
    prompts.expectConfirm("确实要退出该系统吗？", false);
    drive->choose("exit");
    EXPECT_FALSE(ended);
    prompts.expectConfirm("确实要退出该系统吗？", true);
    drive->click("Toolbar1(9)");
    EXPECT_TRUE(ended);
}

TEST_F(Shell, TheCloseBoxAsksLikeExit) {
    start();
    prompts.expectConfirm("确实要退出该系统吗？", false);
    EXPECT_FALSE(main->close());
    EXPECT_TRUE(main->isVisible());
}

TEST_F(Shell, TheWelcomeMessageComesFromThePicture) {
    start();
    EXPECT_FALSE(shown("Picture1"));
    prompts.expectMessage("欢迎使用《衡商汇系统》，请选择菜单，开始运行！", "提示信息");
    main->findChild<QPushButton*>("Picture1")->click();
}

TEST_F(Shell, HelpShowsTheGuideBesideTheMainWindowAndAMissingFileAnEmptyPage) {
    start();
    drive->choose("help");
    ASSERT_NE(window("manualFm1"), nullptr);
    EXPECT_EQ(window("manualFm1")->findChild<QTextEdit*>("RichTextBox1")->toPlainText(), u"");
    EXPECT_EQ(window("manualFm1")->findChild<QLabel*>("version")->text(), programVersion());
    EXPECT_TRUE(main->isEnabled());
    EXPECT_TRUE(main->isVisible());
    Driver(*window("manualFm1")).click("Command1");
    EXPECT_EQ(window("manualFm1"), nullptr);
    QFile guide(session().appPath + "/用户指南(衡商汇).txt");
    ASSERT_TRUE(guide.open(QIODevice::WriteOnly));
    guide.write("第一章");
    guide.close();
    drive->click("Toolbar1(8)");
    EXPECT_EQ(window("manualFm1")->findChild<QTextEdit*>("RichTextBox1")->toPlainText(), u"第一章");
    window("manualFm1")->close();
}

TEST_F(Shell, ACustomerWithoutLinesHasNoOrders) {
    books.addClient("7");
    start();
    prompts.expectMessage("该客户无购物记录！");
    drive->choose("show_one_client2");
}

TEST_F(Shell, TheClerksCustomersWantTheClerksFirst) {
    start();
    prompts.expectMessage("请先显示业务员业绩统计！");
    drive->choose("statistic_achievement2");
}

TEST_F(Shell, AFailingStatementOfAMenuCommandIsPassedOver) {
    start();
    main->commands().add("management_client",
                         [](IgnoringErrors& errors) { errors.run([] { fail(3001, "x"); }); });
    drive->choose("management_client");
}

} // namespace

#include "controls/dataGrid.h"
#include "support/shopWindow.h"
#include "support/startAtOnce.h"

#include <QComboBox>
#include <QRadioButton>

namespace {

class PeriodWindow : public ShopWindow {
protected:
    PeriodWindow() {
        books.addClient("7", "甲");
        books.addProduct("p1", "打印纸", 5, 2, 9);
        books.addLine("1", "7", "p1", "2003-12-05", 1, 10, 1);
        books.addLine("2", "7", "p1", "2004-12-05", 1, 20, 1);
        books.addLine("3", "7", "p1", "2005-01-05", 1, 40, 1);
    }
    void open(const char* name = "timeDefineFm2") {
        if (!main)
            start();
        main->host().openWindow(QString::fromUtf8(name), ViewHost::MainWindow::Stays);
        form = name;
        ASSERT_NE(window(name), nullptr);
        time = std::make_unique<Driver>(*window(name));
    }
    bool isOpen() { return window(form) != nullptr; }
    bool on(const char* option) { return time->find<QRadioButton>(QString::fromUtf8(option))->isChecked(); }
    QString shown(const char* box) { return time->find<QComboBox>(QString::fromUtf8(box))->currentText(); }

    /// Sells one piece of the first product to the first customer.
    void sell(MDIForm1& shop, int sales) {
        Driver register_(shop);
        if (sales == 1)
            register_.choose("management_client");
        register_.click("Command7");
        TopWindow* purchase = shop.host().window("buyFm1");
        ASSERT_NE(purchase, nullptr);
        Driver buy(*purchase);
        buy.clickCell("DataGrid1", 0, "品名");
        buy.type("Text4(10)", "1");
        prompts.expectMessage("已记入购物表！");
        buy.click("Command2");
        prompts.expectConfirm("购买总数量： 1\n总金额：9\n确认结算吗？", true);
        buy.click("Command1");
        buy.click("Command4");
        QCoreApplication::processEvents();
    }

    const char* form = "";
    std::unique_ptr<Driver> time;
};

TEST_F(PeriodWindow, OpensBlankOnTheStartSideWithItsLists) {
    open();
    EXPECT_EQ(window("timeDefineFm2")->windowTitle(), u"时间选择");
    EXPECT_EQ(time->entries("Combo1"), (QStringList{"2003", "2004", "2005"}));
    EXPECT_EQ(time->entries("Combo2").size(), 12);
    EXPECT_EQ(time->entries("Combo3"), (QStringList{"1", "2", "3", "4"}));
    EXPECT_EQ(time->entries("Combo4").last(), u"31");
    EXPECT_TRUE(on("Option1"));
    EXPECT_FALSE(on("Option2") || on("Option3") || on("Option4") || on("Option5") || on("Option6"));
    EXPECT_EQ(time->text("Text1") + time->text("Text2"), u"");
    const char* captions[] = {"年", "月", "季", "日"};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(time->text(QStringLiteral("Label1(%1)").arg(i)), QString::fromUtf8(captions[i]));
    EXPECT_EQ(time->text("Label3") + time->text("Label4") + time->text("Label5"),
              u"起始时间<= 时间范围 <=终止时间");
    const char* hints[] = {"年份选择", "月份选择", "季度选择", "日期选择"};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(time->find<QComboBox>(QStringLiteral("Combo%1").arg(i + 1))->placeholderText(),
                  QString::fromUtf8(hints[i]));
}

TEST_F(PeriodWindow, WithoutLinesThereIsNoYearAndConfirmingDoesNothing) {
    books.execute("DELETE FROM buyList");
    open();
    EXPECT_TRUE(time->entries("Combo1").isEmpty());
    time->click("Option5");
    time->click("Command1");
    EXPECT_TRUE(isOpen());
    EXPECT_FALSE(session().buyList2->isOpen());
}

TEST_F(PeriodWindow, PicksAreShownAndEchoedByTheComparisons) {
    open();
    time->pick("Combo1", "2004");
    time->pick("Combo2", "12");
    time->pick("Combo4", "5");
    EXPECT_EQ(time->text("Text1"), u"2004-12-5");
    time->pick("Combo4", "5");
    EXPECT_EQ(time->text("Text1"), u"2004-12-5-5") << "picked twice it stands there twice";
    const char* options[] = {"Option3", "Option4", "Option5"};
    for (int i = 0; i < 3; ++i) {
        time->click(QString::fromUtf8(options[i]));
        EXPECT_EQ(time->text(QStringLiteral("Label2(%1)").arg(i)), u"2004-12-5-5");
    }
    time->click("Option2");
    EXPECT_EQ(shown("Combo1") + shown("Combo2") + shown("Combo3") + shown("Combo4"), u"")
        << "the end side starts from blank boxes";
    time->pick("Combo1", "2005");
    time->pick("Combo3", "2");
    EXPECT_EQ(time->text("Text2"), u"2005年季度") << "the end quarter is read from the month box";
    time->click("Option6");
    EXPECT_EQ(time->text("Label3") + u'|' + time->text("Label5"), u"2004-12-5-5|2005年季度");
}

TEST_F(PeriodWindow, ALaterPickBlanksTheBoxesItReplaces) {
    open();
    time->pick("Combo1", "2004");
    time->pick("Combo2", "12");
    EXPECT_EQ(shown("Combo2"), u"12");
    time->pick("Combo3", "2");
    EXPECT_EQ(shown("Combo2"), u"");
    time->pick("Combo1", "2003");
    EXPECT_EQ(shown("Combo3"), u"");
}

TEST_F(PeriodWindow, EveryRefusalIsToldAndTheDialogStays) {
    open();
    prompts.expectMessage("请选择年份！");
    time->pick("Combo2", "3");
    prompts.expectMessage("请选择年份！");
    time->pick("Combo3", "3");
    time->pick("Combo1", "2004");
    prompts.expectMessage("请选择月份！");
    time->pick("Combo4", "3");
    prompts.expectMessage("请选择比较范围！");
    time->click("Command1");
    time->click("Option6");
    prompts.expectMessage("请输入第二个比较时间！");
    time->click("Command1");
    EXPECT_TRUE(isOpen());
    EXPECT_FALSE(session().buyList2->isOpen());
}

TEST_F(PeriodWindow, CancelBuildsNothingAndLeavesTheMarkers) {
    open();
    session().showSource = ShowSource(15);
    time->pick("Combo1", "2004");
    time->click("Option5");
    time->click("Command2");
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(session().buyList2->isOpen());
    EXPECT_EQ(session().showSource, ShowSource(15));
    EXPECT_EQ(session().periodStart, u"");
}

TEST_F(PeriodWindow, EscapeIsCancelAndEnterConfirms) {
    open();
    time->key("timeDefineFm2", Qt::Key_Escape);
    EXPECT_FALSE(isOpen());
    open();
    time->pick("Combo1", "2004");
    time->click("Option5");
    time->key("timeDefineFm2", Qt::Key_Return);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(session().buyList2->RecordCount(), 1);
    EXPECT_EQ(session().periodStart, u"2004");
    EXPECT_EQ(session().periodEnd, u"");
}

TEST_F(PeriodWindow, TheEnterOfTheNumberBlockConfirmsToo) {
    open();
    time->pick("Combo1", "2004");
    time->click("Option5");
    time->key("timeDefineFm2", Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(session().periodStart, u"2004");
}

TEST_F(PeriodWindow, DecemberWithGreaterLosesTheCopiesAndASaleStillWorksNowAndAfterARestart) {
    open();
    time->pick("Combo1", "2004");
    time->pick("Combo2", "12");
    time->click("Option3");
    time->click("Command1");
    EXPECT_FALSE(isOpen()) << "no message comes";
    EXPECT_FALSE(session().buyList2->isOpen());
    EXPECT_EQ(books.stored("SELECT name FROM sqlite_master WHERE name IN ('buyList2', 'clientTable2')"), u"");
    sell(*main, 1);
    main.reset();
    EXPECT_EQ(databaseFault(books.path()), u"");
    Session again(books.path());
    again.appPath = session().appPath;
    MDIForm1 second(again, prompts);
    registerAll(second, prompts);
    second.show();
    startAtOnce(second);
    sell(second, 2);
    EXPECT_EQ(books.stored("SELECT count(*) FROM buyList"), u"5");
}

TEST_F(PeriodWindow, AConfirmedPeriodOutlivesItsDialogAndAnUnconfirmedOneDoesNotTouchIt) {
    open();
    time->pick("Combo1", "2004");
    time->click("Option5");
    time->click("Command1");
    open();
    EXPECT_EQ(time->text("Text1"), u"") << "the dialog starts blank";
    time->pick("Combo1", "2005");
    time->click("Command2");
    EXPECT_EQ(session().periodStart, u"2004");
}

TEST_F(PeriodWindow, LeavingTheViewClosesTheDialog) {
    start();
    drive->choose("whole_show_product");
    drive->click("Toolbar1(2)");
    ASSERT_NE(window("timeDefineFm2"), nullptr);
    drive->choose("show_stock");
    EXPECT_EQ(window("timeDefineFm2"), nullptr);
    EXPECT_EQ(session().showSource, ShowSource(3));
}

TEST_F(PeriodWindow, TheRegistersDialogPrintsTheCustomersOfAPeriod) {
    start();
    session().showSource = ShowSource(1);
    session().periodPurpose = "打印客户资料";
    open("timeDefineFm22");
    time->pick("Combo1", "2004");
    time->click("Option3"); // from 2005 on, and nobody bought behind 2005-1-5
    time->click("Command1");
    EXPECT_FALSE(isOpen());
    ASSERT_NE(window("showprint_rs7"), nullptr);
    EXPECT_EQ(session().showSource, ShowSource(7));
    EXPECT_EQ(session().clientShowSource, ShowSource(7));
    window("showprint_rs7")->close();
}

TEST_F(PeriodWindow, TheRegistersDialogStaysWhereNobodyBought) {
    start();
    session().showSource = ShowSource(1);
    session().periodPurpose = "打印客户资料";
    open("timeDefineFm22");
    time->pick("Combo1", "2005");
    time->click("Option3");
    prompts.expectMessage("该时间段内无客户数据！");
    time->click("Command1");
    EXPECT_TRUE(isOpen());
}

TEST_F(PeriodWindow, TheRegistersDialogForAnotherPurposeSetsFortyRowsAPage) {
    start();
    session().showSource = ShowSource(1);
    session().periodPurpose = "显示";
    open("timeDefineFm22");
    time->pick("Combo1", "2004");
    time->click("Option5");
    time->click("Command1");
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(session().clientTable2->PageSize(), 40);
    EXPECT_FALSE(session().product_Bank2->isOpen());
}

TEST_F(PeriodWindow, TheOldestDialogFiltersTheShownCursorAlone) {
    start();
    session().showSource = ShowSource(2);
    open("timeDefineFm1");
    time->pick("Combo1", "2003");
    time->click("Option3");
    time->click("Command1");
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(session().buyList->Filter(), u"日期 > #2003-12-31#");
    EXPECT_EQ(session().periodDate1 + u'/' + session().periodDate2, u"2004-12-5/2005-1-5");
    EXPECT_FALSE(session().buyList2->isOpen());
}

TEST_F(PeriodWindow, TheOldestDialogPassesOverAConditionThatFails) {
    start();
    session().showSource = ShowSource(2);
    open("timeDefineFm1");
    time->pick("Combo1", "2004");
    time->pick("Combo3", "2");
    time->click("Option5");
    time->click("Command1");
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(session().buyList->Filter(), u"");
}

} // namespace

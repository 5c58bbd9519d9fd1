// The lists of customers to be called, from the register's menu to paper.
#include "support/contextMenu.h"
#include "support/drillShop.h"

#include <QClipboard>

namespace {

class CallListWindows : public DrillShop {
protected:
    /// Today is 2004-11-21. Customers 1 to 3 bought last on 2004-3-5, 2004-5-20 and 2004-5-21.
    void open(const char* caption, const char* name) {
        fill();
        books.changeBehind("UPDATE clientTable SET 生日 = '1980-12-24' WHERE 客户编号 = '1'");
        books.changeBehind("UPDATE clientTable SET 生日 = '11月25日', 手机 = '139' WHERE 客户编号 = '2'");
        books.changeBehind("UPDATE clientTable SET 生日 = '八月十五' WHERE 客户编号 = '3'");
        start();
        view().find<DataGrid>("DataGrid1")->recordset()->setFilter("客户编号 = '3'");
        ask(caption, name);
    }
    void ask(const char* caption, const char* name) {
        chooseInMenuOf(*view().find<DataGrid>("DataGrid1")->viewport(), QString::fromUtf8(caption));
        ASSERT_NE(window(name), nullptr);
        list = std::make_unique<Driver>(*window(name));
    }
    QString column(const char* name) {
        QStringList cells;
        for (int row = 0; row < list->rows("DataGrid1"); ++row)
            cells << list->cell("DataGrid1", row, QString::fromUtf8(name));
        return cells.join(u' ');
    }
    std::unique_ptr<Driver> list;
};

TEST_F(CallListWindows, BirthdaysAreListedBesideTheRegisterWhateverItsSearch) {
    open("近期生日", "birthdayFm1");
    EXPECT_EQ(window("birthdayFm1")->windowTitle(), u"近期生日");
    EXPECT_TRUE(main->isEnabled()) << "who is called can be looked up meanwhile";
    EXPECT_EQ(column("客户编号"), u"2");
    EXPECT_EQ(column("近期生日"), u"2004-11-25");
    EXPECT_EQ(column("天数"), u"4");
    EXPECT_EQ(list->text("Label1"), u"2004-11-21 至 2004-12-20 过生日：1 位");
    EXPECT_EQ(list->text("Label2"), u"按全部客户资料；1 位的生日认不出，没有列入");
    EXPECT_EQ(list->text("Text1"), u"1/1");
    list->click("return");
    EXPECT_EQ(window("birthdayFm1"), nullptr);
    EXPECT_EQ(session().clientTable->Filter(), u"客户编号 = '3'");
}

TEST_F(CallListWindows, TheLapsedFollowTheChoiceOfDays) {
    open("久未购买", "lapsedFm1");
    EXPECT_EQ(column("客户编号"), u"1 2 3") << "highest 消费合计 first";
    EXPECT_EQ(column("最近购买"), u"2004-3-5 2004-5-20 2004-5-21");
    list->click("Option3");
    EXPECT_EQ(list->rows("DataGrid1"), 0);
    EXPECT_EQ(list->find<DataGrid>("DataGrid1")->emptyText(), u"没有久未购买的客户。");
    EXPECT_EQ(list->text("Text1"), u"0/0");
    list->click("print");
    EXPECT_EQ(window("print_lapsed"), nullptr) << "nothing to print";
    list->click("Option2");
    EXPECT_EQ(column("客户编号"), u"1 2 3");
    EXPECT_EQ(list->text("Label1"), u"到 2004-11-21 已有 180 天以上没有购买：3 位");
}

TEST_F(CallListWindows, AskedAgainTheListIsMadeAnewInTheSameWindow) {
    open("久未购买", "lapsedFm1");
    TopWindow* first = window("lapsedFm1");
    list->click("Option2");
    books.addLine("9009", "1", "p1", "2004-11-20", 1, 10, 4);
    session().reopen(session().buyList, "Select * From buyList ");
    ask("久未购买", "lapsedFm1");
    EXPECT_EQ(window("lapsedFm1"), first);
    EXPECT_EQ(column("客户编号"), u"2 3");
    EXPECT_TRUE(list->text("Label1").contains(u"180")) << "the choice stays";
}

TEST_F(CallListWindows, ACaptionSortsAndThePageKeepsThatOrder) {
    open("久未购买", "lapsedFm1");
    auto* grid = list->find<DataGrid>("DataGrid1");
    Q_EMIT grid->sortAsked("最近购买", true);
    EXPECT_EQ(column("客户编号"), u"3 2 1");
    EXPECT_EQ(list->text("Text1"), u"1/3");
    list->click("print");
    const QStringList texts = page("print_lapsed");
    EXPECT_LT(texts.indexOf("单位3"), texts.indexOf("单位1")) << texts.join(u' ').toStdString();
    for (const char* text : {"久 未 购 买", "到 2004-11-21 已有 90 天以上没有购买：3 位", "按全部购物记录",
                             "2004-5-21", "最近购买", "60", "第 1 页"})
        EXPECT_TRUE(texts.contains(QString::fromUtf8(text))) << text << texts.join(u' ').toStdString();
    Q_EMIT grid->sortAsked("消费合计", false);
    EXPECT_EQ(column("客户编号"), u"3 2 1");
}

TEST_F(CallListWindows, ThePageOfBirthdaysBearsTheirHeadAndTheWindowTakesNoInputMeanwhile) {
    open("近期生日", "birthdayFm1");
    list->click("print");
    EXPECT_FALSE(window("birthdayFm1")->isEnabled());
    EXPECT_FALSE(main->isEnabled());
    const QStringList texts = page("print_birthdays");
    for (const char* text : {"近 期 生 日", "2004-11-21 至 2004-12-20 过生日：1 位",
                             "按全部客户资料；1 位的生日认不出，没有列入", "2004-11-25", "11月25日", "139"})
        EXPECT_TRUE(texts.contains(QString::fromUtf8(text))) << text << texts.join(u' ').toStdString();
    EXPECT_TRUE(window("birthdayFm1")->isEnabled());
    EXPECT_TRUE(main->isEnabled());
}

TEST_F(CallListWindows, RowsAreCopiedUnderTheirCaptions) {
    open("近期生日", "birthdayFm1");
    list->clickCell("DataGrid1", 0, "联系人");
    list->key("DataGrid1", Qt::Key_C, Qt::ControlModifier);
    const QString copied = QApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith(u"近期生日\t天数\t客户编号")) << copied.toStdString();
    EXPECT_TRUE(copied.contains(u"\n2004-11-25\t4\t2\t单位2")) << copied.toStdString();
}

TEST_F(CallListWindows, CloseWhenAPurchaseBeginsAndByEscape) {
    open("久未购买", "lapsedFm1");
    QTest::keyClick(window("lapsedFm1"), Qt::Key_Escape);
    EXPECT_EQ(window("lapsedFm1"), nullptr);
    ask("久未购买", "lapsedFm1");
    view().click("Command7");
    EXPECT_EQ(window("lapsedFm1"), nullptr);
    ASSERT_NE(window("buyFm1"), nullptr);
    window("buyFm1")->close();
}

TEST_F(CallListWindows, OfAnEmptyShopSayThatNobodyIsToBeCalled) {
    start();
    ask("近期生日", "birthdayFm1");
    EXPECT_EQ(list->text("Text1"), u"0/0");
    EXPECT_EQ(list->text("Label2"), u"按全部客户资料");
    ask("久未购买", "lapsedFm1");
    EXPECT_EQ(list->rows("DataGrid1"), 0);
}

} // namespace

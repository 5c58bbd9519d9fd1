#include "controls/dataGrid.h"
#include "support/shopWindow.h"

#include <QListWidget>

namespace {

class StockViews : public ShopWindow {
protected:
    StockViews() {
        books.addProduct("p1", "打印纸", 5, 2, 9);
        books.addProduct("p2", "硒鼓", 2, 10, 30);
        books.addProduct("p3", "墨盒", 3, 1, 2);
        books.execute("UPDATE productTable SET 日期 = '2004-03-01' WHERE 产品编号 = 'p1'");
        books.execute("UPDATE productTable SET 日期 = '2004-02-01' WHERE 产品编号 = 'p2'");
        books.execute("UPDATE product_Bank SET 日期 = '2004-02-01' WHERE 产品编号 = 'p1'");
        books.addLine("1", "7", "p1", "2003-05-05", 1, 1, 1);
        books.addLine("2", "7", "p1", "2004-05-05", 1, 1, 1);
    }
    void show(const char* command) {
        start();
        drive->choose(QString::fromUtf8(command));
    }
    /// Confirms a period of one year for the view in front.
    void periodOf(const char* year) {
        drive->click("Toolbar1(2)");
        Driver time(*window("timeDefineFm2"));
        time.pick("Combo1", QString::fromUtf8(year));
        time.click("Option5");
        time.click("Command1");
    }
    QString numbers() {
        QStringList texts;
        for (int i = 0; i < drive->rows("DataGrid1"); ++i)
            texts << drive->cell("DataGrid1", i, "产品编号");
        return texts.join(u' ');
    }
    QString dates() { return drive->text("Text2") + u'/' + drive->text("Text3"); }
    DataGrid* grid() { return drive->find<DataGrid>("DataGrid1"); }
};

TEST_F(StockViews, AnActivationSortsByDateAndStandsOnTheLastRow) {
    show("show_stock");
    EXPECT_EQ(numbers(), u"p3 p2 p1");
    EXPECT_EQ(drive->text("Text1"), u"3/3");
    EXPECT_EQ(dates(), u"2004-1-5/2004-3-1");
    EXPECT_EQ(session().displayDate1 + u'/' + session().displayDate2, u"2004-1-5/2004-3-1");
    EXPECT_EQ(session().currentProductNum, u"p1");
    EXPECT_EQ(session().showSource, ShowSource(3));
    EXPECT_TRUE(grid()->isColumnHidden(0)) << "流水号";
    EXPECT_EQ(drive->text("Label5"), u"33");
    EXPECT_EQ(drive->text("Label7"), u"10");
}

TEST_F(StockViews, EveryMemberOpensFromItsMenuCommandWithItsCaptionAndNumber) {
    start();
    const std::tuple<const char*, const char*, const char*, int> members[] = {
        {"show_stock", "stockFm1", "销售库存显示", 3},
        {"whole_show_product", "stock_BankFm1", "产品入库明细显示", 15},
        {"show_return", "stock_ReturnFm2", "产品退货表显示", 18},
        {"show_on_use_Bank", "stock_no_use_BankFm2", "产品报废表显示", 20},
        {"show_out_of_Bank", "stock_out_of_BankFm2", "产品调拨表显示", 23}};
    for (const auto& [command, view, caption, number] : members) {
        drive->choose(QString::fromUtf8(command));
        ASSERT_TRUE(main->host().isActive(QString::fromUtf8(view))) << view;
        EXPECT_EQ(main->host().active()->caption(), QString::fromUtf8(caption));
        EXPECT_EQ(session().showSource, ShowSource(number)) << view;
        EXPECT_EQ(drive->find<QWidget>("Text2")->toolTip(), u"时间显示");
        for (int i = 2; i <= 7; ++i)
            EXPECT_TRUE(enabled(qPrintable(QStringLiteral("Toolbar1(%1)").arg(i)))) << view << i;
    }
}

TEST_F(StockViews, WithoutRowsThereIsNoDateAndNoPosition) {
    show("show_return");
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    EXPECT_EQ(dates(), u"0000-0-0/0000-0-0");
    EXPECT_EQ(session().displayDate1, u"0000-0-0");
    for (const char* button : {"Toolbar1(2)", "Toolbar1(3)", "Toolbar1(5)", "Toolbar1(7)"})
        drive->click(button);
    for (const char* dialog : {"timeDefineFm2", "searchFm1", "orderFm1", "showprint_rs18"})
        EXPECT_EQ(window(dialog), nullptr) << dialog;
    drive->click("Toolbar1(4)");
    drive->click("Command1(0)");
    EXPECT_EQ(drive->text("Text1"), u"0/0");
}

TEST_F(StockViews, AnEmptyStockIsWorthNothing) {
    books.execute("DELETE FROM productTable");
    show("show_stock");
    EXPECT_EQ(drive->text("Label5") + u'|' + drive->text("Label7"), u"0|0");
    EXPECT_EQ(session().currentProductNum, u"");
    drive->click("Command5");
    EXPECT_EQ(window("stockFm3"), nullptr);
}

TEST_F(StockViews, TheDateBoxesAreTheUsersToChangeAndTheReportsFollow) {
    show("show_stock");
    drive->type("Text2", "春");
    EXPECT_EQ(session().displayDate1, u"春");
}

TEST_F(StockViews, MovingRefreshesThePositionAndLeavesTheProductInHand) {
    show("show_stock");
    drive->click("Command1(0)");
    EXPECT_EQ(drive->text("Text1"), u"1/3");
    EXPECT_EQ(session().currentProductNum, u"p1") << "only a row chosen in the grid is taken in hand";
    drive->click("Command1(1)");
    EXPECT_EQ(drive->text("Text1"), u"1/3");
    drive->click("Command1(2)");
    drive->click("Command1(3)");
    drive->click("Command1(2)");
    EXPECT_EQ(drive->text("Text1"), u"3/3");
}

TEST_F(StockViews, ARowChosenInTheGridIsTheProductInHand) {
    show("show_stock");
    drive->clickCell("DataGrid1", 1, "品名");
    EXPECT_EQ(session().currentProductNum, u"p2");
    EXPECT_EQ(drive->text("Text1"), u"2/3");
}

TEST_F(StockViews, WholeShowTakesTheFilterOffAndTheActivationSortsByDateAgain) {
    show("show_stock");
    session().productTable->setFilter("产品编号 = 'p2'");
    drive->click("Toolbar1(4)");
    EXPECT_EQ(numbers(), u"p3 p2 p1") << "not by 品名, which stood there for a moment";
    EXPECT_EQ(session().productTable->Sort(), u"日期");
    EXPECT_EQ(session().productTable->Filter(), u"");
}

TEST_F(StockViews, AFilterFiguresTheSumsAgainAndKeepsThePosition) {
    show("show_stock");
    session().productTable->setFilter("产品编号 = 'p2' Or 产品编号 = 'p1'");
    EXPECT_EQ(drive->text("Label5") + u'|' + drive->text("Label7"), u"30|7");
    EXPECT_EQ(drive->text("Text1"), u"1/2");
}

TEST_F(StockViews, TheStockCommandInFrontGoesBackToTheWholeTable) {
    show("show_stock");
    periodOf("2004");
    ASSERT_EQ(session().showSource, ShowSource(4));
    books.execute(
        "INSERT INTO productTable SELECT 9, '2004-01-01', 'p9', '新', '', '', '', '', 1, 1, '100', 1");
    drive->choose("show_stock");
    EXPECT_EQ(session().showSource, ShowSource(3));
    EXPECT_EQ(session().stockShowSource, ShowSource(3));
    EXPECT_EQ(grid()->recordset(), session().productTable);
    EXPECT_EQ(session().productTable->Filter(), u"");
}

TEST_F(StockViews, APeriodOfTheStockShowsTheDatesOfItsRows) {
    books.execute("UPDATE productTable SET 日期 = '2005-01-01' WHERE 产品编号 = 'p1'");
    show("show_stock");
    periodOf("2004");
    EXPECT_EQ(session().showSource, ShowSource(4));
    EXPECT_EQ(session().stockShowSource, ShowSource(4));
    EXPECT_EQ(numbers(), u"p3 p2");
    EXPECT_EQ(dates(), u"2004-1-5/2004-2-1");
    EXPECT_EQ(drive->text("Text1"), u"2/2");
    EXPECT_EQ(session().currentProductNum, u"p2");
    EXPECT_EQ(drive->text("Label5"), u"23");
}

TEST_F(StockViews, APeriodOfTheStockWithoutRowsShowsThePeriod) {
    show("show_stock");
    periodOf("2003");
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    EXPECT_EQ(dates(), u"2003/");
    EXPECT_EQ(drive->text("Label5"), u"0");
}

TEST_F(StockViews, APeriodOfAHistoryShowsThePeriodWhateverItsRowsSay) {
    show("whole_show_product");
    EXPECT_EQ(dates(), u"2004-1-5/2004-2-1");
    EXPECT_TRUE(enabled("Command6"));
    periodOf("2004");
    EXPECT_EQ(session().showSource, ShowSource(16));
    EXPECT_EQ(dates(), u"2004/");
    EXPECT_EQ(drive->text("Text1"), u"1/3");
    EXPECT_FALSE(enabled("Command6")) << "a copy has nothing to delete";
    EXPECT_FALSE(drive->find<QWidget>("Command6")->toolTip().isEmpty());
    drive->click("Toolbar1(4)");
    EXPECT_EQ(session().showSource, ShowSource(15));
    EXPECT_EQ(dates(), u"2004-1-5/2004-2-1");
    EXPECT_TRUE(enabled("Command6"));
}

TEST_F(StockViews, CancelOverAPeriodGoesBackToTheWholeTable) {
    show("whole_show_product");
    periodOf("2003");
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    drive->click("Toolbar1(2)");
    EXPECT_EQ(session().showSource, ShowSource(15)) << "the asker sets it before the dialog opens";
    Driver(*window("timeDefineFm2")).click("Command2");
    EXPECT_EQ(window("timeDefineFm2"), nullptr);
    EXPECT_EQ(drive->text("Text1"), u"3/3");
    EXPECT_EQ(grid()->recordset(), session().product_Bank);
    EXPECT_EQ(dates(), u"2004-1-5/2004-2-1");
}

TEST_F(StockViews, TransfersHaveNoPeriodCopy) {
    books.execute(
        "INSERT INTO out_of_Bank (日期, 产品编号) VALUES ('2003-01-01', 'p1'), ('2004-01-01', 'p2')");
    show("show_out_of_Bank");
    periodOf("2004");
    EXPECT_EQ(session().showSource, ShowSource(23));
    EXPECT_EQ(drive->text("Text1"), u"2/2");
    EXPECT_EQ(dates(), u"2003-1-1/2004-1-1");
}

TEST_F(StockViews, ADeletedStockInRowLeavesTheStock) {
    show("whole_show_product");
    prompts.expectConfirm("确实要删除该记录吗？", false);
    drive->click("Command6");
    EXPECT_EQ(drive->rows("DataGrid1"), 3);
    drive->clickCell("DataGrid1", 0, "品名");
    prompts.expectConfirm("确实要删除该记录吗？", true);
    drive->click("Command6");
    EXPECT_EQ(drive->text("Text1"), u"1/2");
    EXPECT_EQ(books.stored("SELECT sum(数量) FROM productTable"), u"10.0");
    for (int i = 0; i < 2; ++i) {
        prompts.expectConfirm("确实要删除该记录吗？", true);
        drive->click("Command6");
    }
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    drive->click("Command6");
}

TEST_F(StockViews, OneProductIsShownInAWindowOfItsOwn) {
    show("show_stock");
    drive->clickCell("DataGrid1", 1, "品名");
    drive->click("Command5");
    TopWindow* one = window("stockFm3");
    ASSERT_NE(one, nullptr);
    EXPECT_EQ(one->windowTitle(), u"单项产品库存显示");
    EXPECT_TRUE(main->isVisible() && main->isEnabled());
    Driver product(*one);
    EXPECT_EQ(product.entries("List1").mid(0, 4), (QStringList{"产品编号----p2", "", "品名----硒鼓", ""}));
    EXPECT_EQ(product.text("Label2") + product.text("Label4"), u"2硒鼓");
    drive->clickCell("DataGrid1", 0, "品名");
    drive->click("Command5");
    EXPECT_EQ(window("stockFm3"), one) << "the open one is used again";
    EXPECT_EQ(product.text("Label4"), u"墨盒");
}

TEST_F(StockViews, TheShortfallListTakesTheThresholdAsShortAndTheNextOneNot) {
    show("show_stock");
    drive->click("Command6");
    ASSERT_TRUE(main->host().isActive("StockFm2"));
    EXPECT_EQ(main->host().active()->caption(), u"底于库存安全数的商品");
    EXPECT_EQ(numbers(), u"p2");
    EXPECT_EQ(drive->text("Text4"), u"2");
    EXPECT_EQ(drive->find<QWidget>("Text4")->toolTip(), u"库存安全数");
    EXPECT_EQ(drive->text("Label1"), u"需 补 充 库 存 产 品 清 单");
    drive->click("Command3(0)");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
    EXPECT_EQ(drive->text("Text4"), u"3");
    EXPECT_EQ(drive->text("Text1"), u"1/2");
    for (int i = 0; i < 3; ++i)
        drive->click("Command3(1)");
    EXPECT_EQ(drive->text("Text4"), u"0");
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    EXPECT_EQ(grid()->emptyText(), u"没有需要补充库存的产品。") << "\"全库显示\" would not help here";
    drive->click("Command3(1)");
    EXPECT_EQ(session().safetyStock, -1) << "there is no lower bound";
    drive->click("Command3(0)");
    drive->click("Command3(0)");
    drive->click("Command3(0)");
    EXPECT_EQ(drive->text("Text1"), u"1/1");
}

TEST_F(StockViews, AStockAboveTheThresholdIsToldUnderATitleWithItsBlank) {
    show("show_stock");
    session().safetyStock = 1;
    prompts.expectMessage("所有产品库存数大于1", "信息提示 ");
    drive->click("Command6");
    EXPECT_TRUE(main->host().isActive("stockFm1"));
    EXPECT_EQ(session().productTable->Filter(), u"");
    EXPECT_EQ(drive->rows("DataGrid1"), 3);
}

TEST_F(StockViews, GoingBackFromTheShortfallListTakesItsFilterOff) {
    show("show_stock3");
    EXPECT_EQ(session().productTable->Filter(), u"数量 <= 2");
    EXPECT_EQ(session().activeViewName, u"StockFm2");
    EXPECT_TRUE(enabled("Toolbar1(7)")) << "known to the toolbar as stockFm2";
    EXPECT_FALSE(enabled("Toolbar1(3)"));
    drive->choose("show_stock");
    EXPECT_EQ(session().productTable->Filter(), u"");
    EXPECT_EQ(drive->rows("DataGrid1"), 3);
}

TEST_F(StockViews, TheShortfallOfAPeriodIsThatOfTheCopy) {
    show("show_stock");
    periodOf("2004");
    drive->click("Command6");
    EXPECT_EQ(session().showSource, ShowSource(4));
    EXPECT_EQ(grid()->recordset(), session().productTable2);
    EXPECT_EQ(session().productTable2->Filter(), u"数量 <= 2");
    drive->click("Command3(1)");
    drive->click("Command3(1)");
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    drive->click("Command3(0)");
    drive->click("Command3(0)");
    EXPECT_EQ(drive->text("Text1"), u"1/1") << "the earlier filter is simply replaced";
}

TEST_F(StockViews, TheGatewaysOfStockInLeadToStockAndHistory) {
    show("maintain_product");
    session().productTable->setFilter("产品编号 = 'p2'");
    drive->click("Command10");
    EXPECT_TRUE(main->host().isActive("stockFm1"));
    EXPECT_EQ(drive->rows("DataGrid1"), 3);
    drive->choose("maintain_product");
    drive->click("Command11");
    EXPECT_TRUE(main->host().isActive("stock_BankFm1"));
}

TEST_F(StockViews, AnEmptyHistoryOrStockIsNotOpenedFromStockIn) {
    books.execute("DELETE FROM productTable");
    books.execute("DELETE FROM product_Bank");
    show("maintain_product");
    drive->click("Command10");
    drive->click("Command11");
    EXPECT_TRUE(main->host().isActive("productRegisterFm1"));
}

class StockStatistic : public StockViews {
protected:
    void open() {
        start();
        ASSERT_NE(main->host().openWindow("statisticFm4", ViewHost::MainWindow::Stays), nullptr);
        form = std::make_unique<Driver>(*window("statisticFm4"));
    }
    std::unique_ptr<Driver> form;
};

TEST_F(StockStatistic, ShowsTheStockWithItsSumsAndDates) {
    open();
    EXPECT_EQ(window("statisticFm4")->windowTitle(), u"库存统计");
    EXPECT_EQ(form->text("Label5") + u'|' + form->text("Label7"), u"33|10");
    EXPECT_EQ(form->text("Text2") + u'/' + form->text("Text3"), u"2004-1-5/2004-3-1");
    EXPECT_EQ(form->text("Text1"), u"3/3");
    form->click("Command1(0)");
    EXPECT_EQ(form->text("Text1"), u"1/3");
    EXPECT_EQ(session().showSource, session().stockShowSource);
}

TEST_F(StockStatistic, WithoutRowsShowsThePeriodAndZeros) {
    open();
    session().periodStart = "2003";
    session().periodEnd = "2004";
    session().productTable->setFilter("产品编号 = 'x'");
    QEvent activated(QEvent::WindowActivate);
    QCoreApplication::sendEvent(window("statisticFm4"), &activated);
    EXPECT_EQ(form->text("Text1"), u"0/0");
    EXPECT_EQ(form->text("Label5") + u'|' + form->text("Label7"), u"0|0");
    EXPECT_EQ(form->text("Text2") + u'/' + form->text("Text3"), u"2003/2004");
    form->click("print");
    EXPECT_EQ(window("print_rs3"), nullptr);
    form->click("whole_show");
    EXPECT_EQ(form->text("Text1"), u"3/3");
    EXPECT_EQ(session().showSource, ShowSource(3));
}

TEST_F(StockStatistic, AsksForAPeriodOfTheStockPrintsAndReturns) {
    open();
    form->click("select_time");
    EXPECT_EQ(session().showSource, ShowSource(3));
    Driver(*window("timeDefineFm2")).click("Command2");
    form->click("print");
    ASSERT_NE(window("print_rs3"), nullptr);
    EXPECT_FALSE(main->isEnabled());
    window("print_rs3")->close();
    EXPECT_TRUE(main->isEnabled());
    form->click("return");
    EXPECT_EQ(window("statisticFm4"), nullptr);
}

} // namespace

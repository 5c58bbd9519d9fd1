#include "controls/dataGrid.h"
#include "recordset/error.h"
#include "stock/stockOutForms.h"
#include "support/errorOf.h"
#include "support/shopWindow.h"

#include <QLineEdit>
#include <QPushButton>

namespace {

class StockOuts : public ShopWindow {
protected:
    StockOuts() {
        books.addProduct("p1", "打印纸", 10, 2.5, 9);
        books.addProduct("p2", "硒鼓", 2, 10, 30);
        books.addProduct("p3", "白纸", -2, 1, 2);
    }
    void open(const char* command = "no_Sales_stock1") {
        start();
        drive->choose(QString::fromUtf8(command));
    }
    /// Presses the movement's button and takes its dialog.
    void move(const char* name = "stock_ReturnFm3") {
        drive->click("Command5");
        ASSERT_NE(window(name), nullptr) << name;
        dialog = std::make_unique<Driver>(*window(name));
    }
    QString figures() {
        return drive->text("Label7(0)") + u' ' + drive->text("Label7(1)") + u' ' + drive->text("Label7(2)");
    }
    QString box(int index) { return drive->text(QStringLiteral("Text2(%1)").arg(index)); }
    void confirm(const char* question = "确认该产品退货及退货数量吗？") {
        prompts.expectConfirm(QString::fromUtf8(question), true);
        dialog->click("Command1");
    }
    QString returned() { return books.stored("SELECT 产品编号, 数量, 退货款, 说明 FROM return_Bank"); }
    QString stock() { return books.stored("SELECT 产品编号, 数量 FROM productTable ORDER BY rowid"); }

    std::unique_ptr<Driver> dialog;
};

TEST_F(StockOuts, TheChooserShowsStockAndProductWithTodaysDate) {
    open();
    EXPECT_EQ(main->host().active()->caption(), u"产品退货");
    EXPECT_EQ(drive->rows("DataGrid1"), 3);
    EXPECT_EQ(drive->text("Text1") + u'/' + drive->text("Text3"), u"2004-1-5/2004-1-5");
    EXPECT_EQ(drive->find<QWidget>("Text1")->toolTip(), u"时间显示");
    drive->clickCell("DataGrid1", 0, "品名");
    EXPECT_EQ(drive->text("Text5"), u"1/3");
    EXPECT_EQ(box(1) + u' ' + box(7) + u' ' + box(8), u"p1 10 2.5");
    EXPECT_EQ(box(0), u"2004-11-21") << "not the date of the product";
    drive->type("Text2(0)", "2003-1-1");
    EXPECT_EQ(box(0), u"2004-11-21") << "it cannot be chosen";
    EXPECT_EQ(figures(), u"10 0 10");
    EXPECT_TRUE(enabled("Toolbar1(5)"));
    EXPECT_FALSE(enabled("Toolbar1(7)"));
}

TEST_F(StockOuts, AnEmptyStockHasNoDateAndItsButtonDoesNothing) {
    books.execute("DELETE FROM productTable");
    open();
    EXPECT_EQ(drive->text("Text1") + u'/' + drive->text("Text3"), u"0000-0-0/0000-0-0");
    EXPECT_EQ(drive->text("Text5"), u"0/0");
    EXPECT_EQ(figures(), u"0 0 0");
    drive->click("Command5");
    EXPECT_EQ(window("stock_ReturnFm3"), nullptr);
    drive->click("Command3");
    EXPECT_EQ(drive->text("Text5"), u"0/0");
}

TEST_F(StockOuts, AReturnIsBookedWithItsAmountAtCost) {
    open();
    drive->clickCell("DataGrid1", 0, "品名");
    move();
    EXPECT_EQ(dialog->text("Text6(0)") + dialog->text("Text6(1)") + dialog->text("Text6(2)"), u"00");
    dialog->type("Text6(0)", "4");
    EXPECT_EQ(dialog->text("Text6(1)"), u"10");
    EXPECT_EQ(figures(), u"10 -4 10");
    dialog->type("Text6(2)", "破损");
    confirm();
    EXPECT_EQ(window("stock_ReturnFm3"), nullptr);
    EXPECT_EQ(returned(), u"p1|4.0|10.0|破损");
    EXPECT_EQ(stock(), u"p1|6.0;p2|2.0;p3|-2.0");
    EXPECT_EQ(figures(), u"10 -4 6");
    EXPECT_EQ(box(7), u"6");
    EXPECT_EQ(drive->text("Text5"), u"1/3") << "the chooser is not rebuilt";
    EXPECT_EQ(session().viewReturnState, u"Open");
}

TEST_F(StockOuts, ANumberAboveTheStockIsReplacedByIt) {
    open();
    drive->clickCell("DataGrid1", 1, "品名");
    move();
    prompts.expectMessage("退货数已超出现有销售库存数：2");
    dialog->type("Text6(0)", "5");
    EXPECT_EQ(dialog->text("Text6(0)"), u"2");
    EXPECT_EQ(dialog->text("Text6(1)"), u"20");
    EXPECT_EQ(figures(), u"2 -2 2");
}

TEST_F(StockOuts, AStockBelowZeroIsExceededByOneAndPutsItselfIntoTheBox) {
    open();
    drive->clickCell("DataGrid1", 2, "品名");
    move();
    prompts.expectMessage("退货数已超出现有销售库存数：-2");
    dialog->type("Text6(0)", "1");
    EXPECT_EQ(dialog->text("Text6(0)"), u"-2");
    EXPECT_EQ(figures(), u"-2 2 -2");
    confirm();
    EXPECT_EQ(stock(), u"p1|10.0;p2|2.0;p3|0.0") << "a negative quantity adds";
}

TEST_F(StockOuts, AQuantityOfZeroIsToldAndLeavesEverything) {
    open();
    move();
    prompts.expectMessage("请输入退货数量！");
    dialog->click("Command1");
    EXPECT_NE(window("stock_ReturnFm3"), nullptr);
    EXPECT_EQ(returned(), u"");
}

TEST_F(StockOuts, ACancelInTheQuestionChangesNothing) {
    open();
    drive->clickCell("DataGrid1", 0, "品名");
    move();
    dialog->type("Text6(0)", "4");
    prompts.expectConfirm("确认该产品退货及退货数量吗？", false);
    dialog->click("Command1");
    EXPECT_NE(window("stock_ReturnFm3"), nullptr);
    EXPECT_EQ(returned(), u"");
}

TEST_F(StockOuts, ACanceledDialogLeavesTheTypedFigureUntilTheRowChanges) {
    open();
    drive->clickCell("DataGrid1", 0, "品名");
    move();
    dialog->type("Text6(0)", "4");
    dialog->click("Command2");
    EXPECT_EQ(figures(), u"10 -4 10");
    EXPECT_EQ(returned(), u"");
    drive->clickCell("DataGrid1", 1, "品名");
    EXPECT_EQ(figures(), u"2 0 2");
}

TEST_F(StockOuts, TheAmountTypedOverIsWhatTheHistoryKeeps) {
    open();
    drive->clickCell("DataGrid1", 0, "品名");
    move();
    dialog->type("Text6(0)", "4");
    dialog->type("Text6(1)", "7.5");
    confirm();
    EXPECT_EQ(returned(), u"p1|4.0|7.5|");
    EXPECT_EQ(stock(), u"p1|6.0;p2|2.0;p3|-2.0");
}

TEST_F(StockOuts, WhateverProductIsCurrentAtTheConfirmationIsTheOneBooked) {
    open();
    const auto book = [this](auto change, const QString& product) {
        books.changeBehind("DELETE FROM return_Bank");
        session().reopen(session().return_Bank, "Select * From return_Bank");
        drive->click("Command3");
        drive->clickCell("DataGrid1", 1, "品名");
        move();
        dialog->type("Text6(0)", "1");
        change();
        EXPECT_EQ(box(1), product);
        const QString before =
            books.stored("SELECT 数量 - 1 FROM productTable WHERE 产品编号 = '" + product + "'");
        confirm();
        EXPECT_EQ(books.stored("SELECT 产品编号 FROM return_Bank"), product);
        EXPECT_EQ(books.stored("SELECT 数量 FROM productTable WHERE 产品编号 = '" + product + "'"), before);
    };
    book([] {}, "p2");
    book(
        [this] {
            drive->type("Text4", "纸");
            drive->click("Command2");
        },
        "p1");
    book([this] { drive->click("Command3"); }, "p1");
    book(
        [this] {
            drive->click("Toolbar1(6)");
            Driver order(*window("orderFm1"));
            order.clickItem("List1", "产品编号");
            order.click("Command1");
        },
        "p3");
    book([this] { drive->clickCell("DataGrid1", 0, "品名"); }, "p3");
}

TEST_F(StockOuts, WithoutACurrentProductNothingIsWrittenAndTheDialogStays) {
    open();
    drive->clickCell("DataGrid1", 0, "品名");
    move();
    dialog->type("Text6(0)", "1");
    drive->type("Text4", "没有的");
    drive->click("Command2");
    EXPECT_EQ(drive->rows("DataGrid1"), 0);
    EXPECT_EQ(figures(), u"0 0 0");
    confirm();
    EXPECT_NE(window("stock_ReturnFm3"), nullptr);
    EXPECT_EQ(returned(), u"");
}

TEST_F(StockOuts, ASearchShowsWhatItFindsAndShowAllTheRest) {
    open();
    drive->type("Text4", "纸");
    drive->click("Command2");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
    EXPECT_EQ(box(1), u"p1");
    drive->click("Command3");
    EXPECT_EQ(drive->rows("DataGrid1"), 3);
}

TEST_F(StockOuts, EachChooserOpensOnTheWholeStockWhateverSearchAnotherViewLeft) {
    start();
    for (const char* command : {"no_Sales_stock1", "no_Sales_stock2", "no_Sales_stock3"}) {
        drive->choose("maintain_product");
        drive->type("Text3", "鼓");
        drive->click("Command2");
        drive->choose(QString::fromUtf8(command));
        EXPECT_EQ(drive->rows("DataGrid1"), 3) << command;
        EXPECT_EQ(session().productTable->Filter(), u"") << command;
    }
}

TEST_F(StockOuts, ASearchThatBreaksTheConditionIsToldInTwoOfThemAndEndsTheThird) {
    start();
    for (const char* command : {"no_Sales_stock1", "no_Sales_stock2"}) {
        drive->choose(QString::fromUtf8(command));
        drive->type("Text4", "'");
        prompts.expectMessage("日期输入错误，请按 2004-2-1 或 2004-11-21 格式输入！");
        drive->click("Command2");
        EXPECT_EQ(drive->rows("DataGrid1"), 3);
    }
    drive->choose("no_Sales_stock3");
    drive->type("Text4", "'");
    EXPECT_EQ(errorOf([this] { drive->find<QAbstractButton>("Command2")->click(); }), ErrorNumber::BadText);
}

TEST_F(StockOuts, TransferAndScrapHaveTheirOwnWordsAndTables) {
    start();
    const std::tuple<const char*, const char*, const char*, const char*, const char*, const char*,
                     const char*>
        roads[] = {
            {"no_Sales_stock2", "stock_out_of_BankFm3", "请输入产品调拨数量！",
             "产品调拨数已超出现有销售库存数：2", "确认该产品调拨及调拨数量吗？", "out_of_Bank", "合计金额"},
            {"no_Sales_stock3", "stock_no_use_BankFm3", "请输入报废数量！",
             "产品报废数已超出现有销售库存数：2", "确认该产品报废及报废数量吗？", "no_use_Bank", "亏损金额"}};
    for (const auto& [command, name, zero, excess, question, table, amount] : roads) {
        books.changeBehind("UPDATE productTable SET 数量 = 2 WHERE 产品编号 = 'p2'");
        session().reopen(session().productTable, "Select * From productTable");
        drive->choose(QString::fromUtf8(command));
        drive->clickCell("DataGrid1", 1, "品名");
        move(name);
        prompts.expectMessage(QString::fromUtf8(zero));
        dialog->click("Command1");
        prompts.expectMessage(QString::fromUtf8(excess));
        dialog->type("Text6(0)", "3");
        confirm(question);
        EXPECT_EQ(books.stored(QStringLiteral("SELECT 产品编号, 数量, %1 FROM \"%2\"")
                                   .arg(QString::fromUtf8(amount), QString::fromUtf8(table))),
                  u"p2|2.0|20.0");
    }
}

TEST_F(StockOuts, ARefusedTextIsToldAndBookedOn) {
    open("no_Sales_stock3");
    drive->clickCell("DataGrid1", 0, "品名");
    move("stock_no_use_BankFm3");
    dialog->type("Text6(0)", "1");
    drive->find<QLineEdit>("Text2(2)")->setText(QString(80, u'长'));
    prompts.expectConfirm("确认该产品报废及报废数量吗？", true);
    prompts.expectMessage("输入数据格式错误或数据类型不匹配！");
    dialog->click("Command1");
    EXPECT_EQ(stock(), u"p1|9.0;p2|2.0;p3|-2.0");
    EXPECT_EQ(books.stored("SELECT 产品编号, 品名, 数量 FROM no_use_Bank"), u"p1|Null|1.0");
}

TEST_F(StockOuts, LeavingTheViewClosesItsDialog) {
    open();
    move();
    drive->choose("show_stock");
    EXPECT_EQ(window("stock_ReturnFm3"), nullptr);
    EXPECT_TRUE(main->host().isActive("stockFm1"));
    EXPECT_EQ(session().viewReturnState, u"Open");
    EXPECT_EQ(drive->text("Text1"), u"3/3");
}

TEST_F(StockOuts, ThePrintRoutineHandsTheStockInTitleAndTheOddReports) {
    start();
    const std::tuple<const char*, int, const char*> prints[] = {
        {"no_Sales_stock1", 15, "showprint_rs18"}, {"no_Sales_stock1", 16, "showprint_rs19"},
        {"no_Sales_stock2", 15, "showprint_rs23"}, {"no_Sales_stock2", 16, "showprint_rs19"},
        {"no_Sales_stock3", 15, "showprint_rs18"}, {"no_Sales_stock3", 16, "showprint_rs19"}};
    for (const auto& [command, number, report] : prints) {
        drive->choose(QString::fromUtf8(command));
        session().showSource = ShowSource(number);
        static_cast<StockOutChooser*>(main->host().active())->data_print();
        ASSERT_NE(window(report), nullptr) << command << number;
        EXPECT_EQ(session().report.reportFormTitle, u"产 品 入 库 清 单");
        window(report)->close();
    }
    session().showSource = ShowSource(3);
    static_cast<StockOutChooser*>(main->host().active())->data_print();
    EXPECT_EQ(window("showprint_rs18"), nullptr);
}

TEST_F(StockOuts, TheGatewaysOfStockInOpenThemWhereThereIsStock) {
    open("maintain_product");
    const std::pair<const char*, const char*> gateways[] = {{"Command14", "stock_ReturnFm1"},
                                                            {"Command15", "stock_out_of_BankFm1"},
                                                            {"Command16", "stock_no_use_BankFm1"}};
    for (const auto& [button, view] : gateways) {
        drive->click(QString::fromUtf8(button));
        EXPECT_TRUE(main->host().isActive(QString::fromUtf8(view)));
        drive->choose("maintain_product");
    }
    session().productTable->setFilter("产品编号 = 'x'");
    drive->click("Command14");
    EXPECT_TRUE(main->host().isActive("productRegisterFm1"));
}

} // namespace

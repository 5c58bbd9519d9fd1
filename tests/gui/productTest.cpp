#include "support/shopWindow.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

namespace {

class Products : public ShopWindow {
protected:
    void open() {
        start();
        drive->choose("maintain_product");
    }
    QString box(int index) { return drive->text(QStringLiteral("Text2(%1)").arg(index)); }
    void type(int index, const QString& text) { drive->type(QStringLiteral("Text2(%1)").arg(index), text); }
    void fill() {
        type(2, "签字笔");
        type(7, "60");
        type(8, "12.5");
        type(10, "18");
    }
    QString figure(int index) { return drive->text(QStringLiteral("Label7(%1)").arg(index)); }
    QString stock() { return books.stored("SELECT 产品编号, 数量 FROM productTable ORDER BY rowid"); }
    QString history() { return books.stored("SELECT 产品编号, 数量 FROM product_Bank ORDER BY rowid"); }
};

TEST_F(Products, AnEmptyShopShowsAnEmptyForm) {
    open();
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    EXPECT_EQ(box(0), u"2004-11-21");
    EXPECT_EQ(box(7) + box(8) + box(10), u"000");
    EXPECT_EQ(figure(0) + figure(1) + figure(2), u"000");
    EXPECT_FALSE(shown("Label4"));
    EXPECT_FALSE(shown("Label8"));
    drive->click("Command4");
    drive->click("Command7");
    drive->click("Command2");
    drive->click("Command1(2)");
    EXPECT_EQ(drive->text("Label3"), u"产品登录（入库）");
}

TEST_F(Products, RowsShowBoxesAndFigures) {
    books.addProduct("p1", "纸", 10, 2, 5);
    books.addProduct("p2", "笔", 3.5, 2, 5);
    open();
    EXPECT_EQ(box(1), u"p1");
    drive->click("Command1(3)");
    EXPECT_EQ(box(1), u"p2");
    EXPECT_EQ(figure(0) + "," + figure(1) + "," + figure(2), u"3.5,0,3.5");
    EXPECT_EQ(drive->text("Text1"), u"2/2");
    drive->clickCell("DataGrid1", 0, "品名");
    EXPECT_EQ(box(2), u"纸");
}

TEST_F(Products, NewProductFromFirstPressToSaved) {
    open();
    drive->click("Command8");
    EXPECT_TRUE(shown("Label4"));
    EXPECT_EQ(drive->text("Label3"), u"新产品登录");
    EXPECT_EQ(box(1), u"1001");
    EXPECT_EQ(focused(), u"Text2(2)");
    for (const char* off : {"Command1(0)", "Command1(3)", "Command7", "Command4"})
        EXPECT_FALSE(enabled(off)) << off;
    for (const char* on : {"Command5", "Command6", "Command8"})
        EXPECT_TRUE(enabled(on)) << on;
    fill();
    EXPECT_EQ(figure(1), u"60") << "the quantity follows the box";
    prompts.expectMessage("数据已保存！");
    drive->click("Command5");
    EXPECT_EQ(stock(), u"1001|60.0");
    EXPECT_EQ(history(), u"1001|60.0");
    EXPECT_EQ(figure(2), u"60");
    EXPECT_EQ(drive->text("Label3"), u"显示产品数据");
    EXPECT_EQ(drive->text("Text1"), u"1/1");
    EXPECT_TRUE(enabled("Command4"));
    EXPECT_FALSE(shown("Label4"));
}

TEST_F(Products, SaveAndGoOnStandsReadyForTheNext) {
    books.addProduct("p1", "纸", 10, 2, 5);
    open();
    drive->click("Command8");
    EXPECT_EQ(drive->text("Text1"), u"1") << "the count alone";
    fill();
    drive->click("Command8");
    EXPECT_EQ(box(1), u"1002");
    EXPECT_EQ(box(2), u"");
    EXPECT_TRUE(shown("Label4"));
    EXPECT_EQ(stock(), u"p1|10.0;1001|60.0");
    drive->click("Command6");
    EXPECT_EQ(drive->text("Label3"), u"产品数据显示");
    EXPECT_FALSE(shown("Label4"));
    EXPECT_EQ(box(1), u"1001");
}

TEST_F(Products, AFailedCheckKeepsTheState) {
    open();
    drive->click("Command8");
    prompts.expectMessage("请输入‘品名’！");
    drive->click("Command5");
    EXPECT_TRUE(shown("Label4"));
    type(2, "笔");
    prompts.expectMessage("请输入产品‘数量’！");
    drive->click("Command8");
    EXPECT_EQ(box(2), u"笔");
    EXPECT_EQ(stock(), u"");
}

TEST_F(Products, ADuplicateNumberIsRefusedAndTheBoxesStay) {
    books.addProduct("p1", "纸", 10, 2, 5);
    books.execute("DELETE FROM productTable");
    open();
    drive->click("Command8");
    fill();
    type(1, "P1");
    prompts.expectMessage("产品编号重复，请重新定义！");
    drive->click("Command5");
    EXPECT_EQ(box(1), u"P1");
    EXPECT_TRUE(shown("Label4"));
    EXPECT_EQ(stock(), u"");
}

TEST_F(Products, ARefusedRowTellsItsPairOfMessagesAndStillSaysSaved) {
    open();
    drive->click("Command8");
    fill();
    drive->find<QLineEdit>("Text2(2)")->setText(QString(100'000, u'长'));
    prompts.expectMessage("输入数据格式错误或数据类型不匹配！");
    prompts.expectMessage("登录新产品失败！");
    prompts.expectMessage("数据已保存！");
    drive->click("Command5");
    EXPECT_EQ(stock() + history(), u"");
    drive->click("Command8");
    fill();
    drive->find<QLineEdit>("Text2(2)")->setText(QString(100'000, u'长'));
    prompts.expectMessage("输入数据格式错误或数据类型不匹配！");
    prompts.expectMessage("新产品登录失败！");
    drive->click("Command8");
    EXPECT_FALSE(shown("Label4"));
    EXPECT_EQ(stock() + history(), u"");
}

TEST_F(Products, SaveWhileBrowsingSaysSavedAndWritesNothing) {
    books.addProduct("p1", "纸", 10, 2, 5);
    open();
    type(2, "changed");
    prompts.expectMessage("数据已保存！");
    drive->click("Command5");
    EXPECT_EQ(books.stored("SELECT 品名 FROM productTable"), u"纸");
}

TEST_F(Products, StockInAsksTwiceAndShowsTheThreeFigures) {
    books.addProduct("p1", "纸", 10, 2, 5);
    open();
    prompts.expectInput("请输入产品数量：", "输入数字", "2.5");
    prompts.whenShown([this] {
        EXPECT_TRUE(shown("Label8"));
        EXPECT_EQ(drive->text("Label3"), u"增加库存");
        for (const char* off : {"Command4", "Command5", "Command6", "Command7", "Command8", "Command1(0)"})
            EXPECT_FALSE(enabled(off)) << off;
        EXPECT_EQ(box(0), u"2004-11-21");
    });
    prompts.expectConfirm("该产品将增加数：2.5", true);
    drive->click("Command4");
    EXPECT_EQ(figure(0) + "," + figure(1) + "," + figure(2), u"10,2.5,12.5");
    EXPECT_EQ(books.stored("SELECT 日期, 数量 FROM productTable"), u"2004-01-05|12.5");
    EXPECT_EQ(books.stored("SELECT 日期, 数量 FROM product_Bank ORDER BY rowid"),
              u"2004-01-05|10.0;2004-11-21|2.5");
    EXPECT_TRUE(enabled("Command4"));
    EXPECT_FALSE(shown("Label8"));
    EXPECT_EQ(box(7), u"12.5");
}

TEST_F(Products, ACancelledOrMeaninglessAnswerChangesNothing) {
    books.addProduct("p1", "纸", 10, 2, 5);
    open();
    for (const std::optional<QString>& answer :
         {std::optional<QString>(), std::optional<QString>(""), std::optional<QString>("abc"),
          std::optional<QString>("1e999")}) {
        prompts.expectInput("请输入产品数量：", "输入数字", answer);
        drive->click("Command4");
    }
    prompts.expectInput("请输入产品数量：", "输入数字", "5");
    prompts.expectConfirm("该产品将增加数：5", false);
    drive->click("Command4");
    EXPECT_EQ(stock(), u"p1|10.0");
    EXPECT_EQ(history(), u"p1|10.0");
    EXPECT_TRUE(enabled("Command4"));
}

TEST_F(Products, AProductWithoutCostLeavesTheViewStuckUntilItIsOpenedAgain) {
    books.addProduct("p1", "纸", 10, 0, 5);
    open();
    prompts.expectMessage("请输入‘成本’！");
    drive->click("Command4");
    for (const char* off : {"Command4", "Command5", "Command6", "Command7", "Command8", "Command1(0)"})
        EXPECT_FALSE(enabled(off)) << off;
    EXPECT_TRUE(shown("Label8"));
    drive->click("Command11");
    EXPECT_TRUE(main->host().isActive("stock_BankFm1")) << "the gateway buttons still answer";
    drive->choose("maintain_product");
    EXPECT_TRUE(enabled("Command4"));
}

TEST_F(Products, DeleteAsksAndLeavesTheHistory) {
    books.addProduct("p1", "纸", 10, 2, 5);
    books.addProduct("p2", "笔", 1, 2, 5);
    open();
    prompts.expectConfirm("确实要删除此记录吗？", false);
    drive->click("Command7");
    prompts.expectConfirm("确实要删除此记录吗？", true);
    drive->click("Command7");
    EXPECT_EQ(stock(), u"p2|1.0");
    EXPECT_EQ(history(), u"p1|10.0;p2|1.0");
    EXPECT_EQ(box(1), u"p2");
    EXPECT_EQ(drive->text("Text1"), u"1/1");
}

TEST_F(Products, WhileAddingSearchShowAllAndTheFirstGatewaysRefuse) {
    books.addProduct("p1", "纸", 10, 2, 5);
    open();
    drive->click("Command8");
    for (const char* button : {"Command2", "Command3", "Command9", "Command10", "Command11"}) {
        prompts.expectMessage("正在添加新产品，不能执行此操作！");
        drive->click(button);
    }
    EXPECT_TRUE(shown("Label4"));
    drive->click("Command14");
    EXPECT_TRUE(main->host().isActive("stock_ReturnFm1")) << "the others do not refuse";
}

TEST_F(Products, MovingAndDeletingRefuseWhileAddingEvenWhereTheirButtonsAreOff) {
    books.addProduct("p1", "纸", 10, 0, 5);
    open();
    drive->click("Command8");
    for (const char* name : {"Command1(2)", "Command7"}) {
        prompts.expectMessage("正在添加新产品，不能执行此操作！");
        Q_EMIT drive->find<QPushButton>(name)->clicked();
    }
    drive->click("Command6");
    prompts.expectMessage("请输入‘成本’！");
    drive->click("Command4");
    prompts.expectMessage("正在追加产品数量，不能执行此操作！");
    Q_EMIT drive->find<QPushButton>("Command7")->clicked();
    EXPECT_EQ(stock(), u"p1|10.0");
}

TEST_F(Products, SearchAndShowAll) {
    books.addProduct("p1", "纸", 10, 2, 5);
    books.addProduct("p2", "笔", 1, 2, 5);
    open();
    drive->click("Command2");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
    drive->type("Text3", "笔");
    drive->click("Command2");
    EXPECT_EQ(drive->text("Text1"), u"1/1");
    EXPECT_EQ(box(1), u"p2");
    drive->click("Command3");
    EXPECT_EQ(drive->text("Text1"), u"1/2");
    drive->type("Text3", "'");
    prompts.expectMessage("日期输入错误，请按 2004-2-1 或 2004-11-21 格式输入！");
    drive->click("Command2");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
}

TEST_F(Products, KeysMoveRoundTheBoxesWithUpAndDown) {
    open();
    drive->key("Text2(10)", Qt::Key_Return);
    EXPECT_EQ(focused(), u"Text2(0)");
    drive->key("Text2(0)", Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(focused(), u"Text2(10)");
    drive->key("Text2(10)", Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(focused(), u"Text2(0)");
    EXPECT_EQ(drive->find<QLineEdit>("Text2(0)")->selectedText(), u"2004-11-21");
}

TEST_F(Products, BoxesCarryAToolTipOnlyWhileAdding) {
    open();
    EXPECT_EQ(drive->find<QLineEdit>("Text2(2)")->toolTip(), u"");
    drive->click("Command8");
    EXPECT_EQ(drive->find<QLineEdit>("Text2(2)")->toolTip(), u"请输入新数据");
    EXPECT_EQ(drive->find<QLineEdit>("Text2(10)")->toolTip(), u"请输入新数据");
    EXPECT_EQ(drive->find<QLineEdit>("Text2(1)")->toolTip(), u"");
    drive->click("Command6");
    EXPECT_EQ(drive->find<QLineEdit>("Text2(2)")->toolTip(), u"");
}

TEST_F(Products, TheNewProductFlagFlashesAndTheStockFlagShowsSteady) {
    open();
    drive->click("Command8");
    auto* timer = drive->find<QTimer>("Timer2");
    auto* label = drive->find<QLabel>("Label4");
    const auto tick = [&] {
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
        return label->palette().color(QPalette::WindowText);
    };
    EXPECT_EQ(timer->interval(), 600);
    EXPECT_EQ(tick(), QColor(0xC0, 0xC0, 0xFF));
    EXPECT_EQ(tick(), QColor(0xFF, 0xAE, 0x93));
    EXPECT_EQ(drive->find<QTimer>("Timer3")->interval(), 0);
    EXPECT_FALSE(drive->find<QTimer>("Timer3")->isActive());
}

TEST_F(Products, ActivationClearsTheFiltersOfStockAndHistory) {
    books.addProduct("p1", "纸", 10, 2, 5);
    books.addProduct("p2", "笔", 1, 2, 5);
    open();
    session().productTable->setFilter("产品编号 = 'p2'");
    session().product_Bank->setFilter("产品编号 = 'p2'");
    main->host().active()->activate();
    EXPECT_EQ(session().productTable->Filter() + session().product_Bank->Filter(), u"");
    EXPECT_EQ(box(1), u"p1");
}

} // namespace

// What was changed and not saved is seen: cells in a colour, a count in the status bar, a mark at the
// caption.
#include "controls/dataGrid.h"
#include "support/shopWindow.h"

namespace {

class Unsaved : public ShopWindow {
protected:
    Unsaved() {
        for (int i = 1; i <= 4; ++i)
            books.addProduct(QStringLiteral("p%1").arg(i), QStringLiteral("纸%1").arg(i), 10, 2, 5);
        books.addClient("7", "红木行", "王平");
        books.addClient("8", "文具店", "李明");
        books.addLine("21", "7", "p1", "2004-01-05", 5, 25, 2);
        books.addLine("22", "8", "p2", "2004-02-06", 1, 5, 2);
    }
    void open(const char* command) {
        if (!main)
            start();
        drive->choose(QString::fromUtf8(command));
    }
    QString count() { return shown("unsavedCount") ? drive->text("unsavedCount") : QString(); }
    QColor colour(int row, const char* column) {
        auto* grid = drive->find<DataGrid>("DataGrid1");
        const int field = grid->recordset()->fieldIndex(QString::fromUtf8(column));
        return grid->model()->index(row, field).data(Qt::BackgroundRole).value<QColor>();
    }
    void edit(int row, const char* column, const char* text) {
        drive->editCell("DataGrid1", row, QString::fromUtf8(column), QString::fromUtf8(text));
    }
    /// The three windows of maintenance with their commands for saving and giving up, and a column to type
    /// into; the stock count beside them.
    struct Place {
        const char* command;
        const char* save;
        const char* drop;
        const char* column;
        const char* key;
    };
    static std::vector<Place> places() {
        return {{"maintain_Data1", "Command3", "Command4", "联系人", "客户编号"},
                {"maintain_Data2", "Command3", "Command4", "品名", "订单号"},
                {"maintain_Data3", "Command2", "Command3", "品名", "产品编号"},
                {"count_stock1", "Command2", "Command3", "亏_盈", "产品编号"}};
    }
};

TEST_F(Unsaved, RowsAreCountedAndTheirChangedCellsHaveAColourUntilTheyAreSaved) {
    for (const Place& place : places()) {
        SCOPED_TRACE(place.command);
        open(place.command);
        EXPECT_EQ(count(), u"");
        edit(0, place.column, "一");
        EXPECT_EQ(count(), u"1 条修改没有保存");
        edit(1, place.column, "二");
        edit(1, place.column, "三");
        EXPECT_EQ(count(), u"2 条修改没有保存") << "rows, not cells";
        EXPECT_TRUE(colour(0, place.column).isValid() && colour(1, place.column).isValid());
        EXPECT_FALSE(colour(0, place.key).isValid()) << "the cells beside them";
        drive->click(place.save);
        EXPECT_EQ(count(), u"");
        EXPECT_EQ(status(), u"已保存 2 条");
        EXPECT_FALSE(colour(0, place.column).isValid() || colour(1, place.column).isValid());
        drive->click(place.save);
        EXPECT_EQ(status(), u"没有修改");
    }
}

TEST_F(Unsaved, WhatIsGivenUpIsCountedToo) {
    for (const Place& place : places()) {
        SCOPED_TRACE(place.command);
        open(place.command);
        edit(0, place.column, "一");
        edit(1, place.column, "二");
        drive->click(place.drop);
        EXPECT_EQ(status(), u"已放弃 2 条修改");
        EXPECT_EQ(count(), u"");
        EXPECT_FALSE(colour(0, place.column).isValid());
    }
}

TEST_F(Unsaved, TheNextEditTakesAwayWhatWasSaidOfTheSaving) {
    for (const Place& place : places()) {
        SCOPED_TRACE(place.command);
        open(place.command);
        edit(0, place.column, "一");
        drive->click(place.save);
        edit(0, place.column, "二");
        EXPECT_EQ(status(), u"");
        EXPECT_EQ(count(), u"1 条修改没有保存");
    }
}

TEST_F(Unsaved, LeavingAMaintenanceWindowSaysWhatWasGivenUp) {
    open("maintain_Data3");
    edit(0, "品名", "一");
    drive->choose("show_stock");
    EXPECT_EQ(status(), u"已放弃 1 条修改");
    EXPECT_EQ(count(), u"");
    drive->choose("management_client");
    EXPECT_EQ(status(), u"");
}

TEST_F(Unsaved, RowsThatASearchHidesAreStillCounted) {
    open("maintain_Data3");
    edit(0, "品名", "一");
    edit(1, "品名", "二");
    drive->type("Text2", "没有这个");
    drive->click("Command6");
    EXPECT_EQ(drive->rows("DataGrid1"), 0);
    EXPECT_EQ(count(), u"2 条修改没有保存");
    drive->click("Command2");
    EXPECT_EQ(status(), u"2 条修改没有存进去，原样留着") << "nothing is saved from an empty table";
    drive->click("Toolbar1(4)");
    EXPECT_EQ(count(), u"2 条修改没有保存");
    drive->click("Command2");
    EXPECT_EQ(status(), u"已保存 2 条");
}

TEST_F(Unsaved, CustomersReadAfreshLoseTheirEditsAndThisIsSaid) {
    open("maintain_Data1");
    edit(0, "联系人", "一");
    drive->click("Toolbar1(4)");
    EXPECT_EQ(count(), u"");
    EXPECT_EQ(status(), u"已放弃 1 条修改");
}

TEST_F(Unsaved, ADeletedRowIsNoLongerCounted) {
    open("maintain_Data3");
    edit(0, "品名", "一");
    edit(1, "品名", "二");
    prompts.expectConfirm("确实要删除该记录吗？", true);
    drive->click("Command4");
    EXPECT_EQ(count(), u"1 条修改没有保存");
}

TEST_F(Unsaved, ACountThatIsContinuedIsCountedAgain) {
    open("count_stock1");
    edit(0, "实物数", "3");
    drive->choose("show_stock");
    EXPECT_EQ(count(), u"");
    drive->choose("count_stock2");
    EXPECT_EQ(count(), u"1 条修改没有保存");
    EXPECT_TRUE(colour(0, "实物数").isValid());
    drive->click("Command2");
    EXPECT_EQ(count(), u"");
    EXPECT_EQ(status(), u"已保存 1 条");
}

TEST_F(Unsaved, AReadOnlyGridHasNoColours) {
    open("maintain_Data3");
    session().productTable->Fields("品名").setValue(QString("一"));
    EXPECT_TRUE(colour(session().productTable->AbsolutePosition() - 1, "品名").isValid());
    drive->choose("show_stock");
    session().productTable->Fields("品名").setValue(QString("二"));
    EXPECT_FALSE(colour(session().productTable->AbsolutePosition() - 1, "品名").isValid());
    session().productTable->CancelBatch();
}

TEST_F(Unsaved, TheRegistersBoxesAreMarkedWhileTypedAndNotSaved) {
    start();
    drive->clickCell("DataGrid1", 0, "客户编号");
    EXPECT_FALSE(shown("unsavedMark"));
    drive->type("Text3(1)", "张平");
    EXPECT_TRUE(shown("unsavedMark"));
    EXPECT_EQ(drive->text("viewCaption"), u"营销管理") << "the caption itself stays";
    drive->click("Command5");
    EXPECT_FALSE(shown("unsavedMark"));
    EXPECT_EQ(status(), u"已保存客户 7 红木行");
    drive->type("Text3(1)", "王五");
    drive->click("Command6");
    EXPECT_FALSE(shown("unsavedMark"));
    drive->type("Text3(1)", "王五");
    drive->clickCell("DataGrid1", 1, "客户编号");
    EXPECT_FALSE(shown("unsavedMark")) << "another customer is in the boxes";
    drive->type("Text3(1)", "王五");
    drive->choose("show_stock");
    EXPECT_FALSE(shown("unsavedMark"));
}

TEST_F(Unsaved, ANewCustomerIsMarkedFromItsFirstSignOnAndSaidBySaving) {
    start();
    drive->click("Command3");
    EXPECT_FALSE(shown("unsavedMark")) << "the proposed number is nobody's typing";
    drive->type("Text3(8)", "新客户");
    EXPECT_TRUE(shown("unsavedMark"));
    prompts.expectMessage("已保存新记录！");
    drive->click("Command5");
    EXPECT_FALSE(shown("unsavedMark"));
    EXPECT_TRUE(status().startsWith(u"已保存客户 ") && status().endsWith(u" 新客户"));
}

TEST_F(Unsaved, TheStockInsBoxesAreMarkedWhileTypedAndNotSaved) {
    open("maintain_product");
    drive->type("Text2(2)", "别名");
    EXPECT_TRUE(shown("unsavedMark"));
    drive->click("Command6");
    EXPECT_FALSE(shown("unsavedMark"));
    drive->click("Command8");
    EXPECT_FALSE(shown("unsavedMark"));
    drive->type("Text2(1)", "n1");
    drive->type("Text2(2)", "新纸");
    for (const char* box : {"Text2(7)", "Text2(8)", "Text2(10)"})
        drive->type(QString::fromUtf8(box), "6");
    EXPECT_TRUE(shown("unsavedMark"));
    prompts.expectMessage("数据已保存！");
    drive->click("Command5");
    EXPECT_FALSE(shown("unsavedMark"));
    EXPECT_EQ(status(), u"产品 n1 新纸 已登录，入库 6");
}

TEST_F(Unsaved, WhatBrowsingDoesNotSaveStaysMarkedWhateverTheMessageSays) {
    open("maintain_product");
    drive->type("Text2(2)", "别名");
    prompts.expectMessage("数据已保存！");
    drive->click("Command5");
    EXPECT_TRUE(shown("unsavedMark"));
}

TEST_F(Unsaved, StockThatIsAddedIsSaid) {
    open("maintain_product");
    drive->clickCell("DataGrid1", 0, "产品编号");
    prompts.expectInput("请输入产品数量：", "输入数字", "3");
    prompts.expectConfirm("该产品将增加数：3", true);
    drive->click("Command4");
    EXPECT_EQ(status(), u"产品 p1 纸1 已入库 3，现有库存 13");
}

TEST_F(Unsaved, AnOrdersLineIsMarkedWhileTypedAndNotSaved) {
    open("maintain_order");
    drive->type("Text4(4)", "没有订单");
    EXPECT_FALSE(shown("unsavedMark")) << "without an order there is nothing to save";
    drive->clickCell("DataGrid2", 0, "订单号");
    EXPECT_FALSE(shown("unsavedMark"));
    drive->type("Text4(10)", "4");
    EXPECT_TRUE(shown("unsavedMark"));
    prompts.expectMessage("总计购物数：4\n总计金额数：4");
    drive->click("Command3");
    EXPECT_FALSE(shown("unsavedMark"));
    EXPECT_EQ(status(), u"已保存：订单 21 的 货");
    drive->click("UpDown1(0)");
    EXPECT_TRUE(shown("unsavedMark")) << "the arrows change it too";
    drive->clickCell("DataGrid2", 1, "订单号");
    EXPECT_FALSE(shown("unsavedMark"));
}

TEST_F(Unsaved, TheCellThatWasJustTypedIntoHasItsColourThoughItIsTheCurrentOne) {
    open("maintain_Data3");
    auto* grid = drive->find<DataGrid>("DataGrid1");
    const auto painted = [&] {
        const QRect cell = grid->visualRect(grid->currentIndex());
        return grid->viewport()->grab(cell).toImage().pixelColor(cell.width() - 4, 4);
    };
    drive->clickCell("DataGrid1", 0, "品名");
    EXPECT_GT(painted().blue(), painted().red() + 60) << "the colour of what is chosen";
    edit(0, "品名", "一");
    EXPECT_GT(painted().red(), painted().blue() + 60) << "amber, not blue";
    drive->click("Command3");
    EXPECT_GT(painted().blue(), painted().red() + 60);
}

} // namespace

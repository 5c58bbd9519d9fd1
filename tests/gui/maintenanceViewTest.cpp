#include "controls/dataGrid.h"
#include "support/shopWindow.h"

#include <QFileInfo>
#include <QPushButton>

namespace {

class MaintenanceViews : public ShopWindow {
protected:
    MaintenanceViews() {
        books.addClient("7", "甲公司", "张");
        books.addClient("8", "乙公司", "李");
        books.addProduct("p1", "纸", 10, 2, 5);
        books.addProduct("p2", "笔", 3, 2, 5);
        books.addLine("21", "7", "p1", "2004-01-05", 5, 25, 2);
        books.addLine("22", "8", "p1", "2003-01-06", 1, 5, 2);
    }
    void open(int number) {
        if (!main)
            start();
        drive->choose(QStringLiteral("maintain_Data%1").arg(number));
    }
};

TEST_F(MaintenanceViews, EachWindowHasItsTitleCommandsAndHiddenColumns) {
    const std::tuple<int, const char*, const char*, std::vector<const char*>,
                     std::vector<std::pair<const char*, const char*>>>
        windows[] = {{1,
                      "客户表维护",
                      "客户资料",
                      {"流水号", "差额利润", "差额利润率"},
                      {{"Command3", "保存修改"},
                       {"Command4", "取消修改"},
                       {"Command5", "删除"},
                       {"Command8", "删除全库记录"}}},
                     {2,
                      "购物表维护",
                      "购物清单",
                      {"流水号", "成本", "差额利润"},
                      {{"Command3", "保存修改"},
                       {"Command4", "取消修改"},
                       {"Command5", "删除"},
                       {"Command2", "删除全部记录"}}},
                     {3,
                      "销售库存表维护",
                      "产品数据",
                      {"流水号"},
                      {{"Command2", "保存"},
                       {"Command3", "取消修改"},
                       {"Command4", "删除"},
                       {"Command8", "删除全部记录"}}}};
    for (const auto& [number, caption, title, hidden, commands] : windows) {
        open(number);
        EXPECT_EQ(main->host().active()->caption(), QString::fromUtf8(caption));
        EXPECT_EQ(drive->text("Label1"), QString::fromUtf8(title));
        auto* grid = drive->find<DataGrid>("DataGrid1");
        for (const char* column : hidden)
            EXPECT_TRUE(grid->isColumnHidden(grid->recordset()->fieldIndex(QString::fromUtf8(column))))
                << column;
        for (const auto& [name, text] : commands)
            EXPECT_EQ(drive->find<QPushButton>(QString::fromUtf8(name))->text(), QString::fromUtf8(text));
        drive->click("Command1(0)");
        EXPECT_EQ(drive->text("Text1"), u"1/2");
        drive->click("Command1(3)");
        EXPECT_EQ(drive->text("Text1"), u"2/2");
        EXPECT_TRUE(enabled("Toolbar1(4)") && enabled("Toolbar1(5)"));
        EXPECT_FALSE(enabled("Toolbar1(2)") || enabled("Toolbar1(3)") || enabled("Toolbar1(7)"));
        drive->click("Toolbar1(5)");
        EXPECT_EQ(session().orderCode, number);
        ASSERT_NE(window("orderFm1"), nullptr);
        window("orderFm1")->close();
    }
}

TEST_F(MaintenanceViews, EditsStayPendingUntilSavedAndLeavingGivesThemUp) {
    open(1);
    drive->editCell("DataGrid1", 0, "电话", "123");
    EXPECT_EQ(books.stored("SELECT 电话 FROM clientTable"), u"Null;Null");
    drive->click("Command3");
    EXPECT_EQ(books.stored("SELECT 电话 FROM clientTable"), u"123;Null");
    drive->editCell("DataGrid1", 1, "电话", "456");
    drive->click("Command4");
    EXPECT_EQ(drive->cell("DataGrid1", 1, "电话"), u"");
    drive->editCell("DataGrid1", 1, "电话", "456");
    drive->choose("maintain_Data2");
    EXPECT_EQ(session().clientTable->pendingCount(), 0);
    EXPECT_EQ(books.stored("SELECT 电话 FROM clientTable"), u"123;Null");
}

TEST_F(MaintenanceViews, ACustomerGoesWithHisLinesAfterAQuestion) {
    open(1);
    prompts.expectConfirm("确实要删除该记录吗？该客户的购买信息也将同时被删除！", false, "删除提示");
    drive->click("Command5");
    EXPECT_TRUE(prompts.loss.startsWith(u"客户 ") && prompts.loss.endsWith(u"条购物记录"))
        << prompts.loss.toStdString();
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
    for (int i = 0; i < 2; ++i) {
        prompts.expectConfirm("确实要删除该记录吗？该客户的购买信息也将同时被删除！", true, "删除提示");
        drive->click("Command5");
    }
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    EXPECT_EQ(books.stored("SELECT count(*) FROM buyList"), u"0");
    drive->click("Command5");
}

TEST_F(MaintenanceViews, LinesAndProductsHaveTheirOwnQuestions) {
    open(2);
    prompts.expectConfirm("确实要删除该记录吗？", true, "删除提示");
    drive->click("Command5");
    EXPECT_TRUE(prompts.loss.contains(u"的 1 行：p1 货，5 件")) << prompts.loss.toStdString();
    EXPECT_EQ(books.stored("SELECT 数量 FROM productTable WHERE 产品编号 = 'p1'"), u"15.0");
    EXPECT_EQ(drive->text("Text1"), u"1/1");
    open(3);
    prompts.expectConfirm("确实要删除该记录吗？", true, "信息提示");
    drive->click("Command4");
    EXPECT_TRUE(prompts.loss.startsWith(u"产品 p")) << prompts.loss.toStdString();
    EXPECT_EQ(drive->text("Text1"), u"1/1");
}

TEST_F(MaintenanceViews, EverythingGoesAfterTheOtherQuestion) {
    const std::pair<int, const char*> windows[] = {{1, "Command8"}, {2, "Command2"}, {3, "Command8"}};
    for (const auto& [number, button] : windows) {
        open(number);
        prompts.expectConfirm("确实要删除全库记录吗？", false);
        drive->click(QString::fromUtf8(button));
        EXPECT_EQ(drive->rows("DataGrid1"), 2);
        EXPECT_EQ(prompts.loss, u"全部 2 条记录，连同现在没有显示的");
        prompts.expectConfirm("确实要删除全库记录吗？", true);
        drive->click(QString::fromUtf8(button));
        EXPECT_EQ(drive->text("Text1"), u"0/0");
    }
    EXPECT_EQ(books.stored("SELECT count(*) FROM product_Bank"), u"2");
}

TEST_F(MaintenanceViews, ASearchFiltersUntilWholeShow) {
    open(1);
    drive->type("Text2", "乙");
    drive->click("Command6");
    EXPECT_EQ(drive->rows("DataGrid1"), 1);
    drive->click("Toolbar1(4)");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
    drive->type("Text2", "丙");
    prompts.expectMessage("查询结果为零！");
    drive->click("Command6");
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    drive->type("Text2", "");
    drive->click("Command6");
    drive->type("Text2", "'");
    prompts.expectMessage("查询结果为零！");
    drive->click("Command6");
}

TEST_F(MaintenanceViews, ALineSearchThatFailsIsToldInTheWordsOfDates) {
    open(2);
    drive->type("Text2", "'");
    prompts.expectMessage("日期格式错误，请按 2004-1-5 或 2004-10-15 格式输入！");
    drive->click("Command6");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
    drive->type("Text2", "21");
    drive->click("Command6");
    EXPECT_EQ(drive->rows("DataGrid1"), 1);
    drive->click("Toolbar1(4)");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "订单号"), u"22") << "the whole table is sorted by 日期";
}

TEST_F(MaintenanceViews, ProductsAreSortedByNameFromTheStart) {
    open(3);
    EXPECT_EQ(session().productTable->Sort(), u"品名");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "品名"), u"笔");
}

TEST_F(MaintenanceViews, ABackupIsToldAndACancelIsSilent) {
    start();
    drive->choose("dataBackup1");
    EXPECT_EQ(prompts.saveQuestions, 1);
    QTemporaryDir folder;
    prompts.saveName = folder.filePath("备份");
    prompts.expectMessage("备份成功！");
    drive->choose("dataBackup1");
    EXPECT_EQ(databaseFault(folder.filePath("备份.mdb")), u"");
    prompts.saveName = books.path();
    prompts.expectMessage("备份失败！");
    drive->choose("dataBackup1");
    EXPECT_EQ(databaseFault(books.path()), u"");
}

TEST_F(MaintenanceViews, ABackupOntoTheOwnFilesFailsInItsOwnWords) {
    start();
    for (const char* ending : {"", "-journal", "-wal", "-shm", ".lock"}) {
        prompts.saveName = books.path() + ending;
        const QFileInfo before(*prompts.saveName);
        const qint64 size = before.exists() ? before.size() : -1;
        prompts.expectMessage("备份失败！");
        drive->choose("dataBackup1");
        const QFileInfo after(*prompts.saveName);
        EXPECT_EQ(after.exists() ? after.size() : -1, size) << ending;
    }
    EXPECT_EQ(databaseFault(books.path()), u"");
}

} // namespace

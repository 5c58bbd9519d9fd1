// Edits that nobody saved, and what must not become of them.
#include "support/shopWindow.h"
#include "support/smallShop.h"

namespace {

class UnsavedEdits : public ShopWindow {
protected:
    UnsavedEdits() {
        addSmallShop(books);
        books.addLine("21", "7", "p1", "2004-01-05", 4, 20, 2);
        books.addLine("22", "8", "p1", "2004-01-06", 1, 5, 2);
        books.addLine("23", "8", "p2", "2004-01-07", 1, 5, 2);
    }
    void open(const char* command) {
        if (!main)
            start();
        drive->choose(QString::fromUtf8(command));
    }
    /// The first row whose cell holds a text gets another value in a column, not saved.
    void edit(const char* key, const char* value, const char* column, const char* text) {
        const QString keyColumn = QString::fromUtf8(key);
        for (int row = 0; row < drive->rows("DataGrid1"); ++row)
            if (drive->cell("DataGrid1", row, keyColumn) == QString::fromUtf8(value))
                return drive->editCell("DataGrid1", row, QString::fromUtf8(column), QString::fromUtf8(text));
        FAIL() << "no row " << value;
    }
    void searchWithoutHits() {
        drive->type("Text2", "没有这个");
        drive->click("Command6");
        EXPECT_EQ(drive->rows("DataGrid1"), 0);
    }
    QString stock(const char* product = "p1") {
        return books.stored(QStringLiteral("SELECT 数量 FROM productTable WHERE 产品编号 = '%1'")
                                .arg(QString::fromUtf8(product)));
    }
};

TEST_F(UnsavedEdits, OfAProductAreGoneAfterASearchWithoutHitsAndAStockIn) {
    open("maintain_Data3");
    edit("产品编号", "p1", "数量", "999");
    searchWithoutHits();
    drive->choose("maintain_product");
    EXPECT_EQ(session().productTable->pendingCount(), 0);
    drive->clickCell("DataGrid1", 0, "产品编号");
    while (drive->text("Text2(1)") != u"p1")
        drive->click("Command1(2)");
    prompts.expectInput("请输入产品数量：", "输入数字", "1");
    prompts.expectConfirm("该产品将增加数：1", true);
    drive->click("Command4");
    EXPECT_EQ(stock(), u"11.0");
}

TEST_F(UnsavedEdits, OfCustomersAndLinesAreGoneAfterASearchWithoutHits) {
    open("maintain_Data1");
    edit("客户编号", "7", "联系人", "张");
    drive->type("Text2", "没有这个");
    prompts.expectMessage("查询结果为零！");
    drive->click("Command6");
    open("maintain_Data2");
    EXPECT_EQ(session().clientTable->pendingCount(), 0);
    edit("订单号", "21", "数量", "9");
    searchWithoutHits();
    drive->choose("maintain_product"); // it reads the lines no other time
    EXPECT_EQ(session().buyList->pendingCount(), 0);
}

TEST_F(UnsavedEdits, DoNotTellWhoseLinesGoWithADeletedCustomer) {
    open("maintain_Data1");
    edit("客户编号", "7", "客户编号", "8");
    prompts.expectConfirm("确实要删除该记录吗？该客户的购买信息也将同时被删除！", true, "删除提示");
    drive->click("Command5");
    EXPECT_EQ(books.stored("SELECT 客户编号 FROM clientTable"), u"8");
    EXPECT_EQ(books.stored("SELECT 订单号 FROM buyList ORDER BY rowid"), u"22;23");
}

TEST_F(UnsavedEdits, DoNotTellWhatADeletedLineGivesBack) {
    open("maintain_Data2");
    edit("订单号", "21", "数量", "40");
    drive->editCell("DataGrid1", 0, "产品编号", "p2");
    prompts.expectConfirm("确实要删除该记录吗？", true, "删除提示");
    drive->click("Command5");
    EXPECT_EQ(stock("p1"), u"14.0");
    EXPECT_EQ(stock("p2"), u"3.0");
}

TEST_F(UnsavedEdits, OfOtherRowsOutliveADeletion) {
    open("maintain_Data3");
    edit("产品编号", "p2", "数量", "8");
    drive->clickCell("DataGrid1", drive->cell("DataGrid1", 0, "产品编号") == u"p1" ? 0 : 1, "品名");
    prompts.expectConfirm("确实要删除该记录吗？", true);
    drive->click("Command4");
    drive->click("Command2");
    EXPECT_EQ(books.stored("SELECT 产品编号, 数量 FROM productTable"), u"p2|8.0");
}

} // namespace

// An import beside a maintenance view whose edits are not saved yet.
#include "support/importShop.h"
#include "support/smallShop.h"

#include <QDir>

namespace {

class ImportBesideEdits : public ImportShop {
protected:
    ImportBesideEdits() {
        addSmallShop(books);
        books.addLine("21", "7", "p1", "2004-01-05", 4, 20, 2);
    }
    void edit(const char* command, const char* column, const char* text) {
        if (!main)
            start();
        drive->choose(QString::fromUtf8(command));
        drive->editCell("DataGrid1", 0, QString::fromUtf8(column), QString::fromUtf8(text));
    }
    /// Brings a text file with these columns in, to the end of its run.
    void import(int target, const QString& columns, const QString& row) {
        const QString path = QDir(session().appPath).filePath("rows.txt");
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("%1\r\n%2\r\n").arg(columns, row).toUtf8());
        file.close();
        open(target, path, SourceKind::Txt);
        take("rows");
        std::vector<std::pair<QString, QString>> pairs;
        for (const QString& column : columns.split(u','))
            pairs.emplace_back(column, column);
        pair(pairs);
        run();
        prompts.expectMessage("数据导入成功！", "OK");
        finishRun();
        EXPECT_EQ(window("FileInputFm2"), nullptr);
    }
    void importLine() {
        import(2, "日期,客户编号,成本,数量,实付", "2004-2-1,7,3,2,10");
        EXPECT_EQ(books.stored("SELECT 差额利润 FROM buyList"), u"12.0;4.0");
    }
    QString clients() { return books.stored("SELECT 客户编号, 消费合计 FROM clientTable"); }
    QString firstLine() { return books.stored("SELECT 数量, 差额利润 FROM buyList WHERE 订单号 = '21'"); }
};

TEST_F(ImportBesideEdits, ATypedCustomerNumberIsNeitherWrittenNorTakenForTheTotals) {
    edit("maintain_Data1", "客户编号", "8");
    importLine();
    EXPECT_EQ(clients(), u"7|30.0;8|0.0") << "the totals go by the stored numbers";
    EXPECT_EQ(drive->cell("DataGrid1", 0, "客户编号"), u"8");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "消费合计"), u"30");
    EXPECT_EQ(session().clientTable->pendingCount(), 1);
    drive->choose("maintain_Data3");
    EXPECT_EQ(clients(), u"7|30.0;8|0.0");
}

TEST_F(ImportBesideEdits, ATypedQuantityIsNeitherWrittenNorReckonedWith) {
    edit("maintain_Data2", "数量", "9");
    import(1, "客户编号", "9");
    EXPECT_EQ(firstLine(), u"4.0|12.0");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "数量"), u"9");
    drive->click("Command4");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "数量"), u"4");
    EXPECT_EQ(firstLine(), u"4.0|12.0");
    EXPECT_EQ(clients(), u"7|20.0;8|0.0;9|0.0");
}

TEST_F(ImportBesideEdits, ASavedEditIsWrittenAsBefore) {
    edit("maintain_Data1", "联系人", "张");
    importLine();
    drive->click("Command3");
    EXPECT_EQ(books.stored("SELECT 联系人, 消费合计 FROM clientTable WHERE 客户编号 = '7'"), u"张|30.0");
}

TEST_F(ImportBesideEdits, WithoutEditsTheOtherTableIsShownWholeOnItsFirstRow) {
    start();
    drive->choose("maintain_Data1");
    drive->type("Text2", "乙");
    drive->click("Command6");
    ASSERT_EQ(drive->rows("DataGrid1"), 1);
    importLine();
    EXPECT_EQ(drive->text("Text1"), u"1/2");
    EXPECT_EQ(clients(), u"7|30.0;8|0.0");
}

} // namespace

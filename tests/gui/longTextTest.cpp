// Texts far longer than their columns take, put into the file by another program.
#include "controls/dataGrid.h"
#include "controls/hint.h"
#include "controls/recordBoxes.h"
#include "export/csvFile.h"
#include "support/reportWindow.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

namespace {

constexpr int kLetters = 5000;

class LongTexts : public ReportWindow {
protected:
    LongTexts() {
        books.addClient("7", "甲", "乙");
        books.addClient("8", "丙", "丁");
        books.addProduct("p1", "纸", 10, 2, 5);
        books.addLine("21", "7", "p1", "2004-01-05", 4, 20, 2);
    }
    static QString text(int letters = kLetters) {
        return QStringLiteral("开头") + QString(letters - 2, u'长');
    }
    static QString beginning(int letters = 1000) { return text().left(letters) + u'…'; }
    void put(const char* table, const char* column, int letters = kLetters) {
        books.changeBehind(QStringLiteral("UPDATE %1 SET %2 = '%3' WHERE rowid = 1")
                               .arg(QLatin1String(table), QString::fromUtf8(column), text(letters)));
    }
    QString stored(const char* table, const char* column) {
        return books.stored(QStringLiteral("SELECT %1 FROM %2 WHERE rowid = 1")
                                .arg(QString::fromUtf8(column), QLatin1String(table)));
    }
    QString shownHint(QWidget& in) {
        auto* label = in.findChild<Hint*>("hint");
        return label && label->isVisible() ? label->text() : QString();
    }
};

const QString kTooLong = QStringLiteral("文字太长，只显示开头；不能在这里修改，原文保持不变");

TEST_F(LongTexts, AGridShowsTheBeginningAndCopiesAndExportsTheWhole) {
    put("clientTable", "单位名称");
    start();
    drive->choose("show_whole_client");
    auto* grid = drive->find<DataGrid>("DataGrid1");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "单位名称"), beginning());
    drive->clickCell("DataGrid1", 0, "客户编号");
    EXPECT_TRUE(grid->selectedText().split(u'\t').contains(text()));
    const QString path = folder.filePath("a.csv");
    ASSERT_EQ(writeCsv(path, grid->exportTable()), ExportEnd::Whole);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains(text().toUtf8()));
}

TEST_F(LongTexts, ACellOfWhichOnlyTheBeginningIsShownOpensNoEditor) {
    put("productTable", "品名");
    start();
    drive->choose("maintain_Data3");
    drive->doubleClickCell("DataGrid1", 0, "品名");
    EXPECT_EQ(shownHint(*main), kTooLong);
    EXPECT_EQ(drive->find<DataGrid>("DataGrid1")->viewport()->findChild<QWidget*>("cellEditor"), nullptr);
    drive->editCell("DataGrid1", 0, "规格", "新");
    drive->choose("maintain_Data2");
    drive->choose("maintain_Data3");
    EXPECT_EQ(stored("productTable", "品名"), text());
}

TEST_F(LongTexts, AnEditorHoldsATextThatIsTooLongForItsColumnWhole) {
    put("productTable", "品名", 60);
    start();
    drive->choose("maintain_Data3");
    drive->doubleClickCell("DataGrid1", 0, "品名");
    EXPECT_EQ(drive->text("cellEditor"), text(60));
    drive->key("cellEditor", Qt::Key_Return);
    EXPECT_EQ(session().productTable->pendingCount(), 0) << "what is not changed is no edit";
    drive->editCell("DataGrid1", 0, "品名", text(55));
    EXPECT_EQ(drive->cell("DataGrid1", 0, "品名"), text(60));
    EXPECT_EQ(shownHint(*main), u"“品名”最多 50 个字；已保留原值");
    drive->editCell("DataGrid1", 0, "品名", "短");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "品名"), u"短");
}

TEST_F(LongTexts, TheRegisterSavesRoundABoxThatShowsOnlyTheBeginning) {
    for (const int letters : {101, 1000, kLetters}) {
        put("clientTable", "单位名称", letters);
        put("clientTable", "传真", letters);
        start();
        EXPECT_EQ(drive->text("Text3(8)"), text(letters).left(99) + u'…') << "the box takes 100 letters";
        drive->type("Text3(3)", "139");
        drive->key("Text3(8)", Qt::Key_X);
        EXPECT_EQ(shownHint(*main), kTooLong);
        drive->click("Command5");
        EXPECT_EQ(stored("clientTable", "单位名称"), text(letters)) << letters;
        EXPECT_EQ(stored("clientTable", "传真"), text(letters)) << letters;
        EXPECT_EQ(stored("clientTable", "电话"), u"139");
    }
}

TEST_F(LongTexts, TheBoxesOfTheNextRowAndOfANewOneAreTypedInAsEver) {
    put("clientTable", "单位名称");
    start();
    auto* box = drive->find<RecordBox>("Text3(8)");
    EXPECT_TRUE(box->isReadOnly());
    drive->click("Command1(2)");
    EXPECT_FALSE(box->isReadOnly());
    drive->type("Text3(8)", "新名");
    drive->click("Command5");
    EXPECT_EQ(books.stored("SELECT 单位名称 FROM clientTable WHERE rowid = 2"), u"新名");
    drive->click("Command1(0)");
    EXPECT_TRUE(box->isReadOnly());
    drive->click("Command3");
    EXPECT_FALSE(box->isReadOnly());
    EXPECT_EQ(box->text(), u"");
}

TEST_F(LongTexts, AnOrderIsSavedRoundABoxThatShowsOnlyTheBeginning) {
    for (const int letters : {60, kLetters}) {
        put("buyList", "品名", letters);
        start();
        drive->choose("maintain_order");
        drive->clickCell("DataGrid2", 0, "订单号");
        drive->clickCell("DataGrid1", 0, "产品编号");
        drive->type("Text4(10)", "3");
        prompts.expectMessage("总计购物数：3\n总计金额数：3");
        drive->click("Command3");
        EXPECT_EQ(stored("buyList", "数量"), u"3.0");
        EXPECT_EQ(stored("buyList", "品名"), text(letters)) << letters;
        books.changeBehind("UPDATE buyList SET 数量 = 4");
    }
}

TEST_F(LongTexts, APageBearsTheBeginning) {
    put("productTable", "品名");
    start();
    drive->choose("show_stock");
    drive->click("Toolbar1(7)");
    take("print_rs3");
    EXPECT_TRUE(previewShows(beginning()));
    EXPECT_FALSE(previewShows(text()));
}

TEST_F(LongTexts, TheLabelsOfAPurchaseHoldALine) {
    put("clientTable", "单位名称");
    put("clientTable", "联系人");
    start();
    drive->click("Command7");
    ASSERT_NE(window("buyFm1"), nullptr);
    QStringList long_;
    for (const QLabel* label : window("buyFm1")->findChildren<QLabel*>())
        if (label->text().startsWith(u"开头"))
            long_ << label->text();
    EXPECT_EQ(long_, QStringList({beginning(100), beginning(100)}));
}

TEST_F(LongTexts, AMessageBearsTheBeginning) {
    QString told;
    QTimer::singleShot(0, qApp, [&told] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        told = box->text() + u'|' + box->informativeText();
        box->reject();
    });
    WindowPrompts().confirmLoss(text(), text(), "删除");
    EXPECT_EQ(told, beginning() + u'|' + beginning());
}

} // namespace

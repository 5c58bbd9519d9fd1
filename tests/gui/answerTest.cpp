// What was saved, booked, printed or written into a file is answered in the status bar, with where it is.
#include "controls/barChart.h"
#include "controls/dataGrid.h"
#include "support/reportWindow.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>
#include <QtTest/QTest>

namespace {

/// Chooses an entry in the context menu of a widget.
void chooseInMenuOf(QWidget& widget, const QString& entry) {
    QTimer::singleShot(0, &widget, [entry] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions())
            if (action->text() == entry)
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        menu->close();
    });
    const QPoint middle = widget.rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, middle, widget.mapToGlobal(middle));
    QApplication::sendEvent(&widget, &event);
}

class Answers : public ReportWindow {
protected:
    DataGrid* grid() { return main->host().active()->findChild<DataGrid*>(); }
};

TEST_F(Answers, AnExportedTableSaysItsRowsAndItsFile) {
    fillStockTable(books, "productTable", 7);
    start();
    drive->choose("show_stock");
    prompts.saveName = folder.filePath("库存.csv");
    chooseInMenuOf(*grid()->viewport(), "导出 CSV…");
    EXPECT_EQ(status(), QStringLiteral("已导出 CSV，7 行：") + *prompts.saveName);
    main->host().say({});
    prompts.saveName = folder.filePath("没有的文件夹/库存.csv");
    prompts.expectMessage("文件不能写入：" + *prompts.saveName);
    chooseInMenuOf(*grid()->viewport(), "导出 CSV…");
    EXPECT_EQ(status(), u"") << "nothing was exported";
    prompts.saveName.reset();
    chooseInMenuOf(*grid()->viewport(), "导出 CSV…");
    EXPECT_EQ(status(), u"");
}

TEST_F(Answers, AReportSaysItsPagesAndItsFileAndTheMainWindowKeepsIt) {
    openHistory(81);
    prompts.saveName = pdf();
    report->choose("exportPdf");
    EXPECT_EQ(report->text("noticeText"), QStringLiteral("已导出 PDF，3 页：") + pdf());
    prompts.saveName = pdf("printed.pdf");
    report->click("Command2");
    EXPECT_EQ(report->text("noticeText"), QStringLiteral("已打印 3 页：") + pdf("printed.pdf"));
    form->close();
    EXPECT_EQ(status(), QStringLiteral("已打印 3 页：") + pdf("printed.pdf"));
}

TEST_F(Answers, ABackupSaysItsFile) {
    start();
    prompts.saveName = folder.filePath("备份");
    prompts.expectMessage("备份成功！");
    drive->choose("dataBackup1");
    EXPECT_EQ(status(), QStringLiteral("已备份：") + folder.filePath("备份.mdb"));
    main->host().say({});
    prompts.saveName = books.path();
    prompts.expectMessage("备份失败！");
    drive->choose("dataBackup1");
    EXPECT_EQ(status(), u"");
}

TEST_F(Answers, AStockOutSaysWhatLeftAndWhatStays) {
    books.addProduct("p1", "打印纸", 10, 2, 5);
    start();
    drive->choose("no_Sales_stock1");
    drive->clickCell("DataGrid1", 0, "产品编号");
    drive->click("Command5");
    Driver dialog(*window("stock_ReturnFm3"));
    prompts.expectMessage("请输入退货数量！");
    dialog.click("Command1");
    EXPECT_EQ(window("stock_ReturnFm3")->focusWidget(), dialog.find<QWidget>("Text6(0)"));
    EXPECT_EQ(dialog.find<QLineEdit>("Text6(0)")->selectedText(), u"0");
    dialog.type("Text6(0)", "3");
    prompts.expectConfirm("确认该产品退货及退货数量吗？", true);
    dialog.click("Command1");
    EXPECT_EQ(status(), u"已退货 3：产品 p1 打印纸，现有库存 7");
}

TEST_F(Answers, APictureOfAChartSaysItsFile) {
    start();
    TopWindow* window = main->host().openWindow("statisticFm4", ViewHost::MainWindow::Stays);
    auto* chart = new BarChart(BarChart::Words{"MSChart1", "营业额统计图", "时间", "营业额"}, prompts);
    window->layout()->addWidget(chart);
    chart->setBars({{"2004-1", 120}, {"2004-2", 80}});
    QCoreApplication::processEvents();
    prompts.saveName = folder.filePath("图");
    chooseInMenuOf(*chart->viewport(), "保存图片…");
    EXPECT_EQ(status(), QStringLiteral("已保存图片：") + folder.filePath("图.png"));
}

TEST_F(Answers, ARefusalOfANewProductLeadsToItsBox) {
    books.addProduct("p1", "打印纸", 10, 2, 5);
    start();
    drive->choose("maintain_product");
    drive->click("Command8");
    drive->type("Text2(0)", "2004-2-30");
    prompts.expectMessage("日期格式错误！");
    drive->click("Command5");
    EXPECT_EQ(focused(), u"Text2(0)");
    EXPECT_EQ(drive->find<QLineEdit>("Text2(0)")->selectedText(), u"2004-2-30");
    drive->type("Text2(0)", "2004-2-3");
    drive->type("Text2(2)", "笔");
    prompts.expectMessage("请输入产品‘数量’！");
    drive->click("Command5");
    EXPECT_EQ(focused(), u"Text2(7)");
}

TEST_F(Answers, AnOrderThatIsNotThereLeadsBackToItsNumber) {
    books.addLine("21", "7", "p1", "2004-01-05", 5, 25, 2);
    start();
    drive->choose("maintain_order");
    drive->type("Text1", "99");
    prompts.expectMessage("无此订单号！");
    drive->click("Command6");
    EXPECT_EQ(focused(), u"Text1");
    EXPECT_EQ(drive->find<QLineEdit>("Text1")->selectedText(), u"99");
}

TEST_F(Answers, ASearchWithoutFieldOrTextLeadsToTheBoxThatIsEmpty) {
    books.addProduct("p1", "打印纸", 10, 2, 5);
    start();
    drive->choose("show_stock");
    drive->click("Toolbar1(3)");
    Driver dialog(*window("searchFm1"));
    prompts.expectMessage("请选择字段名！");
    dialog.click("Command1");
    EXPECT_EQ(window("searchFm1")->focusWidget()->objectName(), u"Text1");
    dialog.type("Text1", "品名");
    prompts.expectMessage("请输入查寻内容！");
    dialog.click("Command1");
    EXPECT_EQ(window("searchFm1")->focusWidget(), dialog.find<QWidget>("Text2"));
}

} // namespace

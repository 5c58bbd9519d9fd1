// A report's layout kept in a file and taken up again, at the window.
#include "support/reportTable.h"
#include "support/reportWindow.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>

namespace {

using namespace table;

class KeptLayouts : public ReportWindow {
protected:
    /// Opens a report over its invented rows, which are there already.
    void open(const ReportDescription& member) {
        session().reopen(session().*member.cursor, rowsOf(member));
        session().report.reportFormTitle = "交来的标题";
        main->host().openWindow(QString::fromUtf16(member.name), ViewHost::MainWindow::Disabled);
        take(QString::fromUtf16(member.name).toUtf8().constData());
    }
    void openFilled(const ReportDescription& member, int count) {
        const QString table = tableOf(member);
        books.changeBehind(QStringLiteral("DELETE FROM \"%1\"").arg(table));
        fillTable(books, table, count);
        open(member);
    }
    /// Moves, widens and dresses what the form lets its user move, widen and dress.
    void change() {
        for (const auto& [option, button] :
             {std::pair("Option1", "Command11"), {"Option2", "Command6"}, {"Option3", "Command5"}}) {
            report->find<QAbstractButton>(option)->click();
            report->click(button);
        }
        report->pick("Combo1", report->entries("Combo1").last());
        report->click("Command9");
        form->setFont(&ReportLayout::contentFont, {"黑体", 8.5F, true});
        prompts.expectInput("请输入标题：", "标题输入", QStringLiteral("自己的标题"));
        report->choose("tName2");
    }
    void save(const QString& path) {
        prompts.saveName = path;
        report->choose("saveLayout");
    }
    void load(const QString& path) {
        prompts.openName = path;
        report->choose("loadLayout");
    }
    QString page() {
        QStringList items;
        for (const PageRecording::Item& each : preview().items())
            items << QStringLiteral("%1 %2 %3 %4 %5")
                         .arg(each.x)
                         .arg(each.y)
                         .arg(each.right)
                         .arg(each.text, each.font ? each.font->record().name +
                                                         QString::number(double(each.font->record().size))
                                                   : QString());
        return items.join(u'\n');
    }
    QString said() { return report->text("noticeText"); }
    QString file() { return folder.filePath("版式.json"); }
};

TEST_F(KeptLayouts, EveryReportPrintsThePageAgainThatItHadWhenItsLayoutWasSaved) {
    start();
    // The moves of some look at the products.
    fillStockTable(books, "productTable", 1);
    session().reopen(session().productTable, "Select * From productTable");
    for (const ReportDescription& member : reportCatalogue()) {
        openFilled(member, 3);
        const QString opened = page();
        change();
        const QString changed = page();
        ASSERT_NE(changed, opened) << QString::fromUtf16(member.name).toStdString();
        save(file());
        form->close();
        open(member);
        EXPECT_EQ(page(), opened) << "nothing loads by itself";
        load(file());
        EXPECT_EQ(page(), changed) << QString::fromUtf16(member.name).toStdString();
        form->close();
    }
}

TEST_F(KeptLayouts, AnswersStandInTheStatusLineAndTheProposalNamesTheReport) {
    openStock(3);
    save(file());
    EXPECT_EQ(said(), "已保存版式：" + file());
    load(file());
    EXPECT_EQ(said(), "已载入版式：" + file());
    EXPECT_EQ(prompts.fileFilter, u"版式 (*.json)");
    prompts.openName.reset();
    prompts.saveName.reset();
    report->choose("saveLayout");
    report->choose("loadLayout");
    EXPECT_EQ(said(), "已载入版式：" + file()) << "cancelled, and nothing more is said";
}

TEST_F(KeptLayouts, AFileThatIsNoLayoutOfThisReportChangesNothing) {
    openStock(3);
    change();
    const QString before = page();
    const ReportLayout layout = form->reportLayout();
    QFile broken(folder.filePath("broken.json"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("{\"kind\":");
    broken.close();
    prompts.expectMessage("版式没有载入：这不是报表的版式文件。");
    load(broken.fileName());
    prompts.expectMessage("版式没有载入：这是本系统正在使用的文件。");
    load(books.path());
    EXPECT_EQ(page(), before);
    EXPECT_TRUE(form->reportLayout() == layout);
    save(file());
    form->close();
    drive->choose("whole_show_product");
    fillStockTable(books, "product_Bank", 3);
    session().reopen(session().product_Bank, "Select * From product_Bank");
    main->host().openWindow("showprint_rs15", ViewHost::MainWindow::Disabled);
    take("showprint_rs15");
    const QString opened = page();
    prompts.expectMessage("版式没有载入：这是另一张报表的版式。");
    load(file());
    EXPECT_EQ(page(), opened);
}

TEST_F(KeptLayouts, ALayoutThatCannotBeWrittenIsTold) {
    openStock(3);
    prompts.expectMessage("版式没有保存：文件不能写入：" + folder.filePath("no/a.json") + "。");
    save(folder.filePath("no/a.json"));
    EXPECT_EQ(form->findChild<QWidget*>("noticeText"), nullptr);
}

TEST_F(KeptLayouts, ATitleOfTheRowsFollowsTheRowsAndAnOwnOneStays) {
    start();
    const ReportDescription& orders = *findReport(u"showprint_rs22");
    openFilled(orders, 2);
    session().currentOrderNum = "5001";
    report->click("Command9");
    EXPECT_TRUE(previewShows("订单号：5001"));
    save(file());
    session().currentOrderNum = "5002";
    load(file());
    EXPECT_TRUE(previewShows("订单号：5002"));
    prompts.expectInput("请输入标题：", "标题输入", std::nullopt);
    report->choose("tName2");
    EXPECT_FALSE(previewShows("订单号：5002"));
    load(file());
    EXPECT_TRUE(previewShows("订单号：5002")) << "the kept layout had no title of its own";
}

TEST_F(KeptLayouts, TheChosenBoxAndThePageOnShowStayWhereTheyWere) {
    openStock(95);
    save(file());
    report->click("Command4(2)");
    report->pick("Combo1", "品名方框");
    const QString at = pages();
    load(file());
    EXPECT_EQ(pages(), at);
    EXPECT_EQ(form->reportLayout().selectedBox, 3);
    EXPECT_EQ(report->find<QComboBox>("Combo1")->currentText(), u"品名方框");
    EXPECT_TRUE(previewShows("品50"));
}

TEST_F(KeptLayouts, WithoutRowsALayoutIsTakenUpAllTheSame) {
    openStock(3);
    change();
    save(file());
    const ReportLayout kept = form->reportLayout();
    session().productTable->setFilter("品名 = '没有'");
    load(file());
    EXPECT_TRUE(form->reportLayout() == kept);
    session().productTable->clearFilter();
}

} // namespace

// Beside every position text stands what a Filter lets through, with the way back to the whole table.
#include "controls/dataGrid.h"
#include "support/shopWindow.h"

#include <QToolButton>

namespace {

using Main = ViewHost::MainWindow;

class FilterChips : public ShopWindow {
protected:
    FilterChips() {
        for (int i = 1; i <= 5; ++i) {
            const QString number = QString::number(i);
            books.addProduct("p" + number, i < 3 ? "打印纸" : "硒鼓", 10, 2, 5);
            books.addClient(number, i < 3 ? "红木行" : "文具店", "王平");
            books.addLine("2" + number, number, "p" + number, "2004-01-05", 1, 5, 2);
        }
        for (const char* table : {"return_Bank", "out_of_Bank", "no_use_Bank"})
            for (int i = 1; i <= 5; ++i)
                books.execute(QStringLiteral("INSERT INTO %1 (日期, 产品编号, 品名, 数量) VALUES "
                                             "('2004-01-05', 'p%2', '%3', 1)")
                                  .arg(QString::fromUtf8(table))
                                  .arg(i)
                                  .arg(i < 3 ? "打印纸" : "硒鼓"));
    }
    /// What the chip of a window says; empty where there is none to be seen.
    static QString chip(QWidget& window) {
        auto* chip = window.findChild<QWidget*>("filterChip");
        return chip && chip->isVisible() ? Driver(window).text("filterText") : QString();
    }
    QString chip() { return chip(*main); }
    void cross(QWidget& window) {
        Driver(window).find<QToolButton>("filterOff")->click();
        QCoreApplication::processEvents();
    }
};

TEST_F(FilterChips, TheRegistersSearchShowsWhatItLetsThroughAndTheCrossShowsAll) {
    start();
    EXPECT_EQ(chip(), u"");
    drive->type("Text2", "红木");
    drive->click("Command2");
    EXPECT_EQ(chip(), u"已筛选 2/5");
    drive->type("Text2", "没有");
    prompts.expectMessage("查询结果为零！");
    drive->click("Command2");
    EXPECT_EQ(chip(), u"已筛选 0/5");
    EXPECT_EQ(drive->find<QWidget>("Text2"), main->focusWidget()) << "the message was about this box";
    cross(*main);
    EXPECT_EQ(chip(), u"");
    EXPECT_EQ(drive->rows("DataGrid1"), 5);
}

TEST_F(FilterChips, EveryViewThatTheToolbarShowsWholeHasOne) {
    start();
    const std::tuple<const char*, RecordsetPtr Session::*, const char*> views[] = {
        {"show_whole_client", &Session::clientTable, "单位名称 = '红木行'"},
        {"whole_show_product", &Session::product_Bank, "品名 = '打印纸'"},
        {"show_stock", &Session::productTable, "品名 = '打印纸'"},
        {"show_return", &Session::return_Bank, "品名 = '打印纸'"},
        {"show_out_of_Bank", &Session::out_of_Bank, "品名 = '打印纸'"},
        {"show_on_use_Bank", &Session::no_use_Bank, "品名 = '打印纸'"},
        {"count_stock1", &Session::stock_Count_Bank, "品名 = '打印纸'"},
        {"maintain_Data1", &Session::clientTable, "单位名称 = '红木行'"},
        {"maintain_Data2", &Session::buyList, "订单号 < '23'"},
        {"maintain_Data3", &Session::productTable, "品名 = '打印纸'"},
        {"show_sales", &Session::buyList, "订单号 < '23'"},
        {"data_statistic1", &Session::clientTable, "单位名称 = '红木行'"}};
    for (const auto& [command, cursor, condition] : views) {
        SCOPED_TRACE(command);
        drive->choose(QString::fromUtf8(command));
        EXPECT_EQ(chip(), u"");
        (session().*cursor)->setFilter(QString::fromUtf8(condition));
        EXPECT_EQ(chip(), u"已筛选 2/5");
        cross(*main);
        EXPECT_EQ(chip(), u"");
        EXPECT_EQ(drive->rows("DataGrid1"), 5);
        (session().*cursor)->setFilter(QString::fromUtf8(condition));
        EXPECT_EQ(chip(), u"已筛选 2/5") << "a second time";
        drive->click("Toolbar1(4)");
        EXPECT_EQ(chip(), u"");
    }
}

TEST_F(FilterChips, StockInAndTheStockOutsHaveOne) {
    start();
    for (const char* command :
         {"maintain_product", "no_Sales_stock1", "no_Sales_stock2", "no_Sales_stock3"}) {
        SCOPED_TRACE(command);
        drive->choose(QString::fromUtf8(command));
        drive->type(qstrcmp(command, "maintain_product") == 0 ? "Text3" : "Text4", "打印");
        drive->click("Command2");
        EXPECT_EQ(chip(), u"已筛选 2/5");
        cross(*main);
        EXPECT_EQ(chip(), u"");
        EXPECT_EQ(drive->rows("DataGrid1"), 5);
    }
}

TEST_F(FilterChips, WindowsOfTheirOwnHaveOne) {
    start();
    for (const char* name : {"buyFm1", "product_displayFm1", "listProductFm2", "statisticFm4"}) {
        SCOPED_TRACE(name);
        TopWindow* window = main->host().openWindow(QString::fromUtf8(name), Main::Stays);
        ASSERT_NE(window, nullptr);
        session().productTable->setFilter("品名 = '打印纸'");
        EXPECT_EQ(chip(*window), u"已筛选 2/5");
        cross(*window);
        EXPECT_EQ(chip(*window), u"");
        EXPECT_EQ(session().productTable->Filter(), u"");
        window->finish();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    TopWindow* sales = main->host().openWindow("goodsSalesFm1", Main::Stays);
    session().buyList->setFilter("订单号 < '23'");
    EXPECT_EQ(chip(*sales), u"已筛选 2/5");
    cross(*sales);
    EXPECT_EQ(chip(*sales), u"");
}

TEST_F(FilterChips, WhereAFilterIsWhatTheTableIsMadeByNothingIsSaid) {
    start();
    drive->choose("maintain_order");
    drive->clickCell("DataGrid2", 0, "订单号");
    EXPECT_EQ(chip(), u"") << "an order's lines";
    session().productTable->setFilter({});
    books.changeBehind("UPDATE productTable SET 数量 = 1 WHERE 产品编号 = 'p1'");
    drive->choose("show_stock3");
    EXPECT_EQ(chip(), u"") << "the shortfall list";
}

TEST_F(FilterChips, RowsThatGoAndComeAreCounted) {
    start();
    drive->choose("maintain_Data3");
    drive->type("Text2", "打印");
    drive->click("Command6");
    EXPECT_EQ(chip(), u"已筛选 2/5");
    prompts.expectConfirm("确实要删除该记录吗？", true);
    drive->click("Command4");
    EXPECT_EQ(chip(), u"已筛选 1/4");
    Recordset other(session().cn);
    other.Open("Select * From productTable");
    other.Find("产品编号 = 'p5'");
    other.Delete();
    drive->click("Command1(0)");
    EXPECT_EQ(chip(), u"已筛选 1/3") << "deleted through another cursor";
    prompts.expectConfirm("确实要删除该记录吗？", true);
    drive->click("Command4");
    EXPECT_EQ(chip(), u"已筛选 0/2");
}

TEST_F(FilterChips, TheWholeCountIsThatOfTheCursorsOwnRows) {
    start();
    Recordset some(session().cn);
    some.Open("Select * From productTable Where 品名 = '打印纸'");
    EXPECT_EQ(some.wholeCount(), 2);
    some.setFilter("产品编号 = 'p1'");
    EXPECT_EQ(some.wholeCount(), 2);
    some.AddNew();
    EXPECT_EQ(some.wholeCount(), 3) << "a new row that nobody has saved";
    some.CancelUpdate();
    Recordset all(session().cn);
    all.Open("Select * From productTable");
    all.Find("产品编号 = 'p2'");
    all.Delete();
    EXPECT_EQ(some.wholeCount(), 1);
    EXPECT_EQ(all.wholeCount(), 4);
}

} // namespace

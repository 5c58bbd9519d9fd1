// What the windows that print hand to their reports.
#include "support/reportWindow.h"

namespace {

class ReportCallers : public ReportWindow {};

TEST_F(ReportCallers, TheStockListHasTheFiguresOfTheStockViewInItsHead) {
    openStock(3);
    EXPECT_TRUE(previewShows("销 售 库 存 "));
    EXPECT_TRUE(previewShows("时间：2004-1-2/2004-1-4"));
    EXPECT_EQ(item("库存资金：15").x, 100);
    EXPECT_EQ(item("库存量：6").x, 150);
}

TEST_F(ReportCallers, TheStockListHasTheFiguresOfTheWindowThatCalledIt) {
    fillStockTable(books, "productTable", 3);
    fillStockTable(books, "productTable2", 1);
    start();
    drive->choose("show_stock");
    session().reopen(session().productTable2, "Select * From productTable2");
    session().showSource = ShowSource::PeriodProducts;
    main->host().active()->activate();
    ASSERT_EQ(drive->text("Label7"), u"1");
    main->host().openWindow("statisticFm4", ViewHost::MainWindow::Stays);
    Driver(*window("statisticFm4")).click("print");
    take("print_rs3");
    EXPECT_TRUE(previewShows("库存量：6")) << "the statistic's, not the list's behind it";
    EXPECT_TRUE(previewShows("时间：2004-1-2/2004-1-4"));
    form->close();
    window("statisticFm4")->close();
    drive->click("Toolbar1(7)");
    take("print_rs3");
    EXPECT_TRUE(previewShows("库存量：1"));
}

TEST_F(ReportCallers, TheShortfallListHandsItsTitleWithItsBlankAndDisablesTheMainWindow) {
    fillStockTable(books, "productTable", 3);
    start();
    drive->choose("show_stock3");
    drive->click("Toolbar1(7)");
    take("showprint_rs3");
    EXPECT_EQ(form->windowTitle(), u"库存打印");
    EXPECT_EQ(form->reportLayout().reportTitle, u"需 补 充 库 存 产 品 清 单 ");
    EXPECT_TRUE(main->isVisible());
    EXPECT_FALSE(main->isEnabled());
    form->close();
    EXPECT_TRUE(main->isEnabled());
}

TEST_F(ReportCallers, EachStockViewHandsItsTitleAndOpensItsReport) {
    const std::tuple<const char*, const char*, const char*, const char*, const char*> views[] = {
        {"return_Bank", "show_return", "showprint_rs18", "产 品 退 货 表", "退货表打印"},
        {"no_use_Bank", "show_on_use_Bank", "showprint_rs20", "产 品 报 废 表", "产品报废表打印"},
        {"out_of_Bank", "show_out_of_Bank", "showprint_rs23", "产 品 调 拨 表", "产品调拨表打印"}};
    for (const auto& each : views)
        fillStockTable(books, QString::fromUtf8(std::get<0>(each)), 2);
    start();
    for (const auto& [table, command, name, title, caption] : views) {
        drive->choose(QString::fromUtf8(command));
        drive->click("Toolbar1(7)");
        take(name);
        EXPECT_EQ(form->reportLayout().reportTitle, QString::fromUtf8(title));
        EXPECT_EQ(form->windowTitle(), QString::fromUtf8(caption));
        form->close();
    }
}

TEST_F(ReportCallers, ThePeriodOfAHistoryPrintsItsOwnReport) {
    fillStockTable(books, "return_Bank", 2);
    fillStockTable(books, "return_Bank2", 1);
    start();
    drive->choose("show_return");
    session().reopen(session().return_Bank2, "Select * From return_Bank2");
    session().showSource = ShowSource(19);
    session().periodStart = "2004";
    main->host().active()->activate();
    drive->click("Toolbar1(7)");
    take("showprint_rs19");
    EXPECT_TRUE(previewShows("时间：2004/"));
    EXPECT_TRUE(previewShows("P1"));
    EXPECT_FALSE(previewShows("P2"));
}

} // namespace

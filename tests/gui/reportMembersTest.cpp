// Every report of the catalogue in its window: what only some of them do.
#include "recordset/error.h"
#include "support/errorOf.h"
#include "support/pdfReader.h"
#include "support/reportTable.h"
#include "support/reportWindow.h"

#include <QAction>
#include <QApplication>

namespace {

using namespace table;

class ReportMembers : public ReportWindow {
protected:
    /// Opens a report over `count` invented rows of its own.
    void open(const ReportRow& row, int count) {
        const ReportDescription& member = *findReport(row.name);
        const QString table = tableOf(member);
        books.changeBehind(QStringLiteral("DELETE FROM \"%1\"").arg(table));
        fillTable(books, table, count);
        session().reopen(session().*member.cursor, rowsOf(member));
        main->host().openWindow(QString::fromUtf16(row.name), ViewHost::MainWindow::Disabled);
        take(nameOf(row).c_str());
    }
    const RecordsetPtr& rowsOfMember(const ReportRow& row) { return session().*row.cursor; }
    static const ReportRow& member(const char16_t* name) { return *rowOf(*findReport(name)); }
    void leaveAndComeBack() {
        main->host().openWindow("manualFm1", ViewHost::MainWindow::Stays);
        QApplication::setActiveWindow(window("manualFm1"));
        QApplication::setActiveWindow(form);
    }
};

TEST_F(ReportMembers, OverAnEmptyCursorEachStandsOnPageZeroAndThreeLeaveNoRowsAPage) {
    start();
    const int untouched = session().clientTable->PageSize();
    for (const ReportRow& row : kRows) {
        open(row, 0);
        EXPECT_EQ(pages(), u"起始页：0 终止页：0 第 0 页") << nameOf(row);
        EXPECT_EQ(report->text("Text5"), u"0") << nameOf(row);
        EXPECT_EQ(rowsOfMember(row)->PageSize(), row.traits & ZeroWhenEmpty ? 0 : untouched) << nameOf(row);
        EXPECT_EQ(report->entries("Combo1"), textsOf(setOf(row).boxes)) << nameOf(row);
        EXPECT_TRUE(preview().items().empty()) << nameOf(row);
        form->close();
    }
}

TEST_F(ReportMembers, FiveHaveTheMenuOfSettingsAndThreeAnEntryInIt) {
    start();
    int menus = 0;
    for (const ReportRow& row : kRows) {
        open(row, 1);
        const auto* settings = form->findChild<QAction*>("settings");
        const auto* setup = form->findChild<QAction*>("printerSetup");
        EXPECT_EQ(settings != nullptr, (row.traits & (BareMenu | SetupMenu)) != 0) << nameOf(row);
        EXPECT_EQ(setup != nullptr, (row.traits & SetupMenu) != 0) << nameOf(row);
        if (settings) {
            ++menus;
            EXPECT_EQ(settings->text(), u"设置");
        }
        form->close();
    }
    EXPECT_EQ(menus, 5);
}

TEST_F(ReportMembers, ThirteenStopBehindAFullPageAndOneLeavesThePrinterAsItStands) {
    start();
    int stopping = 0;
    for (const ReportRow& row : kRows) {
        open(row, row.rows + 1);
        const bool stops = (row.traits & StopsInPrint) != 0;
        stopping += stops;
        prompts.saveName = pdf(nameOf(row).c_str());
        session().report.printerOrientation = 0;
        EXPECT_EQ(errorOf([this] { form->printB(); }), stops ? ErrorNumber::IsClosed : 0) << nameOf(row);
        EXPECT_EQ(session().report.printerOrientation,
                  row.traits & KeepsOrientation ? 0 : int(row.orientation))
            << nameOf(row);
        form->close();
        EXPECT_EQ(pdfPages(*prompts.saveName), stops ? 1 : 2) << nameOf(row);
    }
    EXPECT_EQ(stopping, 13);
}

TEST_F(ReportMembers, ATestPrintIsOnePageAndInFourReportsNone) {
    start();
    int none = 0;
    for (const ReportRow& row : kRows) {
        open(row, row.rows + 1);
        prompts.saveName = pdf(nameOf(row).c_str());
        const int before = prompts.saveQuestions;
        report->click("Command3");
        const bool prints = (row.traits & StopsTest) == 0;
        none += !prints;
        EXPECT_EQ(prompts.saveQuestions - before, prints ? 1 : 0) << nameOf(row);
        EXPECT_EQ(session().report.pageTo, 2) << nameOf(row);
        form->close();
        EXPECT_EQ(QFile::exists(*prompts.saveName), prints) << nameOf(row);
    }
    EXPECT_EQ(none, 4);
}

TEST_F(ReportMembers, FourStartAfreshOnTheirFirstPageWheneverTheyComeToTheFront) {
    start();
    int afresh = 0;
    for (const ReportRow& row : kRows) {
        open(row, 2 * row.rows + 1);
        QApplication::setActiveWindow(form);
        report->click("Command4(3)");
        ASSERT_EQ(session().report.pageIndex, 2) << nameOf(row);
        rowsOfMember(row)->setPageSize(7);
        for (const int time : {1, 2}) {
            leaveAndComeBack();
            const bool starts = (row.traits & AtActivation) != 0;
            EXPECT_EQ(session().report.pageIndex, starts ? 0 : 2) << nameOf(row) << time;
            EXPECT_EQ(session().report.pageFrom, starts ? 1 : 3) << nameOf(row) << time;
            EXPECT_EQ(rowsOfMember(row)->PageSize(), starts ? row.rows : 7) << nameOf(row) << time;
            EXPECT_EQ(previewShows(" 第 1 页"), starts) << nameOf(row) << time;
            afresh += starts;
            if (starts)
                report->click("Command4(3)");
        }
        form->close();
    }
    EXPECT_EQ(afresh, 8);
}

TEST_F(ReportMembers, TheMovesOfFiveLookAtTheProductsAndNotAtTheirOwnRows) {
    start();
    books.addProduct("P9", "纸", 1, 1, 1);
    int guarded = 0;
    for (const ReportRow& row : kRows) {
        if (row.cursor == &Session::productTable)
            continue;
        open(row, 1);
        const bool moves = (row.traits & MovesByProducts) == 0;
        guarded += !moves;
        double top = row.tableTop;
        const auto expectMove = [&](const char* state, bool moved) {
            for (const char* button : {"Command11", "Command7", "Command11"})
                report->click(QString::fromUtf8(button));
            top += moved ? 1 : 0;
            EXPECT_EQ(form->reportLayout().tableTop, top) << nameOf(row) << state;
        };
        session().productTable->Close();
        expectMove("closed", moves);
        session().reopen(session().productTable, "Select * From productTable");
        expectMove("with products", true);
        session().productTable->setFilter("品名 = '墨'");
        expectMove("filtered away", moves);
        form->close();
    }
    EXPECT_EQ(guarded, 5);
}

TEST_F(ReportMembers, TheirWideningLooksAtTheirOwnRowsAllTheSame) {
    start();
    session().productTable->Close();
    open(member(u"showprint_rs2"), 1);
    report->pick("Combo1", "折扣方框");
    report->click("Command9");
    EXPECT_EQ(form->reportLayout().boxShift[10], 1);
    EXPECT_EQ(item("实收").x, 18 + 222 + 2 + 1) << "the last separator of ten moves the last column";
}

class PurchasesReport : public ReportMembers {
protected:
    /// The purchases of an order, the register on the first of two customers.
    void openPurchases() {
        books.addClient("1001", "红木家具厂");
        books.addClient("1002", "文具店");
        start();
        open(member(u"print_rs_total"), 1);
        ASSERT_TRUE(previewShows("红木家具厂购物记录"));
    }
    void toTheOtherCustomer() { session().clientTable->MoveNext(); }
};

TEST_F(PurchasesReport, TheTitleFollowsTheCustomerOfTheRegisterAtTheNextDrawing) {
    openPurchases();
    toTheOtherCustomer();
    report->click("Command4(0)");
    EXPECT_TRUE(previewShows("文具店购物记录") && previewShows("客户编号：1002"));
    EXPECT_FALSE(previewShows("红木家具厂购物记录"));
    session().clientTable->MoveFirst();
    prompts.saveName = pdf();
    report->click("Command2");
    EXPECT_TRUE(pdfText(pdf(), 1).contains("红木家具厂购物记录")) << "on paper too";
    toTheOtherCustomer();
    report->choose("exportPdf");
    EXPECT_TRUE(pdfText(pdf(), 1).contains("文具店购物记录"));
}

TEST_F(PurchasesReport, ATitleOfTheUsersOwnStaysWhoeverTheCustomerIs) {
    openPurchases();
    prompts.expectInput("请输入标题：", "标题输入", "我的清单");
    report->choose("tName2");
    toTheOtherCustomer();
    report->click("Command4(0)");
    EXPECT_TRUE(previewShows("我的清单"));
    EXPECT_FALSE(previewShows("文具店购物记录"));
    prompts.expectInput("请输入标题：", "标题输入", std::nullopt);
    report->choose("tName2");
    report->click("Command11");
    EXPECT_EQ(form->reportLayout().reportTitle, u"") << "emptied by a canceled input";
    form->close();
    open(member(u"print_rs_total"), 1);
    EXPECT_TRUE(previewShows("文具店购物记录")) << "the next form makes its own again";
}

TEST_F(PurchasesReport, EveryPageBearsTheSumsOfAllRows) {
    start();
    open(member(u"print_rs_total"), 66);
    EXPECT_TRUE(previewShows("时间：2004-1-2/2004-3-7"));
    EXPECT_TRUE(previewShows("合计金额：2211") && previewShows("合计数：2211"));
    report->click("Command4(3)");
    EXPECT_TRUE(previewShows("2004-3-7") && previewShows("合计金额：2211"));
    EXPECT_FALSE(previewShows("2004-1-2"));
}

} // namespace

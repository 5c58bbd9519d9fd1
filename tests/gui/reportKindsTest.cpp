// What a report's description can ask of its form, on descriptions made for the test.
#include "recordset/error.h"
#include "support/errorOf.h"
#include "support/pdfReader.h"
#include "support/reportWindow.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>

namespace {

constexpr ReportColumn kColumns[] = {{u"产品编号", u"产品编号", 40}, {u"品名", u"品名"}};
constexpr const char16_t* kBoxes[] = {u"产品编号方框"};

constexpr ReportDescription kPlain{.name = u"probe",
                                   .caption = u"试印",
                                   .cursor = &Session::product_Bank,
                                   .columns = kColumns,
                                   .boxNames = kBoxes};

class ReportKinds : public ReportWindow {
protected:
    ~ReportKinds() override { main.reset(); }

    /// Opens a report made of the plain one over `count` rows.
    void open(int count, const std::function<void(ReportDescription&)>& change) {
        change(probe);
        fillStockTable(books, "product_Bank", count);
        start();
        session().reopen(session().product_Bank, "Select * From product_Bank");
        main->host().registerReport("probe", [this] { return new ReportForm(probe, main->host(), prompts); });
        main->host().openWindow("probe", ViewHost::MainWindow::Disabled);
        take("probe");
    }
    const RecordsetPtr& rows() { return session().product_Bank; }

    ReportDescription probe = kPlain;
};

TEST_F(ReportKinds, ATitleCanBeMadeFromTheCursorsWhenTheFormOpens) {
    books.addClient("1001", "红木家具厂");
    open(1, [](ReportDescription& made) {
        made.title = u"不用";
        made.titleOf = [](const HeadSource& source) {
            return source.session.clientTable->Fields("单位名称").text() + QStringLiteral("购物记录");
        };
    });
    EXPECT_EQ(form->reportLayout().reportTitle, u"红木家具厂购物记录");
    EXPECT_TRUE(previewShows("红木家具厂购物记录"));
}

TEST_F(ReportKinds, AHeadItemCanWalkTheReportsOwnRowsAndThePageIsStillDrawn) {
    static constexpr HeadItem head[] = {{0, [](const HeadSource& source) {
                                             double sum = 0;
                                             for (source.rows->MoveFirst(); !source.rows->isEOF();
                                                  source.rows->MoveNext())
                                                 sum += source.rows->Fields("数量").number();
                                             return QStringLiteral("合计数：%1").arg(sum);
                                         }}};
    open(41, [](ReportDescription& summed) { summed.head = head; });
    EXPECT_TRUE(previewShows("合计数：861"));
    report->click("Command4(2)");
    EXPECT_TRUE(previewShows("P41"));
    EXPECT_TRUE(previewShows("合计数：861"));
}

TEST_F(ReportKinds, PrintingAndTestPrintReadTheUnopenedRecordsetEachByItself) {
    open(80, [](ReportDescription& both) { both.testReadsUnopened = both.printReadsUnopened = true; });
    prompts.saveName = pdf();
    report->click("Command3");
    EXPECT_EQ(prompts.saveQuestions, 0) << "the test print does nothing";
    EXPECT_EQ(errorOf([this] { form->printB(); }), ErrorNumber::IsClosed);
}

TEST_F(ReportKinds, ATestPrintThatReadsTheUnopenedRecordsetLeavesPrintingAlone) {
    open(80, [](ReportDescription& test) { test.testReadsUnopened = true; });
    prompts.saveName = pdf();
    report->click("Command3");
    EXPECT_FALSE(QFile::exists(pdf()));
    report->click("Command2");
    EXPECT_EQ(pdfPages(pdf()), 2);
}

TEST_F(ReportKinds, PagingAtActivationStartsAfreshWhenTheFormComesBackFromAnotherWindow) {
    open(100, [](ReportDescription& paged) { paged.pagesAtActivation = true; });
    QApplication::setActiveWindow(form);
    report->click("Command10(0)");
    report->click("Command4(3)");
    EXPECT_EQ(session().report.pageFrom, 3);
    EXPECT_EQ(session().report.pageIndex, 2);
    main->host().openWindow("manualFm1", ViewHost::MainWindow::Stays);
    QApplication::setActiveWindow(window("manualFm1"));
    QApplication::setActiveWindow(form);
    EXPECT_EQ(session().report.pageIndex, 0);
    EXPECT_EQ(session().report.pageFrom, 1);
    EXPECT_EQ(rows()->PageSize(), 40);
    EXPECT_TRUE(previewShows("P1") && !previewShows("P100"));
}

TEST_F(ReportKinds, PagingAtActivationStaysWhereAPromptWasInFront) {
    open(100, [](ReportDescription& paged) { paged.pagesAtActivation = true; });
    QApplication::setActiveWindow(form);
    report->click("Command4(3)");
    QDialog prompt(form);
    prompt.show();
    QApplication::setActiveWindow(&prompt);
    prompt.close();
    QApplication::setActiveWindow(form);
    EXPECT_EQ(session().report.pageFrom, 3) << "a print that asks for its file prints the page on show";
}

TEST_F(ReportKinds, OtherReportsKeepTheirPageWhenTheyComeBack) {
    open(100, [](ReportDescription&) {});
    QApplication::setActiveWindow(form);
    report->click("Command4(3)");
    main->host().openWindow("manualFm1", ViewHost::MainWindow::Stays);
    QApplication::setActiveWindow(window("manualFm1"));
    QApplication::setActiveWindow(form);
    EXPECT_EQ(session().report.pageFrom, 3);
}

TEST_F(ReportKinds, PagedAtActivationPrintingAsksAClosedCursorForItsRows) {
    open(1, [](ReportDescription& paged) { paged.pagesAtActivation = true; });
    rows()->Close();
    EXPECT_NO_THROW(report->click("Command3")) << "the test print passes over the error";
    EXPECT_EQ(errorOf([this] { form->print(); }), ErrorNumber::IsClosed);
}

TEST_F(ReportKinds, AMoveCanLookAtTheProductsInsteadOfItsOwnRows) {
    open(1, [](ReportDescription& guarded) { guarded.moveGuard = &Session::productTable; });
    report->click("Command11");
    EXPECT_EQ(form->reportLayout().tableTop, 25) << "no products";
    books.addProduct("P9", "纸", 1, 1, 1);
    session().reopen(session().productTable, "Select * From productTable");
    report->click("Command11");
    EXPECT_EQ(form->reportLayout().tableTop, 26);
    session().productTable->Close();
    report->click("Command11");
    EXPECT_EQ(form->reportLayout().tableTop, 26) << "closed";
}

TEST_F(ReportKinds, RowsAPageCanDependOnTheScratchCursor) {
    open(3, [](ReportDescription& guarded) { guarded.pageSizeGuard = &Session::scratch; });
    report->click("Command10(0)");
    EXPECT_EQ(report->text("Text5"), u"40") << "the scratch cursor is closed";
    session().reopen(session().scratch, "Select * From product_Bank");
    report->click("Command10(0)");
    EXPECT_EQ(report->text("Text5"), u"41");
}

TEST_F(ReportKinds, AnEmptyCursorCanBeLeftWithNoRowsAPage) {
    open(0, [](ReportDescription& zero) { zero.emptyPageSizeIsZero = true; });
    EXPECT_EQ(rows()->PageSize(), 0);
    EXPECT_EQ(report->text("Text5"), u"0");
    EXPECT_EQ(report->text("Text1(2)"), u"第 0 页");
}

TEST_F(ReportKinds, TheSettingsMenuIsThereWhereTheDescriptionAsksForIt) {
    open(1, [](ReportDescription&) {});
    EXPECT_EQ(form->findChild<QAction*>("settings"), nullptr);
}

TEST_F(ReportKinds, TheSettingsMenuCanBeBare) {
    open(1, [](ReportDescription& bare) { bare.settings = SettingsMenu::Bare; });
    EXPECT_EQ(report->find<QAction>("settings")->text(), u"设置");
    EXPECT_EQ(form->findChild<QAction*>("printerSetup"), nullptr);
}

TEST_F(ReportKinds, ThePrinterSetupHoldsForWhatIsPrintedBehindIt) {
    open(1, [](ReportDescription& setup) { setup.settings = SettingsMenu::PrinterSetup; });
    report->choose("printerSetup");
    EXPECT_EQ(session().report.printerName, u"") << "canceled";
    prompts.printerAnswer = PrinterChoice{"前台", 1};
    report->choose("printerSetup");
    EXPECT_EQ(session().report.printerName, u"前台");
    EXPECT_EQ(session().report.printerOrientation, 1);
    prompts.printerAnswer.reset();
    report->choose("printerSetup");
    EXPECT_EQ(prompts.printerStart->name, u"前台");
    EXPECT_EQ(prompts.printerStart->orientation, 1);
}

TEST_F(ReportKinds, PrintingTurnsThePrinterToTheReportsSheet) {
    open(1, [](ReportDescription&) {});
    prompts.saveName = pdf();
    report->click("Command2");
    EXPECT_EQ(session().report.printerOrientation, 2);
}

TEST_F(ReportKinds, AReportCanLeaveTheOrientationAsThePrinterStands) {
    open(1, [](ReportDescription& left) { left.keepsOrientation = true; });
    session().report.printerOrientation = 1;
    prompts.saveName = pdf();
    report->click("Command2");
    EXPECT_EQ(session().report.printerOrientation, 1);
    EXPECT_TRUE(outputOf("pdfinfo", {pdf()}).contains("842 x 595")) << "a file has no printer to follow";
}

TEST_F(ReportKinds, ATitleShiftLeavesSixteenBitsOnlyWhereItIsWide) {
    open(1, [](ReportDescription& wide) { wide.wideTitleShift = true; });
    ReportLayout layout = form->reportLayout();
    layout.titleShift = 32767;
    layout.move(ReportPart::Title, 1, 0);
    EXPECT_EQ(layout.titleShift, 32768);
    layout.wideTitleShift = false;
    layout.titleShift = 32767;
    EXPECT_EQ(errorOf([&] { layout.move(ReportPart::Title, 1, 0); }), ErrorNumber::Overflow);
}

TEST_F(ReportKinds, AFileBearsTheCaptionAndTheDayAsItsTitle) {
    open(1, [](ReportDescription&) {});
    for (const char* command : {"Command2", "Command3"}) {
        prompts.saveName = pdf(command);
        report->click(QString::fromUtf8(command));
        EXPECT_TRUE(QString::fromUtf8(outputOf("pdfinfo", {pdf(command)})).contains("试印 2004-11-21"))
            << command;
    }
    prompts.saveName = pdf("export.pdf");
    report->choose("exportPdf");
    EXPECT_TRUE(QString::fromUtf8(outputOf("pdfinfo", {pdf("export.pdf")})).contains("试印 2004-11-21"));
}

TEST_F(ReportKinds, KeysTurnThePagesPrintAndClose) {
    open(100, [](ReportDescription&) {});
    QApplication::setActiveWindow(form);
    const std::pair<Qt::Key, int> pages[] = {
        {Qt::Key_End, 3}, {Qt::Key_PageUp, 2}, {Qt::Key_PageDown, 3}, {Qt::Key_Home, 1}, {Qt::Key_PageUp, 1}};
    for (const char* focused : {"Command2", "Combo1"}) {
        for (const auto& [key, page] : pages) {
            report->key(QString::fromUtf8(focused), key);
            EXPECT_EQ(session().report.pageFrom, page) << focused << key;
        }
    }
    prompts.saveName = pdf();
    report->key("Combo1", Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(pdfPages(pdf()), 3);
    session().report.reportReturned = 0;
    report->key("Command2", Qt::Key_Escape);
    EXPECT_EQ(window("probe"), nullptr);
    EXPECT_EQ(session().report.reportReturned, 1);
    EXPECT_TRUE(main->isEnabled());
}

TEST_F(ReportKinds, OneReportAtATime) {
    open(1, [](ReportDescription&) {});
    EXPECT_EQ(main->host().openWindow("print_rs3", ViewHost::MainWindow::Disabled), form);
    EXPECT_EQ(window("print_rs3"), nullptr);
    form->close();
    TopWindow* next = main->host().openWindow("print_rs3", ViewHost::MainWindow::Disabled);
    EXPECT_EQ(next->objectName(), u"print_rs3");
}

TEST_F(ReportKinds, WhileOneIsOpenNoOtherWindowPrints) {
    open(1, [](ReportDescription&) {});
    TopWindow* statistic = main->host().openWindow("statisticFm4", ViewHost::MainWindow::Stays);
    EXPECT_FALSE(statistic->isEnabled()) << "opened while the report is";
    TopWindow* help = main->host().openWindow("manualFm1", ViewHost::MainWindow::Stays);
    EXPECT_TRUE(help->isEnabled()) << "it prints nothing";
    form->close();
    EXPECT_TRUE(statistic->isEnabled());
    main->host().openWindow("probe", ViewHost::MainWindow::Disabled);
    EXPECT_FALSE(statistic->isEnabled());
}

/// Whether a progress window stands, or could still come up.
bool progressThere() {
    for (const QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == u"longWork" || window->inherits("QProgressDialog"))
            return true;
    return false;
}

TEST_F(ReportKinds, TheProgressWindowIsGoneBeforeAMessage) {
    open(1, [](ReportDescription&) {});
    prompts.saveName = folder.filePath("missing/out.pdf");
    int looked = 0;
    const auto look = [&looked] {
        EXPECT_FALSE(progressThere());
        ++looked;
    };
    prompts.expectMessage("打印失败！不能开始打印。");
    prompts.whenShown(look);
    report->click("Command2");
    prompts.expectMessage("文件不能写入：" + *prompts.saveName + "\n不能开始打印。");
    prompts.whenShown(look);
    report->choose("exportPdf");
    EXPECT_EQ(looked, 2);
}

} // namespace

#include "reports/reportForm.h"
#include "recordset/error.h"
#include "support/errorOf.h"
#include "support/pdfReader.h"
#include "support/reportWindow.h"

#include <QComboBox>
#include <QFile>
#include <QScrollBar>

namespace {

class Reports : public ReportWindow {};

TEST_F(Reports, OpensOnPageOneAndNamesThePageOfTheCursorsRow) {
    openHistory(81);
    EXPECT_EQ(form->windowTitle(), u"产品入库清单打印");
    EXPECT_EQ(pages(), u"起始页：1 终止页：3 第 3 页") << "the activation left the cursor on the last row";
    EXPECT_EQ(report->text("Text5"), u"40");
    EXPECT_TRUE(previewShows("P1") && previewShows("P40"));
    EXPECT_FALSE(previewShows("P41"));
    EXPECT_TRUE(previewShows(" 第 1 页"));
    EXPECT_TRUE(previewShows("产 品 入 库 清 单"));
    EXPECT_TRUE(previewShows("时间：2004-1-2/2004-3-22"));
    EXPECT_FALSE(main->isVisible()) << "hidden while the report is open";
    EXPECT_EQ(report->entries("Combo1").first(), u"日期方框");
    EXPECT_EQ(report->find<QComboBox>("Combo1")->currentIndex(), 0);
    EXPECT_EQ(form->reportLayout().selectedBox, 1);
}

TEST_F(Reports, AnEmptyCursorShowsAnEmptyPageZeroAndNothingMoves) {
    start();
    session().reopen(session().product_Bank, "Select * From product_Bank");
    main->host().openWindow("showprint_rs15", ViewHost::MainWindow::Disabled);
    take("showprint_rs15");
    EXPECT_EQ(pages(), u"起始页：0 终止页：0 第 0 页");
    EXPECT_EQ(report->text("Text5"), u"0");
    EXPECT_EQ(session().report.pageFrom + session().report.pageTo + session().report.pageFirst, 0);
    for (const char* button :
         {"Command10(0)", "Command10(1)", "Command8", "Command9", "Command4(2)", "Command2", "Command3"})
        report->click(QString::fromUtf8(button));
    EXPECT_TRUE(preview().items().empty());
    EXPECT_EQ(report->text("Text5"), u"0");
    EXPECT_EQ(form->reportLayout().boxShift[1], 0);
    EXPECT_EQ(prompts.saveQuestions, 0);
}

TEST_F(Reports, PagesTurnWithinTheirEnds) {
    openHistory(81);
    const auto turn = [this](int button) {
        report->click(QStringLiteral("Command4(%1)").arg(button));
        return report->text("Text1(2)");
    };
    EXPECT_EQ(turn(2), u"第 2 页");
    EXPECT_TRUE(previewShows("P41") && previewShows(" 第 2 页"));
    EXPECT_EQ(turn(2), u"第 3 页");
    EXPECT_TRUE(previewShows("P81"));
    EXPECT_EQ(turn(2), u"第 3 页");
    EXPECT_EQ(turn(1), u"第 2 页") << "the cursor behind the last row counts as the last page";
    EXPECT_EQ(turn(0), u"第 1 页");
    EXPECT_EQ(turn(1), u"第 1 页");
    EXPECT_EQ(turn(3), u"第 3 页");
    EXPECT_EQ(session().report.pageIndex, 2);
}

TEST_F(Reports, MoreRowsAPageBeginAtPageOneButLeaveThePageDrawn) {
    openHistory(81);
    report->click("Command4(2)");
    report->click("Command10(0)");
    EXPECT_EQ(report->text("Text5"), u"41");
    EXPECT_EQ(session().report.pageFrom, 1);
    EXPECT_EQ(session().report.pageTo, 2);
    EXPECT_EQ(session().report.pageIndex, 1) << "left as it was";
    EXPECT_TRUE(previewShows("P42")) << "the second page of 41 rows";
    EXPECT_TRUE(previewShows(" 第 1 页"));
    report->click("Command10(1)");
    report->click("Command10(1)");
    EXPECT_EQ(report->text("Text5"), u"39");
    EXPECT_EQ(session().report.pageTo, 3);
}

TEST_F(Reports, RowsAPageHaveNoLowerBound) {
    openHistory(2);
    for (int i = 0; i < 41; ++i)
        report->click("Command10(1)");
    EXPECT_EQ(report->text("Text5"), u"-1");
    EXPECT_EQ(session().report.pageTo, 0);
    EXPECT_EQ(report->text("Text1(2)"), u"第 -1 页");
    report->click("Command4(2)");
    EXPECT_EQ(session().report.pageFrom, 1);
    EXPECT_EQ(session().product_Bank->PageSize(), -1) << "left on the shared cursor";
}

TEST_F(Reports, EachMoveButtonActsOnTheChosenPart) {
    openHistory(1);
    const ReportLayout& layout = form->reportLayout();
    for (const char* button : {"Command7", "Command5"})
        report->click(QString::fromUtf8(button));
    EXPECT_EQ(layout.tableTop, 24);
    EXPECT_EQ(layout.tableLeft, 17);
    EXPECT_EQ(item("P1").x, 39);
    report->click("Option2");
    for (const char* button : {"Command11", "Command6"})
        report->click(QString::fromUtf8(button));
    EXPECT_EQ(item("产 品 入 库 清 单").y, 11);
    EXPECT_EQ(item("产 品 入 库 清 单").x, 119);
    report->click("Option3");
    for (const char* button : {"Command11", "Command11", "Command6"})
        report->click(QString::fromUtf8(button));
    EXPECT_EQ(layout.headTop, std::vector<double>{22});
    EXPECT_EQ(layout.headLeft, std::vector<double>{21});
}

TEST_F(Reports, AMoveActsWithoutLookingAtTheCursor) {
    start();
    session().reopen(session().product_Bank, "Select * From product_Bank");
    main->host().openWindow("showprint_rs15", ViewHost::MainWindow::Disabled);
    take("showprint_rs15");
    report->click("Command11");
    EXPECT_EQ(form->reportLayout().tableTop, 26);
}

TEST_F(Reports, TheChosenBoxIsWidenedAndNarrowed) {
    openHistory(1);
    report->pick("Combo1", "产品编号方框");
    EXPECT_EQ(form->reportLayout().selectedBox, 2);
    for (int i = 0; i < 3; ++i)
        report->click("Command9");
    EXPECT_EQ(item("品1").x, 18 + 62 + 2 + 3);
    report->click("Command8");
    EXPECT_EQ(item("品1").x, 18 + 62 + 2 + 2);
    EXPECT_EQ(item("P1").x, 40);
}

TEST_F(Reports, AFontIsTakenOverWholeAndCancelLeavesIt) {
    openHistory(1);
    report->choose("wContent");
    EXPECT_EQ(prompts.fontTitles, QStringList{"内容字符"});
    EXPECT_EQ(form->reportLayout().contentFont, (FontRecord{"宋体", 10}));
    QFont font("黑体");
    font.setPointSizeF(14);
    font.setItalic(true);
    font.setUnderline(true);
    font.setStrikeOut(true);
    prompts.fontAnswer = FontChoice{font, QColor(255, 0, 16)};
    const std::pair<const char*, FontRecord ReportLayout::*> entries[] = {
        {"sTitle", &ReportLayout::titleFont},
        {"time_font", &ReportLayout::headFont},
        {"nField", &ReportLayout::fieldFont},
        {"wContent", &ReportLayout::contentFont}};
    for (const auto& [entry, record] : entries) {
        report->choose(QString::fromUtf8(entry));
        EXPECT_EQ(form->reportLayout().*record,
                  (FontRecord{"黑体", 14, false, true, true, true, 255 | 16 << 16}))
            << entry;
    }
    EXPECT_EQ(item("P1").font->record().size, 14);
    EXPECT_EQ(item("P1").font->colour(), QColor(255, 0, 16));
}

TEST_F(Reports, EachFontDialogStartsWithItsRecordWhole) {
    openHistory(1);
    report->choose("sTitle");
    EXPECT_EQ(prompts.fontStart.font.family(), u"黑体");
    EXPECT_EQ(prompts.fontStart.font.pointSizeF(), 20);
    EXPECT_TRUE(prompts.fontStart.font.bold());
    QFont font("宋体");
    font.setPointSizeF(16.5);
    font.setItalic(true);
    font.setUnderline(true);
    prompts.fontAnswer = FontChoice{font, QColor(1, 2, 3)};
    report->choose("sTitle");
    report->choose("sTitle");
    EXPECT_EQ(prompts.fontStart.font, font) << "and with what was chosen last";
    EXPECT_EQ(prompts.fontStart.colour, QColor(1, 2, 3));
}

TEST_F(Reports, AFontDialogConfirmedWithoutAChangeChangesNothingOnPaper) {
    openHistory(3);
    const auto before = preview().items();
    const ReportLayout layout = form->reportLayout();
    for (const char* entry : {"sTitle", "time_font", "nField", "wContent"}) {
        prompts.fontAnswer.reset();
        report->choose(QString::fromUtf8(entry));
        prompts.fontAnswer = FontDialog(QString(), prompts.fontStart, nullptr).choice();
        report->choose(QString::fromUtf8(entry));
    }
    for (FontRecord ReportLayout::*record : {&ReportLayout::titleFont, &ReportLayout::headFont,
                                             &ReportLayout::fieldFont, &ReportLayout::contentFont})
        EXPECT_EQ(form->reportLayout().*record, layout.*record);
    ASSERT_EQ(preview().items().size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(preview().items()[i].y, before[i].y);
}

TEST_F(Reports, ATitleIsAskedForAndACanceledInputEmptiesIt) {
    openHistory(1);
    prompts.expectInput("请输入标题：", "标题输入", "我的清单");
    report->choose("tName2");
    EXPECT_TRUE(previewShows("我的清单"));
    prompts.expectInput("请输入标题：", "标题输入", std::nullopt);
    report->choose("tName2");
    EXPECT_EQ(form->reportLayout().reportTitle, u"");
    EXPECT_FALSE(previewShows("我的清单"));
}

TEST_F(Reports, PrintingRunsFromThePageOnShowToTheLast) {
    openHistory(170);
    report->click("Command4(0)");
    report->click("Command4(2)");
    report->click("Command4(2)");
    prompts.saveName = pdf();
    report->click("Command2");
    EXPECT_EQ(pdfPages(pdf()), 3);
    for (int page = 1; page <= 3; ++page)
        EXPECT_TRUE(pdfText(pdf(), page).endsWith(QStringLiteral("第 %1 页").arg(page + 2)));
    EXPECT_TRUE(pdfText(pdf(), 1).contains("P81"));
    EXPECT_EQ(session().report.pageFrom, 3);
    EXPECT_EQ(form->cursor().shape(), Qt::ArrowCursor);
    report->click("Command4(1)");
    EXPECT_EQ(report->text("Text1(2)"), u"第 4 页") << "the cursor stands on the last printed page";
}

TEST_F(Reports, ATestPrintIsThePageOnShowAndLeavesTheEndPage) {
    openHistory(170);
    report->click("Command4(0)");
    report->click("Command4(2)");
    report->click("Command4(2)");
    prompts.saveName = pdf();
    report->click("Command3");
    EXPECT_EQ(pdfPages(pdf()), 1);
    EXPECT_TRUE(pdfText(pdf(), 1).endsWith("第 3 页"));
    EXPECT_EQ(session().report.pageTo, 5);
}

TEST_F(Reports, WithoutAFileNameNothingIsPrinted) {
    openHistory(1);
    report->click("Command2");
    EXPECT_EQ(prompts.saveQuestions, 1);
    EXPECT_EQ(form->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(Reports, AFileThatCannotBeWrittenIsTold) {
    openHistory(1);
    prompts.saveName = folder.filePath("missing/out.pdf");
    prompts.expectMessage("打印失败！不能开始打印。");
    report->click("Command2");
}

TEST_F(Reports, OnTheEmptyPathThePointerStaysAsItIsWhilePrinting) {
    start();
    session().reopen(session().product_Bank, "Select * From product_Bank");
    main->host().openWindow("showprint_rs15", ViewHost::MainWindow::Disabled);
    take("showprint_rs15");
    form->printB();
    EXPECT_EQ(form->cursor().shape(), Qt::ForbiddenCursor);
}

TEST_F(Reports, TheMembersThatReadTheUnopenedRecordsetStopBehindAFullPage) {
    openStock(80);
    prompts.saveName = pdf();
    EXPECT_EQ(errorOf([this] { form->printB(); }), ErrorNumber::IsClosed);
    EXPECT_EQ(session().report.pageIndex, 0) << "stopped on the first page";
    form->close();
    EXPECT_EQ(pdfPages(pdf()), 1) << "the page that was sent";
}

TEST_F(Reports, TheirTestPrintPutsTheEndPageBackAndEndsNoDocument) {
    openStock(80);
    prompts.saveName = pdf();
    report->click("Command3");
    EXPECT_EQ(session().report.pageTo, 2);
    EXPECT_FALSE(QFile::exists(pdf())) << "no end of the document is reached";
    report->click("Command3");
    EXPECT_EQ(prompts.saveQuestions, 1) << "the document is open still";
    form->close();
    EXPECT_EQ(pdfPages(pdf()), 2);
}

TEST_F(Reports, TheirShortReportPrintsLikeAnyOther) {
    openStock(39);
    prompts.saveName = pdf();
    report->click("Command2");
    EXPECT_EQ(pdfPages(pdf()), 1);
    EXPECT_TRUE(pdfText(pdf(), 1).endsWith("第 1 页"));
}

TEST_F(Reports, ExportTakesEveryPageAndIsFreeOfTheirStop) {
    openStock(81);
    report->click("Command4(2)");
    const int position = session().productTable->AbsolutePosition();
    prompts.saveName = pdf();
    report->choose("exportPdf");
    EXPECT_EQ(pdfPages(pdf()), 3);
    for (int page = 1; page <= 3; ++page)
        EXPECT_TRUE(pdfText(pdf(), page).endsWith(QStringLiteral("第 %1 页").arg(page)));
    EXPECT_EQ(session().productTable->AbsolutePosition(), position);
    EXPECT_EQ(session().report.pageIndex, 1);
    prompts.saveName = folder.filePath("missing/out.pdf");
    prompts.expectMessage("文件不能写入：" + *prompts.saveName + "\n不能开始打印。");
    report->choose("exportPdf");
}

TEST_F(Reports, ExportOfNothingSaysSo) {
    start();
    session().reopen(session().product_Bank, "Select * From product_Bank");
    main->host().openWindow("showprint_rs15", ViewHost::MainWindow::Disabled);
    take("showprint_rs15");
    prompts.saveName = pdf();
    prompts.expectMessage("没有可以导出的页。");
    report->choose("exportPdf");
    EXPECT_FALSE(QFile::exists(pdf()));
}

TEST_F(Reports, ReturnShowsTheViewAgainWithTheCursorOnARow) {
    openHistory(41);
    report->click("Command4(3)");
    EXPECT_TRUE(session().product_Bank->isEOF());
    session().report.reportReturned = 0;
    report->choose("return");
    EXPECT_EQ(window("showprint_rs15"), nullptr);
    EXPECT_EQ(session().report.reportReturned, 1);
    EXPECT_TRUE(main->isVisible() && main->isEnabled());
    EXPECT_EQ(session().product_Bank->AbsolutePosition(), 41);
    EXPECT_EQ(drive->text("Text1"), u"41/41");
}

TEST_F(Reports, TheLayoutStartsAfreshAndThePageSizeStaysOnTheCursor) {
    openHistory(41);
    report->click("Command9");
    report->click("Command10(0)");
    report->choose("return");
    EXPECT_EQ(session().product_Bank->PageSize(), 41);
    drive->click("Toolbar1(7)");
    take("showprint_rs15");
    EXPECT_EQ(form->reportLayout().boxShift[1], 0);
    EXPECT_EQ(report->text("Text5"), u"40");
}

TEST_F(Reports, ScrollBarsCountInMillimetresAndMoveThePage) {
    openHistory(1);
    auto* horizontal = report->find<QScrollBar>("HScroll1");
    auto* vertical = report->find<QScrollBar>("VScroll1");
    EXPECT_EQ(horizontal->maximum(), 288);
    EXPECT_EQ(vertical->maximum(), 204);
    for (QScrollBar* bar : {horizontal, vertical}) {
        EXPECT_EQ(bar->minimum(), -20);
        EXPECT_EQ(bar->pageStep(), 10);
        EXPECT_EQ(bar->singleStep(), 5);
    }
    auto* sheet = form->findChild<PaperSheet*>("Picture2");
    horizontal->setValue(100);
    vertical->setValue(-10);
    EXPECT_NEAR(sheet->x(), -100 * sheet->dotsPerMillimetre(), 1);
    EXPECT_NEAR(sheet->y(), 10 * sheet->dotsPerMillimetre(), 1);
    EXPECT_TRUE(horizontal->isVisible()) << "the page is wider than its viewport";
    form->resize(2000, 1500);
    QCoreApplication::processEvents();
    EXPECT_FALSE(horizontal->isVisible());
    EXPECT_FALSE(vertical->isVisible());
}

TEST_F(Reports, ThePreviewPaintsItsRulesAtTheirMillimetresAtAnyScaling) {
    openHistory(3);
    auto* sheet = form->findChild<PaperSheet*>("Picture2");
    for (const double ratio : {1.0, 2.0}) {
        QImage image(sheet->size() * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        sheet->render(&image);
        const double scale = sheet->dotsPerMillimetre() * ratio;
        for (const PageRecording::Item& each : preview().items()) {
            if (each.font)
                continue;
            int darkest = 255;
            for (int dy = -1; dy <= 1; ++dy)
                darkest = std::min(darkest, qGray(image.pixel(int((each.x + 30.7) * scale),
                                                              int(std::lround(each.y * scale)) + dy)));
            EXPECT_LT(darkest, 150) << each.y << " mm at " << ratio;
        }
    }
}

} // namespace

#include "recordset/error.h"
#include "reports/reportRun.h"
#include "support/errorOf.h"
#include "support/reportPaper.h"
#include "support/smallDisk.h"

#include <QFile>
#include <QImage>
#include <QPrinter>

#include <csignal>
#include <sys/resource.h>

namespace {

class Printing : public ReportPaper {
protected:
    /// Words of the PDF that stand where the recording has a text beginning so, within a tenth of a
    /// millimetre.
    void expectPlaces(const std::vector<PageRecording::Item>& items, const std::vector<PdfWord>& words,
                      const std::string& name) {
        int compared = 0;
        for (const PageRecording::Item& item : items) {
            if (!item.font || item.text == u"|" || item.text.isEmpty())
                continue;
            const QString first = item.text.trimmed().split(u' ').first();
            const double x = item.x + item.font->textWidth(item.text.left(item.text.indexOf(first)));
            const auto found = std::find_if(words.begin(), words.end(), [&](const PdfWord& word) {
                // A cell that touches its separator is read as one word with it.
                const double bar = word.text.startsWith(u'|') ? -2 : 0;
                return word.text.endsWith(first) && std::abs(word.y - item.y) < 0.1 &&
                       std::abs(word.x - x - bar) < 0.1;
            });
            EXPECT_NE(found, words.end())
                << name << ": " << item.text.toStdString() << " at " << item.x << ", " << item.y;
            ++compared;
        }
        EXPECT_GE(compared, 5) << name; // a title, two labels and a row of two at least
    }
};

TEST_F(Printing, EverythingStandsOnTheSheetAndTheFontsAreInTheFile) {
    for (const ReportDescription& report : reportCatalogue()) {
        layout = defaultLayout(report, "标题");
        open(report, report.rows, report.rows);
        const double width = report.isLandscape() ? 297 : 210;
        for (const PageRecording::Item& item : recorded(report, 0)) {
            const double right = item.font ? item.x + item.font->textWidth(item.text) : item.right;
            EXPECT_TRUE(item.x >= 0 && right <= width && item.y >= 0 && item.y + 10 <= 507 - width)
                << item.text.toStdString();
        }
        const auto job = PrintJob::toPdf(path(), {report.orientation, QStringLiteral("标题")});
        printPages(drawing(report), *job, 1, 1, {});
        const QString fonts = QString::fromUtf8(outputOf("pdffonts", {path()}));
        EXPECT_EQ(fonts.count("yes no  yes"), 2) << fonts.toStdString();
        const QString size = report.isLandscape() ? "842 x 595 pts (A4)" : "595 x 842 pts (A4)";
        EXPECT_TRUE(QString::fromUtf8(outputOf("pdfinfo", {path()})).contains(size));
    }
}

TEST_F(Printing, RulesAndTextsOfAPrinterStandWhereThoseOfThePdfStand) {
    const ReportDescription& report = *findReport(u"showprint_rs15");
    layout = defaultLayout(report, "标题");
    open(report, 40);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path());
    printer.setFullPage(true);
    printer.setPageLayout(
        QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF(0, 0, 0, 0)));
    {
        QPainter painter(&printer);
        PainterPage page(painter, printer.logicalDpiX() / 25.4, PainterPage::Medium::Paper);
        const ReportDrawing drawn = drawing(report);
        ReportPageDrawing(drawn, page).drawTable(0);
    }
    expectPlaces(recorded(report, 0), pdfWords(path(), 1), "printer");
    outputOf("pdftoppm", {"-r", "254", "-gray", "-singlefile", path(), path("page")});
    const QImage image(path("page.pgm"));
    ASSERT_FALSE(image.isNull());
    for (const PageRecording::Item& item : recorded(report, 0)) {
        if (item.font)
            continue;
        int darkest = 255;
        const int y = int(std::lround(item.y * 10));
        for (int dy = -1; dy <= 1; ++dy)
            darkest = std::min(darkest, qGray(image.pixel(int((item.x + 30.7) * 10), y + dy)));
        EXPECT_LT(darkest, 128) << "no rule at " << item.y << " mm";
    }
}

TEST_F(Printing, BlanksOfATextAreBlanksInTheFile) {
    const ReportDescription& report = *findReport(u"showprint_rs15");
    layout = defaultLayout(report, "产 品 入 库 清 单");
    open(report, 1);
    books.changeBehind("UPDATE product_Bank SET 品名 = '红 木'");
    session().reopen(session().product_Bank, "Select * From product_Bank");
    session().product_Bank->setPageSize(40);
    const auto job = PrintJob::toPdf(path(), {report.orientation, {}});
    printPages(drawing(report), *job, 1, 1, {});
    const QString text = QString::fromUtf8(outputOf("pdftotext", {"-raw", path(), "-"}));
    for (const char* shown : {"产 品 入 库 清 单", "红 木", "第 1 页"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(shown))) << text.toStdString();
    const QByteArray names = pdfCharacterNames(path());
    EXPECT_TRUE(names.contains("<0020>")) << "what a search in the file looks for";
    EXPECT_FALSE(names.contains("<0009>")) << "a tab";
    EXPECT_EQ(outputOf("pdfinfo", {path()}).count("Pages:"), 1) << "the file is still whole";
}

TEST_F(Printing, AJobOfAThousandFullPagesGoesOnInAnotherDocument) {
    const ReportDescription& report = *findReport(u"showprint_rs15");
    layout = defaultLayout(report, "标题");
    const RecordsetPtr& rows = open(report, 1003, 1);
    const auto job = PrintJob::toPdf(path(), {report.orientation, QStringLiteral("标题")});
    EXPECT_EQ(printPages(drawing(report), *job, 1, rows->PageCount(), {}), PrintEnd::Done);
    EXPECT_EQ(pdfPages(path()), 1000);
    EXPECT_EQ(pdfPages(path("out-2.pdf")), 3);
    EXPECT_FALSE(QFile::exists(path("out-3.pdf")));
    const auto exact = PrintJob::toPdf(path("exact.pdf"), {report.orientation, QStringLiteral("标题")});
    EXPECT_EQ(printPages(drawing(report), *exact, 1, 1000, {}), PrintEnd::Done);
    EXPECT_EQ(pdfPages(path("exact.pdf")), 1000);
    EXPECT_FALSE(QFile::exists(path("exact-2.pdf"))) << "no empty document behind the last page";
}

TEST_F(Printing, AShortPageEndsTheJobAndBearsThePageCount) {
    const ReportDescription& report = *findReport(u"showprint_rs15");
    layout = defaultLayout(report, "标题");
    open(report, 41);
    const auto job = PrintJob::toPdf(path(), {report.orientation, QStringLiteral("标题")});
    int behindFull = 0;
    PrintSteps steps;
    steps.after = [&behindFull](int) { return ++behindFull > 0; };
    EXPECT_EQ(printPages(drawing(report), *job, 1, 9, steps), PrintEnd::Done);
    EXPECT_EQ(behindFull, 1);
    EXPECT_EQ(pdfPages(path()), 2);
    EXPECT_TRUE(pdfText(path(), 2).endsWith("第 2 页"));
}

TEST_F(Printing, WhatStopsARunLeavesTheDocumentOpenAndTheNextRunGoesOnInIt) {
    const ReportDescription& report = *findReport(u"showprint_rs15");
    layout = defaultLayout(report, "标题");
    open(report, 80);
    auto job = PrintJob::toPdf(path(), {report.orientation, QStringLiteral("标题")});
    PrintSteps steps;
    steps.after = [](int) -> bool { fail(ErrorNumber::IsClosed, "x"); };
    EXPECT_EQ(errorOf([&] { printPages(drawing(report), *job, 1, 2, steps); }), ErrorNumber::IsClosed);
    EXPECT_FALSE(QFile::exists(path()));
    EXPECT_EQ(printPages(drawing(report), *job, 2, 2, {}), PrintEnd::Done);
    EXPECT_EQ(pdfPages(path()), 2);
}

TEST_F(Printing, AJobThatIsDroppedIsFinishedFirst) {
    const ReportDescription& report = *findReport(u"showprint_rs15");
    layout = defaultLayout(report, "标题");
    open(report, 80);
    auto job = PrintJob::toPdf(path(), {report.orientation, QStringLiteral("标题")});
    PrintSteps steps;
    steps.after = [](int) -> bool { fail(ErrorNumber::IsClosed, "x"); };
    EXPECT_THROW(printPages(drawing(report), *job, 1, 2, steps), RuntimeError);
    job.reset();
    EXPECT_EQ(pdfPages(path()), 1) << "the sheet that was ended, and no blank one";
}

TEST_F(Printing, AFileThatCannotBeMadeIsAFault) {
    const ReportDescription& report = *findReport(u"showprint_rs15");
    layout = defaultLayout(report, "标题");
    open(report, 1);
    const auto job =
        PrintJob::toPdf(folder.filePath("missing/out.pdf"), {report.orientation, QStringLiteral("标题")});
    EXPECT_EQ(printPages(drawing(report), *job, 1, 1, {}), PrintEnd::Failed);
    EXPECT_FALSE(job->fault().isEmpty());
}

TEST_F(Printing, AFileThatIsCutIsAFaultAndTheOldOneStays) {
    const ReportDescription& report = *findReport(u"showprint_rs15");
    layout = defaultLayout(report, "标题");
    const RecordsetPtr& rows = open(report, 400);
    QFile old(path());
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{20000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const auto job = PrintJob::toPdf(path(), {report.orientation, QStringLiteral("标题")});
    const PrintEnd end = printPages(drawing(report), *job, 1, rows->PageCount(), {});
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(end, PrintEnd::Failed);
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), "old");
}

TEST_F(Printing, ADocumentThatGoesOnTakesNoFileOfTheOpenDatabase) {
    const ReportDescription& report = *findReport(u"showprint_rs15");
    layout = defaultLayout(report, "标题");
    open(report, 80);
    const QString database = folder.filePath("books.mdb");
    QFile file(database);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("books") == 5);
    file.close();
    ASSERT_TRUE(QFile::link(database, folder.filePath("out-2.pdf")));
    const auto job = PrintJob::toPdf(path(), {report.orientation, QStringLiteral("标题"), database});
    EXPECT_EQ(printPages(drawing(report), *job, 1, 1, {}), PrintEnd::Done);
    EXPECT_EQ(printPages(drawing(report), *job, 2, 2, {}), PrintEnd::Failed);
    EXPECT_EQ(job->fault(),
              "不能写入 " + folder.filePath("out-2.pdf") + "：这是正在使用的数据文件。请另选一个文件名。");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "books");
    EXPECT_EQ(pdfPages(path()), 1);
}

TEST_F(Printing, ADocumentThatGoesOnAndIsCutLeavesTheOldOneOfItsName) {
    const ReportDescription& report = *findReport(u"showprint_rs15");
    layout = defaultLayout(report, "标题");
    open(report, 80);
    QFile old(folder.filePath("out-2.pdf"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    const auto job = PrintJob::toPdf(path(), {report.orientation, QStringLiteral("标题")});
    EXPECT_EQ(printPages(drawing(report), *job, 1, 1, {}), PrintEnd::Done);
    {
        const FileSizeLimit full(500);
        EXPECT_EQ(printPages(drawing(report), *job, 2, 2, {}), PrintEnd::Failed);
    }
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), "old");
}

} // namespace

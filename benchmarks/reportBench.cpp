#include "reportBench.h"

#include "app/appearance.h"
#include "app/registry.h"
#include "controls/prompts.h"
#include "data/books.h"
#include "reports/reportRun.h"
#include "shell/MDIForm1.h"

#include <QApplication>
#include <QImage>
#include <QPdfWriter>
#include <QTemporaryDir>

namespace {

constexpr int kPrintedPages = 1000;
constexpr int kFarPage = 20000;
constexpr int kRounds = 5;

constexpr ReportColumn kColumns[] = {
    {u"产品编号", u"产品编号", 20}, {u"品名", u"品名", 62},  {u"规格", u"规格", 94},  {u"产地", u"产地", 116},
    {u"厂家", u"厂家", 138},        {u"单价", u"单价", 160}, {u"数量", u"数量", 182}, {u"合计", u"合计", 204},
    {u"折扣", u"折扣", 216},        {u"实付", u"实付"},
};
const ReportDescription kLines{.name = u"bench",
                               .caption = u"",
                               .cursor = &Session::buyList,
                               .columns = kColumns,
                               .boxNames = {},
                               .title = u"销售"};

/// Draws a page of the preview.
void drawPage(const ReportDrawing& drawing, int pageIndex) {
    PageRecording page;
    ReportPageDrawing sheet(drawing, page);
    sheet.drawTable(pageIndex);
    sheet.drawPreviewFooter(pageIndex + 1, kLines.pageWidth());
    QImage image(1089, 770, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    PainterPage screen(painter, 3.78, PainterPage::Medium::Screen);
    page.replay(screen, 0, 300);
}

/// The same texts and lines in a bare loop on a PDF writer.
double printBare(const std::vector<PageRecording>& pages, const QString& path) {
    return milliseconds([&] {
        QPdfWriter writer(path);
        writer.setResolution(1200);
        writer.setPageLayout(
            QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF(0, 0, 0, 0)));
        QPainter painter(&writer);
        const double scale = 1200 / 25.4;
        for (int i = 0; i < kPrintedPages; ++i) {
            if (i > 0)
                writer.newPage();
            const PaperFont* font = nullptr;
            for (const PageRecording::Item& item : pages[std::size_t(i) % pages.size()].items()) {
                if (!item.font) {
                    painter.drawLine(QPointF(item.x * scale, item.y * scale),
                                     QPointF(item.right * scale, item.y * scale));
                    continue;
                }
                if (font != item.font.get()) {
                    font = item.font.get();
                    painter.setFont(font->font());
                }
                painter.drawText(QPointF(item.x * scale, (item.y + font->ascent()) * scale), item.text);
            }
        }
    });
}

double printOurs(const ReportDrawing& drawing, const QString& path) {
    return milliseconds([&] {
        const auto job = PrintJob::toPdf(path, {PaperOrientation::Landscape, {}});
        printPages(drawing, *job, 1, kPrintedPages, {});
    });
}

void measurePages(Session& session) {
    const RecordsetPtr& lines = session.buyList;
    lines->setPageSize(40);
    const ReportLayout layout = defaultLayout(kLines, {});
    const ReportDrawing drawing{kLines, layout, lines, {}};
    const int far = std::min(kFarPage, lines->PageCount() - 1);
    drawPage(drawing, 0);
    drawPage(drawing, far);
    std::vector<double> first;
    std::vector<double> distant;
    for (int i = 0; i < 4 * kRounds; ++i) {
        first.push_back(milliseconds([&] { drawPage(drawing, i); }));
        distant.push_back(milliseconds([&] { drawPage(drawing, far - i); }));
    }
    say("far", median(distant));
    say("first", median(first));
    std::vector<PageRecording> pages(50);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        ReportPageDrawing sheet(drawing, pages[i]);
        sheet.drawTable(int(i));
        sheet.drawPaperFooter(int(i) + 1);
    }
    const QTemporaryDir folder;
    std::vector<double> ours;
    std::vector<double> bare;
    for (int i = 0; i < 3; ++i) {
        ours.push_back(printOurs(drawing, folder.filePath(QStringLiteral("ours.pdf"))));
        bare.push_back(printBare(pages, folder.filePath(QStringLiteral("bare.pdf"))));
    }
    say("print", median(ours));
    say("bare", median(bare));
}

void measureViews(MDIForm1& main) {
    const QString views[] = {QStringLiteral("stock_BankFm1"), QStringLiteral("stockFm1")};
    std::vector<double> changes;
    for (int i = 0; i < 2 * kRounds; ++i)
        changes.push_back(milliseconds([&] {
            main.host().show(views[i % 2]);
            main.repaint();
            QCoreApplication::processEvents();
        }));
    say("change", median(changes));
}

} // namespace

void measureReports(const QString& path) {
    setAppearance(*qApp);
    Session session(path);
    WindowPrompts prompts;
    MDIForm1 main(session, prompts);
    registerAll(main, prompts);
    main.show();
    openBooks(session);
    measurePages(session);
    measureViews(main);
}

void runReportBench(BenchReport& report, const QString& path) {
    const auto figures = childFigures(QStringLiteral("reports"), path);
    report.add({QStringLiteral("turning to page 20,000 over buyList and drawing it / page 1"), figures["far"],
                figures["first"], QStringLiteral("ms"), 1.2});
    report.add({QStringLiteral("printing 1,000 pages to PDF / bare QPainter loop"), figures["print"],
                figures["bare"], QStringLiteral("ms"), 1 / 0.7});
    report.note(QStringLiteral("pages a second: %1 and %2")
                    .arg(1000 * kPrintedPages / figures["print"], 0, 'f', 0)
                    .arg(1000 * kPrintedPages / figures["bare"], 0, 'f', 0));
    report.add({QStringLiteral("change between two stock views of 10,000 rows"), figures["change"], 0,
                QStringLiteral("ms"), 0});
}

#include "reports/reportRun.h"

PrintEnd printPages(const ReportDrawing& drawing, PrintJob& job, int from, int to, const PrintSteps& steps) {
    const auto ended = [&job](PrintEnd end) {
        job.endDocument();
        return job.fault().isEmpty() ? end : PrintEnd::Failed;
    };
    int inDocument = 0;
    for (int i = from; i <= to; ++i) {
        steps.before(i);
        PaperPage* page = job.page();
        if (!page)
            return PrintEnd::Failed;
        ReportPageDrawing sheet(drawing, *page);
        if (!sheet.drawTable(i - 1)) {
            // A short page is the last one; it bears the page count.
            sheet.drawPaperFooter(drawing.rows->PageCount());
            return ended(PrintEnd::Done);
        }
        sheet.drawPaperFooter(i);
        job.newPage();
        if (++inDocument == kPagesPerDocument) {
            inDocument = 0;
            job.endDocument();
        }
        if (!job.fault().isEmpty())
            return PrintEnd::Failed;
        if (!steps.after(i))
            return ended(PrintEnd::Stopped);
    }
    return ended(PrintEnd::Done);
}

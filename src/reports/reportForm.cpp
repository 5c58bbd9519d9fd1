#include "reports/reportForm.h"

#include "controls/exportPrompt.h"
#include "controls/formParts.h"
#include "controls/longWork.h"
#include "controls/moveButtons.h"
#include "controls/prompts.h"
#include "data/cursorMoves.h"
#include "recordset/ignoringErrors.h"
#include "reports/fitBoxes.h"
#include "reports/layoutFile.h"
#include "reports/paperView.h"
#include "reports/reportExport.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMainWindow>
#include <QRadioButton>

namespace {

constexpr int kBeforeFirst = -2;
constexpr int kAfterLast = -3;

FontRecord recordOf(const FontChoice& choice) {
    const QColor& colour = choice.colour;
    return {choice.font.family(),
            float(choice.font.pointSizeF()),
            choice.font.bold(),
            choice.font.italic(),
            choice.font.strikeOut(),
            choice.font.underline(),
            colour.red() | colour.green() << 8 | colour.blue() << 16};
}

FontChoice choiceOf(const FontRecord& record) {
    FontChoice choice{QFont(record.name), colourOfNumber(record.colour)};
    choice.font.setPointSizeF(double(record.size));
    choice.font.setBold(record.bold);
    choice.font.setItalic(record.italic);
    choice.font.setStrikeOut(record.strikethrough);
    choice.font.setUnderline(record.underline);
    return choice;
}

bool isProgramWindow(const QWidget* window) {
    return qobject_cast<const TopWindow*>(window) || qobject_cast<const QMainWindow*>(window);
}

} // namespace

bool ReportForm::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate)
        m_leftForWindow = isProgramWindow(QApplication::activeWindow());
    if (event->type() == QEvent::WindowActivate && m_report.pagesAtActivation && m_leftForWindow) {
        m_view->sheet().Cls();
        startPaging();
    }
    return TopWindow::event(event);
}

void ReportForm::startPaging() {
    m_session.report.pageIndex = 0;
    const RecordsetPtr& cursor = rows();
    const bool any = cursor->hasRows();
    if (any)
        cursor->setPageSize(m_report.rows);
    else if (m_report.emptyPageSizeIsZero && cursor->isOpen())
        cursor->setPageSize(0);
    m_session.report.pageFirst = any ? 1 : 0;
    m_session.report.pageFrom = any ? 1 : 0;
    m_session.report.pageTo = any ? cursor->PageCount() : 0;
    m_pageSize->setText(QString::number(any ? m_report.rows : 0));
    // The page of the cursor's row, which need not be the page on show.
    showPage(any ? cursor->AbsolutePage() : 0);
    showPages(m_session.report.pageFrom);
    printA();
}

HeadSource ReportForm::headSource() const {
    return {m_session,
            [this](QStringView view, QStringView control) {
                return m_host.controlText(view.toString(), control.toString());
            },
            rows(), m_caller};
}

QString ReportForm::openingTitle() const {
    return m_report.titleOf ? m_report.titleOf(headSource()) : m_session.report.reportFormTitle;
}

ReportDrawing ReportForm::drawing() {
    const HeadSource source = headSource();
    if (m_report.titleOf && !m_ownTitle)
        m_layout.reportTitle = m_report.titleOf(source);
    QStringList head;
    for (const HeadItem& item : m_report.head)
        head << item.text(source);
    return {m_report, m_layout, rows(), head};
}

void ReportForm::printA() {
    if (!rows()->hasRows())
        return;
    const QuietWalk walk(rows());
    const ReportDrawing page = drawing();
    PaperSheet& sheet = m_view->sheet();
    ReportPageDrawing draw(page, sheet.recording());
    draw.drawTable(m_session.report.pageIndex);
    draw.drawPreviewFooter(m_session.report.pageFrom, sheet.pageWidth());
    if (!m_period.isEmpty())
        draw.drawPreviewPeriod(m_period, sheet.pageWidth());
    sheet.update();
}

void ReportForm::redraw() {
    m_view->sheet().Cls();
    printA();
}

void ReportForm::showPages(int first) {
    m_lastPage->setText(QStringLiteral("终止页：") + QString::number(m_session.report.pageTo));
    m_firstPage->setText(QStringLiteral("起始页：") + QString::number(first));
}

void ReportForm::showPage(int page) {
    m_pages->setPosition(QStringLiteral("第 ") + QString::number(page) + QStringLiteral(" 页"));
}

PrintJob::Sheets ReportForm::sheets() const {
    return {m_report.orientation, windowTitle() + u' ' + m_session.todayText(), m_session.cn.path(),
            m_report.sheet ? QSizeF(m_report.pageWidth(), m_report.pageHeight()) : QSizeF()};
}

bool ReportForm::haveJob() {
    PrintJob::Sheets onPrinter = sheets();
    if (m_report.keepsOrientation)
        onPrinter.orientation = m_session.report.printerOrientation == 0
                                    ? std::nullopt
                                    : std::optional(PaperOrientation(m_session.report.printerOrientation));
    if (!m_job)
        m_job = PrintJob::toPrinter(m_session.report.printerName, onPrinter);
    if (m_job)
        return true;
    // Without any printer the pages go into a file.
    const auto path =
        m_prompts.saveFile(QStringLiteral("没有打印机：打印到 PDF 文件"),
                           windowTitle() + QStringLiteral(".pdf"), QStringLiteral("PDF (*.pdf)"));
    if (path)
        m_job = PrintJob::toPdf(*path, sheets());
    return m_job != nullptr;
}

void ReportForm::settleJob() {
    if (!m_job)
        return;
    m_job->endDocument();
    const auto job = std::exchange(m_job, nullptr);
    if (!job->fault().isEmpty())
        m_prompts.tell(QStringLiteral("打印失败！") + job->fault());
    else if (job->sheetCount() > 0)
        say(this, {QStringLiteral("已打印 %1 页：%2").arg(job->sheetCount()).arg(job->place())});
}

void ReportForm::printB() {
    setCursor(Qt::ForbiddenCursor);
    if (!m_report.keepsOrientation)
        m_session.report.printerOrientation = int(m_report.orientation);
    if (!rows()->hasRows())
        return; // the pointer stays: that is meant
    if (!haveJob())
        return unsetCursor();
    runJob();
    unsetCursor();
    settleJob();
}

void ReportForm::runJob() {
    const QuietWalk walk(rows());
    LongWork work(QStringLiteral("正在打印…"), m_session.report.pageTo - m_session.report.pageFrom + 1);
    // Nothing in the program ever opens it, and some reports read it all the same.
    const Recordset unopened(m_session.cn);
    PrintSteps steps;
    steps.before = [this](int page) { m_session.report.pageIndex = page - 1; };
    steps.after = [&](int page) {
        showPage(m_report.printReadsUnopened ? unopened.AbsolutePage() : rows()->AbsolutePage());
        return work.step(page - m_session.report.pageFrom + 1);
    };
    printPages(drawing(), *m_job, m_session.report.pageFrom, m_session.report.pageTo, steps);
}

bool ReportForm::hasRowsToPrint() const {
    return m_report.pagesAtActivation ? rows()->RecordCount() != 0 : rows()->hasRows();
}

void ReportForm::print() {
    if (!hasRowsToPrint())
        return;
    try {
        printB();
    } catch (...) {
        m_job.reset(); // what is on its way to paper gets there before the program ends
        throw;
    }
}

void ReportForm::testPrint() {
    IgnoringErrors errors;
    if (m_report.testReadsUnopened || !errors.test([&] { return hasRowsToPrint(); }))
        return;
    m_session.report.pageSaved = m_session.report.pageTo;
    m_session.report.pageTo = m_session.report.pageFrom;
    errors.run([&] { printB(); });
    m_session.report.pageTo = m_session.report.pageSaved;
}

void ReportForm::exportPdf(const QString& path) {
    if (!rows()->hasRows() || rows()->PageCount() == 0)
        return m_prompts.tell(QStringLiteral("没有可以导出的页。"));
    const auto job = PrintJob::toPdf(path, sheets());
    const PrintEnd end = exportPages(*job);
    if (end == PrintEnd::Failed)
        return m_prompts.tell(QStringLiteral("文件不能写入：%1\n%2").arg(path, job->fault()));
    const QString words = end == PrintEnd::Done ? QStringLiteral("已导出 PDF，%1 页：%2")
                                                : QStringLiteral("导出停止了，PDF 里有 %1 页：%2");
    say(this, {words.arg(job->sheetCount()).arg(job->place())});
}

PrintEnd ReportForm::exportPages(PrintJob& job) {
    const QuietWalk walk(rows());
    const auto row = rows()->currentRow();
    const int pages = rows()->PageCount();
    LongWork work(QStringLiteral("正在导出 PDF…"), pages);
    PrintSteps steps;
    steps.after = [&work](int page) { return work.step(page); };
    const PrintEnd end = printPages(drawing(), job, 1, pages, steps);
    if (row)
        rows()->moveToRow(*row);
    return end;
}

void ReportForm::turnPage(int button) {
    IgnoringErrors errors;
    if (!errors.test([&] { return rows()->PageCount() != 0; }))
        return;
    Session::Report& s = m_session.report;
    errors.run([&] { s.pageFrom = rows()->AbsolutePage(); });
    if (s.pageFrom == kBeforeFirst)
        s.pageFrom = s.pageFirst;
    if (s.pageFrom == kAfterLast)
        s.pageFrom = s.pageTo;
    showPages(s.pageFirst);
    switch (button) {
    case 0:
        s.pageFrom = s.pageFirst;
        break;
    case 1:
        s.pageFrom = std::max(s.pageFrom - 1, int(s.pageFirst));
        break;
    case 2:
        s.pageFrom = std::min(s.pageFrom + 1, s.pageTo);
        break;
    default:
        s.pageFrom = s.pageTo;
    }
    s.pageIndex = s.pageFrom - 1;
    errors.run([&] { redraw(); });
    showPage(s.pageFrom);
}

void ReportForm::changePageSize(int by) {
    const RecordsetPtr& cursor = rows();
    if (!(m_report.pageSizeGuard ? m_session.*m_report.pageSizeGuard : cursor)->hasRows())
        return;
    // Neither bound is guarded, and the page drawn stays the one of this index: both are meant.
    cursor->setPageSize(cursor->PageSize() + by);
    m_session.report.pageFrom = 1;
    m_session.report.pageTo = cursor->PageCount();
    showPage(cursor->AbsolutePage());
    showPages(m_session.report.pageFrom);
    m_pageSize->setText(QString::number(cursor->PageSize()));
    redraw();
}

void ReportForm::movePart(double right, double down) {
    if (m_report.moveGuard && !(m_session.*m_report.moveGuard)->hasRows())
        return;
    for (int i = 0; i < 3; ++i)
        if (m_parts[i]->isChecked())
            m_layout.move(ReportPart(i), right, down);
    redraw();
}

void ReportForm::widenBox(int by) {
    const int box = m_layout.selectedBox;
    if (!rows()->hasRows() || box < 1 || box >= int(m_report.columns.size()))
        return;
    m_layout.boxShift[std::size_t(box)] += by;
    redraw();
}

void ReportForm::fitAllBoxes() {
    if (!rows()->hasRows())
        return;
    const QuietWalk walk(rows());
    std::optional<std::vector<double>> needed;
    {
        LongWork work(QStringLiteral("正在量各列的宽度…"), rows()->RecordCount());
        needed = neededWidths(drawing(), [&work](int done) { return work.step(done); });
    }
    if (!needed)
        return;
    const FittedBoxes fitted = fitBoxes(m_report, m_layout, *needed);
    m_layout.boxShift = fitted.boxShift;
    redraw();
    if (!fitted.tooNarrow.isEmpty())
        m_prompts.tell(QStringLiteral("表的宽度不够，这些列放不下最长的内容：") +
                       fitted.tooNarrow.join(QStringLiteral("、")) +
                       QStringLiteral("。\n可以在“字体选择”里把字号改小，再按“自动列宽”。"));
}

void ReportForm::askFont(FontRecord ReportLayout::*record, const QString& title) {
    if (const auto choice = m_prompts.chooseFont(title, choiceOf(m_layout.*record)))
        setFont(record, recordOf(*choice));
}

void ReportForm::setFont(FontRecord ReportLayout::*record, const FontRecord& font) {
    m_layout.*record = font;
    redraw();
}

void ReportForm::askTitle() {
    m_ownTitle = true;
    // A canceled input is an empty title: that is meant.
    m_layout.reportTitle =
        m_prompts.input(QStringLiteral("请输入标题："), QStringLiteral("标题输入")).value_or(QString());
    redraw();
}

void ReportForm::askExport() {
    const auto path = m_prompts.saveFile(QStringLiteral("导出 PDF"), windowTitle() + QStringLiteral(".pdf"),
                                         QStringLiteral("PDF (*.pdf)"));
    if (path)
        exportPdf(*path);
}

void ReportForm::exportRows(const ExportKind& kind) {
    if (!rows()->hasRows())
        return m_prompts.tell(QStringLiteral("没有可以导出的记录。"));
    const QuietWalk walk(rows());
    const auto row = rows()->currentRow();
    const ReportDrawing drawn = drawing();
    if (row)
        rows()->moveToRow(*row); // a text of the head may have walked
    ::askExport(this, m_prompts, kind, exportedReport(drawn));
}

void ReportForm::saveLayout() {
    const auto path =
        m_prompts.saveFile(QStringLiteral("保存版式"), exportName(this) + QStringLiteral("版式.json"),
                           QStringLiteral("版式 (*.json)"));
    if (!path)
        return;
    if (const QString fault = writeLayoutFile(*path, m_report, {m_layout, m_ownTitle}); !fault.isEmpty())
        return m_prompts.tell(QStringLiteral("版式没有保存：%1。").arg(fault));
    say(this, {QStringLiteral("已保存版式：%1").arg(*path)});
}

void ReportForm::loadLayout() {
    const auto path = m_prompts.openFile(QStringLiteral("载入版式"), QStringLiteral("版式 (*.json)"));
    if (!path)
        return;
    ReportLayout opening = defaultLayout(m_report, openingTitle());
    opening.selectedBox = m_layout.selectedBox;
    const LayoutOutcome read = readLayoutFile(*path, m_session.cn.path(), m_report, opening);
    if (!read.kept)
        return m_prompts.tell(QStringLiteral("版式没有载入：%1。").arg(read.fault));
    m_layout = read.kept->layout;
    m_ownTitle = read.kept->ownTitle;
    redraw();
    say(this, {QStringLiteral("已载入版式：%1").arg(*path)});
}

void ReportForm::keepZoom(const std::shared_ptr<PaperZoom>& zoom) {
    m_view->setZoom(*zoom);
    connect(m_view, &PaperView::zoomed, this, [this, zoom] { *zoom = m_view->zoom(); });
}

void ReportForm::setUpPrinter() {
    const PrinterChoice start{m_session.report.printerName, m_session.report.printerOrientation};
    const auto choice = m_prompts.setUpPrinter(PrintJob::printers(), start);
    if (!choice)
        return;
    m_session.report.printerName = choice->name;
    m_session.report.printerOrientation = choice->orientation;
}

void ReportForm::wayOut() {
    settleJob();
    backOntoARow(rows());
    m_session.report.reportReturned = 1;
    finish();
}

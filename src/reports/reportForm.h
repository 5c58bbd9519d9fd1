#pragma once

#include "reports/printJob.h"
#include "reports/reportPage.h"
#include "reports/reportRun.h"
#include "shell/view.h"
#include "shell/viewHost.h"

#include "controls/fontPrompt.h"

class MoveButtons;
class PaperView;
class Prompts;
class QComboBox;
class QLabel;
class QMenuBar;
class QRadioButton;

/// The one window of all reports: a page preview whose parts can be moved, widened and given other fonts,
/// paged through, printed, and saved as PDF. It reads the rows that the calling view left on a shared cursor
/// and writes nothing.
class ReportForm : public TopWindow {
    Q_OBJECT

public:
    ReportForm(const ReportDescription& report, ViewHost& host, Prompts& prompts);
    ~ReportForm() override;

    const ReportLayout& reportLayout() const { return m_layout; }
    /// Gives a part of the report another font.
    void setFont(FontRecord ReportLayout::*record, const FontRecord& font);
    /// Draws the current page on the preview.
    void printA();
    /// Prints from the page on show to the last one. Throws what the report's step behind a full page throws.
    void printB();
    /// Saves all pages as PDF files, whatever stops the report on paper.
    void exportPdf(const QString& path);

protected:
    void wayOut() override;

private:
    using Command = void (ReportForm::*)();

    // Building.
    QMenuBar* buildMenu();
    QWidget* buildPanel();
    QWidget* buildPages();
    QWidget* buildMoves();
    QWidget* buildBoxes();
    QWidget* buildPrinting();
    QPushButton* addButton(const QString& name, const QString& caption, std::function<void()> action);
    void startPaging();

    // Commands.
    void print();
    void testPrint();
    void turnPage(int button);
    void changePageSize(int by);
    void movePart(double right, double down);
    void widenBox(int by);
    void askFont(FontRecord ReportLayout::*record, int dialog, const QString& title);
    void askTitle();
    void askExport();

    const RecordsetPtr& rows() const { return m_session.*m_report.cursor; }
    ReportDrawing drawing() const;
    void redraw();
    void showPages(int first);
    void showPage(int page);
    bool haveJob();
    /// Tells a fault of the job and lets go of it once its document has ended.
    void settleJob(PrintEnd end);
    void leaveCursor();

    const ReportDescription& m_report;
    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    ReportLayout m_layout;
    FontChoice m_fontStarts[4];
    std::unique_ptr<PrintJob> m_job; // stays open where printing stopped before its end
    PaperView* m_view = nullptr;
    MoveButtons* m_pages = nullptr;
    QLabel* m_lastPage = nullptr;
    QLabel* m_firstPage = nullptr;
    QLabel* m_pageSize = nullptr;
    QComboBox* m_boxes = nullptr;
    QRadioButton* m_parts[3] = {};
};

#pragma once

#include "reports/printJob.h"
#include "reports/reportPage.h"
#include "reports/reportRun.h"
#include "shell/view.h"
#include "shell/viewHost.h"

class MoveButtons;
class PaperView;
struct ExportKind;
struct PaperZoom;
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
    /// What "打印" does: printB() where there are rows.
    void print();
    /// Shows the sheet as large as this says, and notes there how large the user wants it.
    void keepZoom(const std::shared_ptr<PaperZoom>& zoom);
    /// Saves all pages as PDF files, whatever stops the report on paper.
    void exportPdf(const QString& path);

protected:
    bool event(QEvent* event) override;
    void wayOut() override;

private:
    using Command = void (ReportForm::*)();

    // Building.
    QMenuBar* buildMenu();
    void buildFontMenu(QMenuBar* bar);
    void buildSettingsMenu(QMenuBar* bar);
    void buildShortcuts();
    QWidget* buildPanel();
    QWidget* buildPages();
    QWidget* buildMoves();
    QWidget* buildBoxes();
    QWidget* buildPrinting();
    QPushButton* addButton(const QString& name, const QString& caption, std::function<void()> action);
    void startPaging();

    // Commands.
    void testPrint();
    void turnPage(int button);
    void changePageSize(int by);
    void movePart(double right, double down);
    void widenBox(int by);
    void fitAllBoxes();
    void askFont(FontRecord ReportLayout::*record, const QString& title);
    void askTitle();
    void askExport();
    void exportRows(const ExportKind& kind);
    void saveLayout();
    void loadLayout();
    void setUpPrinter();

    const RecordsetPtr& rows() const { return m_session.*m_report.cursor; }
    /// What the print commands ask before anything else.
    bool hasRowsToPrint() const;
    HeadSource headSource() const;
    QString openingTitle() const;
    /// What a drawing looks at, head and made title as they are now.
    ReportDrawing drawing();
    void redraw();
    void showPages(int first);
    void showPage(int page);
    PrintJob::Sheets sheets() const;
    bool haveJob();
    void runJob();
    PrintEnd exportPages(PrintJob& job);
    /// Ends the job's document, tells what went wrong with it, and lets go of it.
    void settleJob();

    const ReportDescription& m_report;
    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    QString m_period; // days of what is printed, in words; empty for the whole
    QString m_caller; // whose print command opened the form
    ReportLayout m_layout;
    bool m_ownTitle = false;         // the user has given a title
    bool m_leftForWindow = false;    // for another window of the program, not for a prompt
    std::unique_ptr<PrintJob> m_job; // stays open where printing stopped before its end
    PaperView* m_view = nullptr;
    MoveButtons* m_pages = nullptr;
    QLabel* m_lastPage = nullptr;
    QLabel* m_firstPage = nullptr;
    QLabel* m_pageSize = nullptr;
    QComboBox* m_boxes = nullptr;
    QRadioButton* m_parts[3] = {};
};

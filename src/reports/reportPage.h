#pragma once

#include "reports/paperPage.h"
#include "reports/reportDescription.h"

#include <QStringList>

/// The layout that a report opens with. `openingTitle`: the title of a report that has none fixed.
ReportLayout defaultLayout(const ReportDescription& report, const QString& openingTitle);

/// Everything that one drawing of a page looks at.
struct ReportDrawing {
    const ReportDescription& report;
    const ReportLayout& layout;
    const RecordsetPtr& rows;
    QStringList head; // one text a head item
};

/// Draws pages of a report, the same for preview, printer and PDF. Positions the cursor on the rows that it
/// draws and leaves it there.
class ReportPageDrawing {
public:
    explicit ReportPageDrawing(const ReportDrawing& drawing, PaperPage& page);

    /// Title, head, labels, the rows of a page (from 0), and the empty boxes below a short page, closed by a
    /// rule. True if every row of the page was there. Draws nothing without rows.
    bool drawTable(int pageIndex);
    /// The page number of the preview, centred on a page of this width.
    void drawPreviewFooter(int page, double pageWidth);
    /// Below the page number, on screen alone: the days of the period that is printed.
    void drawPreviewPeriod(const QString& days, double pageWidth);
    void drawPaperFooter(int page);

private:
    void setFont(const FontRecord& record);
    void print(double x, const QString& text);
    void endLine() { m_y += m_font->lineHeight(); }
    void drawTitle();
    void drawHead();
    void drawRule();
    /// One line of cells between their separators; empty where `cells` is.
    void drawLine(const QStringList& cells);
    /// X of the separator in front of column k, of the table's right border behind the last one.
    double separator(std::size_t k) const;
    /// The text of column k as much as is printed of it.
    QString fitted(const QStringList& cells, std::size_t k) const;
    QStringList labels() const;
    QStringList cellsOfRow() const;
    void resolveFields();

    const ReportDrawing& m_drawing;
    PaperPage& m_page;
    PaperFontPtr m_font;
    std::vector<PaperFontPtr> m_fonts;
    std::vector<int> m_fields; // of the columns; -1 for one without a field
    double m_y = 0;            // top of the line being printed, in millimetres
};

#pragma once

#include "data/session.h"

#include <functional>
#include <span>

/// One column of a report: label, source field, and the X of the separator at its right edge, from the
/// table's left edge in millimetres. The last column has none: it ends at the table's border.
struct ReportColumn {
    const char16_t* label;
    const char16_t* field;
    double separator = 0;
};

/// Where head items take their figures from.
struct HeadSource {
    const Session& session;
    /// Text of a label or box by the names of its view and itself, "" where it is not there.
    std::function<QString(const char16_t* view, const char16_t* control)> control;
};

/// One item of the head line: its X before the layout's adjustment, and its text, made at each drawing.
struct HeadItem {
    double base;
    QString (*text)(const HeadSource&);
};

enum class PaperOrientation { Portrait = 1, Landscape = 2 };

/// One report form: everything in which the members of the family differ.
struct ReportDescription {
    const char16_t* name;
    const char16_t* caption;
    RecordsetPtr Session::*cursor;
    std::span<const ReportColumn> columns;
    std::span<const char16_t* const> boxNames; // of the separators, for the choice of the one to widen
    PaperOrientation orientation = PaperOrientation::Landscape;
    int rows = 40;          // a page
    double titleBase = 115; // X of the title
    double addend = 0;      // to tableTop
    double tableTop = 25;
    double footerX = 145;        // on paper
    const char16_t* title = u""; // empty: the title that the calling view hands over
    std::span<const HeadItem> head = {};
    /// Printing reads the page number of a recordset that nothing ever opens, behind each full page. So a
    /// report with a full page stops there. That is meant.
    bool readsUnopened = false;

    bool isLandscape() const { return orientation == PaperOrientation::Landscape; }
    qint16 tableWidth() const { return isLandscape() ? 250 : 170; }
    /// Size of the preview's page in millimetres.
    double pageWidth() const { return isLandscape() ? 288.09 : 203.7; }
    double pageHeight() const { return isLandscape() ? 203.7 : 288.09; }
};

/// Every report form of the program.
std::span<const ReportDescription> reportCatalogue();

/// The report of a form's name, null for an unknown name.
const ReportDescription* findReport(QStringView name);

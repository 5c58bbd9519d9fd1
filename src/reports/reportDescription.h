#pragma once

#include "data/session.h"

#include <functional>
#include <optional>
#include <span>

/// One column of a report: label, source field, and the X of the separator at its right edge, from the
/// table's left edge in millimetres. The last column has none: it ends at the table's border.
struct ReportColumn {
    const char16_t* label;
    const char16_t* field;
    double separator = 0;
};

/// Where titles and head items take their texts from.
struct HeadSource {
    const Session& session;
    /// Text of a label or box by the names of its view and itself, "" where it is not there.
    std::function<QString(QStringView view, QStringView control)> control;
    /// The report's own cursor. A text may walk it; the drawing puts it on its rows again.
    const RecordsetPtr& rows;
    /// The view or window whose print command opened the report.
    QString caller;

    /// Text of a label or box of the caller.
    QString ofCaller(QStringView name) const { return control(caller, name); }
};

/// A text that is made when it is asked for.
using ReportText = QString (*)(const HeadSource&);

/// One item of the head: its X before the layout's adjustment, its text, made at each drawing, and its Y.
struct HeadItem {
    double base;
    ReportText text;
    double top = 20;
};

enum class PaperOrientation { Portrait = 1, Landscape = 2 };

/// The menu "设置" of a report.
enum class SettingsMenu {
    None,
    Bare,         // stands there without an entry
    PrinterSetup, // with "打印机设置"
};

/// A sheet smaller than A4, in millimetres, with its letters in points.
struct SmallSheet {
    double width;
    double height;
    double margin;
    float titleSize;
    float headSize;
    float textSize;
};

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
    /// Makes the title in place of both, at each drawing until the user gives one.
    ReportText titleOf = nullptr;
    std::span<const HeadItem> head = {};
    /// Printing reads the page number of a recordset that nothing ever opens, behind each full page. So a
    /// report with a full page stops there. That is meant.
    bool printReadsUnopened = false;
    /// The test print asks that recordset for rows, so it does nothing. That is meant.
    bool testReadsUnopened = false;
    /// Paging starts afresh whenever the form comes to the front, and the print commands ask for the number
    /// of rows without asking whether the cursor is open.
    bool pagesAtActivation = false;
    /// Without rows in this cursor the move buttons do nothing. Null: they look at no cursor.
    RecordsetPtr Session::*moveGuard = nullptr;
    /// Without rows in this cursor the rows a page stay. Null: the report's own.
    RecordsetPtr Session::*pageSizeGuard = nullptr;
    bool emptyPageSizeIsZero = false; // over a cursor without rows the form opens with none a page
    bool keepsOrientation = false;    // prints on the sheet as the printer stands
    bool wideTitleShift = false;      // the title may move beyond 16 bits of millimetres
    SettingsMenu settings = SettingsMenu::None;

    std::optional<SmallSheet> sheet = {}; // none: A4
    bool cutsTexts = false;               // a text that is longer than its box ends in it

    bool isLandscape() const { return orientation == PaperOrientation::Landscape; }
    qint16 tableWidth() const {
        if (sheet)
            return qint16(sheet->width - 2 * sheet->margin);
        return isLandscape() ? 250 : 170;
    }
    /// Size of the preview's page in millimetres.
    double pageWidth() const {
        if (sheet)
            return sheet->width;
        return isLandscape() ? 288.09 : 203.7;
    }
    double pageHeight() const {
        if (sheet)
            return sheet->height;
        return isLandscape() ? 203.7 : 288.09;
    }
};

/// Every report form of the program.
std::span<const ReportDescription> reportCatalogue();

/// The report of a form's name, null for an unknown name.
const ReportDescription* findReport(QStringView name);

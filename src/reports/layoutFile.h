#pragma once

#include "reports/reportDescription.h"
#include "reports/reportLayout.h"

#include <optional>

/// A report's layout as its user keeps it: where its parts stand, its boxes and its fonts, and its title
/// where he gave it one. A title that the report makes or is handed belongs to its rows and is not kept.
struct KeptLayout {
    ReportLayout layout;
    bool ownTitle = false;
};

/// What became of reading or writing one: the layout, or in words for the user why there is none.
struct LayoutOutcome {
    std::optional<KeptLayout> kept;
    QString fault;
};

/// The layout as a text that readLayout() reads. Out: a fault where it could not be read again.
QByteArray layoutText(const ReportDescription& report, const KeptLayout& kept);

/// Reads a layout of this report. What a text does not hold (the title of a report, widths of table and
/// letters) is as in `opening`, the layout that the report opens with. All or nothing: a text of another
/// report, one with boxes that this one has not, with unknown or missing items, or with a value that is no
/// such value or beyond the paper, gives a fault alone.
LayoutOutcome readLayout(const QByteArray& text, const ReportDescription& report,
                         const ReportLayout& opening);

/// The same from a file. The open books (`databasePath`) and what belongs to them, whatever is no ordinary
/// file, and a file far larger than a layout are refused without being opened.
LayoutOutcome readLayoutFile(const QString& path, const QString& databasePath,
                             const ReportDescription& report, const ReportLayout& opening);

/// Writes a layout; the fault is empty where it is written. A layout that could not be read again is not.
QString writeLayoutFile(const QString& path, const ReportDescription& report, const KeptLayout& kept);

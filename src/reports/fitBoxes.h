#pragma once

#include "export/exportTable.h"
#include "reports/reportPage.h"

/// Boxes of a report as its rows need them.
struct FittedBoxes {
    std::array<double, ReportLayout::kMostBoxes + 1> boxShift{};
    QStringList tooNarrow; // labels of the columns that do not fit all the same
};

/// What each column of a report needs, from its left edge to the next separator, in millimetres: its label
/// and its text in every row. Nothing where `steps` stops it.
std::optional<std::vector<double>> neededWidths(const ReportDrawing& drawing, const ExportSteps& steps);

/// Separators between which all columns fit, so far as the table has room: a box that is too narrow takes
/// from those that have more than they need. A layout in which all fit stays as it is.
FittedBoxes fitBoxes(const ReportDescription& report, const ReportLayout& layout,
                     const std::vector<double>& needed);

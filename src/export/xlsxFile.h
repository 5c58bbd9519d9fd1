#pragma once

#include "export/exportTable.h"

/// Lines that a sheet can have.
inline constexpr int kSheetLines = 1048576;

/// Writes a table as a workbook: title, head, captions that stay in sight, and the rows, numbers as numbers,
/// dates as dates, texts as texts and never as formulas. What a sheet has no room for goes on in the next
/// one. The rows are not kept in memory.
ExportEnd writeXlsx(const QString& path, const ExportTable& table, const ExportSteps& steps = {},
                    int linesOfSheet = kSheetLines);

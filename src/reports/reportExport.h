#pragma once

#include "export/exportTable.h"
#include "reports/reportPage.h"

/// A report as a table: its title, its head, its columns as wide as on paper, and all rows of its cursor.
ExportTable exportedReport(const ReportDrawing& drawing);

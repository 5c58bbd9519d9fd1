#pragma once

#include "export/exportTable.h"

/// Writes captions and rows as CSV in UTF-8; no title and no head, since programs read the first line as the
/// captions.
ExportEnd writeCsv(const QString& path, const ExportTable& table, const ExportSteps& steps = {});

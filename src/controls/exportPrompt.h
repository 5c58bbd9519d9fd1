#pragma once

#include "export/exportTable.h"

class Prompts;
class QWidget;

/// A kind of file that a table can be exported into.
struct ExportKind {
    const char16_t* caption; // of the command
    const char16_t* ending;
    const char16_t* filter; // of the file dialog
    ExportEnd (*write)(const QString& path, const ExportTable& table, const ExportSteps& steps);
};
extern const ExportKind kCsvExport;
extern const ExportKind kXlsxExport;

/// Asks for a name, proposes that of what `from` stands in, and writes the table there, with a window of
/// progress where that takes long. Says what is written, and tells what fails.
void askExport(QWidget* from, Prompts& prompts, const ExportKind& kind, const ExportTable& table);

/// The caption of the view or window that a widget stands in, as a part of a file name.
QString exportName(const QWidget* widget);

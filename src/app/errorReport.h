#pragma once

#include <QString>

#include <exception>

/// The report of a failure that nobody caught: what failed, the statement, the file.
QString reportText(const std::exception& error, const QString& databasePath);

/// What a report offers beside its end.
enum class WayBack {
    None,
    Reopen,  // the program starts anew on the same books
    Restore, // the same, or a backup is put back first
};

/// Prints the report to stderr and, where there is a screen, shows it with its way back. Returns when the
/// user ends it; where he takes the way back, the program starts anew and this does not return.
void showReport(const QString& text, const QString& databasePath = {}, WayBack wayBack = WayBack::None);

/// Whether a report is on the screen: what fails behind it is told no more.
bool reportStands();

/// Something to be known before there is a window: printed to stderr and, where there is a screen, shown.
void showNote(const QString& text);

/// The same as a question, with what would be lost by it and Cancel as its default. True for OK, and where
/// there is no screen to ask on.
bool isAgreed(const QString& question, const QString& loss);

/// Shows the report and ends the process with code 1 at once: what was updated stays, pending edits are lost.
[[noreturn]] void endWithReport(const QString& text, const QString& databasePath, WayBack wayBack);

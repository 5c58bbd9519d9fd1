#pragma once

#include <QString>

#include <exception>

/// The report of a failure that nobody caught: what failed, the statement, the file.
QString reportText(const std::exception& error, const QString& databasePath);

/// Prints the report to stderr and, where there is a screen, shows it. Returns when the user has read it.
void showReport(const QString& text);

/// Shows the report and ends the process with code 1 at once: what was updated stays, pending edits are lost.
[[noreturn]] void endWithReport(const QString& text);

#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// What the command line asks for.
struct CommandLine {
    std::optional<QString> books;  // the folder of the books, absolute
    std::optional<QString> backup; // the file to put back before the start
    QString fault;                 // why it cannot be understood; empty if it can
};

/// Reads the arguments behind the program's name. A relative folder is one of the current folder.
CommandLine readCommandLine(const QStringList& arguments);

/// The arguments with which the program starts anew on the same books, after putting a backup back where one
/// is named.
QStringList argumentsAgain(const CommandLine& line, const QString& backup);

/// What --help says. `dataFolder`: where the books of an installed program are.
QString commandLineHelp(const QString& dataFolder);

#pragma once

#include <QString>

#include <optional>

/// Who says where the books are.
enum class BooksPlace {
    Asked,     // the command line
    Beside,    // they are in the folder of the program
    UsersData, // the user's data folder, for an installed program
};

/// What is found around the program when it starts.
struct Surroundings {
    QString programFolder;
    QString dataFolder;     // that of the user for this program, there or not
    bool isBeside = false;  // the data file is in the program's folder
    bool installed = false; // the program is one that an installation put there
};

struct BooksFolder {
    BooksPlace place;
    QString path;
};

/// Where the books are: in the folder asked for; beside the program, where the file is there or the program
/// is not installed; else in the user's data folder.
BooksFolder placeOfBooks(const std::optional<QString>& asked, const Surroundings& around);

/// Looks around the program in a folder. It is installed where the empty books lie there under their own
/// name, which no program folder of a shop has; nothing is ever written there then.
Surroundings lookAround(const QString& programFolder);

/// Name of the database file in the folder of the books.
QString databaseFileName();

/// The empty books that an installed program carries.
QString emptyBooks(const QString& programFolder);

/// The user's data folder for this program.
QString usersDataFolder();

/// Why a folder cannot hold the books: missing, no folder; empty if it can.
QString folderFault(const QString& folder);

/// What to do where the folder has no data file, a line of its own; empty where nothing is to be said.
QString missingBooksHint(const BooksFolder& books, const Surroundings& around);

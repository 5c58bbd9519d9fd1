#pragma once

#include <QString>
#include <QStringList>

class MDIForm1;

/// Opens the books, recounts the customers' totals and shows the register; the status bar says of how many
/// customers the totals changed. In: called once, after the main window is shown. Throws RuntimeError,
/// DatabaseLost.
void startShop(MDIForm1& main);

/// Name of the database file beside the program.
QString databaseFileName();

/// What is asked where the journal beside the database may be of it and may not be, and what an answer may
/// cost.
QString unknownJournalQuestion(const QString& databasePath);
QString unknownJournalLoss();

/// What is said of files beside the database that were put aside under these names.
QString strayNote(const QStringList& names);

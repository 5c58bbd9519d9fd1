#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class MDIForm1;
class Prompts;
class StartJobs;

/// Opens the books and shows the register, with the totals as they are stored. In: called once, after the
/// main window is shown. Throws RuntimeError, DatabaseLost.
void startShop(MDIForm1& main);

/// Recounts the customers' totals behind the first screen; whoever asks for them meanwhile has it finished.
void recountBehind(MDIForm1& main, StartJobs& jobs);

/// Says in the status bar how the recount of the customers' totals ended, and shows them.
void tellRecounted(MDIForm1& main, int changed);
void tellNotRecounted(MDIForm1& main, const QString& why);

/// What the open books ask of the user, and what he is told when an action of theirs has ended, which
/// `onActionEnded` gets: cursors are shown as they are then, and he reads the text where there is one. What
/// the jobs of the start find ends the program with the report, or stands in the status bar.
void wireBooks(MDIForm1& main, StartJobs& jobs, Prompts& prompts,
               std::function<void(const QString& text)>& onActionEnded);

/// What is asked where the journal beside the database may be of it and may not be, and what an answer may
/// cost.
QString unknownJournalQuestion(const QString& databasePath);
QString unknownJournalLoss();
/// What is said where the user keeps it.
QString unknownJournalKept(const QString& databasePath);

/// What is said of files beside the database that were put aside under these names.
QString strayNote(const QStringList& names);

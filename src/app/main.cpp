#include "app/appearance.h"
#include "app/booksPlace.h"
#include "app/commandLine.h"
#include "app/errorReport.h"
#include "app/newBooks.h"
#include "app/oldBooks.h"
#include "app/registry.h"
#include "app/shopApplication.h"
#include "app/startJobs.h"
#include "app/startUp.h"
#include "controls/prompts.h"
#include "data/booksLock.h"
#include "data/journalFiles.h"
#include "data/schema.h"
#include "data/unfinished.h"
#include "data/warmUp.h"
#include "maintenance/restore.h"
#include "shell/MDIForm1.h"
#include "shell/version.h"

#include <QFileInfo>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

namespace {

/// The start ends here, with nothing left behind.
struct StartEnded {
    int code;
};

/// Ends with the report where something is wrong; before any window.
void require(const QString& fault, const QString& path, WayBack wayBack) {
    if (fault.isEmpty())
        return;
    showReport(fault, path, wayBack);
    throw StartEnded{1};
}

/// A journal that may be of this file and may not be is put aside only where the user says so.
void askAboutJournal(const QString& path) {
    if (journalState(path) == JournalState::Unknown &&
        !isAgreed(unknownJournalQuestion(path), unknownJournalLoss()))
        require(unknownJournalKept(path), path, WayBack::Restore);
}

/// Moves away what the engine would take for the file's own and is not, and says so. An unknown journal stays
/// where a backup will take the file's place: it is kept beside the old file then.
void clearAway(const QString& path, const BooksLock& lock, bool restores) {
    if (hasStrays(path) && lock.isUsedByOthers())
        require(QStringLiteral("不能打开数据库 %1\n文件正被另一个程序使用（已锁定）。").arg(path), path,
                WayBack::Reopen);
    try {
        const bool stays = restores && journalState(path) == JournalState::Unknown;
        if (!restores)
            askAboutJournal(path);
        const QStringList names = stays ? QStringList() : putStraysAside(path);
        if (!names.isEmpty())
            showNote(strayNote(names));
        clearUnfinished(path);
    } catch (const std::exception& error) {
        require(reportText(error, path), path, WayBack::Reopen);
    }
}

/// Takes over the books of an old installation, or ends where that cannot be or is not wanted.
void acceptOldBooks(const QString& path, BooksLock& lock, Prompts& prompts) {
    const OldBooksResult result = meetOldBooks(path, prompts, &lock);
    if (result.outcome == OldBooks::Refused)
        showReport(result.fault);
    if (result.outcome == OldBooks::Refused || result.outcome == OldBooks::Declined)
        throw StartEnded{result.outcome == OldBooks::Refused ? 1 : 0};
}

/// Puts a backup back that the command line names.
void restore(const QString& backup, const QString& path, BooksLock& lock) {
    const Restored result = restoreBackup(backup, path, lock);
    require(result.fault, path, WayBack::Restore);
    showNote(result.kept.isEmpty()
                 ? QStringLiteral("已经恢复备份。")
                 : QStringLiteral("已经恢复备份。原来的数据文件保留为：%1").arg(result.kept));
}

/// Whether rights are not what keeps the file from being used.
bool isWritable(const QString& path) {
    return QFileInfo(path).isWritable() && QFileInfo(QFileInfo(path).absolutePath()).isWritable();
}

/// Goes through what must be right before the file is opened. The lock is held afterwards. `hint`: what to
/// say beside a missing file.
void prepareFile(const QString& path, const std::optional<QString>& backup, const QString& hint,
                 BooksLock& lock, Prompts& prompts) {
    const bool missing = !QFileInfo::exists(path);
    if ((!missing || !backup) && !lock.fault().isEmpty())
        require(lock.fault() + hint, path, missing ? WayBack::Restore : WayBack::None);
    clearAway(path, lock, backup.has_value());
    if (backup) {
        restore(*backup, path, lock);
        clearAway(path, lock, false); // what stood beside the old file
    }
    acceptOldBooks(path, lock, prompts);
    const QString fault = databaseFault(path);
    require(fault, path, lock.isUsedByOthers() || !isWritable(path) ? WayBack::Reopen : WayBack::Restore);
}

int run(ShopApplication& application, const QString& appPath, const QString& databasePath, BooksLock& lock,
        Prompts& prompts) {
    Session session(databasePath);
    session.appPath = appPath;
    MDIForm1 main(session, prompts);
    main.endProcess = [&lock] {
        lock.release();
        std::_Exit(0);
    };
    registerAll(main, prompts);
    StartJobs jobs(session, QDate::currentDate());
    ImageWarmer warmer(session.cn, columnsToWarm());
    wireBooks(main, jobs, prompts, application.onActionEnded);
    jobs.onQuiet = [&] {
        warmer.start();
        main.host().suggestions().start();
    };
    main.show();
    // The frame is painted before the tables are read, so that a large shop has its window at once.
    QTimer::singleShot(0, &main, [&] {
        main.repaint();
        jobs.start();
        startShop(main);
        application.setOpened();
        recountBehind(main, jobs);
    });
    return application.exec();
}

/// What needs no screen and no books; false where nothing of it is asked for.
bool answers(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const bool help = std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0;
        if (!help && std::strcmp(argv[i], "--version") != 0)
            continue;
        const QString text = help ? commandLineHelp(usersDataFolder()) : programVersion() + u'\n';
        std::fputs(qUtf8Printable(text), stdout);
        return true;
    }
    return false;
}

/// Ends where the command line cannot be understood.
CommandLine understood(const QStringList& arguments) {
    CommandLine line = readCommandLine(arguments.mid(1));
    if (line.fault.isEmpty())
        return line;
    showReport(line.fault);
    throw StartEnded{2};
}

/// Sees to it that the folder of the books is there.
void requireFolder(const BooksFolder& books, const Surroundings& around) {
    if (books.place == BooksPlace::UsersData && isFirstStart(books.path))
        require(makeFirstBooks(books.path, emptyBooks(around.programFolder)), books.path, WayBack::Reopen);
    require(folderFault(books.path), books.path, WayBack::Reopen);
}

/// Behind links, where the engine keeps the journal too; the name itself where no file is.
QString realPath(const QString& path) {
    const QString real = QFileInfo(path).canonicalFilePath();
    return real.isEmpty() ? path : real;
}

} // namespace

int main(int argc, char** argv) {
    if (answers(argc, argv))
        return 0;
    // A file that may not grow is a full disk, and a report that nobody reads is no reason to die of it.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    ShopApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("衡商汇"));
    application.setDesktopFileName(QStringLiteral("hengshanghui"));
    application.setQuitOnLastWindowClosed(false);
    setAppearance(application);
    QString databasePath;
    try {
        const CommandLine line = understood(application.arguments());
        const Surroundings around = lookAround(QCoreApplication::applicationDirPath());
        const BooksFolder books = placeOfBooks(line.books, around);
        requireFolder(books, around);
        databasePath = realPath(books.path + u'/' + databaseFileName());
        application.setDatabasePath(databasePath);
        WindowPrompts prompts;
        BooksLock lock(databasePath);
        prepareFile(databasePath, line.backup, missingBooksHint(books, around), lock, prompts);
        return run(application, around.programFolder, databasePath, lock, prompts);
    } catch (const StartEnded& ended) {
        return ended.code;
    } catch (const std::exception& error) {
        endWithReport(reportText(error, databasePath), databasePath, WayBack::Restore);
    }
}

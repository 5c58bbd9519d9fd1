#include "app/appearance.h"
#include "app/errorReport.h"
#include "app/oldBooks.h"
#include "app/registry.h"
#include "app/shopApplication.h"
#include "app/startUp.h"
#include "controls/prompts.h"
#include "data/schema.h"
#include "shell/MDIForm1.h"
#include "shell/version.h"

#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

/// Ends with the report where the file cannot serve; before any window, and without touching it.
void requireDatabase(const QString& path) {
    const QString fault = databaseFault(path);
    if (fault.isEmpty())
        return;
    showReport(fault);
    std::exit(1);
}

/// Takes over the books of an old installation, or ends where that cannot be or is not wanted.
void acceptOldBooks(const QString& path) {
    WindowPrompts prompts;
    const OldBooksResult result = meetOldBooks(path, prompts);
    if (result.outcome == OldBooks::Refused)
        showReport(result.fault);
    if (result.outcome == OldBooks::Refused || result.outcome == OldBooks::Declined)
        std::exit(result.outcome == OldBooks::Refused ? 1 : 0);
}

int run(ShopApplication& application, const QString& appPath, const QString& databasePath,
        DatabaseLock& lock) {
    Session session(databasePath);
    session.appPath = appPath;
    WindowPrompts prompts;
    MDIForm1 main(session, prompts);
    main.endProcess = [&lock] {
        lock.release();
        std::_Exit(0);
    };
    registerAll(main, prompts);
    main.show();
    // The frame is painted before the tables are read, so that a large shop has its window at once.
    QTimer::singleShot(0, &main, [&main] {
        main.repaint();
        startShop(main);
    });
    return application.exec();
}

} // namespace

int main(int argc, char** argv) {
    // Needs no screen and no books.
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::puts(qUtf8Printable(programVersion()));
        return 0;
    }
    ShopApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("衡商汇"));
    application.setQuitOnLastWindowClosed(false);
    setAppearance(application);
    const QString appPath = QCoreApplication::applicationDirPath();
    const QString databasePath = appPath + u'/' + databaseFileName();
    application.setDatabasePath(databasePath);
    acceptOldBooks(databasePath);
    requireDatabase(databasePath);
    DatabaseLock lock(databasePath);
    if (!lock.fault().isEmpty()) {
        showReport(lock.fault());
        return 1;
    }
    try {
        return run(application, appPath, databasePath, lock);
    } catch (const std::exception& error) {
        endWithReport(reportText(error, databasePath));
    }
}

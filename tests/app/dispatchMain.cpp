// The program's dispatch by itself: dispatchMain ended|damaged. A handler of an event fails in that way.
#include "app/shopApplication.h"
#include "recordset/error.h"

#include <QTimer>

#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    ShopApplication application(argc, argv);
    application.setDatabasePath(QStringLiteral("the books"));
    application.onActionEnded = [](const QString& text) { std::puts(qUtf8Printable(text)); };
    const bool ends = argc > 1 && std::strcmp(argv[1], "ended") == 0;
    QTimer::singleShot(0, &application, [ends] {
        if (ends)
            throw ActionEnded(QStringLiteral("given up"));
        throw DatabaseLost(QStringLiteral("torn"));
    });
    QTimer::singleShot(0, &application, [] { std::puts("the next event"); });
    QTimer::singleShot(0, &application, &QCoreApplication::quit);
    return application.exec();
}

// The program's dispatch by itself: dispatchMain ended|early|damaged. A handler of an event
// fails in that way, "early" before the books are open.
#include "app/shopApplication.h"
#include "recordset/error.h"

#include <QTimer>

#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    ShopApplication application(argc, argv);
    application.setDatabasePath(QStringLiteral("the books"));
    application.onActionEnded = [](const QString& text) { std::puts(qUtf8Printable(text)); };
    const char* how = argc > 1 ? argv[1] : "";
    const bool ends = std::strcmp(how, "damaged") != 0;
    if (std::strcmp(how, "early") != 0)
        application.setOpened();
    QTimer::singleShot(0, &application, [ends] {
        if (ends)
            throw ActionEnded(QStringLiteral("given up"));
        throw DatabaseLost(QStringLiteral("torn"));
    });
    QTimer::singleShot(0, &application, [] { std::puts("the next event"); });
    QTimer::singleShot(0, &application, &QCoreApplication::quit);
    return application.exec();
}

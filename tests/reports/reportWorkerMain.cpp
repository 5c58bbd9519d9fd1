// report_worker REPORT TABLE ROWS PDF: opens a report of the program over a table of invented rows and
// presses its print button, as the process in which an error reaches no handler. What it tells the user goes
// to its standard output.
#include "app/appearance.h"
#include "app/registry.h"
#include "app/shopApplication.h"
#include "app/startUp.h"
#include "reports/reportDescription.h"
#include "shell/MDIForm1.h"
#include "support/driver.h"
#include "support/reportRows.h"
#include "support/scriptedPrompts.h"

#include <QTimer>

#include <cstdio>

namespace {

class ToldPrompts : public ScriptedPrompts {
public:
    void tell(const QString& text, const QString&) override { std::puts(text.toUtf8().constData()); }
};

} // namespace

int main(int argc, char** argv) {
    ShopApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    setAppearance(application);
    const QStringList words = application.arguments();
    if (words.size() != 5)
        return 2;
    TestBooks books;
    application.setDatabasePath(books.path());
    if (words[2] == u"clientTable")
        fillTable(books, words[2], words[3].toInt());
    else
        fillStockTable(books, words[2], words[3].toInt());
    ToldPrompts prompts;
    prompts.saveName = words[4];
    MDIForm1 main(books.session(), prompts);
    registerAll(main, prompts);
    main.show();
    startShop(main);
    const ReportDescription* report = findReport(words[1]);
    books.session().reopen(books.session().*report->cursor,
                           report->cursor == &Session::clerkTotals
                               ? rowsOf(*report)
                               : QStringLiteral("Select * From ") + words[2]);
    TopWindow* form = main.host().openWindow(words[1], ViewHost::MainWindow::Disabled);
    QTimer::singleShot(0, [form] {
        Driver(*form).click(QStringLiteral("Command2"));
        QCoreApplication::exit(0);
    });
    return application.exec();
}

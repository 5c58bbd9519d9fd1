// report_worker REPORT ROWS PDF: opens a report of the program over invented rows and presses its print
// button, as the process in which an error reaches no handler. What it tells the user goes to its standard
// output.
#include "app/appearance.h"
#include "app/registry.h"
#include "app/shopApplication.h"
#include "reports/reportDescription.h"
#include "shell/MDIForm1.h"
#include "support/driver.h"
#include "support/reportRows.h"
#include "support/scriptedPrompts.h"
#include "support/startAtOnce.h"

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
    const ReportDescription* report = words.size() == 4 ? findReport(words[1]) : nullptr;
    if (!report)
        return 2;
    TestBooks books;
    application.setDatabasePath(books.path());
    fillTable(books, tableOf(*report), words[2].toInt());
    ToldPrompts prompts;
    prompts.saveName = words[3];
    MDIForm1 main(books.session(), prompts);
    registerAll(main, prompts);
    main.show();
    startAtOnce(main);
    books.session().reopen(books.session().*report->cursor, rowsOf(*report));
    TopWindow* form = main.host().openWindow(words[1], ViewHost::MainWindow::Disabled);
    QTimer::singleShot(0, [form] {
        Driver(*form).click(QStringLiteral("Command2"));
        QCoreApplication::exit(0);
    });
    return application.exec();
}

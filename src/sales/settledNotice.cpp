#include "sales/settledNotice.h"

#include "controls/prompts.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>

namespace {

/// What an order can be printed as.
constexpr std::pair<const char16_t*, const char16_t*> kReports[] = {
    {u"小票（80 毫米卷纸）", u"slip_roll"}, {u"小票（A5）", u"slip_A5"}, {u"订单明细", u"showprint_rs22"}};

void print(const SettledOrder& settled, const QString& report, ViewHost& host, Prompts& prompts) {
    Session& session = host.session();
    const QString before = session.buyList->isOpen() ? session.buyList->Filter() : QString();
    const QString customer = session.currentClientNum;
    if (!takeSettledOrder(session, settled))
        return prompts.tell(QStringLiteral("订单 %1 已经没有记录。").arg(settled.order));
    // The register may have gone on to another customer since.
    const auto giveBack = [&session, before, customer, printed = session.buyList->Filter()] {
        if (session.buyList->isOpen() && session.buyList->Filter() == printed)
            session.buyList->setFilter(before);
        session.currentClientNum = customer;
        session.refreshCustomer();
    };
    session.report.caller = QStringLiteral("dataInputFm1");
    if (TopWindow* window = host.openWindow(report, ViewHost::MainWindow::Disabled))
        QObject::connect(window, &TopWindow::finished, &host, giveBack);
    else
        giveBack();
}

/// Opens above the button that was pressed.
void offerToPrint(const SettledOrder& settled, ViewHost& host, Prompts& prompts) {
    QWidget* active = QApplication::activeWindow();
    QWidget* window = active ? active : static_cast<QWidget*>(&host.mainWindow());
    auto* menu = new QMenu(window);
    menu->setObjectName(QStringLiteral("printSettled"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const auto& [caption, name] : kReports) {
        const QString report = QString::fromUtf16(name);
        QAction* action = menu->addAction(QString::fromUtf16(caption));
        action->setObjectName(report);
        QObject::connect(action, &QAction::triggered, &host,
                         [=, &host, &prompts] { print(settled, report, host, prompts); });
    }
    const auto* button = window->findChild<QWidget*>(QStringLiteral("noticeAction"));
    const QPoint corner = button ? button->mapToGlobal(QPoint()) : QCursor::pos();
    menu->popup(corner - QPoint(0, menu->sizeHint().height()));
}

} // namespace

Notice settledNotice(const SettledOrder& settled, ViewHost& host, Prompts& prompts) {
    return {settledText(settled), QStringLiteral("打印"),
            [settled, &host, &prompts] { offerToPrint(settled, host, prompts); }};
}

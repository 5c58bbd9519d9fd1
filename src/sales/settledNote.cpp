#include "sales/settledNote.h"

#include "controls/formParts.h"
#include "controls/prompts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>

namespace {

/// What an order can be printed as.
constexpr std::pair<const char16_t*, const char16_t*> kReports[] = {
    {u"小票（80 毫米卷纸）", u"slip_roll"}, {u"小票（A5）", u"slip_A5"}, {u"订单明细", u"showprint_rs22"}};

} // namespace

SettledNote::SettledNote(const SettledOrder& settled, ViewHost& host, Prompts& prompts, QWidget* parent)
    : QWidget(parent)
    , m_settled(settled)
    , m_host(host)
    , m_prompts(prompts) {
    setObjectName(QStringLiteral("settledNote"));
    QPushButton* button = makeButton(QStringLiteral("printSettled"), QStringLiteral("打印"), this);
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolTip(QStringLiteral("打印订单 %1").arg(settled.order));
    auto* menu = new QMenu(button);
    for (const auto& [caption, report] : kReports) {
        QAction* action = menu->addAction(QString::fromUtf16(caption));
        action->setObjectName(QString::fromUtf16(report));
        connect(action, &QAction::triggered, this,
                [this, report = QString::fromUtf16(report)] { print(report); });
    }
    button->setMenu(menu);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(makeLabel(QStringLiteral("settledText"), settledText(settled), this));
    row->addWidget(button);
    row->addStretch(1);
}

void SettledNote::print(const QString& report) {
    Session& session = m_host.session();
    const QString before = session.buyList->isOpen() ? session.buyList->Filter() : QString();
    const QString customer = session.currentClientNum;
    if (!takeSettledOrder(session, m_settled))
        return m_prompts.tell(QStringLiteral("订单 %1 已经没有记录。").arg(m_settled.order));
    // The register may have gone on to another customer since.
    const auto giveBack = [&session, before, customer, printed = session.buyList->Filter()] {
        if (session.buyList->isOpen() && session.buyList->Filter() == printed)
            session.buyList->setFilter(before);
        session.currentClientNum = customer;
        session.refreshCustomer();
    };
    session.report.caller = QStringLiteral("dataInputFm1");
    if (TopWindow* window = m_host.openWindow(report, ViewHost::MainWindow::Disabled))
        connect(window, &TopWindow::finished, &m_host, giveBack);
    else
        giveBack();
}

#include "sales/salesCommands.h"

#include "controls/prompts.h"
#include "sales/buyFm1.h"
#include "sales/dataInputFm1.h"
#include "sales/paybackFm1.h"
#include "shell/viewOpeners.h"

namespace {

void showOneClientOrders(ViewHost& host, Prompts& prompts) {
    Session& session = host.session();
    const RecordsetPtr& clients = session.clientTable;
    if (!clients->hasRows() || !clients->currentRow() || !session.buyList->isOpen())
        return;
    Recordset lines(session.cn);
    lines.Open(QStringLiteral("Select * From buyList Where ") +
               keyCondition(QStringLiteral("客户编号"), clients->Fields(QStringLiteral("客户编号")).text()));
    if (!lines.hasRows())
        return prompts.tell(QStringLiteral("该客户无购物记录！"));
    host.tellNotYet(QStringLiteral("该客户订单明细显示"));
}

void showClerkClients(ViewHost& host, Prompts& prompts) {
    if (!host.isActive(QStringLiteral("statisticFm3")))
        return prompts.tell(QStringLiteral("请先显示业务员业绩统计！"));
    host.tellNotYet(QStringLiteral("该业务员客户资料"));
}

} // namespace

void registerSales(CommandTable& commands, ViewHost& host, Prompts& prompts) {
    host.registerView(QStringLiteral("dataInputFm1"),
                      [&host, &prompts] { return new dataInputFm1(host, prompts); });
    host.registerWindow(QStringLiteral("buyFm1"),
                        [&host, &prompts] { return new buyFm1(host.session(), prompts); });
    host.registerView(QStringLiteral("paybackFm1"),
                      [&host, &prompts] { return new paybackFm1(host, prompts); });
    static constexpr ViewOpener openers[] = {{u"maintain_order", u"paybackFm1"},
                                             {u"management_client", u"dataInputFm1"}};
    addOpeners(commands, host, openers);
    commands.add(QStringLiteral("show_one_client2"), [&host, &prompts](IgnoringErrors& errors) {
        errors.run([&] { showOneClientOrders(host, prompts); });
    });
    commands.add(QStringLiteral("statistic_achievement2"),
                 [&host, &prompts](IgnoringErrors&) { showClerkClients(host, prompts); });
}

#include "sales/salesCommands.h"

#include "sales/buyFm1.h"
#include "sales/dataInputFm1.h"
#include "sales/paybackFm1.h"
#include "shell/viewOpeners.h"

void registerSales(CommandTable& commands, ViewHost& host, Prompts& prompts) {
    host.registerView(QStringLiteral("dataInputFm1"),
                      [&host, &prompts] { return new dataInputFm1(host, prompts); });
    host.registerWindow(QStringLiteral("buyFm1"), [&host, &prompts] { return new buyFm1(host, prompts); });
    host.registerView(QStringLiteral("paybackFm1"),
                      [&host, &prompts] { return new paybackFm1(host, prompts); });
    static constexpr ViewOpener openers[] = {{u"maintain_order", u"paybackFm1"},
                                             {u"management_client", u"dataInputFm1"}};
    addOpeners(commands, host, openers);
}

#include "stock/stockCommands.h"

#include "stock/productRegisterFm1.h"

void registerStock(CommandTable& commands, ViewHost& host, Prompts& prompts) {
    host.registerView(QStringLiteral("productRegisterFm1"),
                      [&host, &prompts] { return new productRegisterFm1(host, prompts); });
    commands.add(QStringLiteral("maintain_product"),
                 [&host] { host.showFromMenu(QStringLiteral("productRegisterFm1")); });
}

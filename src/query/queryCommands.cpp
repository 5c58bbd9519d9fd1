#include "query/queryCommands.h"

#include "query/fieldDialogs.h"
#include "query/orderFormNumFm1.h"
#include "query/productWindows.h"

void registerQuery(ViewHost& host, Prompts& prompts) {
    host.setSorter([&host](const QString& field) { sortView(host, field); });
    host.registerWindow(QStringLiteral("searchFm1"),
                        [&host, &prompts] { return new searchFm1(host, prompts); });
    host.registerWindow(QStringLiteral("orderFm1"),
                        [&host, &prompts] { return new orderFm1(host, prompts); });
    host.registerWindow(QStringLiteral("listProductFm2"),
                        [&host, &prompts] { return new listProductFm2(host, prompts); });
    host.registerWindow(QStringLiteral("product_displayFm1"),
                        [&host, &prompts] { return new product_displayFm1(host, prompts); });
    host.registerWindow(QStringLiteral("order_Form_NumFm1"), [&host] { return new order_Form_NumFm1(host); });
}

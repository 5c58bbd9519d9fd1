#include "drilldown/drillCommands.h"

#include "drilldown/drillDown.h"
#include "drilldown/drillViews.h"
#include "drilldown/goodsSalesFm1.h"
#include "drilldown/statisticFm5.h"

void registerDrillDowns(CommandTable& commands, ViewHost& host, Prompts& prompts) {
    registerDisplays(host, prompts, drillDisplays());
    host.registerWindow(QStringLiteral("goodsSalesFm1"),
                        [&host, &prompts] { return new goodsSalesFm1(host, prompts); });
    host.registerWindow(QStringLiteral("statisticFm5"),
                        [&host, &prompts] { return new statisticFm5(host, prompts); });
    const std::pair<const char16_t*, std::function<void()>> table[] = {
        {u"show_one_client1", [&host] { showClientLines(host); }},
        {u"show_one_client2", [&host, &prompts] { showClientOrders(host, prompts); }},
        {u"statistic_one_client", [&host] { showClientStatistic(host); }},
        {u"show_sales", [&host] { showAllSales(host); }},
        {u"show_one_sale_product", [&host, &prompts] { showOneProductSales(host, prompts); }},
        {u"show_product_client", [&host, &prompts] { showProductClients(host, prompts); }}};
    for (const auto& [name, command] : table)
        commands.add(QString::fromUtf16(name), [run = command](IgnoringErrors& errors) { errors.run(run); });
}

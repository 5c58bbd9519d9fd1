#include "app/registry.h"

#include "analysis/analysisCommands.h"
#include "controls/prompts.h"
#include "data/ownFiles.h"
#include "drilldown/drillCommands.h"
#include "maintenance/maintenanceCommands.h"
#include "query/queryCommands.h"
#include "reports/reportCommands.h"
#include "sales/salesCommands.h"
#include "shell/MDIForm1.h"
#include "shell/manualFm1.h"
#include "stock/stockCommands.h"

void registerAll(MDIForm1& main, Prompts& prompts) {
    ViewHost& host = main.host();
    prompts.guardWriting([&host](const QString& path) {
        return isOwnFile(path, host.session().cn.path()) ? ownFileRefusal(path) : QString();
    });
    host.registerWindow(QStringLiteral("manualFm1"), [&host] {
        return new manualFm1(host.session().appPath + QStringLiteral("/用户指南(衡商汇).txt"));
    });
    main.commands().add(QStringLiteral("help"), [&main](IgnoringErrors&) { main.showHelp(); });
    main.commands().add(QStringLiteral("exit"), [&main](IgnoringErrors&) { main.askExit(); });
    registerSales(main.commands(), host, prompts);
    registerStock(main.commands(), host, prompts);
    registerAnalysis(main.commands(), host, prompts);
    registerDrillDowns(main.commands(), host, prompts);
    registerMaintenance(main.commands(), host, prompts);
    registerQuery(host, prompts);
    registerReports(host, prompts);
}

#include "app/registry.h"

#include "analysis/analysisCommands.h"
#include "controls/prompts.h"
#include "data/ownFiles.h"
#include "drilldown/drillCommands.h"
#include "import/readerProcess.h"
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
        host.awaitFigures();
        return isOwnFile(path, host.session().cn.path()) ? ownFileRefusal(path) : QString();
    });
    host.registerPlain(QStringLiteral("manualFm1"), [&host] {
        const QString warning =
            wallsState() ? QString()
                         : QStringLiteral("本机的系统内核不支持隔离：导入文件时，读取程序没有隔离保护，"
                                          "请只导入来历可靠的文件。");
        return new manualFm1(
            host.session().appPath + QStringLiteral("/用户指南(衡商汇).txt"),
            [&host] { return helpTopic(host.helpAbout()); }, host.session().cn.path(), warning);
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

#include "reports/reportCommands.h"

#include "reports/reportForm.h"

void registerReports(ViewHost& host, Prompts& prompts) {
    for (const ReportDescription& report : reportCatalogue())
        host.registerReport(QString::fromUtf16(report.name),
                            [&host, &prompts, &report] { return new ReportForm(report, host, prompts); });
}

#include "reports/reportCommands.h"

#include "reports/paperZoom.h"
#include "reports/reportForm.h"

void registerReports(ViewHost& host, Prompts& prompts) {
    const auto zoom = std::make_shared<PaperZoom>(); // of this run
    for (const ReportDescription& report : reportCatalogue())
        host.registerReport(QString::fromUtf16(report.name), [&host, &prompts, &report, zoom] {
            auto* form = new ReportForm(report, host, prompts);
            form->keepZoom(zoom);
            return form;
        });
}

#include "reports/reportCommands.h"

#include "reports/paperZoom.h"
#include "reports/reportForm.h"
#include "reports/slip.h"

namespace {

/// A report whose description is made for the order in hand, and lives as long as its form.
struct OwnSlip {
    Slip slip;
};
class SlipForm : private OwnSlip, public ReportForm {
public:
    SlipForm(SlipPaper paper, ViewHost& host, Prompts& prompts)
        : OwnSlip{{paper, host.session()}}
        , ReportForm(slip.description(), host, prompts) {}
};

} // namespace

void registerReports(ViewHost& host, Prompts& prompts) {
    const auto zoom = std::make_shared<PaperZoom>(); // of this run
    for (const ReportDescription& report : reportCatalogue())
        host.registerReport(QString::fromUtf16(report.name), [&host, &prompts, &report, zoom] {
            auto* form = new ReportForm(report, host, prompts);
            form->keepZoom(zoom);
            return form;
        });
    host.registerReport(QStringLiteral("slip_roll"),
                        [&host, &prompts] { return new SlipForm(SlipPaper::Roll, host, prompts); });
    host.registerReport(QStringLiteral("slip_A5"),
                        [&host, &prompts] { return new SlipForm(SlipPaper::A5, host, prompts); });
}

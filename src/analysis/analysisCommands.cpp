#include "analysis/analysisCommands.h"

#include "analysis/periodDialog.h"

void registerAnalysis(CommandTable& /*commands*/, ViewHost& host, Prompts& prompts) {
    const std::pair<const char16_t*, PeriodPurpose> dialogs[] = {
        {u"timeDefineFm1", PeriodPurpose::Cursor},
        {u"timeDefineFm2", PeriodPurpose::Views},
        {u"timeDefineFm22", PeriodPurpose::Register}};
    for (const auto& [name, purpose] : dialogs)
        host.registerWindow(QString::fromUtf16(name), [&host, &prompts, purpose = purpose] {
            return new PeriodDialog(purpose, host, prompts);
        });
}

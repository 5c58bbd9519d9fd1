#include "analysis/analysisCommands.h"

#include "analysis/analysisPanels.h"
#include "analysis/callListWindow.h"
#include "analysis/clientViews.h"
#include "analysis/cutDialog.h"
#include "analysis/cutOnScreen.h"
#include "analysis/distributionWindow.h"
#include "analysis/frequencyWindow.h"
#include "analysis/periodDialog.h"
#include "analysis/turnoverView.h"
#include "controls/prompts.h"
#include "data/cursorMoves.h"

namespace {

void clearFilter(const RecordsetPtr& cursor) {
    if (cursor->isOpen())
        cursor->clearFilter();
}

/// The evaluation; one that is in front already goes back to the whole table.
void showEvaluation(ViewHost& host, IgnoringErrors& errors) {
    static const QString name = QStringLiteral("statisticFm1");
    if (host.isActive(name))
        errors.run([&] { host.active()->run(ViewOperation::data_whole_show); });
    errors.run([&] { host.showOrActivate(name); });
}

void showAllClients(ViewHost& host, IgnoringErrors& errors) {
    const RecordsetPtr& clients = host.session().clientTable;
    errors.run([&] { clearFilter(clients); });
    if (clients->hasRows())
        errors.run([&] { host.showOrActivate(QStringLiteral("userInfoFm1")); });
}

/// Asks one of the six questions and shows the customers of the answer in the evaluation.
void analyse(const BestClientsQuestion& question, ViewHost& host, Prompts& prompts) {
    Session& session = host.session();
    host.show(QStringLiteral("statisticFm1"));
    if (!hasClients(session))
        return;
    session.analysisKind = 1;
    const auto answer =
        prompts.input(QString::fromUtf16(question.prompt), QString::fromUtf16(question.inputTitle));
    const RecordsetPtr clients = answer && !answer->isEmpty() ? clientsToCut(session) : nullptr;
    if (clients)
        showCut(host, clients, question, *answer);
}

void countByGroup(const Distribution& distribution, ViewHost& host) {
    Session& session = host.session();
    clearFilter(session.clientTable);
    if (!session.clientTable->hasRows())
        return;
    session.analysisKind = 1;
    showDistribution(distribution, host);
}

/// The salespeople; a statistic that is in front already goes back to the whole table.
void showClerks(ViewHost& host, IgnoringErrors& errors) {
    static const QString name = QStringLiteral("statisticFm3");
    Session& session = host.session();
    errors.run([&] { clearFilter(session.clientTable); });
    if (host.isActive(name)) {
        session.showSource = ShowSource::Clerks;
        errors.run([&] { clearAnyFilter(session.buyList); });
    }
    errors.run([&] { host.showOrActivate(name); });
}

void showClientsOfClerk(ViewHost& host, Prompts& prompts, IgnoringErrors& errors) {
    if (!host.isActive(QStringLiteral("statisticFm3")))
        return prompts.tell(QStringLiteral("请先显示业务员业绩统计！"));
    errors.run([&] { showClerkClients(host); });
}

void addCommands(CommandTable& commands, ViewHost& host, Prompts& prompts) {
    using Errors = IgnoringErrors;
    commands.add(QStringLiteral("data_statistic1"),
                 [&host](Errors& errors) { showEvaluation(host, errors); });
    commands.add(QStringLiteral("show_whole_client"),
                 [&host](Errors& errors) { showAllClients(host, errors); });
    for (const BestClientsQuestion& question : bestClientsQuestions())
        commands.add(QString::fromUtf16(question.command),
                     [&](Errors& errors) { errors.run([&] { analyse(question, host, prompts); }); });
    for (const TurnoverStatistic& statistic : turnoverStatistics())
        commands.add(QString::fromUtf16(statistic.command),
                     [&](Errors& errors) { errors.run([&] { showTurnover(statistic, host, prompts); }); });
    commands.add(QStringLiteral("buy_frequence"),
                 [&host](Errors& errors) { errors.run([&] { showFrequency(host); }); });
    for (const Distribution& each : distributions())
        commands.add(QString::fromUtf16(each.command),
                     [&](Errors& errors) { errors.run([&] { countByGroup(each, host); }); });
    commands.add(QStringLiteral("statistic_achievement"),
                 [&host](Errors& errors) { showClerks(host, errors); });
    commands.add(QStringLiteral("statistic_achievement2"),
                 [&host, &prompts](Errors& errors) { showClientsOfClerk(host, prompts, errors); });
}

void addViews(ViewHost& host, Prompts& prompts) {
    registerDisplays(host, prompts, clientDisplays());
    host.registerView(QStringLiteral("saleroom_statistic"),
                      [&host, &prompts] { return new saleroom_statistic(host, prompts); });
    host.registerWindow(QStringLiteral("buy_FrequenceFm1"),
                        [&host, &prompts] { return new buy_FrequenceFm1(host, prompts); });
    for (const Distribution& each : distributions())
        host.registerWindow(QString::fromUtf16(each.window),
                            [&host, &prompts, &each] { return new DistributionWindow(each, host, prompts); });
    for (const CallKind& each : callKinds())
        host.registerWindow(QString::fromUtf16(each.window),
                            [&host, &prompts, &each] { return new CallListWindow(each, host, prompts); });
}

} // namespace

void registerAnalysis(CommandTable& commands, ViewHost& host, Prompts& prompts) {
    const std::pair<const char16_t*, PeriodPurpose> dialogs[] = {
        {u"timeDefineFm1", PeriodPurpose::Cursor},
        {u"timeDefineFm2", PeriodPurpose::Views},
        {u"timeDefineFm22", PeriodPurpose::Register}};
    for (const auto& [name, purpose] : dialogs)
        host.registerWindow(QString::fromUtf16(name), [&host, &prompts, purpose = purpose] {
            return new PeriodDialog(purpose, host, prompts);
        });
    for (const CutDialogDescription& each : cutDialogs())
        host.registerWindow(QString::fromUtf16(each.name),
                            [&host, &prompts, &each] { return new CutDialog(each, host, prompts); });
    addViews(host, prompts);
    addCommands(commands, host, prompts);
}

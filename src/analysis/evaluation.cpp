#include "analysis/evaluation.h"

#include "data/workTable.h"
#include "recordset/ignoringErrors.h"
#include "recordset/textNumber.h"

namespace {

const QString& clients3() {
    static const QString name = QStringLiteral("clientTable3");
    return name;
}

QString tableOf(ShowSource code) {
    return code == ShowSource::PeriodClients ? QStringLiteral("clientTable2") : QStringLiteral("clientTable");
}

/// The indicators of a whole table of customers.
Evaluation wholeEvaluation(const MeasureSums& totals, int clients) {
    const QString share = clients > 0 ? QStringLiteral("100%") : QStringLiteral("0%");
    Evaluation evaluation;
    for (int i = 0; i < kMeasures; ++i)
        evaluation[std::size_t(i)] = {plainNumber(totals.of[i]), share};
    evaluation[kMeasures] = {QString::number(clients), share};
    return evaluation;
}

Evaluation cutEvaluation(const BestClients& best) {
    Evaluation evaluation;
    for (int i = 0; i < kMeasures; ++i)
        evaluation[std::size_t(i)] = {plainNumber(best.sums.of[i]), best.shares[i] + u'%'};
    evaluation[kMeasures] = {QString::number(best.count()), best.clientShare + u'%'};
    return evaluation;
}

/// A period copy of another table's rows is asked for rows as it stands, the whole table without its Filter.
const RecordsetPtr& unfilteredClients(Session& session) {
    if (session.clientTable->isOpen())
        session.clientTable->clearFilter();
    return session.clientTable;
}

void remakeIfMissing(Session& session) {
    if (session.cn.hasTable(clients3()))
        return;
    IgnoringErrors errors;
    auto cursor = std::make_shared<Recordset>(session.cn);
    rebuildEmpty(session, cursor, clients3(), QStringLiteral("clientTable"), errors);
}

} // namespace

void openEvaluation(Session& session) {
    session.showSource = session.clientShowSource = ShowSource::Clients;
    session.analysisKind = 1;
    session.cutOnScreen = false;
    IgnoringErrors errors;
    errors.run([&] { session.openMainCursors(); });
    rebuildEmpty(session, session.clientTable2, QStringLiteral("clientTable2"), QStringLiteral("clientTable"),
                 errors);
    rebuildEmpty(session, session.clientTable3, clients3(), QStringLiteral("clientTable"), errors);
}

bool beginEvaluation(Session& session) {
    if (session.analysisKind == 2)
        return false;
    session.cutOnScreen = false;
    session.showSource = session.clientShowSource;
    return true;
}

ShowSource evaluatedSource(const Session& session) {
    return session.cutOnScreen ? ShowSource::BestClients : session.clientShowSource;
}

void begin_setup(Session& session, ShowSource code) {
    IgnoringErrors errors;
    const bool any = unfilteredClients(session)->hasRows();
    session.analysisCaption = any ? QStringLiteral("全库数据") : QStringLiteral("空库");
    session.evaluation = wholeEvaluation({}, 0);
    const RecordsetPtr& shown =
        code == ShowSource::PeriodClients ? session.clientTable2 : session.clientTable;
    if (!any || !shown->hasRows())
        return;
    errors.run([&] { shown->setSort(mostFirst(ClientMeasure::Turnover)); });
    errors.run([&] {
        session.evaluation = wholeEvaluation(clientTotals(session, tableOf(code)), shown->RecordCount());
    });
}

bool hasClients(Session& session) {
    return unfilteredClients(session)->hasRows();
}

RecordsetPtr clientsToCut(Session& session) {
    const bool period = session.clientShowSource != ShowSource::Clients && session.clientTable2->isOpen();
    const RecordsetPtr& clients = period ? session.clientTable2 : unfilteredClients(session);
    return clients->hasRows() ? clients : nullptr;
}

RowsOfTable cutBestClients(Session& session, const RecordsetPtr& clients, const BestClientsQuestion& question,
                           const QString& answer) {
    const ShowSource code = clients == session.clientTable2 ? ShowSource::PeriodClients : ShowSource::Clients;
    const MeasureSums totals = clientTotals(session, tableOf(code));
    const double number = val(answer);
    const BestClients best = question.ranks
                                 ? cutByRank(clients, totals, question.measure, number)
                                 : cutByShare(clients, totals, question.measure, float(number / 100));
    session.clientTable3 = std::make_shared<Recordset>(session.cn);
    session.clientTable3->OpenRows(*clients, best.rows);
    RowsOfTable cut = rowsOfTable(*session.clientTable3);
    session.evaluation = cutEvaluation(best);
    session.analysisCaption = QString::fromUtf16(question.caption);
    session.analysisKind = question.ranks ? 2 : 1;
    session.cutOnScreen = true;
    session.showSource = ShowSource::BestClients;
    return cut;
}

void writeCut(Session& session, const RowsOfTable& cut, ClientMeasure measure, const Progress& progress) {
    IgnoringErrors errors;
    errors.run([&] { remakeIfMissing(session); });
    errors.run([&] { fillTableFrom(session.cn, clients3(), cut.source, cut.rowids, progress); });
    errors.run([&] { session.reopen(session.clientTable3, QStringLiteral("Select * From ") + clients3()); });
    errors.run([&] { session.clientTable3->setSort(mostFirst(measure)); });
}

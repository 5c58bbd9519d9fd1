#include "analysis/clerks.h"

#include "recordset/ignoringErrors.h"
#include "recordset/textNumber.h"

namespace {

QString clientsOf(ShowSource code) {
    return code == ShowSource::PeriodClerks ? QStringLiteral("clientTable2") : QStringLiteral("clientTable");
}

const QString& clerkColumn() {
    static const QString name = QStringLiteral("业务员编号");
    return name;
}

} // namespace

void clerk_Count(Session& session) {
    IgnoringErrors errors;
    errors.run([&] {
        session.reopen(
            session.clerkTotals,
            QStringLiteral("Select 业务员编号, Sum(消费合计) As 营业额, Count(业务员编号) As 客户数 "
                           "From %1 Group By 业务员编号 Order By Sum(消费合计) desc")
                .arg(clientsOf(session.showSource)));
    });
    if (session.clerkTotals->isOpen() && !session.clerkTotals->hasRows())
        session.showSource = ShowSource::Clerks;
}

ClerkFigures clerkFigures(Session& session, ShowSource code) {
    if (!session.clerkTotals->hasRows())
        return {QStringLiteral("0"), QStringLiteral("0")};
    const RecordsetPtr& clients =
        code == ShowSource::PeriodClerks ? session.clientTable2 : session.clientTable;
    if (code != ShowSource::PeriodClerks)
        clients->clearFilter();
    Recordset sum(session.cn);
    sum.Open(QStringLiteral("Select Sum(消费合计) As 营业额总合 From ") + clientsOf(code));
    return {plainNumber(sum.numberAt(0, 0)), QString::number(clients->RecordCount())};
}

bool takeClerk(Session& session) {
    const RecordsetPtr& clerks = session.clerkTotals;
    if (!clerks->hasRows() || !clerks->currentRow())
        return false;
    const QString clerk = clerks->Fields(clerkColumn()).text();
    if (clerk.isEmpty())
        return false;
    session.currentClerk = clerk;
    return true;
}

void openClerkClients(Session& session) {
    IgnoringErrors errors;
    errors.run([&] {
        session.reopen(session.clerkClients,
                       QStringLiteral("Select * From %1 Where ").arg(clientsOf(session.showSource)) +
                           keyCondition(clerkColumn(), session.currentClerk));
    });
}

#include "analysis/distribution.h"

#include "analysis/percentText.h"
#include "data/workTable.h"

namespace {

constexpr Distribution kDistributions[] = {
    {u"distribution_analysis1", u"clientPlaceFm1", u"客户地区分布", u"地区", u"clientplaceTable", u"地区总数",
     u"print_clientplace", u"Command1", u"Command2", u"Command3"},
    {u"distribution_analysis2", u"clientlineFm1", u"客户行业分布", u"行业", u"clientlineTable", u"行业总数",
     u"print_clientline", u"Command2", u"Command3", u"Command1"},
};

/// A row for each group. A share that is not written repeats the one before it: that is meant.
void addGroups(TableImage& rows, const Recordset& groups, double total) {
    QString text;
    for (int i = 0; i < groups.RecordCount(); ++i) {
        const double number = groups.numberAt(i, 1);
        text = percentText(100 * (number / total), PercentCut::Share).value_or(text);
        rows.appendPictureRow(
            {fieldText(groups.valueAt(i, 0)), number, text.isEmpty() ? QStringLiteral("0") : text + u'%'});
    }
}

} // namespace

std::span<const Distribution> distributions() {
    return kDistributions;
}

bool countsPeriod(const Session& session) {
    const ShowSource code = session.showSource;
    const bool onShow =
        code == ShowSource::PeriodClients || code == ShowSource::PeriodClerks ||
        (code == ShowSource::BestClients && session.clientShowSource == ShowSource::PeriodClients);
    return onShow && session.clientTable2->isOpen();
}

DistributionCount countDistribution(Session& session, const Distribution& distribution) {
    const QString column = QString::fromUtf16(distribution.column);
    const bool period = countsPeriod(session);
    const QString source = period ? QStringLiteral("clientTable2") : QStringLiteral("clientTable");
    Recordset groups(session.cn);
    groups.Open(QStringLiteral("Select %1, Count(%1) As 数量 From %2 Group By %1 Order By Count(%1) desc")
                    .arg(column, source));
    Recordset sum(session.cn);
    sum.Open(QStringLiteral("Select Count(%1) As 数量 From %2").arg(column, source) +
             (period ? QString() : QStringLiteral(" ")));
    DistributionCount count;
    count.period = period;
    count.total = sum.numberAt(0, 0);
    count.rows = std::make_shared<TableImage>(session.cn.columns(QString::fromUtf16(distribution.workTable)));
    if (count.total != 0)
        addGroups(*count.rows, groups, count.total);
    return count;
}

RecordsetPtr writeDistribution(Session& session, const Distribution& distribution,
                               const DistributionCount& count) {
    const QString table = QString::fromUtf16(distribution.workTable);
    fillTable(session.cn, table, *count.rows);
    RecordsetPtr rows;
    session.reopen(rows, QStringLiteral("Select * From ") + table);
    return rows;
}

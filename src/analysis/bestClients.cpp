#include "analysis/bestClients.h"

#include "analysis/percentText.h"
#include "recordset/error.h"

#include <algorithm>

namespace {

using M = ClientMeasure;

constexpr const char16_t* kColumns[kMeasures] = {u"消费合计", u"差额利润", u"购买数"};

constexpr BestClientsQuestion kQuestions[] = {
    {u"proporation_analysis1", false, M::Turnover, u"按销售额的百分率确定客户数",
     u"占总销售额百分率的客户数，请输入1到100的整数！", u"占总销售额百分率"},
    {u"proporation_analysis2", true, M::Turnover, u"按购买金额确定客户数",
     u"最高购买金额客户数，请输入1到100的整数！", u"最高购买金额客户数"},
    {u"proporation_analysis3", false, M::Margin, u"按差额利润百分率确定客户数",
     u"占总差额利润百分率的客户数，请输入1到100的整数！", u"占总差额利润百分率"},
    {u"proporation_analysis4", true, M::Margin, u"按差额利润确定客户数",
     u"最高差额利润客户数，请输入1到100的整数！", u"最高差额利润客户数"},
    {u"proporation_analysis5", false, M::Quantity, u"按销售量百分率确定客户数",
     u"占总销售量百分率的客户数，请输入1到100的整数！", u"占总销售量百分率"},
    {u"proporation_analysis6", true, M::Quantity, u"按购买量确定客户数",
     u"最高购买量客户数，请输入1到100的整数！", u"最高购买量客户数"},
};

QString columnOf(M measure) {
    return QString::fromUtf16(kColumns[int(measure)]);
}

/// Takes customers in the order of the cursor until `enough(taken so far)` says so.
template <typename Enough> BestClients takeClients(const RecordsetPtr& clients, Enough&& enough) {
    int fields[kMeasures];
    for (int i = 0; i < kMeasures; ++i)
        fields[i] = clients->fieldIndex(columnOf(M(i)));
    BestClients best;
    for (const int all = clients->RecordCount(); best.count() < all;) {
        for (int i = 0; i < kMeasures; ++i)
            best.sums.of[i] = checkedFinite(best.sums.of[i] + clients->numberAt(best.count(), fields[i]));
        best.rows.push_back(clients->rowAt(best.count()));
        if (enough(best))
            break;
    }
    return best;
}

double percentOf(double part, double whole) {
    return whole == 0 ? 0 : checkedFinite(100 * (part / whole));
}

/// Writes the four shares one after the other into one text, which a share that is not written leaves as the
/// share before it made it: that is meant.
void writeShares(BestClients& best, const MeasureSums& totals, int allClients, PercentCut cut) {
    QString text;
    const auto next = [&](double percent) {
        text = percentText(percent, cut).value_or(text);
        return text;
    };
    for (int i = 0; i < kMeasures; ++i)
        best.shares[i] = next(percentOf(best.sums.of[i], totals.of[i]));
    best.clientShare = next(percentOf(best.count(), allClients));
}

int countAll(const RecordsetPtr& clients) {
    clients->clearFilter();
    return clients->RecordCount();
}

} // namespace

std::span<const BestClientsQuestion> bestClientsQuestions() {
    return kQuestions;
}

QString mostFirst(ClientMeasure measure) {
    return columnOf(measure) + QStringLiteral(" desc");
}

MeasureSums clientTotals(Session& session, const QString& table) {
    Recordset totals(session.cn);
    totals.Open(
        QStringLiteral("Select Sum(消费合计) As totalA, Sum(差额利润) As totalB, Sum(购买数) As totalC "
                       "From ") +
        table);
    MeasureSums sums;
    for (int i = 0; i < kMeasures; ++i)
        sums.of[i] = totals.Fields(i).number();
    return sums;
}

BestClients cutByShare(const RecordsetPtr& clients, const MeasureSums& totals, ClientMeasure measure,
                       float target) {
    const QuietWalk walk(clients);
    const double total = totals[measure];
    clients->clearFilter();
    clients->setSort(mostFirst(measure));
    BestClients best;
    if (total != 0)
        best = takeClients(
            clients, [&](const BestClients& taken) { return taken.sums[measure] / total >= double(target); });
    writeShares(best, totals, countAll(clients),
                measure == M::Turnover ? PercentCut::Turnover : PercentCut::Share);
    return best;
}

BestClients cutByRank(const RecordsetPtr& clients, const MeasureSums& totals, ClientMeasure measure,
                      double number) {
    const QuietWalk walk(clients);
    BestClients best;
    if (std::find(std::begin(totals.of), std::end(totals.of), 0.0) == std::end(totals.of)) {
        clients->setSort(mostFirst(measure));
        best = takeClients(clients, [number](const BestClients& taken) { return taken.count() >= number; });
    }
    writeShares(best, totals, countAll(clients), PercentCut::Rank);
    // The apostrophe of a margin's share of nothing is meant.
    if (percentOf(best.sums[M::Margin], totals[M::Margin]) == 0)
        best.shares[int(M::Margin)] = QStringLiteral("0'");
    return best;
}

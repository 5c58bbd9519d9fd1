#include "drilldown/clientLines.h"

#include "analysis/bestClients.h"
#include "analysis/percentText.h"
#include "drilldown/saleFigures.h"
#include "recordset/error.h"
#include "recordset/textNumber.h"

RowsOfTable openClientLines(Session& session, const QString& client, ShowSource source) {
    session.clientLinesSource = source;
    session.reopen(session.tempTable2, QStringLiteral("Select * From %1 Where ").arg(linesTable(source)) +
                                           keyCondition(QStringLiteral("客户编号"), client));
    return rowsOfTable(*session.tempTable2);
}

void writeClientLines(Session& session, const RowsOfTable& rows, const Progress& progress) {
    rebuildFrom(session, session.tempTable2, QStringLiteral("tempTable2"), rows, progress);
}

ClientShares statisticA(Session& session) {
    const bool period = session.clientLinesSource == ShowSource::PeriodLines;
    const MeasureSums totals =
        clientTotals(session, period ? QStringLiteral("clientTable2") : QStringLiteral("clientTable"));
    const RecordsetPtr& lines = session.tempTable2;
    LineSums sums;
    if (lines->hasRows()) {
        sums = sumsOfView(lines);
        lines->MoveLast();
    }
    const double own[] = {sums.paid, sums.margin, sums.quantity};
    ClientShares shares;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const double total = totals.of[i];
        const auto percent =
            percentText(total == 0 ? 0 : checkedFinite(100 * (own[i] / total)), PercentCut::Share);
        shares[i].value = plainNumber(own[i]);
        if (percent)
            shares[i].share = *percent + u'%';
    }
    return shares;
}

std::array<QString, 3> calculation(const RecordsetPtr& lines) {
    const LineSums sums = lines->hasRows() ? sumsOfView(lines) : LineSums();
    return {plainNumber(sums.paid), plainNumber(sums.margin), plainNumber(sums.quantity)};
}

#include "analysis/turnover.h"

#include "analysis/derivedRows.h"
#include "recordset/dialectRun.h"
#include "recordset/groups.h"

namespace {

constexpr TurnoverStatistic kStatistics[] = {
    {u"count_Month", TurnoverSpan::Month, u"营 业 额 统 计(按月)"},
    {u"count_season", TurnoverSpan::Quarter, u"营 业 额 统 计(按季度)"},
    {u"count_half_year", TurnoverSpan::HalfYear, u"营 业 额 统 计(按半年)"},
    {u"count_Year", TurnoverSpan::Year, u"营 业 额 统 计(按年)"},
};

constexpr int kSpansShown = 24;

} // namespace

std::span<const TurnoverStatistic> turnoverStatistics() {
    return kStatistics;
}

std::shared_ptr<TableImage> turnoverRows(const Recordset& lines, TurnoverSpan span) {
    lines.prefetch({QStringLiteral("日期"), QStringLiteral("实付")});
    const std::vector<Row> rows = shownRows(lines);
    std::vector<ColumnStore> columns;
    columns.push_back(keysOfDates(lines, rows, QStringLiteral("日期"),
                                  [span](const QString& date) { return spanKey(span, date); }));
    columns.push_back(
        picked(lines.image().column(lines.imageColumn(lines.fieldIndex(QStringLiteral("实付")))), rows));
    columns.back().info = ColumnInfo::fromDeclaration(QStringLiteral("实收"), QStringLiteral("REAL"));
    return std::make_shared<TableImage>(std::move(columns));
}

std::shared_ptr<TableImage> turnoverBySpan(const TableImage& rows) {
    return runQueryOn(rows, parseStatement(QStringLiteral(
                                "Select 日期, Sum(实收) As 营业额 From saleTable Group By 日期")));
}

std::shared_ptr<TableImage> countTurnover(Session& session, const TurnoverStatistic& statistic) {
    session.reopen(session.buyList, QStringLiteral("Select * From buyList "));
    if (!session.buyList->hasRows())
        return nullptr;
    auto rows = turnoverRows(*session.buyList, statistic.span);
    session.buyList->MoveLast();
    session.saleTable = std::make_shared<Recordset>(session.cn);
    session.saleTable->OpenPicture(turnoverBySpan(*rows));
    session.turnoverTitle = QString::fromUtf16(statistic.title);
    return rows;
}

QList<SpanTurnover> lastSpans(const RecordsetPtr& turnover) {
    QList<SpanTurnover> spans;
    if (turnover->isOpen()) {
        const int date = turnover->fieldIndex(QStringLiteral("日期"));
        const int sum = turnover->fieldIndex(QStringLiteral("营业额"));
        for (int i = std::max(0, turnover->RecordCount() - kSpansShown); i < turnover->RecordCount(); ++i)
            spans << SpanTurnover{fieldText(turnover->valueAt(i, date)), turnover->numberAt(i, sum)};
    }
    spans.resize(kSpansShown);
    return spans;
}

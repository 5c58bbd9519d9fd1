#include "drilldown/saleFigures.h"

#include "analysis/derivedRows.h"
#include "data/cursorMoves.h"
#include "recordset/textNumber.h"

namespace {

const QString& clientNumber() {
    static const QString name = QStringLiteral("客户编号");
    return name;
}

/// How many distinct texts a column holds, compared with their case.
int distinctTexts(const ColumnStore& column) {
    std::vector<char> seen(std::size_t(column.pool.last()) + 1);
    for (const TextPool::Code code : column.codes)
        seen[code] = 1;
    return int(std::count(seen.begin(), seen.end(), 1));
}

/// The customers of a source. Those of a period are counted in the whole table where their copy has been
/// emptied since: whoever has lines in the period is in both.
QString clientsTable(const Session& session, ShowSource code) {
    const bool copied = code == ShowSource::PeriodLines && session.clientTable2->hasRows();
    return copied ? QStringLiteral("clientTable2") : QStringLiteral("clientTable");
}

} // namespace

QString linesTable(ShowSource code) {
    return code == ShowSource::PeriodLines ? QStringLiteral("buyList2") : QStringLiteral("buyList");
}

SaleFigures sales_Count(Session& session, ShowSource code) {
    const bool period = code == ShowSource::PeriodLines;
    // The statement for a period stands without the blank behind its second comma.
    const QString columns =
        period ? QStringLiteral("Sum(实付) As totalA, Sum(差额利润) As totalB,Sum(数量) As totalC")
               : QStringLiteral("Sum(实付) As totalA, Sum(差额利润) As totalB, Sum(数量) As totalC");
    Recordset sums(session.cn);
    sums.Open(QStringLiteral("Select %1 From %2").arg(columns, linesTable(code)));
    Recordset clients(session.cn);
    clients.Open(QStringLiteral("Select 客户编号 From ") + clientsTable(session, code));
    Recordset lines(session.cn);
    lines.Open(QStringLiteral("Select 客户编号 From ") + linesTable(code));
    return {plainNumber(sums.numberAt(0, 0)), plainNumber(sums.numberAt(0, 1)),
            plainNumber(sums.numberAt(0, 2)), QString::number(customersWithLines(clients, lines).size())};
}

SaleFigures rs2_Count(const RecordsetPtr& lines) {
    lines->prefetch(
        {clientNumber(), QStringLiteral("实付"), QStringLiteral("差额利润"), QStringLiteral("数量")});
    const LineSums sums = sumsOfView(lines);
    const int clients = distinctTexts(trimmedTexts(*lines, shownRows(*lines), clientNumber()));
    return {plainNumber(sums.paid), plainNumber(sums.margin), plainNumber(sums.quantity),
            QString::number(clients)};
}

SaleFigures singleCount(const RecordsetPtr& lines, const QString& product) {
    lines->setFilter(keyCondition(QStringLiteral("产品编号"), product));
    return rs2_Count(lines);
}

void findProduct(const RecordsetPtr& lines, const QString& product) {
    if (lines->hasRows() && !findKey(lines, QStringLiteral("产品编号"), product))
        lines->MoveLast();
}

std::vector<RowId> customersWithLines(const Recordset& clients, const Recordset& lines) {
    const ColumnStore& bought = lines.image().column(lines.imageColumn(lines.fieldIndex(clientNumber())));
    const ColumnStore& known =
        clients.image().column(clients.imageColumn(clients.fieldIndex(clientNumber())));
    std::vector<char> has(std::size_t(bought.pool.last()) + 1);
    lines.eachRow([&](RowId row) { has[bought.codes[row]] = 1; });
    std::vector<RowId> rows;
    clients.eachRow([&](RowId row) {
        if (known.codes[row] == TextPool::Null)
            return;
        const auto codes = bought.pool.findEqual(known.pool.text(known.codes[row]));
        if (std::any_of(codes.begin(), codes.end(), [&](TextPool::Code code) { return has[code]; }))
            rows.push_back(row);
    });
    return rows;
}

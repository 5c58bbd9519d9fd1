#include "analysis/frequency.h"

#include "analysis/derivedRows.h"
#include "analysis/percentText.h"
#include "analysis/timeKeys.h"
#include "data/workTable.h"
#include "recordset/dialect.h"
#include "recordset/dialectRun.h"
#include "recordset/ignoringErrors.h"
#include "recordset/textNumber.h"

#include <algorithm>

namespace {

const QString& monthsStatement() {
    static const QString statement =
        QStringLiteral("Select 日期, 客户编号, Count(订单号) As 购买次数 %1From buy_Frequence_Table "
                       "Group By 日期, 客户编号 ");
    return statement;
}

/// Months between two months of the same year or of neighbouring years, at least one; 0 where more than one
/// calendar year lies between them.
int intervalBetween(const YearMonth& earlier, const YearMonth& latest) {
    const double years = std::max(0.0, latest.year - earlier.year);
    if (years > 1)
        return 0;
    return int(std::max(1.0, latest.month + 12 * years - earlier.month));
}

/// The last row of each customer in the rows before or behind those of the latest month, by the class of his
/// number; nothing for one who has none. In: rows in the order of their months as texts.
std::vector<std::optional<Row>> lastEarlierRows(const TableImage& months, const std::vector<char>& isLatest) {
    const ColumnStore& clients = months.column(1);
    std::vector<std::optional<Row>> last(std::size_t(clients.pool.last()) + 1);
    for (Row row = 0; row < months.size(); ++row)
        if (!isLatest[row])
            last[clients.pool.foldClass(clients.codes[row])] = row;
    return last;
}

void addClient(PurchaseIntervals& intervals, int interval, const QString& client) {
    if (interval < 1 || interval > PurchaseIntervals::kLongest)
        return;
    ++intervals.customers[std::size_t(interval)];
    QString& list = intervals.lists[std::size_t(interval)];
    if (!list.isEmpty())
        list += QStringLiteral(", ");
    list += quotedText(client);
}

/// The month of the last line by 日期, which the lines become sorted by.
QString latestMonth(const RecordsetPtr& lines) {
    const QuietWalk walk(lines);
    lines->setSort(QStringLiteral("日期"));
    lines->MoveLast();
    return monthKey(lines->Fields(QStringLiteral("日期")).text());
}

bool hasEarlierMonths(const TableImage& months, const QString& latest) {
    const ColumnStore& keys = months.column(0);
    const std::string key = latest.toStdString();
    return std::any_of(keys.codes.begin(), keys.codes.end(),
                       [&](TextPool::Code code) { return keys.pool.text(code) != key; });
}

} // namespace

std::shared_ptr<TableImage> frequencyRows(const Recordset& lines) {
    lines.prefetch({QStringLiteral("日期"), QStringLiteral("客户编号"), QStringLiteral("订单号")});
    const std::vector<Row> rows = shownRows(lines);
    std::vector<ColumnStore> columns;
    columns.push_back(keysOfDates(lines, rows, QStringLiteral("日期"),
                                  [](const QString& date) { return std::optional(monthKey(date)); }));
    columns.push_back(trimmedTexts(lines, rows, QStringLiteral("客户编号")));
    columns.push_back(trimmedTexts(lines, rows, QStringLiteral("订单号")));
    return std::make_shared<TableImage>(std::move(columns));
}

std::shared_ptr<TableImage> monthsOfCustomers(const TableImage& frequencyRows) {
    return runQueryOn(frequencyRows, parseStatement(monthsStatement().arg(QString())));
}

PurchaseIntervals purchaseIntervals(const TableImage& months, const QString& latest) {
    const ColumnStore& keys = months.column(0);
    const ColumnStore& clients = months.column(1);
    std::vector<char> isLatest(months.size());
    for (Row row = 0; row < months.size(); ++row)
        isLatest[row] = keys.text(keys.codes[row]) == latest;
    const std::vector<std::optional<Row>> last = lastEarlierRows(months, isLatest);
    PurchaseIntervals intervals;
    for (Row row = 0; row < months.size(); ++row) {
        if (!isLatest[row])
            continue;
        if (const auto earlier = last[clients.pool.foldClass(clients.codes[row])])
            addClient(intervals,
                      intervalBetween(yearMonth(keys.text(keys.codes[*earlier])), yearMonth(latest)),
                      clients.text(clients.codes[row]));
    }
    return intervals;
}

void writeIntervals(const RecordsetPtr& monthTable, const PurchaseIntervals& intervals) {
    const QuietWalk walk(monthTable);
    const int positions = monthTable->fieldCount();
    const auto count = [&](int position) {
        return position <= PurchaseIntervals::kLongest ? intervals.customers[std::size_t(position)] : 0;
    };
    monthTable->MoveFirst();
    double total = 0;
    for (int position = 1; position < positions; ++position) {
        monthTable->Fields(position).setValue(QString::number(count(position)));
        total += count(position);
    }
    monthTable->Update();
    monthTable->MoveLast();
    for (int position = 1; position < positions; ++position)
        monthTable->Fields(position).setValue(
            total == 0 ? QStringLiteral("0") : intervalShareText(100 * (count(position) / total)) + u'%');
    monthTable->Update();
    monthTable->MoveFirst();
}

FrequencyTables countFrequency(Session& session) {
    const QString latest = latestMonth(session.buyList);
    FrequencyTables tables;
    tables.lines = frequencyRows(*session.buyList);
    tables.months = monthsOfCustomers(*tables.lines);
    if (!hasEarlierMonths(*tables.months, latest))
        return tables;
    session.reopenIfThere(session.month_Table, QStringLiteral("month_Table"));
    session.intervalClients.fill({});
    if (!session.month_Table->hasRows())
        return tables;
    const PurchaseIntervals intervals = purchaseIntervals(*tables.months, latest);
    WriteBatch batch(session.cn);
    writeIntervals(session.month_Table, intervals);
    batch.finish();
    std::copy(intervals.lists.begin(), intervals.lists.end(), session.intervalClients.begin());
    tables.counted = true;
    return tables;
}

void writeFrequency(Session& session, const FrequencyTables& tables, const Progress& progress) {
    IgnoringErrors errors;
    WriteBatch batch(session.cn);
    errors.run([&] { runStatement(session.cn, QStringLiteral("Delete * From buy_Frequence_Table ")); });
    errors.run([&] { runStatement(session.cn, QStringLiteral("Drop Table buy_Frequence_Table2")); });
    // Made while its source is empty, it has the columns of the statement; its rows are known already.
    errors.run([&] {
        runStatement(session.cn, monthsStatement().arg(QStringLiteral("Into buy_Frequence_Table2 ")));
    });
    errors.run(
        [&] { fillTable(session.cn, QStringLiteral("buy_Frequence_Table"), *tables.lines, progress); });
    errors.run(
        [&] { fillTable(session.cn, QStringLiteral("buy_Frequence_Table2"), *tables.months, progress); });
    errors.run([&] { batch.finish(); });
}

bool showIntervalClients(Session& session, int interval) {
    IgnoringErrors errors;
    const QString list = interval > 0 && interval < int(session.intervalClients.size())
                             ? session.intervalClients[std::size_t(interval)]
                             : QString();
    QStringList statements;
    if (!list.isEmpty())
        statements << QStringLiteral("Select * InTo clientTable3 From clientTable Where 客户编号 In (") +
                          list + u')';
    rebuildWorkTable(session, session.clientTable3, QStringLiteral("clientTable3"), statements, errors);
    if (!session.clientTable3->hasRows())
        return false;
    session.analysisKind = 1;
    session.cutOnScreen = false;
    return true;
}

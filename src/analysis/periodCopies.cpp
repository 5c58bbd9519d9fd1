#include "analysis/periodCopies.h"

#include "data/cursorMoves.h"
#include "data/sourceTable.h"
#include "data/workTable.h"
#include "recordset/dialect.h"
#include "recordset/ignoringErrors.h"
#include "recordset/textNumber.h"

#include <algorithm>
#include <utility>

namespace {

struct WorkCopy {
    const char16_t* table;
    const char16_t* source;
    RecordsetPtr Session::*cursor;
    bool forRegister;
};

constexpr WorkCopy kClients{u"clientTable2", u"clientTable", &Session::clientTable2, true};
constexpr WorkCopy kLines{u"buyList2", u"buyList", &Session::buyList2, true};
constexpr WorkCopy kOthers[] = {
    {u"productTable2", u"productTable", &Session::productTable2, true},
    {u"product_Bank2", u"product_Bank", &Session::product_Bank2, false},
    {u"return_Bank2", u"return_Bank", &Session::return_Bank2, false},
    {u"no_use_Bank2", u"no_use_Bank", &Session::no_use_Bank2, false},
};

/// Drops a copy, makes it again and opens its cursor, each step whatever became of the one before.
void rebuild(IgnoringErrors& errors, Session& session, const WorkCopy& copy, const QString& where) {
    const QString table = QString::fromUtf16(copy.table);
    const QString into =
        QStringLiteral("Select * Into %1 From %2 Where ").arg(table, QString::fromUtf16(copy.source));
    rebuildWorkTable(session, session.*copy.cursor, table, {into + where}, errors);
}

void copyOf(IgnoringErrors& errors, Session& session, const WorkCopy& copy,
            const std::function<void()>& fill) {
    rebuildWith(session, session.*copy.cursor, QString::fromUtf16(copy.table),
                QString::fromUtf16(copy.source), fill, errors);
}

/// Writes one customer after the other into the copy, as he stands or with other totals.
class ClientCopy {
public:
    ClientCopy(Connection& connection, const QStringList& columns)
        : m_connection(connection)
        , m_plain(connection.prepare(statement(columns, false)))
        , m_counted(connection.prepare(statement(columns, true))) {}

    void add(qint64 rowid, const std::optional<std::array<CellValue, 4>>& totals) {
        Statement& insert = totals ? m_counted : m_plain;
        insert.bind(1, rowid);
        for (std::size_t i = 0; totals && i < totals->size(); ++i)
            insert.bind(int(i) + 2, (*totals)[i]);
        m_connection.write(insert);
    }

private:
    static QString statement(const QStringList& columns, bool counted) {
        QStringList names;
        QStringList values;
        for (const QString& column : columns) {
            const auto total = std::find(std::begin(kTotalColumns), std::end(kTotalColumns), column);
            names << quotedName(column);
            values << (counted && total != std::end(kTotalColumns)
                           ? QStringLiteral("?%1").arg(total - std::begin(kTotalColumns) + 2)
                           : quotedName(column));
        }
        return QStringLiteral("INSERT INTO clientTable2 (%1) SELECT %2 FROM clientTable WHERE rowid = ?1")
            .arg(names.join(u','), values.join(u','));
    }

    Connection& m_connection;
    Statement m_plain;
    Statement m_counted;
};

/// The totals of a customer; a number with blanks around it belongs to the lines that bear it without. Throws
/// Overflow.
std::array<CellValue, 4> totalsOfClient(const SumsByClient& sums, std::string_view number) {
    const QString shown = trimBlanks(QString::fromUtf8(number.data(), qsizetype(number.size())));
    const LineSums his = sums.find(shown.toStdString()).value_or(LineSums());
    for (const double sum : {his.paid, his.margin, his.quantity})
        checkedFinite(sum);
    return totalsOf(his);
}

/// Copies customers who bought in the period, their totals those of its lines: one statement a customer,
/// where copying first and counting afterwards would write each twice. Totals that cannot be counted end the
/// counting, and the rest are copied as they stand. Gives the rows that were copied.
std::vector<Row> copyClients(Session& session, const Recordset& clients, const SumsByClient& sums,
                             const Progress& progress, IgnoringErrors& errors) {
    std::vector<Row> copied;
    ClientCopy copy(session.cn, clients.fieldNames());
    const ColumnStore& numbers =
        clients.image().column(clients.imageColumn(clients.fieldIndex(QStringLiteral("客户编号"))));
    constexpr int tellAfter = 20'000;
    int done = 0;
    bool counts = true;
    clients.eachRow([&](RowId row) {
        if (progress && ++done % tellAfter == 0)
            progress(done, clients.RecordCount());
        const TextPool::Code code = numbers.codes[row];
        if (code == TextPool::Null || !sums.find(numbers.pool.text(code)))
            return;
        std::optional<std::array<CellValue, 4>> totals;
        if (counts)
            errors.run([&] { totals = totalsOfClient(sums, numbers.pool.text(code)); });
        counts = totals.has_value();
        copy.add(clients.image().rowid(Row(row)), totals);
        copied.push_back(Row(row));
    });
    return copied;
}

/// What is in memory of the rows need not be read back from their copy.
void takeColumns(const RecordsetPtr& copy, const Recordset& source, const std::vector<Row>& rows,
                 const QStringList& but = {}) {
    if (copy->isOpen())
        copy->image().takeColumns(source.image(), rows, but);
}

void copyClientsOf(Session& session, const RecordsetPtr& lines, const Progress& progress,
                   IgnoringErrors& errors) {
    Recordset clients(session.cn);
    std::vector<Row> rows;
    copyOf(errors, session, kClients, [&] {
        clients.Open(QStringLiteral("Select * From clientTable"));
        rows = copyClients(session, clients, SumsByClient(lines), progress, errors);
    });
    QStringList totals;
    for (const char16_t* total : kTotalColumns)
        totals << QString::fromUtf16(total);
    if (clients.isOpen())
        takeColumns(session.clientTable2, clients, rows, totals);
}

void copyLines(Session& session, const Recordset& lines, const Progress& progress, IgnoringErrors& errors) {
    copyOf(errors, session, kLines, [&] {
        const RowsOfTable rows = rowsOfTable(lines);
        fillTableFrom(session.cn, QStringLiteral("buyList2"), rows.source, rows.rowids, progress);
    });
    std::vector<Row> rows;
    lines.eachRow([&](RowId row) { rows.push_back(Row(row)); });
    takeColumns(session.buyList2, lines, rows);
}

/// The lines of a period, read through their columns; null where the condition cannot be.
RecordsetPtr linesOf(Session& session, const QString& condition, IgnoringErrors& errors) {
    auto lines = std::make_shared<Recordset>(session.cn);
    errors.run([&] { lines->Open(QStringLiteral("Select * From buyList Where ") + condition); });
    return lines->isOpen() ? lines : nullptr;
}

struct PeriodMark {
    ShowSource whole;
    ShowSource period;
    ShowSource Session::*family;
};

constexpr PeriodMark kMarks[] = {
    {ShowSource::Clients, ShowSource::PeriodClients, &Session::clientShowSource},
    {ShowSource::Lines, ShowSource::PeriodLines, &Session::saleShowSource},
    {ShowSource::Products, ShowSource::PeriodProducts, &Session::stockShowSource},
    {ShowSource::Clerks, ShowSource::PeriodClerks, nullptr},
    {ShowSource::StockIn, ShowSource::PeriodStockIn, nullptr},
    {ShowSource::Returns, ShowSource::PeriodReturns, nullptr},
    {ShowSource::Scrap, ShowSource::PeriodScrap, nullptr},
};

} // namespace

void buildPeriodCopies(Session& session, const QString& condition, PeriodCopies copies,
                       const Progress& progress) {
    IgnoringErrors errors;
    if (const RecordsetPtr lines = linesOf(session, condition, errors)) {
        copyClientsOf(session, lines, progress, errors);
        copyLines(session, *lines, progress, errors);
    } else {
        for (const WorkCopy* copy : {&kClients, &kLines})
            rebuildWorkTable(session, session.*copy->cursor, QString::fromUtf16(copy->table), {}, errors);
    }
    for (const WorkCopy& copy : kOthers)
        if (copies == PeriodCopies::All || copy.forRegister)
            rebuild(errors, session, copy, condition);
    session.periodCondition = condition;
    errors.run([&] { session.buyList->setFilter(condition); });
    errors.run([&] { session.productTable->setFilter(condition); });
}

void takePeriod(Session& session, const QString& start, const QString& end, const QString& exact) {
    session.periodExact = exact;
    session.periodStart = session.periodDate1 = start;
    session.periodEnd = session.periodDate2 = end;
    showPeriodSource(session);
}

void showPeriodSource(Session& session) {
    for (const PeriodMark& mark : kMarks) {
        if (mark.whole != session.showSource)
            continue;
        session.showSource = mark.period;
        if (mark.family)
            session.*mark.family = mark.period;
        return;
    }
}

QStringList yearsOfLines(Session& session) {
    Recordset lines(session.cn);
    lines.Open(QStringLiteral("Select 日期 From buyList Order By 日期"));
    const ColumnStore& dates = lines.image().column(lines.imageColumn(0));
    QStringList years;
    qint64 last = ColumnStore::NullMoment; // lines without a date come first and have no year
    lines.eachRow([&](RowId row) {
        if (std::exchange(last, dates.moments[row]) == dates.moments[row])
            return;
        const QString year = fieldText(dates.value(row)).left(4);
        if (years.isEmpty() || years.last() != year)
            years << year;
    });
    return years;
}

void filterShownCursor(Session& session, const QString& condition) {
    RecordsetPtr* slot = sourceCursor(session, session.showSource);
    if (!slot)
        return;
    const RecordsetPtr cursor = *slot;
    const QuietWalk walk(cursor);
    cursor->setFilter(condition);
    if (session.showSource > ShowSource::Products)
        return;
    const DateSpan dates = sortByDate(cursor);
    session.periodDate1 = dates.first;
    session.periodDate2 = dates.last;
}

#include "drilldown/orderStatistic.h"

#include "analysis/derivedRows.h"
#include "data/workTable.h"
#include "drilldown/saleFigures.h"
#include "recordset/ignoringErrors.h"
#include "recordset/textNumber.h"

#include <cmath>

namespace {

const QString& orderTableName() {
    static const QString name = QStringLiteral("orderTable");
    return name;
}

const QString& mostPaidFirst() {
    static const QString sort = QStringLiteral("购买额 desc");
    return sort;
}

const ColumnStore& columnOf(const Recordset& cursor, const QString& name) {
    return cursor.image().column(cursor.imageColumn(cursor.fieldIndex(name)));
}

/// All lines of a source, in the order in which its cursor shows them, whatever Filter is on it.
std::vector<Row> linesInOrder(Session& session, const RecordsetPtr& shown) {
    if (shown->Filter().isEmpty())
        return shownRows(*shown);
    Recordset all(session.cn);
    all.Open(QStringLiteral("Select * From ") + shown->image().table());
    all.setSort(shown->Sort());
    return shownRows(all);
}

/// The first of the rows that bears each text of a column, by the text's class; nothing for one that has no
/// row.
std::vector<std::optional<Row>> firstRows(const ColumnStore& texts, const std::vector<Row>& rows) {
    std::vector<TextPool::Code> classes(std::size_t(texts.pool.last()) + 1);
    for (TextPool::Code code = 1; code < classes.size(); ++code)
        classes[code] = texts.pool.foldClass(code);
    std::vector<std::optional<Row>> first(classes.size());
    for (const Row row : rows)
        if (auto& line = first[classes[texts.codes[row]]]; !line)
            line = row;
    return first;
}

/// Gives the texts of a column, blanks off both ends, to another one; each distinct one is looked at once.
class TrimmedTexts {
public:
    TrimmedTexts(const ColumnStore& source, ColumnStore& target)
        : m_source(source)
        , m_target(target)
        , m_codes(std::size_t(source.pool.last()) + 1, TextPool::Null) {}

    TextPool::Code of(Row row) {
        TextPool::Code& code = m_codes[m_source.codes[row]];
        if (code == TextPool::Null)
            code = m_target.pool.intern(fieldText(m_source.value(row)).toStdString());
        return code;
    }

private:
    const ColumnStore& m_source;
    ColumnStore& m_target;
    std::vector<TextPool::Code> m_codes;
};

/// The 客户编号 of the first line of each order, one cell an order.
ColumnStore customersOf(const ColumnStore& orders, const RecordsetPtr& lines, const std::vector<Row>& rows) {
    const ColumnStore& numbers = columnOf(*lines, QStringLiteral("订单号"));
    const auto first = firstRows(numbers, rows);
    ColumnStore customers;
    customers.loaded = true;
    customers.codes.reserve(orders.codes.size());
    const TextPool::Code nobody = customers.pool.intern({});
    TrimmedTexts clients(columnOf(*lines, QStringLiteral("客户编号")), customers);
    for (const TextPool::Code order : orders.codes) {
        const TextPool::Code number =
            order == TextPool::Null ? TextPool::Null : numbers.pool.find(orders.pool.text(order));
        const auto line = number == TextPool::Null ? std::nullopt : first[numbers.pool.foldClass(number)];
        customers.codes.push_back(line ? clients.of(*line) : nobody);
    }
    return customers;
}

/// A column under another name, declared as the work table declares it.
ColumnStore renamed(ColumnStore column, const ColumnInfo& info) {
    column.info = info;
    return column;
}

double sumOf(const ColumnStore& column) {
    double sum = 0;
    for (const double number : column.numbers)
        sum += std::isnan(number) ? 0 : number;
    return sum;
}

std::shared_ptr<TableImage> emptyOrders(Session& session) {
    return std::make_shared<TableImage>(session.cn.columns(orderTableName()));
}

/// The result of the statement and the customers, as columns of orderTable in that table's order.
std::shared_ptr<TableImage> asOrderTable(Session& session, const TableImage& result, ColumnStore customers) {
    const std::pair<const char16_t*, const ColumnStore*> sources[] = {{u"订单号", &result.column(0)},
                                                                      {u"客户编号", &customers},
                                                                      {u"购买额", &result.column(1)},
                                                                      {u"差额利润", &result.column(2)},
                                                                      {u"购买数量", &result.column(3)}};
    std::vector<ColumnStore> columns;
    for (const ColumnInfo& info : session.cn.columns(orderTableName()))
        for (const auto& [name, column] : sources)
            if (info.name == QStringView(name))
                columns.push_back(renamed(*column, info));
    return std::make_shared<TableImage>(std::move(columns));
}

} // namespace

OrderStatistic calculation_order(Session& session, ShowSource source) {
    const RecordsetPtr& lines = source == ShowSource::PeriodLines ? session.buyList2 : session.buyList;
    if (!lines->isOpen())
        return {emptyOrders(session), {QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0")}};
    Recordset orders(session.cn);
    orders.Open(QStringLiteral("Select 订单号, Sum(实付) As 购买额, Sum(差额利润) As 差额利润, "
                               "Sum(数量) As 购买量 From %1 Group By 订单号 Order By Sum(实付) desc")
                    .arg(linesTable(source)));
    const TableImage& result = orders.image();
    OrderStatistic statistic;
    statistic.orders =
        asOrderTable(session, result, customersOf(result.column(0), lines, linesInOrder(session, lines)));
    statistic.figures = {plainNumber(sumOf(result.column(1))), plainNumber(sumOf(result.column(2))),
                         plainNumber(sumOf(result.column(3)))};
    return statistic;
}

void openOrders(Session& session, const OrderStatistic& statistic) {
    session.orderTable = std::make_shared<Recordset>(session.cn);
    session.orderTable->OpenPicture(statistic.orders);
    session.orderTable->setSort(mostPaidFirst());
}

void writeOrders(Session& session, const OrderStatistic& statistic, const Progress& progress) {
    IgnoringErrors errors;
    errors.run([&] { fillTable(session.cn, orderTableName(), *statistic.orders, progress); });
    errors.run([&] { session.reopen(session.orderTable, QStringLiteral("Select * From orderTable")); });
    errors.run([&] { session.orderTable->setSort(mostPaidFirst()); });
}

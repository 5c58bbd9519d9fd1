#include "data/recount.h"

#include "recordset/error.h"
#include "recordset/textNumber.h"

#include <cmath>

namespace {

constexpr int kProgressStep = 2000;

/// Sums by customer number over all lines in one pass; numbers that differ in the case of A-Z alone are one.
class SumsByClient {
public:
    explicit SumsByClient(const RecordsetPtr& lines)
        : m_lines(*lines)
        , m_image(lines->image()) {
        lines->prefetch({QStringLiteral("客户编号"), QStringLiteral("实付"), QStringLiteral("差额利润"),
                         QStringLiteral("数量")});
        m_number = lines->fieldIndex(QStringLiteral("客户编号"));
        m_paid = lines->fieldIndex(QStringLiteral("实付"));
        m_margin = lines->fieldIndex(QStringLiteral("差额利润"));
        m_quantity = lines->fieldIndex(QStringLiteral("数量"));
        if (lines->pendingEdits().empty())
            addStored();
        else
            addShown();
    }

    LineSums of(const QString& number) const {
        const QByteArray utf8 = number.toUtf8();
        const auto codes = pool().findEqual({utf8.constData(), std::size_t(utf8.size())});
        if (codes.empty())
            return {};
        const TextPool::Code code = pool().foldClass(codes.front());
        return code < m_sums.size() ? m_sums[code] : LineSums();
    }

private:
    const ColumnStore& store(int field) const { return m_image.column(m_lines.imageColumn(field)); }
    const TextPool& pool() const { return store(m_number).pool; }

    void addStored() {
        const std::vector<TextPool::Code>& codes = store(m_number).codes;
        const std::vector<double>& paid = store(m_paid).numbers;
        const std::vector<double>& margin = store(m_margin).numbers;
        const std::vector<double>& quantity = store(m_quantity).numbers;
        std::vector<TextPool::Code> classes(pool().last() + 1);
        for (TextPool::Code code = 0; code < classes.size(); ++code)
            classes[code] = pool().foldClass(code);
        m_sums.resize(classes.size());
        const auto orNull = [](double number) { return std::isnan(number) ? 0 : number; };
        m_lines.eachRow([&](RowId row) {
            m_sums[classes[codes[row]]].add(orNull(paid[row]), orNull(margin[row]), orNull(quantity[row]));
        });
    }

    void addShown() {
        for (int i = 0; i < m_lines.RecordCount(); ++i) {
            const CellValue number = m_lines.valueAt(i, m_number);
            if (isNull(number))
                continue;
            const TextPool::Code code =
                pool().foldClass(m_image.internText(m_lines.imageColumn(m_number), toText(number)));
            if (code >= m_sums.size())
                m_sums.resize(std::size_t(code) + 1);
            m_sums[code].add(m_lines.numberAt(i, m_paid), m_lines.numberAt(i, m_margin),
                             m_lines.numberAt(i, m_quantity));
        }
    }

    const Recordset& m_lines;
    const TableImage& m_image;
    int m_number = 0;
    int m_paid = 0;
    int m_margin = 0;
    int m_quantity = 0;
    std::vector<LineSums> m_sums; // by fold class of the number's code
};

struct TotalFields {
    explicit TotalFields(const RecordsetPtr& clients)
        : number(clients->fieldIndex(QStringLiteral("客户编号")))
        , total(clients->fieldIndex(QStringLiteral("消费合计")))
        , margin(clients->fieldIndex(QStringLiteral("差额利润")))
        , quantity(clients->fieldIndex(QStringLiteral("购买数")))
        , rate(clients->fieldIndex(QStringLiteral("差额利润率"))) {}

    int number, total, margin, quantity, rate;
};

/// Puts the totals that the sums give into the row at `position`, which becomes current only if one differs.
void writeTotals(const RecordsetPtr& clients, int position, const TotalFields& fields, const LineSums& sums) {
    // Without a paid amount all four are zero, and no "%" stands behind the rate.
    const bool paid = sums.paid != 0;
    const std::pair<int, CellValue> totals[] = {
        {fields.total, paid ? sums.paid : 0.0},
        {fields.margin, paid ? sums.margin : 0.0},
        {fields.quantity, paid ? sums.quantity : 0.0},
        {fields.rate, paid ? rateText(marginRate(sums)) + u'%' : QStringLiteral("0")},
    };
    bool changed = false;
    for (const auto& [field, value] : totals) {
        if (clients->valueAt(position, field) == value)
            continue;
        if (!changed)
            clients->moveTo(position);
        changed = true;
        clients->Fields(field).setValue(value);
    }
    if (changed)
        clients->Update();
}

} // namespace

void LineSums::add(double linePaid, double lineMargin, double lineQuantity) {
    paid += linePaid;
    margin += lineMargin;
    quantity += lineQuantity;
    any = true;
}

double marginRate(const LineSums& sums) {
    return sums.paid == 0 ? 0 : checkedFinite(sums.margin / sums.paid * 100);
}

LineSums sumsOfView(const RecordsetPtr& lines) {
    LineSums sums;
    const int paid = lines->fieldIndex(QStringLiteral("实付"));
    const int margin = lines->fieldIndex(QStringLiteral("差额利润"));
    const int quantity = lines->fieldIndex(QStringLiteral("数量"));
    for (int i = 0; i < lines->RecordCount(); ++i)
        sums.add(lines->numberAt(i, paid), lines->numberAt(i, margin), lines->numberAt(i, quantity));
    return sums;
}

void client_totals_recount(Connection& connection, const RecordsetPtr& clients, const RecordsetPtr& lines,
                           const Progress& progress) {
    if (!clients->hasRows())
        return;
    const QuietWalk clientWalk(clients);
    const QuietWalk lineWalk(lines);
    clients->clearFilter();
    lines->clearFilter();
    const SumsByClient sums(lines);
    const TotalFields fields(clients);
    clients->prefetch({QStringLiteral("客户编号"), QStringLiteral("消费合计"), QStringLiteral("差额利润"),
                       QStringLiteral("购买数"), QStringLiteral("差额利润率")});
    WriteBatch batch(connection);
    const int count = clients->RecordCount();
    for (int i = 0; i < count; ++i) {
        writeTotals(clients, i, fields, sums.of(fieldText(clients->valueAt(i, fields.number))));
        if (progress && i % kProgressStep == 0)
            progress(i, count);
    }
    batch.finish();
    clients->clearFilter();
    lines->Requery();
}

void lineMarginRefresh(Connection& connection, const RecordsetPtr& lines) {
    if (!lines->hasRows())
        return;
    const QuietWalk walk(lines);
    const auto row = lines->currentRow();
    const int paid = lines->fieldIndex(QStringLiteral("实付"));
    const int cost = lines->fieldIndex(QStringLiteral("成本"));
    const int quantity = lines->fieldIndex(QStringLiteral("数量"));
    const int margin = lines->fieldIndex(QStringLiteral("差额利润"));
    WriteBatch batch(connection);
    for (int i = 0; i < lines->RecordCount(); ++i) {
        const CellValue fresh =
            checkedFinite(lines->numberAt(i, paid) - lines->numberAt(i, cost) * lines->numberAt(i, quantity));
        if (lines->valueAt(i, margin) == fresh)
            continue;
        lines->moveTo(i);
        lines->Fields(margin).setValue(fresh);
        lines->Update();
    }
    batch.finish();
    if (!row || !lines->moveToRow(*row))
        lines->MoveFirst();
}

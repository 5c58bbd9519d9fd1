#include "data/recount.h"

#include "recordset/error.h"
#include "recordset/textNumber.h"

#include <cmath>

namespace {

constexpr int kProgressStep = 2000;

/// The fields of a line that the sums are made of.
struct LineFields {
    explicit LineFields(const Recordset& lines)
        : paid(lines.fieldIndex(QStringLiteral("实付")))
        , margin(lines.fieldIndex(QStringLiteral("差额利润")))
        , quantity(lines.fieldIndex(QStringLiteral("数量"))) {}

    /// Adds the row at a position as the cursor shows it, pending edits included.
    void addTo(LineSums& sums, const Recordset& lines, int position) const {
        sums.add(lines.numberAt(position, paid), lines.numberAt(position, margin),
                 lines.numberAt(position, quantity));
    }

    int paid, margin, quantity;
};

/// The same three columns as they are stored, for walks over many rows.
class StoredLines {
public:
    StoredLines(const Recordset& lines, const LineFields& fields)
        : m_paid(numbers(lines, fields.paid))
        , m_margin(numbers(lines, fields.margin))
        , m_quantity(numbers(lines, fields.quantity)) {}

    void addTo(LineSums& sums, RowId row) const {
        sums.add(orNull(m_paid[row]), orNull(m_margin[row]), orNull(m_quantity[row]));
    }

private:
    static const std::vector<double>& numbers(const Recordset& lines, int field) {
        return lines.image().column(lines.imageColumn(field)).numbers;
    }
    static double orNull(double number) { return std::isnan(number) ? 0 : number; }

    const std::vector<double>& m_paid;
    const std::vector<double>& m_margin;
    const std::vector<double>& m_quantity;
};

/// Sums by customer number over all lines in one pass; numbers that differ in the case of A-Z alone are one.
class SumsByClient {
public:
    explicit SumsByClient(const RecordsetPtr& lines)
        : m_lines(*lines)
        , m_image(lines->image()) {
        lines->prefetch({QStringLiteral("客户编号"), QStringLiteral("实付"), QStringLiteral("差额利润"),
                         QStringLiteral("数量")});
        m_number = lines->fieldIndex(QStringLiteral("客户编号"));
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
    const ColumnStore& numberStore() const { return m_image.column(m_lines.imageColumn(m_number)); }
    const TextPool& pool() const { return numberStore().pool; }

    void addStored() {
        const StoredLines stored(m_lines, LineFields(m_lines));
        const std::vector<TextPool::Code>& codes = numberStore().codes;
        std::vector<TextPool::Code> classes(pool().last() + 1);
        for (TextPool::Code code = 0; code < classes.size(); ++code)
            classes[code] = pool().foldClass(code);
        m_sums.resize(classes.size());
        m_lines.eachRow([&](RowId row) { stored.addTo(m_sums[classes[codes[row]]], row); });
    }

    void addShown() {
        const LineFields fields(m_lines);
        for (int i = 0; i < m_lines.RecordCount(); ++i) {
            const CellValue number = m_lines.valueAt(i, m_number);
            if (isNull(number))
                continue;
            const TextPool::Code code =
                pool().foldClass(m_image.internText(m_lines.imageColumn(m_number), toText(number)));
            if (code >= m_sums.size())
                m_sums.resize(std::size_t(code) + 1);
            fields.addTo(m_sums[code], m_lines, i);
        }
    }

    const Recordset& m_lines;
    const TableImage& m_image;
    int m_number = 0;
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

/// Puts the totals that the sums give into the row at `position`, which becomes current only if one differs;
/// whether one did.
bool writeTotals(const RecordsetPtr& clients, int position, const TotalFields& fields, const LineSums& sums) {
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
    return changed;
}

} // namespace

void LineSums::add(double linePaid, double lineMargin, double lineQuantity) {
    paid += linePaid;
    margin += lineMargin;
    quantity += lineQuantity;
}

double marginRate(const LineSums& sums) {
    return sums.paid == 0 ? 0 : checkedFinite(sums.margin / sums.paid * 100);
}

LineSums sumsOfView(const RecordsetPtr& lines) {
    const LineFields fields(*lines);
    LineSums sums;
    if (lines->pendingEdits().empty()) {
        const StoredLines stored(*lines, fields);
        lines->eachRow([&](RowId row) { stored.addTo(sums, row); });
    } else {
        for (int i = 0; i < lines->RecordCount(); ++i)
            fields.addTo(sums, *lines, i);
    }
    return sums;
}

int client_totals_recount(Connection& connection, const RecordsetPtr& clients, const RecordsetPtr& lines,
                          const Progress& progress) {
    if (!clients->hasRows())
        return 0;
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
    int changed = 0;
    for (int i = 0; i < count; ++i) {
        changed += writeTotals(clients, i, fields, sums.of(fieldText(clients->valueAt(i, fields.number))));
        if (progress && i % kProgressStep == 0)
            progress(i, count);
    }
    batch.finish();
    clients->clearFilter();
    lines->Requery();
    return changed;
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

#include "data/recount.h"

#include "recordset/error.h"
#include "recordset/textNumber.h"

#include <algorithm>
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

} // namespace

void LineSums::add(double linePaid, double lineMargin, double lineQuantity) {
    paid += linePaid;
    margin += lineMargin;
    quantity += lineQuantity;
}

double marginRate(const LineSums& sums) {
    return sums.paid == 0 ? 0 : checkedFinite(sums.margin / sums.paid * 100);
}

SumsByClient::SumsByClient(const RecordsetPtr& lines)
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

std::optional<LineSums> SumsByClient::find(std::string_view number) const {
    const auto codes = pool().findEqual(number);
    if (codes.empty())
        return std::nullopt;
    const TextPool::Code code = pool().foldClass(codes.front());
    return code < m_any.size() && m_any[code] ? std::optional(m_sums[code]) : std::nullopt;
}

const ColumnStore& SumsByClient::numberStore() const {
    return m_image.column(m_lines.imageColumn(m_number));
}

void SumsByClient::addStored() {
    const StoredLines stored(m_lines, LineFields(m_lines));
    const std::vector<TextPool::Code>& codes = numberStore().codes;
    std::vector<TextPool::Code> classes(pool().last() + 1);
    for (TextPool::Code code = 0; code < classes.size(); ++code)
        classes[code] = pool().foldClass(code);
    m_sums.resize(classes.size());
    m_any.resize(classes.size());
    m_lines.eachRow([&](RowId row) {
        const TextPool::Code code = classes[codes[row]];
        m_any[code] = 1;
        stored.addTo(m_sums[code], row);
    });
}

void SumsByClient::addShown() {
    const LineFields fields(m_lines);
    for (int i = 0; i < m_lines.RecordCount(); ++i) {
        const CellValue number = m_lines.valueAt(i, m_number);
        if (isNull(number))
            continue;
        const TextPool::Code code =
            pool().foldClass(m_image.internText(m_lines.imageColumn(m_number), toText(number)));
        if (code >= m_sums.size()) {
            m_sums.resize(std::size_t(code) + 1);
            m_any.resize(std::size_t(code) + 1);
        }
        m_any[code] = 1;
        fields.addTo(m_sums[code], m_lines, i);
    }
}

std::array<CellValue, 4> totalsOf(const LineSums& sums) {
    // Without a paid amount all four are zero, and no "%" stands behind the rate.
    if (sums.paid == 0)
        return {0.0, 0.0, 0.0, QStringLiteral("0")};
    return {sums.paid, sums.margin, sums.quantity, rateText(marginRate(sums)) + u'%'};
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

TotalsRecount::TotalsRecount(Connection& connection, RecordsetPtr clients, RecordsetPtr lines)
    : m_connection(connection)
    , m_clients(std::move(clients))
    , m_lines(std::move(lines))
    , m_sums(m_lines)
    , m_number(m_clients->fieldIndex(QStringLiteral("客户编号"))) {
    QStringList columns{QStringLiteral("客户编号")};
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        columns << QString::fromUtf16(kTotalColumns[i]);
        m_fields[i] = m_clients->fieldIndex(columns.back());
    }
    m_clients->prefetch(columns);
}

bool TotalsRecount::look(int most) {
    const int count = clientCount();
    for (const int end = std::min(count, m_looked + most); m_looked < end; ++m_looked) {
        const std::string number = fieldText(m_clients->valueAt(m_looked, m_number)).toStdString();
        const std::array<CellValue, 4> totals = totalsOf(m_sums.find(number).value_or(LineSums()));
        const bool same = std::equal(totals.begin(), totals.end(), m_fields.begin(),
                                     [this](const CellValue& total, int field) {
                                         return m_clients->valueAt(m_looked, field) == total;
                                     });
        if (!same)
            m_wrong.emplace_back(m_clients->rowAt(m_looked), totals);
    }
    return m_looked < count;
}

int TotalsRecount::write() {
    if (m_wrong.empty())
        return 0;
    WriteBatch batch(m_connection);
    for (const auto& [row, totals] : m_wrong) {
        if (!m_clients->moveToRow(row))
            continue;
        for (std::size_t i = 0; i < m_fields.size(); ++i)
            if (Field field = m_clients->Fields(m_fields[i]); field.Value() != totals[i])
                field.setValue(totals[i]);
        m_clients->Update();
    }
    batch.finish();
    return int(m_wrong.size());
}

int TotalsRecount::finish() {
    look(clientCount());
    return write();
}

int client_totals_recount(Connection& connection, const RecordsetPtr& clients, const RecordsetPtr& lines,
                          const Progress& progress) {
    if (!clients->hasRows())
        return 0;
    const QuietWalk clientWalk(clients);
    const QuietWalk lineWalk(lines);
    clients->clearFilter();
    lines->clearFilter();
    TotalsRecount recount(connection, clients, lines);
    const auto tell = [&] {
        if (progress)
            progress(recount.looked(), recount.clientCount());
    };
    for (tell(); recount.look(kProgressStep); tell()) {
    }
    const int changed = recount.write();
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

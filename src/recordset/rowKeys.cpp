#include "recordset/rowKeys.h"

#include "recordset/collation.h"

#include <algorithm>
#include <bit>
#include <numeric>

namespace {

/// Room for the rows that are added to a view of a whole table, so that the first one does not move them all.
constexpr std::size_t kSpare = 1024;

constexpr quint64 kMostBuckets = 1U << 21;
constexpr std::size_t kWorthRadix = 512;

/// Order-preserving keys of the rows for one column, 0 for Null.
class KeyColumn {
public:
    KeyColumn(const TableImage& image, int column, const PendingEdits& edits)
        : m_image(image)
        , m_column(column)
        , m_store(image.column(column))
        , m_edits(edits) {}

    std::vector<quint64> of(const std::vector<RowId>& rows) const {
        std::vector<quint64> keys = m_store.info.type == ColumnType::Text ? textKeys(rows) : plainKeys(rows);
        if (m_store.info.type == ColumnType::Date)
            countDays(keys);
        return keys;
    }

private:
    template <typename Stored, typename Pending>
    std::vector<quint64> keysBy(const std::vector<RowId>& rows, Stored&& stored, Pending&& pending) const {
        std::vector<quint64> keys(rows.size());
        if (m_edits.empty()) {
            for (std::size_t i = 0; i < rows.size(); ++i)
                keys[i] = stored(rows[i]);
            return keys;
        }
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const CellValue* value = m_edits.find(rows[i], m_column);
            keys[i] = value ? pending(*value) : isNewRow(rows[i]) ? 0 : stored(rows[i]);
        }
        return keys;
    }

    std::vector<quint64> plainKeys(const std::vector<RowId>& rows) const {
        const auto pending = [](const CellValue& value) -> quint64 {
            if (const auto* number = std::get_if<double>(&value))
                return ordinalOf(*number);
            if (const auto* moment = std::get_if<Moment>(&value))
                return ordinalOf(moment->seconds);
            return isNull(value) ? 0 : ordinalOf(qint64(std::get<qint32>(value)));
        };
        return keysBy(
            rows, [this](RowId row) { return m_store.ordinal(row); }, pending);
    }

    std::vector<quint64> codesOf(const std::vector<RowId>& rows) const {
        const auto pending = [this](const CellValue& value) -> quint64 {
            const auto* text = std::get_if<QString>(&value);
            return text ? m_image.internText(m_column, *text) : TextPool::Null;
        };
        return keysBy(
            rows, [this](RowId row) -> quint64 { return m_store.codes[row]; }, pending);
    }

    std::vector<quint64> textKeys(const std::vector<RowId>& rows) const {
        std::vector<quint64> keys = codesOf(rows);
        if (rows.size() * 4 < m_store.pool.last())
            return ranksAmong(std::move(keys));
        const std::vector<quint32>& ranks = m_image.textRanks(m_column);
        for (quint64& key : keys)
            key = ranks[key];
        return keys;
    }

    /// Few rows of a column with many texts: only the texts that occur are put in order.
    std::vector<quint64> ranksAmong(std::vector<quint64> keys) const {
        std::vector<TextPool::Code> codes;
        for (const quint64 key : keys)
            if (key != TextPool::Null)
                codes.push_back(TextPool::Code(key));
        std::sort(codes.begin(), codes.end());
        codes.erase(std::unique(codes.begin(), codes.end()), codes.end());
        const std::vector<quint32> ranks = Collation().ranks(m_store.pool, codes);
        for (quint64& key : keys)
            if (key != TextPool::Null)
                key = ranks[std::size_t(std::lower_bound(codes.begin(), codes.end(), key) - codes.begin())];
        return keys;
    }

    /// Dates without a time become day numbers, so that they fit into few buckets.
    static void countDays(std::vector<quint64>& keys) {
        constexpr quint64 day = 86400;
        constexpr quint64 zero = 1ULL << 63;
        const auto isDay = [](quint64 key) { return key == 0 || (key >= zero && (key - zero) % day == 0); };
        if (!std::all_of(keys.begin(), keys.end(), isDay))
            return;
        for (quint64& key : keys)
            key = key == 0 ? 0 : (key - zero) / day + 1;
    }

    const TableImage& m_image;
    int m_column;
    const ColumnStore& m_store;
    const PendingEdits& m_edits;
};

using Order = std::vector<quint32>;

/// One stable counting pass: `order` by bucket(key).
template <typename Bucket>
void countingPass(Order& order, const std::vector<quint64>& keys, std::size_t buckets, Bucket&& bucket) {
    std::vector<quint32> starts(buckets + 1, 0);
    for (const quint64 key : keys)
        ++starts[bucket(key) + 1];
    for (std::size_t i = 1; i <= buckets; ++i)
        starts[i] += starts[i - 1];
    Order next(order.size());
    for (const quint32 index : order)
        next[starts[bucket(keys[index])]++] = index;
    order.swap(next);
}

/// Whether rows stand in order already, such as lines by their date: one look where to sort would be many.
/// False also where the column is of texts or a row is being edited.
bool isInOrder(const std::vector<RowId>& rows, const SortKey& key, const TableImage& image,
               const PendingEdits& edits) {
    const ColumnStore& store = image.column(key.column);
    if (store.info.type == ColumnType::Text || !edits.empty())
        return false;
    quint64 before = 0;
    for (const RowId row : rows) {
        const quint64 value = key.descending ? ~store.ordinal(row) : store.ordinal(row);
        if (value < before)
            return false;
        before = value;
    }
    return true;
}

/// Puts slots below `end`, each there once, in ascending order.
void ascend(std::vector<RowId>::iterator first, std::vector<RowId>::iterator last, Row end) {
    constexpr std::size_t few = 16;
    if (std::is_sorted(first, last))
        return;
    if (std::size_t(last - first) * few < end)
        return std::sort(first, last);
    // Many of them: marked and counted off, which takes less than comparing.
    std::vector<char> marks(end, 0);
    std::for_each(first, last, [&marks](RowId row) { marks[row] = 1; });
    for (Row row = 0; row < end; ++row)
        if (marks[row])
            *first++ = row;
}

} // namespace

const CellValue* PendingEdits::find(RowId row, int column) const {
    const auto held = m_rows.find(row);
    if (held == m_rows.end())
        return nullptr;
    for (const auto& [index, value] : held->second)
        if (index == column)
            return &value;
    return nullptr;
}

void PendingEdits::set(RowId row, int column, const CellValue& value) {
    CellChanges& cells = m_rows[row];
    for (auto& [index, held] : cells)
        if (index == column) {
            held = value;
            return;
        }
    cells.emplace_back(column, value);
}

std::size_t Keyset::count(const TableImage& image) const {
    const std::size_t all = prefix + rows.size();
    if (image.deletedCount() == 0)
        return all;
    const auto gone = [&image](RowId row) { return !isNewRow(row) && image.isDeleted(row); };
    return all - image.deletedBelow(prefix).size() -
           std::size_t(std::count_if(rows.begin(), rows.end(), gone));
}

std::vector<RowId> Keyset::sequence(const TableImage& image) const {
    std::vector<RowId> all;
    all.reserve(prefix + rows.size() + kSpare);
    if (image.deletedCount() == 0) {
        all.resize(prefix);
        std::iota(all.begin(), all.end(), 0U);
    } else {
        for (Row row = 0; row < prefix; ++row)
            if (!image.isDeleted(row))
                all.push_back(row);
    }
    for (const RowId row : rows)
        if (isNewRow(row) || !image.isDeleted(row))
            all.push_back(row);
    return all;
}

std::vector<RowId> Keyset::inBaseOrder(std::vector<RowId> some) const {
    const auto isSlot = [this](RowId row) { return row < prefix; };
    if (!std::is_partitioned(some.begin(), some.end(), isSlot))
        std::stable_partition(some.begin(), some.end(), isSlot);
    const auto behind = std::partition_point(some.begin(), some.end(), isSlot);
    ascend(some.begin(), behind, prefix);
    if (rows.empty()) {
        some.erase(behind, some.end());
        return some;
    }
    std::vector<RowId> wanted(behind, some.end());
    std::sort(wanted.begin(), wanted.end());
    some.erase(behind, some.end());
    for (const RowId row : rows)
        if (std::binary_search(wanted.begin(), wanted.end(), row))
            some.push_back(row);
    return some;
}

bool ascends(const Keyset& keyset, const SortKey& key, const TableImage& image) {
    if (key.descending || image.info(key.column).type == ColumnType::Text)
        return false;
    std::optional<quint64> before = image.ascendsTo(key.column, keyset.prefix);
    const ColumnStore& store = image.column(key.column);
    for (const RowId row : keyset.rows) {
        if (!before || isNewRow(row))
            return false;
        if (image.isDeleted(row))
            continue;
        if (store.ordinal(row) < *before)
            return false;
        before = store.ordinal(row);
    }
    return before.has_value();
}

void stableSort(Order& order, const std::vector<quint64>& keys) {
    if (order.size() < kWorthRadix) {
        std::stable_sort(order.begin(), order.end(), [&](quint32 a, quint32 b) { return keys[a] < keys[b]; });
        return;
    }
    const auto [low, high] = std::minmax_element(keys.begin(), keys.end());
    const quint64 base = *low;
    const quint64 span = *high - base;
    if (span < kMostBuckets)
        return countingPass(order, keys, std::size_t(span) + 1,
                            [base](quint64 key) { return std::size_t(key - base); });
    constexpr int bits = 11;
    for (int shift = 0; shift < int(std::bit_width(span)); shift += bits)
        countingPass(order, keys, std::size_t(1) << bits, [base, shift](quint64 key) {
            return std::size_t(((key - base) >> shift) & ((1U << bits) - 1));
        });
}

std::vector<RowId> sortedRows(std::vector<RowId> rows, const std::vector<SortKey>& keys,
                              const TableImage& image, const PendingEdits& edits) {
    if (keys.size() == 1 && isInOrder(rows, keys.front(), image, edits))
        return rows;
    Order order(rows.size());
    std::iota(order.begin(), order.end(), 0U);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        std::vector<quint64> values = KeyColumn(image, key->column, edits).of(rows);
        if (key->descending)
            for (quint64& value : values)
                value = ~value;
        stableSort(order, values);
    }
    std::vector<RowId> sorted(rows.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        sorted[i] = rows[order[i]];
    return sorted;
}

#include "recordset/groups.h"

#include <cmath>
#include <limits>

namespace {

constexpr Row kNone = std::numeric_limits<Row>::max();

/// Numbers keys in the order in which they first come: an open hash table, half empty at least.
class KeyNumbers {
public:
    KeyNumbers()
        : m_slots(1024) {}

    Row numberOf(quint64 key) {
        if (m_count > 0 && key == m_lastKey)
            return m_lastNumber;
        m_lastKey = key;
        return m_lastNumber = lookUp(key);
    }

private:
    struct Slot {
        quint64 key = 0;
        Row number = kNone;
    };

    static std::size_t spread(quint64 key) {
        key *= 0x9E3779B97F4A7C15ULL;
        return std::size_t(key ^ (key >> 32));
    }

    Row lookUp(quint64 key) {
        Slot& slot = slotOf(key);
        if (slot.number != kNone)
            return slot.number;
        slot = {key, m_count};
        if (std::size_t(++m_count) * 2 > m_slots.size())
            grow();
        return m_count - 1;
    }

    Slot& slotOf(quint64 key) {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t at = spread(key) & mask;
        while (m_slots[at].number != kNone && m_slots[at].key != key)
            at = (at + 1) & mask;
        return m_slots[at];
    }

    void grow() {
        const std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(m_slots.size() * 2));
        for (const Slot& slot : old)
            if (slot.number != kNone)
                slotOf(slot.key) = slot;
    }

    std::vector<Slot> m_slots;
    Row m_count = 0;
    quint64 m_lastKey = 0;
    Row m_lastNumber = 0;
};

/// The number of each row's value among the values of one column.
std::vector<Row> textNumbers(const ColumnStore& column, const std::vector<Row>& rows) {
    std::vector<Row> classes(std::size_t(column.pool.last()) + 1);
    for (TextPool::Code code = 1; code < classes.size(); ++code)
        classes[code] = column.pool.foldClass(code);
    std::vector<Row> numbers(classes.size(), kNone);
    std::vector<Row> result(rows.size());
    Row count = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Row& number = numbers[classes[column.codes[rows[i]]]];
        if (number == kNone)
            number = count++;
        result[i] = number;
    }
    return result;
}

std::vector<Row> valueNumbers(const ColumnStore& column, const std::vector<Row>& rows) {
    if (column.info.type == ColumnType::Text)
        return textNumbers(column, rows);
    KeyNumbers numbers;
    std::vector<Row> result(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        result[i] = numbers.numberOf(column.ordinal(rows[i]));
    return result;
}

bool isNullCell(const ColumnStore& column, Row row) {
    switch (column.info.type) {
    case ColumnType::Text:
        return column.codes[row] == TextPool::Null;
    case ColumnType::Number:
        return std::isnan(column.numbers[row]);
    case ColumnType::Date:
        return column.moments[row] == ColumnStore::NullMoment;
    default:
        return column.integers[row] == ColumnStore::NullInteger;
    }
}

template <typename T> std::vector<T> pickedCells(const std::vector<T>& cells, const std::vector<Row>& rows) {
    std::vector<T> result;
    if (cells.empty())
        return result;
    result.reserve(rows.size());
    for (const Row row : rows)
        result.push_back(cells[row]);
    return result;
}

void pickTexts(ColumnStore& result, const ColumnStore& column, const std::vector<Row>& rows) {
    result.codes.reserve(rows.size());
    for (const Row row : rows) {
        const TextPool::Code code = column.codes[row];
        result.codes.push_back(code == TextPool::Null ? code : result.pool.intern(column.pool.text(code)));
    }
}

} // namespace

Groups groupRows(const TableImage& image, const std::vector<int>& columns, const std::vector<Row>& rows) {
    image.load(columns);
    Groups groups;
    groups.of.assign(rows.size(), 0);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::vector<Row> numbers = valueNumbers(image.column(columns[i]), rows);
        if (i == 0) {
            groups.of = std::move(numbers);
            continue;
        }
        KeyNumbers pairs;
        for (std::size_t row = 0; row < rows.size(); ++row)
            groups.of[row] = pairs.numberOf(quint64(groups.of[row]) << 32 | numbers[row]);
    }
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (groups.of[i] == groups.firsts.size())
            groups.firsts.push_back(rows[i]);
    return groups;
}

std::vector<double> sumByGroup(const ColumnStore& column, const std::vector<Row>& rows,
                               const Groups& groups) {
    std::vector<double> sums(groups.firsts.size(), 0);
    std::vector<char> any(groups.firsts.size(), 0);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const double number = column.numbers[rows[i]];
        if (std::isnan(number))
            continue;
        sums[groups.of[i]] += number;
        any[groups.of[i]] = 1;
    }
    for (std::size_t group = 0; group < sums.size(); ++group)
        if (!any[group])
            sums[group] = std::numeric_limits<double>::quiet_NaN();
    return sums;
}

std::vector<qint32> countByGroup(const ColumnStore& column, const std::vector<Row>& rows,
                                 const Groups& groups) {
    std::vector<qint32> counts(groups.firsts.size(), 0);
    for (std::size_t i = 0; i < rows.size(); ++i)
        counts[groups.of[i]] += isNullCell(column, rows[i]) ? 0 : 1;
    return counts;
}

ColumnStore picked(const ColumnStore& column, const std::vector<Row>& rows) {
    ColumnStore result;
    result.info = column.info;
    result.loaded = true;
    if (column.info.type == ColumnType::Text) {
        pickTexts(result, column, rows);
        return result;
    }
    result.numbers = pickedCells(column.numbers, rows);
    result.integers = pickedCells(column.integers, rows);
    result.moments = pickedCells(column.moments, rows);
    return result;
}

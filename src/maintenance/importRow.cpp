#include "maintenance/importRow.h"

#include "recordset/textNumber.h"

ImportRow::ImportRow(const SourceRows& rows, std::vector<int> places, RecordsetPtr target,
                     const QStringList& numbers)
    : m_rows(rows)
    , m_places(std::move(places))
    , m_target(std::move(target)) {
    for (int i = 0; i < m_target->fieldCount(); ++i) {
        m_sizes.push_back(m_target->Fields(i).DefinedSize());
        m_isNumber.push_back(numbers.contains(m_target->Fields(i).Name()));
    }
    m_values.resize(m_sizes.size());
    m_refused.resize(m_sizes.size());
}

const std::vector<CellValue>& ImportRow::make(int row, IgnoringErrors& errors) {
    for (std::size_t i = 0; i < m_sizes.size(); ++i) {
        const QString cell = m_rows.cell(row, m_places[i]);
        const QStringView text = withoutBlanks(cell);
        m_values[i] = CellValue();
        m_refused[i] = !errors.run([&] {
            m_values[i] = m_target->storable(
                int(i), m_isNumber[i] ? CellValue(val(text)) : CellValue(trimBlanks(text.left(m_sizes[i]))));
        });
    }
    return m_values;
}

QString ImportRow::source(int row, std::size_t cell) const {
    return trimBlanks(m_rows.cell(row, m_places[cell]));
}

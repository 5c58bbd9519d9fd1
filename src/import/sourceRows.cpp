#include "import/sourceRows.h"

#include "recordset/tableImage.h"

#include <utility>

SourceRows::SourceRows(const QStringList& names, const std::vector<QString>& cells) {
    begin(names);
    for (const QString& cell : cells)
        add(cell);
}

void SourceRows::begin(const QStringList& names) {
    *this = SourceRows();
    columns = names;
    m_held.resize(std::size_t(names.size()));
}

void SourceRows::add(const QString& cell) {
    if (cell.isNull())
        return null();
    const QByteArray utf8 = cell.toUtf8();
    text({utf8.constData(), std::size_t(utf8.size())});
}

void SourceRows::step() {
    ++m_cells;
    if (++m_next == m_held.size()) {
        m_next = 0;
        ++m_rows;
    }
}

QString SourceRows::cell(int row, int column) const {
    if (m_picture) {
        const CellValue value = m_picture->value(Row(row), column);
        return isNull(value) ? QString() : toText(value);
    }
    const SourceColumn& held = m_held[std::size_t(column)];
    if (held.isNull(std::size_t(row)))
        return {};
    const std::string_view text = held.text(std::size_t(row));
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

SourceRows SourceRows::takeColumns(const std::vector<int>& places) {
    SourceRows taken;
    for (const int place : places) {
        taken.columns << columns[place];
        taken.m_held.push_back(std::move(m_held[std::size_t(place)]));
    }
    taken.m_rows = places.empty() ? 0 : m_rows;
    taken.m_cells = std::size_t(taken.m_rows) * places.size();
    *this = SourceRows();
    return taken;
}

std::shared_ptr<TableImage> SourceRows::picture() {
    if (!m_picture) {
        std::vector<ColumnStore> stores;
        for (std::size_t i = 0; i < m_held.size(); ++i)
            stores.push_back(m_held[i].moveInto(
                ColumnInfo::fromDeclaration(columns[qsizetype(i)], QStringLiteral("TEXT(65535)"))));
        m_held.clear();
        m_picture = std::make_shared<TableImage>(std::move(stores));
    }
    return m_picture;
}

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
}

void SourceRows::add(const QString& cell) {
    if (cell.isNull())
        return null();
    const QByteArray utf8 = cell.toUtf8();
    text({utf8.constData(), std::size_t(utf8.size())});
}

ColumnStore& SourceRows::store() {
    if (m_stores.empty()) {
        m_stores.resize(std::size_t(columns.size()));
        for (std::size_t i = 0; i < m_stores.size(); ++i) {
            m_stores[i].info =
                ColumnInfo::fromDeclaration(columns[qsizetype(i)], QStringLiteral("TEXT(65535)"));
            m_stores[i].loaded = true;
        }
    }
    return m_stores[m_next];
}

void SourceRows::put(TextPool::Code code) {
    store().codes.push_back(code);
    ++m_cells;
    if (++m_next == m_stores.size()) {
        m_next = 0;
        ++m_rows;
    }
}

const ColumnStore& SourceRows::column(int index) const {
    return m_picture ? m_picture->column(index) : m_stores[std::size_t(index)];
}

QString SourceRows::cell(int row, int index) const {
    const ColumnStore& held = column(index);
    const TextPool::Code code = held.codes[std::size_t(row)];
    return code == TextPool::Null ? QString() : held.text(code);
}

SourceRows SourceRows::takeColumns(const std::vector<int>& places) {
    SourceRows taken;
    for (const int place : places) {
        taken.columns << columns[place];
        if (!m_stores.empty())
            taken.m_stores.push_back(std::move(m_stores[std::size_t(place)]));
    }
    taken.m_rows = places.empty() ? 0 : m_rows;
    taken.m_cells = std::size_t(taken.m_rows) * places.size();
    *this = SourceRows();
    return taken;
}

std::shared_ptr<TableImage> SourceRows::picture() {
    if (!m_picture) {
        if (m_stores.empty() && !columns.isEmpty())
            store(); // columns without a row
        m_picture = std::make_shared<TableImage>(std::exchange(m_stores, {}));
    }
    return m_picture;
}

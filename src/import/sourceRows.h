#pragma once

#include "recordset/columnStore.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <string_view>
#include <vector>

class TableImage;

/// Takes the rows of a table as they are read: its columns first, and then cell by cell, row by row.
class RowSink {
public:
    virtual ~RowSink() = default;
    virtual void begin(const QStringList& columns) = 0;
    /// UTF-8.
    virtual void text(std::string_view text) = 0;
    virtual void null() = 0;
    /// Nothing yet, but the reader is at work.
    virtual void alive() {}
};

/// The rows of a source table, a text a cell. A null text is no value. They are held a column at a time, each
/// text of a column once, as the grids and queries hold theirs: a million rows are no million strings.
class SourceRows : public RowSink {
public:
    SourceRows() = default;
    /// `cells` row by row.
    SourceRows(const QStringList& names, const std::vector<QString>& cells);

    QStringList columns;

    void begin(const QStringList& names) override;
    void text(std::string_view text) override { put(store().pool.intern(text)); }
    void null() override { put(TextPool::Null); }
    void add(const QString& cell);

    int rowCount() const { return m_rows; }
    QString cell(int row, int column) const;
    /// Cells taken, those of a row that is not whole included.
    std::size_t cellCount() const { return m_cells; }

    /// The columns at these places, in their order. They are moved: what is left here is empty.
    SourceRows takeColumns(const std::vector<int>& places);
    /// The rows as the fixed picture of a table, for a grid. It and these rows are one from now on; nothing
    /// is copied, and no row can be added any more.
    std::shared_ptr<TableImage> picture();

private:
    ColumnStore& store();
    void put(TextPool::Code code);
    const ColumnStore& column(int index) const;

    std::vector<ColumnStore> m_stores; // until there is a picture
    std::shared_ptr<TableImage> m_picture;
    std::size_t m_next = 0; // column of the cell that comes next
    std::size_t m_cells = 0;
    int m_rows = 0;
};

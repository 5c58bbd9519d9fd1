#pragma once

#include "import/sourceColumn.h"

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

/// The rows of a source table, a text a cell. A null text is no value. They are held a column at a time: a
/// million rows are no million strings.
class SourceRows : public RowSink {
public:
    SourceRows() = default;
    /// `cells` row by row.
    SourceRows(const QStringList& names, const std::vector<QString>& cells);

    QStringList columns;

    void begin(const QStringList& names) override;
    void text(std::string_view text) override {
        m_held[m_next].add(text);
        step();
    }
    void null() override {
        m_held[m_next].addNull();
        step();
    }
    void add(const QString& cell);

    int rowCount() const { return m_rows; }
    QString cell(int row, int column) const;
    /// Cells taken, those of a row that is not whole included.
    std::size_t cellCount() const { return m_cells; }

    /// The columns at these places, in their order. They are moved: what is left here is empty.
    SourceRows takeColumns(const std::vector<int>& places);
    /// The rows as the fixed picture of a table, for a grid. They are moved into it a column at a time, and
    /// from now on these rows are read there; none can be added any more.
    std::shared_ptr<TableImage> picture();

private:
    void step();

    std::vector<SourceColumn> m_held; // until there is a picture
    std::shared_ptr<TableImage> m_picture;
    std::size_t m_next = 0; // column of the cell that comes next
    std::size_t m_cells = 0;
    int m_rows = 0;
};

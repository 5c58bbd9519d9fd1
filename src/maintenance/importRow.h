#pragma once

#include "data/session.h"
#include "import/sourceRows.h"
#include "recordset/ignoringErrors.h"

/// What a source row becomes in the target, cell by cell. Nothing is written by it.
class ImportRow {
public:
    /// `places`: the source columns that go into the columns of `target`, in their order. `numbers`: the
    /// names of the columns stored by the value of their leading digits. The rows are read where they are.
    ImportRow(const SourceRows& rows, std::vector<int> places, RecordsetPtr target,
              const QStringList& numbers);

    /// The values of a row; a value that its column refuses leaves the cell empty and is an error.
    const std::vector<CellValue>& make(int row, IgnoringErrors& errors);

    /// Whether the column refused the cell of the row that was made last.
    bool refused(std::size_t cell) const { return m_refused[cell]; }

    std::size_t cellCount() const { return m_places.size(); }
    /// What the source holds for a cell, without the blanks around it.
    QString source(int row, std::size_t cell) const;
    bool isNumber(std::size_t cell) const { return m_isNumber[cell]; }
    /// Characters that the cell's column holds.
    int size(std::size_t cell) const { return m_sizes[cell]; }

private:
    const SourceRows& m_rows;
    std::vector<int> m_places;
    RecordsetPtr m_target;
    std::vector<int> m_sizes;
    std::vector<bool> m_isNumber;
    std::vector<CellValue> m_values; // of the row under way
    std::vector<bool> m_refused;
};

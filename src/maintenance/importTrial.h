#pragma once

#include "maintenance/importRow.h"
#include "maintenance/importTransfer.h"

/// An import on trial: what each row would become and what would be refused. Nothing is written.
class ImportTrial {
public:
    /// How a row would fare; what is worse is greater.
    enum class Fate : quint8 { AsItIs, Changed, Refused };

    /// `rows`: those of the source, read where they are and not changed; `places`: the columns of them that
    /// go into the plan's target columns, in their order.
    ImportTrial(Session& session, const ImportPlan& plan, const SourceRows& rows, std::vector<int> places);

    /// Looks at rows until the time is up.
    void run(int milliseconds);
    int done() const { return int(m_fates.size()); }
    int rowCount() const { return m_rowCount; }
    bool finished() const { return done() >= m_rowCount; }

    const QStringList& columns() const { return m_columns; }
    Fate fate(int row) const { return m_fates[std::size_t(row)]; }
    /// The rows that would not come in as they are, in their order.
    const std::vector<int>& remarkable() const { return m_remarkable; }
    /// The texts of a row as the target would show them.
    QStringList become(int row);
    /// Why a row would not come in as it is; empty for one that would.
    QString remark(int row);
    /// The whole in one line.
    QString summary() const;

private:
    Fate look(int row);
    Fate cellFate(int row, std::size_t cell) const;
    QString cellRemark(int row, std::size_t cell) const;
    bool refusesDate(int row) const;

    QStringList m_columns;
    int m_rowCount;
    ImportRow m_row;
    int m_dateCell = -1; // the one that the date test looks at
    std::vector<Fate> m_fates;
    std::vector<int> m_remarkable;
    int m_refused = 0;
};

#pragma once

#include "data/recount.h"
#include "data/session.h"
#include "import/importSource.h"
#include "maintenance/importRow.h"

#include <functional>
#include <span>

/// One of the three tables into which foreign rows go.
struct ImportTarget {
    int number; // importTarget
    const char16_t* command;
    const char16_t* caption; // of the window
    const char16_t* table;
    RecordsetPtr Session::*shared;
    const char16_t* derived;  // columns that the system works out, parted by blanks
    const char16_t* note;     // the required columns, as the window tells them
    const char16_t* required; // the required columns, as the run asks for them, in this order
    const char16_t* numbers;  // columns stored by the value of their leading digits
    bool checksDates;
    bool recounts;
};

std::span<const ImportTarget> importTargets();
/// The target of an importTarget number. Null for an unknown one.
const ImportTarget* findImportTarget(int number);

/// Column names of the target that can be paired.
QStringList pairableColumns(Session& session, const ImportTarget& target);

/// Columns of the target that are stored by the value of their leading digits.
QStringList numberColumns(const ImportTarget& target);

/// What is brought in: the n-th source column goes into the n-th target column, whatever their names.
struct ImportPlan {
    qint16 importTarget = 0; // of the menu command: 1 customers, 2 order lines, 3 products
    const ImportTarget* target = nullptr;
    QStringList sourceColumns;
    QStringList targetColumns;
    SourceRows rows; // the chosen columns, in the order of sourceColumns
};

/// The source column paired with a target column, "" without one.
QString judgement_field(const ImportPlan& plan, const QString& targetColumn);

/// The message of the first required column that is not paired; empty if all are.
QString missingPair(const ImportPlan& plan);

/// Whether a text begins with four digits and "-".
bool passesDateTest(const QString& text);

/// The message of the first row whose date does not begin with four digits and "-"; empty if there is none.
QString judgement_Date(const ImportPlan& plan);

/// The plan's rows as a recordset, for a grid; they are not copied.
RecordsetPtr sourceRecordset(Session& session, ImportPlan& plan);

/// Opens the chosen columns of the target.
RecordsetPtr targetRecordset(Session& session, const ImportPlan& plan);

/// The transfer row by row, in blocks that are one transaction each. Failed statements are passed over. The
/// plan's rows are needed until the last run.
class ImportTransfer {
public:
    ImportTransfer(Session& session, const ImportPlan& plan, RecordsetPtr target);

    /// Transfers rows until the time is up or the block is full, and commits them.
    void run(int milliseconds);
    int done() const { return m_done; }
    bool finished() const { return m_done >= m_rows; }
    /// Whether no statement failed so far.
    bool clean() const { return m_clean; }
    /// Why the rest could not be written at all; empty while it can.
    const QString& fault() const { return m_fault; }

private:
    void transferRow(int row);
    void giveUp(int done, const QString& fault);

    Session& m_session;
    RecordsetPtr m_target;
    ImportRow m_row;
    const int m_rows; // of the source
    int m_done = 0;
    bool m_clean = true;
    QString m_fault;
};

/// Reads the shared cursor on the target again.
void com_return(Session& session, const ImportTarget& target);

/// What follows an import of customers or lines: margins of the lines, then the customers' totals, both
/// reckoned and written by what is stored. Edits that are pending on the other shared cursor stay so.
void refreshAfterImport(Session& session, const ImportTarget& target, const Progress& progress);

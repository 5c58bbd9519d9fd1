#pragma once

#include "data/recount.h"
#include "data/session.h"

/// Which work copies a period is made into.
enum class PeriodCopies {
    All,            // customers, lines, products and the three histories
    ForTheRegister, // customers, lines and products
};

/// Rebuilds the work copies of the rows whose 日期 meets the condition and opens their cursors, recounts the
/// customers' totals on the copies, and leaves the condition as Filter on the cursors of lines and products,
/// and in periodCondition.
/// Errors are passed over statement by statement: a condition that the engine refuses leaves the copies
/// missing and their cursors closed.
void buildPeriodCopies(Session& session, const QString& condition, PeriodCopies copies,
                       const Progress& progress = {});

/// Takes the start and end text of a confirmed period as the period of views and reports, `exact` as its days
/// in words, and turns showSource to its copies as showPeriodSource() does.
void takePeriod(Session& session, const QString& start, const QString& end, const QString& exact);

/// Turns showSource, and the family value that goes with it, from the whole table to its period copy.
void showPeriodSource(Session& session);

/// The years of the order lines, four digits each, ascending; lines without a date apart.
QStringList yearsOfLines(Session& session);

/// Puts the condition on the cursor that showSource names. For customers, lines and products it is sorted by
/// 日期 too, and its first and last date are kept in periodDate1 and periodDate2. Throws RuntimeError.
void filterShownCursor(Session& session, const QString& condition);

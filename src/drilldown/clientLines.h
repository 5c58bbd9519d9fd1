#pragma once

#include "data/session.h"
#include "data/workTable.h"

/// Opens session.tempTable2 on the lines of one customer, from the whole table or the period copy (Lines or
/// PeriodLines), and remembers which. Out: the rows that belong into the work table of the same name. Throws
/// RuntimeError.
RowsOfTable openClientLines(Session& session, const QString& client, ShowSource source);

/// Writes them into tempTable2 and opens the cursor there.
void writeClientLines(Session& session, const RowsOfTable& rows, const Progress& progress = {});

/// A sum of one customer's lines and its share of the whole, in percent with "%"; nothing where the share
/// that stands is to stay (from 100 on).
struct ClientShare {
    QString value;
    std::optional<QString> share;
};
/// What the customer paid, what it left over, and how many pieces, each with its share.
using ClientShares = std::array<ClientShare, 3>;

/// The sums over session.tempTable2, which ends on its last row, beside the totals of all customers of the
/// same source. Throws RuntimeError.
ClientShares statisticA(Session& session);

/// The three sums alone, without shares. Leaves the cursor where it is.
std::array<QString, 3> calculation(const RecordsetPtr& lines);

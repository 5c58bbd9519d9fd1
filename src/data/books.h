#pragma once

#include "data/recount.h"
#include "data/session.h"

/// Opens the shared cursors and sets the process values that a start begins with. Throws RuntimeError.
void openBooks(Session& session);

/// Recounts every customer's totals from the lines, both cursors whole. Cursors that are closed are left
/// alone. Gives the number of customers whose totals changed.
int recountTotals(Session& session, const Progress& progress = {});

#pragma once

#include "data/recount.h"
#include "data/session.h"

#include <memory>

/// Opens the shared cursors and sets the process values that a start begins with. Throws RuntimeError.
void openBooks(Session& session);

/// The recount of every customer's totals from all lines, over cursors of its own: what the shared ones show
/// stays as it is. In: the books are open. Throws RuntimeError, ActionEnded.
std::unique_ptr<TotalsRecount> totalsRecount(Session& session);

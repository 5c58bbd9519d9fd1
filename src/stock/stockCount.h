#pragma once

#include "data/session.h"

/// The stock count: a picture of the sales stock in a table of its own, into which the user types what is
/// really there. Nothing of it goes back into the stock.

/// Whether there is stock to count; takes the products' filter off.
bool canCountStock(Session& session);

/// Makes the count anew from the sales stock, nothing counted yet: one transaction. The one before is gone.
/// Failed statements are passed over: what cannot be dropped stands.
void newStockCount(Session& session);

/// Opens the count for going on: a cursor that is closed, or one that has nothing unsaved. True with rows.
/// Throws TableMissing.
bool continueStockCount(Session& session);

/// Opens the count's cursor where it is closed, and only then. Throws TableMissing.
void openStockCount(Session& session);

/// Writes all that was typed; a failure is passed over. Gives why the disk refused it all, which stays typed
/// then; empty otherwise.
QString saveStockCount(Session& session);

/// Gives up all that was typed and not saved; a failure is passed over.
void cancelStockCount(Session& session);

/// Sets 实物数 to 0 and 亏_盈 to "0" in every row that the cursor shows, position kept: one transaction.
void clearStockCount(Session& session);

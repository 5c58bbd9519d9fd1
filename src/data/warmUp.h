#pragma once

#include "recordset/imageWarmer.h"

/// What a shop worker's first clicks ask of the books, in the order in which they are likely to come.
std::vector<WarmTable> columnsToWarm();

/// What the recount of the customers' totals reads.
std::vector<WarmTable> columnsOfTotals();

#pragma once

#include "suggest/rowSuggestions.h"

#include <functional>

class QWidget;
class RecordBox;

/// Lets a search box offer rows while something is typed into it; the box then holds the number of the row
/// that was taken, and `go` runs with it. The list lies over `form`.
void offerRows(RecordBox* box, QWidget* form, RowSuggestions& rows, std::function<void(RowId row)> go);

#pragma once

#include "data/session.h"

#include <span>

/// What a showSource code stands for: its shared cursor, and which dialogs know it.
struct SourceRow {
    int code;
    RecordsetPtr Session::*cursor;
    bool searched; // by the search dialog
    bool sorted;   // by the sort dialog
};

std::span<const SourceRow> sourceTable();

/// The row of a code, null for a code that stands for no cursor.
const SourceRow* sourceRow(int code);

/// The cursor slot of a code, null for a code that stands for none.
RecordsetPtr* sourceCursor(Session& session, int code);

/// The field list of the search dialog that belongs to the data of a code.
int searchCodeOf(int code);

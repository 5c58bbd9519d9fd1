#pragma once

#include "data/session.h"

#include <span>

/// What a showSource code stands for: its shared cursor, and which dialogs know it.
struct SourceRow {
    ShowSource code;
    RecordsetPtr Session::*cursor;
    qint16 searchCode; // field list of the search dialog
    bool searched;     // by the search dialog
    bool sorted;       // by the sort dialog
};

std::span<const SourceRow> sourceTable();

/// The row of a code, null for a code that stands for no cursor.
const SourceRow* sourceRow(ShowSource code);

/// The cursor slot of a code, null for a code that stands for none.
RecordsetPtr* sourceCursor(Session& session, ShowSource code);

/// The field list of the search dialog that belongs to the data of a code.
qint16 searchCodeOf(ShowSource code);

#pragma once

#include "data/session.h"

#include <QStringList>

#include <functional>
#include <span>

/// What becomes of a search text that breaks the condition.
enum class BrokenSearch {
    FindsNothing, // tried again with its quotes doubled, and then nothing is found
    ToldAsDate,   // the words of the date searches, whatever the reason
};

/// One of the three windows in which a permanent table is edited: everything in which they differ.
struct MaintainedTable {
    const char16_t* view;
    const char16_t* caption;
    const char16_t* title;
    const char16_t* table;
    RecordsetPtr Session::*cursor;
    int code;             // of the sort dialog
    const char16_t* save; // control names and captions of the commands
    const char16_t* saveCaption;
    const char16_t* discard;
    const char16_t* remove;
    const char16_t* removeAll;
    const char16_t* removeAllCaption;
    const char16_t* searchHint;
    const char16_t* searchFields; // a second hint, empty where there is none
    const char16_t* hidden;       // columns, parted by blanks
    const char16_t* sort;         // of the whole table, empty where it has none
    bool sortsAtActivation;
    bool readsAfresh; // "全库显示" reads the table again
    const char16_t* question;
    const char16_t* questionTitle;
    BrokenSearch broken;
    const char16_t* nothingFound; // message for a search without rows, empty where there is none
    QString (*condition)(const QString& text);
    /// Deletes the current row and what goes with it. `yield` runs in long loops.
    void (*removeRow)(Session&, const std::function<void()>& yield);
};

std::span<const MaintainedTable> maintainedTables();

/// Gives up all pending edits; failures are passed over.
void discardEdits(const RecordsetPtr& cursor);
/// Gives up all pending edits, also those of rows that the Filter hides: what leaving the window does.
void dropEdits(const RecordsetPtr& cursor);

/// What goes with the current row, in the words that stand below the question of its deletion.
QString lossOfRow(Session& session, const MaintainedTable& table);

/// Deletes every row of the table and reads it again. What hangs on its rows in other tables stays.
void removeAllRows(Session& session, const MaintainedTable& table);

/// Deletes the current customer and his lines: one transaction. Unsaved edits of the row go first, here and
/// below: whose lines go and what goes back is told by what is stored.
void removeClient(Session& session, const std::function<void()>& yield);

/// Deletes the current line and gives its quantity back to the stock, if other lines are left and the product
/// is there; the customer's totals stay as they are: one transaction.
void removeLine(Session& session, const std::function<void()>& yield);

/// Deletes the current product; histories and lines stay.
void removeProduct(Session& session, const std::function<void()>& yield);

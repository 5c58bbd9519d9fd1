#pragma once

#include "shell/view.h"

#include <QStringView>

#include <optional>
#include <span>

class MDIForm1;

/// Which of the toolbar's commands a view serves.
struct ToolbarRow {
    QStringView view;
    bool served[5]; // in the order of ViewOperation

    bool serves(ViewOperation operation) const { return served[int(operation)]; }
};

std::span<const ToolbarRow> toolbarTable();

/// The row of a view, null for a name outside the table. A name matches in any case: "stockFm2" is StockFm2.
const ToolbarRow* toolbarRow(QStringView view);

/// One button of the toolbar: what it looks like, whose operation it runs, and what a press does.
struct ToolbarButton {
    int index;
    QStringView caption;
    QStringView icon;
    QStringView shortcut;
    std::optional<ViewOperation> operation; // it is on where the view serves this; nothing: always
    void (*press)(MDIForm1&);
};

std::span<const ToolbarButton> toolbarButtons();

#pragma once

#include "controls/dataGrid.h"
#include "controls/moveButtons.h"

class FilterChip;

#include <functional>

/// A table as every window shows one: a grid, its four move buttons and the position text. The buttons move
/// the cursor that is bound, and the text follows it. The form lays the two out.
class RecordPane : public QObject {
    Q_OBJECT

public:
    /// Object names of the parts.
    struct Names {
        const char16_t* grid = u"DataGrid1";
        const char16_t* moves = u"Command1";
        const char16_t* position = u"Text1";
    };

    RecordPane(const Names& names, const QString& emptyText, Prompts& prompts, QWidget* parent);

    DataGrid* const grid;
    MoveButtons* const moves;

    const RecordsetPtr& cursor() const { return grid->recordset(); }
    /// Binds the grid, hides the named columns, and shows the position.
    void bind(const RecordsetPtr& cursor, const QStringList& hidden = {QStringLiteral("流水号")});
    void showPosition();
    /// What the position reads without rows, in place of "0/0".
    void setEmptyPosition(const QString& text) { m_emptyPosition = text; }
    /// Shows beside the position that a Filter is on; its cross runs `showWhole`. Without one a Filter is
    /// what the table is made by, and nobody is told.
    void setWholeShow(std::function<void()> showWhole);
    /// What follows a change of the current row or the view, in place of showPosition().
    void onRow(std::function<void()> handler) { grid->setRowHandler(std::move(handler)); }
    /// What a press of a button does, in place of moving.
    void onMove(std::function<void(int button)> handler) { m_move = std::move(handler); }

private:
    void showFilter();

    std::function<void(int)> m_move;
    FilterChip* m_filter = nullptr;
    QString m_emptyPosition = QStringLiteral("0/0");
};

#include "controls/recordPane.h"

RecordPane::RecordPane(const Names& names, const QString& emptyText, Prompts& prompts, QWidget* parent)
    : QObject(parent)
    , grid(new DataGrid(prompts, parent))
    , moves(new MoveButtons(QString::fromUtf16(names.moves), QString::fromUtf16(names.position), parent))
    , m_move([this](int button) {
        if (cursor())
            moveInRecordset(cursor(), button);
        showPosition();
    }) {
    grid->setObjectName(QString::fromUtf16(names.grid));
    grid->setEmptyText(emptyText);
    connect(moves, &MoveButtons::pressed, this, [this](int button) { m_move(button); });
    onRow([this] { showPosition(); });
}

void RecordPane::bind(const RecordsetPtr& cursor, const QStringList& hidden) {
    grid->bind(cursor, hidden);
    showPosition();
}

void RecordPane::showPosition() {
    moves->setPosition(cursor() && cursor()->hasRows() ? positionText(cursor()) : m_emptyPosition);
}

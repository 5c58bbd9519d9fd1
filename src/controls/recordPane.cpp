#include "controls/recordPane.h"

#include "controls/filterChip.h"

#include <QBoxLayout>

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
    showFilter();
}

void RecordPane::setWholeShow(std::function<void()> showWhole) {
    m_filter = new FilterChip(moves);
    moves->layout()->addWidget(m_filter);
    connect(m_filter, &FilterChip::crossed, this, std::move(showWhole));
    RecordsetModel* rows = &grid->recordsetModel();
    connect(rows, &QAbstractItemModel::modelReset, this, &RecordPane::showFilter);
    connect(rows, &QAbstractItemModel::rowsInserted, this, &RecordPane::showFilter);
    connect(rows, &QAbstractItemModel::rowsRemoved, this, &RecordPane::showFilter);
}

void RecordPane::showFilter() {
    if (!m_filter)
        return;
    if (cursor() && cursor()->isOpen() && !cursor()->Filter().isEmpty())
        m_filter->showCounts(cursor()->RecordCount(), cursor()->wholeCount());
    else
        m_filter->hide();
}

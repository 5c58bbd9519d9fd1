#include "maintenance/importPreview.h"

#include "controls/formParts.h"
#include "recordset/shownText.h"

#include <QAbstractTableModel>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

/// The first rows of a source; its own copy, since the rows themselves go into the run.
class SourceModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    void show(const SourceRows& rows) {
        beginResetModel();
        m_columns = rows.columns;
        m_pairs.clear();
        m_cells.clear();
        for (int row = 0; row < std::min(rows.rowCount(), ImportPreview::kRows); ++row) {
            QStringList cells;
            for (int column = 0; column < m_columns.size(); ++column)
                cells << captionText(rows.cell(row, column));
            m_cells.push_back(cells);
        }
        endResetModel();
    }
    void showPairs(const QStringList& pairs) {
        if (pairs == m_pairs || m_columns.isEmpty())
            return;
        m_pairs = pairs;
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int(m_cells.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int(m_columns.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? m_cells[std::size_t(index.row())][index.column()] : QVariant();
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole || orientation == Qt::Vertical)
            return QAbstractTableModel::headerData(section, orientation, role);
        const QString pair = m_pairs.value(section);
        const QString name = captionText(m_columns.value(section));
        return pair.isEmpty() ? name : name + QStringLiteral(" → ") + pair;
    }

private:
    QStringList m_columns;
    QStringList m_pairs;
    std::vector<QStringList> m_cells;
};

/// What became of the rows on trial: why, and the cells as the target would show them.
class TrialModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    void show(std::shared_ptr<ImportTrial> trial, bool onlyRemarkable) {
        beginResetModel();
        m_trial = std::move(trial);
        m_onlyRemarkable = onlyRemarkable;
        m_made = -1;
        endResetModel();
    }
    const std::shared_ptr<ImportTrial>& trial() const { return m_trial; }

    int rowCount(const QModelIndex& parent = {}) const override {
        if (!m_trial || parent.isValid())
            return 0;
        return m_onlyRemarkable ? int(m_trial->remarkable().size()) : m_trial->done();
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return m_trial && !parent.isValid() ? int(m_trial->columns().size()) + 1 : 0;
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const int row = sourceRow(index.row());
        if (role == Qt::BackgroundRole)
            return colour(m_trial->fate(row));
        if (role != Qt::DisplayRole && !(role == Qt::ToolTipRole && index.column() == 0))
            return {};
        return index.column() == 0 ? m_trial->remark(row) : made(row)[index.column() - 1];
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole || !m_trial)
            return {};
        if (orientation == Qt::Vertical)
            return sourceRow(section) + 1;
        return section == 0 ? QStringLiteral("说明") : m_trial->columns()[section - 1];
    }

private:
    int sourceRow(int row) const { return m_onlyRemarkable ? m_trial->remarkable()[std::size_t(row)] : row; }
    static QVariant colour(ImportTrial::Fate fate) {
        switch (fate) {
        case ImportTrial::Fate::Refused:
            return QColor(0xFB, 0xDD, 0xDA);
        case ImportTrial::Fate::Changed:
            return QColor(0xFF, 0xF3, 0xCF);
        default:
            return {};
        }
    }
    /// A view asks for the cells of one row after each other.
    const QStringList& made(int row) const {
        if (std::exchange(m_made, row) != row)
            m_cells = m_trial->become(row);
        return m_cells;
    }

    std::shared_ptr<ImportTrial> m_trial;
    bool m_onlyRemarkable = false;
    mutable int m_made = -1;
    mutable QStringList m_cells;
};

ImportPreview::ImportPreview(QWidget* parent)
    : QTabWidget(parent)
    , m_source(new SourceModel(this))
    , m_trial(new TrialModel(this)) {
    setObjectName(QStringLiteral("importTabs"));
    auto* source = new QWidget(this);
    m_sourceTable = addTable(new QVBoxLayout(source), QStringLiteral("sourcePreview"),
                             QStringLiteral("来源的前 %1 行").arg(kRows));
    m_sourceTable->setModel(m_source);
    addTab(source, QStringLiteral("来源的前 %1 行").arg(kRows));
    auto* trial = new QWidget(this);
    auto* column = new QVBoxLayout(trial);
    auto* top = new QHBoxLayout;
    m_summary = makeLabel(QStringLiteral("trialSummary"), {}, trial);
    m_remarkable = new QCheckBox(QStringLiteral("只列有改动和不合格的行"), trial);
    m_remarkable->setObjectName(QStringLiteral("onlyRemarkable"));
    connect(m_remarkable, &QCheckBox::toggled, this,
            [this](bool only) { m_trial->show(m_trial->trial(), only); });
    top->addWidget(m_summary, 1);
    top->addWidget(m_remarkable);
    column->addLayout(top);
    m_trialTable = addTable(column, QStringLiteral("trialTable"), QStringLiteral("试导入的结果"));
    m_trialTable->setModel(m_trial);
    addTab(trial, QStringLiteral("试导入的结果"));
    showTrial(nullptr);
}

QTableView* ImportPreview::addTable(QLayout* column, const QString& name, const QString& meaning) {
    column->setContentsMargins(4, 4, 4, 4);
    auto* table = new QTableView(this);
    table->setObjectName(name);
    table->setAccessibleName(meaning);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->horizontalHeader()->setMaximumSectionSize(320);
    table->horizontalHeader()->setResizeContentsPrecision(kRows); // rows of a trial are made when asked for
    column->addWidget(table);
    return table;
}

void ImportPreview::showSource(const SourceRows& rows) {
    m_source->show(rows);
    m_sourceTable->resizeColumnsToContents();
    showTrial(nullptr);
}

void ImportPreview::showPairs(const QStringList& pairs) {
    m_source->showPairs(pairs);
    m_sourceTable->resizeColumnsToContents();
}

void ImportPreview::showTrial(std::shared_ptr<ImportTrial> trial) {
    const bool shown = trial != nullptr;
    m_trial->show(std::move(trial), m_remarkable->isChecked());
    m_summary->setText(shown ? m_trial->trial()->summary() : QString());
    setTabEnabled(1, shown);
    setCurrentIndex(shown ? 1 : 0);
    if (shown)
        m_trialTable->resizeColumnsToContents();
}

#pragma once

#include "maintenance/importTrial.h"

#include <QTabWidget>

#include <memory>

class QCheckBox;
class QLabel;
class QTableView;
class SourceModel;
class TrialModel;

/// The first rows of a source, with the columns that they would go into, and behind them what a trial of the
/// import found.
class ImportPreview : public QTabWidget {
    Q_OBJECT

public:
    static constexpr int kRows = 20; // of the source

    explicit ImportPreview(QWidget* parent);

    void showSource(const SourceRows& rows);
    /// `pairs`: the target columns of the source's, in their order; empty where a column has none.
    void showPairs(const QStringList& pairs);
    /// Shows a trial that has run. Null: none any more.
    void showTrial(std::shared_ptr<ImportTrial> trial);

private:
    QTableView* addTable(QLayout* column, const QString& name, const QString& meaning);

    SourceModel* m_source = nullptr;
    TrialModel* m_trial = nullptr;
    QTableView* m_sourceTable = nullptr;
    QTableView* m_trialTable = nullptr;
    QLabel* m_summary = nullptr;
    QCheckBox* m_remarkable = nullptr;
};

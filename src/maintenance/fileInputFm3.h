#pragma once

#include "maintenance/importTransfer.h"
#include "shell/view.h"
#include "shell/viewHost.h"

class DataGrid;
class MoveButtons;
class Prompts;
class QLabel;
class QProgressBar;

/// Runs an import as soon as it is shown, source and target side by side. While it runs its grids can be
/// paged; closing it stops the run. The plan gives up its rows when the window closes.
class FileInputFm3 : public TopWindow {
    Q_OBJECT

public:
    FileInputFm3(ImportPlan& plan, ViewHost& host, Prompts& prompts);

protected:
    void wayOut() override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* buildSide(const QString& gridName, const QString& labelName, const QString& caption,
                       const QString& buttons, const QString& positionName, DataGrid*& grid,
                       MoveButtons*& moves, const RecordsetPtr& recordset);
    void Com_transfer();
    void transferRows();
    void tellEnd(const ImportTransfer& transfer);
    void showStep(const ImportTransfer& transfer);
    void showPositions();
    void refresh();

    ImportPlan& m_plan;
    Session& m_session;
    Prompts& m_prompts;
    RecordsetPtr importSource;
    RecordsetPtr m_target;
    DataGrid* m_sourceGrid = nullptr;
    DataGrid* m_targetGrid = nullptr;
    MoveButtons* m_sourceMoves = nullptr;
    MoveButtons* m_targetMoves = nullptr;
    QWidget* m_note = nullptr;
    QLabel* m_noteText = nullptr;
    QProgressBar* m_progress = nullptr;
    bool m_started = false;
    bool m_running = false;
    bool m_stop = false; // the user closed the window during the run
};

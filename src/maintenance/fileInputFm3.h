#pragma once

#include "maintenance/importTransfer.h"
#include "shell/view.h"
#include "shell/viewHost.h"

class Prompts;
class QLabel;
class QProgressBar;
class QPushButton;
class RecordPane;

/// Runs an import as soon as it is shown, source and target side by side. While it runs its grids can be
/// paged; closing it stops the run. The plan's rows go with the end of the run; those that the grid shows
/// when what follows it begins.
class FileInputFm3 : public TopWindow {
    Q_OBJECT

public:
    FileInputFm3(ImportPlan& plan, ViewHost& host, Prompts& prompts);

protected:
    void wayOut() override;
    void showEvent(QShowEvent* event) override;

private:
    QLayout* layOutSide(RecordPane& side, const QString& labelName, const QString& caption);
    void Com_transfer();
    void transferRows();
    void tellEnd(const ImportTransfer& transfer);
    void showStep(const ImportTransfer& transfer);
    void showPositions();
    void refresh();
    void stop();
    QString targetName() const;
    /// Lets go of the rows that came in.
    void giveUpSource();

    ImportPlan& m_plan;
    Session& m_session;
    Prompts& m_prompts;
    RecordsetPtr importSource;
    RecordsetPtr m_target;
    RecordPane* m_sourceSide = nullptr;
    RecordPane* m_targetSide = nullptr;
    QWidget* m_note = nullptr;
    QLabel* m_noteText = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_stopButton = nullptr;
    bool m_started = false;
    bool m_running = false;
    bool m_stop = false;    // the user closed the window during the run
    bool m_stopped = false; // the user stopped the run
};

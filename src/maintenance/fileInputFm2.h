#pragma once

#include "maintenance/importTransfer.h"
#include "shell/view.h"
#include "shell/viewHost.h"

class ImportPreview;
class Prompts;
class QLabel;
class QListWidget;
class QPushButton;

/// Opens a foreign file, takes a table of it, pairs its columns with those of the target, and starts the run.
class FileInputFm2 : public TopWindow {
    Q_OBJECT

public:
    /// `plan` is what the run works by; this window fills it.
    FileInputFm2(ImportPlan& plan, ViewHost& host, Prompts& prompts);

    /// Turns to the target of the menu command that was chosen last; the table that was taken stays taken.
    void shownAgain() override;

private:
    QLayout* buildSource();
    QLayout* buildPairs();
    QLayout* buildBottom();
    QLayout* buildPair(const QString& caption, const QString& buttons, QListWidget*& left,
                       const QString& leftName, QListWidget*& right, const QString& rightName);
    void openSource(int index);
    /// Reads the table that is chosen. False where none is.
    bool Com_confirmation();
    /// Lists the columns of the table that was read and of the target, none paired; nothing without rows.
    void setup_nameList();
    void takeTable();
    /// Pairs every column that is not paired yet with the one of its name.
    void pairSameNames();
    /// The pairs are others now, or the rows.
    void pairsChanged();
    /// Asked before a run or a trial; tells the user what is wrong with the pairs.
    bool pairsStand();
    void tryRun();
    void startRun();

    ImportPlan& m_plan;
    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    std::unique_ptr<ImportSource> m_source;
    SourceRows m_rows; // of the table that was taken
    bool sourceOpened = false;
    QListWidget* m_tables = nullptr;
    QListWidget* m_sourceLeft = nullptr;
    QListWidget* m_sourceRight = nullptr;
    QListWidget* m_targetLeft = nullptr;
    QListWidget* m_targetRight = nullptr;
    QPushButton* m_take = nullptr;
    QWidget* m_note = nullptr;
    QLabel* m_noteText = nullptr;
    QLabel* m_hint = nullptr;
    ImportPreview* m_preview = nullptr;
};

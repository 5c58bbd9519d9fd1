#pragma once

#include "maintenance/tableMaintenance.h"
#include "shell/view.h"
#include "shell/viewHost.h"

class Prompts;
class QLineEdit;
class QPushButton;
class RecordPane;

/// The rows of a permanent table, edited in the grid and saved together.
class MaintainView : public View {
    Q_OBJECT

public:
    MaintainView(const MaintainedTable& table, ViewHost& host, Prompts& prompts);

    void activate() override;
    void leave() override;
    void data_order();
    bool readyToSort();
    void data_whole_show();

private:
    QLayout* buildSearch();
    QLayout* buildCommands();
    QPushButton* addCommand(const char16_t* name, const char16_t* caption, void (MaintainView::*action)());
    QPushButton* command(const char16_t* name) const;
    const RecordsetPtr& cursor() const { return m_session.*m_table.cursor; }
    void bind();
    void showUnsaved();
    void search();
    bool applySearch(const QString& text);
    void save();
    void discard();
    void removeRow();
    void removeAll();

    const MaintainedTable& m_table;
    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    RecordPane* m_pane = nullptr;
    QLineEdit* m_search = nullptr;
};

#pragma once

#include "analysis/callList.h"
#include "shell/statisticWindow.h"
#include "shell/viewHost.h"

class Prompts;
class QLabel;
class RecordPane;

/// The customers whom the shop is to call, beside the register, which stays in use: the list is what the
/// books held when it was asked for.
class CallListWindow : public StatisticWindow {
    Q_OBJECT

public:
    CallListWindow(const CallKind& kind, ViewHost& host, Prompts& prompts);

    void shownAgain() override { list(); }

private:
    QLayout* buildChoice();
    void list();
    void print();

    const CallKind& m_kind;
    ViewHost& m_host;
    int m_days; // of the choice
    QWidgetList m_choice;
    QLabel* m_head = nullptr;
    QLabel* m_scope = nullptr;
    RecordPane* m_pane;
};

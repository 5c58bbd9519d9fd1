#pragma once

#include "analysis/distribution.h"
#include "analysis/statisticWindow.h"
#include "shell/viewHost.h"

class Prompts;
class QLineEdit;
class RecordPane;

/// How the customers are spread over regions or industries: the number and the share of each.
class DistributionWindow : public StatisticWindow {
    Q_OBJECT

public:
    DistributionWindow(const Distribution& distribution, ViewHost& host, Prompts& prompts);

    void shownAgain() override { activate(); }

private:
    void activate();
    void print();

    const Distribution& m_distribution;
    ViewHost& m_host;
    RecordPane* m_pane;
    QLineEdit* m_total;
    RecordsetPtr m_rows;
};

#pragma once

#include "analysis/distribution.h"
#include "shell/statisticWindow.h"
#include "shell/viewHost.h"

class Prompts;
class QLineEdit;
class RecordPane;

/// Counts, shows the window, and writes the work table behind what is seen.
void showDistribution(const Distribution& distribution, ViewHost& host);

/// How the customers are spread over regions or industries: the number and the share of each.
class DistributionWindow : public StatisticWindow {
    Q_OBJECT

public:
    DistributionWindow(const Distribution& distribution, ViewHost& host, Prompts& prompts);

    void shownAgain() override { activate(); }
    /// Writes what is shown into the work table, and shows it from there.
    void keep();

private:
    void activate();
    void print();

    const Distribution& m_distribution;
    ViewHost& m_host;
    RecordPane* m_pane;
    QLineEdit* m_total;
    DistributionCount m_count;
    RecordsetPtr m_rows;
};

#pragma once

#include "analysis/frequency.h"
#include "shell/statisticWindow.h"
#include "shell/viewHost.h"

class BarChart;
class DataGrid;
class Prompts;
class QLabel;

/// How many customers of the latest month come back after how many months. A click on an interval shows its
/// customers in the main window.
class buy_FrequenceFm1 : public StatisticWindow {
    Q_OBJECT

public:
    buy_FrequenceFm1(ViewHost& host, Prompts& prompts);

    void shownAgain() override { load(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void load();
    void showClients(int interval);

    ViewHost& m_host;
    Session& m_session;
    QLabel* m_latest;
    DataGrid* m_grid;
    BarChart* m_chart;
};

/// Counts the frequency, shows its window, and writes the work tables behind what is seen.
void showFrequency(ViewHost& host);

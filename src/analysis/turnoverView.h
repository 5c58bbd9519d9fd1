#pragma once

#include "analysis/turnover.h"
#include "shell/view.h"
#include "shell/viewHost.h"

class BarChart;
class Prompts;
class QLabel;
class RecordPane;

/// Turnover by month, quarter, half-year or year: a table of all, and a chart of the last 24.
class saleroom_statistic : public View {
    Q_OBJECT

public:
    saleroom_statistic(ViewHost& host, Prompts& prompts);

    void activate() override { Fm_Activate_saleroom_statistic(); }
    void data_print();

private:
    void Fm_Activate_saleroom_statistic();

    ViewHost& m_host;
    Session& m_session;
    QLabel* m_title;
    RecordPane* m_pane;
    BarChart* m_chart;
};

/// Counts, shows the view, and writes the rows into the work table behind what is seen.
void showTurnover(const TurnoverStatistic& statistic, ViewHost& host, Prompts& prompts);

#pragma once

#include "data/cursorMoves.h"
#include "drilldown/orderStatistic.h"
#include "shell/statisticWindow.h"
#include "shell/viewHost.h"

class Prompts;
class QLabel;
class RecordPane;

/// What each order comes to, in a window that stands in the main window's place.
class statisticFm5 : public StatisticWindow {
    Q_OBJECT

public:
    statisticFm5(ViewHost& host, Prompts& prompts);

    bool setsShowSource() const override { return true; }
    void shownAgain() override { Fm_Activate_statisticFm5(); }

    /// Counts the orders of the sales that are on show, shows them, and writes the work table behind what is
    /// seen.
    void Fm_Activate_statisticFm5();

private:
    void print();
    /// The choice of data that the sales show behind this window.
    ShowSource source() const;
    /// First and last date of the lines that are counted, as the sales behind this window have them.
    DateSpan dates(ShowSource code) const;
    void show(const OrderStatistic& statistic);

    ViewHost& m_host;
    Session& m_session;
    RecordPane* m_pane;
    DateSpan m_dates; // of the sales that were counted
    QString m_period; // their days in words, empty for the whole
    QLabel* m_figures[3] = {};
};

/// Opens the statistic on the sales that are on show; nothing without any.
void showOrderStatistic(ViewHost& host);

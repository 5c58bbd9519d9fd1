#pragma once

#include "drilldown/productSales.h"
#include "shell/statisticWindow.h"
#include "shell/viewHost.h"

class Prompts;
class QLabel;
class QLayout;
class RecordPane;

/// The order lines in a window beside the customer register, with a toolbar of its own.
class goodsSalesFm1 : public StatisticWindow {
    Q_OBJECT

public:
    goodsSalesFm1(ViewHost& host, Prompts& prompts);

    bool setsShowSource() const override { return true; }
    void shownAgain() override { Fm_Activate_goodsSalesFm1(); }

private:
    QLayout* buildToolbar();
    void Fm_Activate_goodsSalesFm1();
    void calculation_L2_L4();
    ShowSource source() const { return salesSource(m_session); }
    const RecordsetPtr& lines() const;
    /// Binds the grid again where its cursor has been opened anew since.
    void follow();
    /// Goes to a view of the main window, which comes to the front beside this one.
    void goTo(const std::function<void()>& show);
    void client_show();
    void show_sales();
    void whole_show();
    void search();
    void order();
    void print();

    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    RecordPane* m_pane;
    QLabel* m_count = nullptr;
    QLabel* m_turnover = nullptr;
};

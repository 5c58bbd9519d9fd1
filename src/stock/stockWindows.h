#pragma once

#include "shell/view.h"
#include "shell/viewHost.h"
#include "stock/stockDisplay.h"

class Prompts;
class QLabel;
class QLineEdit;
class QListWidget;
class RecordPane;
class StockSumsBox;

/// The products at or below the safety stock.
class StockFm2 : public View {
    Q_OBJECT

public:
    StockFm2(ViewHost& host, Prompts& prompts);

    void activate() override;
    ShowSource source() const override { return stockSource(m_session); }
    bool shows(ShowSource code) const override { return m_shown == code; }
    void data_print();

private:
    RecordsetPtr cursor() const;
    void changeThreshold(int by);

    ViewHost& m_host;
    Session& m_session;
    RecordPane* m_pane = nullptr;
    QLineEdit* m_threshold = nullptr;
    ShowSource m_shown = ShowSource::None;
};

/// One product alone, a line a column.
class stockFm3 : public TopWindow {
    Q_OBJECT

public:
    explicit stockFm3(ViewHost& host);

    void shownAgain() override { fill(); }

protected:
    bool event(QEvent* event) override;

private:
    void fill();

    Session& m_session;
    QListWidget* m_list = nullptr;
    QLabel* m_quantity = nullptr;
    QLabel* m_name = nullptr;
};

/// The sales stock as a statistic in a window of its own, always over the whole table.
class statisticFm4 : public TopWindow {
    Q_OBJECT

public:
    statisticFm4(ViewHost& host, Prompts& prompts);
    bool setsShowSource() const override { return true; }
    bool prints() const override { return true; }
    bool closesForPurchase() const override { return true; }

protected:
    bool event(QEvent* event) override;

private:
    QLayout* buildToolbar();
    void Fm_Activate_statisticFm4();
    void select_time();
    void whole_show();
    void print();

    ViewHost& m_host;
    Session& m_session;
    RecordPane* m_pane = nullptr;
    QLineEdit* m_first = nullptr;
    QLineEdit* m_last = nullptr;
    StockSumsBox* m_sums = nullptr;
};

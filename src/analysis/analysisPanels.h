#pragma once

#include "shell/displayView.h"

class IndicatorCard;
class QLabel;

/// The indicators of the customers that are evaluated, each with its share of the whole, on a card. Labels
/// that nobody sees hold the figures for the card and for the report.
class EvaluationPanel : public DisplayPanel {
    Q_OBJECT

public:
    EvaluationPanel(ViewHost& host, Prompts& prompts);

    void sourceShown(const RecordsetPtr& cursor, ShowSource code) override;
    QList<QAction*> gridActions() override { return {m_stock}; }

private:
    void statistic_show();

    Session& m_session;
    DateSpan m_dates; // of the customers shown, also while a cut of them is
    QLabel* m_values[4] = {};
    QLabel* m_shares[4] = {};
    QAction* m_stock;
    IndicatorCard* m_card;
};

/// The sums over all salespeople, and the way to the customers of one.
class ClerkPanel : public DisplayPanel {
    Q_OBJECT

public:
    ClerkPanel(ViewHost& host, Prompts& prompts);

    void sourceShown(const RecordsetPtr& cursor, ShowSource code) override;

private:
    ViewHost& m_host;
    QLabel* m_turnover = nullptr;
    QLabel* m_clients = nullptr;
};

/// The print command of the customers of one interval of purchase.
class IntervalClientsPanel : public DisplayPanel {
    Q_OBJECT

public:
    IntervalClientsPanel(ViewHost& host, Prompts& prompts);

    QList<QAction*> gridActions() override { return {m_print}; }

private:
    QAction* m_print;
};

/// Shows the customers of the salesperson in the current row of the statistic; nothing without one.
void showClerkClients(ViewHost& host);

#pragma once

#include "drilldown/clientLines.h"
#include "shell/displayView.h"

class IndicatorCard;
class QLabel;

/// Name, contact and sums of one customer, each sum with its share of all customers' total.
class ClientLinesPanel : public DisplayPanel {
    Q_OBJECT

public:
    ClientLinesPanel(ViewHost& host, Prompts& prompts);

    void sourceShown(const RecordsetPtr& cursor, ShowSource code) override;
    void aboutToPrint(const QString& report) override;

private:
    Session& m_session;
    QString m_client; // whose lines are shown
    QLabel* m_values[3] = {};
    QLabel* m_shares[3] = {};
    QLabel* m_company;
    QLabel* m_contact;
};

/// The same sums and shares on a card, with the customer's number and the dates of the evaluation. Labels
/// that nobody sees hold the figures for the card and for the report.
class ClientStatisticPanel : public DisplayPanel {
    Q_OBJECT

public:
    ClientStatisticPanel(ViewHost& host, Prompts& prompts);

    void sourceShown(const RecordsetPtr& cursor, ShowSource code) override;

private:
    void statistic_show();

    Session& m_session;
    QLabel* m_values[3] = {};
    QLabel* m_shares[3] = {};
    IndicatorCard* m_card;
};

/// Whose order is shown, and what it comes to.
class OrderPanel : public DisplayPanel {
    Q_OBJECT

public:
    OrderPanel(ViewHost& host, Prompts& prompts);

    void sourceShown(const RecordsetPtr& cursor, ShowSource code) override;
    void rowChanged(const RecordsetPtr& cursor, bool chosen) override;
    void aboutToPrint(const QString& report) override;
    void left(const RecordsetPtr& cursor) override;

private:
    Session& m_session;
    QString m_date;   // of the order shown
    QString m_filter; // that puts its lines on the cursor
    QLabel* m_company;
    QLabel* m_contact;
    QLabel* m_order;
    QLabel* m_count;
    QLabel* m_amount;
};

/// The ways from a customer in the list of all to his purchases and his orders.
class ClientWaysPanel : public DisplayPanel {
    Q_OBJECT

public:
    ClientWaysPanel(ViewHost& host, Prompts& prompts);
};

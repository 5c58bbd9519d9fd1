#pragma once

#include "drilldown/saleFigures.h"
#include "shell/displayView.h"

class QAction;
class QLabel;

/// The indicators of all sold goods, and the ways to one product, its buyers and the orders.
class SalesPanel : public DisplayPanel {
    Q_OBJECT

public:
    SalesPanel(ViewHost& host, Prompts& prompts);

    void sourceShown(const RecordsetPtr& cursor, ShowSource code) override;
    void rowChanged(const RecordsetPtr& cursor, bool chosen) override;
    void sorted(const RecordsetPtr& cursor) override;
    QList<QAction*> gridActions() override { return {m_print}; }
    void aboutToPrint(const QString& report) override;

private:
    QLayout* buildCommands();
    void setFigures(const SaleFigures& figures);
    /// The figures of what is shown: of the whole table, or of the lines that a Filter leaves.
    void count();
    /// The same under the title of all goods.
    void showWhole();
    void singleCount();
    void printList();
    /// The cursor of the source that the view shows.
    const RecordsetPtr& shown() const;

    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    QLabel* m_title;
    QLabel* m_turnover;
    QLabel* m_margin;
    QLabel* m_quantity;
    QLabel* m_clients;
    QAction* m_print;
    QString m_filter; // of the lines when they were counted
    ShowSource m_source = ShowSource::Lines;
};

/// Number, name and sums of the product whose sales are shown.
class ProductLinesPanel : public DisplayPanel {
    Q_OBJECT

public:
    ProductLinesPanel(ViewHost& host, Prompts& prompts);

    void sourceShown(const RecordsetPtr& cursor, ShowSource code) override;
    void aboutToPrint(const QString& report) override;

private:
    Session& m_session;
    QLabel* m_number;
    QLabel* m_name;
    QLabel* m_count;
    QLabel* m_amount;
};

/// Number and name of the product whose buyers are shown.
class ProductClientsPanel : public DisplayPanel {
    Q_OBJECT

public:
    ProductClientsPanel(ViewHost& host, Prompts& prompts);

    void sourceShown(const RecordsetPtr& cursor, ShowSource code) override;

private:
    Session& m_session;
    QLabel* m_number;
    QLabel* m_name;
};

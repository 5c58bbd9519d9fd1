#pragma once

#include "sales/orderMaintenance.h"
#include "shell/view.h"
#include "shell/viewHost.h"

class DiscountTyping;
class Prompts;
class QLabel;
class QLineEdit;
class QPushButton;
class RecordBoxes;
class RecordPane;
class UpDown;

/// Changes finished orders: rewrites or deletes a line, deletes an order, and puts the stock right each time.
class paybackFm1 : public View {
    Q_OBJECT

public:
    paybackFm1(ViewHost& host, Prompts& prompts);

    void load() override;
    void activate() override {}
    bool loadActivates() const override { return true; }

private:
    enum FillGuard : qint16 { Typing = 1, Filling = 2 };

    // Building.
    QWidget* buildOrders();
    QWidget* buildLines();
    QWidget* buildLine();
    QLayout* buildBoxes(QWidget* panel);
    QLayout* buildTotals();
    QPushButton* addButton(const char* name, const QString& caption, void (paybackFm1::*action)());

    // Commands.
    void Fm_Activate_paybackFm1();
    void chooseOrder();
    void chooseLine();
    void search();
    void save();
    void deleteLine();
    void deleteOrder();
    void step(int box, int by, double most);
    void boxChanged(int index);

    bool stock_check();
    /// Cost of a piece of the current line, 0 without one.
    double unitCost() const;
    bool canChange() const;
    void bindLines();
    void showLine();
    void showTotals();
    /// Shows whose order was chosen, its day and its amount.
    void showFacts(const BasketTotals& totals);
    /// Where the order list stands on another order than the chosen one, the commands that change the chosen
    /// one name it.
    void nameChosenOrder();
    void showBought();
    void showPositions();
    void linesMoved();

    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    OrderMaintenance m_book;
    RecordPane* m_orders = nullptr;
    RecordPane* m_lines = nullptr;
    RecordBoxes* m_boxes = nullptr;
    DiscountTyping* m_typing = nullptr; // of the discount box
    std::vector<UpDown*> m_steppers;
    QLineEdit* m_search = nullptr;
    QLineEdit* m_bought = nullptr;
    QLabel* m_order = nullptr;
    QLabel* m_facts = nullptr;
    QList<QPushButton*> m_changing; // the commands on the chosen order
    QString m_chosen;               // its number
    QLabel* m_quantity = nullptr;
    QLabel* m_paid = nullptr;
    qint16 fillGuard = Typing;
    qint16 lineEdited = 0;
    bool m_deleting = false; // while an order goes, no other can be chosen
};

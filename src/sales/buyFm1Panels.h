#pragma once

#include "sales/lineBoxes.h"

#include <QGroupBox>
#include <QWidget>

class BasketList;
class DiscountTyping;
class Prompts;
class QLabel;
class QLineEdit;
class QPushButton;
class RecordBox;
class RecordBoxes;
class RecordPane;

/// The product side of the purchase window: grid, position, search. Widgets alone.
class ProductPanel : public QGroupBox {
    Q_OBJECT

public:
    ProductPanel(Prompts& prompts, QWidget* parent);

    RecordPane* pane;
    RecordBox* search;
    QPushButton* find;
    QPushButton* whole;
};

/// The line frame: the 14 boxes of a line, its totals and commands. Widgets alone.
class LinePanel : public QGroupBox {
    Q_OBJECT

public:
    explicit LinePanel(QWidget* parent);

    RecordBoxes* boxes;
    QLineEdit* bought; // what the customer has bought of the product before
    UpDown* quantity;
    UpDown* discount;
    DiscountTyping* typing;    // of the discount box
    QLabel* quantityTotals[2]; // Label12, Label13
    QLabel* paidTotals[2];     // Label14, Label15
    QLabel* hint;
    BasketList* list; // the basket beside the line
    QPushButton* confirm;
    QPushButton* cancel;
    QPushButton* browse;
    QPushButton* settle;
    QPushButton* back;

private:
    QLayout* buildBoxes();
    QWidget* buildTotals(int which);
};

/// The basket frame. Widgets alone.
class BasketPanel : public QGroupBox {
    Q_OBJECT

public:
    BasketPanel(Prompts& prompts, QWidget* parent);

    RecordPane* pane;
    QPushButton* save;
    QPushButton* remove;
    QPushButton* clear;
    QPushButton* back;
    QLabel* quantityTotal; // Label9
    QLabel* paidTotal;     // Label11
    QLabel* date;          // Label17
    QLabel* order;         // Label19
};

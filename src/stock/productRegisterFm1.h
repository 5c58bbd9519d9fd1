#pragma once

#include "shell/view.h"
#include "shell/viewHost.h"

#include <QTimer>

#include <map>

class BlinkingLabel;
class Prompts;
class QLabel;
class RecordBox;
class QPushButton;
class RecordBoxes;
class RecordPane;

/// Stock-in: the one place where a product is created and its stock raised by hand, and the way to the stock
/// views.
class productRegisterFm1 : public View {
    Q_OBJECT

public:
    productRegisterFm1(ViewHost& host, Prompts& prompts);

    void load() override;
    void activate() override;

private:
    enum EditState : qint16 { Browsing = 0, AddingProduct = 1, AddingStock = 2 };

    // Building.
    QWidget* buildGridSide();
    QWidget* buildPanel();
    QLayout* buildFigures();
    QLayout* buildGateway();
    void connectCommands();
    QPushButton* command(int number) const { return m_commands.at(number); }

    // The commands, by their buttons.
    void move(int button);
    void search();
    void showAll();
    void addNextProduct();
    void save();
    void cancel();
    void deleteCurrent();
    void addToStock();
    void openView(int number);
    /// Whether what the view behind a button needs is there; makes the table ready for it.

    // State.
    void startAddingProduct();
    void bookStock();
    /// Shows a product or an empty form: nothing of it is unsaved.
    void fillBoxes(const QStringList& texts);
    /// Says what was done with the product in the boxes.
    void saySaved(const QString& words);
    void showRow();
    void rowChanged();
    void bindGrid();
    void Label7_show();
    void Label7_Clear();
    /// Where no product is left to show, the three figures are nobody's.
    void emptyFiguresWithoutRow();
    void return_A();
    void enterState(EditState state);
    bool refuseWhile(EditState state, const QString& message);
    /// Saves a new product; false where the routine ends with the state unchanged.
    bool saveProduct(const QString& failure, bool yields, bool& written);

    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    RecordPane* m_pane = nullptr;
    RecordBoxes* m_boxes = nullptr;
    RecordBox* m_search = nullptr;
    QLabel* m_heading = nullptr;
    QLabel* m_figures[3] = {};
    BlinkingLabel* m_productFlag = nullptr;
    QLabel* m_stockFlag = nullptr;
    std::map<int, QPushButton*> m_commands;
    QTimer m_steadyTimer; // declared for the stock flag and never firing: that flag shows steady
    EditState editState = Browsing;
    qint16 changeMark = 1;
    qint16 displayMode = 1;
};

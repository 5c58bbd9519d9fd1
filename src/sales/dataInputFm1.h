#pragma once

#include "shell/view.h"
#include "shell/viewHost.h"

class BlinkingLabel;
class Prompts;
class QGroupBox;
class QPushButton;
class RecordBox;
class RecordBoxes;
class RecordPane;

/// The customer register: the customer table and one customer in a panel; the way into the purchase.
class dataInputFm1 : public View {
    Q_OBJECT

public:
    dataInputFm1(ViewHost& host, Prompts& prompts);

    void load() override;
    void totalsPutRight() override;
    ShowSource source() const override { return m_session.clientShowSource; }
    /// Fm_Activate_dataInputFm1.
    void activate() override { Fm_Activate_dataInputFm1(); }
    void Fm_Activate_dataInputFm1();

private:
    // Building.
    QWidget* buildGridSide();
    QWidget* buildPanel();
    // The entries of the grid's context menu.
    void showSales();
    void printClients();
    void printOrder();
    void showBirthdays();
    void showLapsed();
    void connectCommands();
    void bindKeys();

    // The commands, by their buttons.
    void move(int button);
    void search();
    /// Enter in the search box: searches, and buys where the search before has left one customer.
    void searchEntered();
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showAll();
    void addNext();
    void save();
    void cancel();
    void buy();
    void deleteCurrent();

    // State.
    void record_Clear();
    void showRecord();
    void rowChosen();
    void rowChanged();
    /// The two totals of the customer in the boxes as his row has them, whatever else was typed.
    void showTotals();
    void bindGrid();
    void beginAdding();
    void endAdding();
    void saveAdded();
    void saveShown();
    /// Says which customer the boxes were saved as.
    void saySaved();
    /// Whether the user has changed what the boxes show.
    void setChanged(bool changed);
    void afterPurchase();
    bool refuseWhileAdding(const QString& message);

    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    RecordPane* m_pane = nullptr;
    RecordBoxes* m_boxes = nullptr;
    RecordBox* m_search = nullptr;
    QGroupBox* m_gridFrame = nullptr;
    QGroupBox* m_panel = nullptr;
    BlinkingLabel* m_addingLabel = nullptr;
    QPushButton* m_find = nullptr;
    QPushButton* m_whole = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_save = nullptr;
    QPushButton* m_cancel = nullptr;
    QPushButton* m_buy = nullptr;
    QPushButton* m_delete = nullptr;
    bool m_adding = false;
    std::optional<RowId> m_shownRow; // whose customer the boxes show
    bool m_changed = false;
    QString m_searched;        // the text whose hits are shown
    bool m_purchasing = false; // while the purchase is open the boxes keep what the user has typed
};

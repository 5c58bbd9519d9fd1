#pragma once

#include "shell/view.h"
#include "shell/viewHost.h"
#include "stock/stockOut.h"

class DateBoxes;
class Prompts;
class QLabel;
class QLineEdit;
class QPushButton;
class RecordBoxes;
class RecordPane;

/// Shows the sales stock and the current product, and opens the dialog of a movement for it.
class StockOutChooser : public View {
    Q_OBJECT

public:
    StockOutChooser(const StockOut& road, ViewHost& host, Prompts& prompts);

    void load() override;
    void activate() override;
    void data_order();
    bool readyToSort();
    /// The print routine; no command of the toolbar reaches it.
    void data_print();

    /// Texts of the product's boxes.
    QStringList boxes() const;
    void showTaken(const QString& text);
    /// After a booking: the new quantity, and the product again.
    void showBooked();

private:
    QWidget* buildGridSide();
    QWidget* buildPanel();
    QPushButton* addButton(const char* name, const QString& caption, void (StockOutChooser::*action)());
    void showProduct();
    void showFigures(const QString& quantity);
    void rowChanged();
    void search();
    void showAll();
    void startMovement();

    const StockOut& m_road;
    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    RecordPane* m_pane = nullptr;
    RecordBoxes* m_boxes = nullptr;
    QLineEdit* m_search = nullptr;
    DateBoxes* m_dates = nullptr;
    QLabel* m_figures[3] = {};
};

/// Quantity, amount and remark of one movement. It acts on whatever product is current in the chooser behind
/// it.
class StockOutDialog : public Dialog {
    Q_OBJECT

public:
    StockOutDialog(const StockOut& road, StockOutChooser& chooser, ViewHost& host, Prompts& prompts);

protected:
    void wayOut() override;

private:
    void makeBoxes();
    void quantityChanged();
    /// Says what was booked.
    void saySaved(double quantity);
    void confirm();

    const StockOut& m_road;
    StockOutChooser& m_chooser;
    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    RecordBoxes* m_boxes = nullptr;
};

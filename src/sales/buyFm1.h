#pragma once

#include "data/session.h"
#include "sales/basket.h"
#include "shell/viewHost.h"

#include <map>

class BasketPanel;
class LinePanel;
class ProductPanel;
class Prompts;
class QLabel;
class QStackedWidget;
class ScanBurst;

/// The purchase of one customer: a basket is filled line by line from the sales stock and settled.
class buyFm1 : public TopWindow {
    Q_OBJECT

public:
    buyFm1(ViewHost& host, Prompts& prompts);
    ~buyFm1() override;

    bool takesPlaceOfMain() const override { return true; }
    bool prints() const override { return true; }

protected:
    void wayOut() override;

private:
    enum LineMode { NoProduct = 0, NewLine = 1, BasketLine = 2 };

    // Building.
    void build();
    void connectProducts();
    void connectLine();
    void connectBasket();
    void bindKeys();
    void open();

    // Products.
    void bindProducts();
    void moveProduct(int button);
    /// Enter in the search box: takes up the product whose number it is, or searches.
    void searchEntered();
    void searchProducts();
    void showAllProducts();
    /// The product under the cursor is taken up.
    void GataGrid1_show();

    // The line.
    void record_Clear3();
    void showLine(const QStringList& texts);
    void boxChanged(int index);
    void step(int box, int by);
    bool stock_check();
    /// Shows what the line in the boxes leaves of its product's stock.
    void setLeft(const QString& product, RowId row, double left);
    void dropLeft(const QString& product);
    /// The line in the boxes is not confirmed: what it would have left of the stock is shown no more.
    void giveUpLine();
    void dropAllLeft();
    void confirmLine();
    /// Puts the line in the boxes into the basket; false where it cannot be, told.
    bool keepLine();
    /// A barcode reader has read the next product while this line waited for its quantity.
    void takeScanned(const QString& number);
    /// Writes the boxes into the basket's current or new row; false where a column refused.
    bool storeLine();
    void cancelLine();

    // The basket.
    void chooseBasketRow();
    void moveBasket(int button);
    void basketEdited();
    void saveBasketEdits();
    void deleteBasketRow();
    void clearAll();
    void showBasket();
    void hideBasket();
    /// Shows the current basket row in the line boxes.
    void showBasketLine();
    /// Shows the line in the boxes among those of the basket.
    void markLine();
    void showTotals();
    void showBought();
    void settleBasket();

    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    RecordsetPtr m_basket;
    ProductPanel* m_products = nullptr;
    LinePanel* m_line = nullptr;
    BasketPanel* m_basketPanel = nullptr;
    QStackedWidget* m_frames = nullptr;
    ScanBurst* m_scan = nullptr; // in the quantity box
    QLabel* m_company = nullptr;
    QLabel* m_contact = nullptr;

    LineMode m_lineMode = NoProduct;
    bool m_lineChanged = false;
    bool m_displaying = false;  // the program itself fills boxes: their change handlers do nothing
    bool m_puttingBack = false; // the program itself puts a cell back
    double m_unitCost = 0;
    qint32 m_bought = 0;
    /// Stock left as the grid shows it while lines are in the making, by product row; never an edit.
    std::map<RowId, double> m_left;
    std::map<QString, RowId> m_leftRows; // product number -> its row
    QString m_leftOfLine; // the product whose figure is of the line in the boxes, not confirmed
};

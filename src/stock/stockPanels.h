#pragma once

#include "shell/displayView.h"
#include "stock/stockDisplay.h"

class QLabel;
class QPushButton;

/// The value and the quantity of the stock, under their captions.
class StockSumsBox : public QWidget {
    Q_OBJECT

public:
    explicit StockSumsBox(QWidget* parent = nullptr);

    /// Shows the sums of what the cursor shows, which ends on its last row.
    void count(const RecordsetPtr& products);
    /// Figures them again, position kept, where the cursor's filter is another one since.
    void follow(const RecordsetPtr& products);

private:
    void setSums(const StockSums& sums, const RecordsetPtr& products);

    QLabel* m_value = nullptr;
    QLabel* m_quantity = nullptr;
    QString m_filter;
};

/// What the sales stock has beside its grid: its sums, one product alone, and the shortfall list.
class StockPanel : public DisplayPanel {
    Q_OBJECT

public:
    StockPanel(ViewHost& host, Prompts& prompts);

    void sourceShown(const RecordsetPtr& cursor, ShowSource code) override;
    void rowChanged(const RecordsetPtr& cursor, bool chosen) override;

private:
    /// The cursor of the source that the view shows.
    const RecordsetPtr& shown() const;
    void showOneProduct();
    void showShortfall();

    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    ShowSource m_source = ShowSource::Products;
    StockSumsBox* m_sums;
};

/// The deletion of a row of the stock-in history.
class StockInPanel : public DisplayPanel {
    Q_OBJECT

public:
    StockInPanel(ViewHost& host, Prompts& prompts);

    void sourceShown(const RecordsetPtr& cursor, ShowSource code) override;

private:
    void deleteRow();

    Session& m_session;
    Prompts& m_prompts;
    QPushButton* m_delete;
};

/// Saving, giving up and clearing what was typed into the stock count.
class StockCountPanel : public DisplayPanel {
    Q_OBJECT

public:
    StockCountPanel(ViewHost& host, Prompts& prompts);

    void rowChanged(const RecordsetPtr& cursor, bool chosen) override;
    void left(const RecordsetPtr& cursor) override;

private:
    ViewHost& m_host;
};

#pragma once

#include "shell/view.h"
#include "shell/viewHost.h"

class Prompts;
class QHBoxLayout;
class RecordPane;

/// The product list with its position box: what the picker and the list window share.
class ProductWindow : public Dialog {
    Q_OBJECT

protected:
    ProductWindow(const QString& name, const QString& caption, ViewHost& host, Prompts& prompts);

    void rebind();
    void showWhole();
    bool event(QEvent* event) override;

    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    RecordPane* m_pane = nullptr;
    QHBoxLayout* m_buttons = nullptr;
};

/// Picks a product for the line of a purchase.
class listProductFm2 : public ProductWindow {
    Q_OBJECT

public:
    listProductFm2(ViewHost& host, Prompts& prompts);

protected:
    void wayOut() override;

private:
    void pick();
    void search();
};

/// Shows the product list, with search and sort of its own.
class product_displayFm1 : public ProductWindow {
    Q_OBJECT

public:
    product_displayFm1(ViewHost& host, Prompts& prompts);
};

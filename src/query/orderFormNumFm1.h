#pragma once

#include "shell/view.h"
#include "shell/viewHost.h"

class QListWidget;

/// Picks one order of the customer in hand.
class order_Form_NumFm1 : public Dialog {
    Q_OBJECT

public:
    explicit order_Form_NumFm1(ViewHost& host);

private:
    void confirm();

    ViewHost& m_host;
    QListWidget* m_list = nullptr;
};

#pragma once

#include "shell/view.h"
#include "shell/viewHost.h"

class QLabel;
class QListWidget;

/// Picks one order of the customer in hand, to be shown or, where session.orderIsPrinted, printed.
class order_Form_NumFm1 : public Dialog {
    Q_OBJECT

public:
    explicit order_Form_NumFm1(ViewHost& host);

    bool prints() const override { return true; }
    bool setsShowSource() const override { return true; }
    void shownAgain() override { fill(); }

protected:
    void wayOut() override;

private:
    void fill();
    /// The customer whose orders are listed is the one in hand again, whoever was chosen since.
    void takeListed();
    void confirm();
    void showOrder();
    void printOrder();
    void printRecord();

    ViewHost& m_host;
    Session& m_session;
    QString m_client;       // whose orders are listed
    QString m_filterBefore; // of the lines, which "取消" puts back
    QString m_filter;       // that the dialog has put on them
    QListWidget* m_list = nullptr;
    QLabel* m_none = nullptr; // says that there is nothing to choose
};

#pragma once

#include "sales/settledOrder.h"
#include "shell/viewHost.h"

#include <QWidget>

class Prompts;

/// What a settlement did, in words, beside a button that prints the order.
class SettledNote : public QWidget {
    Q_OBJECT

public:
    SettledNote(const SettledOrder& settled, ViewHost& host, Prompts& prompts, QWidget* parent);

    const SettledOrder& settled() const { return m_settled; }

private:
    void print(const QString& report);

    SettledOrder m_settled;
    ViewHost& m_host;
    Prompts& m_prompts;
};

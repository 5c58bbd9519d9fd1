#pragma once

#include "shell/view.h"

/// A statistic in a window of its own: it takes no input while a report is open, and closes when a purchase
/// begins, which would change its figures.
class StatisticWindow : public TopWindow {
    Q_OBJECT

public:
    using TopWindow::TopWindow;

    bool prints() const override { return true; }
    bool closesForPurchase() const override { return true; }

protected:
    bool endsByEscape() const override { return true; }
};

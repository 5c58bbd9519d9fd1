#pragma once

#include <QFrame>

class QLabel;

/// Says that a Filter is on and what it lets through, with a cross that takes it off.
class FilterChip : public QFrame {
    Q_OBJECT

public:
    explicit FilterChip(QWidget* parent);

    /// Shows the chip: `shown` rows of `whole` are let through.
    void showCounts(int shown, int whole);

Q_SIGNALS:
    /// The cross was pressed.
    void crossed();

private:
    QLabel* m_text;
};

#pragma once

#include <QLabel>
#include <QTimer>

/// A flag that changes between two colours every 600 ms while it is on, and is hidden while it is off.
class BlinkingLabel : public QLabel {
    Q_OBJECT

public:
    /// Its timer is a child of `parent` under the name `timerName`.
    BlinkingLabel(const QString& name, const QString& text, const QString& timerName, QWidget* parent);

    void start();
    void stop();

private:
    void blink();

    QTimer* m_timer;
    int flashPhase = 1; // which of the two colours comes next
};

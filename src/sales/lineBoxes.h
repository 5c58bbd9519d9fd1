#pragma once

#include <QStringList>
#include <QWidget>

/// Captions of the boxes of an order line, in box order.
const QStringList& lineCaptions();

/// Two small buttons, up and down, that add to or take 1 from a number.
class UpDown : public QWidget {
    Q_OBJECT

public:
    explicit UpDown(const QString& name, QWidget* parent = nullptr);

Q_SIGNALS:
    /// +1 or -1.
    void stepped(int by);
};

#pragma once

#include <QStringList>
#include <QWidget>

#include <vector>

/// Captions of the boxes of an order line, in box order.
const QStringList& lineCaptions();

class StepButton;

/// Two small buttons, up and down, that add to or take 1 from a number, again and again while they are held.
class UpDown : public QWidget {
    Q_OBJECT

public:
    explicit UpDown(const QString& name, QWidget* parent = nullptr);

    /// Ends the repeating of a held button until it is pressed anew. In: called before any message that a
    /// step leads to, since the message swallows the release.
    void endRepeat();

Q_SIGNALS:
    /// +1 or -1.
    void stepped(int by);

private:
    std::vector<StepButton*> m_buttons;
};

#pragma once

#include <QKeySequence>
#include <QObject>
#include <QPointer>

#include <vector>

class QLineEdit;
class QPushButton;
class QShortcut;
class QWidget;

/// The keys of a form. A key does what its button does, where the user sees the button and can press it; the
/// button's tool tip says the key. None of them works while an input method is composing.
class KeyCommands : public QObject {
    Q_OBJECT

public:
    explicit KeyCommands(QWidget* form);

    /// Several buttons may have one key: the first that is in sight is pressed.
    void press(const QKeySequence& key, QPushButton* button);
    /// The key puts the focus into a box, its text selected.
    void focus(const QKeySequence& key, QLineEdit* box);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Command {
        QKeySequence key;
        std::vector<QPushButton*> buttons;
    };

    /// Its keys are no commands then.
    bool isComposing() const;
    Command& commandOf(const QKeySequence& key);
    QShortcut* shortcut(const QKeySequence& key);

    QWidget* m_form;
    QPointer<QObject> m_composing; // the widget in which an input method has begun
    std::vector<Command> m_commands;
};

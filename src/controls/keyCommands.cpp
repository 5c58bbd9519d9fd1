#include "controls/keyCommands.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>

#include <algorithm>

KeyCommands::KeyCommands(QWidget* form)
    : QObject(form)
    , m_form(form) {
    qApp->installEventFilter(this);
}

bool KeyCommands::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::InputMethod)
        m_composing = static_cast<QInputMethodEvent*>(event)->preeditString().isEmpty() ? nullptr : watched;
    return false;
}

bool KeyCommands::isComposing() const {
    return m_composing && m_composing == m_form->window()->focusWidget();
}

QShortcut* KeyCommands::shortcut(const QKeySequence& key) {
    auto* shortcut = new QShortcut(key, m_form);
    shortcut->setAutoRepeat(false);
    return shortcut;
}

KeyCommands::Command& KeyCommands::commandOf(const QKeySequence& key) {
    const auto known = std::find_if(m_commands.begin(), m_commands.end(),
                                    [&key](const Command& command) { return command.key == key; });
    if (known != m_commands.end())
        return *known;
    connect(shortcut(key), &QShortcut::activated, this, [this, key] {
        if (isComposing())
            return;
        const std::vector<QPushButton*> buttons = commandOf(key).buttons;
        const auto seen = std::find_if(buttons.begin(), buttons.end(),
                                       [](const QPushButton* button) { return button->isVisible(); });
        if (seen != buttons.end())
            (*seen)->click();
    });
    return m_commands.emplace_back(Command{key, {}});
}

void KeyCommands::press(const QKeySequence& key, QPushButton* button) {
    commandOf(key).buttons.push_back(button);
    const QString name = key.toString(QKeySequence::NativeText);
    const QString before = button->toolTip();
    button->setToolTip(before.isEmpty() ? name : QStringLiteral("%1（%2）").arg(before, name));
}

void KeyCommands::focus(const QKeySequence& key, QLineEdit* box) {
    connect(shortcut(key), &QShortcut::activated, this, [this, box] {
        if (isComposing() || !box->isEnabled())
            return;
        box->setFocus(Qt::ShortcutFocusReason);
        box->selectAll();
    });
}

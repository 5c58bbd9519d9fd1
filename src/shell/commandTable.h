#pragma once

#include "recordset/ignoringErrors.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>

/// The commands that menu leaves name. Features add theirs at start.
class CommandTable {
public:
    /// A command runs each of its statements through the errors it is given, which are its own: a failed one
    /// is passed over and the next one runs. What it lets out is not ignored.
    using Command = std::function<void(IgnoringErrors&)>;

    void add(const QString& name, Command command) { m_commands[name] = std::move(command); }
    bool has(const QString& name) const { return m_commands.contains(name); }
    void run(const QString& name) const {
        IgnoringErrors errors;
        m_commands.value(name)(errors);
    }
    QStringList names() const { return m_commands.keys(); }

private:
    QHash<QString, Command> m_commands;
};

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>

/// The commands that menu leaves name. Features add theirs at start.
class CommandTable {
public:
    void add(const QString& name, std::function<void()> action) { m_actions[name] = std::move(action); }
    bool has(const QString& name) const { return m_actions.contains(name); }
    void run(const QString& name) const { m_actions.value(name)(); }
    QStringList names() const { return m_actions.keys(); }

private:
    QHash<QString, std::function<void()>> m_actions;
};

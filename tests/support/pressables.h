#pragma once

#include <QMap>
#include <QStringList>

#include <functional>
#include <vector>

class QMenu;
class QWidget;

/// One thing that a user could press now, and what presses it as a user does.
struct Pressable {
    QString name; // of the control, with its caption
    std::function<void()> press;
};

/// What a user could press in a widget and its children: visible and enabled; what is chosen or filled in
/// comes before the commands that use it.
class Pressables {
public:
    /// In: whether boxes and editable cells are typed into, and not only pressed.
    explicit Pressables(bool types)
        : m_types(types) {}

    /// In: the name of the place that the widget belongs to.
    std::vector<Pressable> in(QWidget& root, const QString& place);
    /// The leaves of a menu bar, each under the captions above it.
    static std::vector<Pressable> inMenuBar(QWidget& window);

private:
    void addOptions(QWidget& root);
    void addButtons(QWidget& root);
    void addButton(class QAbstractButton* button);
    void addBoxes(QWidget& root);
    void addCombos(QWidget& root);
    void addLists(QWidget& root);
    void addTables(QWidget& root);
    void addCells(class QTableView& table);
    void addContextMenus(QWidget& root);
    void add(const QString& name, std::function<void()> press);

    bool m_types;
    QString m_place;
    QMap<QString, QStringList> m_menus; // entries of the context menus seen so far, by place and widget
    std::vector<Pressable> m_found;
};

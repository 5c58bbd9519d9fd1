#pragma once

#include <QString>
#include <QWidget>

class DataGrid;
class QAbstractButton;
class QAction;
class QLineEdit;

/// Finds widgets by their object names and presses them as a user does. What a user cannot reach (hidden,
/// disabled, missing) is a failure that names the widget.
class Driver {
public:
    explicit Driver(QWidget& root)
        : m_root(root) {}

    template <typename T> T* find(const QString& name) const {
        auto* widget = m_root.objectName() == name ? qobject_cast<T*>(&m_root) : m_root.findChild<T*>(name);
        if (!widget)
            failMissing(name);
        return widget;
    }

    void click(const QString& button);
    /// Types into a box in place of what it holds.
    void type(const QString& box, const QString& text);
    void key(const QString& box, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    QString text(const QString& name) const;
    /// Clicks a cell of a grid; rows and columns count from 0, the column by its head.
    void clickCell(const QString& grid, int row, const QString& column);
    /// A double click as the window system sends it: press, release, press and release.
    void doubleClickCell(const QString& grid, int row, const QString& column);
    /// Presses a key wherever the focus of the window is.
    void keyAtFocus(Qt::Key key, const QString& text = {});
    /// Opens the editor of a cell by a double click, types, and ends with Enter.
    void editCell(const QString& grid, int row, const QString& column, const QString& text);
    QString cell(const QString& grid, int row, const QString& column) const;
    int rows(const QString& grid) const;
    /// Picks an entry of a combo box, also the one that it shows already.
    void pick(const QString& box, const QString& entry);
    /// Clicks an entry of a list.
    void clickItem(const QString& list, const QString& entry);
    QStringList entries(const QString& boxOrList) const;
    /// Triggers a menu action by its control name, as if chosen; it must be enabled.
    void choose(const QString& action);

private:
    [[noreturn]] static void failMissing(const QString& name);
    void requireReachable(QWidget* widget) const;
    QPoint cellCentre(DataGrid* grid, int row, const QString& column) const;
    int columnOf(const DataGrid* grid, const QString& name) const;

    QWidget& m_root;
};

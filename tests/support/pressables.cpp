#include "support/pressables.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QShortcut>
#include <QTableView>
#include <QTimer>
#include <QtTest/QTest>

#include <algorithm>

namespace {

bool reachable(const QWidget* widget) {
    return widget->isVisible() && widget->isEnabled();
}

QString plain(QString caption) {
    return caption.remove(u'&').simplified();
}

QString nameOf(const QWidget* widget) {
    return widget->objectName().isEmpty() ? QString::fromLatin1(widget->metaObject()->className())
                                          : widget->objectName();
}

template <typename Widget> QList<Widget*> reachableIn(QWidget& root) {
    QList<Widget*> all;
    for (Widget* each : root.findChildren<Widget*>())
        if (reachable(each) && each->window() == root.window())
            all << each;
    return all;
}

/// Opens a context menu in the middle of a widget, and hands it over while it stands.
void withMenu(QWidget* widget, const std::function<void(QMenu&)>& action) {
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [&action] {
        const QPointer<QMenu> menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return;
        action(*menu);
        if (menu)
            menu->close();
    });
    timer.start(0);
    const QPoint middle = widget->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, middle, widget->mapToGlobal(middle));
    QApplication::sendEvent(widget, &event);
}

QStringList entriesOf(QWidget* widget) {
    QStringList entries;
    withMenu(widget, [&entries](QMenu& menu) {
        for (const QAction* each : menu.actions())
            if (!each->isSeparator() && each->isEnabled())
                entries << each->text();
    });
    return entries;
}

void chooseEntry(QWidget* widget, const QString& entry) {
    withMenu(widget, [&entry](QMenu& menu) {
        for (QAction* each : menu.actions())
            if (each->text() == entry && each->isEnabled()) {
                menu.setActiveAction(each);
                return QTest::keyClick(&menu, Qt::Key_Return);
            }
    });
}

void typeInto(QLineEdit* box, const QString& text) {
    box->setFocus(Qt::OtherFocusReason);
    box->selectAll();
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, QString(c), Qt::NoModifier);
}

void typeIntoCell(QTableView* table, const QModelIndex& cell, const QString& text) {
    table->scrollTo(cell);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, table->visualRect(cell).center());
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, table->visualRect(cell).center());
    const auto editors = table->viewport()->findChildren<QLineEdit*>();
    if (editors.isEmpty())
        return;
    const QPointer<QLineEdit> editor = editors.last();
    typeInto(editor, text);
    if (editor)
        QTest::keyClick(editor, Qt::Key_Return);
}

/// Opens the menu that holds an action, and chooses: the menu is closed before the command runs.
void choose(QMenu* top, QAction* action) {
    if (top) {
        top->popup(QPoint(0, 0));
        top->close();
    }
    action->trigger();
}

void addLeaves(std::vector<Pressable>& all, QMenu* top, const QList<QAction*>& actions,
               const QString& above) {
    for (QAction* each : actions) {
        if (each->isSeparator() || !each->isEnabled() || !each->isVisible())
            continue;
        const QString path = above + plain(each->text());
        if (QMenu* menu = each->menu())
            addLeaves(all, top ? top : menu, menu->actions(), path + u'>');
        else
            all.push_back({path, [top, each] { choose(top, each); }});
    }
}

} // namespace

std::vector<Pressable> Pressables::inMenuBar(QWidget& window) {
    std::vector<Pressable> all;
    for (QMenuBar* bar : reachableIn<QMenuBar>(window))
        addLeaves(all, nullptr, bar->actions(), QStringLiteral("菜单 "));
    return all;
}

std::vector<Pressable> Pressables::in(QWidget& root, const QString& place) {
    m_found.clear();
    m_place = place;
    addTables(root);
    addLists(root);
    addCombos(root);
    addOptions(root);
    addBoxes(root);
    addButtons(root);
    addContextMenus(root);
    if (root.isWindow()) {
        for (QShortcut* each : root.findChildren<QShortcut*>())
            add(QStringLiteral("键 ") + each->key().toString(),
                [each] { QMetaObject::invokeMethod(each, "activated"); });
        for (Pressable& each : inMenuBar(root))
            add(each.name, std::move(each.press));
    }
    return std::move(m_found);
}

void Pressables::add(const QString& name, std::function<void()> press) {
    QString own = name;
    const auto taken = [this, &own] {
        return std::any_of(m_found.begin(), m_found.end(),
                           [&own](const Pressable& each) { return each.name == own; });
    };
    for (int i = 2; taken(); ++i)
        own = QStringLiteral("%1 #%2").arg(name).arg(i);
    m_found.push_back({own, std::move(press)});
}

void Pressables::addOptions(QWidget& root) {
    for (QAbstractButton* each : reachableIn<QAbstractButton>(root))
        if (each->isCheckable())
            addButton(each);
}

void Pressables::addButtons(QWidget& root) {
    for (QAbstractButton* each : reachableIn<QAbstractButton>(root))
        if (!each->isCheckable() && !each->objectName().startsWith(u"qt_"))
            addButton(each);
}

void Pressables::addButton(QAbstractButton* button) {
    // Only the mark and the caption of an option take a click, and they stand at its left.
    const QPoint place =
        qobject_cast<QRadioButton*>(button) ? QPoint(8, button->height() / 2) : button->rect().center();
    add(nameOf(button) + u' ' + plain(button->text()),
        [button, place] { QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, place); });
}

void Pressables::addCombos(QWidget& root) {
    for (QComboBox* each : reachableIn<QComboBox>(root))
        for (int i = 0; i < each->count(); ++i)
            add(nameOf(each) + u' ' + each->itemText(i), [each, i] {
                each->showPopup();
                each->view()->setCurrentIndex(each->model()->index(i, each->modelColumn()));
                QTest::keyClick(each->view(), Qt::Key_Return);
            });
}

void Pressables::addLists(QWidget& root) {
    for (QListWidget* each : reachableIn<QListWidget>(root))
        for (int i = 0; i < each->count(); ++i)
            add(nameOf(each) + u' ' + each->item(i)->text(), [each, i] {
                each->scrollToItem(each->item(i));
                QTest::mouseClick(each->viewport(), Qt::LeftButton, Qt::NoModifier,
                                  each->visualItemRect(each->item(i)).center());
            });
}

void Pressables::addTables(QWidget& root) {
    for (QTableView* each : reachableIn<QTableView>(root))
        if (each->model() && each->model()->rowCount() > 0)
            addCells(*each);
}

void Pressables::addCells(QTableView& table) {
    const QAbstractItemModel& model = *table.model();
    const auto click = [this, &table](const QString& what, const QModelIndex& cell, bool twice) {
        add(nameOf(&table) + u' ' + what, [&table, cell = QPersistentModelIndex(cell), twice] {
            table.scrollTo(cell);
            const QPoint place = table.visualRect(cell).center();
            QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, place);
            if (twice)
                QTest::mouseDClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, place);
        });
    };
    QModelIndex first;
    for (int i = 0; i < model.columnCount(); ++i) {
        if (table.isColumnHidden(i))
            continue;
        const QModelIndex cell = model.index(0, i);
        if (!first.isValid())
            first = cell;
        const QString head = model.headerData(i, Qt::Horizontal).toString();
        click(head, cell, false);
        if (m_types && (cell.flags() & Qt::ItemIsEditable))
            add(nameOf(&table) + QStringLiteral(" 输入 ") + head,
                [&table, cell = QPersistentModelIndex(cell)] {
                    typeIntoCell(&table, cell, QStringLiteral("1"));
                });
    }
    if (!first.isValid())
        return;
    click(QStringLiteral("末行"), first.siblingAtRow(model.rowCount() - 1), false);
    click(QStringLiteral("双击"), first, true);
}

void Pressables::addContextMenus(QWidget& root) {
    for (QAbstractScrollArea* area : reachableIn<QAbstractScrollArea>(root)) {
        if (qobject_cast<QHeaderView*>(area))
            continue;
        QWidget* target = area->viewport();
        const QString name = nameOf(area) + QStringLiteral(" 右键");
        const QString key = m_place + u'/' + name;
        if (!m_menus.contains(key))
            m_menus[key] = entriesOf(target);
        for (const QString& entry : m_menus[key])
            add(name + u' ' + entry, [target, entry] { chooseEntry(target, entry); });
    }
}

void Pressables::addBoxes(QWidget& root) {
    for (QLineEdit* each : reachableIn<QLineEdit>(root)) {
        if (each->isReadOnly() || !each->parentWidget() ||
            qobject_cast<QAbstractItemView*>(each->parentWidget()->parentWidget()))
            continue;
        add(nameOf(each) + QStringLiteral(" 输入"), [each, types = m_types] {
            const QPointer<QLineEdit> box = each;
            if (types)
                typeInto(each, each->text().isEmpty() ? QStringLiteral("1") : each->text());
            if (box)
                QTest::keyClick(box, Qt::Key_Return);
        });
    }
}

#include "support/driver.h"

#include "controls/dataGrid.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QWindow>
#include <QtTest/QTest>

#include <stdexcept>

void Driver::failMissing(const QString& name) {
    throw std::runtime_error("no widget " + name.toStdString());
}

void Driver::requireReachable(QWidget* widget) const {
    if (!widget->isVisible() || !widget->isEnabled())
        throw std::runtime_error("a user cannot reach " + widget->objectName().toStdString());
}

void Driver::click(const QString& button) {
    auto* target = find<QAbstractButton>(button);
    requireReachable(target);
    // Only the mark and the caption of an option take a click, and they stand at its left.
    const QPoint place =
        qobject_cast<QRadioButton*>(target) ? QPoint(8, target->height() / 2) : target->rect().center();
    QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, place);
}

void Driver::type(const QString& box, const QString& text) {
    auto* target = find<QLineEdit>(box);
    requireReachable(target);
    target->setFocus(Qt::OtherFocusReason);
    target->selectAll();
    if (text.isEmpty())
        QTest::keyClick(target, Qt::Key_Delete);
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, target, Qt::Key_unknown, QString(c), Qt::NoModifier);
}

void Driver::key(const QString& box, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    auto* target = find<QWidget>(box);
    requireReachable(target);
    QTest::keyClick(target, key, modifiers);
}

QString Driver::text(const QString& name) const {
    auto* widget = find<QWidget>(name);
    if (auto* box = qobject_cast<QLineEdit*>(widget))
        return box->text();
    if (auto* label = qobject_cast<QLabel*>(widget))
        return label->text();
    throw std::runtime_error("no text in " + name.toStdString());
}

int Driver::columnOf(const DataGrid* grid, const QString& name) const {
    for (int i = 0; i < grid->model()->columnCount(); ++i)
        if (grid->model()->headerData(i, Qt::Horizontal, Qt::DisplayRole).toString() == name)
            return i;
    failMissing(grid->objectName() + u'.' + name);
}

QPoint Driver::cellCentre(DataGrid* grid, int row, const QString& column) const {
    const QModelIndex index = grid->model()->index(row, columnOf(grid, column));
    grid->scrollTo(index);
    return grid->visualRect(index).center();
}

void Driver::clickCell(const QString& grid, int row, const QString& column) {
    auto* target = find<DataGrid>(grid);
    requireReachable(target);
    QTest::mouseClick(target->viewport(), Qt::LeftButton, Qt::NoModifier, cellCentre(target, row, column));
}

void Driver::doubleClickCell(const QString& grid, int row, const QString& column) {
    auto* target = find<DataGrid>(grid);
    requireReachable(target);
    QWidget* window = target->window();
    const QPoint place = target->viewport()->mapTo(window, cellCentre(target, row, column));
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
}

void Driver::keyAtFocus(Qt::Key key, const QString& text) {
    QWidget* focus = m_root.window()->focusWidget();
    if (!focus)
        focus = m_root.window();
    QTest::sendKeyEvent(QTest::Click, focus, key, text, Qt::NoModifier);
}

void Driver::editCell(const QString& grid, int row, const QString& column, const QString& text) {
    clickCell(grid, row, column);
    auto* target = find<DataGrid>(grid);
    const QModelIndex index = target->model()->index(row, columnOf(target, column));
    QTest::mouseDClick(target->viewport(), Qt::LeftButton, Qt::NoModifier,
                       target->visualRect(index).center());
    // An editor closed before may still wait for its deletion: the last one is open.
    const auto editors = target->viewport()->findChildren<QLineEdit*>(QStringLiteral("cellEditor"));
    if (editors.isEmpty())
        failMissing(QStringLiteral("cellEditor"));
    QLineEdit* editor = editors.last();
    editor->selectAll();
    if (text.isEmpty())
        QTest::keyClick(editor, Qt::Key_Delete);
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, editor, Qt::Key_unknown, QString(c), Qt::NoModifier);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents(); // Enter closes the editor by a queued call
}

QString Driver::cell(const QString& grid, int row, const QString& column) const {
    auto* target = find<DataGrid>(grid);
    return target->model()->index(row, columnOf(target, column)).data().toString();
}

int Driver::rows(const QString& grid) const {
    return find<DataGrid>(grid)->model()->rowCount();
}

void Driver::pick(const QString& box, const QString& entry) {
    auto* target = find<QComboBox>(box);
    requireReachable(target);
    const int index = target->findText(entry);
    if (index < 0)
        failMissing(box + u'.' + entry);
    target->showPopup();
    QAbstractItemView* list = target->view();
    list->setCurrentIndex(target->model()->index(index, target->modelColumn()));
    QTest::keyClick(list, Qt::Key_Return);
}

void Driver::clickItem(const QString& list, const QString& entry) {
    auto* target = find<QListWidget>(list);
    requireReachable(target);
    const auto items = target->findItems(entry, Qt::MatchExactly);
    if (items.isEmpty())
        failMissing(list + u'.' + entry);
    target->scrollToItem(items.first());
    QTest::mouseClick(target->viewport(), Qt::LeftButton, Qt::NoModifier,
                      target->visualItemRect(items.first()).center());
}

QStringList Driver::entries(const QString& boxOrList) const {
    QStringList texts;
    const QAbstractItemModel* model = nullptr;
    if (auto* box = m_root.findChild<QComboBox*>(boxOrList))
        model = box->model();
    else
        model = find<QListWidget>(boxOrList)->model();
    for (int i = 0; i < model->rowCount(); ++i)
        texts << model->index(i, 0).data().toString();
    return texts;
}

void Driver::choose(const QString& action) {
    auto* target = m_root.findChild<QAction*>(action);
    if (!target)
        failMissing(action);
    if (!target->isEnabled())
        throw std::runtime_error("a user cannot choose " + action.toStdString());
    target->trigger();
}

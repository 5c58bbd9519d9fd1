#include "support/reachable.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QTextBrowser>
#include <QtTest/QTest>

namespace {

constexpr int kMostStops = 300; // of the tab key in a window
constexpr int kMostLinks = 1000;

QString nameOf(const QWidget* widget) {
    return widget->objectName().isEmpty() ? QString::fromLatin1(widget->metaObject()->className())
                                          : widget->objectName();
}

/// Presses a key where the focus is, in a text with links until the last of them is passed.
void press(const QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* from = window.focusWidget();
    int links = qobject_cast<QTextBrowser*>(from) ? kMostLinks : 0;
    do
        QTest::keyClick(from, key, modifiers);
    while (window.focusWidget() == from && links-- > 0);
}

/// The widgets that the tab key comes to, each once, from where the focus is.
QWidgetList stopsOf(QWidget& window, QStringList& faults) {
    QWidgetList stops;
    if (!window.focusWidget())
        QTest::keyClick(&window, Qt::Key_Tab);
    while (stops.size() < kMostStops) {
        QWidget* stop = window.focusWidget();
        if (!stop) {
            faults << QStringLiteral("nothing takes the focus");
            return stops;
        }
        if (stops.contains(stop)) {
            if (stop != stops.first())
                faults << QStringLiteral("the tab key stays at ") + nameOf(stop);
            return stops;
        }
        stops << stop;
        press(window, Qt::Key_Tab);
    }
    faults << QStringLiteral("the tab key comes to no end");
    return stops;
}

/// Whether it is an option of a group, of which the tab key comes to one and the arrows to the others.
bool isOptionBeside(const QWidget* widget, const QWidgetList& stops) {
    const auto* option = qobject_cast<const QAbstractButton*>(widget);
    return option && option->autoExclusive() &&
           std::any_of(stops.begin(), stops.end(), [option](const QWidget* stop) {
               const auto* beside = qobject_cast<const QAbstractButton*>(stop);
               return beside && beside->autoExclusive() && beside->parentWidget() == option->parentWidget();
           });
}

/// A part of another control: the box of a combo, the step arrows beside a box into which the figure can be
/// typed, the captions of a table.
bool isPart(const QWidget* widget) {
    return qobject_cast<const QHeaderView*>(widget) || widget->focusProxy() ||
           widget->parentWidget()->objectName().startsWith(QStringLiteral("UpDown")) ||
           qobject_cast<const QComboBox*>(widget->parentWidget()) ||
           qobject_cast<const QAbstractSpinBox*>(widget->parentWidget()) ||
           qobject_cast<const QLineEdit*>(widget->parentWidget());
}

bool isControl(const QWidget* widget) {
    if (const auto* box = qobject_cast<const QLineEdit*>(widget); box && box->isReadOnly())
        return false;
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QComboBox*>(widget) ||
           qobject_cast<const QAbstractItemView*>(widget) || qobject_cast<const QTextEdit*>(widget) ||
           qobject_cast<const QAbstractSpinBox*>(widget) || qobject_cast<const QLineEdit*>(widget);
}

void findUnreached(const QWidget& window, const QWidgetList& stops, QStringList& faults) {
    for (const QWidget* each : window.findChildren<QWidget*>())
        if (each->window() == &window && each->isVisible() && each->isEnabled() && isControl(each) &&
            !stops.contains(each) && !isPart(each) && !isOptionBeside(each, stops))
            faults << QStringLiteral("the tab key does not come to ") + nameOf(each);
}

/// Whether one stop stands before another where both are read from the left to the right and downwards.
bool turnsBack(const QWidget& window, const QWidget* from, const QWidget* to) {
    const auto place = [&window](const QWidget* widget) {
        return QRect(widget->mapTo(&window, QPoint(0, 0)), widget->size());
    };
    const QRect a = place(from);
    const QRect b = place(to);
    const bool above = b.bottom() < a.top() && b.center().x() < a.right();
    const bool left = b.right() < a.left() && b.top() < a.bottom();
    return above || left;
}

void findTurns(const QWidget& window, const QWidgetList& stops, QStringList& faults) {
    QStringList turns;
    for (qsizetype i = 0; i < stops.size(); ++i) {
        const QWidget* next = stops[(i + 1) % stops.size()];
        if (stops.size() > 1 && turnsBack(window, stops[i], next))
            turns << nameOf(stops[i]) + QStringLiteral(" -> ") + nameOf(next);
    }
    if (turns.size() > 1)
        faults << QStringLiteral("the tab key turns back more than once: ") +
                      turns.join(QStringLiteral(", "));
}

void findNoWayBack(QWidget& window, const QWidgetList& stops, QStringList& faults) {
    QWidgetList back;
    for (qsizetype i = 0; i < stops.size(); ++i) {
        press(window, Qt::Key_Backtab, Qt::ShiftModifier);
        back.prepend(window.focusWidget());
    }
    if (back != stops)
        faults << QStringLiteral("Shift+Tab takes another way");
}

bool isInteractive(QAccessible::Role role) {
    switch (role) {
    case QAccessible::PushButton:
    case QAccessible::ButtonMenu:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::EditableText:
    case QAccessible::ComboBox:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::List:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::Link:
    case QAccessible::PageTab:
        return true;
    default:
        return false;
    }
}

/// What stands in a control on the screen against what is told of it.
void checkValue(QAccessibleInterface& node, const QString& place, QStringList& faults) {
    if (const auto* box = qobject_cast<const QLineEdit*>(node.object()))
        if (node.text(QAccessible::Value) != box->text())
            faults << place + QStringLiteral(" tells another text than it shows");
    if (const auto* button = qobject_cast<const QAbstractButton*>(node.object()))
        if (node.state().checked != button->isChecked())
            faults << place + QStringLiteral(" tells another state than it shows");
    if (const auto* combo = qobject_cast<const QComboBox*>(node.object()))
        if (node.text(QAccessible::Value) != combo->currentText())
            faults << place + QStringLiteral(" tells another choice than it shows");
}

void checkNode(QAccessibleInterface& node, const QString& place, QStringList& faults) {
    const bool interactive = isInteractive(node.role());
    if (!interactive && !node.state().focusable)
        return;
    if (node.text(QAccessible::Name).trimmed().isEmpty())
        faults << place + QStringLiteral(" has no name");
    if (node.role() == QAccessible::NoRole)
        faults << place + QStringLiteral(" has no role");
    checkValue(node, place, faults);
}

void walkTree(QAccessibleInterface* node, const QString& path, QStringList& faults) {
    if (!node || !node->isValid() || (node->state().invisible && !path.isEmpty()))
        return;
    const QObject* object = node->object();
    const QString place = path + u'/' + (object ? object->objectName() : QString::number(node->role()));
    checkNode(*node, place, faults);
    // The cells of a table have tests of their own.
    if (node->role() == QAccessible::Table)
        return;
    for (int i = 0; i < node->childCount(); ++i)
        walkTree(node->child(i), place, faults);
}

} // namespace

QStringList tabFaults(QWidget& window) {
    QStringList faults;
    QApplication::setActiveWindow(&window);
    const QWidgetList stops = stopsOf(window, faults);
    if (!faults.isEmpty())
        return faults;
    findNoWayBack(window, stops, faults);
    findUnreached(window, stops, faults);
    findTurns(window, stops, faults);
    return faults;
}

QStringList readerFaults(QWidget& window) {
    QStringList faults;
    walkTree(QAccessible::queryAccessibleInterface(&window), {}, faults);
    return faults;
}

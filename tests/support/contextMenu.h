#pragma once

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>
#include <QtTest/QTest>

#include <gtest/gtest.h>

/// Chooses an entry in the context menu of a widget.
inline void chooseInMenuOf(QWidget& widget, const QString& entry) {
    QTimer::singleShot(0, &widget, [entry] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions())
            if (action->text() == entry)
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        menu->close();
    });
    const QPoint middle = widget.rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, middle, widget.mapToGlobal(middle));
    QApplication::sendEvent(&widget, &event);
}

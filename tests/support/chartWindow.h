#pragma once

#include "controls/barChart.h"
#include "support/scriptedPrompts.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QGraphicsSimpleTextItem>
#include <QLineEdit>
#include <QMenu>
#include <QPainterPath>
#include <QTemporaryDir>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <optional>
#include <vector>

inline constexpr QRgb kBars = 0xFF2F5D8A;
inline constexpr QRgb kPaper = 0xFFFFFFFF;

inline const BarChart::Words kWords{"MSChart1", "营业额统计图", "时间", "营业额"};

inline const QList<Bar> kThree{{"2004-1", 120}, {"2004-2", 80}, {"2004-3", 160.5}};

inline QList<Bar> quarters(int count = 24) {
    QList<Bar> bars;
    for (int i = 0; i < count; ++i)
        bars << Bar{QStringLiteral("%1-%2季度").arg(1998 + i / 4).arg(i % 4 + 1), 1000.0 + 37 * i};
    return bars;
}

/// A bar chart below a box in a window of its own.
class Chart : public testing::Test {
protected:
    Chart() {
        auto* lines = new QVBoxLayout(&window);
        lines->setContentsMargins({});
        lines->addWidget(&before);
        lines->addWidget(&chart, 1);
    }
    void show(const QList<Bar>& bars, QSize size = {800, 600}) {
        window.resize(size);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        chart.setBars(bars);
    }
    void key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    void mouseTo(int bar) {
        const QPoint at = chart.viewport()->mapTo(&window, chart.place(bar).center().toPoint());
        QTest::mouseMove(window.windowHandle(), at);
    }
    QImage grabbed() { return chart.viewport()->grab().toImage(); }
    /// From where to where the middle of a bar's place is painted in the bars' colour, from the top; none
    /// where it is nowhere.
    std::optional<std::pair<int, int>> painted(const QImage& image, int bar, QRgb colour = kBars) {
        const QRectF place = chart.place(bar);
        std::optional<std::pair<int, int>> rows;
        for (int y = int(place.top()) - 1; y < int(place.bottom()) + 1; ++y)
            if (image.pixel(int(place.center().x()), y) == colour)
                rows = {rows ? rows->first : y, y};
        return rows;
    }
    int paintedHeight(const QImage& image, int bar) {
        const auto rows = painted(image, bar);
        return rows ? rows->second - rows->first + 1 : 0;
    }
    QList<QGraphicsSimpleTextItem*> texts() const {
        QList<QGraphicsSimpleTextItem*> found;
        for (QGraphicsItem* item : chart.scene()->items())
            if (auto* text = qgraphicsitem_cast<QGraphicsSimpleTextItem*>(item); text && text->isVisible())
                found << text;
        return found;
    }
    QStringList written() const {
        QStringList found;
        for (const QGraphicsSimpleTextItem* item : texts())
            found << item->text();
        return found;
    }
    void expectNoTextOnAnother() const {
        const auto all = texts();
        std::vector<QPainterPath> boxes;
        for (const QGraphicsSimpleTextItem* item : all) {
            QPainterPath box;
            box.addPolygon(item->mapToScene(item->boundingRect()));
            box.closeSubpath();
            EXPECT_TRUE(QRectF(chart.viewport()->rect()).contains(box.boundingRect()))
                << item->text().toStdString();
            for (std::size_t i = 0; i < boxes.size(); ++i)
                EXPECT_FALSE(boxes[i].intersects(box))
                    << item->text().toStdString() << " and " << all[qsizetype(i)]->text().toStdString();
            boxes.push_back(box);
        }
    }
    /// Chooses an entry of the menu that the event brings up.
    void chooseFromMenu(const QString& entry, QContextMenuEvent::Reason reason) {
        QTimer::singleShot(0, &window, [&, entry] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (QAction* action : menu->actions()) {
                menuTexts << action->text();
                if (action->text() == entry)
                    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            }
            menu->close();
        });
        const bool mouse = reason == QContextMenuEvent::Mouse;
        QWidget* at = mouse ? chart.viewport() : &chart;
        QContextMenuEvent event(reason, at->rect().center(), at->mapToGlobal(at->rect().center()));
        QApplication::sendEvent(at, &event);
    }
    void save(const QString& path) {
        prompts.saveName = path;
        chooseFromMenu("保存图片…", QContextMenuEvent::Mouse);
    }

    ScriptedPrompts prompts;
    QWidget window;
    QLineEdit before{&window};
    BarChart chart{kWords, prompts, &window};
    QTemporaryDir folder;
    QStringList menuTexts;
};

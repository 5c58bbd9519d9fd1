#pragma once

#include "controls/chartScale.h"

#include <QtCharts/QChartView>

class Prompts;
class QBarSet;
class QGraphicsLineItem;
class QGraphicsRectItem;
class QGraphicsSimpleTextItem;
class QValueAxis;

/// One bar: what stands below it, and its value. Without a label it is an empty place.
struct Bar {
    QString label;
    double value = 0;
};

/// Bars over the places of an axis. One bar at a time can be chosen, by a click or by the keys Left, Right,
/// Home and End until Escape or the focus' leaving; it is marked and its value shown, as that of the bar
/// under the mouse is. The context menu copies the chart as a picture and saves it.
class BarChart : public QChartView {
    Q_OBJECT

public:
    struct Words {
        QString name;       // object name
        QString title;      // what the chart shows: its accessible name, and that of a saved picture
        QString categories; // titles of the axes
        QString values;
    };

    BarChart(const Words& words, Prompts& prompts, QWidget* parent = nullptr);

    /// Shows these bars from left to right; labels may be alike.
    void setBars(const QList<Bar>& bars);
    const QList<Bar>& bars() const { return m_bars; }

    /// The bar chosen, or -1.
    int chosen() const { return m_chosen; }
    /// What is shown of the bar under the mouse, else of the chosen one: label and value, or nothing.
    QString shownText() const;
    /// The column in which a bar stands, from the lowest mark to the highest, in the coordinates of the
    /// viewport.
    QRectF place(int bar) const;
    /// The chart without marks, larger than on the screen.
    QImage picture();
    /// Writes it without marks as SVG or PNG, as the name ends. False if the file cannot be written; what
    /// stood there before then stays.
    bool savePicture(const QString& path);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void buildChart();
    void buildMarks();
    void layOut();
    /// Where the bars stand when the captions take this room.
    QRectF plotFor(const CaptionPlan& plan) const;
    double pitch() const;
    double heightOf(double value) const;
    QStringList captions() const;
    QGraphicsSimpleTextItem* addText(const QString& text);
    void writeValues();
    void writeCaptions(const CaptionPlan& plan);
    void writeTitles();
    void takeColours();
    int barAt(const QPointF& point) const;
    /// The first bar with a label from `from` on by `step`, or `otherwise`.
    int labelled(int from, int step, int otherwise) const;
    int shown() const { return m_hovered >= 0 ? m_hovered : m_chosen; }
    void choose(int bar);
    void hover(int bar);
    void showMark(int bar);
    void placeNote(int bar);
    void askSave();

    Words m_words;
    Prompts& m_prompts;
    QList<Bar> m_bars;
    ValueScale m_scale;
    QRectF m_plot;
    QColor m_lines;
    int m_chosen = -1;
    int m_hovered = -1;
    QBarSet* m_set = nullptr;
    QValueAxis* m_places = nullptr;
    QValueAxis* m_values = nullptr;
    QGraphicsRectItem* m_texts = nullptr; // parent of all texts and of the lines across
    QGraphicsLineItem* m_base = nullptr;  // the line at 0
    QGraphicsRectItem* m_band = nullptr;  // behind the marked bar
    QGraphicsRectItem* m_note = nullptr;  // its value
    QGraphicsSimpleTextItem* m_noteText = nullptr;
};

#pragma once

#include "reports/paperPage.h"
#include "reports/paperZoom.h"

#include <QWidget>

class QScrollBar;
class QWheelEvent;

/// The page of the preview. It remembers what was drawn and paints it at the screen's own resolution.
class PaperSheet : public QWidget {
    Q_OBJECT

public:
    /// Size in millimetres.
    PaperSheet(double width, double height, QWidget* parent);

    double pageWidth() const { return m_width; }
    double pageHeight() const { return m_height; }
    PageRecording& recording() { return m_recording; }
    /// Takes everything off the page.
    void Cls();
    /// How large a millimetre is shown.
    double dotsPerMillimetre() const;
    /// The sheet's size at 100 %, in dots.
    QSizeF trueSize() const;
    void setPercent(double percent);
    double percent() const { return m_percent; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double m_width;
    double m_height;
    double m_percent = 100;
    PageRecording m_recording;
};

/// The viewport of the preview: a page larger than it is moved by two scroll bars, whose values are
/// millimetres. At 100 % the page stands where the bars say; at any other zoom one that is smaller than the
/// viewport stands in its middle.
class PaperView : public QWidget {
    Q_OBJECT

public:
    PaperView(double pageWidth, double pageHeight, QWidget* parent = nullptr);

    PaperSheet& sheet() { return *m_sheet; }
    const PaperZoom& zoom() const { return m_zoom; }
    void setZoom(const PaperZoom& zoom);
    /// To the next usual percentage.
    void zoomBy(bool larger);

Q_SIGNALS:
    void zoomed();

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Shows the sheet at a percentage; what stands at this point of the viewport stays there.
    void showAt(double percent, const QPointF& anchor);
    QPointF middle() const;
    void fit();
    bool turnWheel(const QWheelEvent& event);
    void placeSheet();
    void showScrollBars();

    QWidget* m_viewport = nullptr;
    PaperSheet* m_sheet = nullptr;
    QScrollBar* m_horizontal = nullptr;
    QScrollBar* m_vertical = nullptr;
    PaperZoom m_zoom;
    int m_wheel = 0; // turned with Ctrl, and not yet a step
};

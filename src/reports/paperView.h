#pragma once

#include "reports/paperPage.h"

#include <QWidget>

class QScrollBar;

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
    double dotsPerMillimetre() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double m_width;
    double m_height;
    PageRecording m_recording;
};

/// The viewport of the preview: a page larger than it is moved by two scroll bars, whose values are
/// millimetres.
class PaperView : public QWidget {
    Q_OBJECT

public:
    PaperView(double pageWidth, double pageHeight, QWidget* parent = nullptr);

    PaperSheet& sheet() { return *m_sheet; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void placeSheet();
    void showScrollBars();

    QWidget* m_viewport = nullptr;
    PaperSheet* m_sheet = nullptr;
    QScrollBar* m_horizontal = nullptr;
    QScrollBar* m_vertical = nullptr;
};

#pragma once

#include <QWidget>

class PaperView;
class QLabel;
class QPushButton;

/// The commands below the preview that show its sheet larger or smaller.
class ZoomBar : public QWidget {
    Q_OBJECT

public:
    ZoomBar(PaperView& view, QWidget* parent);

private:
    void showZoom();

    PaperView& m_view;
    QLabel* m_percent;
    QPushButton* m_width;
    QPushButton* m_page;
};

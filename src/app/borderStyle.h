#pragma once

#include <QProxyStyle>

/// Fusion with borders of boxes and buttons that stand out from what is around them: its own are the window's
/// colour made a little darker.
class BorderStyle : public QProxyStyle {
    Q_OBJECT

public:
    BorderStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
};

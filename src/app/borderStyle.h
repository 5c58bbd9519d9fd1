#pragma once

#include <QProxyStyle>

/// Fusion with borders of boxes and buttons that stand out from what is around them: its own are the window's
/// colour made a little darker. No pictures of a desktop stand on the buttons of dialogs.
class BorderStyle : public QProxyStyle {
    Q_OBJECT

public:
    BorderStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* returned = nullptr) const override;
};

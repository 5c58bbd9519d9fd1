#include "app/borderStyle.h"

#include <QStyleFactory>
#include <QStyleOption>

namespace {

/// Fusion takes the window's colour at 100/140 of its brightness for a border.
const QColor kBehindBorder = QColor(0x72, 0x7C, 0x89).lighter(140);

/// The palette of an option in its colour group, with other borders. Made anew only for another palette: each
/// one has pictures of its own in Fusion's cache.
QPalette bordered(const QPalette& palette) {
    static QPalette seen = palette;
    static QPalette made;
    static bool ready = false;
    if (!ready || seen.cacheKey() != palette.cacheKey()) {
        ready = true;
        seen = made = palette;
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            made.setColor(group, QPalette::Window, kBehindBorder);
    }
    QPalette grouped = made;
    grouped.setCurrentColorGroup(palette.currentColorGroup());
    return grouped;
}

/// Draws an option of this kind with other borders.
template <typename Option, typename Drawn, typename Draw>
void drawBordered(const Drawn* option, Draw&& draw) {
    const auto* given = qstyleoption_cast<const Option*>(option);
    if (!given)
        return draw(option);
    Option other(*given);
    other.palette = bordered(given->palette);
    draw(&other);
}

} // namespace

BorderStyle::BorderStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void BorderStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    const auto draw = [&](const QStyleOption* drawn) {
        QProxyStyle::drawPrimitive(element, drawn, painter, widget);
    };
    switch (element) {
    case PE_FrameLineEdit:
        return drawBordered<QStyleOptionFrame>(option, draw);
    case PE_PanelButtonCommand:
    case PE_IndicatorCheckBox:
    case PE_IndicatorRadioButton:
        return drawBordered<QStyleOptionButton>(option, draw);
    default:
        draw(option);
    }
}

void BorderStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                     QPainter* painter, const QWidget* widget) const {
    const auto draw = [&](const QStyleOptionComplex* drawn) {
        QProxyStyle::drawComplexControl(control, drawn, painter, widget);
    };
    switch (control) {
    case CC_ComboBox:
        return drawBordered<QStyleOptionComboBox>(option, draw);
    case CC_SpinBox:
        return drawBordered<QStyleOptionSpinBox>(option, draw);
    default:
        draw(option);
    }
}

int BorderStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* returned) const {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

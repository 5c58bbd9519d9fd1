#include "controls/hint.h"

#include <QToolTip>
#include <QWidget>

void showHint(QWidget* beside, const QString& text) {
    QToolTip::showText(beside->mapToGlobal(QPoint(0, beside->height())), text, nullptr, {}, 6000);
}

#include "shell/windowPlace.h"

#include <QApplication>
#include <QStyle>
#include <QWidget>

#include <algorithm>

QRect windowPlace(const QRect& over, const QSize& size, const QMargins& frame, const QRect& screen) {
    const QRect room = screen.marginsRemoved(frame);
    QRect place(QPoint(), size.boundedTo(room.size()));
    place.moveCenter(over.center());
    place.moveLeft(std::clamp(place.left(), room.left(), room.left() + room.width() - place.width()));
    place.moveTop(std::clamp(place.top(), room.top(), room.top() + room.height() - place.height()));
    return place;
}

bool fitsScreen(const QSize& size, const QMargins& frame, const QSize& screen) {
    const QSize whole = size.grownBy(frame);
    return whole.width() <= screen.width() && whole.height() <= screen.height();
}

QMargins likelyFrame() {
    const int title = std::max(32, QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight));
    return {4, title, 4, 4};
}

void placeWindow(QWidget& window, const QRect& over, const QRect& screen) {
    if (!window.testAttribute(Qt::WA_Resized))
        window.adjustSize();
    window.setGeometry(windowPlace(over, window.size(), likelyFrame(), screen));
}

void putInPlaceOf(QWidget& window, const QWidget& other) {
    window.setGeometry(other.isMaximized() ? other.normalGeometry() : other.geometry());
    window.setWindowState(other.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen));
}

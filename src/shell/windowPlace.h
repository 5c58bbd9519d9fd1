#pragma once

#include <QMargins>
#include <QRect>

class QWidget;

/// Where a window stands: its contents in the middle of `over`, made small and moved so far that the whole
/// frame lies inside the screen.
QRect windowPlace(const QRect& over, const QSize& size, const QMargins& frame, const QRect& screen);

/// Whether a window of this size fits onto a screen together with its frame.
bool fitsScreen(const QSize& size, const QMargins& frame, const QSize& screen);

/// The frame that a window will have, guessed before the window manager has made it.
QMargins likelyFrame();

/// Gives a window that is about to be shown the place, the size and the state of another one.
void putInPlaceOf(QWidget& window, const QWidget& other);

/// Gives a window that is about to be shown its size and its place in the middle of `over`, inside the screen
/// of that.
void placeWindow(QWidget& window, const QRect& over, const QRect& screen);

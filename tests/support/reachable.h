#pragma once

#include <QStringList>

class QWidget;

/// What of a window the keyboard alone does not come to: each fault in words, none where the tab key goes
/// through every control that is enabled, back again by Shift+Tab, and in the order of the layout, turning
/// back to its beginning once a round.
QStringList tabFaults(QWidget& window);

/// What a window does not tell a screen reader: controls without a name or a role, or with another value than
/// they show.
QStringList readerFaults(QWidget& window);

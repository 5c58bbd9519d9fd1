#pragma once

#include <QColor>
#include <QFont>

/// A font as the user chooses it, with its colour.
struct FontChoice {
    QFont font;
    QColor colour = Qt::black;
};

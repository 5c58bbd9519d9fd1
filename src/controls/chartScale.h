#pragma once

#include <QList>
#include <QSizeF>
#include <QString>

/// A value axis: its marks are whole multiples of a step of 1, 2 or 5 times a power of ten.
struct ValueScale {
    double step = 1;
    double first = 0; // the lowest and the highest mark, in steps
    double last = 1;

    int marks() const { return int(last - first) + 1; }
    double low() const { return first * step; }
    double high() const { return last * step; }
    /// The value of a mark counted from 0, and how it is written: never with an exponent below 1E+15.
    double value(int mark) const { return (first + mark) * step; }
    QString text(int mark) const;
    /// Where a value stands between the lowest mark, 0, and the highest, 1.
    double share(double number) const { return (number - low()) / (high() - low()); }
};

/// The scale that holds 0 and all values in about so many steps. Whole values get whole marks; where all are
/// 0 it goes to 1.
ValueScale scaleOf(const QList<double>& values, int steps);

/// How the captions below the bars are written so that none touches another.
struct CaptionPlan {
    bool slanted = false; // rising to the right by half a right angle, its end below the bar
    int every = 1;        // which captions are shown: each, every second, ...
    double height = 0;    // room that they take below the axis
    double overhang = 0;  // how far one reaches to the left of the middle of its bar
};

/// The plan for captions of these sizes, empty where a bar has none, when the middles of the bars are `pitch`
/// apart.
CaptionPlan planCaptions(const QList<QSizeF>& sizes, double pitch);

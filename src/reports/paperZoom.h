#pragma once

#include <QSizeF>

/// How large the sheet of a report is shown.
struct PaperZoom {
    enum class Fit { None, Width, Page };

    Fit fit = Fit::None;
    double percent = 100; // where it fits nothing

    bool operator==(const PaperZoom&) const = default;
};

inline constexpr double kSmallestZoom = 25;
inline constexpr double kLargestZoom = 400;

/// The percentage within its bounds.
double boundedZoom(double percent);

/// The next larger or smaller one of the usual percentages.
double nextZoom(double percent, bool larger);

/// The percentage at which a sheet fits, a narrow rim of grey around it. `sheet`: its size at 100 %; `room`:
/// what there is for it and for the bar beside it, both in dots; `bar`: how thick a bar is.
double fittingZoom(PaperZoom::Fit fit, const QSizeF& sheet, const QSizeF& room, double bar);

#include "reports/paperZoom.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr double kSteps[] = {25, 33, 50, 67, 75, 90, 100, 110, 125, 150, 175, 200, 250, 300, 350, 400};
constexpr double kRim = 8; // dots on each side

} // namespace

double boundedZoom(double percent) {
    return std::clamp(percent, kSmallestZoom, kLargestZoom);
}

double nextZoom(double percent, bool larger) {
    if (larger) {
        const auto* next = std::upper_bound(std::begin(kSteps), std::end(kSteps), percent);
        return next == std::end(kSteps) ? kLargestZoom : *next;
    }
    const auto* next = std::lower_bound(std::begin(kSteps), std::end(kSteps), percent);
    return next == std::begin(kSteps) ? kSmallestZoom : *std::prev(next);
}

double fittingZoom(PaperZoom::Fit fit, const QSizeF& sheet, const QSizeF& room, double bar) {
    const double wide = (room.width() - 2 * kRim) / sheet.width();
    const double high = (room.height() - 2 * kRim) / sheet.height();
    if (fit == PaperZoom::Fit::Page)
        return boundedZoom(100 * std::min(wide, high));
    // A sheet that is higher than its room has a bar beside it, which takes of the width.
    const bool tall = boundedZoom(100 * wide) / 100 * sheet.height() > room.height();
    return boundedZoom(100 * (tall ? (room.width() - bar - 2 * kRim) / sheet.width() : wide));
}

#include "controls/chartScale.h"

#include "recordset/textNumber.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double kExact = 1e15; // up to here a double writes all its digits
constexpr double kGap = 4;      // between two captions
constexpr double kDiagonal = 1 / std::numbers::sqrt2;

double roundStep(double least) {
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double digit : {1, 2, 5})
        if (digit * power >= least)
            return digit * power;
    return 10 * power;
}

int decimalsOf(double step) {
    // Half a unit in the exponent keeps 0.1, whose logarithm may be a hair below -1, at one place.
    return std::max(0, int(std::ceil(-std::log10(step) - 1e-9)));
}

} // namespace

QString ValueScale::text(int mark) const {
    const double number = value(mark);
    return std::abs(number) <= kExact ? QString::number(number, 'f', decimalsOf(step)) : plainNumber(number);
}

ValueScale scaleOf(const QList<double>& values, int steps) {
    double lowest = 0;
    double highest = 0;
    bool whole = true;
    for (const double value : values) {
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
        whole = whole && value == std::floor(value);
    }
    const double least = highest / steps - lowest / steps;
    if (!std::isnormal(least))
        return {};
    ValueScale scale;
    scale.step = whole ? std::max(1.0, roundStep(least)) : roundStep(least);
    scale.first = std::floor(lowest / scale.step);
    scale.last = std::ceil(highest / scale.step);
    return scale;
}

CaptionPlan planCaptions(const QList<QSizeF>& sizes, double pitch) {
    double width = 0;
    double height = 0;
    for (const QSizeF& size : sizes) {
        width = std::max(width, size.width());
        height = std::max(height, size.height());
    }
    if (width + kGap <= pitch)
        return {false, 1, height, width / 2};
    CaptionPlan plan;
    plan.slanted = true;
    // Slanted lines stand pitch / √2 apart.
    plan.every = std::max(1, int(std::ceil((height + 1) / (kDiagonal * std::max(1.0, pitch)))));
    plan.height = (width + height) * kDiagonal;
    plan.overhang = (width + height / 2) * kDiagonal;
    return plan;
}

#pragma once

#include <QString>

#include <optional>

/// How a share in percent becomes text. The text is cut from the number's shortest decimal form (no zero
/// before the point), never rounded; the kinds differ in what they do from 100 on.
enum class PercentCut {
    Turnover, // exactly 100 is "100"; above it nothing is written
    Share,    // from 100 on nothing is written
    Rank,     // from 100 on it is "100"
};

/// In: percent. Out: "0" for exactly 0, three characters below 1 (negative ones too), four below 10, five
/// below 100, without the "%"; nothing where the text that stands before is to stay.
std::optional<QString> percentText(double percent, PercentCut cut);

/// The share of an interval of purchase: the first five characters of the decimal form, whatever its size.
QString intervalShareText(double percent);

#include "analysis/percentText.h"
#include "support/printQt.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kKept = nullptr; // the text that stands before stays

struct Row {
    double percent;
    const char* turnover;
    const char* share;
    const char* rank;
    const char* interval;
};

const Row kRows[] = {
    {0, "0", "0", "0", "0"},
    {0.05, ".05", ".05", ".05", ".05"},
    {0.5, ".5", ".5", ".5", ".5"},
    {0.256, ".25", ".25", ".25", ".256"},
    {1.0 / 30, ".03", ".03", ".03", ".0333"},
    {5.5555, "5.55", "5.55", "5.55", "5.555"},
    {9.999, "9.99", "9.99", "9.99", "9.999"},
    {12.3456, "12.34", "12.34", "12.34", "12.34"},
    {33.333333333333336, "33.33", "33.33", "33.33", "33.33"},
    {99.999, "99.99", "99.99", "99.99", "99.99"},
    {99.99999999999999, "100", "100", "100", "100"},
    {100, "100", kKept, "100", "100"},
    {150, kKept, kKept, "100", "150"},
    {1234.5678, kKept, kKept, "100", "1234."},
    {-3.5, "-3.", "-3.", "-3.", "-3.5"},
    {-0.5, "-.5", "-.5", "-.5", "-.5"},
    {-12.34, "-12", "-12", "-12", "-12.3"},
};

QString shown(const std::optional<QString>& text) {
    return text.value_or(QStringLiteral("kept"));
}

TEST(PercentText, IsCutAndNeverRoundedInEveryKind) {
    for (const Row& row : kRows) {
        const auto expected = [](const char* text) { return QString::fromUtf8(text ? text : "kept"); };
        EXPECT_EQ(shown(percentText(row.percent, PercentCut::Turnover)), expected(row.turnover))
            << row.percent;
        EXPECT_EQ(shown(percentText(row.percent, PercentCut::Share)), expected(row.share)) << row.percent;
        EXPECT_EQ(shown(percentText(row.percent, PercentCut::Rank)), expected(row.rank)) << row.percent;
        EXPECT_EQ(intervalShareText(row.percent), expected(row.interval)) << row.percent;
    }
}

} // namespace

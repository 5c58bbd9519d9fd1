#include "recordset/textNumber.h"

#include "support/errorOf.h"
#include "support/printQt.h"

#include <gtest/gtest.h>

namespace {

struct NumberCase {
    const char16_t* text;
    double val;
    bool numeric;
};

QString str(const char16_t* text) {
    return QString::fromUtf16(text);
}

TEST(TextNumber, ValReadsTheLeadingNumberAndIsNumericTheWholeText) {
    const NumberCase cases[] = {
        {u"", 0, false},       {u" ", 0, false},          {u"-", 0, false},         {u".", 0, false},
        {u" 12 ", 12, true},   {u"+7", 7, true},          {u"1 2 3", 123, false},   {u"1,000", 1, true},
        {u"1,000.5", 1, true}, {u".5", 0.5, true},        {u"5.", 5, true},         {u"-3.5", -3.5, true},
        {u"- 3", -3, false},   {u"0", 0, true},           {u"0.0", 0, true},        {u"12-", 12, true},
        {u"(5)", 0, true},     {u"￥5", 0, true},         {u"$5", 0, false},        {u"--5", 0, false},
        {u"abc", 0, false},    {u"5%", 5, false},         {u"12abc", 12, false},    {u"1.2.3", 1.2, false},
        {u"1e3", 1000, true},  {u"1d3", 1000, true},      {u"1e", 1, false},        {u"0x10", 0, false},
        {u"&HFF", 255, true},  {u"&HFFFF", -1, true},     {u"&O17", 15, true},      {u"１２", 0, false},
        {u"&H", 0, false},     {u"&H10000", 65536, true}, {u"1\t2\n3", 123, false}, {u",5", 0, false},
        {u"-￥5", 0, true},    {u"￥5-", 0, true},        {u"(-5)", 0, false},      {u"1E+2", 100, true},
    };
    for (const NumberCase& c : cases) {
        EXPECT_EQ(val(str(c.text)), c.val) << str(c.text).toStdString();
        EXPECT_EQ(isNumeric(str(c.text)), c.numeric) << str(c.text).toStdString();
    }
}

TEST(TextNumber, ParseNumericGivesTheWholeNumber) {
    EXPECT_EQ(parseNumeric(u"1,000"), 1000);
    EXPECT_EQ(parseNumeric(u" 5 "), 5);
    EXPECT_EQ(parseNumeric(u"(5)"), -5);
    EXPECT_EQ(parseNumeric(u"12-"), -12);
    EXPECT_EQ(parseNumeric(u"￥5"), 5);
    EXPECT_FALSE(parseNumeric(u"1e999"));
}

TEST(TextNumber, ValOfANumberTooLargeIsAnOverflow) {
    EXPECT_EQ(errorOf([] { val(u"1e400"); }), ErrorNumber::Overflow);
    EXPECT_EQ(val(u"1e308"), 1e308);
    EXPECT_EQ(errorOf([] { val(u"&H1FFFFFFFF"); }), ErrorNumber::Overflow);
}

TEST(TextNumber, TrimTakesOnlyTheBlankOffBothEnds) {
    EXPECT_EQ(trimBlanks(u"  a b  "), u"a b");
    EXPECT_EQ(trimBlanks(u"\t\u3000x\u3000"), u"\t\u3000x\u3000");
    EXPECT_EQ(leftPart(u"甲乙丙", 2), u"甲乙");
    EXPECT_EQ(leftPart(u"甲", 5), u"甲");
    EXPECT_EQ(leftPart(u"甲", 0), u"");
    EXPECT_EQ(errorOf([] { leftPart(u"甲", -1); }), ErrorNumber::BadArgument);
}

TEST(TextNumber, WholeNumbersRoundHalvesToTheEvenNeighbour) {
    const std::pair<double, int> cases[] = {{0.5, 0},  {1.5, 2},   {2.5, 2},
                                            {-0.5, 0}, {-1.5, -2}, {32767.4, 32767}};
    for (const auto& [value, whole] : cases) {
        EXPECT_EQ(toInt16(value), whole) << value;
        EXPECT_EQ(toInt32(value), whole) << value;
    }
    EXPECT_EQ(errorOf([] { toInt16(32767.5); }), ErrorNumber::Overflow);
    EXPECT_EQ(errorOf([] { toInt32(2147483648.0); }), ErrorNumber::Overflow);
    EXPECT_EQ(toInt32(-2147483648.0), INT32_MIN);
}

TEST(TextNumber, PlainAndBareFormOfADouble) {
    struct Case {
        double value;
        const char16_t* plain;
        const char16_t* bare;
    };
    const Case cases[] = {
        {0, u"0", u"0"},
        {-0.0, u"0", u"0"},
        {100, u"100", u"100"},
        {0.5, u"0.5", u".5"},
        {-0.25, u"-0.25", u"-.25"},
        {0.1 + 0.2, u"0.3", u".3"},
        {2.0 / 3, u"0.666666666666667", u".666666666666667"},
        {3 * 1.1, u"3.3", u"3.3"},
        {29.999999999999996, u"30", u"30"},
        {123456789012345.0, u"123456789012345", u"123456789012345"},
        {1E15, u"1E+15", u"1E+15"},
        {1234567890123456.0, u"1.23456789012346E+15", u"1.23456789012346E+15"},
        {0.00001, u"0.00001", u".00001"},
        {1.0 / 30, u"0.0333333333333333", u".0333333333333333"},
        {1E-16, u"1E-16", u".0000000000000001"},
        {1E-15, u"0.000000000000001", u".000000000000001"},
        {1E308, u"1E+308", u"1E+308"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(plainNumber(c.value), str(c.plain));
        EXPECT_EQ(bareNumber(c.value), str(c.bare));
    }
    EXPECT_EQ(plainNumber(12.345678F), u"12.34568");
    EXPECT_EQ(plainNumber(0.1F), u"0.1");
    EXPECT_EQ(bareNumber(0.1F), u".1");
    EXPECT_EQ(plainNumber(1E7F), u"1E+07");
}

TEST(TextNumber, RateTextIsCutAndNeverRounded) {
    const std::pair<double, const char16_t*> cases[] = {
        {0, u"0"},
        {0.05, u"0.05"},
        {0.5, u"0.5"},
        {0.256, u"0.25"},
        {1.0 / 30, u"0.03"},
        {5.5555, u"5.55"},
        {9.999, u"9.99"},
        {12.3456, u"12.34"},
        {100.0 / 3, u"33.33"},
        {99.999, u"99.99"},
        {99.99999999999999, u"100"},
        {100, u"100"},
        {150, u"150"},
        {1234.5678, u"1234.5"},
        {-3.5, u"-3.5"},
        {-0.5, u"-.5"},
        {-12.34, u"-12."},
    };
    for (const auto& [rate, text] : cases)
        EXPECT_EQ(rateText(rate), str(text)) << rate;
}

TEST(TextNumber, RateInSinglePrecisionTestsTheSingleValue) {
    EXPECT_EQ(rateText(float(0.99999999)), u"1");
    EXPECT_EQ(rateText(0.99999999), u"0.99");
    EXPECT_EQ(rateText(float(9.99999999)), u"10");
    EXPECT_EQ(rateText(9.99999999), u"9.99");
    EXPECT_EQ(rateText(float(33.3333333)), u"33.33");
}

} // namespace

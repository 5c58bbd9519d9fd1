#include "recordset/textDate.h"

#include "recordset/cellValue.h"
#include "support/printQt.h"

#include <gtest/gtest.h>

namespace {

const QDate today(2004, 6, 15);

QString shown(const char16_t* text) {
    const auto moment = parseDate(QString::fromUtf16(text), today);
    return moment ? dateText(*moment) : QStringLiteral("no");
}

TEST(TextDate, TextsThatAreDates) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"2004-1-5", u"2004-1-5"},
        {u"2004/1/5", u"2004-1-5"},
        {u"2004.1.5", u"2004-1-5"},
        {u"2004-01-05", u"2004-1-5"},
        {u"2004年1月5日", u"2004-1-5"},
        {u"2004年1月5", u"2004-1-5"},
        {u"04-1-5", u"2004-1-5"},
        {u"98-1-5", u"1998-1-5"},
        {u"2004-1", u"2004-1-1"},
        {u"2004年1月", u"2004-1-1"},
        {u"1-5", u"2004-1-5"},
        {u"1/5", u"2004-1-5"},
        {u"1月5日", u"2004-1-5"},
        {u"1-5-2004", u"2004-1-5"},
        {u"1/5/2004", u"2004-1-5"},
        {u"2004-1-5 8:30", u"2004-1-5 8:30:00"},
        {u"2004-1-5 8:30:15", u"2004-1-5 8:30:15"},
        {u"2004-1-5 下午 1:05", u"2004-1-5 13:05:00"},
        {u"8:30", u"8:30:00"},
        {u" 2004-1-5 ", u"2004-1-5"},
        {u"29-1-5", u"2029-1-5"},
        {u"30-1-5", u"1930-1-5"},
        {u"2004-2-29", u"2004-2-29"},
        {u"9999-12-31", u"9999-12-31"},
        {u"100-1-1", u"100-1-1"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(shown(text), QString::fromUtf16(expected)) << QString::fromUtf16(text).toStdString();
}

TEST(TextDate, TextsThatAreNoDates) {
    for (const auto* text : {u"2004-13-5",
                             u"2004-13-45",
                             u"2004-2-30",
                             u"2003-2-29",
                             u"",
                             u"abc",
                             u"5",
                             u"20040105",
                             u"0000-0-0",
                             u"2004-1-",
                             u"2004-1-5 25:00",
                             u"２００４-1-5",
                             u"1.5",
                             u"2004-1-5 8",
                             u"13-1",
                             u"99-99",
                             u"2004-1-5 下午 13:05",
                             u"10000-1-1",
                             u"2004--1",
                             u"8:61"})
        EXPECT_EQ(shown(text), u"no") << QString::fromUtf16(text).toStdString();
}

TEST(TextDate, TheFirstTenCharactersOfADateWithATimeMayBeNoDate) {
    EXPECT_TRUE(isDate(QStringLiteral("2004-11-21 8:30").left(10)));
    EXPECT_FALSE(isDate(QStringLiteral("2004-1-5 8:30").left(10)));
}

TEST(TextDate, LiteralsOfConditionsAreStricter) {
    EXPECT_TRUE(parseDateLiteral(u"2004-1-5"));
    EXPECT_TRUE(parseDateLiteral(u"2004/01/05 8:30"));
    EXPECT_TRUE(parseDateLiteral(u"2004-1-5 8:30:15"));
    for (const auto* text : {u"2004-13-1", u"2004-2-30", u"2004--1", u"04-1-5", u"1-5-2004", u"2004-1",
                             u"2004.1.5", u"2004-1/5", u"2004-1-5 25:00", u""})
        EXPECT_FALSE(parseDateLiteral(QString::fromUtf16(text))) << QString::fromUtf16(text).toStdString();
}

TEST(TextDate, StoredFormReadsBack) {
    for (const Moment moment :
         {Moment::fromDate({2004, 1, 5}), Moment::fromDate({1970, 1, 1}), Moment::fromDate({100, 3, 1}),
          Moment::fromDate({9999, 12, 31}, 86399), Moment{30600}}) {
        const QByteArray stored = isoText(moment);
        ASSERT_TRUE(parseIso(stored.constData(), int(stored.size()))) << stored.toStdString();
        EXPECT_EQ(parseIso(stored.constData(), int(stored.size()))->seconds, moment.seconds)
            << stored.toStdString();
    }
    EXPECT_EQ(isoText(Moment::fromDate({2004, 1, 5}, 30600)), "2004-01-05 08:30:00");
    EXPECT_FALSE(parseIso("2004-02-30", 10));
    EXPECT_FALSE(parseIso("2004-1-5", 8));
}

TEST(TextDate, FieldTextOfEveryKindOfValue) {
    EXPECT_EQ(fieldText(CellValue()), u"");
    EXPECT_EQ(fieldText(QStringLiteral("  甲 ")), u"甲");
    EXPECT_EQ(fieldText(0.5), u"0.5");
    EXPECT_EQ(fieldText(qint32(7)), u"7");
    EXPECT_EQ(fieldText(Moment::fromDate({2004, 11, 21})), u"2004-11-21");
}

} // namespace

#include "analysis/birthday.h"

#include <QString>

#include <gtest/gtest.h>

namespace {

QString read(const char* text) {
    const auto birthday = parseBirthday(QString::fromUtf8(text));
    return birthday ? QStringLiteral("%1-%2").arg(birthday->month).arg(birthday->day)
                    : QStringLiteral("none");
}

TEST(BirthdayText, IsReadInEveryFormInWhichAShopWritesIt) {
    for (const char* text : {"1980-2-3",
                             "1980-02-03",
                             "1980/02/03",
                             "1980.2.3",
                             "1980年2月3日",
                             "1980年2月3",
                             "1980年02月03号",
                             "80-2-3",
                             "80年2月3日",
                             "2-3",
                             "02-03",
                             "2/3",
                             "2.3",
                             "2月3日",
                             "2月3号",
                             "2月3",
                             "19800203",
                             "800203",
                             "0203",
                             "2-3-1980",
                             "02/03/1980",
                             " 1980-2-3 ",
                             "1980 2 3",
                             "1980, 2, 3",
                             "1980年 2月 3日",
                             "1980-2-3 0:00:00",
                             "1980-02-03T08:30",
                             "１９８０－２－３",
                             "１９８０年２月３日",
                             "一九八〇年二月三日",
                             "一九八零年二月三号",
                             "二月三日"})
        EXPECT_EQ(read(text), u"2-3") << text;
    EXPECT_EQ(read("十二月二十五日"), u"12-25");
    EXPECT_EQ(read("十月十日"), u"10-10");
    EXPECT_EQ(read("一月二十日"), u"1-20");
    EXPECT_EQ(read("十一月三十日"), u"11-30");
    EXPECT_EQ(read("12月二十五日"), u"12-25");
}

TEST(BirthdayText, TheLeapDayNeedsAYearThatHasItOrNone) {
    for (const char* text : {"1980-2-29", "80-2-29", "2-29", "2月29日", "0229", "19800229", "00-2-29"})
        EXPECT_EQ(read(text), u"2-29") << text;
    for (const char* text : {"1981-2-29", "81-2-29", "19810229", "1900-2-29"})
        EXPECT_EQ(read(text), u"none") << text;
}

TEST(BirthdayText, WhatNamesNoDayIsNotGuessed) {
    for (const char* text : {"",
                             " ",
                             "1980",
                             "1980-2",
                             "1980年2月",
                             "12年2月",
                             "2月",
                             "3日",
                             "13-5",
                             "25/12",
                             "2-30",
                             "0-3",
                             "2-0",
                             "1980-13-1",
                             "0000-0-0",
                             "1980-2-3-4",
                             "198-2-3",
                             "19800230",
                             "201112",
                             "190805",
                             "1980203",
                             "12345",
                             "abc",
                             "8:30",
                             "农历二月三日",
                             "二月初三",
                             "八月十五",
                             "正月初一",
                             "1980-2-3(农历)",
                             "-2-3",
                             "约2月3日",
                             "属猴",
                             "111111111111111111111-2-3",
                             "2-33333333333333333333"})
        EXPECT_EQ(read(text), u"none") << text;
}

TEST(NextBirthday, IsTodayOrTheNextOneOverTheYearsEnd) {
    const Birthday birthday{11, 21};
    EXPECT_EQ(nextBirthday(birthday, QDate(2004, 11, 21)), QDate(2004, 11, 21));
    EXPECT_EQ(nextBirthday(birthday, QDate(2004, 11, 20)), QDate(2004, 11, 21));
    EXPECT_EQ(nextBirthday(birthday, QDate(2004, 11, 22)), QDate(2005, 11, 21));
    EXPECT_EQ(nextBirthday({1, 1}, QDate(2004, 12, 31)), QDate(2005, 1, 1));
}

TEST(NextBirthday, OfTheLeapDayIsTheLastOfFebruaryInAYearWithoutIt) {
    const Birthday birthday{2, 29};
    EXPECT_EQ(nextBirthday(birthday, QDate(2005, 2, 1)), QDate(2005, 2, 28));
    EXPECT_EQ(nextBirthday(birthday, QDate(2005, 2, 28)), QDate(2005, 2, 28));
    EXPECT_EQ(nextBirthday(birthday, QDate(2005, 3, 1)), QDate(2006, 2, 28));
    EXPECT_EQ(nextBirthday(birthday, QDate(2007, 3, 1)), QDate(2008, 2, 29));
    EXPECT_EQ(nextBirthday(birthday, QDate(2008, 2, 28)), QDate(2008, 2, 29));
    EXPECT_EQ(nextBirthday(birthday, QDate(2099, 12, 31)), QDate(2100, 2, 28)) << "a century's year";
}

} // namespace

#include "analysis/callList.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class CallLists : public testing::Test {
protected:
    Session& session() { return books.session(); }
    void add(const char* client, const char* birthday, double spent = 0) {
        books.addClient(QString::fromUtf8(client));
        books.changeBehind(
            QStringLiteral("UPDATE clientTable SET 生日 = %1, 消费合计 = %2 WHERE 客户编号 = '%3'")
                .arg(birthday ? u'\'' + QString::fromUtf8(birthday) + u'\'' : QStringLiteral("NULL"))
                .arg(spent)
                .arg(QString::fromUtf8(client)));
    }
    void bought(const char* client, const char* date) {
        books.addLine("1", QString::fromUtf8(client), "p", QString::fromUtf8(date), 1, 10, 5);
    }
    /// Out: "number day days;…".
    static QString textOf(const CallList& list) {
        QStringList rows;
        for (Row row = 0; row < list.rows->size(); ++row)
            rows << toText(list.rows->value(row, 2)) + u' ' + toText(list.rows->value(row, 0)) + u' ' +
                        toText(list.rows->value(row, 1));
        return rows.join(u';');
    }
    QString birthdays(const QDate& today) { return textOf(comingBirthdays(session(), today, 30)); }
    QString lapsed(int days, const QDate& today = QDate(2004, 11, 21)) {
        return textOf(lapsedCustomers(session(), today, days));
    }

    TestBooks books;
};

TEST_F(CallLists, BirthdaysOfThirtyDaysTodayIncludedStandInTheirOrder) {
    add("1", "1980-12-20");
    add("2", "12月21日"); // the thirty-first day
    add("3", "1975/11/21");
    add("4", "11-20"); // yesterday
    add("5", "19901201");
    EXPECT_EQ(birthdays(QDate(2004, 11, 21)), u"3 2004-11-21 0;5 2004-12-1 10;1 2004-12-20 29");
}

TEST_F(CallLists, BirthdaysGoOnOverTheYearsEnd) {
    add("1", "1-3");
    add("2", "12-31");
    add("3", "1-15");
    EXPECT_EQ(birthdays(QDate(2004, 12, 16)), u"2 2004-12-31 15;1 2005-1-3 18");
}

TEST_F(CallLists, OfOneDayWhoSpentMoreStandsFirst) {
    add("1", "11-25", 10);
    add("2", "11-25", 30);
    add("3", "11-25", 30);
    EXPECT_EQ(birthdays(QDate(2004, 11, 21)), u"2 2004-11-25 4;3 2004-11-25 4;1 2004-11-25 4");
}

TEST_F(CallLists, BirthdaysThatCannotBeReadAreCountedAndEmptyOnesAreNot) {
    add("1", "二月初三");
    add("2", "");
    add("3", nullptr);
    add("4", "  ");
    add("5", "1980-2");
    add("6", "11-22");
    const CallList list = comingBirthdays(session(), QDate(2004, 11, 21), 30);
    EXPECT_EQ(list.leftOut, 2);
    EXPECT_EQ(textOf(list), u"6 2004-11-22 1");
}

TEST_F(CallLists, TheLapsedAreThoseWhoseLastLineIsOldEnoughHighestSpenderFirst) {
    add("1", "", 50);
    add("2", "", 80);
    add("3", "", 99);
    add("4", "", 10);
    bought("1", "2004-08-23"); // 90 days ago
    bought("2", "2004-01-05");
    bought("2", "2003-12-31");
    bought("3", "2004-01-05");
    bought("3", "2004-08-24"); // 89 days ago
    bought("4", "2003-11-22"); // 365 days ago
    EXPECT_EQ(lapsed(90), u"2 2004-1-5 321;1 2004-8-23 90;4 2003-11-22 365");
    EXPECT_EQ(lapsed(180), u"2 2004-1-5 321;4 2003-11-22 365");
    EXPECT_EQ(lapsed(365), u"4 2003-11-22 365");
    EXPECT_EQ(lapsed(365, QDate(2004, 11, 20)), u"");
}

TEST_F(CallLists, WhoNeverBoughtOrWithoutADayIsCountedAndNotListed) {
    add("1", "");
    add("2", "");
    add("3", "");
    bought("2", "2004-01-05");
    books.changeBehind("INSERT INTO buyList (流水号, 客户编号, 日期) VALUES (7, '3', NULL)");
    const CallList list = lapsedCustomers(session(), QDate(2004, 11, 21), 90);
    EXPECT_EQ(textOf(list), u"2 2004-1-5 321");
    EXPECT_EQ(list.leftOut, 2);
}

TEST_F(CallLists, ALineOfTodayOrOfADayToComeKeepsACustomerOff) {
    add("1", "");
    bought("1", "2003-01-01");
    bought("1", "2005-01-01");
    EXPECT_EQ(lapsed(90), u"");
}

TEST_F(CallLists, NumbersAgreeWithoutTheirBlanksAndWhateverTheirCase) {
    add(" a1 ", "");
    bought("A1", "2004-01-05");
    bought("a1", "2004-01-06 08:30:00");
    EXPECT_EQ(lapsed(90), u" a1  2004-1-6 320");
}

TEST_F(CallLists, NoFilterSortOrReopenedCursorTakesAnybodyAway) {
    add("1", "11-22", 1);
    add("2", "11-23", 2);
    bought("1", "2003-01-01");
    bought("2", "2003-01-01");
    bought("2", "2004-11-20");
    session().open_rs();
    session().clientTable->setFilter("客户编号 = '9'");
    session().buyList->setSort("日期");
    session().buyList->setFilter("日期 < #2004-1-1#");
    EXPECT_EQ(lapsed(90), u"1 2003-1-1 690");
    EXPECT_EQ(birthdays(QDate(2004, 11, 21)), u"1 2004-11-22 1;2 2004-11-23 2");
    session().reopen(session().buyList, "Select * From buyList Where 客户编号 = '1'");
    EXPECT_EQ(lapsed(90), u"1 2003-1-1 690");
    EXPECT_EQ(session().clientTable->Filter(), u"客户编号 = '9'") << "the register keeps its own";
}

TEST_F(CallLists, FollowTheBooksFromOneTimeToTheNext) {
    add("1", "11-22", 5);
    bought("1", "2003-01-01");
    session().open_rs();
    EXPECT_EQ(lapsed(90), u"1 2003-1-1 690");
    session().buyList->AddNew();
    session().buyList->Fields("客户编号").setValue(QStringLiteral("1"));
    session().buyList->Fields("日期").setValue(QStringLiteral("2004-11-20"));
    session().buyList->Update();
    EXPECT_EQ(lapsed(90), u"") << "a line that came since";
    session().buyList->MoveLast();
    session().buyList->Delete();
    EXPECT_EQ(lapsed(90), u"1 2003-1-1 690") << "and is gone again";
    session().clientTable->Delete();
    EXPECT_EQ(lapsed(90), u"");
    EXPECT_EQ(birthdays(QDate(2004, 11, 21)), u"");
}

TEST_F(CallLists, SayTheirDaysTheirNumberAndWhomTheyLeaveOut) {
    add("1", "11-22");
    add("2", "?");
    const QDate today(2004, 11, 21);
    const CallKind& birthday = callKinds()[0];
    const CallKind& lapse = callKinds()[1];
    CallList list = birthday.make(session(), today, birthday.days.front());
    EXPECT_EQ(birthday.head(list, today, 30), u"2004-11-21 至 2004-12-20 过生日：1 位");
    EXPECT_EQ(birthday.scope(list), u"按全部客户资料；1 位的生日认不出，没有列入");
    list = lapse.make(session(), today, 180);
    EXPECT_EQ(lapse.head(list, today, 180), u"到 2004-11-21 已有 180 天以上没有购买：0 位");
    EXPECT_EQ(lapse.scope(list), u"按全部购物记录；没有购买日期的 2 位没有列入");
    EXPECT_EQ(lapse.scope({}), u"按全部购物记录");
}

} // namespace

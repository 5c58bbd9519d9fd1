#include "recordset/ignoringErrors.h"

#include "support/errorOf.h"
#include "support/printQt.h"
#include "support/scratchFile.h"

#include <gtest/gtest.h>

namespace {

class Ignoring : public testing::Test {
protected:
    ScratchFile file{
        QStringLiteral("CREATE TABLE clientTable (流水号 INTEGER, 客户编号 TEXT(20) COLLATE NOCASE);"
                       "INSERT INTO clientTable VALUES (1, '7');")};
    IgnoringErrors errors;
};

TEST_F(Ignoring, DroppingAMissingWorkCopyLetsTheNextStatementRun) {
    EXPECT_FALSE(errors.run([&] { file.run("Drop Table clientTable2"); }));
    EXPECT_EQ(errors.number(), ErrorNumber::DropMissing);
    EXPECT_TRUE(errors.run([&] { file.run("Select * Into clientTable2 From clientTable"); }));
    EXPECT_EQ(file.stored("SELECT 客户编号 FROM clientTable2"), u"7");
}

TEST_F(Ignoring, AWorkCopyMayBeOlderThanItsTable) {
    file.run("Select * Into clientTable2 From clientTable");
    const RecordsetPtr clients = file.open("Select * From clientTable");
    clients->Fields("客户编号").setValue(QStringLiteral("8"));
    clients->Update();
    EXPECT_EQ(file.stored("SELECT 客户编号 FROM clientTable2"), u"7");
}

TEST_F(Ignoring, AConditionThatFailsIsFalse) {
    Recordset closed(file.connection());
    EXPECT_FALSE(errors.test([&] { return closed.RecordCount() == 0; }));
    EXPECT_EQ(errors.number(), ErrorNumber::IsClosed);
    EXPECT_TRUE(errors.test([] { return true; }));
    EXPECT_EQ(errors.number(), ErrorNumber::IsClosed) << "a later success leaves the last error";
    errors.clear();
    EXPECT_EQ(errors.number(), 0);
}

TEST_F(Ignoring, ATargetKeepsItsValueWhereTheStatementFails) {
    Recordset closed(file.connection());
    int count = 5;
    errors.run([&] { count = closed.RecordCount(); });
    EXPECT_EQ(count, 5);
}

TEST_F(Ignoring, ADiskThatFailsEndsTheActionAndOnlyRunTimeErrorsArePassedOver) {
    EXPECT_THROW(errors.run([] { throw DatabaseLost(QStringLiteral("disk")); }), ActionEnded);
    EXPECT_THROW(errors.run([] { throw std::bad_alloc(); }), std::bad_alloc);
}

TEST_F(Ignoring, WhatIsBookedAllTheSameEndsTheActionAsBooked) {
    for (const Outcome outcome : {Outcome::Booked, Outcome::TakenBack})
        try {
            errors.run([outcome] { throw DatabaseLost(QStringLiteral("disk"), outcome); });
            ADD_FAILURE() << "passed over";
        } catch (const ActionEnded& ended) {
            EXPECT_EQ(ended.isBooked(), outcome == Outcome::Booked);
            EXPECT_EQ(ended.text(), u"disk");
        }
}

TEST_F(Ignoring, AFileOfWhichNobodyKnowsWhatItHoldsIsReadAnewByANewStart) {
    EXPECT_THROW(errors.run([] { throw DatabaseLost(QStringLiteral("disk"), Outcome::Unknown); }),
                 DatabaseLost);
}

} // namespace

#include "support/errorOf.h"
#include "support/printQt.h"
#include "support/scratchFile.h"

#include <gtest/gtest.h>

namespace {

class Position : public testing::Test {
protected:
    Position()
        : m_file(QStringLiteral("CREATE TABLE t (流水号 INTEGER, k TEXT(20) COLLATE NOCASE, n REAL);")) {}

    RecordsetPtr withKeys(const QStringList& keys) {
        for (const QString& key : keys)
            m_file.connection().execute(QStringLiteral("INSERT INTO t (k) VALUES ('%1')").arg(key));
        return m_file.open(QStringLiteral("Select * From t"));
    }

    static std::string state(const RecordsetPtr& rs) {
        return std::string(rs->isBOF() ? "T" : "F") + (rs->isEOF() ? "T" : "F") + " " +
               std::to_string(rs->AbsolutePosition()) + " " + std::to_string(rs->RecordCount());
    }

    ScratchFile m_file;
};

TEST_F(Position, TraceOverThreeKeys) {
    const RecordsetPtr rs = withKeys({"1", "2", "3"});
    EXPECT_EQ(state(rs), "FF 1 3");
    rs->MovePrevious();
    EXPECT_EQ(state(rs), "TF -2 3");
    EXPECT_EQ(errorOf([&] { rs->MovePrevious(); }), 3021);
    EXPECT_EQ(state(rs), "TF -2 3");
    rs->MoveNext();
    EXPECT_EQ(state(rs), "FF 1 3");
    rs->MoveLast();
    rs->MoveNext();
    EXPECT_EQ(state(rs), "FT -3 3");
    rs->Find("k = '1'");
    EXPECT_EQ(state(rs), "FT -3 3");
    rs->MoveFirst();
    rs->Delete();
    EXPECT_EQ(state(rs), "FF -1 2");
    rs->MoveNext();
    EXPECT_EQ(state(rs), "FF 1 2");
    EXPECT_EQ(rs->Fields("k").text(), u"2");
    rs->setFilter("k = '3'");
    EXPECT_EQ(state(rs), "FF 1 1");
    rs->setFilter("k = '9'");
    EXPECT_EQ(state(rs), "TT -1 0");
    EXPECT_EQ(errorOf([&] { rs->MoveFirst(); }), 3021);
    EXPECT_EQ(state(rs), "TT -1 0");
    rs->clearFilter();
    EXPECT_EQ(state(rs), "FF 1 2");
    rs->AddNew();
    rs->Fields("k").setValue(QStringLiteral("0"));
    EXPECT_EQ(state(rs), "FF 3 3");
    rs->Update();
    EXPECT_EQ(state(rs), "FF 3 3");
    rs->setSort("k");
    EXPECT_EQ(state(rs), "FF 1 3");
    EXPECT_EQ(rs->Fields("k").text(), u"0");
    rs->setAbsolutePosition(9);
    EXPECT_EQ(state(rs), "FT -3 3");
}

TEST_F(Position, StateCanBeReadClosedAndEveryOtherMemberFails) {
    Recordset rs(m_file.connection());
    EXPECT_EQ(rs.State(), 0);
    EXPECT_EQ(errorOf([&] { rs.MoveFirst(); }), 3704);
    EXPECT_EQ(errorOf([&] { (void)rs.RecordCount(); }), 3704);
    EXPECT_EQ(errorOf([&] { (void)rs.isBOF(); }), 3704);
    EXPECT_EQ(errorOf([&] { rs.setFilter("k = '1'"); }), 3704);
    EXPECT_EQ(errorOf([&] { rs.Requery(); }), 3704);
    EXPECT_EQ(errorOf([&] { rs.AddNew(); }), 3704);
    rs.Open("Select * From t");
    EXPECT_EQ(rs.State(), 1);
    EXPECT_EQ(errorOf([&] { rs.Open("Select * From t"); }), 3705);
}

TEST_F(Position, ReopenThatFailsLeavesAClosedRecordsetInTheSlot) {
    RecordsetPtr slot = withKeys({"1"});
    EXPECT_EQ(errorOf([&] { reopen(slot, m_file.connection(), "Select * From missing"); }), 3078);
    EXPECT_EQ(slot->State(), 0);
}

TEST_F(Position, OpeningOnAStatementWithoutRowsRunsItAndStaysClosed) {
    withKeys({"1", "2"});
    Recordset rs(m_file.connection());
    rs.Open("Delete * From t");
    EXPECT_EQ(rs.State(), 0);
    EXPECT_EQ(m_file.stored("SELECT count(*) FROM t"), u"0");
}

TEST_F(Position, OpenOnAnEmptyTableHasBothEnds) {
    const RecordsetPtr rs = withKeys({});
    EXPECT_EQ(state(rs), "TT -1 0");
    EXPECT_EQ(rs->AbsolutePage(), -1);
    EXPECT_EQ(rs->PageSize(), 10);
}

TEST_F(Position, DeletingTheOnlyRowThenMovingToTheLastIsNoErrorOnce) {
    const RecordsetPtr rs = withKeys({"1"});
    rs->Delete();
    EXPECT_EQ(state(rs), "FF -1 0");
    rs->MoveNext();
    EXPECT_EQ(state(rs), "FT -1 0");
    rs->MoveLast();
    EXPECT_EQ(state(rs), "TT -1 0");
    EXPECT_EQ(errorOf([&] { rs->MoveLast(); }), 3021);
}

TEST_F(Position, MovePreviousFromTheEndOfAnEmptiedViewGivesBothEnds) {
    const RecordsetPtr rs = withKeys({"1"});
    rs->Delete();
    rs->MoveNext();
    rs->MovePrevious();
    EXPECT_EQ(state(rs), "TT -1 0");
}

TEST_F(Position, FromADeletedRowMovesToItsNeighbours) {
    const RecordsetPtr rs = withKeys({"1", "2", "3"});
    rs->setAbsolutePosition(2);
    rs->Delete();
    EXPECT_EQ(errorOf([&] { (void)rs->Fields("k").Value(); }), 3021);
    rs->MovePrevious();
    EXPECT_EQ(rs->Fields("k").text(), u"1");
    rs->MoveNext();
    EXPECT_EQ(rs->Fields("k").text(), u"3");
    rs->Delete();
    rs->MoveNext();
    EXPECT_EQ(state(rs), "FT -3 1");
}

TEST_F(Position, AbsolutePositionBelowOneIsRefusedAndOnAnEmptyViewThereIsNoRow) {
    const RecordsetPtr rs = withKeys({"1", "2"});
    EXPECT_EQ(errorOf([&] { rs->setAbsolutePosition(0); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->setAbsolutePosition(-2); }), 3001);
    EXPECT_EQ(state(rs), "FF 1 2");
    rs->setFilter("k = 'x'");
    EXPECT_EQ(errorOf([&] { rs->setAbsolutePosition(1); }), 3021);
}

TEST_F(Position, PagingMembers) {
    QStringList keys;
    for (int i = 1; i <= 25; ++i)
        keys << QString::number(i);
    const RecordsetPtr rs = withKeys(keys);
    EXPECT_EQ(rs->PageCount(), 3);
    rs->setAbsolutePage(3);
    EXPECT_EQ(rs->AbsolutePosition(), 21);
    EXPECT_EQ(rs->AbsolutePage(), 3);
    rs->setPageSize(40);
    EXPECT_EQ(rs->AbsolutePosition(), 21);
    EXPECT_EQ(rs->PageCount(), 1);
    rs->setPageSize(0);
    EXPECT_EQ(rs->PageCount(), 0);
    EXPECT_EQ(rs->AbsolutePage(), -1);
    rs->setPageSize(-3);
    EXPECT_EQ(rs->PageCount(), 0);
    rs->setPageSize(7);
    rs->setFilter("k <> '1'");
    EXPECT_EQ(rs->PageSize(), 7);
    rs->Requery();
    EXPECT_EQ(rs->PageSize(), 7);
    rs->MovePrevious();
    EXPECT_EQ(rs->AbsolutePage(), -2);
    rs->setAbsolutePage(99);
    EXPECT_EQ(rs->AbsolutePage(), -3);
    EXPECT_EQ(errorOf([&] { rs->setAbsolutePage(0); }), 3001);
    RecordsetPtr slot = rs;
    reopen(slot, m_file.connection(), "Select * From t");
    EXPECT_EQ(slot->PageSize(), 10);
}

TEST_F(Position, FindStartsAtTheCurrentRow) {
    const RecordsetPtr rs = withKeys({"1", "2", "1", "3"});
    rs->Find("k = '1'");
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    rs->MoveNext();
    rs->Find("k = '1'");
    EXPECT_EQ(rs->AbsolutePosition(), 3);
    rs->MoveNext();
    rs->Find("k = '1'");
    EXPECT_TRUE(rs->isEOF());
    rs->MoveFirst();
    rs->Find("k = '1'", 1);
    EXPECT_EQ(rs->AbsolutePosition(), 3);
    rs->Find("k = '2'", 0, Recordset::Direction::Backward);
    EXPECT_EQ(rs->AbsolutePosition(), 2);
    rs->Find("k = '3'", 0, Recordset::Direction::Backward);
    EXPECT_TRUE(rs->isBOF());
    rs->Find("k = '2'");
    EXPECT_EQ(rs->AbsolutePosition(), 2);
}

TEST_F(Position, FindBackwardFromBehindTheRowsBeginsOnTheLastOne) {
    const RecordsetPtr rs = withKeys({"1", "2", "1"});
    rs->MoveLast();
    rs->MoveNext();
    ASSERT_TRUE(rs->isEOF());
    rs->Find("k = '1'", 0, Recordset::Direction::Backward);
    EXPECT_EQ(rs->AbsolutePosition(), 3);
}

TEST_F(Position, FindRefusesMoreThanOneClauseAndStays) {
    const RecordsetPtr rs = withKeys({"1", "2"});
    EXPECT_EQ(errorOf([&] { rs->Find("k = '2' Or k = '1'"); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->Find("(k = '2')"); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->Find("k = '2"); }), 3001);
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    rs->setFilter("k = '9'");
    EXPECT_EQ(errorOf([&] { rs->Find("k = '2'"); }), 3021);
}

TEST_F(Position, FindFromADeletedRowStartsAtTheOneThatFollowed) {
    const RecordsetPtr rs = withKeys({"1", "2", "1", "3"});
    rs->Delete();
    rs->Find("k = '1'");
    EXPECT_EQ(rs->AbsolutePosition(), 2);
}

TEST_F(Position, BookmarksSurviveFilterSortAndUpdateAndDieWithRequery) {
    const RecordsetPtr rs = withKeys({"1", "2", "3"});
    rs->MoveNext();
    const Bookmark mark = rs->Bookmark();
    rs->setSort("k Desc");
    rs->setBookmark(mark);
    EXPECT_EQ(rs->Fields("k").text(), u"2");
    rs->Fields("n").setValue(4.0);
    rs->Update();
    rs->setBookmark(mark);
    rs->setFilter("k = '1'");
    EXPECT_EQ(errorOf([&] { rs->setBookmark(mark); }), 3001);
    EXPECT_EQ(rs->Fields("k").text(), u"1");
    rs->clearFilter();
    rs->setBookmark(mark);
    rs->Delete();
    EXPECT_EQ(errorOf([&] { rs->setBookmark(mark); }), 3001);
    EXPECT_EQ(errorOf([&] { (void)rs->Bookmark(); }), 3021);
    rs->MoveFirst();
    const Bookmark before = rs->Bookmark();
    rs->Requery();
    EXPECT_EQ(errorOf([&] { rs->setBookmark(before); }), 3001);
}

TEST_F(Position, ABookmarkOfANewRowHoldsAfterItsUpdate) {
    const RecordsetPtr rs = withKeys({"1"});
    rs->AddNew();
    rs->Fields("k").setValue(QStringLiteral("2"));
    const Bookmark mark = rs->Bookmark();
    rs->Update();
    rs->MoveFirst();
    rs->setBookmark(mark);
    EXPECT_EQ(rs->Fields("k").text(), u"2");
}

} // namespace

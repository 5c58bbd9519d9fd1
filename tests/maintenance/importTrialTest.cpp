#include "maintenance/importTrial.h"
#include "recordset/fileMark.h"
#include "support/testBooks.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

class Trial : public testing::Test {
protected:
    Session& session() { return books.session(); }
    /// A source of these rows, whose columns go into those of the target, the first into the first.
    ImportTrial& tryRows(int target, const QStringList& columns, const std::vector<QString>& cells) {
        plan.target = findImportTarget(target);
        plan.targetColumns = columns;
        rows = SourceRows(columns, cells);
        std::vector<int> places;
        for (int i = 0; i < columns.size(); ++i)
            places.push_back(i);
        trial = std::make_unique<ImportTrial>(session(), plan, rows, places);
        while (!trial->finished())
            trial->run(1000);
        return *trial;
    }
    QByteArray file() {
        QFile books_(books.path());
        return books_.open(QIODevice::ReadOnly) ? books_.readAll() : QByteArray();
    }

    TestBooks books;
    ImportPlan plan;
    SourceRows rows;
    std::unique_ptr<ImportTrial> trial;
};

TEST_F(Trial, TellsWhatEachRowWouldBecomeAndWhy) {
    session().open_rs();
    ImportTrial& found = tryRows(3, {"产品编号", "单价", "数量", "品名", "日期"},
                                 {" p1 ",       "12元",    "",  "纸",
                                  "2004-1-5", //
                                  "p2",         "1,200.5", "7", "笔",
                                  "2004-13-45", //
                                  "p3",         "1.50",    "2", QString(53, u'长'),
                                  "2004-1-6", //
                                  "p4",         "3",       "1", "墨",
                                  "2004-1-7"});
    EXPECT_EQ(found.become(0), QStringList({"p1", "12", "0", "纸", "2004-1-5"}));
    EXPECT_EQ(found.remark(0), u"单价不是数字，只取开头的数");
    EXPECT_EQ(found.become(1)[4], u"");
    EXPECT_EQ(found.remark(1), u"日期存不进，这一格会空着");
    EXPECT_EQ(found.become(2)[3], QString(50, u'长'));
    EXPECT_EQ(found.remark(2), u"品名太长，截去 3 个字");
    EXPECT_EQ(found.become(2)[1], u"1.5");
    EXPECT_EQ(found.remark(3), u"");
    EXPECT_EQ(found.remarkable(), std::vector<int>({0, 1, 2}));
    EXPECT_EQ(found.summary(), u"试了 4 行：1 行照样导入，3 行有改动，0 行不合格。试导入没有写入任何内容。");
}

TEST_F(Trial, WhatItTellsIsWhatTheImportWrites) {
    session().open_rs();
    const QStringList columns{"产品编号", "单价", "成本", "数量", "品名", "折扣", "日期"};
    const std::vector<QString> cells{" p1 ", "12元",     "abc", ".75",      QString(80, u'长'),
                                     "九折", "2004-1-1", "p2",  "",         QString(),
                                     "-3",   " 纸 ",     "90",  "2004-2-30"};
    ImportTrial& found = tryRows(3, columns, cells);
    const std::vector<QStringList> told{found.become(0), found.become(1)};
    plan.sourceColumns = columns;
    plan.rows = SourceRows(columns, cells);
    const RecordsetPtr target = targetRecordset(session(), plan);
    ImportTransfer transfer(session(), plan, target);
    transfer.run(1000000);
    ASSERT_TRUE(transfer.finished());
    target->MoveFirst();
    for (const QStringList& row : told) {
        for (int i = 0; i < row.size(); ++i)
            EXPECT_EQ(fieldText(target->Fields(i).Value()), row[i]) << columns[i].toStdString();
        target->MoveNext();
    }
}

TEST_F(Trial, EveryRowThatTheDateTestWouldStopAtIsRefused) {
    session().open_rs();
    ImportTrial& found =
        tryRows(2, {"日期", "数量"}, {"2004-1-1", "1", "04-1-1", "2", "2004-2-1", "x", "", "3"});
    EXPECT_EQ(found.fate(0), ImportTrial::Fate::AsItIs);
    EXPECT_EQ(found.fate(1), ImportTrial::Fate::Refused);
    EXPECT_EQ(found.fate(2), ImportTrial::Fate::Changed);
    EXPECT_EQ(found.fate(3), ImportTrial::Fate::Refused);
    EXPECT_EQ(found.remark(1), u"日期格式不符，导入会在这里停下");
    EXPECT_EQ(found.summary(), u"试了 4 行：1 行照样导入，1 行有改动，2 行不合格。"
                               u"有不合格的行时，导入一行也不写入。试导入没有写入任何内容。");
    EXPECT_EQ(tryRows(3, {"日期"}, {"04-1-1"}).fate(0), ImportTrial::Fate::AsItIs)
        << "only order lines are tested";
}

TEST_F(Trial, WritesNothingAndLeavesTheCursorsWhereTheyAre) {
    books.addProduct("1", "纸", 10, 2, 5);
    books.addProduct("2", "笔", 10, 2, 5);
    session().open_rs();
    session().productTable->MoveLast();
    session().productTable->Fields("品名").setValue(QStringLiteral("未存"));
    const QByteArray before = file();
    const FileMark mark = markIn(before);
    const int commits = session().cn.commits();
    tryRows(3, {"产品编号", "日期"}, {"7", "x", "8", "2004-1-1"});
    EXPECT_EQ(file(), before);
    EXPECT_EQ(markIn(file()), mark);
    EXPECT_EQ(session().cn.commits(), commits);
    EXPECT_EQ(session().productTable->pendingCount(), 1);
    EXPECT_EQ(session().productTable->AbsolutePosition(), 2);
    EXPECT_EQ(session().productTable->RecordCount(), 2);
}

TEST_F(Trial, ColumnsOfTheSourceComeFromTheirOwnPlaces) {
    session().open_rs();
    plan.target = findImportTarget(1);
    plan.targetColumns = QStringList{"客户编号", "联系人"};
    rows = SourceRows({"甲", "乙", "丙"}, {"a", "b", "c"});
    ImportTrial swapped(session(), plan, rows, {2, 0});
    swapped.run(1000);
    EXPECT_EQ(swapped.become(0), QStringList({"c", "a"}));
    EXPECT_EQ(rows.cell(0, 1), u"b") << "the rows stay whole";
}

TEST_F(Trial, OfNoRowsIsFinishedAtOnce) {
    session().open_rs();
    EXPECT_TRUE(tryRows(1, {"客户编号"}, {}).finished());
    EXPECT_TRUE(trial->remarkable().empty());
}

} // namespace

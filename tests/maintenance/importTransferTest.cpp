#include "maintenance/importTransfer.h"
#include "maintenance/backup.h"
#include "support/smallDisk.h"
#include "support/testBooks.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

ImportPlan clientPlan(int rows) {
    ImportPlan plan;
    plan.target = findImportTarget(1);
    plan.sourceColumns = QStringList{"编号", "名字"};
    plan.targetColumns = QStringList{"客户编号", "联系人"};
    plan.rows.begin(plan.sourceColumns);
    for (int i = 0; i < rows; ++i) {
        plan.rows.add(QString::number(i));
        plan.rows.add(QStringLiteral("联系人%1").arg(i));
    }
    return plan;
}

class Transfer : public testing::Test {
protected:
    Session& session() { return books.session(); }
    void runAll(const ImportPlan& plan) {
        const RecordsetPtr target = targetRecordset(session(), plan);
        ImportTransfer transfer(session(), plan, target);
        while (!transfer.finished() && transfer.fault().isEmpty())
            transfer.run(1000000);
        clean = transfer.clean();
        fault = transfer.fault();
    }
    QString stored(const char* sql) { return books.stored(QString::fromUtf8(sql)); }

    TestBooks books;
    bool clean = false;
    QString fault;
};

TEST_F(Transfer, RowsComeInBlocksOfTwoThousandATransaction) {
    session().open_rs();
    const int before = session().cn.commits();
    runAll(clientPlan(5000));
    EXPECT_EQ(session().cn.commits(), before + 3);
    EXPECT_EQ(stored("SELECT count(*), max(流水号) FROM clientTable"), u"5000|5000");
    EXPECT_TRUE(clean);
    EXPECT_EQ(session().clientTable->RecordCount(), 0) << "seen after a requery";
    com_return(session(), *findImportTarget(1));
    EXPECT_EQ(session().clientTable->RecordCount(), 5000);
}

TEST_F(Transfer, NumbersAreTheValueOfTheirLeadingDigitsAndTextsAreCut) {
    ImportPlan plan;
    plan.target = findImportTarget(3);
    plan.sourceColumns = plan.targetColumns = QStringList{"产品编号", "单价", "成本", "数量", "品名", "折扣"};
    plan.rows = SourceRows(plan.sourceColumns, {" p1 ", "12元", "abc", ".75", QString(80, u'长'), "九折",
                                                "p2", QString(), "", "-3", " 纸 ", "90"});
    session().open_rs();
    runAll(plan);
    EXPECT_EQ(stored("SELECT 产品编号, 单价, 成本, 数量, length(品名), 折扣 FROM productTable"),
              u"p1|12.0|0.0|0.75|50|九折;p2|0.0|0.0|-3.0|1|90");
    EXPECT_TRUE(clean);
}

TEST_F(Transfer, ARowWithARefusedCellStandsWithoutItAndSilencesTheEnd) {
    ImportPlan plan;
    plan.target = findImportTarget(2);
    plan.sourceColumns = plan.targetColumns = QStringList{"日期", "客户编号", "数量", "实付"};
    plan.rows = SourceRows(plan.sourceColumns, {"2004-13-45", "7", "1", "2", "2004-1-5", "8", "3", "4"});
    session().open_rs();
    EXPECT_EQ(judgement_Date(plan), u"");
    runAll(plan);
    EXPECT_EQ(stored("SELECT 日期, 客户编号, 数量, 实付 FROM buyList"),
              u"Null|7|1.0|2.0;2004-01-05|8|3.0|4.0");
    EXPECT_FALSE(clean);
}

TEST_F(Transfer, TheDateTestLooksAtFourDigitsAndADash) {
    ImportPlan plan;
    plan.target = findImportTarget(2);
    plan.sourceColumns = plan.targetColumns = QStringList{"日期"};
    const std::pair<const char*, bool> dates[] = {
        {"2004-1-1", true},      {"2004-13-45", true}, {" 2004-1-1 ", true}, {"04-1-1", false},
        {"2004/1/1", false},     {"abcd-ef", false},   {"", false},          {"2004年1月", false},
        {"２００４-1-1", false}, {"2004－1-1", false}, {"٢٠٠٤-1-1", false},  {"200４-1-1", false}};
    for (const auto& [date, passes] : dates) {
        plan.rows = SourceRows(plan.sourceColumns, {QStringLiteral("2004-1-1"), QString::fromUtf8(date)});
        EXPECT_EQ(judgement_Date(plan).isEmpty(), passes) << date;
        EXPECT_TRUE(passes || judgement_Date(plan).startsWith(u"第2记录")) << date;
    }
    plan.target = findImportTarget(3);
    EXPECT_EQ(judgement_Date(plan), u"") << "only order lines are tested";
}

TEST_F(Transfer, AFullDiskTakesTheBlockBackAndWhatWasCommittedStands) {
    session().open_rs();
    runAll(clientPlan(3000));
    com_return(session(), *findImportTarget(1));
    {
        const FileSizeLimit small(rlim_t(QFileInfo(books.path()).size()) + 30000);
        runAll(clientPlan(30000));
    }
    EXPECT_FALSE(fault.isEmpty()) << "the user is told";
    EXPECT_FALSE(clean);
    com_return(session(), *findImportTarget(1));
    EXPECT_EQ(QString::number(session().clientTable->RecordCount()),
              stored("SELECT count(*) FROM clientTable"))
        << "the program sees what the file holds";
    EXPECT_GE(session().clientTable->RecordCount(), 3000);
    session().clientTable->MoveFirst();
    session().clientTable->Fields("电话").setValue(QStringLiteral("1"));
    session().clientTable->Update();
    EXPECT_EQ(stored("SELECT 电话 FROM clientTable WHERE rowid = 1"), u"1") << "and works on";
    EXPECT_EQ(stored("PRAGMA integrity_check"), u"ok");
}

TEST_F(Transfer, ABackupDuringAnImportHoldsTheBlocksCommittedByThen) {
    session().open_rs();
    const ImportPlan plan = clientPlan(9000);
    const RecordsetPtr target = targetRecordset(session(), plan);
    ImportTransfer transfer(session(), plan, target);
    const QString copy = books.path() + ".backup.mdb";
    for (int blocks = 1; blocks <= 4; ++blocks) {
        transfer.run(1000000);
        ASSERT_FALSE(transfer.finished());
        ASSERT_TRUE(backUpDatabase(books.path(), copy));
        EXPECT_EQ(databaseFault(copy), u"");
        Session copied(copy);
        Statement rows = copied.cn.prepare("SELECT count(*) FROM clientTable");
        rows.step();
        EXPECT_EQ(rows.integer(0), 2000 * blocks);
    }
    transfer.run(1000000);
    EXPECT_TRUE(transfer.finished() && transfer.clean()) << "the import goes on behind a backup";
    EXPECT_EQ(stored("SELECT count(*) FROM clientTable"), u"9000");
}

TEST_F(Transfer, KilledDuringAnImportTheFileIsSoundAndHoldsWholeRows) {
    const ImportPlan plan = clientPlan(40000);
    for (int kill = 0; kill < 12; ++kill) {
        books.execute("DELETE FROM clientTable");
        int pipes[2] = {};
        ASSERT_EQ(pipe(pipes), 0);
        const pid_t child = fork();
        if (child == 0) {
            Session inChild(books.path());
            inChild.open_rs();
            const RecordsetPtr target = targetRecordset(inChild, plan);
            ImportTransfer transfer(inChild, plan, target);
            while (!transfer.finished()) {
                transfer.run(5);
                if (write(pipes[1], "x", 1) != 1)
                    break;
            }
            std::_Exit(0);
        }
        // Killed somewhere behind the block that is told, in the middle of the next one or of its commit.
        close(pipes[1]);
        char told = 0;
        for (int i = 0; i <= kill && read(pipes[0], &told, 1) == 1; ++i)
            continue;
        close(pipes[0]);
        ::kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        ASSERT_EQ(databaseFault(books.path()), u"");
        Session after(books.path());
        Statement faults = after.cn.prepare("SELECT count(*), sum(联系人 IS NOT '联系人' || 客户编号), "
                                            "max(rowid) - min(rowid) + 1 FROM clientTable");
        faults.step();
        EXPECT_EQ(faults.number(1), 0) << "a row in part";
        EXPECT_EQ(faults.number(0), faults.number(2)) << "a row between others is missing";
    }
}

TEST(ImportTargets, LeaveOutWhatIsDerived) {
    TestBooks books;
    books.session().open_rs();
    const QStringList clients = pairableColumns(books.session(), *findImportTarget(1));
    for (const char* column : {"差额利润", "消费合计", "差额利润率", "购买数"})
        EXPECT_FALSE(clients.contains(QString::fromUtf8(column)));
    EXPECT_FALSE(pairableColumns(books.session(), *findImportTarget(2)).contains("差额利润"));
    EXPECT_EQ(pairableColumns(books.session(), *findImportTarget(3)),
              books.session().productTable->fieldNames());
}

} // namespace

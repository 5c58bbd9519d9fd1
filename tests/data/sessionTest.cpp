#include "data/session.h"

#include "data/schema.h"
#include "support/errorOf.h"
#include "support/sampleData.h"
#include "support/testBooks.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sqlite3.h>
#include <unistd.h>

namespace {

TEST(Session, EmptyBooksOpenWithEmptyTextsAndTheFirstNumbers) {
    TestBooks books;
    Session& session = books.session();
    session.open_rs();
    session.readCurrent();
    EXPECT_EQ(session.currentClientNum + session.currentClientName + session.currentContact, u"");
    EXPECT_EQ(session.currentProductNum + session.currentOrderNum, u"");
    EXPECT_EQ(counterText(session.nextClientNum), u"1001");
    EXPECT_EQ(counterText(session.nextOrderNum), u"1001");
    EXPECT_EQ(counterText(session.nextProductNum), u"1001");
    EXPECT_EQ(session.showSource, ShowSource(1));
}

TEST(Session, AnEmptyCounterTableLeavesTheNumbersEmpty) {
    TestBooks books;
    books.execute("DELETE FROM counterCode");
    books.session().open_rs();
    EXPECT_EQ(counterText(books.session().nextClientNum), u"");
    EXPECT_EQ(counterText(books.session().nextProductNum), u"");
    writeCounter(books.session(), "counterNum", 5);
    EXPECT_EQ(books.stored("SELECT count(*) FROM counterCode"), u"0");
}

TEST(Session, CustomerProductAndOrderInHandComeFromTheFirstRows) {
    TestBooks books;
    books.addClient("7", "红木行", "王平");
    books.addLine("55", "7", "p9", "2004-01-05", 1, 1, 1);
    books.session().open_rs();
    books.session().readCurrent();
    EXPECT_EQ(books.session().currentClientName, u"红木行");
    EXPECT_EQ(books.session().currentContact, u"王平");
    EXPECT_EQ(books.session().currentProductNum, u"p9");
    EXPECT_EQ(books.session().currentOrderNum, u"55");
}

TEST(Session, AFilterLeftOnTheLinesChangesWhatTheNextViewCounts) {
    TestBooks books;
    books.addLine("1", "7", "p", "2004-01-05", 1, 1, 1);
    books.addLine("2", "8", "p", "2004-01-05", 1, 1, 1);
    books.session().open_rs();
    books.session().buyList->setFilter("客户编号 = '8'");
    EXPECT_EQ(books.session().buyList->RecordCount(), 1);
}

/// The slots, each by its place in the session.
constexpr RecordsetPtr Session::*kSlots[] = {
    &Session::clientTable,         &Session::buyList,       &Session::productTable,
    &Session::productTable2,       &Session::buyList2,      &Session::clientTable2,
    &Session::clientTable3,        &Session::clerkClients,  &Session::productClients,
    &Session::productLines,        &Session::tempTable2,    &Session::buyList3,
    &Session::product_Bank,        &Session::product_Bank2, &Session::stock_Count_Bank,
    &Session::return_Bank,         &Session::return_Bank2,  &Session::no_use_Bank,
    &Session::no_use_Bank2,        &Session::out_of_Bank,   &Session::out_of_Bank2,
    &Session::counterCode,         &Session::orderTable,    &Session::saleTable,
    &Session::buy_Frequence_Table, &Session::month_Table,   &Session::orderTotals,
    &Session::clerkTotals,         &Session::oneProduct,    &Session::scratch};

TEST(Session, AnActionThatIsTakenBackLeavesEverySlotAndTheNextNumbersAsTheyWere) {
    TestBooks books;
    books.addClient("7");
    Session& session = books.session();
    session.open_rs();
    std::vector<RecordsetPtr> before;
    for (const auto slot : kSlots)
        before.push_back(session.*slot);
    sqlite3_busy_timeout(session.cn.handle(), 0);
    session.cn.askAgain = [] { return false; };
    sqlite3* reader = nullptr;
    sqlite3_open(books.path().toUtf8().constData(), &reader);
    sqlite3_exec(reader, "BEGIN; SELECT * FROM clientTable", nullptr, nullptr, nullptr);
    EXPECT_THROW(
        {
            WriteBatch batch(session.cn);
            for (const auto slot : kSlots)
                session.reopen(session.*slot, "Select * From clientTable");
            session.nextClientNum = session.nextOrderNum = 5;
            session.nextProductNum = 6;
            session.clientTable->Fields("单位名称").setValue(QStringLiteral("改"));
            session.clientTable->Update();
            batch.finish();
        },
        ActionEnded);
    sqlite3_close(reader);
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(session.*kSlots[i], before[i]) << "slot " << i;
    EXPECT_EQ(counterText(session.nextClientNum), u"1001");
    EXPECT_EQ(counterText(session.nextOrderNum), u"1001");
    EXPECT_EQ(counterText(session.nextProductNum), u"1001");
}

TEST(Session, PositionTextNeverShowsANegativeNumber) {
    TestBooks books;
    books.addClient("1");
    books.addClient("2");
    Session& session = books.session();
    EXPECT_EQ(positionText(session.clientTable), u"0/0");
    session.open_rs();
    EXPECT_EQ(positionText(session.clientTable), u"1/2");
    session.clientTable->MovePrevious();
    EXPECT_EQ(positionText(session.clientTable), u"1/2");
    session.clientTable->MoveLast();
    session.clientTable->MoveNext();
    EXPECT_EQ(positionText(session.clientTable), u"2/2");
    session.clientTable->setFilter("客户编号 = 'x'");
    EXPECT_EQ(positionText(session.clientTable), u"0/0");
}

TEST(Session, TheShippedFileHasEveryTableAndItsFixedRows) {
    TestBooks books;
    EXPECT_EQ(databaseFault(books.path()), u"");
    EXPECT_EQ(books.stored("SELECT * FROM counterCode"), u"1001.0|1001.0|1001.0");
    EXPECT_EQ(books.stored("SELECT count(*), 标题 FROM month_Table"), u"2|客户数");
    for (const char* copy :
         {"stock_Count_Bank", "buyList2", "buyList3", "tempTable2", "clientTable2", "clientTable3",
          "productTable2", "product_Bank2", "return_Bank2", "no_use_Bank2", "buy_Frequence_Table2"})
        EXPECT_EQ(books.stored(QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(copy))), u"0")
            << copy;
    EXPECT_FALSE(books.session().cn.hasTable("out_of_Bank2"));
}

TEST(Session, DatesAndTextsComeBackFromTheFileAsTheyWereStored) {
    TestBooks books;
    Session& session = books.session();
    session.open_rs();
    session.buyList->AddNew();
    session.buyList->Fields("日期").setValue(QStringLiteral("2004-1-5"));
    session.buyList->Fields("品名").setValue(QStringLiteral("𠀀'\"%_\n甲"));
    session.buyList->Update();
    EXPECT_EQ(books.stored("SELECT 日期, 品名 FROM buyList"), u"2004-01-05|𠀀'\"%_\n甲");
    Session again(books.path());
    again.open_rs();
    EXPECT_EQ(again.buyList->Fields("日期").text(), u"2004-1-5");
    EXPECT_EQ(again.buyList->Fields("品名").text(), u"𠀀'\"%_\n甲");
}

TEST(SampleData, TheSameSizeGivesTheSameShopAndEveryFigureHolds) {
    QTemporaryDir folder;
    const SampleSize size{60, 40, 1500};
    makeSample(folder.filePath("a"), size);
    makeSample(folder.filePath("b"), size);
    Session a(folder.filePath("a"));
    Session b(folder.filePath("b"));
    const auto sum = [](Session& session, const char* sql) {
        Statement statement = session.cn.prepare(sql);
        statement.step();
        return statement.text(0);
    };
    const char* digest =
        "SELECT group_concat(单位名称 || 消费合计) || (SELECT sum(实付) FROM buyList) FROM clientTable";
    EXPECT_EQ(sum(a, digest), sum(b, digest));
    EXPECT_EQ(sum(a, "SELECT count(*) FROM buyList"), u"1500");
    EXPECT_EQ(sum(a, "SELECT count(*) FROM productTable p WHERE 数量 <> (SELECT sum(数量) FROM product_Bank "
                     "h WHERE h.产品编号 = p.产品编号)"
                     " - ifnull((SELECT sum(数量) FROM buyList l WHERE l.产品编号 = p.产品编号), 0)"
                     " - ifnull((SELECT sum(数量) FROM return_Bank l WHERE l.产品编号 = p.产品编号), 0)"
                     " - ifnull((SELECT sum(数量) FROM out_of_Bank l WHERE l.产品编号 = p.产品编号), 0)"
                     " - ifnull((SELECT sum(数量) FROM no_use_Bank l WHERE l.产品编号 = p.产品编号), 0)"),
              u"0");
    EXPECT_EQ(sum(a, "SELECT count(*) FROM productTable WHERE 数量 < 0"), u"0");
}

class StartFault : public testing::Test {
protected:
    QString path() const { return folder.filePath("VelmorClientBank.mdb"); }
    void write(const QByteArray& bytes) {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }
    QByteArray read() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// The fault of the file, which must be named, and left as it is.
    QString fault() {
        const QByteArray before = read();
        const QString text = databaseFault(path());
        EXPECT_EQ(read(), before);
        EXPECT_TRUE(text.isEmpty() || text.contains(path())) << text.toStdString();
        return text;
    }
    /// The superuser may write whatever the permissions say, so he steps down for the question.
    template <typename Question> static QString asPlainUser(Question&& question) {
        const uid_t user = geteuid();
        if (user == 0) {
            EXPECT_EQ(setresuid(65534, 65534, 0), 0);
        }
        const QString answer = question();
        if (user == 0) {
            EXPECT_EQ(setresuid(0, 0, 0), 0);
        }
        return answer;
    }
    QTemporaryDir folder;
};

TEST_F(StartFault, AMissingFileIsNamedAndNotCreated) {
    EXPECT_TRUE(fault().contains(u"文件不存在"));
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(StartFault, ADirectoryOfThatName) {
    QDir().mkpath(path());
    EXPECT_TRUE(fault().contains(u"这不是文件"));
}

TEST_F(StartFault, AnEmptyFileAndOneThatIsNoDatabase) {
    write("");
    EXPECT_TRUE(fault().contains(u"文件是空的"));
    write("this is a letter to my aunt, and no database at all");
    EXPECT_TRUE(fault().contains(u"不是本系统的数据库"));
    write(QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4096, '\0'));
    EXPECT_TRUE(fault().contains(u"Jet"));
}

TEST_F(StartFault, ATruncatedFile) {
    createDatabase(path());
    const QByteArray whole = read();
    write(whole.left(whole.size() / 2));
    EXPECT_TRUE(fault().contains(u"被截断"));
    write(whole.left(50));
    EXPECT_TRUE(fault().contains(u"被截断"));
    write(whole);
    EXPECT_EQ(fault(), u"");
}

TEST_F(StartFault, ALengthInBetweenIsNoFaultWhileTheJournalCanRepairIt) {
    createDatabase(path());
    const QByteArray whole = read();
    QByteArray journal;
    {
        // Spill an action half-way into the file, and keep the journal as it is at that moment.
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &db), SQLITE_OK);
        sqlite3_exec(
            db,
            "PRAGMA cache_size = 2; BEGIN; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
            "WHERE i < 400) INSERT INTO saleTable SELECT hex(randomblob(400)), 1 FROM n",
            nullptr, nullptr, nullptr);
        QFile file(path() + "-journal");
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        journal = file.readAll();
        sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(db);
    }
    ASSERT_GT(journal.size(), 512);
    const QByteArray grown = read();
    ASSERT_GT(grown.size(), whole.size());
    write(grown.left(whole.size() + 4096)); // the header counts pages that never reached the disk
    QFile file(path() + "-journal");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(journal);
    file.close();
    EXPECT_EQ(databaseFault(path()), u"");
    EXPECT_EQ(read().size(), whole.size()) << "the action is taken back";
}

TEST_F(StartFault, AMissingTableOrColumn) {
    createDatabase(path());
    {
        Connection connection(path());
        connection.execute("DROP TABLE buyList2");
    }
    EXPECT_EQ(fault(), u"") << "a work copy may be missing";
    {
        Connection connection(path());
        connection.execute("ALTER TABLE buyList RENAME COLUMN 实付 TO 付");
    }
    EXPECT_TRUE(fault().contains(u"表 buyList 缺少列 实付"));
    {
        Connection connection(path());
        connection.execute("DROP TABLE saleTable");
        connection.execute("ALTER TABLE buyList RENAME COLUMN 付 TO 实付");
    }
    EXPECT_TRUE(fault().contains(u"缺少表 saleTable"));
}

TEST_F(StartFault, DamagedPages) {
    createDatabase(path());
    QByteArray bytes = read();
    for (qsizetype i = 100; i < 4096; ++i)
        bytes[i] = char(i * 31);
    write(bytes);
    EXPECT_TRUE(fault().contains(u"文件已损坏"));
}

TEST_F(StartFault, AFileLockedByAnotherProgram) {
    createDatabase(path());
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_TRUE(databaseFault(path()).contains(u"已锁定"));
    sqlite3_close(other);
}

TEST_F(StartFault, AReadOnlyFileAndAReadOnlyFolder) {
    createDatabase(path());
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::Permissions(0x7755)));
    QFile::setPermissions(path(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    const QString readOnlyFile = asPlainUser([this] { return databaseFault(path()); });
    QFile::setPermissions(path(), QFile::Permissions(0x6666));
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::Permissions(0x5555)));
    const QString readOnlyFolder = asPlainUser([this] { return databaseFault(path()); });
    QFile::setPermissions(folder.path(), QFile::Permissions(0x7777));
    EXPECT_TRUE(readOnlyFile.contains(u"只读")) << readOnlyFile.toStdString();
    EXPECT_TRUE(readOnlyFolder.contains(u"文件夹是只读的")) << readOnlyFolder.toStdString();
}

TEST(Engine, KeepsNoCountersThatTwoLoadingThreadsWouldFightFor) {
    EXPECT_FALSE(databaseFault(QStringLiteral("no such file")).isEmpty()) << "whoever asks it first";
    const TestBooks books;
    EXPECT_EQ(sqlite3_memory_used(), 0);
}

} // namespace

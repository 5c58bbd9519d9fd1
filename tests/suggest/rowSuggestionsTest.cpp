#include "suggest/suggestions.h"

#include "data/session.h"
#include "recordset/error.h"
#include "support/failingDisk.h"
#include "support/testBooks.h"

#include <QEventLoop>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

class CustomerSuggestions : public testing::Test {
protected:
    CustomerSuggestions() {
        books.addClient("1001", "红木行", "张平");
        books.addClient("1002", "百货店", "单小平");
        books.addClient("1003", "宏茂商行", "李四");
        reopen();
    }
    void reopen() { books.session().reopen(clients(), QStringLiteral("Select * From clientTable")); }
    RecordsetPtr& clients() { return books.session().clientTable; }
    void read() {
        QEventLoop loop;
        QObject::connect(&rows, &RowSuggestions::ready, &loop, &QEventLoop::quit);
        QTimer::singleShot(30'000, &loop, [&loop] {
            ADD_FAILURE() << "never ready";
            loop.quit();
        });
        rows.start();
        loop.exec();
    }
    /// The offered rows' numbers.
    QString offered(const char* typed) {
        QStringList numbers;
        for (const SuggestedRow& row : rows.offer(QString::fromUtf8(typed)))
            numbers << row.texts.first();
        return numbers.join(u' ');
    }
    void rename(int row, const char* contact) {
        clients()->moveTo(row);
        clients()->Fields(QStringLiteral("联系人")).setValue(QString::fromUtf8(contact));
        clients()->Update();
    }

    FailingDisk disk;
    TestBooks books;
    RowSuggestions rows{books.session().cn,
                        QStringLiteral("clientTable"),
                        {QStringLiteral("客户编号"), QStringLiteral("单位名称"), QStringLiteral("联系人")}};
};

TEST_F(CustomerSuggestions, OfferRowsByNumberNamesSyllablesAndInitials) {
    EXPECT_EQ(offered("zp"), u"") << "not read yet";
    read();
    EXPECT_EQ(offered("100"), u"1001 1002 1003");
    EXPECT_EQ(offered("红"), u"1001");
    EXPECT_EQ(offered("zhangping"), u"1001");
    EXPECT_EQ(offered("ZP"), u"1001");
    EXPECT_EQ(offered("shan"), u"1002");
    EXPECT_EQ(offered("dan"), u"1002");
    EXPECT_EQ(offered("hm"), u"1003 1001");
    EXPECT_EQ(offered("001"), u"");
    ASSERT_EQ(rows.offer("zp").size(), 1U);
    EXPECT_EQ(rows.offer("zp")[0].texts.join(u'|'), u"1001|红木行|张平");
}

TEST_F(CustomerSuggestions, FollowANewCustomerAChangedNameAndADeletion) {
    read();
    rename(0, "王五");
    EXPECT_EQ(offered("zp"), u"");
    EXPECT_EQ(offered("ww"), u"1001");
    clients()->AddNew();
    clients()->Fields(QStringLiteral("客户编号")).setValue(QStringLiteral("1009"));
    clients()->Fields(QStringLiteral("联系人")).setValue(QStringLiteral("赵平"));
    EXPECT_EQ(offered("zp"), u"") << "not written yet";
    clients()->Update();
    EXPECT_EQ(offered("zp"), u"1009");
    clients()->moveToRow(rows.offer("zp")[0].row);
    clients()->Delete();
    EXPECT_EQ(offered("zp"), u"");
    clients()->moveTo(1);
    clients()->Delete();
    EXPECT_EQ(offered("100"), u"1001 1003");
}

TEST_F(CustomerSuggestions, WhatChangedWhileTheyWereReadIsFollowed) {
    rows.start();
    rename(0, "王五");
    read(); // and a second reading takes the place of the first
    rename(2, "钱六");
    EXPECT_EQ(offered("ww"), u"1001");
    EXPECT_EQ(offered("ql"), u"1003");
    EXPECT_EQ(offered("ls"), u"");
}

TEST_F(CustomerSuggestions, AnActionThatIsTakenBackLeavesNothing) {
    read();
    try {
        WriteBatch batch(books.session().cn);
        rename(0, "王五");
        clients()->AddNew();
        clients()->Fields(QStringLiteral("联系人")).setValue(QStringLiteral("王六"));
        clients()->Update();
        rename(3, "王七");
        EXPECT_EQ(offered("ww"), u"") << "nothing is kept yet";
        disk.failAt(0, FailingDisk::Kind::Full, true);
        batch.finish();
        ADD_FAILURE() << "nothing failed";
    } catch (const DatabaseLost& lost) {
        EXPECT_EQ(lost.outcome(), Outcome::TakenBack);
    }
    disk.heal();
    books.session().cn.tellTakenBack();
    EXPECT_EQ(offered("zp"), u"1001");
    EXPECT_EQ(offered("ww"), u"");
    EXPECT_EQ(offered("wl"), u"");
}

TEST_F(CustomerSuggestions, ManyChangesAreReadAgainAndTheOldOnesOfferedUntilThen) {
    books.execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
                  "INSERT INTO clientTable (流水号, 客户编号, 联系人) SELECT i + 10, 'n' || i, '吴' FROM n");
    books.changeBehind("SELECT 1");
    reopen();
    read();
    {
        WriteBatch batch(books.session().cn);
        for (int row = 0; row < clients()->RecordCount(); ++row)
            rename(row, "郑七");
        batch.finish();
    }
    QEventLoop loop;
    QObject::connect(&rows, &RowSuggestions::ready, &loop, &QEventLoop::quit);
    EXPECT_EQ(rows.offer("zheng").size(), 0U);
    EXPECT_TRUE(rows.isReady());
    loop.exec();
    EXPECT_EQ(rows.offer("zheng").size(), 10U);
    EXPECT_EQ(rows.offer("wu").size(), 0U);
}

TEST_F(CustomerSuggestions, RowsReadAnewAreThoseOfTheNewTable) {
    read();
    books.changeBehind("DELETE FROM clientTable WHERE 客户编号 = '1001'");
    reopen();
    EXPECT_EQ(offered("zp"), u"") << "another image: it is read first";
    read();
    EXPECT_EQ(offered("zp"), u"");
    EXPECT_EQ(offered("100"), u"1002 1003");
}

TEST_F(CustomerSuggestions, GoingToAnOfferedRowClearsTheFilterThatHidesIt) {
    read();
    const RowId row = rows.offer("zp")[0].row;
    clients()->setFilter("客户编号 Like '100%'");
    EXPECT_TRUE(goToSuggested(clients(), row));
    EXPECT_NE(clients()->Filter(), u"") << "it shows the row";
    clients()->setFilter("客户编号 = '1002'");
    EXPECT_TRUE(goToSuggested(clients(), row));
    EXPECT_EQ(clients()->Filter(), u"");
    EXPECT_EQ(clients()->Fields(QStringLiteral("客户编号")).text(), u"1001");
}

TEST_F(CustomerSuggestions, GoingToARowThatAnotherCursorAddedFindsIt) {
    read();
    Recordset other(books.session().cn);
    other.Open("Select * From clientTable");
    other.AddNew();
    other.Fields(QStringLiteral("联系人")).setValue(QStringLiteral("赵八"));
    other.Update();
    ASSERT_EQ(rows.offer("zb").size(), 1U);
    const RowId row = rows.offer("zb")[0].row;
    EXPECT_TRUE(goToSuggested(clients(), row));
    EXPECT_EQ(clients()->Fields(QStringLiteral("联系人")).text(), u"赵八");
    clients()->Delete();
    EXPECT_FALSE(goToSuggested(clients(), row));
}

} // namespace

#include "sales/clientRegister.h"
#include "data/orderInHand.h"

#include "data/orderInHand.h"
#include "sales/clientTotals.h"
#include "support/errorOf.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class ClientRegister : public testing::Test {
protected:
    QStringList boxes(const QString& number, const QString& total = "0", const QString& quantity = "0") {
        QStringList texts(17, QString());
        texts[0] = number;
        texts[1] = "  王平 ";
        texts[13] = total;
        texts[14] = quantity;
        return texts;
    }
    Session& session() { return books.session(); }
    QString lines() { return books.stored("SELECT 流水号 FROM buyList ORDER BY rowid"); }
    TestBooks books;
};

TEST_F(ClientRegister, AddingWithTheProposedNumberUsesItUp) {
    session().open_rs();
    addClient(session(), boxes("1001"));
    EXPECT_EQ(counterText(session().nextClientNum), u"1002");
    EXPECT_EQ(books.stored("SELECT counterNum FROM counterCode"), u"1002.0");
    EXPECT_EQ(books.stored("SELECT 流水号, 客户编号, 联系人, 差额利润, 差额利润率 FROM clientTable"),
              u"1|1001|王平|0.0|");
    EXPECT_EQ(session().clientTable->Fields("客户编号").text(), u"1001");
}

TEST_F(ClientRegister, AnOvertypedNumberLeavesTheProposedOneForTheNextCustomer) {
    session().open_rs();
    addClient(session(), boxes("A7"));
    EXPECT_EQ(counterText(session().nextClientNum), u"1001");
    EXPECT_EQ(books.stored("SELECT counterNum FROM counterCode"), u"1001.0");
}

TEST_F(ClientRegister, WithoutACounterRowTheFirstCustomerGetsAnEmptyKeyAndNothingFails) {
    books.execute("DELETE FROM counterCode");
    session().open_rs();
    addClient(session(), boxes(counterText(session().nextClientNum)));
    EXPECT_EQ(books.stored("SELECT 客户编号 FROM clientTable"), u"");
    EXPECT_EQ(counterText(session().nextClientNum), u"1");
    EXPECT_EQ(books.stored("SELECT count(*) FROM counterCode"), u"0");
}

TEST_F(ClientRegister, AddingIsOneCommit) {
    session().open_rs();
    const int commits = session().cn.commits();
    addClient(session(), boxes("1001"));
    EXPECT_EQ(session().cn.commits(), commits + 1);
}

TEST_F(ClientRegister, NothingPreventsADuplicateNumber) {
    books.addClient("5");
    session().open_rs();
    addClient(session(), boxes("5"));
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientTable WHERE 客户编号 = '5'"), u"2");
}

TEST_F(ClientRegister, SavingAnOldCustomerWipesMarginAndRateAndKeepsWhatTheBoxesShow) {
    books.addClient("5");
    books.execute("UPDATE clientTable SET 消费合计 = 100, 购买数 = 3, 差额利润 = 40, 差额利润率 = '40%'");
    session().open_rs();
    QStringList texts = record_Display(session());
    EXPECT_EQ(texts[13], u"100");
    EXPECT_EQ(texts[14], u"3");
    texts[4] = "传真一";
    saveClient(session(), texts);
    EXPECT_EQ(books.stored("SELECT 传真, 消费合计, 购买数, 差额利润, 差额利润率 FROM clientTable"),
              u"传真一|100.0|3.0|0.0|");
}

TEST_F(ClientRegister, LettersInTheNumberBoxesStoreTheLeadingDigits) {
    books.addClient("5");
    session().open_rs();
    saveClient(session(), boxes("5", "12abc", "abc"));
    EXPECT_EQ(books.stored("SELECT 消费合计, 购买数 FROM clientTable"), u"12.0|0.0");
    saveClient(session(), boxes("5", "1,000", "1 2 3"));
    EXPECT_EQ(books.stored("SELECT 消费合计, 购买数 FROM clientTable"), u"1.0|123.0");
}

TEST_F(ClientRegister, DeletingStartsAtTheSecondRowSoAFirstLineStays) {
    for (const char* client : {"7", "8", "7", "7"})
        books.addLine("1", client, "p", "2004-01-05", 1, 1, 1);
    books.addClient("7");
    session().open_rs();
    deleteClient(session());
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientTable"), u"0");
    EXPECT_EQ(lines(), u"1;2");
}

TEST_F(ClientRegister, ACustomerWhoseOnlyLineIsTheFirstLeavesIt) {
    books.addLine("1", "7", "p", "2004-01-05", 1, 1, 1);
    books.addClient("7");
    session().open_rs();
    deleteClient(session());
    EXPECT_EQ(lines(), u"1");
}

TEST_F(ClientRegister, TheSecondRowIsThatOfTheCursorsPresentOrder) {
    books.addLine("1", "8", "p", "2004-01-05", 1, 1, 1);
    books.addLine("1", "7", "p", "2003-01-05", 1, 1, 1);
    books.addLine("1", "7", "p", "2004-02-05", 1, 1, 1);
    books.addClient("7");
    session().open_rs();
    session().buyList->setSort("日期");
    deleteClient(session());
    EXPECT_EQ(lines(), u"1;2") << "the oldest line is his and stands first";
}

TEST_F(ClientRegister, DeletingClearsTheFilterOfTheLinesAndGoesToANeighbour) {
    for (const char* client : {"8", "7"})
        books.addLine("1", client, "p", "2004-01-05", 1, 1, 1);
    for (const char* client : {"6", "7"})
        books.addClient(client);
    session().open_rs();
    session().buyList->setFilter("客户编号 = '8'");
    session().clientTable->MoveLast();
    const int commits = session().cn.commits();
    deleteClient(session());
    EXPECT_EQ(session().cn.commits(), commits + 1);
    EXPECT_EQ(session().clientTable->Fields("客户编号").text(), u"6");
    EXPECT_EQ(session().buyList->Filter(), u"");
    EXPECT_EQ(lines(), u"1");
    EXPECT_FALSE(session().buyList->isEOF());
}

TEST_F(ClientRegister, SearchLooksIntoFiveColumns) {
    books.addClient("51", "红木行", "王平");
    books.addClient("52", "天工", "李红");
    books.execute("UPDATE clientTable SET 电话 = '020-红', 生日 = '5-1' WHERE 客户编号 = '52'");
    session().open_rs();
    const auto found = [&](const char* text) {
        EXPECT_TRUE(searchClients(session(), text));
        return session().clientTable->RecordCount();
    };
    EXPECT_EQ(found("红"), 2);
    EXPECT_EQ(found("红木"), 1);
    EXPECT_EQ(found("王"), 1);
    EXPECT_EQ(found("020"), 1);
    EXPECT_EQ(found("5-1"), 1);
    EXPECT_EQ(found("52"), 1);
    EXPECT_EQ(found("无"), 0);
}

TEST_F(ClientRegister, QuotesAndWildcardsInTheSearchAreSafe) {
    books.addClient("1", "O''Neil");
    session().open_rs();
    EXPECT_TRUE(searchClients(session(), "O'N"));
    EXPECT_EQ(session().clientTable->RecordCount(), 1);
    EXPECT_FALSE(searchClients(session(), "a%b"));
    EXPECT_EQ(session().clientTable->RecordCount(), 1);
    EXPECT_TRUE(searchClients(session(), QString(100'000, u'x')));
    EXPECT_EQ(session().clientTable->RecordCount(), 0);
}

TEST_F(ClientRegister, DatesOfTheLinesAreFirstAndLastAndTheCursorEndsOnTheLastRow) {
    session().open_rs();
    set_date1_date2(session());
    EXPECT_EQ(session().periodDate1 + session().periodDate2, u"");
    books.addLine("1", "7", "p", "2004-11-21", 1, 1, 1);
    books.addLine("1", "7", "p", "2003-02-01", 1, 1, 1);
    session().open_rs();
    set_date1_date2(session());
    EXPECT_EQ(session().periodDate1, u"2003-2-1");
    EXPECT_EQ(session().periodDate2, u"2004-11-21");
    EXPECT_EQ(session().buyList->AbsolutePosition(), 2);
}

TEST_F(ClientRegister, LinesCursorOfOneCustomerWithAndWithoutACondition) {
    books.addClient("o''7");
    books.addLine("1", "o''7", "p", "2004-11-21", 1, 1, 1);
    books.addLine("2", "o''7", "q", "2004-11-21", 1, 1, 1);
    books.addLine("2", "8", "q", "2004-11-21", 1, 1, 1);
    session().open_rs();
    rs2_Search(session(), {});
    EXPECT_EQ(session().buyList->RecordCount(), 2);
    rs2_Search(session(), "产品编号 = 'q' Or 订单号 = '9'");
    EXPECT_EQ(session().buyList->RecordCount(), 1);
}

TEST_F(ClientRegister, OrderTotalsComeFromTheLinesOrThePeriodCopy) {
    books.addLine("1", "7", "p", "2004-11-21", 2, 5, 1);
    books.addLine("1", "7", "q", "2004-11-21", 3, 6, 1);
    session().open_rs();
    setup_rs_total(session());
    EXPECT_EQ(session().orderTotals->RecordCount(), 1);
    EXPECT_EQ(session().orderTotals->Fields("购物数").text(), u"5");
    EXPECT_EQ(session().orderTotals->Fields("购物金额").text(), u"11");
    session().showSource = ShowSource(7);
    setup_rs_total(session());
    EXPECT_EQ(session().orderTotals->RecordCount(), 0);
}

TEST_F(ClientRegister, TheOrderInHandLeavesItsHeadForTheReport) {
    books.addLine("1", "7", "p", "2004-11-21", 2, 5, 1);
    books.addLine("1", "7", "q", "2004-11-21", 3, 6.5, 1);
    books.addLine("2", "7", "q", "2004-11-22", 9, 9, 1);
    session().open_rs();
    setup_rs_total(session());
    session().currentClientNum = "7";
    session().currentOrderNum.clear(); // nothing chosen: order 1
    Temp_Order_Form(session());
    EXPECT_EQ(session().periodDate1 + "|" + session().orderAmount + "|" + session().orderQuantity,
              u"2004-11-21|11.5|5");
    EXPECT_EQ(session().buyList->RecordCount(), 2);
    session().currentOrderNum = "x";
    Temp_Order_Form(session());
    EXPECT_EQ(session().orderAmount, u"");
}

TEST_F(ClientRegister, TheRegistersOwnRecomputationWritesNoRate) {
    books.addClient("7");
    books.addLine("1", "7", "p", "2004-11-21", 2, 30, 5);
    session().open_rs();
    session().clientTable->setFilter("客户编号 = 'none'");
    cost_profit_num(session(), KeptRate::None);
    EXPECT_EQ(books.stored("SELECT 消费合计, 差额利润, 购买数, 差额利润率 FROM clientTable"),
              u"30.0|20.0|2.0|0");
}

TEST_F(ClientRegister, ThePurchasesRecomputationHoldsTheRateInSinglePrecision) {
    books.addClient("7");
    books.addLine("1", "7", "p", "2004-11-21", 1, 1e8, 1);
    books.execute("UPDATE buyList SET 差额利润 = 9999999.99");
    session().open_rs();
    cost_profit_num(session(), KeptRate::SinglePrecision);
    EXPECT_EQ(books.stored("SELECT 差额利润率 FROM clientTable"), u"10%")
        << "9.99999999 is 10 in single precision";
    books.session().buyList->setFilter("客户编号 = 'x'");
}

class LinesThatGo : public testing::Test {
protected:
    LinesThatGo() {
        for (const char* client : {"7", "8"})
            books.addClient(client);
        books.addLine("1", "7", "p1", "2004-01-05", 2, 20, 1);
        books.addLine("2", "8", "p1", "2004-01-06", 1, 10, 1);
        books.addLine("2", "8", "p2", "2004-01-06", 3, 30.5, 1);
        books.addLine("3", "7", "p1", "2004-01-07", 1, 10, 1);
        books.session().open_rs();
    }
    int ofFirst() { return linesThatGo(books.session()); }
    int ofLast() {
        books.session().clientTable->MoveLast();
        return linesThatGo(books.session());
    }
    TestBooks books;
};

TEST_F(LinesThatGo, AreACustomersButForTheFirstLineOfTheTable) {
    EXPECT_EQ(ofFirst(), 1);
    EXPECT_EQ(ofLast(), 2);
}

TEST_F(LinesThatGo, TheFirstLineIsThatOfTheCursorsOrderWithoutItsFilter) {
    const RecordsetPtr& lines = books.session().buyList;
    lines->setFilter("客户编号 = '8'");
    EXPECT_EQ(ofFirst(), 1);
    EXPECT_EQ(ofLast(), 2);
    lines->setSort("客户编号 Desc");
    EXPECT_EQ(ofLast(), 1);
    EXPECT_EQ(lines->Filter(), u"客户编号 = '8'") << "asking changes nothing";
}

TEST_F(LinesThatGo, ATypedNumberIsNotYetTheCustomers) {
    books.session().clientTable->Fields("客户编号").setValue(QString("8"));
    EXPECT_EQ(ofFirst(), 1);
}

TEST_F(LinesThatGo, AreAsManyAsTheDeletionTakes) {
    const int before = books.session().buyList->RecordCount();
    const int going = ofFirst();
    deleteClient(books.session());
    EXPECT_EQ(books.session().buyList->RecordCount(), before - going);
}

} // namespace

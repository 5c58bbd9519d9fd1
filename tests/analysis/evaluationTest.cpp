#include "analysis/evaluation.h"
#include "analysis/periodCopies.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class EvaluationOf : public testing::Test {
protected:
    Session& session() { return books.session(); }
    void add(const char* client, double turnover, double margin, double quantity) {
        books.addClient(QString::fromUtf8(client));
        books.changeBehind(QStringLiteral("UPDATE clientTable SET 消费合计 = %1, 差额利润 = %2, 购买数 = %3 "
                                          "WHERE 客户编号 = '%4'")
                               .arg(turnover)
                               .arg(margin)
                               .arg(quantity)
                               .arg(QString::fromUtf8(client)));
    }
    void open() {
        session().open_rs();
        openEvaluation(session());
        show();
    }
    void show() {
        if (beginEvaluation(session()))
            begin_setup(session(), evaluatedSource(session()));
    }
    QString indicators() {
        QStringList all;
        for (const Indicator& each : session().evaluation)
            all << each.value + u' ' + each.share;
        return all.join(u'|');
    }
    RowsOfTable ask(int question, const char* answer) {
        const RecordsetPtr clients = clientsToCut(session());
        if (!clients)
            return {};
        return cutBestClients(session(), clients, bestClientsQuestions()[std::size_t(question)],
                              QString::fromUtf8(answer));
    }
    QString shown() {
        const RecordsetPtr& clients = session().clientTable3;
        QStringList numbers;
        for (int i = 0; clients->isOpen() && i < clients->RecordCount(); ++i)
            numbers << toText(clients->valueAt(i, clients->fieldIndex("客户编号")));
        return numbers.join(u' ');
    }

    TestBooks books;
};

TEST_F(EvaluationOf, TheWholeTableShowsItsTotals) {
    add("1", 10, 2, 1);
    add("2", 30, -4, 2);
    open();
    EXPECT_EQ(indicators(), u"40 100%|-2 100%|3 100%|2 100%");
    EXPECT_EQ(session().analysisCaption, u"全库数据");
    EXPECT_EQ(session().clientTable->Sort(), u"消费合计 desc");
    EXPECT_EQ(session().clientTable->Fields("客户编号").text(), u"2");
}

TEST_F(EvaluationOf, NoCustomersAreAnEmptyLibrary) {
    open();
    EXPECT_EQ(indicators(), u"0 0%|0 0%|0 0%|0 0%");
    EXPECT_EQ(session().analysisCaption, u"空库");
    EXPECT_EQ(clientsToCut(session()), nullptr);
}

TEST_F(EvaluationOf, ASearchOfTheRegisterLeftOnHidesNobody) {
    add("1", 10, 2, 1);
    open();
    session().clientTable->setFilter("客户编号 = 'nobody'");
    show();
    EXPECT_EQ(indicators(), u"10 100%|2 100%|1 100%|1 100%");
    session().clientTable->setFilter("客户编号 = 'nobody'");
    EXPECT_NE(clientsToCut(session()), nullptr);
    EXPECT_EQ(ask(0, "100").rowids.size(), 1U);
}

TEST_F(EvaluationOf, APeriodHasItsOwnTotalsAndWithoutCustomersNoughts) {
    add("1", 10, 2, 1);
    add("2", 30, 4, 2);
    books.addLine("1", "2", "p", "2004-03-05", 2, 7, 1);
    open();
    for (const auto& [condition, wanted] : {std::pair("日期 >= #2004-1-1#", u"7 100%|5 100%|2 100%|1 100%"),
                                            std::pair("日期 >= #2010-1-1#", u"0 0%|0 0%|0 0%|0 0%")}) {
        buildPeriodCopies(session(), QString::fromUtf8(condition), PeriodCopies::All);
        session().clientShowSource = ShowSource::PeriodClients;
        show();
        EXPECT_EQ(indicators(), wanted) << condition;
        EXPECT_EQ(session().analysisCaption, u"全库数据") << "the title stays";
        EXPECT_EQ(session().showSource, ShowSource::PeriodClients);
    }
}

TEST_F(EvaluationOf, TheWorkTablesAreMadeAgainEmptyWhenItOpens) {
    add("1", 10, 2, 1);
    books.execute("INSERT INTO clientTable2 (客户编号) VALUES ('old')");
    books.execute("DROP TABLE clientTable3");
    open();
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientTable2"), u"0");
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientTable3"), u"0");
    EXPECT_TRUE(session().clientTable3->isOpen());
}

TEST_F(EvaluationOf, ACutShowsItsCustomersBeforeTheyAreInTheFileAndTheSameAfter) {
    add("1", 10, 2, 1);
    add("2", 30, 4, 2);
    add("3", 60, 1, 3);
    open();
    const RowsOfTable cut = ask(0, "80");
    EXPECT_EQ(shown(), u"3 2");
    EXPECT_EQ(books.stored("SELECT 客户编号 FROM clientTable3"), u"");
    EXPECT_EQ(indicators(), u"90 90%|5 71.42%|5 83.33%|2 66.66%");
    EXPECT_EQ(session().analysisCaption, u"占总销售额百分率");
    EXPECT_EQ(session().showSource, ShowSource::BestClients);
    EXPECT_EQ(session().clientShowSource, ShowSource::Clients) << "the next analysis runs on the same source";
    writeCut(session(), cut, ClientMeasure::Turnover);
    EXPECT_EQ(shown(), u"3 2");
    EXPECT_EQ(books.stored("SELECT 客户编号, 消费合计, 流水号 FROM clientTable3"), u"3|60.0|3;2|30.0|2");
    EXPECT_EQ(session().clientTable3->Sort(), u"消费合计 desc");
}

TEST_F(EvaluationOf, ACutThatIsWrittenIsACopyThatLaterSalesDoNotTouch) {
    add("1", 10, 2, 1);
    open();
    writeCut(session(), ask(1, "5"), ClientMeasure::Turnover);
    session().clientTable->MoveFirst();
    session().clientTable->Fields("消费合计").setValue(99.0);
    session().clientTable->Update();
    EXPECT_EQ(session().clientTable3->numberAt(0, session().clientTable3->fieldIndex("消费合计")), 10);
}

TEST_F(EvaluationOf, ARankingCutStaysOverADisplayAndARatioCutDoesNot) {
    add("1", 10, 2, 1);
    add("2", 30, 4, 2);
    open();
    writeCut(session(), ask(1, "1"), ClientMeasure::Turnover);
    EXPECT_EQ(session().analysisKind, 2);
    show();
    EXPECT_EQ(evaluatedSource(session()), ShowSource::BestClients);
    EXPECT_EQ(indicators(), u"30 75%|4 66.66%|2 66.66%|1 50%");
    writeCut(session(), ask(0, "1"), ClientMeasure::Turnover);
    EXPECT_EQ(session().analysisKind, 1);
    EXPECT_EQ(evaluatedSource(session()), ShowSource::BestClients);
    show();
    EXPECT_EQ(evaluatedSource(session()), ShowSource::Clients);
    EXPECT_EQ(session().showSource, ShowSource::Clients);
    EXPECT_EQ(indicators(), u"40 100%|6 100%|3 100%|2 100%");
}

TEST_F(EvaluationOf, ACutOfAPeriodTakesItsCustomersAndASecondOneRunsOnTheSamePeriod) {
    add("1", 10, 2, 1);
    add("2", 30, 4, 2);
    books.addLine("1", "1", "p", "2004-03-05", 2, 7, 1);
    books.addLine("2", "2", "p", "2004-03-06", 2, 3, 1);
    open();
    buildPeriodCopies(session(), "日期 >= #2004-1-1#", PeriodCopies::All);
    session().clientShowSource = ShowSource::PeriodClients;
    show();
    for (int run = 0; run < 2; ++run) {
        writeCut(session(), ask(0, "60"), ClientMeasure::Turnover);
        EXPECT_EQ(shown(), u"1") << run;
        EXPECT_EQ(indicators(), u"7 70%|5 83.33%|2 50%|1 50%") << run;
        EXPECT_EQ(books.stored("SELECT 客户编号, 消费合计 FROM clientTable3"), u"1|7.0") << run;
        EXPECT_EQ(session().clientShowSource, ShowSource::PeriodClients) << run;
    }
}

TEST_F(EvaluationOf, AnEmptyPeriodIsNotCutAndAClosedOneGivesTheWholeTable) {
    add("1", 10, 2, 1);
    open();
    buildPeriodCopies(session(), "日期 >= #2010-1-1#", PeriodCopies::All);
    session().clientShowSource = ShowSource::PeriodClients;
    EXPECT_EQ(clientsToCut(session()), nullptr);
    session().clientTable2->Close();
    EXPECT_EQ(clientsToCut(session()), session().clientTable);
}

TEST_F(EvaluationOf, AMissingTableOfTheCutIsMadeAgain) {
    add("1", 10, 2, 1);
    open();
    session().clientTable3->Close();
    runStatement(session().cn, "Drop Table clientTable3");
    writeCut(session(), ask(1, "1"), ClientMeasure::Turnover);
    EXPECT_EQ(books.stored("SELECT 客户编号 FROM clientTable3"), u"1");
    EXPECT_EQ(shown(), u"1");
}

TEST_F(EvaluationOf, TypedTextsAreReadByTheirLeadingNumber) {
    for (int i = 1; i <= 9; ++i)
        add(qPrintable(QString::number(i)), i, i, i);
    open();
    EXPECT_EQ(ask(1, "3个").rowids.size(), 3U);
    EXPECT_EQ(ask(1, "abc").rowids.size(), 1U) << "nought keeps the first customer";
    EXPECT_EQ(ask(1, "-4").rowids.size(), 1U);
    EXPECT_EQ(ask(1, "1000").rowids.size(), 9U);
    EXPECT_EQ(ask(0, "abc").rowids.size(), 1U);
    EXPECT_EQ(ask(0, "100").rowids.size(), 9U);
}

TEST_F(EvaluationOf, ATotalOfNoughtCutsNobodyAndTheTableIsEmpty) {
    add("1", 10, 0, 1);
    open();
    writeCut(session(), ask(0, "50"), ClientMeasure::Turnover);
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientTable3"), u"1");
    writeCut(session(), ask(2, "50"), ClientMeasure::Margin);
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientTable3"), u"0");
    EXPECT_EQ(indicators(), u"0 0%|0 0%|0 0%|0 0%");
    writeCut(session(), ask(1, "1"), ClientMeasure::Turnover);
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientTable3"), u"0") << "any total of nought";
    EXPECT_EQ(indicators(), u"0 0%|0 0'%|0 0%|0 0%") << "the apostrophe stands as it is";
}

} // namespace

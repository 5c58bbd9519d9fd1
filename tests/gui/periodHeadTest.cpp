// The choice of a period and the head of the reports that follow it.
#include "support/shopWindow.h"

#include "reports/reportDescription.h"

namespace {

class PeriodHead : public ShopWindow {
protected:
    PeriodHead() {
        books.addClient("7", "甲");
        books.addLine("1", "7", "p1", "2003-12-08", 1, 1, 1);
        books.addLine("2", "7", "p1", "2004-05-07", 1, 1, 1);
    }
    /// Confirms "= 2004-5" in the dialog of this name.
    void mayOf2004(const char* dialog) {
        Driver time(*window(dialog));
        time.pick("Combo1", "2004");
        time.pick("Combo2", "5");
        time.click("Option5");
        time.click("Command1");
    }
    QString head(const char16_t* report) {
        return findReport(report)->head.front().text(
            {session(), [](auto, auto) { return QString(); }, session().clientTable2, {}});
    }
};

TEST_F(PeriodHead, TheCustomersOfAPeriodBearItsWordsAndNotTheDatesOfAllLines) {
    start();
    session().showSource = ShowSource(1);
    session().periodPurpose = "打印客户资料";
    main->host().openWindow("timeDefineFm22", ViewHost::MainWindow::Stays);
    mayOf2004("timeDefineFm22");
    ASSERT_NE(window("showprint_rs7"), nullptr);
    EXPECT_EQ(head(u"showprint_rs7"), u"时间：2004-5/");
    window("showprint_rs7")->close();
}

TEST_F(PeriodHead, APeriodConfirmedOverAStockViewSpeaksOfItselfToo) {
    books.addProduct("p1", "纸", 5, 2, 9);
    start();
    drive->choose("whole_show_product");
    drive->click("Toolbar1(2)");
    mayOf2004("timeDefineFm2");
    EXPECT_EQ(session().periodDate1 + u'/' + session().periodDate2, u"2004-5/");
}

TEST_F(PeriodHead, TheRegisterInFrontAgainSpeaksOfAllLines) {
    books.addProduct("p1", "纸", 5, 2, 9);
    start();
    drive->choose("whole_show_product");
    drive->click("Toolbar1(2)");
    mayOf2004("timeDefineFm2");
    session().buyList->clearFilter();
    drive->choose("management_client");
    EXPECT_EQ(session().periodDate1 + u'/' + session().periodDate2, u"2003-12-8/2004-5-7");
}

} // namespace

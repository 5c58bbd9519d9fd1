// What an image keeps while rows come and go: distinct texts, ranks, orders that stand already, views as
// ranges.
#include "recordset/collation.h"

#include "recordset/error.h"
#include "recordset/rowView.h"
#include "support/failingDisk.h"
#include "support/printQt.h"
#include "support/scratchFile.h"

#include <gtest/gtest.h>

#include <random>

namespace {

class KeptOrder : public testing::Test {
protected:
    RecordsetPtr rows() { return file.open(QStringLiteral("Select * From t")); }
    QString distinct() {
        const RecordsetPtr texts = file.open(QStringLiteral("Select distinct k From t"));
        QStringList all;
        for (int i = 0; i < texts->RecordCount(); ++i)
            all << (isNull(texts->valueAt(i, 0)) ? QStringLiteral("Null") : toText(texts->valueAt(i, 0)));
        return all.join(u',');
    }
    QString byEngine() {
        return file.stored(QStringLiteral("SELECT DISTINCT k FROM t ORDER BY k COLLATE textorder"));
    }
    void add(const CellValue& text, const char* date = "2004-01-01") {
        const RecordsetPtr all = rows();
        all->AddNew();
        all->Fields(QStringLiteral("k")).setValue(text);
        all->Fields(QStringLiteral("d")).setValue(QString::fromLatin1(date));
        all->Update();
    }
    static void set(const RecordsetPtr& all, int position, const char* field, const CellValue& value) {
        all->setAbsolutePosition(position);
        all->Fields(QString::fromLatin1(field)).setValue(value);
        all->Update();
    }
    static QString keys(const RecordsetPtr& all) {
        QString text;
        for (int i = 0; i < all->RecordCount(); ++i)
            text += toText(all->valueAt(i, 1));
        return text;
    }

    FailingDisk disk;
    ScratchFile file{
        QStringLiteral("CREATE TABLE t (流水号 INTEGER, k TEXT(20) COLLATE NOCASE, d DATETEXT)")};
};

TEST_F(KeptOrder, DistinctTextsFollowEveryRowThatComesGoesOrChanges) {
    std::mt19937 random(7);
    const QStringList texts{"1", "10", "2", "安", "张", "李", "b", "z"};
    const auto anyText = [&] {
        return random() % 9 == 0 ? CellValue() : CellValue(texts[qsizetype(random() % 8)]);
    };
    const RecordsetPtr all = rows();
    for (int step = 0; step < 300; ++step) {
        const int count = all->RecordCount();
        const auto what = random() % 4;
        if (what < 2 || count == 0) {
            all->AddNew();
            all->Fields(QStringLiteral("k")).setValue(anyText());
            all->Update();
        } else if (what == 2) {
            set(all, int(random() % unsigned(count)) + 1, "k", anyText());
        } else {
            all->setAbsolutePosition(int(random() % unsigned(count)) + 1);
            all->Delete();
        }
        ASSERT_EQ(distinct(), byEngine()) << step;
    }
}

TEST_F(KeptOrder, ManyTextsThatComeAndGoBetweenTwoLooksAreFollowedToo) {
    for (int i = 0; i < 300; ++i)
        add(QString::number(i));
    EXPECT_EQ(distinct(), byEngine());
    const RecordsetPtr all = rows();
    for (int i = 0; i < 200; ++i) {
        all->MoveFirst();
        all->Delete();
        all->MoveNext();
        add(QString::number(1000 + i));
    }
    EXPECT_EQ(distinct(), byEngine());
}

TEST_F(KeptOrder, TextsThatShareARankAreToldByTheirRows) {
    // Fullwidth letters differ for equality, and in case alone for the order.
    add(QStringLiteral("Ａ"));
    EXPECT_EQ(distinct(), byEngine());
    add(QStringLiteral("ａ"));
    EXPECT_EQ(file.open(QStringLiteral("Select distinct k From t"))->RecordCount(), 2);
    const RecordsetPtr all = rows();
    all->MoveFirst();
    all->Delete();
    EXPECT_EQ(distinct(), byEngine());
}

TEST_F(KeptOrder, TextsThatDifferInCaseAreOneAsEver) {
    for (const char* text : {"b", "A", "a", "B"})
        add(QString::fromLatin1(text));
    EXPECT_EQ(distinct(), u"A,b");
    const RecordsetPtr all = rows();
    all->MoveNext();
    all->Delete();
    EXPECT_EQ(distinct(), u"a,b") << "the first row that bears it tells how it is written";
}

TEST_F(KeptOrder, AnActionTakenBackLeavesTheDistinctTextsAsTheyWere) {
    add("1");
    add("2");
    EXPECT_EQ(distinct(), u"1,2");
    try {
        WriteBatch batch(file.connection());
        add("3");
        set(rows(), 1, "k", "4");
        EXPECT_EQ(distinct(), u"2,3,4");
        disk.failAt(0, FailingDisk::Kind::Full, true);
        batch.finish();
        ADD_FAILURE() << "nothing failed";
    } catch (const DatabaseLost&) { // as it shall
    }
    disk.heal();
    EXPECT_EQ(distinct(), u"1,2");
}

TEST_F(KeptOrder, AListOfDistinctTextsStaysAsItWasReadWhileOthersCome) {
    add("5");
    const RecordsetPtr list = file.open(QStringLiteral("Select distinct k From t"));
    add("4");
    EXPECT_EQ(list->RecordCount(), 1);
    list->Find(QStringLiteral("k = '4'"));
    EXPECT_TRUE(list->isEOF());
    list->Requery();
    EXPECT_EQ(list->RecordCount(), 2);
}

TEST_F(KeptOrder, AllRowsDeletedLeaveNoDistinctText) {
    add("1");
    distinct();
    runStatement(file.connection(), QStringLiteral("Delete * From t"));
    EXPECT_EQ(distinct(), u"");
    add("2");
    EXPECT_EQ(distinct(), u"2");
}

TEST(TextRanks, NewTextsTakeTheRanksThatAFreshSortingGives) {
    std::mt19937 random(11);
    TextPool pool;
    TextRanks kept;
    for (const int more : {1, 20, 3, 200, 1, 49, 51, 5}) {
        for (int i = 0; i < more; ++i)
            pool.intern((random() % 3 ? std::string("张") : std::string()) + std::to_string(random() % 500) +
                        (random() % 5   ? ""
                         : random() % 2 ? "a"
                                        : "A"));
        std::vector<TextPool::Code> codes;
        for (TextPool::Code code = 1; code <= pool.last(); ++code)
            codes.push_back(code);
        const std::vector<quint32> fresh = Collation().ranks(pool, codes);
        const std::vector<quint32>& ranks = kept.of(pool);
        ASSERT_EQ(ranks.size(), fresh.size() + 1);
        EXPECT_EQ(ranks[0], 0U);
        for (std::size_t i = 0; i < fresh.size(); ++i)
            ASSERT_EQ(ranks[i + 1], fresh[i]) << pool.text(TextPool::Code(i + 1));
    }
}

TEST_F(KeptOrder, ASortThatStandsAlreadyFollowsRowsThatBreakIt) {
    for (const auto& [text, date] : {std::pair("a", "2004-01-01"), {"b", "2004-01-02"}, {"c", "2004-01-03"}})
        add(QString::fromLatin1(text), date);
    const RecordsetPtr all = rows();
    const auto byDate = [&] {
        all->setSort(QStringLiteral("d"));
        const QString shown = keys(all);
        all->setSort({});
        return shown;
    };
    EXPECT_EQ(byDate(), u"abc");
    set(all, 2, "d", QStringLiteral("2004-05-01"));
    EXPECT_EQ(byDate(), u"acb");
    set(all, 2, "d", QStringLiteral("2004-01-02"));
    EXPECT_EQ(byDate(), u"abc");
    add("d", "2003-01-01");
    all->Requery();
    EXPECT_EQ(byDate(), u"dabc");
    all->MoveLast();
    all->Delete();
    EXPECT_EQ(byDate(), u"abc") << "a row that is gone breaks no order";
    set(all, 1, "d", CellValue());
    EXPECT_EQ(byDate(), u"abc") << "Null comes first";
    set(all, 3, "d", CellValue());
    EXPECT_EQ(byDate(), u"acb");
}

TEST_F(KeptOrder, RowsDeletedBeforeTheirColumnWasReadBreakNoOrder) {
    for (const auto& [text, date] : {std::pair("a", "2004-01-01"), {"b", "2004-01-02"}, {"c", "2004-01-03"}})
        add(QString::fromLatin1(text), date);
    file.connection().forgetImage(QStringLiteral("t"));
    const RecordsetPtr all = rows();
    all->MoveLast();
    all->Delete();
    add("x", "2003-01-01");
    all->Requery();
    all->setSort(QStringLiteral("d"));
    EXPECT_EQ(keys(all), u"xab");
}

TEST_F(KeptOrder, ASearchGoesFromMatchToMatchAmongManyRowsWhateverTheViewShows) {
    file.connection().execute(
        QStringLiteral("WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 6000) "
                       "INSERT INTO t SELECT i, 'k' || (i % 3), date('2004-01-01', i || ' days') FROM n"));
    const RecordsetPtr all = rows();
    const auto walk = [&](Recordset::Direction direction) {
        int found = 0;
        direction == Recordset::Direction::Forward ? all->MoveFirst() : all->MoveLast();
        for (int step = 0; !all->isEOF() && !all->isBOF(); ++step) {
            all->Find(QStringLiteral("k = 'K1'"), step == 0 ? 0 : 1, direction);
            if (all->currentRow()) {
                EXPECT_EQ(all->Fields("k").text(), u"k1");
                ++found;
            }
        }
        return found;
    };
    for (const auto& [filter, sort, matches] : {std::tuple("", "", 2000),
                                                {"", "d desc", 2000},
                                                {"流水号 > 100", "", 1966},
                                                {"流水号 > 100", "d", 1966}}) {
        all->setFilter(QString::fromUtf8(filter));
        all->setSort(QString::fromUtf8(sort));
        EXPECT_EQ(walk(Recordset::Direction::Forward), matches) << filter << '/' << sort;
        EXPECT_EQ(walk(Recordset::Direction::Backward), matches) << filter << '/' << sort;
    }
    all->clearFilter();
    all->setSort({});
    all->MoveFirst();
    for (int i = 0; i < 10; ++i) {
        all->Find(QStringLiteral("k = 'k1'"));
        all->Delete();
        all->MoveNext();
    }
    EXPECT_EQ(walk(Recordset::Direction::Forward), 1990);
}

using Shown = std::vector<RowId>;

Shown shown(const RowView& view) {
    Shown rows;
    view.each([&](RowId row) { rows.push_back(row); });
    return rows;
}

TEST(RowView, ARangeWithHolesAndRowsBehindItIsOneOrder) {
    RowView view;
    view.assign(5, {1, 4}, {7, 9});
    EXPECT_EQ(shown(view), (Shown{0, 2, 3, 7, 9}));
    EXPECT_EQ(view.size(), 5U);
    EXPECT_EQ(view.at(view.placeAt(3)), 7U);
    EXPECT_EQ(view.find(4), std::nullopt);
    EXPECT_EQ(view.find(6), std::nullopt);
    EXPECT_EQ(view.positionOf(*view.find(9)), 4U);
    EXPECT_EQ(view.liveFrom(4), 5U);
    EXPECT_EQ(*view.liveBefore(5), 3U);
}

TEST(RowView, ARowThatIsWrittenGoesOnWhereTheRangeEnds) {
    RowView view;
    view.assign(3, {}, {});
    view.append(kNewRowBit);
    view.replace(*view.find(kNewRowBit), 3);
    view.append(4);
    EXPECT_EQ(shown(view), (Shown{0, 1, 2, 3, 4}));
    EXPECT_EQ(*view.find(4), 4U);
    view.append(kNewRowBit | 1);
    view.append(8);
    view.append(6);
    EXPECT_EQ(view.at(*view.find(6)), 6U);
    EXPECT_EQ(view.at(*view.find(kNewRowBit | 1)), kNewRowBit | 1);
    EXPECT_EQ(view.find(7), std::nullopt);
}

TEST(RowView, ManyHolesOfARangeAreClosedAndTheGapKept) {
    RowView view;
    const Row rows = 3 * RowView::kMostHoles;
    view.assign(rows, {}, {});
    for (Row row = 0; row < RowView::kMostHoles; ++row)
        view.punch(row * 2);
    RowView::Place tracked = 11;
    view.tidy(tracked);
    EXPECT_EQ(tracked, 11U) << "few holes enough";
    view.punch(RowView::kMostHoles * 2);
    view.tidy(tracked);
    EXPECT_EQ(view.at(tracked), 11U);
    EXPECT_EQ(view.size(), rows - RowView::kMostHoles - 1);
}

} // namespace

#include "suggest/prefixIndex.h"

#include "support/printQt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

const auto all = [](qint64) { return true; };

class Prefixes : public testing::Test {
protected:
    Prefixes() {
        index.add(10, {"1001", "张平", "zhangping", "zp"});
        index.add(20, {"1002", "章朋", "zhangpeng", "zp"});
        index.add(30, {"zp3", "李四", "lisi", "ls"});
        index.build();
    }
    QString found(const QString& prefix, int most = 10) {
        QStringList rows;
        for (const qint64 row : index.find(prefix, most, all))
            rows << QString::number(row);
        return rows.join(u' ');
    }
    PrefixIndex index;
};

TEST_F(Prefixes, FindRowsByTheBeginningOfAnyKeyInTheOrderOfTheKeys) {
    EXPECT_EQ(found("zp"), u"10 20 30");
    EXPECT_EQ(found("zhangpe"), u"20");
    EXPECT_EQ(found("z"), u"20 10 30") << "each once, by its first key";
    EXPECT_EQ(found("100"), u"10 20");
    EXPECT_EQ(found("张"), u"10");
    EXPECT_EQ(found("hang"), u"") << "only beginnings";
    EXPECT_EQ(found("zhangpingx"), u"");
    EXPECT_EQ(found(""), u"");
}

TEST_F(Prefixes, GiveNoMoreThanWasAskedFor) {
    EXPECT_EQ(found("zp", 2), u"10 20");
    EXPECT_EQ(found("zp", 0), u"");
}

TEST_F(Prefixes, PassOverRowsThatAreNotWanted) {
    const auto rows = index.find("zp", 2, [](qint64 row) { return row != 10; });
    EXPECT_EQ(rows, (std::vector<qint64>{20, 30})) << "others take their places";
}

TEST_F(Prefixes, ARowThatIsPutIsFoundByItsNewKeysAlone) {
    index.put(10, {"1001", "王五", "wangwu", "ww"});
    EXPECT_EQ(found("zhangp"), u"20");
    EXPECT_EQ(found("ww"), u"10");
    index.put(10, {"1001"});
    EXPECT_EQ(found("ww"), u"");
    EXPECT_EQ(found("100"), u"10 20") << "in the order of all keys";
    index.put(40, {"1000", "zp"});
    EXPECT_EQ(found("100"), u"40 10 20");
    EXPECT_EQ(found("zp"), u"20 40 30");
    index.put(40, {});
    EXPECT_EQ(found("1000"), u"");
    EXPECT_EQ(index.putCount(), 2);
}

TEST_F(Prefixes, PuttingWhatARowHasAlreadyCostsNothing) {
    index.put(20, {"1002", "章朋", "zhangpeng", "zp"});
    EXPECT_EQ(index.putCount(), 0);
    EXPECT_EQ(found("zp"), u"10 20 30");
    index.put(20, {"x"});
    index.put(20, {"1002", "章朋", "zhangpeng", "zp"});
    EXPECT_EQ(found("zp"), u"10 20 30");
}

TEST(PrefixIndex, WithoutRowsFindsNothing) {
    PrefixIndex empty;
    empty.build();
    EXPECT_TRUE(empty.find("a", 10, all).empty());
}

TEST(PrefixIndex, FindsWhatALookAtEveryRowFinds) {
    std::mt19937 random(7);
    const auto word = [&random] {
        QString text;
        for (int i = int(random() % 12); i > 0; --i)
            text += QChar(char16_t(u'a' + random() % 3));
        return text;
    };
    std::map<qint64, QStringList> rows;
    PrefixIndex index;
    for (qint64 row = 1; row <= 300; ++row) {
        rows[row] = {word(), word()};
        index.add(row, rows[row]);
    }
    index.build();
    for (int change = 0; change < 60; ++change) {
        const qint64 row = 1 + random() % 320;
        index.put(row, rows[row] = {word()});
    }
    for (int i = 0; i < 400; ++i) {
        const QString prefix = word().left(4);
        std::vector<qint64> expected;
        for (const auto& [row, keys] : rows)
            if (!prefix.isEmpty() && std::any_of(keys.begin(), keys.end(),
                                                 [&](const QString& key) { return key.startsWith(prefix); }))
                expected.push_back(row);
        std::vector<qint64> found = index.find(prefix, 1000, all);
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, expected) << prefix.toStdString();
    }
}

} // namespace

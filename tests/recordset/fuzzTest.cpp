// A short, repeatable run of what the fuzz target does for hours: known texts, mutated at random.
#include "support/fuzzTexts.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <random>

namespace {

const QStringList& seeds() {
    static const QStringList texts{
        "k = 'a' And 数量 <= -1.5e3 Or (日期 >= #2004-1-1#)",
        "k Like '%a%' Or k = 'O''N'",
        "[数量] <> 2, k Desc",
        "Select k, Sum(数量) As s From t Where Not k In (Select k From t) Group By k Order By Sum(数量) desc",
        "Select Top 1 * Into u From t Where k In ('a','b')",
        "Delete * From t",
        "Drop Table t",
        "2004年1月5日 下午 1:05",
        "(￥1,000.50)"};
    return texts;
}

TEST(Fuzz, MutatedConditionsSortsAndStatementsAreTakenOrRefused) {
    std::mt19937 random(5);
    const QString alphabet = QStringLiteral("k数 '#[](),=<>%*-.0e\"\\;日Notand年￥");
    for (int i = 0; i < 3000; ++i) {
        QString text = seeds()[int(random() % unsigned(seeds().size()))];
        for (unsigned edits = 1 + random() % 5; edits > 0 && !text.isEmpty(); --edits) {
            const qsizetype at = qsizetype(random() % unsigned(text.size()));
            const QChar c = alphabet[int(random() % unsigned(alphabet.size()))];
            if (random() % 3 == 0)
                text.remove(at, 1 + random() % 4);
            else if (random() % 2 == 0)
                text.insert(at, c);
            else
                text[at] = c;
        }
        EXPECT_NO_THROW(fuzzText(text)) << text.toStdString();
    }
    EXPECT_NO_THROW(fuzzText(QString(200'000, u'(')));
    EXPECT_NO_THROW(fuzzText(QStringLiteral("Not ").repeated(50'000)));
}

} // namespace

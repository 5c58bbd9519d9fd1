#include "recordset/equalityIndex.h"

#include <gtest/gtest.h>

namespace {

class EqualityIndexTest : public testing::Test {
protected:
    void add(const char* text) {
        column.codes.push_back(text ? column.pool.intern(text) : TextPool::Null);
        deleted.push_back(0);
    }
    /// The rows that bear the text in any case, such as {0, 2}.
    std::vector<Row> find(const char* text, Row limit = 1000) {
        std::vector<Row> rows;
        index.collect(column, column.pool.findEqual(text), std::min(limit, Row(column.codes.size())), deleted,
                      rows);
        return rows;
    }

    ColumnStore column;
    std::vector<char> deleted;
    EqualityIndex index;
};

using Rows = std::vector<Row>;

TEST_F(EqualityIndexTest, ScanAndIndexFindTheSameRowsAscending) {
    for (const char* text : {"b", "a", "A", static_cast<const char*>(nullptr), "a", "b"})
        add(text);
    for (int search = 0; search < 4; ++search) {
        EXPECT_EQ(find("a"), (Rows{1, 2, 4})) << search;
        EXPECT_EQ(find("B"), (Rows{0, 5})) << search;
        EXPECT_EQ(find("a", 2), (Rows{1})) << search;
        EXPECT_EQ(find("c"), Rows()) << search;
    }
    EXPECT_GT(index.memory(), 0U);
}

TEST_F(EqualityIndexTest, OneSearchAloneBuildsNoIndex) {
    add("a");
    find("a");
    EXPECT_EQ(index.memory(), 0U);
}

TEST_F(EqualityIndexTest, RowsAddedAndTextsUnknownWhenItWasBuiltAreFound) {
    add("a");
    find("a");
    find("a");
    add("a");
    add("new");
    EXPECT_EQ(find("a"), (Rows{0, 1}));
    EXPECT_EQ(find("new"), (Rows{2}));
}

TEST_F(EqualityIndexTest, DeletedRowsAreLeftOut) {
    for (int i = 0; i < 3; ++i)
        add("a");
    for (int search = 0; search < 3; ++search) {
        deleted[std::size_t(search)] = 1;
        EXPECT_EQ(find("a").size(), std::size_t(2 - search));
    }
}

TEST_F(EqualityIndexTest, AChangedTextIsNotFoundUnderItsOldOne) {
    add("a");
    add("b");
    find("a");
    find("a");
    column.codes[0] = column.codes[1];
    index.cellChanged(0);
    for (int search = 0; search < 3; ++search) {
        EXPECT_EQ(find("a"), Rows());
        EXPECT_EQ(find("b"), (Rows{0, 1}));
    }
}

TEST_F(EqualityIndexTest, ATextThatIsChangedThereAndBackIsFoundOnce) {
    for (const char* text : {"a", "b", "a"})
        add(text);
    find("a");
    find("a");
    for (const char* text : {"b", "a"}) {
        column.codes[0] = column.pool.find(text);
        index.cellChanged(0);
    }
    EXPECT_EQ(find("a"), (Rows{0, 2}));
    EXPECT_EQ(find("a", 2), (Rows{0}));
    EXPECT_EQ(find("b"), (Rows{1}));
    deleted[0] = 1;
    EXPECT_EQ(find("a"), (Rows{2}));
}

TEST_F(EqualityIndexTest, HowManyRowsASearchLooksAtIsKnownOnceItIsBuilt) {
    for (const char* text : {"a", "b", "a"})
        add(text);
    EXPECT_EQ(index.countEqual(column, column.pool.findEqual("a")), std::nullopt);
    find("a");
    find("a");
    EXPECT_EQ(index.countEqual(column, column.pool.findEqual("a")), 2U);
    add("a");
    EXPECT_EQ(index.countEqual(column, column.pool.findEqual("b")), 2U) << "its row, and the new one";
}

} // namespace

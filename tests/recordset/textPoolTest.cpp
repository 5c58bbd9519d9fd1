#include "recordset/textPool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Codes = std::vector<TextPool::Code>;

/// "ab", "Ab", "", "ab" again, "c".
TextPool takenOver() {
    return {"abAbabc", {0, 2, 4, 4, 6, 7}};
}

Codes sorted(Codes codes) {
    std::sort(codes.begin(), codes.end());
    return codes;
}

TEST(TextPool, TextsThatAnotherKeptHaveTheirCodes) {
    const TextPool pool = takenOver();
    EXPECT_EQ(pool.last(), 5U);
    EXPECT_EQ(pool.text(2), "Ab");
    EXPECT_EQ(pool.text(3), "");
    EXPECT_EQ(pool.text(5), "c");
}

TEST(TextPool, ATextUnderSeveralCodesIsFoundUnderEachAndIsOneToTheGroups) {
    const TextPool pool = takenOver();
    EXPECT_EQ(sorted(pool.findEqual("AB")), (Codes{1, 2, 4}));
    EXPECT_EQ(pool.findEqual("c"), Codes{5});
    EXPECT_EQ(pool.findEqual("d"), Codes{});
    for (const TextPool::Code code : {1, 2, 4})
        EXPECT_EQ(pool.foldClass(code), 1U);
    EXPECT_EQ(pool.foldClass(5), 5U);
    EXPECT_EQ(pool.text(pool.find("ab")), "ab");
}

TEST(TextPool, WhatIsTakenOverGrowsLikeAnyOther) {
    TextPool pool = takenOver();
    EXPECT_EQ(pool.intern("c"), 5U);
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(pool.intern("new" + std::to_string(i)), TextPool::Code(6 + i));
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(pool.find("new" + std::to_string(i)), TextPool::Code(6 + i));
    EXPECT_EQ(sorted(pool.findEqual("aB")), (Codes{1, 2, 4}));
    EXPECT_EQ(TextPool("", {0}).findEqual("x"), Codes{}) << "none at all";
}

TEST(TextPool, ATextIsFoundInsideOthersAndNotAcrossTwo) {
    TextPool pool;
    for (const char* text : {"ab", "", "cab", "Ab张三", "b张", "三"})
        pool.intern(text);
    EXPECT_EQ(pool.containing("ab"), (Codes{1, 3, 4}));
    EXPECT_EQ(pool.containing("bc"), Codes());
    EXPECT_EQ(pool.containing("张三"), (Codes{4}));
    EXPECT_EQ(pool.containing("三"), (Codes{4, 6}));
    EXPECT_EQ(pool.containing("longer than all of them together"), Codes());
    EXPECT_EQ(TextPool().containing("a"), Codes());
}

} // namespace

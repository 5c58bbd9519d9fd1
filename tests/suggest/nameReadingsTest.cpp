#include "suggest/nameReadings.h"

#include "support/printQt.h"

#include <gtest/gtest.h>

namespace {

QString keys(const char* name) {
    static NameReadings readings;
    return readings.keysOf(QString::fromUtf8(name)).join(u' ');
}

TEST(NameReadings, ANameIsFoundByItselfItsSyllablesAndTheirFirstLetters) {
    EXPECT_EQ(keys("张平"), u"张平 zhangping zp");
    EXPECT_EQ(keys("红木行"), u"红木行 hongmuxing hmx");
    EXPECT_EQ(keys(""), u"");
}

TEST(NameReadings, ASurnameReadOtherwiseMatchesEitherReading) {
    EXPECT_EQ(keys("单小平"), u"单小平 danxiaoping dxp shanxiaoping sxp");
    EXPECT_EQ(keys("曾国藩"), u"曾国藩 cengguofan cgf zengguofan zgf");
    EXPECT_EQ(keys("小单"), u"小单 xiaodan xd") << "no surname where it stands";
    EXPECT_EQ(keys("万俟卨"), u"万俟卨 wanqixie wqx moqixie mqx");
}

TEST(NameReadings, ASignCanDependOnTheOneBehindIt) {
    EXPECT_EQ(keys("重庆"), u"重庆 chongqing cq");
    EXPECT_EQ(keys("重量"), u"重量 zhongliang zl chongliang cl");
    EXPECT_EQ(keys("长孙"), u"长孙 zhangsun zs");
    EXPECT_EQ(keys("长"), u"长 zhang z chang c");
}

TEST(NameReadings, UWithDotsIsTypedAsVAndAsU) {
    EXPECT_EQ(keys("吕布"), u"吕布 lvbu lb lubu");
}

TEST(NameReadings, LettersAndDigitsStandForThemselvesAndBlanksForNothing) {
    EXPECT_EQ(keys("ABC 公司"), u"abc公司 abcgongsi abcgs");
    EXPECT_EQ(keys("３号楼"), u"3号楼 3haolou 3hl") << "wide digits are digits";
    EXPECT_EQ(keys("张·平（北京）"), u"张·平(北京) zhangpingbeijing zpbj");
    EXPECT_EQ(keys("Xi'an"), u"xian");
    EXPECT_EQ(keys("\xF0\xA0\x80\x80"), QString::fromUtf8("\xF0\xA0\x80\x80 he h")) << "beyond 16 bits";
}

TEST(NameReadings, TheSameNameReadsTheSameWhateverWasReadBefore) {
    NameReadings fresh;
    const QString first = fresh.keysOf("重").join(u' ');
    EXPECT_EQ(fresh.keysOf("重庆").join(u' '), u"重庆 chongqing cq");
    EXPECT_EQ(fresh.keysOf("重").join(u' '), first);
}

TEST(SuggestionKey, DoesNotDependOnCaseWidthOrBlanks) {
    EXPECT_EQ(suggestionKey(QStringLiteral(" Zhang ＰＩＮＧ ")), u"zhangping");
    EXPECT_EQ(suggestionKey(QStringLiteral("xi'an")), u"xian");
    EXPECT_EQ(suggestionKey(QStringLiteral("  ")), u"");
}

} // namespace

#include "shell/userGuide.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

QString name(const UserGuide& guide, int section) {
    return section < 0 ? QStringLiteral("-") : guide.sections()[std::size_t(section)].name;
}

QString textOf(const UserGuide& guide, const char* section) {
    const UserGuide::Section& found = guide.sections()[std::size_t(guide.find(QString::fromUtf8(section)))];
    return guide.text().mid(found.start, found.end - found.start);
}

UserGuide small() {
    return UserGuide(
        QStringLiteral("指南\n====\r\n一、卖货\n------\n开头。【不是】标题\n【购买】见“库存”和“购买”。\n"
                       "【退货】【报废】两种。\n二、库存\n------\n再见“没有”。见下面“购买”，按“没有”。\n"));
}

TEST(UserGuide, HeadingsAreUnderlinedLinesAndBracketsAtALinesBeginning) {
    const UserGuide guide = small();
    QStringList names;
    for (const UserGuide::Section& each : guide.sections())
        names << QString::number(int(each.level)) + each.name;
    EXPECT_EQ(names, QStringList({"0指南", "1卖货", "2购买", "2退货", "2报废", "1库存"}));
    EXPECT_FALSE(guide.text().contains(u'\r'));
}

TEST(UserGuide, ASectionEndsWhereTheNextOfItsLevelBegins) {
    const UserGuide guide = small();
    EXPECT_EQ(textOf(guide, "购买"), u"【购买】见“库存”和“购买”。\n");
    EXPECT_TRUE(textOf(guide, "卖货").endsWith(u"【报废】两种。\n"));
    EXPECT_EQ(textOf(guide, "退货"), u"【退货】【报废】两种。\n") << "names of one text share it";
    EXPECT_EQ(textOf(guide, "报废"), u"【报废】两种。\n");
    EXPECT_EQ(textOf(guide, "指南"), guide.text());
}

TEST(UserGuide, APlaceBelongsToTheInnermostSection) {
    const UserGuide guide = small();
    EXPECT_EQ(name(guide, guide.sectionAt(0)), u"指南");
    EXPECT_EQ(name(guide, guide.sectionAt(guide.text().indexOf(u"开头"))), u"卖货");
    EXPECT_EQ(name(guide, guide.sectionAt(guide.text().indexOf(u"两种"))), u"报废");
    EXPECT_EQ(name(guide, guide.sectionAt(guide.text().size())), u"库存");
    EXPECT_EQ(UserGuide(QString()).sectionAt(0), -1);
}

TEST(UserGuide, AQuotedNameLinksToItsSectionButNotFromWithinIt) {
    const UserGuide guide = small();
    QStringList links;
    for (const UserGuide::Link& link : guide.links()) {
        EXPECT_EQ(guide.text().mid(link.start, link.length), name(guide, link.target));
        links << name(guide, guide.sectionAt(link.start)) + u'>' + name(guide, link.target);
    }
    EXPECT_EQ(links, QStringList({"购买>库存", "库存>购买"}));
}

TEST(UserGuide, WhatItTellsToLookUpAndDoesNotHoldIsSaid) {
    EXPECT_EQ(small().missingTargets(), QStringList{"没有"}) << "once: the second one is no reference";
}

TEST(UserGuide, AWordIsFoundWhateverItsCaseAndHitsDoNotOverlap) {
    const UserGuide guide(QStringLiteral("Csv aaa CSV"));
    EXPECT_EQ(guide.hits("csv"), std::vector<qsizetype>({0, 8}));
    EXPECT_EQ(guide.hits("aa"), std::vector<qsizetype>({4}));
    EXPECT_TRUE(guide.hits("x").empty());
    EXPECT_TRUE(guide.hits("").empty());
}

TEST(UserGuide, OfTheProgramLeadsToSectionsItHasAndNamesNoneTwice) {
    QFile file(QStringLiteral(ASSETS "/用户指南(衡商汇).txt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const UserGuide guide(QString::fromUtf8(file.readAll()));
    EXPECT_EQ(guide.missingTargets(), QStringList());
    EXPECT_GT(guide.sections().size(), 40u);
    EXPECT_GT(guide.links().size(), 20u);
    for (std::size_t i = 0; i < guide.sections().size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_FALSE(guide.sections()[i].level == guide.sections()[j].level &&
                         guide.sections()[i].name == guide.sections()[j].name)
                << guide.sections()[i].name.toStdString();
    for (const UserGuide::Link& link : guide.links())
        EXPECT_EQ(guide.text().mid(link.start, link.length), name(guide, link.target));
}

TEST(UserGuide, AWindowThatNobodyKnowsHasNoTopicAndEveryReportIsAboutPrinting) {
    EXPECT_EQ(helpTopic("nothing"), u"");
    EXPECT_EQ(helpTopic(""), u"");
    EXPECT_EQ(helpTopic("showprint_rs2"), u"打印");
    EXPECT_EQ(helpTopic("print_rs_order"), u"打印");
}

} // namespace

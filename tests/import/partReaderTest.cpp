#include "import/partReader.h"
#include "import/tableReader.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

/// Gives its bytes a few at a time.
class Dribble : public QIODevice {
public:
    Dribble(QByteArray bytes, qint64 most)
        : m_bytes(std::move(bytes))
        , m_most(most) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* to, qint64 count) override {
        count = std::min({count, m_most, m_bytes.size() - m_at});
        std::copy_n(m_bytes.constData() + m_at, count, to);
        m_at += count;
        return count;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qint64 m_most;
    qint64 m_at = 0;
};

/// The children of a document: name[attribute a]=text, "; " behind each.
QString childrenOf(const QByteArray& document, qint64 most = 1 << 20) {
    PartReader xml(std::make_unique<Dribble>(document, most));
    QString all;
    while (xml.child()) {
        for (const char* name : {"v", "w"})
            if (xml.is(name))
                all += QString::fromLatin1(name);
        all += u'[' + xml.attribute("a") + QStringLiteral("]=");
        const std::string_view text = xml.text();
        all += QString::fromUtf8(text.data(), qsizetype(text.size())) + QStringLiteral("; ");
    }
    return all;
}

/// What is told of a document that is refused.
QString refusalOf(const QByteArray& document) {
    try {
        childrenOf(document);
    } catch (const ImportError& error) {
        return error.text();
    }
    return {};
}

const QByteArray kDocument =
    "\xEF\xBB\xBF<?xml version=\"1.0\" encoding='utf-8' standalone=\"yes\"?>\r\n<!-- <d> > -->\n"
    "<x:d xmlns:x=\"u\" >\n <x:v a = 'b > c \"q\"'>1&lt;2 &#x4E00;&#20108;&#x1F600;</x:v >"
    "<!-- -- <w> --><w a=\"&amp;&quot;\"/><?target <v> ?><v><![CDATA[<b>&amp;]]]]><![CDATA[>]]>\r\nz\ry"
    "<inner>i</inner><inner/>&apos;</v><w></w></x:d>\n<!-- end -->";
const QString kChildren =
    QStringLiteral("v[b > c \"q\"]=1<2 一二😀; w[&\"]=; v[]=<b>&amp;]]>\nz\nyi'; w[]=; ");

TEST(PartReader, ReadsElementsAttributesAndTextsAsTheyAreMeant) {
    EXPECT_EQ(childrenOf(kDocument), kChildren);
}

TEST(PartReader, APartIsReadTheSameHoweverItComes) {
    for (const qint64 most : {1, 2, 3, 5, 7, 11, 64})
        EXPECT_EQ(childrenOf(kDocument, most), kChildren) << most;
}

TEST(PartReader, ADocumentLongerThanWhatIsReadAtOnceIsReadWhole) {
    QByteArray document("<d>");
    QString wanted;
    for (int i = 0; i < 60000; ++i) {
        document += "<v a=\"" + QByteArray::number(i) + "\">" + QByteArray(i % 37, 'x') + "</v>";
        wanted += QStringLiteral("v[%1]=").arg(i) + QString(i % 37, u'x') + QStringLiteral("; ");
    }
    EXPECT_EQ(childrenOf(document + "</d>"), wanted);
}

TEST(PartReader, AnElementIsPassedOverWithAllThatIsInIt) {
    PartReader xml(std::make_unique<Dribble>("<d><a><b><c/></b>t<!-- </a> --></a><e/><v>1</v></d>", 4));
    ASSERT_TRUE(xml.child());
    EXPECT_TRUE(xml.is("a"));
    xml.skip();
    ASSERT_TRUE(xml.child());
    EXPECT_TRUE(xml.is("e"));
    xml.skip();
    ASSERT_TRUE(xml.child());
    EXPECT_EQ(xml.text(), "1");
    EXPECT_FALSE(xml.child());
    EXPECT_TRUE(xml.is("d")) << "which is closed now";
}

TEST(PartReader, WhatIsNoXmlIsRefused) {
    for (const char* document : {"",
                                 "text",
                                 "<d>",
                                 "<d><v></d>",
                                 "<d></v></d>",
                                 "<d><v a></v></d>",
                                 "<d><v a=1/></d>",
                                 "<d><v a='1/></d>",
                                 "<d><></></d>",
                                 "< d/>",
                                 "<d><v>&#0;</v></d>",
                                 "<d><v>&#xD800;</v></d>",
                                 "<d><v>&#x110000;</v></d>",
                                 "<d><v>&#12x;</v></d>",
                                 "<d><v>&amp</v></d>",
                                 "<d><!-- </d>",
                                 "<d><v><![CDATA[x</v></d>",
                                 "<d><v>\xC3(</v></d>",
                                 "x<d/>",
                                 "<d><v></V></d>"})
        EXPECT_EQ(refusalOf(document), u"工作簿已损坏。") << document;
}

TEST(PartReader, DocumentTypesEntitiesAndOtherEncodingsAreRefused) {
    for (const char* document :
         {"<!DOCTYPE d><d/>", "<d><!ENTITY x 'y'></d>", "<d><v>&x;</v></d>", "<d><v a='&x;'/></d>"})
        EXPECT_EQ(refusalOf(document), u"工作簿里有不合规定的实体或文档类型，不能读取。") << document;
    EXPECT_EQ(refusalOf("<?xml version=\"1.0\" encoding=\"GBK\"?><d/>"),
              u"工作簿的编码不是 UTF-8，不能读取。");
    EXPECT_NE(refusalOf(QByteArray("\xFF\xFE<\0d\0/\0>\0", 10)), u"");
}

TEST(PartReader, NestingAndTheLengthOfATextHaveAnEnd) {
    const auto nested = [](std::size_t depth) {
        return QByteArray("<a>").repeated(qsizetype(depth)) + QByteArray("</a>").repeated(qsizetype(depth));
    };
    EXPECT_EQ(refusalOf(nested(PartReader::kDeepest)), u"");
    EXPECT_EQ(refusalOf(nested(PartReader::kDeepest + 1)), u"工作簿的嵌套太深，不能读取。");
    const QByteArray tooLong(qsizetype(PartReader::kLongest) + (1 << 20), 'x');
    EXPECT_EQ(refusalOf("<d><v>" + tooLong + "</v></d>"), u"有一格的内容太长，不能读取。");
    EXPECT_EQ(refusalOf("<d><v a=\"" + tooLong + "\"/></d>"), u"有一格的内容太长，不能读取。");
    const QByteArray half(qsizetype(PartReader::kLongest) / 2 + (1 << 20), 'x');
    EXPECT_EQ(refusalOf("<d><v>" + half + "<!-- -->" + half + "</v></d>"), u"有一格的内容太长，不能读取。");
}

} // namespace

// A report's layout in a file of its user, and every way in which such a file may be wrong.
#include "reports/layoutFile.h"
#include "reports/reportPage.h"
#include "reports/slip.h"
#include "support/reportTable.h"
#include "support/smallDisk.h"
#include "support/testBooks.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <limits>
#include <sys/stat.h>

namespace {

using namespace table;

/// A layout in which nothing is as the report opens.
ReportLayout changed(const ReportDescription& report) {
    ReportLayout layout = defaultLayout(report, "交来的标题");
    layout.reportTitle = "自己的“标题”\\ 一";
    layout.move(ReportPart::Table, 3, -2);
    layout.move(ReportPart::Title, -4, 5);
    layout.move(ReportPart::Head, 6, 7);
    for (std::size_t i = 0; i < report.boxNames.size(); ++i)
        layout.boxShift[i + 1] = 0.1 * double(i + 1) - 2;
    layout.titleFont = {"宋体", 18.5F, false, true, true, true, 0x0102FF};
    layout.headFont = {"黑体", 9, false};
    layout.fieldFont.underline = true;
    layout.contentFont.size = 7.25F;
    return layout;
}

class LayoutFile : public testing::Test {
protected:
    const ReportDescription& report = *findReport(u"print_rs2");
    ReportLayout opening = defaultLayout(report, {});

    QJsonObject object(bool ownTitle = true) {
        return QJsonDocument::fromJson(layoutText(report, {changed(report), ownTitle})).object();
    }
    static QByteArray text(const QJsonObject& object) { return QJsonDocument(object).toJson(); }
    QString faultOf(const QByteArray& text) {
        const LayoutOutcome read = readLayout(text, report, opening);
        EXPECT_EQ(read.kept.has_value(), read.fault.isEmpty());
        return read.fault;
    }
    /// The fault of a layout in which one item is another ("fonts.title.size"; without a value it is gone).
    QString faultWith(const QString& path, const QJsonValue& value) {
        return faultOf(text(with(object(), path.split(u'.'), value)));
    }
    static QJsonObject with(QJsonObject object, QStringList path, const QJsonValue& value) {
        const QString name = path.takeFirst();
        if (!path.isEmpty())
            object[name] = with(object[name].toObject(), path, value);
        else if (value.isUndefined())
            object.remove(name);
        else
            object[name] = value;
        return object;
    }
    QString path(const char* name) { return folder.filePath(QString::fromUtf8(name)); }
    void put(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
};

TEST_F(LayoutFile, OfEveryReportComesBackAsItWas) {
    for (const ReportDescription& each : reportCatalogue()) {
        const ReportLayout layout = changed(each);
        const ReportLayout opens = defaultLayout(each, "别的标题");
        const LayoutOutcome read = readLayout(layoutText(each, {layout, true}), each, opens);
        ASSERT_TRUE(read.kept) << QString::fromUtf16(each.name).toStdString() << read.fault.toStdString();
        EXPECT_TRUE(read.kept->ownTitle);
        EXPECT_TRUE(read.kept->layout == layout) << QString::fromUtf16(each.name).toStdString();
        EXPECT_FALSE(layout == opens);
    }
}

TEST_F(LayoutFile, OfASlipComesBackAndFitsNoSlipWithAnotherHead) {
    TestBooks books;
    const Slip roll(SlipPaper::Roll, books.session());
    const ReportLayout layout = changed(roll.description());
    const QByteArray kept = layoutText(roll.description(), {layout, true});
    const LayoutOutcome read = readLayout(kept, roll.description(), defaultLayout(roll.description(), {}));
    ASSERT_TRUE(read.kept) << read.fault.toStdString();
    EXPECT_TRUE(read.kept->layout == layout);
    put(books.session().appPath + "/小票抬头.txt", "店名\n地址\n");
    const Slip longer(SlipPaper::Roll, books.session());
    EXPECT_EQ(readLayout(kept, longer.description(), defaultLayout(longer.description(), {})).fault,
              u"“head”的项数和这张报表不同");
}

TEST_F(LayoutFile, ATitleThatTheUserDidNotGiveStaysWithItsRows) {
    const LayoutOutcome read =
        readLayout(layoutText(report, {changed(report), false}), report, defaultLayout(report, {}));
    ASSERT_TRUE(read.kept);
    EXPECT_FALSE(read.kept->ownTitle);
    EXPECT_EQ(read.kept->layout.reportTitle, opening.reportTitle);
    ReportLayout empty = changed(report);
    empty.reportTitle.clear();
    EXPECT_TRUE(readLayout(layoutText(report, {empty, true}), report, opening).kept->ownTitle)
        << "no title is a title of its own";
}

TEST_F(LayoutFile, OfAnotherReportIsRefusedEvenWithTheSameColumns) {
    const QByteArray other = layoutText(*findReport(u"print_rs9"), {changed(report), true});
    EXPECT_EQ(faultOf(other), u"这是另一张报表的版式");
}

TEST_F(LayoutFile, WhatIsNoLayoutIsSaidToBeNone) {
    for (const char* text :
         {"", "{", "[]", "null", "1", "{}", "品名,单价\r\n", "{\"kind\":\"别的\"}", "\xFF\xFE\x00"})
        EXPECT_EQ(faultOf(text), u"这不是报表的版式文件") << text;
    const QByteArray whole = text(object());
    EXPECT_EQ(faultOf(whole), u"");
    for (qsizetype length = 0; length < whole.trimmed().size(); length += 7)
        EXPECT_NE(faultOf(whole.left(length)), u"") << "cut behind " << length;
    EXPECT_EQ(faultOf(QByteArray(100'000, '[')), u"这不是报表的版式文件");
    EXPECT_EQ(faultOf(whole + QByteArray(70'000, ' ')), u"这不是报表的版式文件") << "too long";
    EXPECT_EQ(faultWith("version", 2), u"版式文件的版本不认识");
}

TEST_F(LayoutFile, ABoxThatTheReportHasNotOrOneTooFewIsNamed) {
    EXPECT_EQ(faultWith("boxes.日期方框", 1), u"这张报表没有“boxes.日期方框”");
    EXPECT_EQ(faultWith("boxes.品名方框", QJsonValue::Undefined), u"缺少“boxes.品名方框”");
}

TEST_F(LayoutFile, UnknownAndMissingItemsAreNamed) {
    EXPECT_EQ(faultWith("tableWidth", 250), u"有不认识的项“tableWidth”");
    EXPECT_EQ(faultWith("fonts.page", 1), u"有不认识的项“fonts.page”");
    EXPECT_EQ(faultWith("fonts.title.weight", 1), u"有不认识的项“fonts.title.weight”");
    QJsonObject odd = object();
    QJsonArray head = odd["head"].toArray();
    head[1] = with(head[1].toObject(), {"x"}, 1);
    odd["head"] = head;
    EXPECT_EQ(faultOf(text(odd)), u"有不认识的项“head[1].x”");
    for (const QString& name : object().keys())
        EXPECT_NE(faultWith(name, QJsonValue::Undefined), u"") << name.toStdString();
    for (const char* name : {"name", "size", "colour", "bold", "italic", "strikethrough", "underline"})
        EXPECT_EQ(faultWith("fonts.field." + QString(name), QJsonValue::Undefined),
                  QStringLiteral("缺少“fonts.field.%1”").arg(name));
}

TEST_F(LayoutFile, ValuesOfAnotherKindOrBeyondThePaperAreNamed) {
    for (const char* name : {"tableLeft", "tableTop", "titleTop", "titleShift", "boxes.品名方框"}) {
        for (const QJsonValue& value : {QJsonValue(1000.5), QJsonValue(-1e300), QJsonValue("3"), QJsonValue(),
                                        QJsonValue(true), QJsonValue(QJsonArray())})
            EXPECT_EQ(faultWith(name, value), QStringLiteral("“%1”不是 -1000 到 1000 之间的数").arg(name));
        EXPECT_EQ(faultWith(name, -1000), u"") << name;
    }
    EXPECT_EQ(faultWith("titleShift", 0.5), u"“titleShift”不是整数");
    for (const double size : {0.0, -3.0, 0.99, 501.0})
        EXPECT_EQ(faultWith("fonts.head.size", size), u"“fonts.head.size”不是 1 到 500 之间的数");
    EXPECT_EQ(faultWith("fonts.head.bold", 1), u"“fonts.head.bold”不是 true 或 false");
    EXPECT_EQ(faultWith("fonts.head.colour", 0x1000000), u"“fonts.head.colour”不是 0 到 16777215 之间的数");
    EXPECT_EQ(faultWith("fonts.head.colour", 1.5), u"“fonts.head.colour”不是整数");
    EXPECT_EQ(faultWith("fonts.head.name", ""), u"“fonts.head.name”是空的");
    EXPECT_EQ(faultWith("fonts.head.name", QString(101, u'a')), u"“fonts.head.name”不是文字，或者太长");
    EXPECT_EQ(faultWith("fonts.head", 5), u"“fonts.head”不是一组数据");
    EXPECT_EQ(faultWith("title", QString(1001, u'a')), u"“title”不是文字，或者太长");
    EXPECT_EQ(faultWith("title", "a\nb"), u"“title”不是文字，或者太长");
    EXPECT_EQ(faultWith("title", 5), u"“title”不是文字，或者太长");
    EXPECT_EQ(faultWith("head", QJsonArray()), u"“head”的项数和这张报表不同");
    EXPECT_EQ(faultWith("head", 5), u"“head”的项数和这张报表不同");
}

TEST_F(LayoutFile, IsWrittenWholeAndReadBackFromItsFile) {
    const ReportLayout layout = changed(report);
    EXPECT_EQ(writeLayoutFile(path("a.json"), report, {layout, true}), u"");
    const LayoutOutcome read = readLayoutFile(path("a.json"), path("books.mdb"), report, opening);
    ASSERT_TRUE(read.kept) << read.fault.toStdString();
    EXPECT_TRUE(read.kept->layout == layout);
}

TEST_F(LayoutFile, WhatCouldNotBeReadAgainOrDoesNotFitTheDiskLeavesTheFileAsItWas) {
    put(path("a.json"), "before");
    ReportLayout far = changed(report);
    far.tableLeft = 2000;
    EXPECT_EQ(writeLayoutFile(path("a.json"), report, {far, true}),
              u"“tableLeft”不是 -1000 到 1000 之间的数");
    far.tableLeft = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(writeLayoutFile(path("a.json"), report, {far, true}), u"");
    {
        const FileSizeLimit limit(100);
        EXPECT_EQ(writeLayoutFile(path("a.json"), report, {changed(report), true}),
                  "文件不能写入：" + path("a.json"));
    }
    QFile file(path("a.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "before");
    EXPECT_EQ(writeLayoutFile(path("no/a.json"), report, {changed(report), true}),
              "文件不能写入：" + path("no/a.json"));
}

TEST_F(LayoutFile, TheOpenBooksPipesFoldersAndLargeFilesAreNotOpened) {
    TestBooks books;
    const auto faultOf = [&](const QString& path) {
        return readLayoutFile(path, books.path(), report, opening).fault;
    };
    EXPECT_EQ(faultOf(books.path()), u"这是本系统正在使用的文件");
    ASSERT_TRUE(QFile::link(books.path(), path("link.json")));
    EXPECT_EQ(faultOf(path("link.json")), u"这是本系统正在使用的文件");
    ASSERT_EQ(::mkfifo(path("pipe.json").toUtf8().constData(), 0600), 0);
    EXPECT_EQ(faultOf(path("pipe.json")), u"不是普通的文件");
    EXPECT_EQ(faultOf(folder.path()), u"不是普通的文件");
    put(path("large.json"), QByteArray(70'000, ' '));
    EXPECT_EQ(faultOf(path("large.json")), u"文件太大，不是报表的版式文件");
    EXPECT_EQ(faultOf(path("nothing.json")), u"文件不能打开");
}

} // namespace

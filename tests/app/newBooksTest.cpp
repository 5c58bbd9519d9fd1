#include "app/newBooks.h"
#include "app/booksPlace.h"
#include "data/schema.h"
#include "support/printQt.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <thread>

namespace {

class FirstBooks : public testing::Test {
protected:
    FirstBooks() { createDatabase(empty); }
    QString make() const { return makeFirstBooks(data, empty); }
    QStringList inParent() const {
        return QDir(home.filePath("local")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    static QByteArray bytes(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QTemporaryDir home;
    QString empty = home.filePath("empty.mdb");
    QString data = home.filePath("local/hengshanghui");
    QString file = data + "/VelmorClientBank.mdb";
};

TEST_F(FirstBooks, AreWholeAndTheirOwnersAloneInAFolderThatHoldsNothingElse) {
    const QByteArray before = bytes(empty);
    EXPECT_TRUE(isFirstStart(data));
    EXPECT_EQ(make(), "");
    EXPECT_FALSE(isFirstStart(data));
    EXPECT_EQ(databaseFault(file), "");
    EXPECT_EQ(QFile::permissions(file) & 0x77, 0);
    EXPECT_EQ(QFile::permissions(data) & 0x77, 0);
    EXPECT_EQ(QDir(data).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList("VelmorClientBank.mdb"));
    EXPECT_EQ(inParent(), QStringList("hengshanghui")) << "nothing is left beside it";
    EXPECT_EQ(bytes(empty), before);
}

TEST_F(FirstBooks, OfTwoShopsHaveMarksOfTheirOwn) {
    EXPECT_EQ(make(), "");
    const QByteArray one = bytes(file);
    ASSERT_TRUE(QDir().rename(data, home.filePath("moved")));
    EXPECT_EQ(make(), "");
    EXPECT_NE(bytes(file), one);
    EXPECT_NE(bytes(file), bytes(empty));
}

TEST_F(FirstBooks, WhatIsThereIsNeverMadeAnew) {
    ASSERT_TRUE(QDir().mkpath(data));
    EXPECT_FALSE(isFirstStart(data)) << "an empty folder was used before";
    EXPECT_EQ(make(), "");
    EXPECT_EQ(QDir(data).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList());
    ASSERT_TRUE(QDir().rmdir(data) && QFile::link("/no such disk", data));
    EXPECT_FALSE(isFirstStart(data)) << "a link to a disk that is away";
    EXPECT_EQ(make(), "");
    EXPECT_TRUE(QFileInfo(data).isSymLink());
}

TEST_F(FirstBooks, WhatAKilledProcessLeftHalfMadeGivesWay) {
    const QString half = home.filePath("local/.hengshanghui-unfinished");
    ASSERT_TRUE(QDir().mkpath(half));
    QFile left(half + "/VelmorClientBank.mdb");
    ASSERT_TRUE(left.open(QIODevice::WriteOnly) && left.write("half") == 4);
    left.close();
    EXPECT_EQ(make(), "");
    EXPECT_EQ(databaseFault(file), "");
    EXPECT_EQ(inParent(), QStringList("hengshanghui"));
}

TEST_F(FirstBooks, WhatElseHasTheNameOfTheHalfMadeFolderIsToldAndStays) {
    const QString half = home.filePath("local/.hengshanghui-unfinished");
    const QString others = home.filePath("others");
    ASSERT_TRUE(QDir().mkpath(home.filePath("local")) && QDir().mkpath(others));
    QFile foreign(others + "/VelmorClientBank.mdb");
    ASSERT_TRUE(foreign.open(QIODevice::WriteOnly) && foreign.write("books") == 5);
    foreign.close();
    ASSERT_TRUE(QFile::link(others, half));
    EXPECT_TRUE(make().contains("不能建立数据文件夹"));
    EXPECT_EQ(bytes(foreign.fileName()), "books");
    EXPECT_TRUE(isFirstStart(data));
}

TEST_F(FirstBooks, AFailureIsToldAndLeavesNothing) {
    for (const QByteArray& content : {QByteArray("no books"), QByteArray(), bytes(empty).left(20'000)}) {
        QFile bad(empty);
        ASSERT_TRUE(bad.open(QIODevice::WriteOnly) && bad.write(content) == content.size());
        bad.close();
        const QString fault = make();
        EXPECT_TRUE(fault.contains(data) && fault.contains(empty)) << fault.toStdString();
        EXPECT_EQ(inParent(), QStringList());
    }
    ASSERT_TRUE(QFile::remove(empty));
    EXPECT_NE(make(), "");
    EXPECT_EQ(inParent(), QStringList());
    EXPECT_TRUE(isFirstStart(data));
}

TEST_F(FirstBooks, AParentThatCannotBeMadeIsTold) {
    QFile inTheWay(home.filePath("local"));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    inTheWay.close();
    EXPECT_TRUE(make().contains(home.filePath("local")));
}

TEST_F(FirstBooks, OfManyThatStartTogetherOneMakesThemAndAllFindThemWhole) {
    for (int round = 0; round < 10; ++round) {
        QDir(home.filePath("local")).removeRecursively();
        QStringList faults(4);
        std::vector<std::thread> starts;
        for (QString& fault : faults)
            starts.emplace_back([this, &fault] {
                fault = make();
                if (fault.isEmpty() && QFileInfo(file).size() == 0)
                    fault = "not whole";
            });
        for (std::thread& start : starts)
            start.join();
        EXPECT_EQ(faults, QStringList({"", "", "", ""}));
        EXPECT_EQ(inParent(), QStringList("hengshanghui"));
        EXPECT_EQ(databaseFault(file), "");
    }
}

} // namespace

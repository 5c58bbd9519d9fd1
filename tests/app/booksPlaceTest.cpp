#include "app/booksPlace.h"
#include "support/printQt.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

void PrintTo(BooksPlace place, std::ostream* out) {
    const char* names[] = {"asked", "beside", "user's data"};
    *out << names[int(place)];
}

namespace {

TEST(PlaceOfBooks, FirstWhatIsAskedForThenBesideTheProgramThenTheUsersDataOfAnInstalledOne) {
    const struct {
        bool asked, beside, installed;
        BooksPlace place;
        const char* path;
    } rows[] = {
        {false, false, false, BooksPlace::Beside, "/program"}, // where it is missed
        {false, false, true, BooksPlace::UsersData, "/data"},
        {false, true, false, BooksPlace::Beside, "/program"},
        {false, true, true, BooksPlace::Beside, "/program"},
        {true, false, false, BooksPlace::Asked, "/asked"},
        {true, false, true, BooksPlace::Asked, "/asked"},
        {true, true, false, BooksPlace::Asked, "/asked"},
        {true, true, true, BooksPlace::Asked, "/asked"},
    };
    for (const auto& row : rows) {
        const std::optional<QString> asked = row.asked ? std::optional<QString>("/asked") : std::nullopt;
        const BooksFolder found = placeOfBooks(asked, {"/program", "/data", row.beside, row.installed});
        EXPECT_EQ(found.place, row.place);
        EXPECT_EQ(found.path, row.path);
    }
}

class Around : public testing::Test {
protected:
    Surroundings look() const { return lookAround(folder.path()); }
    void put(const QString& path) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    QString file() const { return folder.filePath("VelmorClientBank.mdb"); }
    QTemporaryDir folder;
};

TEST_F(Around, AProgramFolderIsNotInstalledUnlessTheEmptyBooksLieThere) {
    EXPECT_FALSE(look().installed || look().isBeside);
    put(file());
    EXPECT_TRUE(look().isBeside);
    EXPECT_FALSE(look().installed);
    put(emptyBooks(folder.path()));
    EXPECT_TRUE(look().isBeside && look().installed);
    EXPECT_EQ(look().programFolder, folder.path());
}

TEST_F(Around, ALinkToBooksThatAreAwayCountsAsThere) {
    ASSERT_TRUE(QFile::link("/no such disk/VelmorClientBank.mdb", file()));
    EXPECT_TRUE(look().isBeside);
}

TEST_F(Around, TheUsersDataFolderFollowsTheDesktopsRule) {
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", folder.path().toUtf8());
    EXPECT_EQ(look().dataFolder, folder.filePath("hengshanghui"));
    qunsetenv("XDG_DATA_HOME");
    EXPECT_EQ(look().dataFolder, QDir::home().filePath(".local/share/hengshanghui"));
    EXPECT_FALSE(QFile::exists(folder.filePath("hengshanghui"))) << "looking makes nothing";
    if (!before.isNull())
        qputenv("XDG_DATA_HOME", before);
}

TEST_F(Around, AFolderThatIsNoneIsTold) {
    EXPECT_EQ(folderFault(folder.path()), "");
    EXPECT_TRUE(folderFault(folder.filePath("none")).contains("不存在"));
    put(file());
    EXPECT_TRUE(folderFault(file()).contains("不是文件夹"));
    EXPECT_TRUE(folderFault(file()).contains(file()));
}

TEST_F(Around, WhatToDoAboutAMissingFileDependsOnThePlace) {
    const Surroundings bare{"/program", "/data", false, false}, installed{"/program", "/data", false, true};
    const QString here = folder.path();
    EXPECT_EQ(missingBooksHint({BooksPlace::Beside, here}, bare), "");
    EXPECT_EQ(missingBooksHint({BooksPlace::Asked, here}, bare), "") << "no empty books to copy";
    EXPECT_TRUE(missingBooksHint({BooksPlace::Asked, here}, installed).contains(emptyBooks("/program")));
    EXPECT_TRUE(missingBooksHint({BooksPlace::UsersData, here}, installed).contains("没有另开"));
    put(file());
    for (const BooksPlace place : {BooksPlace::Asked, BooksPlace::UsersData})
        EXPECT_EQ(missingBooksHint({place, here}, installed), "");
}

} // namespace

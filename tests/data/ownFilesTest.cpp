#include "data/ownFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

class OwnFiles : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDir(folder.path()).mkpath("店/备份"));
        make(books());
    }
    QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
    QString books() const { return path("店/VelmorClientBank.mdb"); }
    static void make(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    bool isOwn(const QString& name) const { return isOwnFile(name, books()); }

    QTemporaryDir folder;
};

const char* const kEndings[] = {"", "-journal", "-wal", "-shm", ".lock"};

TEST_F(OwnFiles, AreTheDatabaseAndWhatBelongsToItAlsoWhileItIsNotThere) {
    for (const char* ending : kEndings) {
        const QString own = books() + ending;
        EXPECT_TRUE(isOwn(own)) << ending;
        EXPECT_TRUE(isOwn(path("店/备份/../../店/./VelmorClientBank.mdb") + ending)) << ending;
        make(own);
        EXPECT_TRUE(isOwn(own)) << ending;
    }
}

TEST_F(OwnFiles, AreFoundByARelativeName) {
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(path("店/备份")));
    for (const char* ending : kEndings)
        EXPECT_TRUE(isOwn(QString("../VelmorClientBank.mdb") + ending)) << ending;
    EXPECT_FALSE(isOwn("VelmorClientBank.mdb"));
    QDir::setCurrent(before);
}

TEST_F(OwnFiles, AreFoundThroughLinksAlsoToWhatIsNotThere) {
    ASSERT_TRUE(QFile::link(path("店"), path("别处")));
    for (const char* ending : kEndings) {
        EXPECT_TRUE(isOwn(path("别处/VelmorClientBank.mdb") + ending)) << "a linked folder " << ending;
        const QString link = path("link") + ending;
        ASSERT_TRUE(QFile::link(books() + ending, link));
        ASSERT_TRUE(QFile::link(link, path("second") + ending));
        EXPECT_TRUE(isOwn(path("second") + ending)) << "a link to a link " << ending;
        // As a shell leaves it: by a name that counts from the link's folder.
        const QString beside = path("店/备份/beside") + ending;
        ASSERT_EQ(
            symlink((std::string("../VelmorClientBank.mdb") + ending).c_str(), QFile::encodeName(beside)), 0);
        EXPECT_TRUE(isOwn(beside)) << "a relative link " << ending;
    }
}

TEST_F(OwnFiles, AreFoundThroughHardLinks) {
    for (const char* ending : kEndings) {
        if (*ending)
            make(books() + ending);
        const QString link = path("hard") + ending;
        ASSERT_EQ(::link(QFile::encodeName(books() + ending), QFile::encodeName(link)), 0);
        EXPECT_TRUE(isOwn(link)) << ending;
    }
}

TEST_F(OwnFiles, StandBesideTheFileThatALinkedDatabaseIs) {
    const QString link = path("books.mdb");
    ASSERT_TRUE(QFile::link(books(), link));
    for (const char* ending : kEndings)
        EXPECT_TRUE(isOwnFile(books() + ending, link)) << ending;
    EXPECT_TRUE(isOwnFile(link, link));
}

TEST_F(OwnFiles, AreKnownInAnyCaseForDisksThatKnowNone) {
    EXPECT_TRUE(isOwn(path("店/velmorclientbank.MDB-Journal")));
}

TEST_F(OwnFiles, AreNoBackupsAndNoOtherFiles) {
    for (const char* ending : kEndings)
        EXPECT_FALSE(isOwn(path("店/备份/VelmorClientBank.mdb") + ending)) << ending;
    make(path("店/备份/2024-01-01.mdb"));
    for (const char* name :
         {"店/备份/2024-01-01.mdb", "店/a.csv", "店/VelmorClientBank.mdb.csv",
          "店/VelmorClientBank.mdb-journal.pdf", "VelmorClientBank.mdb", "nowhere/at/all.csv"})
        EXPECT_FALSE(isOwn(path(name))) << name;
    ASSERT_TRUE(QFile::link(path("loop"), path("loop")));
    EXPECT_FALSE(isOwn(path("loop")));
}

} // namespace

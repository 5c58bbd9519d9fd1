// Reading a file as it lies there, beside whoever writes it.
#include "data/immutableFile.h"
#include "data/journalFiles.h"
#include "data/schema.h"
#include "durability/childProcess.h"
#include "recordset/connection.h"
#include "support/printQt.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class ImmutableFile : public testing::Test {
protected:
    ImmutableFile() { createDatabase(path); }
    QByteArray contents(const QString& of) {
        QFile file(of);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    QString path = folder.filePath("VelmorClientBank.mdb");
};

TEST_F(ImmutableFile, KeepsNoCommitWaiting) {
    const DatabaseHandle read = openImmutable(path);
    Statement rows(read.get(), QStringLiteral("SELECT * FROM counterCode"));
    ASSERT_TRUE(rows.step());
    Connection books(path);
    books.execute("PRAGMA busy_timeout = 0");
    EXPECT_NO_THROW(books.write("UPDATE counterCode SET counterNum = 5"));
}

TEST_F(ImmutableFile, LeavesTheJournalBesideItAlone) {
    ASSERT_TRUE(wasKilled(inChild([&] {
        Connection books(path);
        books.execute("PRAGMA cache_size = 2");
        WriteBatch batch(books);
        books.write("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
                    "INSERT INTO clientTable (客户编号) SELECT i FROM n");
        _exit(kKilled);
    })));
    ASSERT_EQ(journalState(path), JournalState::Ours);
    const QByteArray file = contents(path), journal = contents(path + "-journal");
    const DatabaseHandle read = openImmutable(path);
    Statement rows(read.get(), QStringLiteral("SELECT * FROM counterCode"));
    EXPECT_TRUE(rows.step());
    EXPECT_EQ(contents(path), file);
    EXPECT_EQ(contents(path + "-journal"), journal);
}

TEST_F(ImmutableFile, WhatCannotEvenBeLoadedIsNotSound) {
    EXPECT_EQ(structureFault(path), u"");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(100));
    ASSERT_EQ(file.write(QByteArray(1000, '\x7f')), 1000); // the tables' own table
    file.close();
    EXPECT_NE(structureFault(path), u"");
    EXPECT_NE(structureFault(folder.filePath("none.mdb")), u"");
}

} // namespace

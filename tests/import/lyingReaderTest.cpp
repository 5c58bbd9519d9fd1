// What comes from a reader is believed in nothing.
#include "import/readerProcess.h"
#include "support/printQt.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace {

constexpr int kSilence = 2000; // milliseconds

class LyingReader : public testing::Test {
protected:
    std::unique_ptr<ImportSource> source(const std::function<void(ReaderBounds&)>& change = {}) {
        const QString path = folder.filePath("file.mdb");
        std::ofstream(path.toStdString()) << "x";
        ReaderBounds bounds;
        bounds.program = QStringLiteral(SLOW_READER);
        bounds.silence = kSilence;
        if (change)
            change(bounds);
        return openInProcess(SourceKind::Mdb, path, {}, {}, bounds);
    }
    /// The text of the refusal of a table.
    static QString refusal(ImportSource& source, const char* table) {
        try {
            source.read(QString::fromUtf8(table));
        } catch (const ImportError& error) {
            return error.text();
        }
        return {};
    }
    /// Kilobytes that this process holds.
    static long memory() {
        std::ifstream status("/proc/self/status");
        for (std::string word; status >> word;)
            if (word == "VmRSS:") {
                status >> word;
                return std::stol(word);
            }
        return 0;
    }

    QTemporaryDir folder;
};

TEST_F(LyingReader, OneThatIsSlowButAliveIsWaitedFor) {
    const auto slow = source();
    int signs = 0;
    slow->signOfLife = [&signs] { ++signs; };
    const SourceRows rows = slow->read("slow");
    EXPECT_EQ(signs, 30);
    ASSERT_EQ(rows.rowCount(), 1);
    EXPECT_EQ(rows.columns, QStringList{"c"});
    EXPECT_EQ(rows.cell(0, 0), u"read");
    EXPECT_EQ(slow->read("dribbled").rowCount(), 1) << "no silence between two bytes is too long";
}

TEST_F(LyingReader, IsRefusedWhateverItSaysAndTheNextTableIsReadByANewOne) {
    const char* lies[] = {"cut in nothing",
                          "cut in a head",
                          "cut in rows",
                          "huge frame",
                          "huge columns",
                          "huge rows",
                          "negative length",
                          "lengths that overflow",
                          "short texts",
                          "more texts",
                          "no UTF-8",
                          "a torn sign",
                          "too many columns",
                          "a sign in two cells",
                          "no rows",
                          "too many rows",
                          "columns again",
                          "tables again",
                          "rows without columns",
                          "rows of no column",
                          "end without columns",
                          "unknown frame",
                          "garbage"};
    const auto liar = source();
    const long before = memory();
    QElapsedTimer clock;
    for (const char* lie : lies) {
        clock.start();
        EXPECT_EQ(refusal(*liar, lie), u"不是 Access 文件，或者文件已损坏。") << lie;
        EXPECT_LT(clock.elapsed(), kSilence) << lie << ": seen at once, not waited out";
        EXPECT_EQ(liar->read("honest").rowCount(), 1) << "after " << lie;
    }
    EXPECT_LT(memory() - before, 64 * 1024);
    std::printf("%zu lies told, each refused\n", std::size(lies));
}

TEST_F(LyingReader, SilenceIsWaitedForAsLongAsAllowedAlsoInTheMiddleOfAFrame) {
    const auto liar = source();
    for (const char* lie : {"silent", "cut in a frame"}) {
        QElapsedTimer clock;
        clock.start();
        EXPECT_FALSE(refusal(*liar, lie).isEmpty()) << lie;
        EXPECT_GE(clock.elapsed(), kSilence) << lie;
        EXPECT_LT(clock.elapsed(), 3 * kSilence) << lie;
    }
}

TEST_F(LyingReader, AnAnswerIsBoundedInTimeInBytesAndInCells) {
    const auto hasty = source([](ReaderBounds& bounds) { bounds.patience = 500; });
    EXPECT_EQ(refusal(*hasty, "endless alive"), u"读取时间太长，已停止。");
    const auto thrifty = source([](ReaderBounds& bounds) { bounds.mostBytes = 100'000; });
    EXPECT_EQ(refusal(*thrifty, "endless rows"), u"内容太多，不能读取。");
    const auto small = source([](ReaderBounds& bounds) {
        bounds.mostCells = 100'000;
        bounds.mostBytes = qint64(1) << 60; // nothing but the cells ends it in time
        bounds.patience = 5000;
    });
    EXPECT_EQ(refusal(*small, "endless nulls"), u"内容太多，不能读取。");
}

TEST_F(LyingReader, WhatItGivesAsAReasonIsShownShortAndInOneLine) {
    const QString reason = refusal(*source(), "long refusal");
    EXPECT_TRUE(reason.startsWith(u"<b>xxx"));
    EXPECT_LE(reason.size(), 200);
}

TEST_F(LyingReader, AStopIsHeardWhileItIsSilentOrTalksWithoutEnd) {
    const auto liar = source([](ReaderBounds& bounds) { bounds.silence = 600'000; });
    for (const char* lie : {"silent", "cut in a frame", "endless alive", "endless nulls"}) {
        int asked = 0;
        qint64 longest = 0;
        QElapsedTimer since;
        since.start();
        liar->shouldStop = [&] {
            longest = std::max(longest, since.restart());
            return ++asked == 5;
        };
        EXPECT_THROW(liar->read(QString::fromUtf8(lie)), ImportStopped) << lie;
        EXPECT_EQ(asked, 5) << lie;
        EXPECT_LT(longest, 1000) << lie; // 100 on a machine of its own
    }
    liar->shouldStop = nullptr;
    EXPECT_EQ(liar->read("honest").rowCount(), 1) << "the source is of use after a stop";
}

TEST_F(LyingReader, AProgramThatIsNotThereIsTold) {
    EXPECT_THROW(source([](ReaderBounds& bounds) { bounds.program = "/nowhere/reader"; }), ImportError);
}

} // namespace

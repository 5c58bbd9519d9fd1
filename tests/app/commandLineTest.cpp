#include "app/commandLine.h"
#include "support/printQt.h"

#include <gtest/gtest.h>

#include <QDir>

namespace {

TEST(CommandLineOf, NothingAsksForNothing) {
    const CommandLine line = readCommandLine({});
    EXPECT_FALSE(line.books || line.backup);
    EXPECT_EQ(line.fault, "");
}

TEST(CommandLineOf, OptionsStandInAnyOrderWithTheirValueBehindABlankOrAnEqualsSign) {
    for (const QStringList& words : {QStringList{"--books", "/a b", "--restore", "c.mdb"},
                                     QStringList{"--restore=c.mdb", "--books=/a b/"}}) {
        const CommandLine line = readCommandLine(words);
        EXPECT_EQ(line.fault, "");
        EXPECT_EQ(line.books.value_or(""), "/a b");
        EXPECT_EQ(line.backup.value_or(""), "c.mdb");
    }
    EXPECT_EQ(readCommandLine({"--restore", "a=b"}).backup.value_or(""), "a=b");
}

TEST(CommandLineOf, ARelativeFolderIsOneOfTheCurrentFolder) {
    EXPECT_EQ(readCommandLine({"--books", "shop/../other"}).books.value_or(""),
              QDir::current().filePath("other"));
    EXPECT_EQ(readCommandLine({"--books", "."}).books.value_or(""), QDir::currentPath());
}

TEST(CommandLineOf, WhatCannotBeUnderstoodIsNamedAndHelpPointedTo) {
    const struct {
        QStringList words;
        const char* said;
    } faults[] = {{{"--boks", "/a"}, "不认识的参数：--boks"},
                  {{"/a"}, "不认识的参数：/a"},
                  {{""}, "不认识的参数："},
                  {{"--bookshop=/a"}, "不认识的参数：--bookshop=/a"},
                  {{"--books", "/a", "more"}, "不认识的参数：more"},
                  {{"--books"}, "--books 后面要写文件夹"},
                  {{"--books="}, "--books 后面要写文件夹"},
                  {{"--books", ""}, "--books 后面要写文件夹"},
                  {{"--books", "--restore", "a"}, "--books 后面要写文件夹"},
                  {{"--restore"}, "--restore 后面要写备份文件"},
                  {{"--books", "/a", "--books=/b"}, "--books 只能写一次"}};
    for (const auto& each : faults) {
        const QString fault = readCommandLine(each.words).fault;
        EXPECT_TRUE(fault.startsWith(QString::fromUtf8(each.said))) << fault.toStdString();
        EXPECT_TRUE(fault.contains("--help"));
    }
}

TEST(CommandLineOf, AStartAnewKeepsTheBooksAndDropsTheBackupThatWasPutBack) {
    const CommandLine line = readCommandLine({"--books", "--", "--restore=old.mdb"});
    EXPECT_NE(line.fault, "");
    const CommandLine books = readCommandLine({"--books=-odd name", "--restore=old.mdb"});
    const QString folder = QDir::current().filePath("-odd name");
    EXPECT_EQ(argumentsAgain(books, {}), QStringList("--books=" + folder));
    EXPECT_EQ(argumentsAgain(books, "--odd.mdb"), (QStringList{"--books=" + folder, "--restore=--odd.mdb"}));
    const CommandLine again = readCommandLine(argumentsAgain(books, "--odd.mdb"));
    EXPECT_EQ(again.books.value_or(""), folder);
    EXPECT_EQ(again.backup.value_or(""), "--odd.mdb");
    EXPECT_EQ(argumentsAgain(readCommandLine({}), {}), QStringList());
}

TEST(CommandLineOf, HelpNamesEveryOptionAndTheDataFolder) {
    const QString help = commandLineHelp("/home/zhang/share/hengshanghui");
    for (const char* word : {"--books", "--restore", "--help", "--version", "/home/zhang/share/hengshanghui"})
        EXPECT_TRUE(help.contains(QString::fromUtf8(word))) << word;
}

} // namespace

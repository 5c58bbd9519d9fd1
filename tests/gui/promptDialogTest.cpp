// The dialogs behind the prompts: fonts, the printer, progress, and the language of what the toolkit says.
#include "controls/filePrompt.h"
#include "controls/fontPrompt.h"
#include "controls/longWork.h"
#include "controls/printerPrompt.h"
#include "controls/prompts.h"
#include "support/driver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <gtest/gtest.h>

#include <sys/inotify.h>
#include <unistd.h>

namespace {

QFont reportFont(const char* name, double size, bool bold) {
    QFont font(QString::fromUtf8(name));
    font.setPointSizeF(size);
    font.setBold(bold);
    return font;
}

class FontChoosing : public testing::Test {
protected:
    void open(const FontChoice& start) {
        dialog = std::make_unique<FontDialog>(QStringLiteral("标题字符"), start, nullptr);
        dialog->show();
        drive = std::make_unique<Driver>(*dialog);
    }
    QString chosen(const char* list) {
        return drive->find<QListWidget>(QString::fromUtf8(list))->currentItem()->text();
    }

    std::unique_ptr<FontDialog> dialog;
    std::unique_ptr<Driver> drive;
};

TEST_F(FontChoosing, StartsWithTheNameSizeBoldAndItalicItIsGiven) {
    FontChoice start{reportFont("黑体", 20, true)};
    open(start);
    EXPECT_EQ(chosen("fontName"), QStringLiteral("黑体"));
    EXPECT_EQ(chosen("fontStyle"), QStringLiteral("粗体"));
    EXPECT_EQ(drive->find<QComboBox>("fontSize")->currentText(), QStringLiteral("20"));
    start.font.setItalic(true);
    open(start);
    EXPECT_EQ(chosen("fontStyle"), QStringLiteral("粗斜体"));
}

TEST_F(FontChoosing, TheSubstituteOfThisMachineIsShownAsTheNameItStandsFor) {
    const QStringList names = fontNames();
    EXPECT_EQ(names.mid(0, 2), (QStringList{"宋体", "黑体"}));
    for (const char* name : {"宋体", "黑体"})
        EXPECT_FALSE(names.contains(QFontInfo(QFont(QString::fromUtf8(name))).family())) << name;
    EXPECT_GT(names.size(), 2) << "the other families are there too";
}

TEST_F(FontChoosing, WhatIsNotChangedStays) {
    FontChoice start{reportFont("宋体", 10.3, true), QColor(1, 2, 3)};
    start.font.setUnderline(true);
    open(start);
    EXPECT_EQ(dialog->choice().font, start.font);
    EXPECT_EQ(dialog->choice().colour, QColor(1, 2, 3));
    drive->clickItem("fontStyle", "斜体");
    start.font.setBold(false);
    start.font.setItalic(true);
    EXPECT_EQ(dialog->choice().font, start.font) << "name, size, effects and colour are left alone";
    EXPECT_EQ(dialog->choice().colour, QColor(1, 2, 3));
}

TEST_F(FontChoosing, EveryPartCanBeChosen) {
    open({reportFont("宋体", 10, false)});
    drive->clickItem("fontName", "黑体");
    drive->clickItem("fontStyle", "粗体");
    drive->pick("fontSize", "14");
    drive->click("strikethrough");
    drive->click("underline");
    const QFont font = dialog->choice().font;
    EXPECT_EQ(font.family(), QStringLiteral("黑体"));
    EXPECT_TRUE(font.bold() && font.strikeOut() && font.underline());
    EXPECT_EQ(font.pointSizeF(), 14);
    EXPECT_EQ(drive->find<QLabel>("sample")->font(), font) << "the sample shows it";
}

TEST_F(FontChoosing, ASizeThatIsNoneStaysAsItCame) {
    open({reportFont("宋体", 10, false)});
    for (const char* typed : {"", "0"}) {
        drive->find<QComboBox>("fontSize")->setCurrentText(QString::fromUtf8(typed));
        EXPECT_EQ(dialog->choice().font.pointSizeF(), 10) << typed;
    }
}

TEST_F(FontChoosing, EscapeCancels) {
    open({reportFont("宋体", 10, false)});
    drive->key("fontName", Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
}

TEST(PrinterSetup, OffersThePrintersAndLeavesAloneWhatIsNotChosen) {
    PrinterDialog dialog({"前台", "仓库"}, {"仓库", 0}, nullptr);
    dialog.show();
    Driver drive(dialog);
    EXPECT_EQ(drive.entries("printers"), (QStringList{"前台", "仓库"}));
    EXPECT_EQ(dialog.choice().name, QStringLiteral("仓库"));
    EXPECT_EQ(dialog.choice().orientation, 0) << "as the printer has it";
    drive.pick("printers", "前台");
    drive.click("landscape");
    EXPECT_EQ(dialog.choice().name, QStringLiteral("前台"));
    EXPECT_EQ(dialog.choice().orientation, 2);
    drive.click("portrait");
    EXPECT_EQ(dialog.choice().orientation, 1);
}

TEST(PrinterSetup, WithoutAPrinterTheNameStaysAndTheBoxSaysSo) {
    PrinterDialog dialog({}, {"旧的", 1}, nullptr);
    EXPECT_EQ(dialog.choice().name, QStringLiteral("旧的"));
    auto* box = dialog.findChild<QComboBox*>("printers");
    EXPECT_FALSE(box->isEnabled());
    EXPECT_EQ(box->placeholderText(), QStringLiteral("没有打印机：打印到 PDF 文件"));
}

QWidget* progressWindow() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == u"longWork" && window->isVisible())
            return window;
    return nullptr;
}

TEST(Progress, TheWindowComesUpWithTheFirstStepBehindHalfASecond) {
    QElapsedTimer since;
    since.start();
    LongWork work(QStringLiteral("正在打印…"), 1000000);
    int done = 0;
    while (!progressWindow() && since.elapsed() < 20000)
        EXPECT_TRUE(work.step(++done));
    EXPECT_GE(since.elapsed(), 500) << "however much is left to do";
    ASSERT_NE(progressWindow(), nullptr);
    EXPECT_EQ(progressWindow()->windowModality(), Qt::ApplicationModal);
    Driver(*progressWindow()).click("stop");
    EXPECT_FALSE(work.step(++done)) << "the user wants it to stop";
}

TEST(Progress, TheWindowGoesWithTheWork) {
    QElapsedTimer since;
    since.start();
    {
        LongWork work(QStringLiteral("正在打印…"), 0);
        while (!progressWindow() && since.elapsed() < 20000)
            work.stepOf(1, 10);
        EXPECT_FALSE(progressWindow()->findChild<QWidget*>("stop")->isVisible());
    }
    EXPECT_EQ(progressWindow(), nullptr);
}

/// Words in Latin letters that a user would see, but for those that are no words of a language.
QStringList latinWords(const QString& shown) {
    static const QRegularExpression words(QStringLiteral("[A-Za-z]{3,}"));
    static const QStringList names{"HTML", "CSV", "PDF", "Ctrl", "Shift", "Alt", "Delete", "Del"};
    QStringList found;
    for (auto match = words.globalMatch(shown); match.hasNext();) {
        const QString word = match.next().captured();
        if (!names.contains(word))
            found << word;
    }
    return found;
}

TEST(Language, TheMenuOfABoxIsChinese) {
    QLineEdit box;
    box.setText("x");
    const std::unique_ptr<QMenu> menu(box.createStandardContextMenu());
    ASSERT_GT(menu->actions().size(), 3);
    for (const QAction* entry : menu->actions())
        EXPECT_EQ(latinWords(entry->text()), QStringList()) << entry->text().toStdString();
}

TEST(Language, FileAndColourDialogsAreTheToolkitsOwnAndChinese) {
    EXPECT_TRUE(QApplication::testAttribute(Qt::AA_DontUseNativeDialogs));
    FileDialog files(QStringLiteral("导出 PDF"), QStringLiteral("PDF (*.pdf)"), nullptr);
    QColorDialog colours;
    for (QDialog* dialog : {static_cast<QDialog*>(&files), static_cast<QDialog*>(&colours)}) {
        dialog->show();
        int texts = 0;
        for (const QLabel* label : dialog->findChildren<QLabel*>()) {
            EXPECT_EQ(latinWords(label->text()), QStringList()) << label->text().toStdString();
            ++texts;
        }
        for (const QAbstractButton* button : dialog->findChildren<QAbstractButton*>()) {
            EXPECT_EQ(latinWords(button->text()), QStringList()) << button->text().toStdString();
            EXPECT_EQ(latinWords(button->toolTip()), QStringList()) << button->toolTip().toStdString();
            ++texts;
        }
        EXPECT_GT(texts, 5);
    }
}

TEST(Language, WhatTheFileDialogSaysOfFilesIsChinese) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir("a"));
    QFile file(folder.filePath("b.pdf"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("12345") == 5);
    file.close();
    FileDialog dialog(QStringLiteral("导出 PDF"), QStringLiteral("PDF (*.pdf)"), nullptr);
    dialog.setViewMode(QFileDialog::Detail);
    dialog.setDirectory(folder.path());
    dialog.show();
    auto* list = dialog.findChild<QTreeView*>();
    ASSERT_NE(list, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 2; }));
    const auto cell = [list](int row, int column) {
        return list->model()->index(row, column, list->rootIndex()).data().toString();
    };
    EXPECT_EQ(cell(0, 0) + u'|' + cell(0, 1) + u'|' + cell(0, 2), QStringLiteral("a||文件夹"));
    EXPECT_EQ(cell(1, 0) + u'|' + cell(1, 1) + u'|' + cell(1, 2), QStringLiteral("b.pdf|5 字节|pdf 文件"));
    for (int row = 0; row < 2; ++row)
        EXPECT_EQ(latinWords(cell(row, 3)), QStringList()) << cell(row, 3).toStdString();
    for (int column = 0; column < 4; ++column)
        EXPECT_EQ(latinWords(list->model()->headerData(column, Qt::Horizontal).toString()), QStringList());
}

TEST(FileChoice, NoFileOfTheListIsOpened) {
    const QTemporaryDir folder;
    QFile file(folder.filePath("books.of-an-unknown-kind"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("12345") == 5);
    file.close();
    const int watch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_GE(inotify_add_watch(watch, QFile::encodeName(file.fileName()), IN_OPEN), 0);
    FileDialog dialog("备份", "所有文件 (*.*)", nullptr);
    dialog.setViewMode(QFileDialog::Detail);
    dialog.setDirectory(folder.path());
    dialog.show();
    auto* list = dialog.findChild<QTreeView*>("treeView");
    ASSERT_NE(list, nullptr);
    const auto size = [list] { return list->model()->index(0, 1, list->rootIndex()).data().toString(); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return size() == QStringLiteral("5 字节"); })) << size().toStdString();
    inotify_event event{};
    EXPECT_LT(read(watch, &event, sizeof event), 0) << "it was opened";
    close(watch);
}

/// Chooses a filter in the dialog that asks for a file, types a name and presses Enter.
void nameInDialog(const QString& filter, const QString& name) {
    QTimer::singleShot(0, qApp, [filter, name] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return nameInDialog(filter, name);
        Driver drive(*dialog);
        drive.pick("fileTypeCombo", filter);
        // Not typed: names that begin like a path are offered in a list, which takes the next Enter.
        drive.find<QLineEdit>("fileNameEdit")->setText(name);
        drive.key("fileNameEdit", Qt::Key_Return);
        EXPECT_FALSE(dialog->isVisible()) << "the dialog is still open";
        dialog->close();
    });
}

TEST(FileChoice, ANameWithoutAnEndingGetsThatOfTheChosenKind) {
    const QTemporaryDir folder;
    const QString proposal = "图.png";
    const QString typed = folder.filePath("a");
    const QString kinds = QStringLiteral("PNG 图片 (*.png);;SVG 图片 (*.svg);;所有文件 (*.*)");
    WindowPrompts prompts;
    for (const auto& [kind, ending] : {std::pair("SVG 图片 (*.svg)", "svg"), {"PNG 图片 (*.png)", "png"}}) {
        nameInDialog(QString::fromUtf8(kind), typed);
        EXPECT_EQ(prompts.saveFile("保存图片", proposal, kinds), folder.filePath("a.") + ending) << kind;
    }
    nameInDialog("所有文件 (*.*)", typed);
    EXPECT_EQ(prompts.saveFile("保存图片", proposal, kinds), folder.filePath("a.png"));
    nameInDialog("SVG 图片 (*.svg)", typed + ".txt");
    EXPECT_EQ(prompts.saveFile("保存图片", proposal, kinds), folder.filePath("a.txt"));
}

/// Notes where the dialog that asks for a file begins and leaves it, or types a name.
void lookIntoDialog(QString& begins, const QString& name) {
    QTimer::singleShot(0, qApp, [&begins, name] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return lookIntoDialog(begins, name);
        begins = dialog->directory().canonicalPath();
        Driver drive(*dialog);
        if (name.isEmpty())
            return dialog->reject();
        // Not typed: names that begin like a path are offered in a list, which takes the next Enter.
        drive.find<QLineEdit>("fileNameEdit")->setText(name);
        drive.key("fileNameEdit", Qt::Key_Return);
        dialog->close();
    });
}

TEST(FileChoice, BeginsInTheDocumentsAndThenWhereTheLastFileOfThisRunWent) {
    const QTemporaryDir home;
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", home.path().toUtf8());
    QString begins;
    WindowPrompts prompts;
    const auto save = [&](const QString& name) {
        lookIntoDialog(begins, name);
        return prompts.saveFile("导出 CSV", "导出.csv", "CSV (*.csv)");
    };
    save({});
    EXPECT_EQ(begins, QDir(home.path()).canonicalPath()) << "who keeps no documents";
    ASSERT_TRUE(QDir(home.path()).mkdir("Documents") && QDir(home.path()).mkdir("月底"));
    save({});
    EXPECT_EQ(begins, QDir(home.filePath("Documents")).canonicalPath());
    EXPECT_EQ(save(home.filePath("月底/a.csv")), home.filePath("月底/a.csv"));
    save({});
    EXPECT_EQ(begins, QDir(home.filePath("月底")).canonicalPath());
    lookIntoDialog(begins, {});
    prompts.saveFile("导出 PDF", "清单.pdf", "PDF (*.pdf)");
    EXPECT_EQ(begins, QDir(home.filePath("月底")).canonicalPath()) << "whatever is saved";
    ASSERT_TRUE(QDir(home.filePath("月底")).removeRecursively());
    save({});
    EXPECT_EQ(begins, QDir(home.filePath("Documents")).canonicalPath()) << "a folder that is gone";
    qputenv("HOME", before);
}

} // namespace

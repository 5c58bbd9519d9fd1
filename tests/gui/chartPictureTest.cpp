// The menu of the bar chart: its picture in the clipboard and in files.
#include "support/chartWindow.h"
#include "support/smallDisk.h"

#include <QClipboard>
#include <QDir>
#include <QXmlStreamReader>

namespace {

TEST_F(Chart, TheMenuCopiesThePictureInTwiceItsSize) {
    show(kThree);
    for (const auto reason : {QContextMenuEvent::Mouse, QContextMenuEvent::Keyboard}) {
        QApplication::clipboard()->clear();
        chooseFromMenu("复制图片", reason);
        EXPECT_EQ(QApplication::clipboard()->image().size(), chart.viewport()->size() * 2);
    }
    EXPECT_EQ(menuTexts.mid(0, 2), (QStringList{"复制图片", "保存图片…"}));
}

TEST_F(Chart, TheMenuKeepsTheChosenBarAndThePictureDoesNotShowIt) {
    show(kThree);
    const QImage plain = chart.picture();
    chart.setFocus();
    key(Qt::Key_Home);
    const QImage marked = grabbed();
    chooseFromMenu("复制图片", QContextMenuEvent::Keyboard);
    EXPECT_EQ(QApplication::clipboard()->image().convertToFormat(plain.format()), plain);
    EXPECT_EQ(chart.chosen(), 0);
    window.activateWindow(); // no one else does it where there is no desktop
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_EQ(grabbed(), marked);
}

TEST_F(Chart, ASavedPngIsDrawnInTwiceItsSize) {
    show(kThree);
    save(folder.filePath("图.png"));
    const QImage saved(folder.filePath("图.png"));
    ASSERT_EQ(saved.size(), chart.viewport()->size() * 2);
    EXPECT_EQ(saved.dotsPerMeterX(), qRound(chart.logicalDpiX() * 2 / 0.0254));
    // Drawn anew: in a picture blown up each square of four dots has one colour.
    int finer = 0;
    for (int y = 0; y < saved.height(); y += 2)
        for (int x = 0; x < saved.width(); x += 2)
            finer += saved.pixel(x, y) != saved.pixel(x + 1, y) || saved.pixel(x, y) != saved.pixel(x, y + 1);
    EXPECT_GT(finer, 200);
}

TEST_F(Chart, ASavedSvgHoldsTheTextsAsText) {
    show(kThree);
    save(folder.filePath("图.SVG"));
    QFile file(folder.filePath("图.SVG"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&file);
    QStringList found;
    QString description;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == u"text")
            found << reader.readElementText().trimmed();
        else if (reader.isStartElement() && reader.name() == u"desc")
            description = reader.readElementText();
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    for (const char* text : {"2004-1", "2004-3", "时间", "营业额", "200"})
        EXPECT_TRUE(found.contains(QString::fromUtf8(text)))
            << text << " in " << found.join(u'|').toStdString();
    EXPECT_EQ(description, chart.accessibleDescription());
}

TEST_F(Chart, AnotherEndingGetsThatOfPngAndNoFileIsReplacedUnasked) {
    show(kThree);
    save(folder.filePath("2004年.图"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"2004年.图.png"});
    QFile stands(folder.filePath("a.png"));
    ASSERT_TRUE(stands.open(QIODevice::WriteOnly));
    stands.close();
    const QString question = QStringLiteral("文件已存在，要替换吗？\n%1").arg(stands.fileName());
    prompts.expectConfirm(question, false);
    save(folder.filePath("a"));
    EXPECT_EQ(stands.size(), 0);
    prompts.expectConfirm(question, true);
    save(folder.filePath("a"));
    EXPECT_GT(stands.size(), 0);
}

TEST_F(Chart, ASaveThatIsCancelledWritesNothing) {
    show(kThree);
    prompts.saveName = std::nullopt;
    chooseFromMenu("保存图片…", QContextMenuEvent::Keyboard);
    EXPECT_EQ(prompts.saveQuestions, 1);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList());
}

TEST_F(Chart, AFileThatCannotBeWrittenIsToldAndNothingIsLeft) {
    show(kThree);
    prompts.expectMessage("文件不能写入：/nowhere/at/all.png");
    save("/nowhere/at/all.png");
    // A short file is written at the end only.
    for (const auto& [name, size] :
         {std::pair("图.png", QSize(800, 600)), {"图.svg", QSize(800, 600)}, {"图.png", QSize(320, 240)}}) {
        window.resize(size);
        const QString path = folder.filePath(QString::fromUtf8(name));
        prompts.expectMessage(QStringLiteral("文件不能写入：%1").arg(path));
        const FileSizeLimit full(1000);
        save(path);
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList());
}

} // namespace

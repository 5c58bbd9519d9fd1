#include "controls/barChart.h"
#include "controls/dataGrid.h"
#include "controls/exportPrompt.h"
#include "data/ownFiles.h"
#include "support/contextMenu.h"
#include "support/pdfReader.h"
#include "support/reportWindow.h"
#include "support/smallDisk.h"

#include <unistd.h>

namespace {

/// The stock-in history with its report, and every way out into a file that the user names.
class Exports : public ReportWindow {
protected:
    /// One export under a name, as the user comes to it.
    using Export = std::function<void()>;

    void openAll() {
        openHistory(81);
        auto* view = main->host().active();
        grid = view->findChild<DataGrid*>();
        ASSERT_NE(grid, nullptr);
        chart = std::make_unique<BarChart>(BarChart::Words{"MSChart1", "营业额统计图", "时间", "营业额"},
                                           prompts);
        chart->setBars({{"2004-1", 120}, {"2004-2", 80}});
        chart->resize(800, 600);
    }
    std::vector<std::pair<const char*, Export>> exports() {
        return {{"CSV", [this] { chooseInMenuOf(*grid->viewport(), "导出 CSV…"); }},
                {"XLSX", [this] { chooseInMenuOf(*grid->viewport(), "导出 XLSX…"); }},
                {"CSV of the report", [this] { report->choose("exportCsv"); }},
                {"XLSX of the report", [this] { report->choose("exportXlsx"); }},
                {"picture", [this] { chooseInMenuOf(*chart->viewport(), "保存图片…"); }},
                {"PDF", [this] { report->choose("exportPdf"); }},
                {"print", [this] { report->click("Command2"); }}};
    }
    /// Every spelling of the open database and of what belongs to it, links of both kinds among them.
    QStringList ownNames() {
        const QString link = folder.filePath("link.png");
        const QString hard = QFileInfo(books.path()).absolutePath() + "/hard.png";
        EXPECT_TRUE(QFile::link(books.path() + "-journal", link));
        EXPECT_EQ(::link(QFile::encodeName(books.path()), QFile::encodeName(hard)), 0);
        QStringList names{link, hard, QDir::current().relativeFilePath(books.path())};
        for (const char* ending : {"", "-journal", "-wal", "-shm", ".lock"})
            names << books.path() + ending;
        return names;
    }
    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }
    static void write(const QString& path, const char* bytes) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == qint64(qstrlen(bytes)));
    }

    DataGrid* grid = nullptr;
    std::unique_ptr<BarChart> chart;
};

TEST_F(Exports, NoneTakesTheNameOfTheOpenDatabaseOrOfItsFiles) {
    openAll();
    const QStringList names = ownNames();
    const QStringList before = QFileInfo(books.path()).dir().entryList(QDir::Files);
    for (const QString& name : names)
        for (const auto& [what, run] : exports()) {
            SCOPED_TRACE(what);
            const int asked = prompts.saveQuestions;
            prompts.saveName = name;
            prompts.expectMessage("不能写入 " + name + "：这是正在使用的数据文件。请另选一个文件名。");
            prompts.whenShown([this] { prompts.saveName.reset(); });
            run();
            EXPECT_TRUE(prompts.done()) << name.toStdString();
            EXPECT_EQ(prompts.saveQuestions, asked + 2) << "it asks for another name";
        }
    EXPECT_EQ(QFileInfo(books.path()).dir().entryList(QDir::Files), before);
    EXPECT_TRUE(bytesOf(books.path()).startsWith("SQLite format 3"));
}

TEST_F(Exports, AfterARefusalTheNextNameIsTaken) {
    openAll();
    prompts.saveName = books.path();
    prompts.expectMessage(ownFileRefusal(books.path()));
    prompts.whenShown([this] { prompts.saveName = folder.filePath("a.csv"); });
    chooseInMenuOf(*grid->viewport(), "导出 CSV…");
    EXPECT_TRUE(QFile::exists(folder.filePath("a.csv")));
}

TEST_F(Exports, ThePicturesOwnEndingLeadsToNoOwnFile) {
    openAll();
    ASSERT_TRUE(QFile::link(books.path(), folder.filePath("图.png")));
    prompts.saveName = folder.filePath("图");
    prompts.expectMessage(ownFileRefusal(folder.filePath("图.png")));
    chooseInMenuOf(*chart->viewport(), "保存图片…");
    EXPECT_TRUE(bytesOf(books.path()).startsWith("SQLite format 3"));
}

TEST_F(Exports, TheFolderOfTheBackupsIsFree) {
    openAll();
    const QDir backups(QFileInfo(books.path()).dir().filePath("备份"));
    ASSERT_TRUE(backups.mkpath("."));
    for (const auto& [what, run] : exports()) {
        prompts.saveName = backups.filePath(QString::fromUtf8(what) + ".png");
        run();
        EXPECT_TRUE(QFile::exists(*prompts.saveName) || qstrcmp(what, "print") == 0) << what;
    }
    form->close();
    EXPECT_TRUE(QFile::exists(backups.filePath("print.png")));
}

TEST_F(Exports, ALinkAsTargetStaysALinkToTheNewFile) {
    openAll();
    for (const auto& [what, run] : exports()) {
        const QString file = folder.filePath(QString::fromUtf8(what) + ".old");
        const QString link = folder.filePath(QString::fromUtf8(what) + ".png");
        write(file, "before");
        ASSERT_TRUE(QFile::link(file, link));
        prompts.saveName = link;
        run();
    }
    form->close();
    for (const auto& [what, run] : exports()) {
        EXPECT_TRUE(QFileInfo(folder.filePath(QString::fromUtf8(what) + ".png")).isSymLink()) << what;
        EXPECT_NE(bytesOf(folder.filePath(QString::fromUtf8(what) + ".old")), "before") << what;
    }
}

TEST_F(Exports, AStoppedOneSaysThatNothingWasWritten) {
    openAll();
    const ExportKind stopped{
        u"导出 CSV", u"csv", u"CSV (*.csv)",
        [](const QString&, const ExportTable&, const ExportSteps&) { return ExportEnd::Stopped; }};
    prompts.saveName = folder.filePath("a.csv");
    askExport(grid, prompts, kCsvExport, grid->exportTable());
    EXPECT_EQ(status(), "已导出 CSV，81 行：" + folder.filePath("a.csv"));
    prompts.saveName = folder.filePath("b.csv");
    askExport(grid, prompts, stopped, grid->exportTable());
    EXPECT_EQ(status(), "导出停止了，没有写入：" + folder.filePath("b.csv"));
}

TEST_F(Exports, OnAFullDiskTheOldFileStaysAndNothingIsLeftBesideIt) {
    openAll();
    for (const auto& [what, run] : exports()) {
        SCOPED_TRACE(what);
        const QString path = folder.filePath(QString::fromUtf8(what) + ".png");
        write(path, "before");
        prompts.saveName = path;
        const bool pdf = qstrcmp(what, "PDF") == 0;
        prompts.expectMessage(qstrcmp(what, "print") == 0
                                  ? QStringLiteral("打印失败！打印的内容没有全部写入。")
                                  : "文件不能写入：" + path + (pdf ? "\n打印的内容没有全部写入。" : ""));
        {
            const FileSizeLimit full(500);
            run();
        }
        EXPECT_EQ(bytesOf(path), "before");
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
              qsizetype(exports().size()));
}

} // namespace

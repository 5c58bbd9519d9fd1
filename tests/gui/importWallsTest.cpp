#include "import/readerProcess.h"
#include "shell/manualFm1.h"
#include "support/importShop.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

QByteArray contentsOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The reader programs that this one has started.
std::vector<pid_t> readers() {
    std::vector<pid_t> found;
    const QDir threads(QStringLiteral("/proc/self/task"));
    for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        for (const QByteArray& child :
             contentsOf(threads.filePath(thread + "/children")).simplified().split(' '))
            if (contentsOf(QStringLiteral("/proc/%1/comm").arg(QString::fromLatin1(child)))
                    .startsWith("hengshanghui"))
                found.push_back(pid_t(child.toInt()));
    return found;
}

/// Whether another process meets a lock of this one on a file.
bool isLockedForOthers(const QString& path) {
    const pid_t child = fork();
    if (child == 0) {
        struct flock lock {};
        lock.l_type = F_WRLCK;
        const int file = ::open(QFile::encodeName(path).constData(), O_RDWR);
        std::_Exit(fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK ? 1 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status) == 1;
}

class ImportWalls : public ImportShop {
protected:
    QString hint() { return form->text("importHint"); }
    /// Presses the button of the progress window as soon as that is there.
    static void stopWhenItShows() {
        auto* timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, timer, [timer] {
            for (QWidget* window : QApplication::topLevelWidgets())
                if (window->objectName() == u"longWork" && window->isVisible()) {
                    timer->deleteLater();
                    window->findChild<QPushButton*>("stop")->click();
                    return;
                }
        });
        timer->start(0);
    }
};

TEST_F(ImportWalls, ASilentReaderCanBeStoppedAndTheTableTakenAgain) {
    const SampleFile sample = sampleFile("customers.txt");
    open(1, sample);
    ASSERT_EQ(readers().size(), 1U);
    ASSERT_EQ(kill(readers().front(), SIGSTOP), 0);
    stopWhenItShows();
    QElapsedTimer clock;
    clock.start();
    take("customers");
    EXPECT_LT(clock.elapsed(), 7000) << "not the end of its time";
    EXPECT_EQ(hint(), u"已停止读取。");
    EXPECT_TRUE(form->entries("List1").isEmpty());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(readers().empty());
    take("customers");
    EXPECT_EQ(hint(), u"");
    EXPECT_FALSE(form->entries("List1").isEmpty());
    pairAsExpected(sample);
    run();
    prompts.expectMessage("数据导入成功！", "OK");
    finishRun();
    EXPECT_EQ(rows("clientTable"), u"120");
    EXPECT_TRUE(readers().empty()) << "it goes with its window";
}

TEST_F(ImportWalls, TheOpenBooksAreNeverASourceByAnyNameAndStayLocked) {
    books.addClient("7");
    start();
    const QDir folder = QFileInfo(books.path()).dir();
    const QByteArray link = QFile::encodeName(folder.filePath("linked.txt"));
    ASSERT_EQ(::link(QFile::encodeName(books.path()).constData(), link.constData()), 0);
    const QByteArray soft = QFile::encodeName(folder.filePath("soft.mdb"));
    ASSERT_EQ(::symlink(QFile::encodeName(books.path()).constData(), soft.constData()), 0);
    session().cn.execute("BEGIN IMMEDIATE");
    for (const auto& [name, kind] : {std::pair(link, SourceKind::Txt), std::pair(soft, SourceKind::Mdb)}) {
        const QString path = QFile::decodeName(name);
        open(1, path, kind);
        EXPECT_EQ(hint(), QStringLiteral("这是本系统正在使用的文件，不能导入：%1").arg(path));
        EXPECT_TRUE(form->entries("List5").isEmpty());
        EXPECT_TRUE(readers().empty());
        EXPECT_TRUE(isLockedForOthers(books.path())) << path.toStdString();
    }
    session().cn.execute("ROLLBACK");
    window("FileInputFm2")->close();
}

TEST_F(ImportWalls, APipeIsRefusedInWordsAndNotWaitedFor) {
    start();
    const QString path = QFileInfo(books.path()).dir().filePath("pipe.txt");
    ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    open(1, path, SourceKind::Txt);
    EXPECT_EQ(hint(), QStringLiteral("不是普通的文件，不能读取：%1").arg(path));
    window("FileInputFm2")->close();
}

TEST_F(ImportWalls, TheHelpWindowSaysWhereTheSystemKnowsNoWalls) {
    start();
    drive->choose("help");
    EXPECT_EQ(window("manualFm1")->findChild<QLabel*>("warning") == nullptr, wallsState());
    window("manualFm1")->close();
    const manualFm1 warned("", {}, "", "没有隔离");
    EXPECT_EQ(warned.findChild<QLabel*>("warning")->text(), u"没有隔离");
}

} // namespace

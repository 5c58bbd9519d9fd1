#include "app/startUp.h"

#include "app/errorReport.h"
#include "app/startJobs.h"
#include "controls/prompts.h"
#include "data/books.h"
#include "shell/MDIForm1.h"

#include <QFileInfo>

void wireBooks(MDIForm1& main, StartJobs& jobs, Prompts& prompts,
               std::function<void(const QString& text)>& onActionEnded) {
    Connection& books = main.host().session().cn;
    books.askAgain = [&prompts] {
        return prompts.ask(QStringLiteral("数据文件正被另一个程序使用（已锁定），这一步还没有记入。\n"
                                          "再试一次吗？选“否”就放弃这一步，一切照旧。"),
                           QStringLiteral("衡商汇"));
    };
    onActionEnded = [&books, &prompts](const QString& text) {
        books.tellTakenBack();
        if (!text.isEmpty())
            prompts.tell(text, QStringLiteral("衡商汇"));
    };
    jobs.onDamage = [path = books.path()](const QString& fault) {
        if (reportStands())
            return;
        endWithReport(QStringLiteral("数据库 %1 已损坏，程序必须结束，没有写入任何内容。\n检查的结果：%2")
                          .arg(path, fault),
                      path, WayBack::Restore);
    };
    jobs.onNoBackup = [&main](const QString& fault) { main.host().say({fault}); };
    jobs.onRecounted = [&main](int changed) { tellRecounted(main, changed); };
    jobs.onNotRecounted = [&main](const QString& why) { tellNotRecounted(main, why); };
}

void startShop(MDIForm1& main) {
    openBooks(main.host().session());
    main.host().show(QStringLiteral("dataInputFm1"));
}

void recountBehind(MDIForm1& main, StartJobs& jobs) {
    main.host().beforeFigures = [&jobs] { jobs.finish(); };
    jobs.startRecount();
}

void tellRecounted(MDIForm1& main, int changed) {
    if (changed == 0)
        return;
    if (View* view = main.host().active())
        view->totalsPutRight();
    main.host().say(
        {QStringLiteral("核对客户累计：%1 位客户的累计和购物记录不符，已经按购物记录改正。").arg(changed)});
}

void tellNotRecounted(MDIForm1& main, const QString& why) {
    main.host().say({QStringLiteral("客户累计和购物记录不符，这次没有改正。") + why});
}

QString unknownJournalQuestion(const QString& databasePath) {
    return QStringLiteral("数据文件旁边有一个日志文件 %1，是别的程序写的，认不出是不是这个数据文件的。\n"
                          "不用这个日志（改名放在一边），照样打开吗？")
        .arg(QFileInfo(databasePath + QStringLiteral("-journal")).fileName());
}

QString unknownJournalLoss() {
    return QStringLiteral("刚换上别的数据文件或备份时，日志多半属于原来的文件，按“确定”。\n"
                          "如果别的程序正在修改这个数据文件时中断，文件可能只改了一半：按“取消”，"
                          "用那个程序再打开一次数据文件，它会自己改回来；或者恢复备份。");
}

QString unknownJournalKept(const QString& databasePath) {
    return QStringLiteral("没有打开数据库 %1\n旁边的日志文件没有动。用写它的那个程序再打开一次数据文件，"
                          "或者恢复备份。")
        .arg(databasePath);
}

QString strayNote(const QStringList& names) {
    QString text = QStringLiteral(
        "数据文件旁边有不属于它的日志文件（多半是换上备份以前的文件留下的，也可能是别的程序没有写完的），"
        "没有使用，已经改名放在一边：\n");
    for (const QString& name : names)
        text += QFileInfo(name).fileName() + u'\n';
    return text.trimmed();
}

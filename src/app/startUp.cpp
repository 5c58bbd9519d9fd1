#include "app/startUp.h"

#include "data/books.h"
#include "shell/MDIForm1.h"

#include <QFileInfo>
#include <QStatusBar>

void startShop(MDIForm1& main) {
    Session& session = main.host().session();
    openBooks(session);
    const int changed = recountTotals(session, [&main](int done, int total) {
        main.showProgress(QStringLiteral("正在核对客户累计"), done, total);
    });
    main.endProgress();
    main.host().show(QStringLiteral("dataInputFm1"));
    if (changed > 0)
        main.statusBar()->showMessage(
            QStringLiteral("核对客户累计：%1 位客户的累计和购物记录不符，已经按购物记录改正。").arg(changed));
}

QString databaseFileName() {
    return QStringLiteral("VelmorClientBank.mdb");
}

QString strayNote(const QStringList& names) {
    QString text = QStringLiteral("数据文件旁边有不属于它的日志文件（多半是换上备份以前的文件留下的），"
                                  "没有使用，已经改名放在一边：\n");
    for (const QString& name : names)
        text += QFileInfo(name).fileName() + u'\n';
    return text.trimmed();
}

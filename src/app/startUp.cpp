#include "app/startUp.h"

#include "data/books.h"
#include "shell/MDIForm1.h"

#include <QFileInfo>

DatabaseLock::DatabaseLock(const QString& databasePath)
    : m_lock(QFileInfo(databasePath).canonicalFilePath() + QStringLiteral(".lock")) {
    // Only a lock whose process is gone is stale, however old it is.
    m_lock.setStaleLockTime(0);
    if (m_lock.tryLock(100))
        return;
    if (m_lock.error() == QLockFile::LockFailedError)
        m_fault = QStringLiteral("不能打开数据库 %1\n衡商汇已经在使用这个文件，不能同时打开两次。")
                      .arg(databasePath);
    else
        m_fault = QStringLiteral("不能打开数据库 %1\n所在的文件夹不能写入锁文件。").arg(databasePath);
}

void startShop(MDIForm1& main) {
    Session& session = main.host().session();
    openBooks(session);
    recountTotals(session, [&main](int done, int total) {
        main.showProgress(QStringLiteral("正在核对客户累计"), done, total);
    });
    main.endProgress();
    main.host().show(QStringLiteral("dataInputFm1"));
}

QString databaseFileName() {
    return QStringLiteral("VelmorClientBank.mdb");
}

#include "app/oldBooks.h"

#include "app/startUp.h"
#include "controls/longWork.h"
#include "controls/prompts.h"
#include "import/importSource.h"
#include "maintenance/takeOver.h"
#include "recordset/error.h"

#include <QFileInfo>

namespace {

/// Runs the conversion with its progress; gives what went wrong, "" if nothing did.
QString convert(const QString& path, Prompts& prompts) {
    try {
        QString kept;
        {
            LongWork work(QStringLiteral("正在转换旧数据库…"), 0);
            kept = takeOver(path, [&work](int done, int total) { work.stepOf(done, total); });
        }
        prompts.tell(QStringLiteral("转换完成。旧文件保留为：%1").arg(QFileInfo(kept).fileName()),
                     QStringLiteral("衡商汇"));
        return {};
    } catch (const ImportError& error) {
        return QStringLiteral("不能接收旧数据库 %1\n%2").arg(path, error.text());
    } catch (const RuntimeError& error) {
        return QStringLiteral("不能接收旧数据库 %1\n%2").arg(path, error.text());
    }
}

} // namespace

OldBooksResult meetOldBooks(const QString& databasePath, Prompts& prompts) {
    if (!isJetFile(databasePath))
        return {};
    DatabaseLock lock(databasePath);
    if (!lock.fault().isEmpty())
        return {OldBooks::Refused, lock.fault()};
    if (const QString fault = takeOverFault(databasePath); !fault.isEmpty())
        return {OldBooks::Refused, fault};
    if (!prompts.confirm(QStringLiteral("%1\n是旧版衡商汇的数据文件。要转换成新的格式吗？\n"
                                        "全部数据都会转过来，旧文件用另一个名字保留。")
                             .arg(databasePath),
                         QStringLiteral("衡商汇")))
        return {OldBooks::Declined, {}};
    const QString fault = convert(databasePath, prompts);
    return {fault.isEmpty() ? OldBooks::TakenOver : OldBooks::Refused, fault};
}

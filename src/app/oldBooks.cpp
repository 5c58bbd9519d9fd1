#include "app/oldBooks.h"

#include "controls/longWork.h"
#include "controls/prompts.h"
#include "import/importSource.h"
#include "maintenance/takeOver.h"
#include "recordset/error.h"

#include <QFileInfo>

namespace {

constexpr qsizetype kMostTold = 20;

/// Says which values are only in the old file now.
void tellLost(const QStringList& lost, Prompts& prompts) {
    if (lost.isEmpty())
        return;
    QString text =
        QStringLiteral("旧数据库里有 %1 处内容不能照原样保存，原来的内容只在旧文件里：\n").arg(lost.size());
    text += lost.mid(0, kMostTold).join(u'\n');
    if (lost.size() > kMostTold)
        text += QStringLiteral("\n……以及另外 %1 处").arg(lost.size() - kMostTold);
    prompts.tell(text, QStringLiteral("衡商汇"));
}

/// Runs the conversion with its progress; gives what went wrong, "" if nothing did.
QString convert(const QString& path, Prompts& prompts, BooksLock* lock) {
    try {
        TakenOver result;
        {
            LongWork work(QStringLiteral("正在转换旧数据库…"), 0);
            result = takeOver(
                path, [&work](int done, int total) { work.stepOf(done, total); }, lock);
        }
        tellLost(result.lost, prompts);
        prompts.tell(QStringLiteral("转换完成。旧文件保留为：%1").arg(QFileInfo(result.kept).fileName()),
                     QStringLiteral("衡商汇"));
        return {};
    } catch (const ImportError& error) {
        return takeOverRefusal(path, error.text());
    } catch (const RuntimeError& error) {
        return takeOverRefusal(path, error.text());
    } catch (const std::exception& error) { // the disk is full, mostly
        return takeOverRefusal(path, QString::fromUtf8(error.what()));
    }
}

} // namespace

OldBooksResult meetOldBooks(const QString& databasePath, Prompts& prompts, BooksLock* lock) {
    if (!isJetFile(databasePath))
        return {};
    if (const QString fault = takeOverFault(databasePath); !fault.isEmpty())
        return {OldBooks::Refused, fault};
    if (!prompts.confirm(QStringLiteral("%1\n是旧版衡商汇的数据文件。要转换成新的格式吗？\n"
                                        "全部数据都会转过来，旧文件用另一个名字保留。")
                             .arg(databasePath),
                         QStringLiteral("衡商汇")))
        return {OldBooks::Declined, {}};
    const QString fault = convert(databasePath, prompts, lock);
    return {fault.isEmpty() ? OldBooks::TakenOver : OldBooks::Refused, fault};
}

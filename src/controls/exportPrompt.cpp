#include "controls/exportPrompt.h"

#include "controls/longWork.h"
#include "controls/notice.h"
#include "controls/prompts.h"
#include "export/csvFile.h"
#include "export/xlsxFile.h"

#include <QRegularExpression>
#include <QWidget>

const ExportKind kCsvExport{u"导出 CSV", u"csv", u"CSV (*.csv)", writeCsv};
const ExportKind kXlsxExport{u"导出 XLSX", u"xlsx", u"XLSX (*.xlsx)",
                             [](const QString& path, const ExportTable& table, const ExportSteps& steps) {
                                 return writeXlsx(path, table, steps);
                             }};

namespace {

ExportEnd writeWithProgress(const ExportKind& kind, const QString& path, const ExportTable& table) {
    LongWork work(QStringLiteral("正在导出…"), table.rows);
    return kind.write(path, table, [&work](int done) { return work.step(done); });
}

} // namespace

void askExport(QWidget* from, Prompts& prompts, const ExportKind& kind, const ExportTable& table) {
    const QString caption = QString::fromUtf16(kind.caption);
    const auto path = prompts.saveFile(caption, exportName(from) + u'.' + QString::fromUtf16(kind.ending),
                                       QString::fromUtf16(kind.filter));
    if (!path)
        return;
    const ExportEnd end = writeWithProgress(kind, *path, table);
    if (end == ExportEnd::Failed)
        prompts.tell(QStringLiteral("文件不能写入：%1").arg(*path));
    else if (end == ExportEnd::Stopped)
        say(from, {QStringLiteral("导出停止了，没有写入：%1").arg(*path)});
    else
        say(from, {QStringLiteral("已%1，%2 行：%3").arg(caption).arg(table.rows).arg(*path)});
}

QString exportName(const QWidget* widget) {
    static const QRegularExpression unfit(QStringLiteral("[\\\\/:*?\"<>|\\s]+"));
    for (; widget; widget = widget->parentWidget())
        if (!widget->windowTitle().isEmpty())
            return widget->windowTitle().replace(unfit, QStringLiteral("_"));
    return QStringLiteral("导出");
}

#include "app/errorReport.h"

#include "app/commandLine.h"
#include "app/reportDialog.h"
#include "controls/prompts.h"
#include "recordset/error.h"

#include <QFile>
#include <QGuiApplication>
#include <QScopeGuard>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <vector>

namespace {

bool standing = false; // a report is on the screen

/// Shown and printed to its end, whatever signs a stored text brings in.
QString printable(QString text) {
    return text.replace(QChar(u'\0'), QChar(0x2400));
}

/// The same process runs the program from its beginning on the same books; its locks go with its descriptors.
void startAnew(const QString& backup = {}) {
    const CommandLine line = readCommandLine(QCoreApplication::arguments().mid(1));
    std::vector<QByteArray> words{QFile::encodeName(QCoreApplication::applicationFilePath())};
    for (const QString& argument : argumentsAgain(line, backup))
        words.push_back(QFile::encodeName(argument));
    std::vector<char*> pointers;
    for (QByteArray& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    execv(words.front().constData(), pointers.data());
    std::perror("execv");
}

void print(const QString& text) {
    const QByteArray bytes = printable(text).toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stderr);
    std::fflush(stderr);
}

/// On the platforms without a screen nobody could press a button.
bool hasScreen() {
    const QString platform = QGuiApplication::platformName();
    return platform != u"offscreen" && platform != u"minimal";
}

QString headline(const DatabaseLost* lost) {
    if (lost && lost->isOfTheFile())
        return QStringLiteral("数据文件读不出来或者已损坏，程序必须结束。");
    if (lost && lost->outcome() == Outcome::Unknown)
        return QStringLiteral("程序遇到错误，必须结束。");
    return QStringLiteral("程序遇到错误，必须结束。已保存的数据不受影响。");
}

} // namespace

QString reportText(const std::exception& error, const QString& databasePath) {
    const auto* lost = dynamic_cast<const DatabaseLost*>(&error);
    QStringList lines{headline(lost), QString()};
    if (const auto* runtime = dynamic_cast<const RuntimeError*>(&error)) {
        lines << QStringLiteral("错误 %1：%2").arg(runtime->number()).arg(runtime->text());
        if (!runtime->statement().isEmpty())
            lines << QStringLiteral("语句：%1").arg(runtime->statement());
    } else if (lost) {
        lines << QStringLiteral("错误：%1").arg(lost->text());
    } else {
        lines << QStringLiteral("错误：%1").arg(QString::fromUtf8(error.what()));
    }
    lines << QStringLiteral("数据库：%1").arg(databasePath);
    return printable(lines.join(u'\n'));
}

bool reportStands() {
    return standing;
}

void showReport(const QString& text, const QString& databasePath, WayBack wayBack) {
    print(text);
    if (!hasScreen() || standing)
        return;
    standing = true;
    const auto gone = qScopeGuard([] { standing = false; });
    ReportDialog dialog(printable(text));
    if (wayBack == WayBack::Restore)
        dialog.offerBackups(databasePath);
    if (wayBack != WayBack::None)
        dialog.offerReopen();
    dialog.exec();
    if (dialog.answer() == ReportDialog::Answer::Reopen)
        startAnew();
    if (dialog.answer() == ReportDialog::Answer::Restore)
        startAnew(dialog.chosenBackup());
}

void showNote(const QString& text) {
    print(text);
    if (!hasScreen())
        return;
    WindowPrompts prompts;
    prompts.tell(text, QStringLiteral("衡商汇"));
}

bool isAgreed(const QString& question, const QString& loss) {
    print(question + u'\n' + loss);
    return !hasScreen() || WindowPrompts().confirmLoss(question, loss, QStringLiteral("衡商汇"));
}

void endWithReport(const QString& text, const QString& databasePath, WayBack wayBack) {
    showReport(text, databasePath, wayBack);
    std::_Exit(1);
}

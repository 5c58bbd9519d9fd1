#include "app/errorReport.h"

#include "recordset/error.h"

#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>

#include <cstdio>
#include <cstdlib>

QString reportText(const std::exception& error, const QString& databasePath) {
    QStringList lines{QStringLiteral("程序遇到错误，必须结束。已保存的数据不受影响。"), QString()};
    if (const auto* runtime = dynamic_cast<const RuntimeError*>(&error)) {
        lines << QStringLiteral("错误 %1：%2").arg(runtime->number()).arg(runtime->text());
        if (!runtime->statement().isEmpty())
            lines << QStringLiteral("语句：%1").arg(runtime->statement());
    } else {
        lines << QStringLiteral("错误：%1").arg(QString::fromUtf8(error.what()));
    }
    lines << QStringLiteral("数据库：%1").arg(databasePath);
    return lines.join(u'\n');
}

void showReport(const QString& text) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    std::fflush(stderr);
    // On the platforms without a screen nobody could press the button.
    const QString platform = QGuiApplication::platformName();
    if (platform == u"offscreen" || platform == u"minimal")
        return;
    QMessageBox box(QMessageBox::Critical, QStringLiteral("衡商汇"), text);
    box.addButton(QMessageBox::Ok)->setText(QStringLiteral("确定"));
    box.exec();
}

void endWithReport(const QString& text) {
    showReport(text);
    std::_Exit(1);
}

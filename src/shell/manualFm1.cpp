#include "shell/manualFm1.h"

#include "controls/formParts.h"
#include "shell/version.h"

#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

namespace {

QString readGuide(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

manualFm1::manualFm1(const QString& guidePath, const QString& warning)
    : TopWindow(QStringLiteral("manualFm1"), QStringLiteral("帮助")) {
    auto* frame = new QGroupBox(QStringLiteral("操作说明"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto* page = new QTextEdit(frame);
    page->setObjectName(QStringLiteral("RichTextBox1"));
    page->setAccessibleName(QStringLiteral("操作说明"));
    page->setReadOnly(true);
    page->setPlainText(readGuide(guidePath));
    auto* inside = new QVBoxLayout(frame);
    inside->addWidget(page);
    QPushButton* close = makeButton(QStringLiteral("Command1"), QStringLiteral("关闭"), this);
    connect(close, &QPushButton::clicked, this, [this] { finish(); });
    auto* column = new QVBoxLayout(this);
    column->addWidget(frame);
    if (!warning.isEmpty())
        column->addWidget(makeLabel(QStringLiteral("warning"), warning, this));
    auto* version = new QLabel(programVersion(), this);
    version->setObjectName(QStringLiteral("version"));
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(version, 1);
    bottom->addWidget(close);
    column->addLayout(bottom);
    resize(760, 620);
}

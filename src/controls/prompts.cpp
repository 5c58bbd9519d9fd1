#include "controls/prompts.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// Shows a box with the given buttons and captions; true if the first of them was pressed.
bool showBox(QMessageBox::Icon icon, const QString& title, const QString& text,
             const std::vector<std::pair<QMessageBox::StandardButton, QString>>& buttons) {
    QMessageBox box(icon, title, text, QMessageBox::NoButton, QApplication::activeWindow());
    for (const auto& [button, caption] : buttons)
        box.addButton(button)->setText(caption);
    box.setDefaultButton(buttons.front().first);
    box.setEscapeButton(buttons.back().first);
    return box.exec() == buttons.front().first;
}

} // namespace

void WindowPrompts::tell(const QString& text, const QString& title) {
    showBox(QMessageBox::Information, title, text, {{QMessageBox::Ok, QStringLiteral("确定")}});
}

bool WindowPrompts::confirm(const QString& text, const QString& title) {
    return showBox(
        QMessageBox::Question, title, text,
        {{QMessageBox::Ok, QStringLiteral("确定")}, {QMessageBox::Cancel, QStringLiteral("取消")}});
}

bool WindowPrompts::ask(const QString& text, const QString& title) {
    return showBox(QMessageBox::Question, title, text,
                   {{QMessageBox::Yes, QStringLiteral("是")}, {QMessageBox::No, QStringLiteral("否")}});
}

std::optional<QString> WindowPrompts::input(const QString& text, const QString& title) {
    QInputDialog dialog(QApplication::activeWindow());
    dialog.setWindowTitle(title);
    dialog.setLabelText(text);
    dialog.setOkButtonText(QStringLiteral("确定"));
    dialog.setCancelButtonText(QStringLiteral("取消"));
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.textValue()) : std::nullopt;
}

std::optional<QString> WindowPrompts::saveFile(const QString& title, const QString& proposal,
                                               const QString& filter) {
    QFileDialog dialog(QApplication::activeWindow(), title, QString(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDirectory(QFileInfo(proposal).absolutePath());
    dialog.selectFile(QFileInfo(proposal).fileName());
    // The ending is added before the dialog asks whether a file may be replaced.
    const QString ending = QFileInfo(proposal).suffix();
    dialog.setDefaultSuffix(ending);
    for (const QString& each : dialog.nameFilters())
        if (!ending.isEmpty() && each.contains(QStringLiteral("*.") + ending))
            dialog.selectNameFilter(each);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().first();
}

std::optional<QString> WindowPrompts::openFile(const QString& title, const QString& filter) {
    const QString name = QFileDialog::getOpenFileName(QApplication::activeWindow(), title, {}, filter);
    return name.isEmpty() ? std::nullopt : std::optional(name);
}

std::optional<FontChoice> WindowPrompts::chooseFont(const QString& title, const FontChoice& start) {
    QDialog dialog(QApplication::activeWindow());
    dialog.setWindowTitle(title);
    auto* fonts = new QFontDialog(start.font, &dialog);
    fonts->setOptions(QFontDialog::NoButtons | QFontDialog::DontUseNativeDialog);
    fonts->setWindowFlags(Qt::Widget);
    auto* colour = new QPushButton(&dialog);
    QColor chosen = start.colour;
    const auto showColour = [&] {
        QPixmap sample(24, 16);
        sample.fill(chosen);
        colour->setIcon(sample);
        colour->setText(QStringLiteral("颜色…"));
    };
    showColour();
    QObject::connect(colour, &QPushButton::clicked, &dialog, [&] {
        if (const QColor picked = QColorDialog::getColor(chosen, &dialog, QStringLiteral("颜色"));
            picked.isValid())
            chosen = picked;
        showColour();
    });
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("确定"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("取消"));
    buttons->addButton(colour, QDialogButtonBox::ResetRole);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* column = new QVBoxLayout(&dialog);
    column->addWidget(fonts, 1);
    column->addWidget(buttons);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return FontChoice{fonts->currentFont(), chosen};
}

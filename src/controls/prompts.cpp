#include "controls/prompts.h"

#include "controls/filePrompt.h"

#include <QApplication>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

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
    FileDialog dialog(title, filter, QApplication::activeWindow());
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
    FileDialog dialog(title, filter, QApplication::activeWindow());
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().first();
}

std::optional<FontChoice> WindowPrompts::chooseFont(const QString& title, const FontChoice& start) {
    FontDialog dialog(title, start, QApplication::activeWindow());
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.choice()) : std::nullopt;
}

std::optional<PrinterChoice> WindowPrompts::setUpPrinter(const QStringList& printers,
                                                         const PrinterChoice& start) {
    PrinterDialog dialog(printers, start, QApplication::activeWindow());
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.choice()) : std::nullopt;
}

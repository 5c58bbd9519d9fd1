#include "controls/prompts.h"

#include "controls/filePrompt.h"
#include "controls/formParts.h"
#include "recordset/shownText.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

using Buttons = std::vector<std::pair<QMessageBox::StandardButton, QString>>;

const Buttons& okAndCancel() {
    static const Buttons buttons{{QMessageBox::Ok, QStringLiteral("确定")},
                                 {QMessageBox::Cancel, QStringLiteral("取消")}};
    return buttons;
}

const Buttons& yesAndNo() {
    static const Buttons buttons{{QMessageBox::Yes, QStringLiteral("是")},
                                 {QMessageBox::No, QStringLiteral("否")}};
    return buttons;
}

/// Documents of the user, his home where he keeps none.
QString documentsFolder() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

/// The program's own picture for a box.
QIcon pictureOf(QMessageBox::Icon icon) {
    const QString name = icon == QMessageBox::Question  ? QStringLiteral("question")
                         : icon == QMessageBox::Warning ? QStringLiteral("warning")
                                                        : QStringLiteral("information");
    return QIcon(QStringLiteral(":/icons/%1.svg").arg(name));
}

constexpr int kLettersInLine = 20;

/// A message box: the first button is the default, the last one the answer of Escape and the close box.
class Box : public QMessageBox {
public:
    Box(Icon icon, const QString& title, const QString& text, const Buttons& buttons)
        : QMessageBox(icon, beginningOf(title, kCaptionLetters), beginningOf(text), NoButton,
                      QApplication::activeWindow()) {
        giveDialogFrame(this);
        constexpr int side = 44;
        if (const QPixmap picture = pictureOf(icon).pixmap({side, side}, devicePixelRatioF());
            !picture.isNull())
            setIconPixmap(picture);
        // The lines below a short question would be broken where it ends.
        if (auto* label = findChild<QLabel*>(QStringLiteral("qt_msgbox_label")))
            label->setMinimumWidth(label->fontMetrics().horizontalAdvance(u'国') * kLettersInLine);
        for (const auto& [button, caption] : buttons)
            addButton(button)->setText(caption);
        setDefaultButton(buttons.front().first);
        setEscapeButton(buttons.back().first);
    }
};

} // namespace

void Prompts::tellAbout(QWidget* box, const QString& text, const QString& title) {
    tell(text, title);
    box->setFocus(Qt::OtherFocusReason);
    if (auto* line = qobject_cast<QLineEdit*>(box))
        line->selectAll();
}

bool Prompts::mayWrite(const QString& path) {
    const QString refusal = m_guard ? m_guard(path) : QString();
    if (!refusal.isEmpty())
        tell(refusal);
    return refusal.isEmpty();
}

std::optional<QString> Prompts::saveFile(const QString& title, const QString& proposal,
                                         const QString& filter) {
    auto path = anyFileToSave(title, proposal, filter);
    while (path && !mayWrite(*path))
        path = anyFileToSave(title, proposal, filter);
    return path;
}

void WindowPrompts::tell(const QString& text, const QString& title) {
    Box(QMessageBox::Information, title, text, {{QMessageBox::Ok, QStringLiteral("确定")}}).exec();
}

bool WindowPrompts::confirm(const QString& text, const QString& title) {
    return Box(QMessageBox::Question, title, text, okAndCancel()).exec() == QMessageBox::Ok;
}

bool WindowPrompts::ask(const QString& text, const QString& title) {
    return Box(QMessageBox::Question, title, text, yesAndNo()).exec() == QMessageBox::Yes;
}

bool WindowPrompts::confirmLoss(const QString& text, const QString& loss, const QString& title) {
    Box box(QMessageBox::Warning, title, text, okAndCancel());
    box.setInformativeText(beginningOf(loss));
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Ok;
}

std::optional<bool> WindowPrompts::askOrLeave(const QString& text, const QString& title) {
    Box box(QMessageBox::Question, title, text, yesAndNo());
    // A box takes its answer to Escape from a button, here from one that nobody sees.
    QPushButton* leave = box.addButton(QMessageBox::Cancel);
    leave->hide();
    box.setEscapeButton(leave);
    const int answer = box.exec();
    return answer == QMessageBox::Cancel ? std::nullopt : std::optional(answer == QMessageBox::Yes);
}

std::optional<QString> WindowPrompts::input(const QString& text, const QString& title) {
    QInputDialog dialog(QApplication::activeWindow());
    giveDialogFrame(&dialog);
    dialog.setWindowTitle(title);
    dialog.setLabelText(beginningOf(text));
    dialog.setOkButtonText(QStringLiteral("确定"));
    dialog.setCancelButtonText(QStringLiteral("取消"));
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.textValue()) : std::nullopt;
}

std::optional<QString> WindowPrompts::anyFileToSave(const QString& title, const QString& proposal,
                                                    const QString& filter) {
    FileDialog dialog(title, filter, QApplication::activeWindow());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDirectory(QFileInfo(m_folder).isDir() ? m_folder : documentsFolder());
    dialog.selectFile(QFileInfo(proposal).fileName());
    // The ending is added before the dialog asks whether a file may be replaced.
    const QString ending = QFileInfo(proposal).suffix();
    dialog.setDefaultSuffix(ending);
    for (const QString& each : dialog.nameFilters())
        if (!ending.isEmpty() && each.contains(QStringLiteral("*.") + ending))
            dialog.selectNameFilter(each);
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& chosen) {
        static const QRegularExpression pattern(QStringLiteral("\\*\\.(\\w+)"));
        if (const auto found = pattern.match(chosen); found.hasMatch())
            dialog.setDefaultSuffix(found.captured(1));
    });
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    const QString chosen = dialog.selectedFiles().first();
    m_folder = QFileInfo(chosen).absolutePath();
    return chosen;
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

#pragma once

#include "controls/fontPrompt.h"
#include "controls/printerPrompt.h"

#include <QStringList>

#include <functional>
#include <optional>

class QWidget;

/// Everything that stops the program for an answer goes through here: Qt's own dialogs in the program, a
/// scripted stand-in in tests.
class Prompts {
public:
    virtual ~Prompts() = default;

    /// A message with an OK button.
    virtual void tell(const QString& text, const QString& title = QStringLiteral("信息提示")) = 0;
    /// The same about what stands in a box, which then has the focus, its text selected.
    void tellAbout(QWidget* box, const QString& text, const QString& title = QStringLiteral("信息提示"));
    /// A question with OK and Cancel; true for OK.
    virtual bool confirm(const QString& text, const QString& title = QStringLiteral("信息提示")) = 0;
    /// A question with Yes and No; true for Yes.
    virtual bool ask(const QString& text, const QString& title = QStringLiteral("信息提示")) = 0;
    /// The same where OK destroys something: `loss` says below the question what would go, and Cancel is the
    /// default.
    virtual bool confirmLoss(const QString& text, const QString& loss,
                             const QString& title = QStringLiteral("信息提示")) = 0;
    /// A question with Yes and No that may be left without an answer, by Escape or the close box: nothing
    /// then.
    virtual std::optional<bool> askOrLeave(const QString& text,
                                           const QString& title = QStringLiteral("信息提示")) = 0;
    /// A line of text; nothing where the user cancels.
    virtual std::optional<QString> input(const QString& text, const QString& title) = 0;
    /// A name for a file to be written; nothing where the user cancels. `filter` as in "CSV (*.csv)". A name
    /// that may not be written is told and asked for again.
    std::optional<QString> saveFile(const QString& title, const QString& proposal, const QString& filter);
    /// The same for a command that refuses such names in words of its own.
    virtual std::optional<QString> anyFileToSave(const QString& title, const QString& proposal,
                                                 const QString& filter) = 0;
    /// Whether this name, made from the user's, may be written; if not, he is told why.
    bool mayWrite(const QString& path);
    /// Why a file may not be written, in words for the user; "" if it may.
    using WriteGuard = std::function<QString(const QString& path)>;
    /// Every name of a file to be written passes the guard. It opens no file.
    void guardWriting(WriteGuard guard) { m_guard = std::move(guard); }
    /// A file to be read; nothing where the user cancels. `filter` as in "CSV (*.csv);;所有文件 (*.*)".
    virtual std::optional<QString> openFile(const QString& title, const QString& filter) = 0;
    /// A font with its effects and its colour; nothing where the user cancels.
    virtual std::optional<FontChoice> chooseFont(const QString& title, const FontChoice& start) = 0;
    /// One of the machine's printers and how its sheets lie; nothing where the user cancels.
    virtual std::optional<PrinterChoice> setUpPrinter(const QStringList& printers,
                                                      const PrinterChoice& start) = 0;

private:
    WriteGuard m_guard;
};

/// The dialogs of the program, in front of the active window.
class WindowPrompts : public Prompts {
public:
    void tell(const QString& text, const QString& title) override;
    bool confirm(const QString& text, const QString& title) override;
    bool ask(const QString& text, const QString& title) override;
    bool confirmLoss(const QString& text, const QString& loss, const QString& title) override;
    std::optional<bool> askOrLeave(const QString& text, const QString& title) override;
    std::optional<QString> input(const QString& text, const QString& title) override;
    std::optional<QString> anyFileToSave(const QString& title, const QString& proposal,
                                         const QString& filter) override;
    std::optional<QString> openFile(const QString& title, const QString& filter) override;
    std::optional<FontChoice> chooseFont(const QString& title, const FontChoice& start) override;
    std::optional<PrinterChoice> setUpPrinter(const QStringList& printers,
                                              const PrinterChoice& start) override;

private:
    QString m_folder; // where the last file of this run was written
};

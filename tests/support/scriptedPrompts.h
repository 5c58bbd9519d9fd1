#pragma once

#include "controls/prompts.h"
#include "support/printQt.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>

/// Answers prompts from a queue and remembers what was shown. A prompt nobody expected fails the test, unless
/// everything is to be answered.
class ScriptedPrompts : public Prompts {
public:
    /// One prompt that nobody expected: "tell", "confirm", "ask", "input", "save", "open", "font" or
    /// "printer".
    struct Said {
        QString kind;
        QString title;
        QString text;
    };
    /// How every prompt that nobody expected is answered: by its way out, or by OK, Yes and what was handed
    /// over for it.
    struct Answers {
        bool yes = false;
        QString input;
        /// A file for the title of a dialog and its filter.
        std::function<QString(const QString& title, const QString& filter)> file;
    };
    void answerAnything(Answers answers) { m_anything = std::move(answers); }
    std::vector<Said> said; // what was answered so

    ~ScriptedPrompts() override { EXPECT_TRUE(m_expected.empty()) << "not shown: " << next(); }

    void expectMessage(const QString& text, const QString& title = QStringLiteral("信息提示")) {
        expect("tell", text, title, true);
    }
    void expectConfirm(const QString& text, bool ok, const QString& title = QStringLiteral("信息提示")) {
        expect("confirm", text, title, ok);
    }
    void expectAsk(const QString& text, bool yes, const QString& title = QStringLiteral("信息提示")) {
        expect("ask", text, title, yes);
    }
    /// A question that is left by Escape or the close box.
    void expectLeft(const QString& text, const QString& title = QStringLiteral("信息提示")) {
        expect("ask", text, title, false);
        m_expected.back().left = true;
    }
    void expectInput(const QString& text, const QString& title, std::optional<QString> answer) {
        expect("input", text, title, true);
        m_expected.back().answer = std::move(answer);
    }
    /// Runs when the next expected prompt is shown, before it is answered.
    void whenShown(std::function<void()> action) { m_expected.back().shown = std::move(action); }
    bool done() const { return m_expected.empty(); }

    void tell(const QString& text, const QString& title) override { take("tell", text, title); }
    bool confirm(const QString& text, const QString& title) override {
        return take("confirm", text, title).yes;
    }
    bool ask(const QString& text, const QString& title) override { return take("ask", text, title).yes; }
    bool confirmLoss(const QString& text, const QString& what, const QString& title) override {
        loss = what;
        ++losses;
        return take("confirm", text, title).yes;
    }
    std::optional<bool> askOrLeave(const QString& text, const QString& title) override {
        const Expected answer = take("ask", text, title);
        return answer.left ? std::nullopt : std::optional(answer.yes);
    }
    std::optional<QString> input(const QString& text, const QString& title) override {
        return take("input", text, title).answer;
    }
    std::optional<QString> anyFileToSave(const QString& title, const QString& proposal,
                                         const QString&) override {
        ++saveQuestions;
        return m_anything ? answerFile("save", title, proposal) : saveName;
    }
    std::optional<QString> openFile(const QString& title, const QString& filter) override {
        fileFilter = filter;
        return m_anything ? answerFile("open", title, filter) : openName;
    }
    std::optional<FontChoice> chooseFont(const QString& title, const FontChoice& start) override {
        fontTitles << title;
        fontStart = start;
        return m_anything ? answerChoice("font", title, start) : fontAnswer;
    }
    std::optional<PrinterChoice> setUpPrinter(const QStringList&, const PrinterChoice& start) override {
        printerStart = start;
        return m_anything ? answerChoice("printer", {}, start) : printerAnswer;
    }

    QString loss;   // what the last destructive question said would go
    int losses = 0; // how many of them were asked
    std::optional<QString> saveName;
    std::optional<QString> openName;
    QString fileFilter;
    int saveQuestions = 0;
    std::optional<FontChoice> fontAnswer; // of every font dialog; none cancels
    FontChoice fontStart;
    QStringList fontTitles;
    std::optional<PrinterChoice> printerAnswer; // of every printer dialog; none cancels
    std::optional<PrinterChoice> printerStart;

private:
    struct Expected {
        std::string kind;
        QString text;
        QString title;
        bool yes = false;
        bool left = false;
        std::optional<QString> answer;
        std::function<void()> shown;
    };

    std::string next() const { return m_expected.empty() ? "" : m_expected.front().text.toStdString(); }
    void expect(const char* kind, const QString& text, const QString& title, bool yes) {
        m_expected.push_back({kind, text, title, yes, false, {}, {}});
    }
    Expected take(const std::string& kind, const QString& text, const QString& title) {
        if (m_expected.empty() && m_anything) {
            said.push_back({QString::fromStdString(kind), title, text});
            return anyAnswer();
        }
        if (m_expected.empty()) {
            ADD_FAILURE() << "unexpected " << kind << ": " << text.toStdString();
            saveName.reset(); // a name that is refused would be asked for without end
            return {};
        }
        const Expected expected = m_expected.front();
        m_expected.pop_front();
        EXPECT_EQ(kind, expected.kind);
        EXPECT_EQ(text, expected.text);
        EXPECT_EQ(title, expected.title);
        if (expected.shown)
            expected.shown();
        return expected;
    }

    Expected anyAnswer() const {
        Expected answer;
        answer.yes = m_anything->yes;
        answer.left = !m_anything->yes;
        if (m_anything->yes)
            answer.answer = m_anything->input;
        return answer;
    }
    std::optional<QString> answerFile(const char* kind, const QString& title, const QString& what) {
        said.push_back({QString::fromLatin1(kind), title, {}});
        return m_anything->yes ? std::optional(m_anything->file(title, what)) : std::nullopt;
    }
    template <typename Choice>
    std::optional<Choice> answerChoice(const char* kind, const QString& title, const Choice& start) {
        said.push_back({QString::fromLatin1(kind), title, {}});
        return m_anything->yes ? std::optional(start) : std::nullopt;
    }

    std::deque<Expected> m_expected;
    std::optional<Answers> m_anything;
};

#pragma once

#include "shell/userGuide.h"
#include "shell/view.h"

class QBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QTextBrowser;

/// The help window: the user guide from the text file beside the program, its headings, a search in it, the
/// program's version and the file that is open. It opens at the section of what the user had in front.
class manualFm1 : public TopWindow {
    Q_OBJECT

public:
    /// `guidePath`: the text file, UTF-8. One that cannot be read leaves the page empty. `topic`: asked
    /// whenever help is asked for, the name of a section or nothing. `books`: the database file that is open.
    /// `warning`: what else the user must know of this system; mostly empty.
    explicit manualFm1(const QString& guidePath, std::function<QString()> topic = {},
                       const QString& books = {}, const QString& warning = {});
    bool standsOverMain() const override { return true; }
    /// Turns to the section that is asked for now.
    void shownAgain() override;

protected:
    bool endsByEscape() const override { return true; }
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QBoxLayout* buildSearch();
    QWidget* buildPage();
    QBoxLayout* buildBottom(const QString& books);
    void listHeadings();
    void dress();
    void goToSection(int section);
    void goToPlace(qsizetype place);
    /// Where the uppermost line that is seen begins.
    int topPlace() const;
    void goBack();
    void follow(int section);
    void search();
    void goToHit(int step);
    void showHits();

    UserGuide m_guide;
    std::function<QString()> m_topic;
    QListWidget* m_headings = nullptr;
    QTextBrowser* m_page = nullptr;
    QLineEdit* m_word = nullptr;
    QLabel* m_found = nullptr;
    QWidget* m_back = nullptr;
    std::vector<qsizetype> m_hits;
    int m_hit = 0;                    // the one in front
    std::vector<qsizetype> m_visited; // places that links led away from
};

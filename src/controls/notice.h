#pragma once

#include <QString>
#include <QWidget>

#include <functional>

class QPushButton;

/// What the program has done for its user and where that is now, said in passing: nothing waits for an
/// answer.
struct Notice {
    QString text;
    QString caption = {};              // of a button beside the text, empty without one
    std::function<void()> action = {}; // what it runs; the main window holds it until another view is shown
};

/// A window that shows notices.
class NoticePlace {
public:
    virtual ~NoticePlace() = default;
    virtual void takeNotice(const Notice& notice) = 0;
};

/// Says it in the window in which `from` stands; without a window that shows notices nothing is said.
void say(QWidget* from, const Notice& notice);

/// One line of text, a button beside it where there is more to do with it. A text that is longer than the
/// line is cut in its middle, and the tool tip has the whole.
class NoticeLine : public QWidget {
    Q_OBJECT

public:
    explicit NoticeLine(QWidget* parent);

    /// Takes the place of the notice before.
    void show(const Notice& notice);
    void clear() { show({}); }
    QString text() const;

private:
    class Text;

    Text* m_text;
    QPushButton* m_button;
    std::function<void()> m_action;
};

#include "package/storyDriver.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr qint64 kPatience = 60'000; // milliseconds
constexpr int kGlance = 10;

class Story : public QObject {
public:
    Story(const QString& path, QObject* parent)
        : QObject(parent)
        , m_path(path) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            m_steps = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
        m_waiting.start();
        connect(&m_timer, &QTimer::timeout, this, &Story::goOn);
        m_timer.start(kGlance);
    }

private:
    void goOn() {
        if (m_steps.isEmpty())
            return m_timer.stop();
        if (isDone(m_steps.front())) {
            std::printf("story: %s\n", qUtf8Printable(m_steps.takeFirst()));
            keepRest();
            m_waiting.restart();
        } else if (m_waiting.elapsed() > kPatience) {
            std::fprintf(stderr, "story: cannot be done: %s\n", qUtf8Printable(m_steps.front()));
            std::_Exit(3);
        }
    }

    /// A program that starts anew goes on where it was.
    void keepRest() const {
        QFile file(m_path);
        if (file.open(QIODevice::WriteOnly))
            file.write(m_steps.join(u'\n').toUtf8());
    }

    bool isDone(const QString& step) {
        const QString verb = step.section(u' ', 0, 0);
        const QString name = step.section(u' ', 1, 1);
        if (verb == u"in")
            return comeTo(name);
        if (verb == u"answer")
            return answer(step.section(u' ', 1));
        const QWidget* modal = QApplication::activeModalWidget();
        if (!m_window || (modal && modal != m_window))
            return false;
        if (verb == u"choose")
            return choose(name);
        if (verb == u"click")
            return click(name);
        if (verb == u"type")
            return type(name, step.section(u' ', 2));
        if (verb == u"shoot")
            return m_window->grab().save(step.section(u' ', 1));
        if (verb == u"enter")
            return enter(name);
        return verb == u"read" && shown(name) == step.section(u' ', 2);
    }

    bool comeTo(const QString& name) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == name && window->isVisible() && window->isEnabled())
                m_window = window;
        return m_window && m_window->objectName() == name;
    }

    /// One that the user sees; others of its name may be hidden behind it.
    template <typename T> T* find(const QString& name) const {
        for (T* widget : m_window->findChildren<T*>(name))
            if (widget->isVisible() && widget->isEnabled())
                return widget;
        return nullptr;
    }

    /// What a press opens may stand for long: it runs on its own, and the story goes on in it.
    template <typename T> static bool press(T* target, void (T::*how)()) {
        if (target)
            QTimer::singleShot(0, target, how);
        return target;
    }

    bool choose(const QString& name) const {
        auto* action = m_window->findChild<QAction*>(name);
        return action && action->isEnabled() && press(action, &QAction::trigger);
    }

    bool click(const QString& name) const {
        return press(find<QAbstractButton>(name), &QAbstractButton::click);
    }

    static bool answer(const QString& text) {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible() || !box->text().startsWith(text))
            return false;
        QAbstractButton* button = box->defaultButton();
        if (!button)
            button = box->buttons().value(0);
        return press(button, &QAbstractButton::click);
    }

    static void send(QWidget* widget, int key, const QString& text) {
        for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(kind, key, Qt::NoModifier, text);
            QCoreApplication::sendEvent(widget, &event);
        }
    }

    bool enter(const QString& name) const {
        auto* box = find<QLineEdit>(name);
        if (!box)
            return false;
        box->setFocus(Qt::OtherFocusReason);
        QTimer::singleShot(0, box, [box] { send(box, Qt::Key_Return, QStringLiteral("\r")); });
        return true;
    }

    bool type(const QString& name, const QString& text) const {
        auto* box = find<QLineEdit>(name);
        if (!box || box->isReadOnly())
            return false;
        box->setFocus(Qt::OtherFocusReason);
        box->selectAll();
        for (const QChar sign : text)
            send(box, Qt::Key_unknown, QString(sign));
        return true;
    }

    QString shown(const QString& name) const {
        if (const auto* box = find<QLineEdit>(name))
            return box->text();
        const auto* label = find<QLabel>(name);
        return label ? label->text() : QString();
    }

    QString m_path;
    QStringList m_steps;
    QElapsedTimer m_waiting; // since the step in hand became the next
    QTimer m_timer;
    QPointer<QWidget> m_window;
};

} // namespace

QObject* StoryPlugin::create(const QString& /*key*/, const QString& /*options*/) {
    return new Story(qEnvironmentVariable("SHOP_STORY"), this);
}

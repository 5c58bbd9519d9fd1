#pragma once

#include "shell/MDIForm1.h"
#include "support/pressables.h"
#include "support/scriptedPrompts.h"
#include "support/testBooks.h"

#include <QSet>

#include <deque>

/// The whole program on books of its own, every prompt answered in one way.
struct WalkedProgram {
    WalkedProgram(const QString& books, bool yes);
    ~WalkedProgram();

    /// From now on every prompt is answered by OK, Yes and something sensible, or by its way out.
    void answer(bool yes);
    /// The windows of their own that are open, by name, in the order of their names.
    QMap<QString, TopWindow*> windows() const;
    QString activeView() const;

    TestBooks books;
    ScriptedPrompts prompts;
    std::unique_ptr<MDIForm1> main;
    bool ended = false; // the stop question was answered by OK

private:
    QString fileFor(const QString& title, const QString& what);

    int m_files = 0;
};

/// A kind of shop: how its books are filled, and what earlier work has left on in it.
struct WalkedShop {
    QString name;
    std::function<void(TestBooks&)> fill;
    std::function<void(WalkedProgram&)> leave; // run at the start and behind every step of a road
    bool menuEverywhere;                       // whether the menu is pressed in every view, in quarters, too
    QStringList withoutRoad;                   // windows that nothing opens and that are walked all the same
};

/// Presses everything in the program that can be pressed: every view, window, dialog and report that a press
/// leads to is reached in a program started afresh, and each of its controls is pressed from there. A fault
/// is whatever would leave the user stuck.
class Walker {
public:
    Walker(const WalkedShop& shop, bool yes);

    void walk();

    QStringList log;             // "view / control -> what opened or was said", in the order of the walk
    QStringList faults;          // each with the control behind which it stood
    QMap<QString, QString> said; // messages and questions, each with the control that it came from first
    QStringList viewNames;       // all that the program has
    QStringList unreached;       // views and windows that no press led to
    QStringList reached;         // views and windows, in the order in which they were met

private:
    /// One press: where, and on what.
    struct Step {
        QString place;
        QString control;
    };
    using Road = std::vector<Step>;
    struct Place {
        QString name;
        Road road; // the presses that lead here from a fresh start
    };
    struct Seen {
        QSet<QString> windows;
        QString view;
    };

    void makeTemplate();
    void restart();
    void leaveOn();
    void walkPlace(const Place& place);
    /// The control to be pressed next, none when all were; the second round goes backwards.
    std::optional<Pressable> next(const QString& place, const QSet<QString>& pressed, bool backwards);
    bool pressAll(const Place& place, bool backwards);
    /// Whether the place is a view, or a window of a class that was not asked for before.
    bool isNewClass(const QString& place);
    /// To the place by its road, in the program as it stands or in a fresh one.
    bool goTo(const Place& place);
    bool follow(const Place& place);
    bool isThere(const QString& place) const;
    std::vector<Pressable> pressables(const QString& place);
    bool press(const QString& place, const QString& control);
    void press(const Pressable& control);
    void pressAndLook(const Place& place, const Pressable& control);
    QStringList outcome(const Seen& before);
    void meet(const Seen& before, const Place& from, const Step& step);
    void closeAllBut(const QSet<QString>& kept);
    void close(const QString& window);
    void checkWayOn();
    void checkForeignWindows();
    void checkSomethingUsable();
    void takeSaid(QStringList& words);
    void fault(const QString& what);
    QString at() const { return m_at.place + QStringLiteral(" / ") + m_at.control; }

    const WalkedShop& m_shop;
    bool m_yes;
    QTemporaryDir m_folder;
    std::unique_ptr<WalkedProgram> m_program;
    Pressables m_pressables;
    std::deque<Place> m_waiting;
    Step m_at;
    int m_losses = 0;
    bool m_leavesOn = true;
    QSet<QByteArray> m_classes;
};

#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QString>

#include <functional>

class QProgressBar;
class QPushButton;

/// How far a loop is: steps done, steps in all.
using Steps = std::function<void(int, int)>;

/// Paints what has just been put on screen, and then runs what need not be waited for to see it. Input that
/// comes meanwhile is taken up afterwards; a progress window shows longer work.
void workAfterPainting(const QString& text, const std::function<void(const Steps&)>& work);

/// A progress window with a way to stop, for work that may be long. It comes up with the first step behind
/// the first half second, and never by itself; while it stands, no other window takes input. It must be gone
/// before anything is told of the work's end.
class LongWork {
public:
    static constexpr int kPatience = 500; // milliseconds without a window

    LongWork(const QString& text, int steps);

    /// Shows how far the work is; false once the user wants it to stop.
    bool step(int done);
    /// The same for work whose length is known only now; it cannot be stopped.
    void stepOf(int done, int total);

private:
    void show();

    bool m_stopped = false;
    QElapsedTimer m_since;
    QDialog m_window;
    QProgressBar* m_bar = nullptr;
    QPushButton* m_stop = nullptr;
};

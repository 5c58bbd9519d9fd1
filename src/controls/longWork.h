#pragma once

#include <QProgressDialog>
#include <QString>

/// A progress window with a way to stop, for work that may be long; it comes up after half a second. While it
/// stands, no other window takes input.
class LongWork {
public:
    LongWork(const QString& text, int steps);

    /// Shows how far the work is; false once the user wants it to stop.
    bool step(int done);
    /// The same for work whose length is known only now; it cannot be stopped.
    void stepOf(int done, int total);

private:
    QProgressDialog m_window;
};

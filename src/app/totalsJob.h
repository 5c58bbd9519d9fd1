#pragma once

#include "data/recount.h"
#include "recordset/imageWarmer.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class Session;

/// The recount of the customers' totals behind the first screen. The columns are read in a thread, a few
/// customers at a time are looked at between two events, and what differs is written at once, so that nobody
/// sees half of it. Whoever needs the totals before has it finished first.
class TotalsJob : public QObject {
public:
    explicit TotalsJob(Session& session);

    /// Whether it may write by itself; until then it waits. Unset is always.
    std::function<bool()> mayWrite;
    /// Told at the end of how many customers the totals were wrong, and are right now.
    std::function<void(int changed)> onEnd;
    /// Told instead why totals could not be put right; the next start will.
    std::function<void(const QString& why)> onFailure;

    /// In: the books are open. Nothing is left to do where it is finished already.
    void start();
    /// Looks at once at all that is left, and writes nothing. What goes wrong is met again by finish().
    void lookAhead();
    /// Does at once what is left of it. Throws DatabaseLost where nobody knows what is in the file.
    void finish();
    bool isDone() const { return m_done; }

private:
    void lookAtAll();
    void goOn();
    int step();
    void later(int milliseconds);
    template <typename Work> void orGiveUp(Work&& work);
    void giveUp(const QString& why);
    void write();

    Session& m_session;
    std::unique_ptr<ImageWarmer> m_reading;
    std::unique_ptr<TotalsRecount> m_recount;
    bool m_writing = false;
    bool m_done = false;
};

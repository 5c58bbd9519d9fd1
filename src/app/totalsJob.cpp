#include "app/totalsJob.h"

#include "data/books.h"
#include "data/warmUp.h"
#include "recordset/error.h"

#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QTimer>

#include <utility>

namespace {

constexpr int kClientsAtOnce = 4'000;
constexpr int kSoon = 20;     // milliseconds
constexpr int kAgain = 1'000; // milliseconds until a file that another program holds is tried once more

} // namespace

TotalsJob::TotalsJob(Session& session)
    : m_session(session)
    , m_reading(std::make_unique<ImageWarmer>(session.cn, columnsOfTotals())) {
    m_reading->onEnd = [this] { goOn(); };
}

void TotalsJob::start() {
    if (m_reading)
        m_reading->start();
}

void TotalsJob::later(int milliseconds) {
    QTimer::singleShot(milliseconds, this, [this] { goOn(); });
}

/// One step, and the next one when events have had their turn. Nobody has asked for it, so nobody is asked
/// whether to wait for another program.
void TotalsJob::goOn() {
    if (m_done)
        return;
    if (!m_session.cn.isIdle())
        return later(kSoon);
    const auto asks = std::exchange(m_session.cn.askAgain, nullptr);
    const auto askAgain = qScopeGuard([&] { m_session.cn.askAgain = asks; });
    const auto pause = m_session.cn.atOnce([this] { return step(); });
    if (!m_done)
        later(pause.value_or(kAgain));
}

/// How many milliseconds the next step has time.
int TotalsJob::step() {
    if (!m_recount) {
        m_recount = totalsRecount(m_session);
        return 0;
    }
    if (m_recount->look(kClientsAtOnce))
        return 0;
    if (mayWrite && !mayWrite())
        return kSoon;
    orGiveUp([this] { write(); });
    return 0;
}

void TotalsJob::lookAtAll() {
    m_reading.reset();
    if (!m_recount)
        m_recount = totalsRecount(m_session);
    m_recount->look(m_recount->clientCount());
}

void TotalsJob::lookAhead() {
    if (m_done || m_writing)
        return;
    try {
        lookAtAll();
    } catch (const std::exception&) { // told by whoever finishes
    }
}

void TotalsJob::finish() {
    if (m_done || m_writing)
        return;
    try {
        orGiveUp([this] {
            lookAtAll();
            write();
        });
    } catch (const ActionEnded& ended) {
        giveUp(ended.text());
    }
}

template <typename Work> void TotalsJob::orGiveUp(Work&& work) {
    try {
        work();
    } catch (const DatabaseLost& lost) {
        if (lost.outcome() == Outcome::Unknown)
            throw;
        giveUp(lost.text());
    }
}

void TotalsJob::giveUp(const QString& why) {
    m_done = true;
    m_session.cn.tellTakenBack();
    if (onFailure)
        onFailure(why);
}

/// Its own transaction goes past the gate that waits for it.
void TotalsJob::write() {
    int changed = 0;
    {
        const QScopedValueRollback<bool> writing(m_writing, true);
        changed = m_recount->write();
    }
    m_done = true;
    m_recount.reset();
    if (onEnd)
        onEnd(changed);
}

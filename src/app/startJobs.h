#pragma once

#include "app/totalsJob.h"

#include <QDate>

#include <future>
#include <thread>

/// What a start does about its file behind the first window: the check of its structure, in a thread; the
/// recount of the customers' totals; and when both are done the day's backup, in that thread. The first write
/// of the session waits for check and recount, with the busy cursor.
class StartJobs : public QObject {
    Q_OBJECT

public:
    /// Nothing was written to the session's file since a broken-off action was taken back.
    StartJobs(Session& session, const QDate& today);
    ~StartJobs() override;

    /// Told what the check found wrong with the file, as soon as it is known or a write waits for it.
    std::function<void(const QString& fault)> onDamage;
    /// Told why there is no backup of the day.
    std::function<void(const QString& fault)> onNoBackup;
    /// Told how the recount ended: of how many customers the totals were wrong, or why they stay so.
    std::function<void(int changed)> onRecounted;
    std::function<void(const QString& why)> onNotRecounted;
    /// Told after either, between two events: what only makes later work quick may begin.
    std::function<void()> onQuiet;

    /// Begins with the check.
    void start();
    /// Begins with the recount. In: the books are open.
    void startRecount() { m_totals.start(); }
    /// Waits for the check. Tells onDamage, and throws DatabaseLost, where it found something.
    void waitForCheck();
    /// Waits for the check, and does what is left of the recount: whoever shows or sorts by the customers'
    /// totals, or writes, can go on then. Throws as waitForCheck().
    void finish();

private:
    bool isChecked() const;
    void work(const QString& path, const QDate& today);
    void recounted();
    void tellDamage(const QString& fault);
    void tellNoBackup(const QString& fault);

    Connection& m_connection;
    QDate m_today;
    std::promise<QString> m_promise;
    std::shared_future<QString> m_found;
    std::promise<bool> m_recountPromise; // false: the program ends before it
    bool m_recountTold = false;
    TotalsJob m_totals;
    std::thread m_thread;
};

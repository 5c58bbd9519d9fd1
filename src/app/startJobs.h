#pragma once

#include <QDate>
#include <QObject>
#include <QString>

#include <functional>
#include <future>
#include <thread>

class Connection;

/// What a start does about its file behind the first window, one job after the other in a thread of its own:
/// the check of its structure, then the day's backup. The first write of the session waits for the check,
/// with the busy cursor.
class StartJobs : public QObject {
    Q_OBJECT

public:
    /// `connection` is open on the file, and nothing was written since a broken-off action was taken back.
    StartJobs(Connection& connection, const QDate& today);
    ~StartJobs() override;

    /// Told what the check found wrong with the file, as soon as it is known or a write waits for it.
    std::function<void(const QString& fault)> onDamage;
    /// Told why there is no backup of the day.
    std::function<void(const QString& fault)> onNoBackup;

    void start();
    /// Waits for the check. Tells onDamage, and throws DatabaseLost, where it found something.
    void waitForCheck();

private:
    void work(const QString& path, const QDate& today);
    void tellDamage(const QString& fault);

    Connection& m_connection;
    QDate m_today;
    std::promise<QString> m_promise;
    std::shared_future<QString> m_found;
    std::thread m_thread;
};

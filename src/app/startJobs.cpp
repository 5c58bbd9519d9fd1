#include "app/startJobs.h"

#include "data/immutableFile.h"
#include "maintenance/dailyBackup.h"
#include "recordset/connection.h"
#include "recordset/error.h"

#include <QCursor>
#include <QDateTime>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScopeGuard>

namespace {

constexpr int kMostChecks = 5;

/// What is wrong with the file; a finding is looked at again where another program wrote meanwhile.
QString checkedFault(const QString& path) {
    QString fault;
    for (int i = 0; i < kMostChecks; ++i) {
        const QDateTime before = QFileInfo(path).lastModified();
        fault = structureFault(path);
        if (fault.isEmpty() || QFileInfo(path).lastModified() == before)
            break;
    }
    return fault;
}

} // namespace

StartJobs::StartJobs(Connection& connection, const QDate& today)
    : m_connection(connection)
    , m_today(today)
    , m_found(m_promise.get_future()) {
    m_connection.beforeFirstWrite = [this] { waitForCheck(); };
}

StartJobs::~StartJobs() {
    m_connection.beforeFirstWrite = nullptr;
    if (m_thread.joinable())
        m_thread.join();
}

void StartJobs::start() {
    m_thread = std::thread([this, path = m_connection.path(), today = m_today] { work(path, today); });
}

void StartJobs::work(const QString& path, const QDate& today) {
    const QString fault = checkedFault(path);
    m_promise.set_value(fault);
    if (!fault.isEmpty()) {
        QMetaObject::invokeMethod(
            this, [this, fault] { tellDamage(fault); }, Qt::QueuedConnection);
        return;
    }
    const QString noBackup = backUpDaily(
        path, today, [this] { return m_connection.writeCount().load(); }, freeBytesOf);
    if (!noBackup.isEmpty())
        QMetaObject::invokeMethod(
            this,
            [this, noBackup] {
                if (onNoBackup)
                    onNoBackup(noBackup);
            },
            Qt::QueuedConnection);
}

void StartJobs::waitForCheck() {
    if (m_found.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        QGuiApplication::setOverrideCursor(QCursor(Qt::BusyCursor));
        const auto restore = qScopeGuard([] { QGuiApplication::restoreOverrideCursor(); });
        m_found.wait();
    }
    if (m_found.get().isEmpty())
        return;
    tellDamage(m_found.get());
    throw DatabaseLost(QStringLiteral("数据文件已损坏，没有写入。%1").arg(m_found.get()), Outcome::TakenBack,
                       true);
}

void StartJobs::tellDamage(const QString& fault) {
    if (onDamage)
        onDamage(fault);
}

#include "app/startJobs.h"

#include "data/immutableFile.h"
#include "data/session.h"
#include "maintenance/dailyBackup.h"
#include "recordset/connection.h"
#include "recordset/error.h"

#include <QCursor>
#include <QDateTime>
#include <QFileInfo>
#include <QGuiApplication>

#include <chrono>
#include <utility>

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

class BusyCursor {
public:
    BusyCursor() { QGuiApplication::setOverrideCursor(QCursor(Qt::BusyCursor)); }
    ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

} // namespace

StartJobs::StartJobs(Session& session, const QDate& today)
    : m_connection(session.cn)
    , m_today(today)
    , m_found(m_promise.get_future())
    , m_totals(session) {
    m_connection.beforeFirstWrite = [this] { finish(); };
    m_totals.mayWrite = [this] { return isChecked(); };
    m_totals.onEnd = [this](int changed) {
        recounted();
        if (onRecounted)
            onRecounted(changed);
    };
    m_totals.onFailure = [this](const QString& why) {
        recounted();
        if (onNotRecounted)
            onNotRecounted(why);
    };
}

StartJobs::~StartJobs() {
    m_connection.beforeFirstWrite = nullptr;
    if (!std::exchange(m_recountTold, true))
        m_recountPromise.set_value(false);
    if (m_thread.joinable())
        m_thread.join();
}

void StartJobs::start() {
    m_thread = std::thread([this, path = m_connection.path(), today = m_today] { work(path, today); });
}

void StartJobs::recounted() {
    m_recountTold = true;
    m_recountPromise.set_value(true);
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (onQuiet)
                onQuiet();
        },
        Qt::QueuedConnection);
}

void StartJobs::work(const QString& path, const QDate& today) {
    const QString fault = checkedFault(path);
    m_promise.set_value(fault);
    if (!fault.isEmpty()) {
        QMetaObject::invokeMethod(
            this, [this, fault] { tellDamage(fault); }, Qt::QueuedConnection);
        return;
    }
    if (!m_recountPromise.get_future().get())
        return;
    const QString noBackup = backUpDaily(
        path, today, [this] { return m_connection.writeCount().load(); }, freeBytesOf);
    if (!noBackup.isEmpty())
        QMetaObject::invokeMethod(
            this, [this, noBackup] { tellNoBackup(noBackup); }, Qt::QueuedConnection);
}

bool StartJobs::isChecked() const {
    return m_found.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

void StartJobs::waitForCheck() {
    if (!isChecked()) {
        const BusyCursor busy;
        m_found.wait();
    }
    if (m_found.get().isEmpty())
        return;
    tellDamage(m_found.get());
    throw DatabaseLost(QStringLiteral("数据文件已损坏，没有写入。%1").arg(m_found.get()), Outcome::TakenBack,
                       true);
}

void StartJobs::finish() {
    if (m_totals.isDone())
        return waitForCheck();
    const BusyCursor busy;
    m_totals.lookAhead(); // beside the check
    waitForCheck();
    m_totals.finish();
}

void StartJobs::tellDamage(const QString& fault) {
    if (onDamage)
        onDamage(fault);
}

void StartJobs::tellNoBackup(const QString& fault) {
    if (onNoBackup)
        onNoBackup(fault);
}

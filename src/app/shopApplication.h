#pragma once

#include <QApplication>

/// The event loop's dispatch is the one place that turns an uncaught failure into the report and the end of
/// the process, for events that run nested in a yield or a dialog too.
class ShopApplication : public QApplication {
    Q_OBJECT

public:
    using QApplication::QApplication;

    /// Named in the report.
    void setDatabasePath(const QString& path) { m_databasePath = path; }
    bool notify(QObject* receiver, QEvent* event) override;

private:
    QString m_databasePath;
};

#pragma once

#include <QApplication>

#include <functional>

/// The event loop's dispatch is the one place that turns an uncaught failure into the report and the end of
/// the process, for events that run nested in a yield or a dialog too; and an action that ended with nothing
/// of it done into a message.
class ShopApplication : public QApplication {
    Q_OBJECT

public:
    using QApplication::QApplication;

    /// Named in the report.
    void setDatabasePath(const QString& path) { m_databasePath = path; }
    /// Told what the user is to know of an action that ended; "" where he knows.
    std::function<void(const QString& text)> onActionEnded;
    /// The shop is open: a failure from now on is one of its work, not of its file.
    void setOpened() { m_opened = true; }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    QString m_databasePath;
    bool m_opened = false;
};

#pragma once

#include <QDialog>

class QPushButton;
class QTableWidget;

/// The report of a failure that ends the program, with the backups that can be put back.
class ReportDialog : public QDialog {
    Q_OBJECT

public:
    enum class Answer { End, Reopen, Restore };

    explicit ReportDialog(const QString& text);

    /// Offers to start anew.
    void offerReopen();
    /// Lists the daily backups beside the database, the latest chosen, with day, size, orders and customers;
    /// what they hold is counted one after the other while the dialog stands.
    void offerBackups(const QString& databasePath);

    Answer answer() const { return m_answer; }
    /// Path of the backup that is chosen in the list; empty without one.
    QString chosenBackup() const;

private:
    QPushButton* addButton(const QString& name, const QString& caption, Answer answer);
    void countNext(int row);

    class QVBoxLayout* m_column;
    class QHBoxLayout* m_buttons;
    QTableWidget* m_backups = nullptr;
    QPushButton* m_restore = nullptr;
    Answer m_answer = Answer::End;
};

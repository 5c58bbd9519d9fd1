#pragma once

#include "shell/commandTable.h"
#include "shell/viewHost.h"

#include <QElapsedTimer>
#include <QMainWindow>

#include <functional>
#include <map>
#include <optional>

class Prompts;
class QLabel;
class QListWidget;
class QMenu;
class QProgressBar;
class QToolButton;

/// The main window: menu, toolbar, the one-view area, and the one place where a command is turned into an
/// action on the view that is showing.
class MDIForm1 : public QMainWindow, public NoticePlace {
    Q_OBJECT

public:
    MDIForm1(Session& session, Prompts& prompts);

    ViewHost& host() { return m_host; }
    CommandTable& commands() { return m_commands; }

    /// Shows in the status bar how far a long work has come, from its half second on.
    void showProgress(const QString& work, int done, int total);
    void endProgress();
    /// Ends the process after the stop question; tests put their own end here.
    std::function<void()> endProcess;

    void statistic_Time() { dispatch(ViewOperation::Time_AA); }
    void search_A() { dispatch(ViewOperation::data_search); }
    void show_A();
    void order_A(qint16 direction);
    void print_A() { dispatch(ViewOperation::data_print); }
    void Tool_show_control();
    /// Asks whether to stop; on OK the process ends at once.
    void askExit();
    void showHelp();
    /// Runs a command by its name, errors passed over.
    void runCommand(const QString& name);

    void setVisible(bool visible) override;
    /// In the status bar.
    void takeNotice(const Notice& notice) override { m_notice->show(notice); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenu();
    void buildToolbar();
    void buildArea();
    /// Maximised where a window of that size does not fit onto the screen with its frame.
    void openAtSize(const QSize& wanted);
    void addLeaf(QMenu* menu, const QString& control, const QString& caption, const QString& command);
    void watchMarketingMenu(QMenu* menu);
    void restoreShowSource();
    bool dispatch(ViewOperation operation);
    void showUnsaved();

    Session& m_session;
    Prompts& m_prompts;
    QStackedWidget* m_area;
    ViewHost m_host;
    CommandTable m_commands;
    QLabel* m_caption = nullptr;
    QListWidget* m_list1 = nullptr;
    QListWidget* m_list2 = nullptr;
    QLabel* m_unsavedMark = nullptr;  // beside the caption: the boxes
    QLabel* m_unsavedCount = nullptr; // in the status bar: rows
    NoticeLine* m_notice = nullptr;
    QProgressBar* m_progress = nullptr;
    QElapsedTimer m_progressClock; // since the start, or since the bar was last painted
    std::map<int, QToolButton*> m_buttons;
    std::optional<QPoint> m_place;                // of the window that is hidden
    std::optional<ShowSource> m_sourceBeforeMenu; // set while "营销管理" is open or its command runs
};

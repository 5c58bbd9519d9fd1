#pragma once

#include "data/session.h"
#include "shell/view.h"
#include "suggest/suggestions.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>

#include <functional>

class QMainWindow;
struct ColumnsByUser;
class QStackedWidget;

/// Shows views by name in the main window's one-view area, and opens windows of their own beside it. Features
/// know each other by name alone.
class ViewHost : public QObject {
    Q_OBJECT

public:
    using ViewFactory = std::function<View*()>;
    using WindowFactory = std::function<TopWindow*()>;
    /// What happens to the main window while a window of its own is open.
    enum class MainWindow { Stays, Disabled, Hidden };

    ViewHost(Session& session, QMainWindow& main, QStackedWidget& area);
    /// Windows of their own have no parent: they go with their host.
    ~ViewHost() override;

    void registerView(const QString& name, ViewFactory factory) { m_views[name] = std::move(factory); }
    void registerWindow(const QString& name, WindowFactory factory) { m_windows[name] = std::move(factory); }
    /// A window that has nothing to do with the customers' totals: it waits for none.
    void registerPlain(const QString& name, WindowFactory factory) {
        registerWindow(name, std::move(factory));
        m_plain.insert(name);
    }
    /// A window of which one is open at a time: while it is, no other window prints, and asking for another
    /// report brings it to the front.
    void registerReport(const QString& name, WindowFactory factory) {
        registerWindow(name, std::move(factory));
        m_reports.insert(name);
    }
    QStringList viewNames() const { return m_views.keys(); }
    QStringList windowNames() const { return m_windows.keys(); }
    /// Whether a view or window of this name is there.
    bool knows(const QString& name) const { return m_views.contains(name) || m_windows.contains(name); }

    /// Puts a view into the one-view area and activates it; the one before is unloaded (statisticFm1 only
    /// hidden). A view that is in front already stays as it is.
    void show(const QString& name);
    /// Puts a view into the one-view area; one that is in front already is activated.
    void showOrActivate(const QString& name);
    /// What a menu command does to open a view: one that is in front already stays as it is, and only the
    /// filters of customers, lines and products are cleared.
    void showFromMenu(const QString& name);
    /// Opens a window of its own, or brings the open one to the front. Null for an unknown name.
    TopWindow* openWindow(const QString& name, MainWindow main);
    /// Opens the help window at the section about a view or window.
    void openHelp(const QString& about);
    /// What help was last asked about: the name of a view or window.
    const QString& helpAbout() const { return m_helpAbout; }
    /// Brings the main window back beside an open window that had it hidden or disabled.
    void bringBackMain(const QString& beside);
    /// Closes the windows whose figures a purchase would change, and all dialogs, as by their own way out.
    void closeForPurchase();
    /// Says in the status bar what was done, until something else is said or another view is shown.
    void say(const Notice& notice);
    /// The window of this name, null while it is closed.
    TopWindow* window(const QString& name) const { return m_open.value(name).window; }
    /// Text of a label or box on a view or window by the names of both; "" where it is not there.
    QString controlText(const QString& view, const QString& control) const;

    /// Gives showSource back to the view in front.
    void giveBackSource() { setShowSource(); }
    /// The same, unless a window is open that has set it for itself.
    void settleShowSource();

    /// Who sorts the rows of the view in front by a field, as its sort dialog does.
    using Sorter = std::function<void(const QString& field)>;
    void setSorter(Sorter sorter) { m_sorter = std::move(sorter); }
    void sortBy(const QString& field) {
        awaitFigures();
        if (m_sorter)
            m_sorter(field);
    }

    /// Runs before the customers' totals are shown elsewhere, sorted by, counted or written to a file; unset
    /// where they are right.
    std::function<void()> beforeFigures;
    void awaitFigures() {
        if (beforeFigures)
            beforeFigures();
    }

    View* active() const { return m_active; }
    bool isActive(const QString& name) const { return m_active && m_active->name() == name; }
    /// Unloads a view by its name; an unknown name does nothing.
    void Fm_Close(const QString& name);
    /// Hides a view by its name; an unknown name does nothing.
    void Fm_Visible_Not(const QString& name);

    Session& session() { return m_session; }
    /// What search boxes offer.
    Suggestions& suggestions() { return m_suggestions; }
    QMainWindow& mainWindow() { return m_main; }

Q_SIGNALS:
    /// A view was shown; the toolbar and the list of opened views follow.
    void viewShown(const QString& name);
    /// A window of its own has closed.
    void windowGone(const QString& name);

private:
    struct OpenWindow {
        QPointer<TopWindow> window;
        MainWindow main = MainWindow::Stays;
    };

    View* loaded(const QString& name);
    void leaveActive();
    void closeDialogs();
    void windowClosed(const QString& name);
    void restoreMain();
    bool anyOpen(MainWindow main) const;
    void setShowSource();
    TopWindow* openReport() const;
    void letPrint();
    /// Lets the grids of a view or window take up what the user has made of their columns in this run.
    void rememberColumns(const QWidget& window);

    Session& m_session;
    Suggestions m_suggestions;
    QMainWindow& m_main;
    QStackedWidget& m_area;
    QHash<QString, ViewFactory> m_views;
    QHash<QString, WindowFactory> m_windows;
    QSet<QString> m_reports;
    QSet<QString> m_plain;
    Sorter m_sorter;
    QHash<QString, std::shared_ptr<ColumnsByUser>> m_columns; // by names of window and grid, for this run
    QHash<QString, QPointer<View>> m_loaded;
    QHash<QString, OpenWindow> m_open;
    QPointer<View> m_active;
    QString m_helpAbout;
};

#include "shell/viewHost.h"

#include "controls/dataGrid.h"
#include "shell/windowPlace.h"

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QScreen>
#include <QStackedWidget>
#include <QWindow>

#include <algorithm>

ViewHost::ViewHost(Session& session, QMainWindow& main, QStackedWidget& area)
    : m_session(session)
    , m_suggestions(session.cn)
    , m_main(main)
    , m_area(area) {}

ViewHost::~ViewHost() {
    const QHash<QString, OpenWindow> open = std::exchange(m_open, {});
    // Hidden first, while each is still whole: a box that loses its focus asks its window about its text.
    for (const OpenWindow& each : open)
        if (each.window)
            each.window->hide();
    for (const OpenWindow& each : open)
        delete each.window.data();
    // Those that have closed wait for their turn still, and hold cursors of the session, which goes next.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

View* ViewHost::loaded(const QString& name) {
    if (View* view = m_loaded.value(name))
        return view;
    View* view = m_views.value(name)();
    m_loaded[name] = view;
    m_area.addWidget(view);
    try {
        view->load();
    } catch (...) {
        m_loaded.remove(name);
        delete view;
        throw;
    }
    rememberColumns(*view);
    return view;
}

void ViewHost::rememberColumns(const QWidget& window) {
    for (DataGrid* grid : window.findChildren<DataGrid*>()) {
        auto& columns = m_columns[window.objectName() + u'/' + grid->objectName()];
        if (!columns)
            columns = std::make_shared<ColumnsByUser>();
        grid->rememberColumns(columns);
    }
}

void ViewHost::show(const QString& name) {
    if (!m_views.contains(name) || isActive(name))
        return;
    awaitFigures();
    const bool fresh = m_loaded.value(name).isNull();
    View* view = loaded(name);
    say({}); // what stands there spoke of the view before
    m_area.setCurrentWidget(view);
    if (!fresh)
        for (DataGrid* grid : view->findChildren<DataGrid*>())
            grid->wake();
    closeDialogs();
    leaveActive();
    m_active = view;
    m_session.viewReturnState = QStringLiteral("Open");
    m_session.activeViewName = name;
    setShowSource();
    Q_EMIT viewShown(name);
    if (!fresh || !view->loadActivates())
        view->activate();
}

void ViewHost::showOrActivate(const QString& name) {
    if (!isActive(name))
        return show(name);
    m_session.viewReturnState = QStringLiteral("Open");
    m_session.activeViewName = name;
    m_active->activate();
}

void ViewHost::showFromMenu(const QString& name) {
    if (!isActive(name))
        return show(name);
    m_session.activeViewName = name;
    for (const RecordsetPtr& cursor : {m_session.clientTable, m_session.buyList, m_session.productTable})
        if (cursor->isOpen())
            cursor->clearFilter();
}

void ViewHost::leaveActive() {
    if (!m_active)
        return;
    // The one view that is only hidden: its analysis stays as it stands.
    if (m_active->name() == u"statisticFm1")
        Fm_Visible_Not(m_active->name());
    else
        Fm_Close(m_active->name());
}

void ViewHost::closeDialogs() {
    const QHash<QString, OpenWindow> open = m_open;
    for (const OpenWindow& each : open)
        if (each.window && each.window->isDialog())
            each.window->close();
}

void ViewHost::closeForPurchase() {
    const QHash<QString, OpenWindow> open = m_open;
    for (const OpenWindow& each : open)
        if (each.window && (each.window->isDialog() || each.window->closesForPurchase()))
            each.window->close();
}

void ViewHost::setShowSource() {
    if (const ShowSource source = m_active ? m_active->source() : ShowSource::None;
        source != ShowSource::None)
        m_session.showSource = source;
}

void ViewHost::settleShowSource() {
    const bool taken = std::any_of(m_open.begin(), m_open.end(), [](const OpenWindow& each) {
        return each.window && each.window->setsShowSource();
    });
    if (!taken)
        setShowSource();
}

void ViewHost::Fm_Close(const QString& name) {
    View* view = m_loaded.value(name);
    if (!view)
        return;
    view->leave();
    // The view may be unloaded from a handler of its own, so it goes only when that has returned; its grids
    // must hear nothing more of the shared cursors until then.
    for (DataGrid* grid : view->findChildren<DataGrid*>())
        grid->unbind();
    m_loaded.remove(name);
    m_area.removeWidget(view);
    if (m_active == view)
        m_active = nullptr;
    view->hide();
    view->setParent(nullptr); // gone from the window at once, whoever looks for its widgets
    view->deleteLater();
}

void ViewHost::Fm_Visible_Not(const QString& name) {
    View* view = m_loaded.value(name);
    if (!view)
        return;
    view->leave();
    view->hide();
    for (DataGrid* grid : view->findChildren<DataGrid*>())
        grid->rest();
}

TopWindow* ViewHost::openWindow(const QString& name, MainWindow main) {
    if (!m_windows.contains(name))
        return nullptr;
    TopWindow* open = window(name);
    if (!open && m_reports.contains(name))
        open = openReport();
    if (open) {
        open->shownAgain();
        open->raise();
        open->activateWindow();
        return open;
    }
    if (!m_plain.contains(name))
        awaitFigures();
    TopWindow* window = m_windows.value(name)();
    m_open[name] = {window, main};
    rememberColumns(*window);
    window->winId();
    const QRect screen = m_main.screen()->availableGeometry();
    if (window->takesPlaceOfMain())
        putInPlaceOf(*window, m_main);
    else
        placeWindow(*window, window->standsOverMain() ? m_main.geometry() : screen, screen);
    if (main == MainWindow::Hidden)
        m_main.hide();
    else
        window->windowHandle()->setTransientParent(m_main.windowHandle());
    if (main == MainWindow::Disabled)
        m_main.setEnabled(false);
    connect(window, &TopWindow::finished, this, [this, name] { windowClosed(name); });
    connect(window, &TopWindow::helpAsked, this, [this, name] { openHelp(name); });
    connect(window, &TopWindow::noticed, this, &ViewHost::say);
    window->show();
    letPrint();
    return window;
}

void ViewHost::openHelp(const QString& about) {
    m_helpAbout = about;
    openWindow(QStringLiteral("manualFm1"), MainWindow::Stays);
}

void ViewHost::say(const Notice& notice) {
    ::say(&m_main, notice);
}

TopWindow* ViewHost::openReport() const {
    for (const QString& name : m_reports)
        if (TopWindow* report = window(name))
            return report;
    return nullptr;
}

void ViewHost::letPrint() {
    const bool free = !openReport();
    for (const OpenWindow& each : m_open)
        if (each.window && each.window->prints())
            each.window->setEnabled(free);
}

bool ViewHost::anyOpen(MainWindow main) const {
    return std::any_of(m_open.begin(), m_open.end(),
                       [main](const OpenWindow& each) { return each.main == main; });
}

void ViewHost::restoreMain() {
    m_main.setEnabled(!anyOpen(MainWindow::Disabled));
    if (!anyOpen(MainWindow::Hidden))
        m_main.show();
    letPrint();
}

void ViewHost::bringBackMain(const QString& beside) {
    if (const auto open = m_open.find(beside); open != m_open.end())
        open->main = MainWindow::Stays;
    restoreMain();
}

void ViewHost::windowClosed(const QString& name) {
    const OpenWindow closed = m_open.take(name);
    restoreMain();
    if (closed.window && closed.window->setsShowSource())
        setShowSource();
    Q_EMIT windowGone(name);
}

QString ViewHost::controlText(const QString& view, const QString& control) const {
    const QWidget* form = m_loaded.value(view);
    if (!form)
        form = window(view);
    const QWidget* widget = form ? form->findChild<QWidget*>(control) : nullptr;
    if (const auto* box = qobject_cast<const QLineEdit*>(widget))
        return box->text();
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return label->text();
    return {};
}

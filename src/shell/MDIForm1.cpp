#include "shell/MDIForm1.h"

#include "controls/formParts.h"
#include "controls/prompts.h"
#include "shell/menuTree.h"
#include "shell/toolbarTable.h"
#include "shell/windowPlace.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

static void linkIcons() {
    Q_INIT_RESOURCE(icons);
}

MDIForm1::MDIForm1(Session& session, Prompts& prompts)
    : endProcess([] { QCoreApplication::exit(0); })
    , m_session(session)
    , m_prompts(prompts)
    , m_area(new QStackedWidget)
    , m_host(session, *this, *m_area) {
    linkIcons();
    setObjectName(QStringLiteral("MDIForm1"));
    setWindowTitle(QStringLiteral("衡商汇__衡商汇系统"));
    buildMenu();
    buildToolbar();
    buildArea();
    connect(&m_host, &ViewHost::viewShown, this, [this](const QString& name) {
        Tool_show_control();
        m_list2->addItem(name);
        View* view = m_host.active();
        m_caption->setText(view->caption());
        connect(view, &View::unsavedChanged, this, &MDIForm1::showUnsaved, Qt::UniqueConnection);
        connect(view, &View::wholeAsked, this, &MDIForm1::show_A, Qt::UniqueConnection);
        showUnsaved();
    });
    openAtSize({1280, 720});
}

void MDIForm1::openAtSize(const QSize& wanted) {
    const QSize screenSize = screen()->availableSize();
    resize(wanted.boundedTo(screenSize.shrunkBy(likelyFrame())));
    if (!fitsScreen(wanted, likelyFrame(), screenSize))
        setWindowState(windowState() | Qt::WindowMaximized);
}

void MDIForm1::setVisible(bool visible) {
    // A window manager gives a window that comes back another place, unless it names one.
    if (!visible && isVisible() && !isMaximized() && !isFullScreen())
        m_place = pos();
    else if (visible && m_place && !isVisible())
        move(*std::exchange(m_place, std::nullopt));
    QMainWindow::setVisible(visible);
}

void MDIForm1::buildMenu() {
    std::vector<QMenu*> path;
    const auto rows = menuTree();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const MenuRow& row = rows[i];
        const QString control = row.control.toString();
        const QString caption = row.caption.toString();
        path.resize(std::size_t(row.level));
        if (row.level == 0 && !row.command.isEmpty()) {
            // A leaf of the menu bar itself.
            QAction* action = menuBar()->addAction(caption);
            action->setObjectName(control);
            connect(action, &QAction::triggered, this,
                    [this, command = row.command.toString()] { runCommand(command); });
        } else if (row.caption.isEmpty()) {
            path.back()->addSeparator()->setObjectName(control);
        } else if (row.command.isEmpty()) {
            QMenu* menu = row.level == 0 ? menuBar()->addMenu(caption) : path.back()->addMenu(caption);
            menu->menuAction()->setObjectName(control);
            path.push_back(menu);
            if (control == u"data_input")
                watchMarketingMenu(menu);
        } else {
            addLeaf(path.back(), control, caption, row.command.toString());
        }
    }
}

void MDIForm1::addLeaf(QMenu* menu, const QString& control, const QString& caption, const QString& command) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(control);
    connect(action, &QAction::triggered, this, [this, command] { runCommand(command); });
}

void MDIForm1::watchMarketingMenu(QMenu* menu) {
    // Opening the menu works on the whole customer table; closing it without a command leaves all as it was.
    connect(menu, &QMenu::aboutToShow, this, [this] {
        m_sourceBeforeMenu = m_session.showSource;
        m_session.showSource = ShowSource::Clients;
    });
    connect(menu, &QMenu::aboutToHide, this, [this] {
        // A chosen command runs after the menu has closed, and before a queued call.
        QMetaObject::invokeMethod(
            this, [this] { restoreShowSource(); }, Qt::QueuedConnection);
    });
}

void MDIForm1::buildToolbar() {
    auto* bar = addToolBar(QStringLiteral("工具栏"));
    bar->setObjectName(QStringLiteral("CoolBar1"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    auto* buttons = new QWidget(bar);
    buttons->setObjectName(QStringLiteral("Toolbar1"));
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(4, 2, 4, 2);
    row->setSpacing(2);
    for (const ToolbarButton& each : toolbarButtons()) {
        auto* action = new QAction(QIcon(QStringLiteral(":/icons/%1.svg").arg(each.icon)),
                                   each.caption.toString(), this);
        action->setShortcut(QKeySequence(each.shortcut.toString()));
        action->setToolTip(QStringLiteral("%1（%2）").arg(each.caption, each.shortcut));
        auto* button = new QToolButton(buttons);
        button->setObjectName(QStringLiteral("Toolbar1(%1)").arg(each.index));
        button->setDefaultAction(action);
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setIconSize({26, 26});
        button->setAutoRaise(true);
        button->setAccessibleName(each.caption.toString());
        connect(action, &QAction::triggered, this, [this, press = each.press] { press(*this); });
        // The menu bar's window owns the shortcut, so that it works wherever the focus is.
        addAction(action);
        m_buttons[each.index] = button;
        row->addWidget(button);
    }
    bar->addWidget(buttons);
}

void MDIForm1::buildArea() {
    auto* centre = new QWidget(this);
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(10, 6, 10, 6);
    auto* picture = new QPushButton(centre);
    picture->setObjectName(QStringLiteral("Picture1"));
    picture->setFlat(true);
    picture->hide();
    connect(picture, &QPushButton::clicked, this, [this] {
        m_prompts.tell(QStringLiteral("欢迎使用《衡商汇系统》，") + QStringLiteral("请选择菜单，开始运行！"),
                       QStringLiteral("提示信息"));
    });
    m_caption = new QLabel(centre);
    m_caption->setObjectName(QStringLiteral("viewCaption"));
    m_list1 = new QListWidget(centre);
    m_list1->setObjectName(QStringLiteral("List1"));
    m_list1->hide();
    m_list2 = new QListWidget(centre);
    m_list2->setObjectName(QStringLiteral("List2"));
    m_list2->hide();
    // A view that needs more than a small screen has is scrolled; the window never outgrows the screen.
    auto* scroller = new QScrollArea(centre);
    scroller->setWidgetResizable(true);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setFocusPolicy(Qt::NoFocus);
    scroller->setWidget(m_area);
    m_unsavedMark = makeLabel(QStringLiteral("unsavedMark"), QStringLiteral("● 修改没有保存"), centre);
    m_unsavedMark->hide();
    auto* head = new QHBoxLayout;
    head->addWidget(m_caption);
    head->addWidget(m_unsavedMark);
    head->addStretch(1);
    column->addLayout(head);
    column->addWidget(scroller, 1);
    setCentralWidget(centre);
    m_notice = new NoticeLine(this);
    statusBar()->addWidget(m_notice, 1);
    m_unsavedCount = makeLabel(QStringLiteral("unsavedCount"), {}, this);
    m_unsavedCount->hide();
    statusBar()->addPermanentWidget(m_unsavedCount);
    m_progress = new QProgressBar(this);
    m_progress->setMaximumWidth(220);
    m_progress->hide();
    statusBar()->addPermanentWidget(m_progress);
}

void MDIForm1::showProgress(const QString& work, int done, int total) {
    constexpr qint64 worthShowing = 500; // milliseconds
    constexpr qint64 between = 100;
    if (done == 0)
        m_progressClock.start();
    if (m_progressClock.elapsed() < (m_progress->isVisible() ? between : worthShowing))
        return;
    m_progressClock.start();
    m_progress->setRange(0, total);
    m_progress->setValue(done);
    m_progress->setFormat(work + QStringLiteral(" %p%"));
    m_progress->show();
    m_progress->repaint();
}

void MDIForm1::endProgress() {
    m_progress->hide();
}

void MDIForm1::showUnsaved() {
    const View* view = m_host.active();
    const int rows = view ? view->unsavedRows() : 0;
    m_unsavedMark->setVisible(view && view->hasUnsavedBoxes());
    m_unsavedCount->setText(QStringLiteral("%1 条修改没有保存").arg(rows));
    m_unsavedCount->setVisible(rows > 0);
}

void MDIForm1::restoreShowSource() {
    if (m_sourceBeforeMenu)
        m_session.showSource = *std::exchange(m_sourceBeforeMenu, std::nullopt);
}

void MDIForm1::runCommand(const QString& name) {
    const View* before = m_host.active();
    m_sourceBeforeMenu.reset();
    m_commands.run(name);
    // A command that found nothing to show leaves the view in front as it was.
    if (m_host.active() == before)
        m_host.settleShowSource();
}

bool MDIForm1::dispatch(ViewOperation operation) {
    View* view = m_host.active();
    const ToolbarRow* row = view ? toolbarRow(view->name()) : nullptr;
    if (!row || !row->serves(operation) || !view->offers(operation))
        return false;
    view->run(operation);
    return true;
}

void MDIForm1::show_A() {
    View* view = m_host.active();
    m_session.viewReturnState = QStringLiteral("Open");
    if (dispatch(ViewOperation::data_whole_show))
        view->activate();
}

void MDIForm1::order_A(qint16 direction) {
    m_session.sortDirection = direction;
    dispatch(ViewOperation::data_order);
}

void MDIForm1::Tool_show_control() {
    const ToolbarRow* row = toolbarRow(m_session.activeViewName);
    if (!row)
        return;
    for (const ToolbarButton& each : toolbarButtons())
        if (each.operation)
            m_buttons[each.index]->defaultAction()->setEnabled(row->serves(*each.operation));
}

void MDIForm1::askExit() {
    if (m_prompts.confirm(QStringLiteral("确实要退出该系统吗？")))
        endProcess();
}

void MDIForm1::showHelp() {
    // A window beside this one lets its keys through.
    if (const auto* front = qobject_cast<TopWindow*>(QApplication::activeWindow()))
        return m_host.openHelp(front->objectName());
    m_host.openHelp(m_host.active() ? m_host.active()->name() : QString());
}

void MDIForm1::closeEvent(QCloseEvent* event) {
    event->ignore();
    askExit();
}

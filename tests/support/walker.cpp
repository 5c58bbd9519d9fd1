#include "support/walker.h"

#include "app/registry.h"
#include "support/startAtOnce.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QtTest/QTest>

namespace {

const QString& menuBarOfMain() {
    static const QString name = QStringLiteral("MDIForm1");
    return name;
}

/// One line of a text that may have more.
QString inOneLine(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\\n")).replace(u'\n', QStringLiteral("\\n"));
}

} // namespace

WalkedProgram::WalkedProgram(const QString& from, bool yes)
    : books(from) {
    answer(yes);
    main = std::make_unique<MDIForm1>(books.session(), prompts);
    main->endProcess = [this] { ended = true; };
    registerAll(*main, prompts);
    main->show();
    startAtOnce(*main);
    QCoreApplication::processEvents();
}

void WalkedProgram::answer(bool yes) {
    prompts.answerAnything({yes, QStringLiteral("1"), [this](const QString& title, const QString& what) {
                                return fileFor(title, what);
                            }});
}

WalkedProgram::~WalkedProgram() {
    main.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QString WalkedProgram::fileFor(const QString& title, const QString& what) {
    // A file to be written carries its ending in the proposal, one to be read in the title "打开.dbf文件".
    for (const char* kind : {"dbf", "txt", "xlsx", "xls", "mdb", "csv"})
        if (title.contains(u'.' + QString::fromLatin1(kind)))
            return QStringLiteral(SAMPLES "/import/customers.") + QString::fromLatin1(kind);
    return QStringLiteral("%1/%2.%3")
        .arg(books.session().appPath)
        .arg(++m_files)
        .arg(QFileInfo(what).suffix());
}

QMap<QString, TopWindow*> WalkedProgram::windows() const {
    QMap<QString, TopWindow*> open;
    for (QWidget* each : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<TopWindow*>(each); window && window->isVisible())
            open[window->objectName()] = window;
    return open;
}

QString WalkedProgram::activeView() const {
    return main->host().active() ? main->host().active()->name() : QString();
}

Walker::Walker(const WalkedShop& shop, bool yes)
    : m_shop(shop)
    , m_yes(yes)
    , m_pressables(yes) {
    makeTemplate();
}

void Walker::makeTemplate() {
    TestBooks books;
    m_shop.fill(books);
    books.session().cn.execute(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    QFile::copy(books.path(), m_folder.filePath(QStringLiteral("shop.mdb")));
}

void Walker::restart() {
    m_program.reset();
    m_program = std::make_unique<WalkedProgram>(m_folder.filePath(QStringLiteral("shop.mdb")), m_yes);
    leaveOn();
}

void Walker::leaveOn() {
    if (m_leavesOn && m_shop.leave && m_program->windows().isEmpty())
        m_shop.leave(*m_program);
    m_program->prompts.said.clear();
    m_losses = m_program->prompts.losses;
}

void Walker::walk() {
    restart();
    const QString first = m_program->activeView();
    reached = {menuBarOfMain(), first};
    m_waiting = {{menuBarOfMain(), {}}, {first, {}}};
    while (!m_waiting.empty()) {
        const Place place = m_waiting.front();
        m_waiting.pop_front();
        walkPlace(place);
    }
    for (const QString& name : m_shop.withoutRoad)
        walkPlace({name, {}});
    const ViewHost& host = m_program->main->host();
    viewNames = host.viewNames();
    for (const QString& name : viewNames + host.windowNames())
        if (!reached.contains(name) && !m_shop.withoutRoad.contains(name))
            unreached << name;
    unreached.sort();
    m_program.reset();
}

void Walker::walkPlace(const Place& place) {
    m_leavesOn = true;
    restart();
    if (!goTo(place)) {
        m_at = place.road.empty() ? Step{place.name, {}} : place.road.back();
        return fault(QStringLiteral("the way to %1 is not found again").arg(place.name));
    }
    // What is confirmed can be stuck in more ways: then everything is pressed in the other order, too, in one
    // window of each class.
    if (!pressAll(place, false) || (m_yes && isNewClass(place.name) && !pressAll(place, true)))
        fault(QStringLiteral("no way back to ") + place.name);
}

bool Walker::isNewClass(const QString& place) {
    const TopWindow* window = m_program->windows().value(place);
    if (!window)
        return true;
    const auto known = m_classes.size();
    m_classes.insert(window->metaObject()->className());
    return m_classes.size() > known;
}

bool Walker::pressAll(const Place& place, bool backwards) {
    QSet<QString> pressed;
    for (;;) {
        if (!isThere(place.name) && !goTo(place))
            return false;
        const std::optional<Pressable> control = next(place.name, pressed, backwards);
        if (!control)
            return true;
        pressed.insert(control->name);
        if (control->name.startsWith(u"Toolbar1"))
            leaveOn(); // a press before may have taken it off
        pressAndLook(place, *control);
    }
}

std::optional<Pressable> Walker::next(const QString& place, const QSet<QString>& pressed, bool backwards) {
    std::optional<Pressable> found;
    for (Pressable& each : pressables(place)) {
        // The menu is the same everywhere: once in every view is enough.
        if (pressed.contains(each.name) || (backwards && each.name.startsWith(u"菜单")))
            continue;
        found = std::move(each);
        if (!backwards)
            break;
    }
    return found;
}

bool Walker::isThere(const QString& place) const {
    const auto open = m_program->windows();
    if (const auto window = open.find(place); window != open.end())
        return (*window)->isEnabled();
    const MDIForm1& main = *m_program->main;
    if (!main.isVisible() || !main.isEnabled() || !open.isEmpty())
        return false;
    // The menu is pressed in the view that the program starts with.
    return m_program->activeView() == (place == menuBarOfMain() ? reached[1] : place);
}

bool Walker::goTo(const Place& place) {
    closeAllBut({});
    checkWayOn();
    if (follow(place))
        return true;
    restart();
    if (follow(place))
        return true;
    if (!m_shop.leave)
        return false;
    // It was found behind a press that took off again what had been left on.
    m_leavesOn = false;
    restart();
    return follow(place);
}

bool Walker::follow(const Place& place) {
    const auto closeBeside = [this](const QString& at) {
        if (!m_program->windows().contains(at))
            closeAllBut({});
    };
    for (const Step& step : place.road) {
        closeBeside(step.place);
        if (!press(step.place, step.control))
            return false;
        leaveOn();
    }
    closeBeside(place.name);
    if (m_shop.withoutRoad.contains(place.name) && !isThere(place.name)) {
        m_program->main->host().openWindow(place.name, ViewHost::MainWindow::Stays);
        QCoreApplication::processEvents();
    }
    return isThere(place.name);
}

std::vector<Pressable> Walker::pressables(const QString& place) {
    MDIForm1& main = *m_program->main;
    if (place == menuBarOfMain())
        return Pressables::inMenuBar(main);
    if (TopWindow* window = m_program->windows().value(place)) {
        std::vector<Pressable> all = m_pressables.in(*window, place);
        all.push_back({QStringLiteral("Esc"), [window] { QTest::keyClick(window, Qt::Key_Escape); }});
        all.push_back({QStringLiteral("关闭框"), [window] { window->close(); }});
        return all;
    }
    if (m_program->activeView() != place)
        return {};
    std::vector<Pressable> all = m_pressables.in(*main.host().active(), place);
    for (Pressable& each : m_pressables.in(*main.findChild<QWidget*>(QStringLiteral("Toolbar1")), place))
        all.push_back(std::move(each));
    if (!m_shop.menuEverywhere || !m_yes)
        return all;
    // The whole menu in the view that the program starts with, a quarter of it in every other one.
    constexpr std::size_t quarters = 4;
    std::vector<Pressable> menu = Pressables::inMenuBar(main);
    for (std::size_t i = std::size_t(reached.indexOf(place)) % quarters; i < menu.size(); i += quarters)
        all.push_back(std::move(menu[i]));
    return all;
}

bool Walker::press(const QString& place, const QString& control) {
    for (const Pressable& each : pressables(place))
        if (each.name == control) {
            press(each);
            return true;
        }
    return false;
}

void Walker::press(const Pressable& control) {
    try {
        control.press();
        QCoreApplication::processEvents();
    } catch (const std::exception& thrown) {
        fault(QStringLiteral("exception ") + QString::fromUtf8(thrown.what()));
    }
}

void Walker::pressAndLook(const Place& place, const Pressable& control) {
    const auto open = m_program->windows();
    const Seen before{QSet<QString>(open.keyBegin(), open.keyEnd()), m_program->activeView()};
    m_at = {place.name, control.name};
    m_program->main->host().say({});
    press(control);
    QStringList words = outcome(before);
    checkForeignWindows();
    checkSomethingUsable();
    meet(before, place, m_at);
    closeAllBut(before.windows);
    takeSaid(words);
    checkWayOn();
    log << QStringLiteral("%1 -> %2").arg(at(), words.join(QStringLiteral("; ")));
    if (m_yes && m_program->prompts.losses != m_losses)
        restart(); // what was deleted would be missing for the next control
}

QStringList Walker::outcome(const Seen& before) {
    QStringList words;
    const auto open = m_program->windows();
    for (auto each = open.begin(); each != open.end(); ++each)
        if (!before.windows.contains(each.key()))
            words << QStringLiteral("opens ") + each.key();
    for (const QString& each : before.windows)
        if (!open.contains(each))
            words << QStringLiteral("closes ") + each;
    if (m_program->activeView() != before.view)
        words << QStringLiteral("shows ") + m_program->activeView();
    if (const QString status = m_program->main->findChild<QLabel*>(QStringLiteral("noticeText"))->text();
        !status.isEmpty()) {
        words << QStringLiteral("status: ") + status;
        if (status.contains(QStringLiteral("还没有做好")))
            said.insert(status, at());
    }
    if (std::exchange(m_program->ended, false))
        words << QStringLiteral("ends the program");
    takeSaid(words);
    return words;
}

void Walker::takeSaid(QStringList& words) {
    for (const ScriptedPrompts::Said& each : std::exchange(m_program->prompts.said, {})) {
        const QString text = QStringLiteral("%1 [%2] %3").arg(each.kind, each.title, inOneLine(each.text));
        words << text;
        if (!said.contains(text))
            said.insert(text, at());
    }
}

void Walker::meet(const Seen& before, const Place& from, const Step& step) {
    QStringList names = m_program->windows().keys();
    if (m_program->activeView() != before.view)
        names.prepend(m_program->activeView());
    for (const QString& name : names) {
        if (name.isEmpty() || before.windows.contains(name) || reached.contains(name))
            continue;
        reached << name;
        m_waiting.push_back({name, from.road});
        m_waiting.back().road.push_back(step);
    }
}

void Walker::closeAllBut(const QSet<QString>& kept) {
    for (const QString& name : m_program->windows().keys())
        if (!kept.contains(name))
            close(name);
}

void Walker::close(const QString& window) {
    const auto closed = [this, &window](bool yes) {
        m_program->answer(yes);
        if (TopWindow* open = m_program->windows().value(window))
            open->close();
        QCoreApplication::processEvents();
        m_program->answer(m_yes);
        return !m_program->windows().contains(window);
    };
    // A window that asks may be kept open by the answer; the other one must let it go.
    if (!closed(m_yes) && !closed(!m_yes))
        fault(QStringLiteral("%1 cannot be closed").arg(window));
}

void Walker::checkWayOn() {
    const MDIForm1& main = *m_program->main;
    if (m_program->activeView().isEmpty())
        fault(QStringLiteral("no view is left"));
    if (!m_program->windows().isEmpty())
        return;
    if (!main.isVisible())
        fault(QStringLiteral("the main window stays hidden"));
    if (!main.isEnabled())
        fault(QStringLiteral("the main window stays disabled"));
}

void Walker::checkForeignWindows() {
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (!each->isVisible() || each == m_program->main.get() || qobject_cast<TopWindow*>(each))
            continue;
        if (!qobject_cast<QMenu*>(each) && each->windowType() != Qt::ToolTip)
            fault(QStringLiteral("%1 “%2” is open")
                      .arg(QString::fromLatin1(each->metaObject()->className()), each->windowTitle()));
        each->close();
    }
}

void Walker::checkSomethingUsable() {
    bool usable = m_program->main->isVisible() && m_program->main->isEnabled();
    for (const TopWindow* each : m_program->windows())
        usable = usable || each->isEnabled();
    if (!usable)
        fault(QStringLiteral("nothing takes input"));
}

void Walker::fault(const QString& what) {
    faults << at() + QStringLiteral(": ") + what;
}

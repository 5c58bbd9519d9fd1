#include "controls/scanBurst.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopeGuard>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

constexpr qint64 kBetweenEnters = 50; // milliseconds

bool isEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// When the key was pressed: keys that waited for a busy program come all at once.
qint64 timeOf(const QKeyEvent& event, const std::function<qint64()>& now) {
    return event.timestamp() > 0 ? qint64(event.timestamp()) : now();
}

} // namespace

void ScanPace::add(QChar sign, qint64 time) {
    if (m_signs.isEmpty() || time - m_last > kGap)
        *this = {};
    if (m_signs.isEmpty())
        m_first = time;
    m_signs += sign;
    m_last = time;
    if (m_signs.size() == kLeastSigns)
        m_reader = time - m_first <= kWithin;
}

ScanBurst::ScanBurst(QLineEdit* box)
    : QObject(box)
    , now([this] { return m_clock.elapsed(); })
    , m_box(box) {
    m_clock.start();
    m_end.setSingleShot(true);
    connect(&m_end, &QTimer::timeout, this, &ScanBurst::finish);
    box->installEventFilter(this);
    // Another line has come into the box: its signs are no part of a burst before.
    connect(box, &QLineEdit::textChanged, this, [this] {
        if (!m_inSign && !m_pace.isReader())
            m_pace.end();
    });
}

bool ScanBurst::isHeldBack(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::Shortcut:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

bool ScanBurst::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_box)
        return m_waiting && watched->isWidgetType() && isHeldBack(event->type());
    if (event->type() == QEvent::FocusOut && !m_pace.isReader())
        m_pace.end();
    if (event->type() != QEvent::KeyPress)
        return false;
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->text().size() == 1 && key->text().front().isPrint())
        return take(key);
    if (!m_pace.isReader()) {
        m_pace.end();
        return m_waiting;
    }
    if (isEnter(*key))
        m_end.start(0);
    return true;
}

/// True where the box is not to have the sign, or has it by now.
bool ScanBurst::take(QKeyEvent* event) {
    const QString before = m_box->text();
    m_pace.add(event->text().front(), timeOf(*event, now));
    if (m_pace.begins())
        m_before = before;
    if (m_pace.isReader()) {
        m_end.start(int(ScanPace::kGap));
        return true;
    }
    if (m_waiting)
        return true;
    const QScopedValueRollback inSign(m_inSign, true);
    static_cast<QObject*>(m_box)->event(event);
    return true;
}

bool ScanBurst::goesOn() {
    if (!m_inSign || m_waiting)
        return m_pace.isReader();
    const QScopedValueRollback waiting(m_waiting, true);
    qApp->installEventFilter(this);
    const auto remove = qScopeGuard([this] { qApp->removeEventFilter(this); });
    for (qsizetype signs = -1; signs < m_pace.signs().size() && !m_pace.isReader();) {
        signs = m_pace.signs().size();
        QEventLoop loop;
        QTimer::singleShot(int(ScanPace::kGap), &loop, &QEventLoop::quit);
        loop.exec();
    }
    if (!m_pace.isReader())
        m_pace.end();
    return m_pace.isReader();
}

void ScanBurst::finish() {
    if (m_waiting)
        return m_end.start(int(ScanPace::kGap)); // whoever waits takes his own sign back first
    const QString signs = m_pace.signs();
    m_pace.end();
    m_box->setText(m_before);
    Q_EMIT scanned(signs);
}

EnterGuard::EnterGuard(QObject* parent, const QList<QLineEdit*>& boxes)
    : QObject(parent)
    , now([this] { return m_clock.elapsed(); })
    , m_boxes(boxes) {
    m_clock.start();
    qApp->installEventFilter(this);
}

bool EnterGuard::eventFilter(QObject* watched, QEvent* event) {
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::InputMethod)
        m_last.reset();
    // What a widget leaves alone is offered to those around it: only the first offer counts.
    if (event->type() != QEvent::KeyPress || !widget || widget->window()->focusWidget() != widget)
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (!isEnter(*key)) {
        m_last.reset();
        return false;
    }
    const qint64 time = timeOf(*key, now);
    if (m_last && time - *m_last < kBetweenEnters && time >= *m_last)
        return true;
    m_last.reset();
    if (std::find(m_boxes.begin(), m_boxes.end(), widget) == m_boxes.end())
        return false;
    if (key->isAutoRepeat())
        return true;
    m_last = time;
    return false;
}

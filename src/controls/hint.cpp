#include "controls/hint.h"

#include <QEvent>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr int kShownFor = 6000; // milliseconds

} // namespace

// No tool tip: that goes at the next change of the focus, and a cell's editor closes just then.
Hint::Hint(QWidget* window)
    : QLabel(window) {
    setObjectName(QStringLiteral("hint"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setPalette(QToolTip::palette());
    setAutoFillBackground(true);
    setFrameShape(QFrame::Box);
    setMargin(4);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &QWidget::hide);
}

void Hint::show(QWidget* beside, const QRect& place, const QString& text) {
    if (m_beside)
        m_beside->removeEventFilter(this);
    m_beside = beside;
    m_beside->installEventFilter(this);
    setText(text);
    adjustSize();
    const QRect whole = parentWidget()->rect();
    const QPoint below = beside->mapTo(parentWidget(), place.bottomLeft() + QPoint(0, 2));
    const QPoint above = beside->mapTo(parentWidget(), place.topLeft()) - QPoint(0, height() + 2);
    const QPoint at = below.y() + height() <= whole.height() ? below : above;
    move(std::max(0, std::min(at.x(), whole.width() - width())), std::max(0, at.y()));
    raise();
    QLabel::show();
    m_timer.start(kShownFor);
}

bool Hint::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_beside && (event->type() == QEvent::Hide || event->type() == QEvent::Destroy))
        hide();
    return QLabel::eventFilter(watched, event);
}

QString tooLongHint() {
    return QStringLiteral("文字太长，只显示开头；不能在这里修改，原文保持不变");
}

void showHint(QWidget* beside, const QString& text) {
    showHint(beside, beside->rect(), text);
}

void showHint(QWidget* beside, const QRect& place, const QString& text) {
    QWidget* window = beside->window();
    auto* hint = window->findChild<Hint*>(QStringLiteral("hint"), Qt::FindDirectChildrenOnly);
    (hint ? hint : new Hint(window))->show(beside, place, text);
}

#include "controls/offerList.h"

#include "controls/recordBoxes.h"

#include <QInputMethodEvent>
#include <QKeyEvent>

#include <algorithm>

namespace {

constexpr int kId = Qt::UserRole;
constexpr int kBoxText = Qt::UserRole + 1;
constexpr int kRoom = 8; // pixels around a text

} // namespace

OfferList::OfferList(RecordBox* box, QWidget* form, Source source)
    : QListWidget(form)
    , m_box(box)
    , m_source(std::move(source)) {
    setObjectName(box->objectName() + QStringLiteral("_offers"));
    setAccessibleName(QStringLiteral("候选"));
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
    setUniformItemSizes(true);
    setAutoFillBackground(true);
    hide();
    box->installEventFilter(this);
    connect(box, &QLineEdit::textEdited, this, &OfferList::offer);
    connect(this, &QListWidget::itemClicked, this, &OfferList::take);
}

void OfferList::offer(const QString& typed) {
    clear();
    for (const Offer& each : m_source(typed)) {
        auto* item = new QListWidgetItem(each.text, this);
        item->setSizeHint(
            {fontMetrics().horizontalAdvance(each.text) + kRoom, fontMetrics().height() + kRoom});
        item->setData(kId, each.id);
        item->setData(kBoxText, each.boxText);
    }
    setVisible(count() > 0);
    if (count() > 0)
        place();
}

void OfferList::place() {
    const QPoint corner = m_box->mapTo(parentWidget(), QPoint(0, m_box->height()));
    const int height = count() * sizeHintForRow(0) + 2 * frameWidth();
    const int width = std::max(m_box->width(), sizeHintForColumn(0) + 2 * frameWidth());
    setGeometry(corner.x(), corner.y(), std::min(width, parentWidget()->width() - corner.x()),
                std::min(height, parentWidget()->height() - corner.y()));
    raise();
}

void OfferList::take(const QListWidgetItem* item) {
    const quint32 id = item->data(kId).toUInt();
    m_box->setText(item->data(kBoxText).toString());
    m_box->selectAll();
    hide();
    Q_EMIT taken(id);
}

bool OfferList::keyPressed(int key) {
    switch (key) {
    case Qt::Key_Down:
        setCurrentRow(std::min(currentRow() + 1, count() - 1));
        return true;
    case Qt::Key_Up:
        if (currentRow() < 0)
            return false;
        setCurrentRow(currentRow() - 1); // above the first one nothing is chosen any more
        return true;
    case Qt::Key_Escape:
        hide();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (currentItem()) {
            take(currentItem());
            return true;
        }
        hide();
        return false;
    default:
        return false;
    }
}

bool OfferList::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_box)
        return QListWidget::eventFilter(watched, event);
    if (!isVisible() || m_box->isComposing())
        return false;
    const auto* key = dynamic_cast<QKeyEvent*>(event);
    const bool plain = key && (key->modifiers() & ~Qt::KeypadModifier) == 0;
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // Escape is the list's before it is anybody's shortcut.
        if (plain && key->key() == Qt::Key_Escape)
            event->accept();
        return plain && key->key() == Qt::Key_Escape;
    case QEvent::KeyPress:
        return plain && keyPressed(key->key());
    case QEvent::InputMethod:
        if (!static_cast<QInputMethodEvent*>(event)->preeditString().isEmpty())
            hide();
        return false;
    case QEvent::FocusOut:
    case QEvent::Hide:
        hide();
        return false;
    default:
        return false;
    }
}

#include "controls/recordBoxes.h"

#include "controls/hint.h"
#include "controls/numberLimit.h"
#include "recordset/shownText.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>

void RecordBox::setText(const QString& text) {
    const qsizetype most = std::min(qsizetype(maxLength()), kShownLetters);
    const bool beyond = text.size() > most;
    if (beyond || m_beyond)
        setReadOnly(beyond);
    m_beyond = beyond ? std::optional(text) : std::nullopt;
    QLineEdit::setText(beyond ? shownText(text, most - 1) : text);
}

void RecordBox::keyPressEvent(QKeyEvent* event) {
    // An Enter that ends a composition is none for the box.
    if (m_composing && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        return QGuiApplication::inputMethod()->commit();
    const bool changes = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete ||
                         (!event->text().isEmpty() && event->text().front().isPrint());
    if (m_beyond && changes)
        showHint(this, tooLongHint());
    QLineEdit::keyPressEvent(event);
}

void RecordBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    // A menu of the box gives the focus back before its command runs on what is selected.
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::MenuBarFocusReason)
        return;
    selectAll();
    m_selectOnPress = event->reason() == Qt::MouseFocusReason;
}

void RecordBox::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    // The press that brought the focus would take the selection away again.
    if (std::exchange(m_selectOnPress, false))
        selectAll();
}

void RecordBox::inputMethodEvent(QInputMethodEvent* event) {
    m_composing = !event->preeditString().isEmpty();
    QLineEdit::inputMethodEvent(event);
}

RecordBoxes::RecordBoxes(const QString& name, const QStringList& captions, std::optional<BoxKeys> keys,
                         QWidget* parent)
    : QObject(parent)
    , m_captions(captions)
    , m_keys(keys) {
    for (int i = 0; i < captions.size(); ++i) {
        auto* box = new RecordBox(parent);
        box->setObjectName(QStringLiteral("%1(%2)").arg(name).arg(i));
        box->setAccessibleName(QString(captions[i]).remove(u' '));
        box->installEventFilter(this);
        connect(box, &QLineEdit::textEdited, this, [this, i] { Q_EMIT edited(i); });
        connect(box, &QLineEdit::textChanged, this, [this, i] { Q_EMIT changed(i); });
        m_boxes.push_back(box);
    }
}

QStringList RecordBoxes::texts() const {
    QStringList texts;
    for (const RecordBox* box : m_boxes)
        texts << box->text();
    return texts;
}

void RecordBoxes::setTexts(const QStringList& texts) {
    for (int i = 0; i < count(); ++i) {
        setText(i, texts.value(i));
        box(i)->setCursorPosition(0);
    }
}

void RecordBoxes::clear() {
    for (RecordBox* box : m_boxes)
        box->clear();
}

void RecordBoxes::focus(int index) {
    box(index)->setFocus(Qt::OtherFocusReason);
    box(index)->selectAll(); // also where the window is not in front yet
}

void RecordBoxes::limitToNumbers(const std::vector<int>& indices) {
    alignRight(indices);
    for (const int index : indices) {
        RecordBox* limited = box(index);
        limited->setValidator(new NumberLimit(limited));
        connect(limited, &QLineEdit::inputRejected, this, [limited] { showHint(limited, tooLargeHint()); });
    }
}

void RecordBoxes::setNumberCheck(int index, std::function<bool(const QString&)> check) {
    if (auto* limit = qobject_cast<NumberLimit*>(const_cast<QValidator*>(box(index)->validator())))
        limit->setCheck(std::move(check));
}

void RecordBoxes::alignRight(const std::vector<int>& indices) {
    for (const int index : indices)
        box(index)->setAlignment(Qt::AlignRight);
}

void RecordBoxes::layOut(QGridLayout* grid, int columns, int firstRow) const {
    const int rows = (count() + columns - 1) / columns;
    for (int i = 0; i < count(); ++i)
        place(grid, i, firstRow + i % rows, i / rows * 2);
}

void RecordBoxes::place(QGridLayout* grid, int index, int row, int column, int columnSpan) const {
    auto* caption = new QLabel(m_captions[index], box(index)->parentWidget());
    caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    caption->setBuddy(box(index));
    grid->addWidget(caption, row, column);
    grid->addWidget(box(index), row, column + 1, 1, columnSpan);
}

bool RecordBoxes::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !m_keys)
        return QObject::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const auto* source = static_cast<RecordBox*>(watched);
    if (source->isComposing())
        return false;
    const int index = int(std::find(m_boxes.begin(), m_boxes.end(), source) - m_boxes.begin());
    const bool control = key->modifiers().testFlag(Qt::ControlModifier);
    const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    int step = 0;
    if (enter || (control && key->key() == m_keys->on))
        step = 1;
    else if (control && key->key() == m_keys->back)
        step = -1;
    if (step == 0)
        return QObject::eventFilter(watched, event);
    focus((index + step + count()) % count());
    return true;
}

#include "shell/view.h"

#include "controls/formParts.h"
#include "controls/keyCommands.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

View::View(const QString& name, const QString& caption, QWidget* parent)
    : QWidget(parent) {
    setObjectName(name);
    setWindowTitle(caption);
    setAccessibleName(caption);
}

void View::setSearchBox(QLineEdit* box) {
    setFirstFocus(box);
    auto* keys = new KeyCommands(this);
    keys->focus(QKeySequence::Find, box);
}

void View::run(ViewOperation operation) {
    if (const auto found = m_operations.find(operation); found != m_operations.end())
        found->second();
}

void View::setUnsavedRows(int rows) {
    if (std::exchange(m_unsavedRows, rows) != rows)
        Q_EMIT unsavedChanged();
}

void View::setUnsavedBoxes(bool unsaved) {
    if (std::exchange(m_unsavedBoxes, unsaved) != unsaved)
        Q_EMIT unsavedChanged();
}

void View::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // The main window that comes back has its focus still.
    if (const QWidget* focused = window()->focusWidget(); focused && isAncestorOf(focused))
        return;
    QWidget* first = m_firstFocus ? m_firstFocus.data() : findChild<QTableView*>();
    if (first)
        first->setFocus(Qt::OtherFocusReason);
}

TopWindow::TopWindow(const QString& name, const QString& caption) {
    setObjectName(name);
    setWindowTitle(caption);
    setAttribute(Qt::WA_DeleteOnClose);
}

void TopWindow::takeNotice(const Notice& notice) {
    if (!m_notice)
        if (auto* column = qobject_cast<QVBoxLayout*>(layout()))
            column->addWidget(m_notice = new NoticeLine(this));
    if (m_notice)
        m_notice->show(notice);
    Q_EMIT noticed(notice);
}

void TopWindow::finish() {
    m_finishing = true;
    if (!m_closing)
        close();
}

void TopWindow::closeEvent(QCloseEvent* event) {
    if (!m_finishing) {
        m_closing = true;
        wayOut();
        m_closing = false;
    }
    event->setAccepted(m_finishing);
    if (m_finishing)
        Q_EMIT finished();
}

void TopWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1)
        Q_EMIT helpAsked();
    else if (event->key() == Qt::Key_Escape && endsByEscape())
        close();
    else
        QWidget::keyPressEvent(event);
}

Dialog::Dialog(const QString& name, const QString& caption)
    : TopWindow(name, caption) {
    giveDialogFrame(this);
}

void Dialog::keyPressEvent(QKeyEvent* event) {
    if (m_default && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        m_default->click();
    else
        TopWindow::keyPressEvent(event);
}

#include "shell/view.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>

View::View(const QString& name, const QString& caption, QWidget* parent)
    : QWidget(parent) {
    setObjectName(name);
    setWindowTitle(caption);
    setAccessibleName(caption);
}

void View::run(ViewOperation operation) {
    if (const auto found = m_operations.find(operation); found != m_operations.end())
        found->second();
}

TopWindow::TopWindow(const QString& name, const QString& caption) {
    setObjectName(name);
    setWindowTitle(caption);
    setAttribute(Qt::WA_DeleteOnClose);
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

void Dialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else if (m_default && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        m_default->click();
    else
        TopWindow::keyPressEvent(event);
}

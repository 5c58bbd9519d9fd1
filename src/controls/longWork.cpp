#include "controls/longWork.h"

#include "controls/formParts.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

void workAfterPainting(const QString& text, const std::function<void(const Steps&)>& work) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    LongWork progress(text, 0);
    work([&progress](int done, int total) { progress.stepOf(done, total); });
}

LongWork::LongWork(const QString& text, int steps)
    : m_window(QApplication::activeWindow()) {
    m_window.setObjectName(QStringLiteral("longWork"));
    giveDialogFrame(&m_window);
    m_window.setWindowTitle(QStringLiteral("请稍候"));
    m_window.setWindowModality(Qt::ApplicationModal);
    m_bar = new QProgressBar(&m_window);
    m_bar->setRange(0, steps);
    m_bar->setMinimumWidth(280);
    m_stop = makeButton(QStringLiteral("stop"), QStringLiteral("停止"), &m_window);
    QObject::connect(m_stop, &QPushButton::clicked, &m_window, &QDialog::reject);
    QObject::connect(&m_window, &QDialog::rejected, &m_window, [this] { m_stopped = true; });
    auto* column = new QVBoxLayout(&m_window);
    column->addWidget(new QLabel(text, &m_window));
    column->addWidget(m_bar);
    column->addWidget(m_stop, 0, Qt::AlignRight);
    m_since.start();
}

void LongWork::show() {
    if (!m_window.isVisible() && m_since.elapsed() >= kPatience)
        m_window.show();
    if (m_window.isVisible())
        QCoreApplication::processEvents();
}

bool LongWork::step(int done) {
    m_bar->setValue(done);
    if (!m_stopped)
        show();
    return !m_stopped;
}

void LongWork::stepOf(int done, int total) {
    m_stop->hide();
    m_bar->setMaximum(total);
    m_bar->setValue(done);
    show();
}

#include "controls/longWork.h"

LongWork::LongWork(const QString& text, int steps)
    : m_window(text, QStringLiteral("停止"), 0, steps) {
    m_window.setWindowTitle(QStringLiteral("请稍候"));
    m_window.setMinimumDuration(500);
    m_window.setWindowModality(Qt::ApplicationModal);
    m_window.setAutoReset(false);
}

bool LongWork::step(int done) {
    m_window.setValue(done);
    return !m_window.wasCanceled();
}

void LongWork::stepOf(int done, int total) {
    m_window.setCancelButton(nullptr);
    m_window.setMaximum(total);
    m_window.setValue(done);
}

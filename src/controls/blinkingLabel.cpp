#include "controls/blinkingLabel.h"

#include "controls/formParts.h"

namespace {
// Colour numbers are in the order blue, green, red.
constexpr int kLight = 0xFFC0C0;
constexpr int kDark = 0x93AEFF;
constexpr int kMilliseconds = 600;
} // namespace

BlinkingLabel::BlinkingLabel(const QString& name, const QString& text, const QString& timerName,
                             QWidget* parent)
    : QLabel(text, parent)
    , m_timer(new QTimer(parent)) {
    setObjectName(name);
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
    hide();
    m_timer->setObjectName(timerName);
    m_timer->setInterval(kMilliseconds);
    connect(m_timer, &QTimer::timeout, this, &BlinkingLabel::blink);
}

void BlinkingLabel::start() {
    show();
    m_timer->start();
}

void BlinkingLabel::stop() {
    hide();
    m_timer->stop();
}

void BlinkingLabel::blink() {
    setTextColour(this, colourOfNumber(flashPhase == 1 ? kLight : kDark));
    flashPhase = flashPhase == 1 ? 2 : 1;
}

#include "controls/filterChip.h"

#include "controls/formParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

FilterChip::FilterChip(QWidget* parent)
    : QFrame(parent)
    , m_text(makeLabel(QStringLiteral("filterText"), {}, this)) {
    setObjectName(QStringLiteral("filterChip"));
    setAttribute(Qt::WA_StyledBackground);
    auto* cross = new QToolButton(this);
    cross->setObjectName(QStringLiteral("filterOff"));
    cross->setText(QStringLiteral("×"));
    cross->setToolTip(QStringLiteral("全库显示"));
    cross->setAccessibleName(QStringLiteral("全库显示"));
    cross->setAutoRaise(true);
    // The keyboard has the command itself.
    cross->setFocusPolicy(Qt::NoFocus);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 0, 2, 0);
    row->setSpacing(2);
    row->addWidget(m_text);
    row->addWidget(cross);
    hide();
    // Whatever it does, the chip may be gone with its view when it returns.
    connect(cross, &QToolButton::clicked, this, &FilterChip::crossed, Qt::QueuedConnection);
}

void FilterChip::showCounts(int shown, int whole) {
    m_text->setText(QStringLiteral("已筛选 %1/%2").arg(shown).arg(whole));
    show();
}

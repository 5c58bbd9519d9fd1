#include "sales/discountTyping.h"

#include "controls/recordBoxes.h"
#include "sales/basket.h"

#include <QLabel>

DiscountTyping::DiscountTyping(RecordBoxes* boxes, QLabel* hint)
    : QObject(boxes)
    , m_boxes(boxes) {
    connect(boxes, &RecordBoxes::edited, this, [this](int index) { m_typing = index == LineBox::Discount; });
    connect(boxes, &RecordBoxes::changed, this, [this, hint](int index) {
        if (index != LineBox::Discount)
            return;
        const QString text = m_boxes->text(index);
        m_begun = std::exchange(m_typing, false) && isBegunDiscount(text);
        hint->setText(looksLikeTenths(text) ? QStringLiteral("折扣是应付价的百分数，九折请输 90")
                                            : QString());
    });
    connect(boxes->box(LineBox::Discount), &QLineEdit::editingFinished, this, &DiscountTyping::finish);
}

QString DiscountTyping::counted() const {
    return m_begun ? QStringLiteral("100") : m_boxes->text(LineBox::Discount);
}

void DiscountTyping::finish() {
    if (std::exchange(m_begun, false))
        m_boxes->setText(LineBox::Discount, QStringLiteral("100"));
}

#include "sales/lineBoxes.h"

#include "controls/recordBoxes.h"
#include "sales/basket.h"
#include "sales/discountTyping.h"

#include <QMouseEvent>
#include <QToolButton>
#include <QVBoxLayout>

/// A repeating button whose press can be ended while the mouse still holds it.
class StepButton : public QToolButton {
public:
    using QToolButton::QToolButton;

    void endPress() {
        m_ended = isDown();
        setDown(false);
    }

protected:
    void mousePressEvent(QMouseEvent* event) override {
        m_ended = false;
        QToolButton::mousePressEvent(event);
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        // A held mouse that moves over the button would press it again.
        if (!m_ended)
            QToolButton::mouseMoveEvent(event);
    }

private:
    bool m_ended = false;
};

RecordBoxes* makeLineBoxes(std::optional<BoxKeys> keys, QWidget* parent) {
    static const QStringList captions{
        QStringLiteral("订 单 号"), QStringLiteral("客户编号"), QStringLiteral("产品编号"),
        QStringLiteral("时    间"), QStringLiteral("品    名"), QStringLiteral("产    地"),
        QStringLiteral("规    格"), QStringLiteral("厂    家"), QStringLiteral("单    价"),
        QStringLiteral("计量单位"), QStringLiteral("数    量"), QStringLiteral("应    付"),
        QStringLiteral("折    扣"), QStringLiteral("实    付")};
    auto* boxes = new RecordBoxes(QStringLiteral("Text4"), captions, keys, parent);
    boxes->limitToNumbers(
        {LineBox::Price, LineBox::Quantity, LineBox::Due, LineBox::Discount, LineBox::Paid});
    return boxes;
}

void refuseTooLarge(RecordBoxes* boxes, const std::function<double()>& unitCost) {
    for (const int box : {LineBox::Quantity, LineBox::Price})
        boxes->setNumberCheck(box, [boxes, box, unitCost](const QString& text) {
            const auto textOf = [&](int index) { return index == box ? text : boxes->text(index); };
            return lineFits(textOf(LineBox::Quantity), textOf(LineBox::Price), unitCost());
        });
}

void showLineAmounts(RecordBoxes* boxes, const DiscountTyping& typing, const LineAmounts& amounts) {
    if (!typing.isBegun() && boxes->text(LineBox::Discount) != amounts.discount) {
        boxes->setText(LineBox::Discount, amounts.discount);
        // Selected, so that the next digit replaces the 100 instead of making 1009 of it.
        boxes->box(LineBox::Discount)->selectAll();
    }
    boxes->setText(LineBox::Due, amounts.due);
    boxes->setText(LineBox::Paid, amounts.paid);
}

UpDown::UpDown(const QString& name, QWidget* parent)
    : QWidget(parent) {
    setObjectName(name);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (const int by : {1, -1}) {
        auto* button = new StepButton(this);
        button->setObjectName(QStringLiteral("%1(%2)").arg(name).arg(by > 0 ? 0 : 1));
        button->setArrowType(by > 0 ? Qt::UpArrow : Qt::DownArrow);
        button->setAccessibleName(by > 0 ? QStringLiteral("加一") : QStringLiteral("减一"));
        button->setAutoRepeat(true);
        button->setFocusPolicy(Qt::NoFocus);
        button->setFixedSize(22, 14);
        connect(button, &QToolButton::clicked, this, [this, by] { Q_EMIT stepped(by); });
        column->addWidget(button);
        m_buttons.push_back(button);
    }
}

void UpDown::endRepeat() {
    for (StepButton* button : m_buttons)
        button->endPress();
}

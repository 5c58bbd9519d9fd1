#include "sales/buyFm1.h"

#include "controls/prompts.h"
#include "controls/recordBoxes.h"
#include "controls/recordPane.h"
#include "data/cursorMoves.h"
#include "data/losses.h"
#include "recordset/textNumber.h"
#include "sales/basketList.h"
#include "sales/buyFm1Panels.h"
#include "sales/settledNotice.h"
#include "sales/settlement.h"
#include "shell/editWords.h"

#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStackedWidget>

void buyFm1::chooseBasketRow() {
    if (!m_basket->hasRows() || !m_basket->currentRow())
        return;
    m_lineMode = BasketLine;
    showBasketLine();
    m_basketPanel->pane->showPosition();
}

void buyFm1::showBasketLine() {
    giveUpLine();
    m_unitCost = m_basket->Fields(QStringLiteral("成本")).number();
    showLine(Record_display5(m_basket));
    markLine();
}

void buyFm1::moveBasket(int button) {
    moveInRecordset(m_basket, button);
    chooseBasketRow();
}

void buyFm1::basketEdited() {
    if (m_puttingBack || !m_basket->hasRows() || !m_session.productTable->isOpen())
        return;
    const QScopedValueRollback puttingBack(m_puttingBack, true);
    m_session.productTable->clearFilter();
    if (!m_session.productTable->hasRows())
        return;
    const BasketEdit result = afterBasketEdit(m_session, m_basket);
    bindProducts();
    if (result == BasketEdit::TooMany)
        m_prompts.tell(QStringLiteral("该产品订购数量超出现有库存数，现订购数量为现有库存数！"));
}

void buyFm1::saveBasketEdits() {
    m_basketPanel->pane->grid->commitEditor();
    const int before = m_basket->pendingCount();
    saveBasket(m_session, m_basket);
    showTotals();
    showBought();
    say(this, {savedWords(before, m_basket->pendingCount())});
}

void buyFm1::deleteBasketRow() {
    m_basketPanel->pane->grid->commitEditor();
    if (!m_basket->hasRows() || !m_basket->currentRow() ||
        !m_prompts.confirmLoss(QStringLiteral("确认要删除该记录吗？"), lossOfLine(m_basket)))
        return;
    const QString product = m_basket->Fields(QStringLiteral("产品编号")).text();
    {
        const QuietWalk walk(m_basket);
        m_basket->Delete();
        moveOnAfterDeletion(m_basket);
    }
    dropLeft(product);
    m_basketPanel->pane->showPosition();
    showTotals();
    showBought();
}

void buyFm1::clearAll() {
    clearBasket(m_session, m_basket);
    dropAllLeft();
    m_basketPanel->pane->showPosition();
    showTotals();
    record_Clear3();
    m_lineMode = NoProduct;
}

void buyFm1::markLine() {
    // Back from the basket its row is in the boxes, though no line is begun.
    const bool ofBasket = m_lineMode != NewLine && m_basket->hasRows() && m_basket->currentRow();
    m_line->list->showLine(m_line->boxes->texts(),
                           ofBasket ? std::optional(m_basket->AbsolutePosition() - 1) : std::nullopt);
}

void buyFm1::showTotals() {
    m_line->list->showBasket(m_basket);
    markLine();
    const BasketTotals totals = basketTotals(m_basket);
    const QString quantity = plainNumber(totals.quantity);
    const QString paid = plainNumber(totals.paid);
    for (int i = 0; i < 2; ++i) {
        m_line->quantityTotals[i]->setText(quantity);
        m_line->paidTotals[i]->setText(paid);
    }
    m_basketPanel->quantityTotal->setText(quantity);
    m_basketPanel->paidTotal->setText(paid);
}

void buyFm1::showBought() {
    m_line->bought->setText(plainNumber(m_bought + basketTotals(m_basket).quantity));
}

void buyFm1::showBasket() {
    showTotals();
    m_basketPanel->date->setText(m_session.todayText());
    m_basketPanel->order->setText(counterText(m_session.nextOrderNum));
    m_basketPanel->pane->showPosition();
    m_basketPanel->pane->grid->fitColumns();
    m_frames->setCurrentWidget(m_basketPanel);
}

void buyFm1::hideBasket() {
    m_basketPanel->pane->grid->commitEditor();
    m_frames->setCurrentWidget(m_line);
    m_line->list->showBasket(m_basket);
    markLine();
    if (!m_basket->hasRows() || !m_basket->currentRow())
        return;
    showBasketLine();
}

void buyFm1::settleBasket() {
    m_basketPanel->pane->grid->commitEditor();
    if (!canSettle(m_session, m_basket))
        return;
    m_line->bought->clear();
    showTotals();
    if (!m_prompts.confirm(settlementQuestion(basketTotals(m_basket))))
        return;
    const SettledOrder settled = orderOfBasket(m_session, m_basket);
    settle(m_session, m_basket);
    bindProducts();
    clearAll();
    say(this, settledNotice(settled, m_host, m_prompts));
}

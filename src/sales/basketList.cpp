#include "sales/basketList.h"

#include "sales/basket.h"

#include <QHeaderView>

#include <array>

namespace {

/// What the list shows of a line, by its boxes.
constexpr std::array kShownBoxes{LineBox::Name, LineBox::Price, LineBox::Quantity, LineBox::Paid};

QStringList textsOfRow(const RecordsetPtr& basket, int row) {
    QStringList texts;
    for (const int box : kShownBoxes)
        texts << basket->shownAt(row, basket->fieldIndex(lineColumns()[box]));
    return texts;
}

QTableWidgetItem* makeItem(int column) {
    auto* item = new QTableWidgetItem;
    item->setTextAlignment((column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    return item;
}

} // namespace

BasketList::BasketList(QWidget* parent)
    : QTableWidget(0, int(kShownBoxes.size()), parent) {
    setObjectName(QStringLiteral("basketList"));
    setAccessibleName(QStringLiteral("购物表"));
    QStringList heads;
    for (const int box : kShownBoxes)
        heads << lineColumns()[box];
    setHorizontalHeaderLabels(heads);
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    setFocusPolicy(Qt::NoFocus);
    setSelectionMode(NoSelection);
    setEditTriggers(NoEditTriggers);
    setWordWrap(false);
}

void BasketList::showBasket(const RecordsetPtr& basket) {
    m_basket = basket;
    m_marked.reset();
    const int rows = basket->isOpen() ? basket->RecordCount() : 0;
    setRowCount(rows);
    for (int row = 0; row < rows; ++row)
        setTexts(row, textsOfRow(basket, row), false);
}

void BasketList::showLine(const QStringList& boxes, std::optional<int> row) {
    const int rows = m_basket && m_basket->isOpen() ? m_basket->RecordCount() : 0;
    if (m_marked && *m_marked < rows)
        setTexts(*m_marked, textsOfRow(m_basket, *m_marked), false);
    m_marked.reset();
    const bool making = !boxes[LineBox::Product].isEmpty();
    const bool fresh = making && !(row && *row < rows);
    setRowCount(rows + (fresh ? 1 : 0));
    if (!making)
        return;
    QStringList texts;
    for (const int box : kShownBoxes)
        texts << boxes[box];
    m_marked = fresh ? rows : *row;
    setTexts(*m_marked, texts, true);
    scrollToItem(item(*m_marked, 0));
}

void BasketList::setTexts(int row, const QStringList& texts, bool marked) {
    for (int column = 0; column < columnCount(); ++column) {
        if (!item(row, column))
            setItem(row, column, makeItem(column));
        QFont shown = font();
        shown.setBold(marked);
        item(row, column)->setText(texts[column]);
        item(row, column)->setFont(shown);
        item(row, column)->setBackground(marked ? palette().brush(QPalette::AlternateBase) : QBrush());
    }
}

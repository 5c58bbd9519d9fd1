#include "sales/buyFm1Panels.h"

#include "controls/formParts.h"
#include "controls/recordBoxes.h"
#include "controls/recordPane.h"
#include "sales/basket.h"
#include "sales/basketList.h"
#include "sales/discountTyping.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr qreal kLargeFigure = 2;

QHBoxLayout* rowOf(std::initializer_list<QWidget*> widgets) {
    auto* row = new QHBoxLayout;
    for (QWidget* widget : widgets)
        row->addWidget(widget);
    return row;
}

} // namespace

ProductPanel::ProductPanel(Prompts& prompts, QWidget* parent)
    : QGroupBox(QStringLiteral("销售库存"), parent)
    , pane(new RecordPane({.moves = u"Command6"},
                          QStringLiteral("没有产品。\n产品在“产品管理”—“产品登录（入库）”里登录。"), prompts,
                          this))
    , find(makeButton(QStringLiteral("Command5"), QStringLiteral("查询"), this))
    , whole(makeButton(QStringLiteral("Command10"), QStringLiteral("全库显示"), this)) {
    setObjectName(QStringLiteral("Frame2"));
    pane->setWholeShow([this] { whole->click(); });
    search = makeSearchBox(QStringLiteral("Text3"),
                           QStringLiteral("查询入口：产品编号、品名、规格、产地、厂家"), nullptr, this);
    pane->grid->setChosenByEnter();
    pane->grid->setColumnsInFront(
        {QStringLiteral("产品编号"), QStringLiteral("品名"), QStringLiteral("单价"), QStringLiteral("数量")});
    auto* top = new QHBoxLayout;
    top->addWidget(search, 1);
    top->addWidget(find);
    top->addWidget(whole);
    auto* column = new QVBoxLayout(this);
    column->addLayout(top);
    column->addWidget(pane->grid, 1);
    column->addWidget(pane->moves, 0, Qt::AlignHCenter);
    tabThrough(QWidgetList{search, find, whole, pane->grid} + pane->moves->buttons());
}

LinePanel::LinePanel(QWidget* parent)
    : QGroupBox(QStringLiteral("选购产品"), parent)
    , boxes(makeLineBoxes(std::nullopt, this))
    , bought(new QLineEdit(this))
    , quantity(new UpDown(QStringLiteral("UpDown1"), this))
    , discount(new UpDown(QStringLiteral("UpDown2"), this))
    , hint(makeLabel(QStringLiteral("lineHint"), {}, this))
    , list(new BasketList(this))
    , confirm(makeButton(QStringLiteral("Command2"), QStringLiteral("确认"), this))
    , cancel(makeButton(QStringLiteral("Command13"), QStringLiteral("取消"), this))
    , browse(makeButton(QStringLiteral("Command9"), QStringLiteral("购物浏览"), this))
    , settle(makeButton(QStringLiteral("Command1"), QStringLiteral("结算"), this))
    , back(makeButton(QStringLiteral("Command4"), QStringLiteral("返回"), this)) {
    setObjectName(QStringLiteral("Frame1"));
    hint->setWordWrap(true);
    setTextColour(hint, QColor(0xB0, 0x44, 0x3A));
    auto* column = new QVBoxLayout(this);
    column->addLayout(buildBoxes());
    column->addWidget(hint);
    column->addWidget(list, 1);
    column->addWidget(buildTotals(0));
    column->addLayout(rowOf({confirm, cancel, browse}));
    column->addWidget(buildTotals(1));
    column->addLayout(rowOf({settle, back}));
    paidTotals[1]->setFont(boldOf(paidTotals[1], kLargeFigure)); // what the customer is to pay
}

QLayout* LinePanel::buildBoxes() {
    const QString meaning = QStringLiteral("购买该产品累积数");
    bought->setObjectName(QStringLiteral("Text8"));
    bought->setToolTip(meaning);
    bought->setAccessibleName(meaning);
    bought->setReadOnly(true);
    bought->setAlignment(Qt::AlignRight);
    QLabel* discountHint = makeLabel(QStringLiteral("discountHint"), {}, this);
    typing = new DiscountTyping(boxes, discountHint);
    auto* grid = new QGridLayout;
    for (int i = 0; i < LineBox::Count; ++i)
        boxes->place(grid, i, i / 2, i % 2 * 3);
    grid->addWidget(quantity, LineBox::Quantity / 2, 2);
    grid->addWidget(discount, LineBox::Discount / 2, 2);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(4, 1);
    auto* history = new QLabel(QStringLiteral("累积购买"), this);
    history->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(history, LineBox::Count / 2, 0);
    grid->addWidget(bought, LineBox::Count / 2, 1);
    grid->addWidget(discountHint, LineBox::Count / 2, 3, 1, 2);
    return grid;
}

QWidget* LinePanel::buildTotals(int which) {
    auto* strip = new QWidget(this);
    quantityTotals[which] =
        makeFigure(QStringLiteral("Label%1").arg(12 + which), QStringLiteral("总件数"), strip);
    paidTotals[which] =
        makeFigure(QStringLiteral("Label%1").arg(14 + which), QStringLiteral("总金额"), strip);
    QHBoxLayout* row =
        rowOf({new QLabel(which == 0 ? QStringLiteral("购物表：") : QStringLiteral("待结算："), strip),
               new QLabel(QStringLiteral("总件数："), strip), quantityTotals[which],
               new QLabel(QStringLiteral("总金额："), strip), paidTotals[which]});
    row->setContentsMargins(0, 4, 0, 0);
    row->addStretch(1);
    strip->setLayout(row);
    return strip;
}

BasketPanel::BasketPanel(Prompts& prompts, QWidget* parent)
    : QGroupBox(QStringLiteral("购物浏览"), parent)
    , pane(new RecordPane({u"DataGrid2", u"Command3", u"Text2"},
                          QStringLiteral("购物表是空的。\n选一种产品，填好数量后按“确认”。"), prompts, this))
    , save(makeButton(QStringLiteral("Command12"), QStringLiteral("保存修改"), this))
    , remove(makeButton(QStringLiteral("Command7"), QStringLiteral("删除"), this))
    , clear(makeButton(QStringLiteral("Command8"), QStringLiteral("清空"), this))
    , back(makeButton(QStringLiteral("Command11"), QStringLiteral("返回"), this))
    , quantityTotal(makeFigure(QStringLiteral("Label9"), QStringLiteral("总件数"), this))
    , paidTotal(makeFigure(QStringLiteral("Label11"), QStringLiteral("总金额"), this))
    , date(makeLabel(QStringLiteral("Label17"), {}, this))
    , order(makeLabel(QStringLiteral("Label19"), {}, this)) {
    setObjectName(QStringLiteral("Frame3"));
    pane->grid->setEditable(true);
    QHBoxLayout* head = rowOf({new QLabel(QStringLiteral("时间："), this), date,
                               new QLabel(QStringLiteral("订单号："), this), order});
    head->insertSpacing(2, 24);
    head->addStretch(1);
    QHBoxLayout* totals = rowOf({new QLabel(QStringLiteral("总件数："), this), quantityTotal,
                                 new QLabel(QStringLiteral("总金额："), this), paidTotal});
    totals->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(pane->grid, 1);
    column->addWidget(pane->moves, 0, Qt::AlignHCenter);
    column->addLayout(totals);
    column->addLayout(rowOf({save, remove, clear, back}));
}

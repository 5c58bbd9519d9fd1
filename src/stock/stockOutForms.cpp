#include "stock/stockOutForms.h"

#include "controls/formParts.h"
#include "controls/prompts.h"
#include "controls/recordBoxes.h"
#include "controls/recordPane.h"
#include "data/cursorMoves.h"
#include "data/searchTexts.h"
#include "recordset/error.h"
#include "recordset/shownText.h"
#include "recordset/textNumber.h"
#include "shell/captionSort.h"
#include "shell/displayView.h"
#include "stock/productRegister.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

namespace MovementBox {
constexpr int Quantity = 0, Amount = 1, Remark = 2;
}

} // namespace

StockOutChooser::StockOutChooser(const StockOut& road, ViewHost& host, Prompts& prompts)
    : View(QString::fromUtf16(road.chooser), QString::fromUtf16(road.caption))
    , m_road(road)
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(buildGridSide(), 5);
    row->addWidget(buildPanel(), 3);
    const auto named = [this](const char* name) {
        return findChild<QPushButton*>(QString::fromLatin1(name));
    };
    tabThrough(QWidgetList{m_search, named("Command2"), named("Command3"), m_pane->grid} +
               m_pane->moves->buttons() + m_dates->boxes() + m_boxes->widgets() +
               QWidgetList{named("Command5")});
    m_pane->onRow([this] { rowChanged(); });
    // The date of a movement cannot be chosen: it is always today.
    connect(m_boxes->box(ProductBox::Date), &QLineEdit::textChanged, this, [this](const QString& text) {
        if (const QString today = m_session.todayText(); text != today)
            m_boxes->setText(ProductBox::Date, today);
    });
    offer(ViewOperation::data_order, [this] { data_order(); });
    sortByCaptions(*this, *m_pane->grid, host, [this] { return readyToSort(); });
}

QPushButton* StockOutChooser::addButton(const char* name, const QString& caption,
                                        void (StockOutChooser::*action)()) {
    QPushButton* button = makeButton(QString::fromLatin1(name), caption, this);
    connect(button, &QPushButton::clicked, this, action);
    return button;
}

QWidget* StockOutChooser::buildGridSide() {
    auto* side = new QGroupBox(QStringLiteral("销售库存"), this);
    m_pane = new RecordPane({.position = u"Text5"}, QStringLiteral("没有库存产品。"), m_prompts, side);
    QPushButton* find = addButton("Command2", QStringLiteral("查询"), &StockOutChooser::search);
    m_search = makeSearchBox(QStringLiteral("Text4"),
                             QStringLiteral("查询入口：产品编号、品名、规格、产地、厂家"), find, side);
    setSearchBox(m_search);
    m_pane->setWholeShow([this] { showAll(); });
    m_dates = new DateBoxes(QStringLiteral("Text1"), QStringLiteral("Text3"), m_session, kStockDates, side);
    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(QStringLiteral("产品查询"), side));
    top->addWidget(m_search, 1);
    top->addWidget(find);
    top->addWidget(addButton("Command3", QStringLiteral("全库显示"), &StockOutChooser::showAll));
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_pane->moves);
    bottom->addStretch(1);
    bottom->addWidget(m_dates);
    auto* column = new QVBoxLayout(side);
    column->addLayout(top);
    column->addWidget(m_pane->grid, 1);
    column->addLayout(bottom);
    return side;
}

QWidget* StockOutChooser::buildPanel() {
    static const QString figures[] = {QStringLiteral("原销售库存数"), QStringLiteral("加减销售库存数"),
                                      QStringLiteral("现有销售库存数")};
    auto* panel = new QGroupBox(QString::fromUtf16(m_road.caption), this);
    m_boxes = new RecordBoxes(QStringLiteral("Text2"), productBoxCaptions(),
                              BoxKeys{Qt::Key_Up, Qt::Key_Down}, panel);
    m_boxes->alignRight({ProductBox::Quantity, ProductBox::Cost, ProductBox::Discount, ProductBox::Price});
    auto* boxes = new QGridLayout;
    m_boxes->layOut(boxes, 1);
    auto* grid = new QGridLayout;
    for (int i = 0; i < 3; ++i) {
        m_figures[i] = makeFigure(QStringLiteral("Label7(%1)").arg(i), figures[i], panel);
        m_figures[i]->setAlignment(Qt::AlignCenter);
        QLabel* caption = makeLabel(QStringLiteral("Label6(%1)").arg(i), figures[i], panel);
        caption->setAlignment(Qt::AlignCenter);
        grid->addWidget(caption, 0, i);
        grid->addWidget(m_figures[i], 1, i);
    }
    auto* column = new QVBoxLayout(panel);
    column->addLayout(boxes);
    column->addLayout(grid);
    column->addStretch(1);
    column->addWidget(
        addButton("Command5", QString::fromUtf16(m_road.action), &StockOutChooser::startMovement));
    return panel;
}

void StockOutChooser::load() {
    RecordsetPtr& history = m_session.*m_road.history;
    if (!history->isOpen())
        m_session.reopen(history, QStringLiteral("Select * From ") + QString::fromUtf16(m_road.table));
    if (m_session.productTable->isOpen())
        m_session.productTable->clearFilter();
    m_search->clear();
    m_boxes->setTexts(clearChoice());
    showFigures(QStringLiteral("0"));
}

void StockOutChooser::activate() {
    // Coming back from its dialog, the view keeps what that left on the screen.
    if (std::exchange(m_session.viewReturnState, QStringLiteral("Open")) == u"Close")
        return;
    const RecordsetPtr& products = m_session.productTable;
    {
        const QuietWalk walk(products);
        m_pane->bind(products);
        m_dates->setDates(datesOfRows(m_session, products));
    }
    rowChanged();
}

void StockOutChooser::rowChanged() {
    const RecordsetPtr& products = m_session.productTable;
    if (!products->isOpen())
        return;
    backOntoARow(products);
    m_pane->showPosition();
    showProduct();
    showFigures(products->currentRow() ? products->Fields(QStringLiteral("数量")).text()
                                       : QStringLiteral("0"));
}

void StockOutChooser::showProduct() {
    const bool any = m_session.productTable->hasRows() && m_session.productTable->currentRow();
    m_boxes->setTexts(any ? displayRecord(m_session) : clearChoice());
}

void StockOutChooser::showFigures(const QString& quantity) {
    m_figures[0]->setText(quantity);
    m_figures[1]->setText(QStringLiteral("0"));
    m_figures[2]->setText(quantity);
}

QStringList StockOutChooser::boxes() const {
    return m_boxes->texts();
}

void StockOutChooser::showTaken(const QString& text) {
    m_figures[1]->setText(text);
}

void StockOutChooser::showBooked() {
    m_figures[2]->setText(m_session.productTable->Fields(QStringLiteral("数量")).text());
    showProduct();
}

void StockOutChooser::search() {
    const RecordsetPtr& products = m_session.productTable;
    if (!products->isOpen())
        return;
    products->clearFilter();
    if (!products->hasRows() || m_search->text().isEmpty())
        return;
    try {
        products->setFilter(productSearch(trimBlanks(m_search->text())));
    } catch (const RuntimeError&) {
        if (!m_road.searchCaught)
            throw;
        m_prompts.tellAbout(m_search, QStringLiteral("日期输入错误，请按 2004-2-1 或 2004-11-21 格式输入！"));
    }
}

void StockOutChooser::showAll() {
    if (m_session.productTable->isOpen())
        m_session.productTable->clearFilter();
    m_pane->showPosition();
}

bool StockOutChooser::readyToSort() {
    m_session.orderCode = qint16(ShowSource::Products);
    return m_session.productTable->hasRows();
}

void StockOutChooser::data_order() {
    if (readyToSort())
        m_host.openWindow(QStringLiteral("orderFm1"), ViewHost::MainWindow::Stays);
}

void StockOutChooser::data_print() {
    const ShowSource code = m_session.showSource;
    if (code != ShowSource::StockIn && code != ShowSource::PeriodStockIn)
        return;
    // The title is that of the stock-in list, for all three roads: that is meant.
    m_session.report.reportFormTitle = QStringLiteral("产 品 入 库 清 单");
    m_host.openWindow(QString::fromUtf16(code == ShowSource::StockIn ? m_road.report : m_road.periodReport),
                      ViewHost::MainWindow::Disabled);
}

void StockOutChooser::startMovement() {
    if (canMoveStock(m_session))
        m_host.openWindow(QString::fromUtf16(m_road.dialog), ViewHost::MainWindow::Stays);
}

StockOutDialog::StockOutDialog(const StockOut& road, StockOutChooser& chooser, ViewHost& host,
                               Prompts& prompts)
    : Dialog(QString::fromUtf16(road.dialog), QString::fromUtf16(road.caption))
    , m_road(road)
    , m_chooser(chooser)
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts) {
    makeBoxes();
    QPushButton* confirmButton = makeButton(QStringLiteral("Command1"), QStringLiteral("确认"), this);
    QPushButton* cancelButton = makeButton(QStringLiteral("Command2"), QStringLiteral("取消"), this);
    connect(confirmButton, &QPushButton::clicked, this, &StockOutDialog::confirm);
    connect(cancelButton, &QPushButton::clicked, this, &QWidget::close);
    auto* grid = new QGridLayout;
    m_boxes->layOut(grid, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(confirmButton);
    buttons->addWidget(cancelButton);
    auto* column = new QVBoxLayout(this);
    column->addLayout(grid);
    column->addLayout(buttons);
    resize(360, sizeHint().height());
}

void StockOutDialog::makeBoxes() {
    m_boxes = new RecordBoxes(QStringLiteral("Text6"),
                              {QString::fromUtf16(m_road.quantityCaption),
                               QString::fromUtf16(m_road.amountCaption), QStringLiteral("说    明")},
                              std::nullopt, this);
    m_boxes->limitToNumbers({MovementBox::Quantity, MovementBox::Amount});
    m_boxes->setNumberCheck(MovementBox::Quantity,
                            [this](const QString& text) { return amountFits(m_session, text); });
    const RecordsetPtr& history = m_session.*m_road.history;
    if (history->isOpen())
        m_boxes->box(MovementBox::Remark)
            ->setMaxLength(history->Fields(QStringLiteral("说明")).DefinedSize());
    m_boxes->setTexts({QStringLiteral("0"), QStringLiteral("0"), QString()});
    connect(m_boxes->box(MovementBox::Quantity), &QLineEdit::textChanged, this,
            &StockOutDialog::quantityChanged);
}

void StockOutDialog::quantityChanged() {
    if (!m_session.productTable->hasRows() || !m_session.productTable->currentRow())
        return;
    const double quantity = val(m_boxes->text(MovementBox::Quantity));
    const double onHand = stockOnHand(m_session);
    if (quantity > onHand) {
        m_prompts.tell(QString::fromUtf16(m_road.excessMessage) + plainNumber(onHand));
        // The box changes once more, and that change goes on from here.
        m_boxes->setText(MovementBox::Quantity, plainNumber(onHand));
        m_boxes->focus(MovementBox::Quantity);
        return m_boxes->box(MovementBox::Quantity)->selectAll();
    }
    m_chooser.showTaken(plainNumber(quantity == 0 ? 0 : -quantity));
    m_boxes->setText(MovementBox::Amount, plainNumber(amountAtCost(m_session, quantity)));
}

void StockOutDialog::confirm() {
    const Movement movement{val(trimBlanks(m_boxes->text(MovementBox::Quantity))),
                            val(trimBlanks(m_boxes->text(MovementBox::Amount))),
                            m_boxes->text(MovementBox::Remark)};
    if ((m_session.*m_road.history)->isOpen() && movement.quantity == 0)
        return m_prompts.tellAbout(m_boxes->box(MovementBox::Quantity),
                                   QString::fromUtf16(m_road.zeroMessage));
    if (!m_prompts.confirm(QString::fromUtf16(m_road.question)))
        return;
    if (!m_session.productTable->isOpen() || !m_session.productTable->currentRow())
        return;
    if (bookStockOut(m_session, m_road, m_chooser.boxes(), movement) == MoveResult::WriteFailed)
        m_prompts.tell(QStringLiteral("输入数据格式错误或数据类型不匹配！"));
    m_chooser.showBooked();
    saySaved(movement.quantity);
    close();
}

void StockOutDialog::saySaved(double quantity) {
    const auto column = [this](const QString& name) {
        return captionText(m_session.productTable->Fields(name).shown());
    };
    m_host.say({QStringLiteral("已%1 %2：产品 %3 %4，现有库存 %5")
                    .arg(QString::fromUtf16(m_road.action), plainNumber(quantity),
                         column(QStringLiteral("产品编号")), column(QStringLiteral("品名")),
                         plainNumber(stockOnHand(m_session)))});
}

void StockOutDialog::wayOut() {
    m_session.viewReturnState = QStringLiteral("Close");
    finish();
    m_chooser.activate();
}

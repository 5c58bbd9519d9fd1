#include "stock/stockPanels.h"

#include "controls/formParts.h"
#include "controls/prompts.h"
#include "data/cursorMoves.h"
#include "data/losses.h"
#include "data/sourceTable.h"
#include "recordset/textNumber.h"
#include "shell/editWords.h"
#include "stock/stockCount.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

StockSumsBox::StockSumsBox(QWidget* parent)
    : QWidget(parent)
    , m_value(makeFigure(QStringLiteral("Label5"), QStringLiteral("库存资金"), this))
    , m_quantity(makeFigure(QStringLiteral("Label7"), QStringLiteral("库存量"), this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (QLabel* figure : {m_value, m_quantity}) {
        figure->setMinimumWidth(figure->fontMetrics().horizontalAdvance(QStringLiteral("000000000.00")));
        row->addWidget(new QLabel(figure->accessibleName(), this));
        row->addWidget(figure);
    }
}

void StockSumsBox::setSums(const StockSums& sums, const RecordsetPtr& products) {
    m_value->setText(plainNumber(sums.value));
    m_quantity->setText(plainNumber(sums.quantity));
    m_filter = products->isOpen() ? products->Filter() : QString();
}

void StockSumsBox::count(const RecordsetPtr& products) {
    setSums(stock_Count(products), products);
}

void StockSumsBox::follow(const RecordsetPtr& products) {
    if (products->isOpen() && products->Filter() != m_filter)
        setSums(stockSums(products), products);
}

StockPanel::StockPanel(ViewHost& host, Prompts& prompts)
    : m_host(host)
    , m_session(host.session())
    , m_prompts(prompts)
    , m_sums(new StockSumsBox(this)) {
    auto* one = makeButton(QStringLiteral("Command5"), QStringLiteral("该产品库存显示"), this);
    auto* shortfall = makeButton(QStringLiteral("Command6"), QStringLiteral("库存安全数以下产品显示"), this);
    connect(one, &QPushButton::clicked, this, &StockPanel::showOneProduct);
    connect(shortfall, &QPushButton::clicked, this, &StockPanel::showShortfall);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_sums);
    row->addWidget(one);
    row->addWidget(shortfall);
}

void StockPanel::sourceShown(const RecordsetPtr& cursor, ShowSource code) {
    m_source = code;
    m_session.currentProductNum.clear();
    if (cursor->hasRows()) {
        cursor->MoveLast();
        m_session.currentProductNum = cursor->Fields(QStringLiteral("产品编号")).text();
    }
    m_sums->count(cursor);
}

void StockPanel::rowChanged(const RecordsetPtr& cursor, bool chosen) {
    m_sums->follow(cursor);
    if (!chosen)
        return;
    m_session.currentProductNum.clear();
    if (!cursor->hasRows())
        return;
    backOntoARow(cursor);
    m_session.currentProductNum = cursor->Fields(QStringLiteral("产品编号")).text();
}

const RecordsetPtr& StockPanel::shown() const {
    return *sourceCursor(m_session, m_source);
}

void StockPanel::showOneProduct() {
    if (!pickOneProduct(m_session, shown(), m_source))
        return;
    if (TopWindow* window = m_host.openWindow(QStringLiteral("stockFm3"), ViewHost::MainWindow::Stays))
        window->setWindowTitle(QStringLiteral("单项产品库存显示"));
}

void StockPanel::showShortfall() {
    m_session.showSource = m_session.stockShowSource = m_source;
    const RecordsetPtr cursor = shown();
    if (!cursor->isOpen())
        return;
    filterShortfall(m_session, cursor);
    if (cursor->hasRows())
        return m_host.show(QStringLiteral("StockFm2"));
    m_prompts.tell(QStringLiteral("所有产品库存数大于") + QString::number(m_session.safetyStock),
                   QStringLiteral("信息提示 "));
    cursor->clearFilter();
}

StockInPanel::StockInPanel(ViewHost& host, Prompts& prompts)
    : m_session(host.session())
    , m_prompts(prompts)
    , m_delete(makeButton(QStringLiteral("Command6"), QStringLiteral("删除"), this)) {
    connect(m_delete, &QPushButton::clicked, this, &StockInPanel::deleteRow);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_delete);
}

void StockInPanel::sourceShown(const RecordsetPtr& /*cursor*/, ShowSource code) {
    const bool whole = code == ShowSource::StockIn;
    m_delete->setEnabled(whole);
    m_delete->setToolTip(whole ? QString() : QStringLiteral("只有显示全库时才能删除记录"));
}

void StockInPanel::deleteRow() {
    if (!m_session.product_Bank->hasRows() || !m_session.product_Bank->currentRow())
        return;
    if (m_prompts.confirmLoss(QStringLiteral("确实要删除该记录吗？"),
                              lossOfStockIn(m_session.product_Bank)) &&
        m_session.product_Bank->currentRow())
        deleteStockIn(m_session);
}

namespace {

int pendingOf(ViewHost& host) {
    return host.session().stock_Count_Bank->pendingCount();
}

void saveCount(ViewHost& host) {
    const int before = pendingOf(host);
    const QString fault = saveStockCount(host.session());
    host.say({fault.isEmpty() ? savedWords(before, pendingOf(host)) : fault});
}

void dropCount(ViewHost& host) {
    const int before = pendingOf(host);
    cancelStockCount(host.session());
    host.say({droppedWords(before, pendingOf(host))});
}

void clearCount(ViewHost& host) {
    clearStockCount(host.session());
    if (const RecordsetPtr& count = host.session().stock_Count_Bank; count->hasRows())
        host.say({QStringLiteral("已清空并保存 %1 条的实物数").arg(count->RecordCount())});
}

} // namespace

StockCountPanel::StockCountPanel(ViewHost& host, Prompts& /*prompts*/)
    : m_host(host) {
    const std::tuple<const char16_t*, const char16_t*, void (*)(ViewHost&)> commands[] = {
        {u"Command2", u"保存", saveCount},
        {u"Command3", u"取消", dropCount},
        {u"Command7", u"实物数字段清空", clearCount}};
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (const auto& [name, caption, command] : commands) {
        QPushButton* button = makeButton(QString::fromUtf16(name), QString::fromUtf16(caption), this);
        connect(button, &QPushButton::clicked, this, [this, run = command] {
            Q_EMIT commandStarts();
            run(m_host);
            Q_EMIT commandEnded();
        });
        row->addWidget(button);
    }
}

void StockCountPanel::rowChanged(const RecordsetPtr& cursor, bool /*chosen*/) {
    backOntoARow(cursor);
}

void StockCountPanel::left(const RecordsetPtr& cursor) {
    if (cursor->isOpen() && cursor->pendingCount() > 0)
        m_host.say({QStringLiteral("盘点表有 %1 条记录还没有保存，“继续盘点”可以接着做。")
                        .arg(cursor->pendingCount())});
}

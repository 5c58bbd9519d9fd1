#include "drilldown/drillDown.h"

#include "controls/longWork.h"
#include "controls/prompts.h"
#include "drilldown/clientLines.h"
#include "shell/displayView.h"
#include "shell/orderChoice.h"

namespace {

const DisplayView* displayInFront(ViewHost& host) {
    return qobject_cast<const DisplayView*>(host.active());
}

/// The cursor of the customers that the view in front shows, null for a view of something else.
RecordsetPtr clientsInFront(ViewHost& host) {
    if (host.isActive(QStringLiteral("dataInputFm1")))
        return host.session().clientTable;
    const DisplayView* view = displayInFront(host);
    return view && view->description().customers ? view->shownRows() : nullptr;
}

/// Takes the Filter off the customers and leaves their cursor on its row.
void clearClientFilter(Session& session) {
    const RecordsetPtr& clients = session.clientTable;
    if (!clients->isOpen() || clients->Filter().isEmpty())
        return;
    const QuietWalk walk(clients);
    const auto row = clients->currentRow();
    clients->clearFilter();
    if (row)
        clients->moveToRow(*row);
}

void tellNothing(ViewHost& host, const QString& text) {
    host.say({text});
}

/// The lines that belong to the customers in front: those of the period where its customers are shown, or
/// were last.
ShowSource linesOfClients(ViewHost& host) {
    const Session& session = host.session();
    const DisplayView* view = displayInFront(host);
    const ShowSource shown = view ? view->shownSource() : ShowSource::None;
    const bool whole = shown == ShowSource::Clients;
    const bool period = shown == ShowSource::PeriodClients ||
                        (!whole && session.clientShowSource == ShowSource::PeriodClients);
    return period && session.buyList2->isOpen() ? ShowSource::PeriodLines : ShowSource::Lines;
}

/// Shows a view on rows that are written into their work table behind what is seen.
void showAndKeep(ViewHost& host, const char16_t* view, const QString& text,
                 const std::function<void(const Steps&)>& keep) {
    host.showOrActivate(QString::fromUtf16(view));
    const QPointer<View> shown = host.active();
    workAfterPainting(text, keep);
    if (shown)
        shown->rowsReplaced();
}

/// Writes rows that no view comes up for; one that stands on their work table shows them.
void keepUnseen(ViewHost& host, ShowSource code, const std::function<void(const Steps&)>& keep) {
    keep({});
    if (const DisplayView* view = displayInFront(host); view && view->shownSource() == code)
        host.active()->rowsReplaced();
}

/// The lines of the customer in hand in a view of tempTable2.
void showLinesIn(ViewHost& host, const char16_t* view, ShowSource lines) {
    Session& session = host.session();
    const RowsOfTable rows = openClientLines(session, session.currentClientNum, lines);
    const auto keep = [&](const Steps& steps) { writeClientLines(session, rows, steps); };
    if (!rows.rowids.empty())
        return showAndKeep(host, view, QStringLiteral("正在保存购物清单…"), keep);
    // The work table is made all the same, empty.
    keepUnseen(host, ShowSource::ClientLines, keep);
    tellNothing(host, QStringLiteral("该客户没有购物记录可以显示。"));
}

/// The product in the current row of the view in front, and whether its lines are those of a period; nothing
/// where the view has no row.
struct ProductInFront {
    ProductAsked product;
    ShowSource lines;
};
std::optional<ProductInFront> productInFront(ViewHost& host) {
    const DisplayView* view = displayInFront(host);
    const auto product = view && view->shownRows() ? productOfRow(view->shownRows()) : std::nullopt;
    if (!product)
        return std::nullopt;
    const ShowSource source = view->shownSource();
    const bool period = source == ShowSource::PeriodLines || source == ShowSource::PeriodProducts;
    return ProductInFront{*product, period ? ShowSource::PeriodLines : ShowSource::Lines};
}

} // namespace

bool takeCustomerInFront(ViewHost& host) {
    Session& session = host.session();
    const RecordsetPtr clients = clientsInFront(host);
    if (!clients) {
        session.refreshCustomer();
        return !session.currentClientNum.isEmpty();
    }
    if (!clients->hasRows() || !clients->currentRow())
        return false;
    session.takeCustomer(clients);
    return true;
}

void showClientLines(ViewHost& host) {
    const bool any = takeCustomerInFront(host);
    clearClientFilter(host.session());
    if (!any)
        return tellNothing(host, QStringLiteral("没有客户可以显示。"));
    host.settleShowSource(); // what the open menu has set is not what the view in front shows
    showLinesIn(host, u"tempTable2Fm2", linesOfClients(host));
}

void showClientOrders(ViewHost& host, Prompts& prompts) {
    Session& session = host.session();
    const bool any = takeCustomerInFront(host) && session.buyList->isOpen();
    clearClientFilter(session);
    if (!any)
        return tellNothing(host, QStringLiteral("没有客户可以显示。"));
    session.showSource =
        linesOfClients(host) == ShowSource::PeriodLines ? ShowSource::PeriodClients : ShowSource::Clients;
    chooseOrder(host, prompts, false);
}

void showClientStatistic(ViewHost& host) {
    Session& session = host.session();
    const bool any = takeCustomerInFront(host);
    clearClientFilter(session);
    if (!any)
        return tellNothing(host, QStringLiteral("没有客户可以统计。"));
    const bool cut = host.isActive(QStringLiteral("statisticFm1")) && session.cutOnScreen;
    session.showSource = cut ? ShowSource::BestClients : session.clientShowSource;
    // The customers of a cut have their lines in the period's copy only while there are any in it.
    const bool period =
        linesOfClients(host) == ShowSource::PeriodLines && (!cut || session.buyList2->hasRows());
    showLinesIn(host, u"tempTable3Fm3", period ? ShowSource::PeriodLines : ShowSource::Lines);
}

void showSalesOf(ViewHost& host, Prompts& prompts, const ProductAsked& product, ShowSource lines) {
    if (!openProductLines(host.session(), product, lines))
        return prompts.tell(QStringLiteral("该产品无销售！"));
    host.showOrActivate(QStringLiteral("goodsSalesFm2"));
}

void showClientsOf(ViewHost& host, const ProductAsked& product, ShowSource lines) {
    Session& session = host.session();
    const RowsOfTable rows = openProductClients(session, product, lines);
    const auto keep = [&](const Steps& steps) { writeProductClients(session, rows, steps); };
    if (!rows.rowids.empty())
        return showAndKeep(host, u"tempTable1Fm1", QStringLiteral("正在保存客户资料…"), keep);
    keepUnseen(host, ShowSource::ProductClients, keep);
    tellNothing(host, QStringLiteral("购买该产品的客户资料已不存在。"));
}

void showOneProductSales(ViewHost& host, Prompts& prompts) {
    clearClientFilter(host.session());
    if (!host.isActive(QStringLiteral("stockFm1")) && !host.isActive(QStringLiteral("statisticFm2")))
        return prompts.tell(QStringLiteral("请看库存显示或看销售显示！"));
    if (const auto asked = productInFront(host))
        return showSalesOf(host, prompts, asked->product, asked->lines);
    tellNothing(host, QStringLiteral("没有产品可以显示。"));
}

void showProductClients(ViewHost& host, Prompts& prompts) {
    clearClientFilter(host.session());
    if (!host.isActive(QStringLiteral("statisticFm2")))
        return prompts.tell(QStringLiteral("请先看销售显示！"));
    if (const auto asked = productInFront(host))
        return showClientsOf(host, asked->product, asked->lines);
    tellNothing(host, QStringLiteral("没有产品可以显示。"));
}

void askSalesPeriod(ViewHost& host) {
    Session& session = host.session();
    if (!session.buyList->hasRows())
        return;
    session.showSource = session.saleShowSource = ShowSource::Lines;
    host.openWindow(QStringLiteral("timeDefineFm2"), ViewHost::MainWindow::Stays);
}

void showAllSales(ViewHost& host) {
    static const QString view = QStringLiteral("statisticFm2");
    Session& session = host.session();
    clearClientFilter(session);
    if (host.isActive(view)) {
        session.showSource = ShowSource::Lines;
        session.viewReturnState = QStringLiteral("Open");
        host.active()->run(ViewOperation::data_whole_show);
        return host.showOrActivate(view);
    }
    Recordset lines(session.cn);
    lines.Open(QStringLiteral("Select * From buyList"));
    if (!lines.hasRows())
        return tellNothing(host, QStringLiteral("还没有销售记录可以显示。"));
    host.show(view);
}

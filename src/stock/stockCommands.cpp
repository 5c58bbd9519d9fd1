#include "stock/stockCommands.h"

#include "shell/viewOpeners.h"
#include "stock/productRegisterFm1.h"
#include "stock/stockCount.h"
#include "stock/stockOutForms.h"
#include "stock/stockViews.h"
#include "stock/stockWindows.h"

namespace {

/// The stock list is the one view that its menu command refreshes where it is in front already.
void showStock(ViewHost& host, IgnoringErrors& errors) {
    static const QString name = QStringLiteral("stockFm1");
    const bool inFront = host.isActive(name);
    errors.run([&] { host.showFromMenu(name); });
    if (!inFront)
        return;
    Session& session = host.session();
    session.showSource = session.stockShowSource = ShowSource::Products;
    errors.run([&] { session.productTable->Requery(); });
    errors.run([&] { host.showOrActivate(name); });
}

/// A new count; one that is in front of the user is not made anew, it only shows all its rows.
void countStockAnew(ViewHost& host, IgnoringErrors& errors) {
    static const QString name = QStringLiteral("stock_CountFm1");
    Session& session = host.session();
    if (!errors.test([&] { return canCountStock(session); }))
        return;
    if (host.isActive(name)) {
        session.activeViewName = name;
        errors.run([&] { session.stock_Count_Bank->clearFilter(); });
        return;
    }
    newStockCount(session);
    errors.run([&] { host.showFromMenu(name); });
}

void continueCount(ViewHost& host, IgnoringErrors& errors) {
    errors.run([&] { openStockCount(host.session()); });
    errors.run([&] { host.showFromMenu(QStringLiteral("stock_CountFm1")); });
}

void registerStockOuts(CommandTable& commands, ViewHost& host, Prompts& prompts) {
    for (const StockOut& road : stockOuts()) {
        host.registerView(QString::fromUtf16(road.chooser),
                          [&host, &prompts, &road] { return new StockOutChooser(road, host, prompts); });
        host.registerWindow(QString::fromUtf16(road.dialog), [&host, &prompts, &road] {
            return new StockOutDialog(road, static_cast<StockOutChooser&>(*host.active()), host, prompts);
        });
    }
    static constexpr ViewOpener openers[] = {{u"no_Sales_stock1", u"stock_ReturnFm1"},
                                             {u"no_Sales_stock2", u"stock_out_of_BankFm1"},
                                             {u"no_Sales_stock3", u"stock_no_use_BankFm1"}};
    addOpeners(commands, host, openers);
}

} // namespace

void registerStock(CommandTable& commands, ViewHost& host, Prompts& prompts) {
    host.registerView(QStringLiteral("productRegisterFm1"),
                      [&host, &prompts] { return new productRegisterFm1(host, prompts); });
    registerDisplays(host, prompts, stockDisplays());
    host.registerView(QStringLiteral("StockFm2"), [&host, &prompts] { return new StockFm2(host, prompts); });
    host.registerWindow(QStringLiteral("stockFm3"), [&host] { return new stockFm3(host); });
    host.registerWindow(QStringLiteral("statisticFm4"),
                        [&host, &prompts] { return new statisticFm4(host, prompts); });

    static constexpr ViewOpener openers[] = {{u"maintain_product", u"productRegisterFm1"},
                                             {u"whole_show_product", u"stock_BankFm1"},
                                             {u"show_stock3", u"StockFm2"},
                                             {u"show_return", u"stock_ReturnFm2"},
                                             {u"show_out_of_Bank", u"stock_out_of_BankFm2"},
                                             {u"show_on_use_Bank", u"stock_no_use_BankFm2"}};
    addOpeners(commands, host, openers);
    commands.add(QStringLiteral("show_stock"), [&host](IgnoringErrors& errors) { showStock(host, errors); });
    commands.add(QStringLiteral("count_stock1"),
                 [&host](IgnoringErrors& errors) { countStockAnew(host, errors); });
    commands.add(QStringLiteral("count_stock2"),
                 [&host](IgnoringErrors& errors) { continueCount(host, errors); });
    registerStockOuts(commands, host, prompts);
}

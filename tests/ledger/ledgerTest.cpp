// Thousands of random actions through the rules of the views, each followed by a plain ledger that applies
// the same business rules in its own words; afterwards both must say the same. Quantities and prices are
// multiples of 0.25, so that sums are exact in any order.
#include "data/recount.h"
#include "sales/clientRegister.h"
#include "sales/orderMaintenance.h"
#include "sales/settlement.h"
#include "stock/productRegister.h"
#include "stock/stockCount.h"
#include "stock/stockOut.h"
#include "support/testBooks.h"

#include <QDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace {

struct LedgerLine {
    std::string order;
    std::string client;
    std::string product;
    double quantity;
    double paid;
    double cost;
};

/// Stock by product, lines in their order, customers: what the books must come to.
struct Ledger {
    std::map<std::string, double> stock;
    std::vector<LedgerLine> lines;
    std::vector<std::string> clients;

    bool hasClient(const std::string& number) const {
        return std::find(clients.begin(), clients.end(), number) != clients.end();
    }
    /// A quantity comes back; a product that is not there any more comes back with it.
    void giveBack(const std::string& product, double quantity) {
        const auto found = stock.find(product);
        if (found == stock.end())
            stock[product] = quantity;
        else
            found->second += quantity;
    }
    void deleteLine(std::size_t index) {
        const LedgerLine line = lines[index];
        lines.erase(lines.begin() + long(index));
        if (hasClient(line.client))
            giveBack(line.product, line.quantity);
    }
    void changeLine(std::size_t index, double quantity, double paid) {
        LedgerLine& line = lines[index];
        const double old = line.quantity;
        line.quantity = quantity;
        line.paid = paid;
        if (!stock.count(line.product))
            stock[line.product] = quantity;
        else
            stock[line.product] += quantity <= 0 ? old : old - quantity;
    }
    /// The search for a deleted customer's lines starts at the second one.
    void deleteClient(const std::string& number) {
        clients.erase(std::find(clients.begin(), clients.end(), number));
        for (std::size_t i = lines.size(); i-- > 1;)
            if (lines[i].client == number)
                lines.erase(lines.begin() + long(i));
    }
};

/// Books on a disk that needs no waiting, where the machine has one.
struct QuickFolder {
    QuickFolder() {
        if (QDir(QStringLiteral("/dev/shm")).exists())
            qputenv("TMPDIR", "/dev/shm");
    }
};

class LedgerTest : public testing::TestWithParam<unsigned>, private QuickFolder {
protected:
    Session& session() { return books.session(); }
    int below(int limit) { return int(random() % unsigned(limit)); }
    double quarter(int limit) { return below(limit) / 4.0; }
    std::string text(const QString& value) { return value.toStdString(); }

    void clearFilters() {
        for (const RecordsetPtr& cursor :
             {session().clientTable, session().buyList, session().productTable}) {
            cursor->clearFilter();
            cursor->setSort({});
        }
    }
    void addClient() {
        QStringList boxes(registerColumns().size(), QStringLiteral("0"));
        boxes[0] = counterText(session().nextClientNum);
        ledger.clients.push_back(text(boxes[0]));
        ::addClient(session(), boxes);
    }
    void addProduct() {
        QStringList boxes = clearRecord(session());
        boxes[ProductBox::Number] = counterText(session().nextProductNum);
        boxes[ProductBox::Name] = QStringLiteral("货");
        const double quantity = 1 + quarter(400);
        boxes[ProductBox::Quantity] = QString::number(quantity);
        boxes[ProductBox::Cost] = QString::number(0.25 + quarter(20));
        boxes[ProductBox::Price] = QString::number(1 + quarter(40));
        ASSERT_EQ(registerProduct(session(), boxes), RegisterResult::Saved);
        ledger.stock[text(boxes[ProductBox::Number])] = quantity;
    }
    bool someProduct() {
        if (!session().productTable->hasRows())
            return false;
        session().productTable->moveTo(below(session().productTable->RecordCount()));
        return true;
    }
    std::string productInHand() { return text(session().productTable->Fields("产品编号").text()); }

    void sell() {
        if (ledger.clients.empty() || ledger.stock.empty())
            return;
        session().clientTable->moveTo(below(session().clientTable->RecordCount()));
        session().currentClientNum = session().clientTable->Fields("客户编号").text();
        const RecordsetPtr basket = openBasket(session());
        std::vector<LedgerLine> sold;
        for (int i = 1 + below(4); i > 0; --i) {
            someProduct();
            if (check_Repeat_ProductNum(basket, session().productTable->Fields("产品编号").text()))
                continue;
            QStringList boxes = Record_display3(session());
            boxes[LineBox::Quantity] = QString::number(0.25 + quarter(20));
            const LineAmounts amounts =
                lineAmounts(boxes[LineBox::Quantity], boxes[LineBox::Price], below(2) ? "100" : "50");
            boxes[LineBox::Due] = amounts.due;
            boxes[LineBox::Discount] = amounts.discount;
            boxes[LineBox::Paid] = amounts.paid;
            const double cost = session().productTable->Fields("成本").number();
            basket->AddNew();
            writeRecord5(basket, boxes, cost);
            basket->Update();
            sold.push_back({text(boxes[LineBox::Order]), text(boxes[LineBox::Client]),
                            text(boxes[LineBox::Product]), boxes[LineBox::Quantity].toDouble(),
                            boxes[LineBox::Paid].toDouble(), cost});
        }
        settle(session(), basket);
        for (const LedgerLine& line : sold) {
            ledger.stock[line.product] -= line.quantity;
            ledger.lines.push_back(line);
        }
    }
    /// Chooses a random order and a random line of it; gives its index in the ledger.
    std::optional<std::size_t> someLine() {
        book.open();
        if (!book.orders()->hasRows())
            return std::nullopt;
        book.orders()->moveTo(below(book.orders()->RecordCount()));
        const std::string order = text(book.chooseOrder());
        const int position = below(book.lines()->RecordCount());
        book.lines()->moveTo(position);
        int seen = 0;
        for (std::size_t i = 0; i < ledger.lines.size(); ++i)
            if (ledger.lines[i].order == order && seen++ == position)
                return i;
        ADD_FAILURE() << "a line that the ledger does not know";
        return std::nullopt;
    }
    void changeLine() {
        const auto line = someLine();
        if (!line)
            return;
        QStringList boxes = book.record_Display();
        boxes[LineBox::Quantity] = QString::number(quarter(40) - 2);
        const LineAmounts amounts =
            orderLineAmounts(boxes[LineBox::Quantity], boxes[LineBox::Price], boxes[LineBox::Discount]);
        boxes[LineBox::Due] = amounts.due;
        boxes[LineBox::Paid] = amounts.paid;
        book.save(boxes);
        ledger.changeLine(*line, boxes[LineBox::Quantity].toDouble(), boxes[LineBox::Paid].toDouble());
    }
    void deleteLine() {
        if (const auto line = someLine()) {
            book.deleteLine();
            ledger.deleteLine(*line);
        }
    }
    void deleteOrder() {
        const auto line = someLine();
        if (!line)
            return;
        const std::string order = ledger.lines[*line].order;
        book.deleteOrder([] {});
        for (std::size_t i = 0; i < ledger.lines.size();)
            if (ledger.lines[i].order == order)
                ledger.deleteLine(i);
            else
                ++i;
    }
    void stockIn() {
        if (!someProduct())
            return;
        const double quantity = quarter(80) - 4;
        ASSERT_TRUE(addStock(session(), displayRecord(session()), QString::number(quantity), {}));
        ledger.stock[productInHand()] += quantity;
    }
    void moveOut() {
        if (!someProduct())
            return;
        const StockOut& road = stockOuts()[std::size_t(below(3))];
        RecordsetPtr& history = session().*road.history;
        if (!history->isOpen())
            session().reopen(history, QStringLiteral("Select * From ") + QString::fromUtf16(road.table));
        const double quantity = quarter(24) - 1;
        const std::string product = productInHand();
        bookStockOut(session(), road, displayRecord(session()),
                     {quantity, amountAtCost(session(), quantity), {}});
        ledger.stock[product] -= quantity;
    }
    void count() {
        newStockCount(session());
        const RecordsetPtr& counting = session().stock_Count_Bank;
        for (int i = 0; i < counting->RecordCount(); ++i) {
            counting->moveTo(i);
            counting->Fields("实物数").setValue(quarter(400));
        }
        if (below(2))
            saveStockCount(session());
        else
            clearStockCount(session());
    }
    void deleteSomeProduct() {
        if (!someProduct())
            return;
        ledger.stock.erase(productInHand());
        deleteProduct(session());
    }
    void deleteSomeClient() {
        if (!session().clientTable->hasRows())
            return;
        session().clientTable->moveTo(below(session().clientTable->RecordCount()));
        ledger.deleteClient(text(session().clientTable->Fields("客户编号").text()));
        ::deleteClient(session());
    }
    void act() {
        clearFilters();
        const int kind = below(100);
        m_kind = kind;
        if (kind < 4 || ledger.clients.size() < 3)
            return addClient();
        if (kind < 9 || ledger.stock.size() < 4)
            return addProduct();
        if (kind < 45)
            return sell();
        if (kind < 60)
            return changeLine();
        if (kind < 70)
            return deleteLine();
        if (kind < 74)
            return deleteOrder();
        if (kind < 84)
            return stockIn();
        if (kind < 94)
            return moveOut();
        if (kind < 96)
            return count();
        if (kind < 98)
            return deleteSomeProduct();
        deleteSomeClient();
    }

    void compare(int step) {
        const std::string at = "action " + std::to_string(step) + " of kind " + std::to_string(m_kind);
        std::map<std::string, double> stock;
        Statement products = session().cn.prepare("SELECT 产品编号, 数量 FROM productTable");
        while (products.step())
            stock[text(products.text(0))] += products.number(1);
        ASSERT_EQ(stock, ledger.stock) << at;
        client_totals_recount(session().cn, session().clientTable, session().buyList);
        std::map<std::string, LineSums> sums;
        for (const LedgerLine& line : ledger.lines)
            sums[line.client].add(line.paid, line.paid - line.cost * line.quantity, line.quantity);
        Statement clients =
            session().cn.prepare("SELECT 客户编号, 消费合计, 差额利润, 购买数 FROM clientTable");
        std::size_t seen = 0;
        while (clients.step()) {
            const std::string number = text(clients.text(0));
            ASSERT_TRUE(ledger.hasClient(number)) << at;
            const LineSums& wanted = sums[number];
            const bool paid = wanted.paid != 0;
            ASSERT_EQ(clients.number(1), paid ? wanted.paid : 0) << at << ", customer " << number;
            ASSERT_EQ(clients.number(2), paid ? wanted.margin : 0) << at << ", customer " << number;
            ASSERT_EQ(clients.number(3), paid ? wanted.quantity : 0) << at << ", customer " << number;
            ++seen;
        }
        ASSERT_EQ(seen, ledger.clients.size()) << at;
    }

    std::mt19937 random{GetParam()};
    TestBooks books;
    Ledger ledger;
    OrderMaintenance book{books.session()};
    int m_kind = 0;
};

TEST_P(LedgerTest, StockAndTotalsAreThoseOfThePlainLedgerAfterEveryAction) {
    session().open_rs();
    session().readCurrent();
    session().reopen(session().product_Bank, "Select * From product_Bank");
    for (int step = 0; step < 1500 && !HasFatalFailure(); ++step) {
        act();
        compare(step);
    }
    EXPECT_GT(ledger.lines.size(), 50u) << "hardly a line was left to compare";
}

INSTANTIATE_TEST_SUITE_P(Seeds, LedgerTest, testing::Values(1u, 2u, 3u, 4u));

} // namespace

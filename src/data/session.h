#pragma once

#include "recordset/recordset.h"

#include <QDate>
#include <QString>

#include <array>
#include <functional>
#include <optional>

/// Codes of the data that toolbar commands and reports are to use.
enum class ShowSource : int {
    None = 0,
    Clients = 1,
    Lines = 2,
    Products = 3,
    PeriodProducts = 4,
    ProductClients = 5, // buyers of one product
    ClientLines = 6,    // one customer's purchases
    PeriodClients = 7,
    BestClients = 8, // the cut of the customers who carry the shop
    PeriodLines = 9,
    Clerks = 11,
    PeriodClerks = 12,
    StockIn = 15,
    PeriodStockIn = 16,
    StockCount = 17,
    Returns = 18,
    PeriodReturns = 19,
    Scrap = 20,
    PeriodScrap = 21,
    ClerkClients = 22, // one salesperson's customers
    Transfers = 23,
    PeriodTransfers = 24,
    ProductLines = 25, // the sales of one product
};

/// The four indicators of a set of customers: turnover, margin, quantity and number of customers, each with
/// its share of the whole, as texts.
struct Indicator {
    QString value;
    QString share;
};
using Evaluation = std::array<Indicator, 4>;

/// The one connection, the shared cursors and the process values, handed by reference to views and routines.
/// What one view did to a shared cursor (a filter, a position, a sort) is what the next one finds.
class Session : private TransactionClient {
public:
    /// Opens the database. Throws RuntimeError.
    explicit Session(const QString& databasePath);
    ~Session() override;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Connection cn;
    /// Directory of the program, without a separator at its end.
    QString appPath;

    QString activeViewName;
    QString viewReturnState = QStringLiteral("Open");
    qint16 sortDirection = 1; // 1 ascending, 2 descending
    ShowSource showSource = ShowSource::None;
    ShowSource clientShowSource = ShowSource::Clients;
    ShowSource saleShowSource = ShowSource::Lines;
    ShowSource stockShowSource = ShowSource::Products;

    QString currentClientNum;
    QString currentClientName;
    QString currentContact;
    QString currentProductNum;
    QString currentProductName; // 品名 of the product whose sales or buyers were asked for
    QString currentOrderNum;
    /// Unset while counterCode has no row.
    std::optional<double> nextClientNum;
    std::optional<double> nextOrderNum;
    std::optional<qint32> nextProductNum;

    QString periodDate1;
    QString periodDate2;
    /// Start and end of the last confirmed period, in the words of the period dialog; "" where a side is
    /// unset.
    QString periodStart;
    QString periodEnd;
    QString periodExact;     // its days: "2024-1-1 至 2024-3-31"
    QString periodCondition; // the Filter that it put on the lines
    QString periodPurpose;   // what the register asks its period for
    /// First and last date that the display view in front shows; its report prints them.
    QString displayDate1;
    QString displayDate2;
    /// Amount and quantity of the order in hand, for the order report; its date is in periodDate1.
    QString orderAmount;
    QString orderQuantity;
    qint16 analysisKind = 0;
    QString analysisCaption;
    bool cutOnScreen = false; // the evaluation shows a cut of the best customers, not its source
    Evaluation evaluation;    // of what it shows
    /// First and last date of the whole as the evaluation shows them; Null while it has not been shown.
    QString evaluationDate1;
    QString evaluationDate2;
    QString turnoverTitle; // of the statistic in saleTable
    QString currentClerk;  // the salesperson whose customers are shown
    /// By interval of purchase, the numbers of its customers as a list for an In clause.
    std::array<QString, 26> intervalClients;
    /// Where the lines of one customer and of one product were taken from: Lines or PeriodLines.
    ShowSource clientLinesSource = ShowSource::Lines;
    ShowSource productLinesSource = ShowSource::Lines;
    bool orderIsPrinted = false; // the choice of an order ends on paper, not in a view
    qint16 safetyStock = 2;

    qint16 searchCode = 0; // field list of the search dialog
    /// Whose cursor the next search dialog filters; None: that of showSource.
    ShowSource searchSource = ShowSource::None;
    qint16 orderCode = 0; // cursor of the sort dialog

    /// What the product picker handed over last.
    struct PickedProduct {
        QString number;
        Bookmark row;
        double cost = 0;
    } pickedProduct;

    /// What the one report form that is open shares with the windows that print. Pages count from 1,
    /// `pageIndex` from 0.
    struct Report {
        int pageFrom = 0;
        int pageTo = 0;
        qint32 pageSaved = 0; // pageTo while a test print runs
        qint32 pageIndex = 0;
        qint32 pageFirst = 0;      // 1 if the report has rows
        QString period;            // days of what is printed, in words; empty for the whole
        QString reportFormTitle;   // handed over by the view that opens the report
        QString caller;            // view or window whose print command opened it
        QString totalCount;        // 数量 of a sales list, handed over by who opens its report
        QString totalAmount;       // 实付 of it
        qint16 reportReturned = 0; // 1 once the form has closed
        /// The printer as the last print or setup left it: its name, and its orientation as 1 portrait, 2
        /// landscape; "" and 0 while nothing has set them.
        QString printerName;
        int printerOrientation = 0;
    } report;

    RecordsetPtr clientTable;
    RecordsetPtr buyList;
    RecordsetPtr productTable;
    RecordsetPtr productTable2;
    RecordsetPtr buyList2; // the period copy; the basket has a cursor of its own
    RecordsetPtr clientTable2;
    RecordsetPtr clientTable3;
    RecordsetPtr clerkClients;   // one salesperson's customers
    RecordsetPtr productClients; // buyers of one product
    RecordsetPtr productLines;   // sales of one product
    RecordsetPtr tempTable2;
    RecordsetPtr buyList3;
    RecordsetPtr product_Bank;
    RecordsetPtr product_Bank2;
    RecordsetPtr stock_Count_Bank;
    RecordsetPtr return_Bank;
    RecordsetPtr return_Bank2;
    RecordsetPtr no_use_Bank;
    RecordsetPtr no_use_Bank2;
    RecordsetPtr out_of_Bank;
    RecordsetPtr out_of_Bank2; // the place of a period copy that nothing makes: transfers are shown whole
    RecordsetPtr counterCode;
    RecordsetPtr orderTable;
    RecordsetPtr saleTable;
    RecordsetPtr buy_Frequence_Table;
    RecordsetPtr month_Table;
    RecordsetPtr orderTotals;
    RecordsetPtr clerkTotals;
    RecordsetPtr oneProduct; // the stock of one product, for its window
    RecordsetPtr scratch;    // what one view picks out for the next window

    /// Today, without a time; tests put their own day here.
    std::function<QDate()> today = [] { return QDate::currentDate(); };
    QString todayText() const { return dateText(Moment::fromDate(today())); }

    void reopen(RecordsetPtr& slot, const QString& source) { ::reopen(slot, cn, source); }

    /// Opens a slot on all rows of a table. A table that is missing leaves it closed: work tables may be so.
    void reopenIfThere(RecordsetPtr& slot, const QString& table);
    /// The same for a slot that is closed; an open one stays as it is.
    void reopenIfClosed(RecordsetPtr& slot, const QString& table) {
        if (!slot->isOpen())
            reopenIfThere(slot, table);
    }

    /// Opens the cursors on customers, lines and products; with rows in none of them all is well too.
    void openMainCursors();
    /// The main window's opening: the main cursors, the counters, and showSource.
    void open_rs();
    /// Reads the next numbers from counterCode; without a row they stay as they are.
    void readCounters();
    /// Customer, product and order in hand from the first rows, empty without rows.
    void readCurrent();
    /// The current row of a customer cursor becomes the customer in hand; without one nothing changes.
    void takeCustomer(const RecordsetPtr& clients);
    /// Name and contact of the customer in hand as his row has them now; they stay where he has none.
    void refreshCustomer();

private:
    /// The shared cursors and the next numbers as they were when an action began: where it is taken back, no
    /// slot holds a cursor that it opened.
    struct Before {
        std::vector<RecordsetPtr> cursors;
        std::optional<double> nextClientNum;
        std::optional<double> nextOrderNum;
        std::optional<qint32> nextProductNum;
    };

    void transactionBegun() override;
    void transactionKept() override { m_before = {}; }
    void transactionTakenBack() noexcept override;
    void tellTakenBack() override {}
    std::vector<RecordsetPtr*> slotPlaces();
    std::vector<RecordsetPtr> cursors();

    Before m_before;
};

/// A counter as boxes, keys and conditions show it: "1001", "" while it is unset.
QString counterText(const std::optional<double>& number);
QString counterText(const std::optional<qint32>& number);

/// Writes a counter column of counterCode; without a row nothing is written and nothing fails.
void writeCounter(Session& session, const QString& column, double number);

/// A condition "column = 'key'" with the key's apostrophes doubled.
QString keyCondition(const QString& column, const QString& key);

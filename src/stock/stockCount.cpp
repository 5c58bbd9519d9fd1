#include "stock/stockCount.h"

#include "data/workTable.h"
#include "recordset/ignoringErrors.h"

namespace {

const QString kOpen = QStringLiteral("Select * From stock_Count_Bank");

void zeroEveryRow(const RecordsetPtr& count) {
    const int found = count->fieldIndex(QStringLiteral("实物数"));
    const int difference = count->fieldIndex(QStringLiteral("亏_盈"));
    for (int i = 0; i < count->RecordCount(); ++i) {
        count->moveTo(i);
        count->Fields(found).setValue(0.0);
        count->Fields(difference).setValue(QStringLiteral("0"));
        count->Update();
    }
}

/// The same for a table that nobody has looked at: row by row it would take as long as all the rest.
void zeroNewTable(Session& session) {
    session.cn.write(QStringLiteral("UPDATE stock_Count_Bank SET 实物数 = 0.0, 亏_盈 = '0'"));
    session.cn.forgetImage(QStringLiteral("stock_Count_Bank"));
    session.reopen(session.stock_Count_Bank, kOpen);
}

} // namespace

bool canCountStock(Session& session) {
    if (!session.productTable->isOpen())
        return false;
    session.productTable->clearFilter();
    return session.productTable->hasRows();
}

void newStockCount(Session& session) {
    IgnoringErrors errors;
    WriteBatch batch(session.cn);
    rebuildWorkTable(
        session, session.stock_Count_Bank, QStringLiteral("stock_Count_Bank"),
        {QStringLiteral("Select 流水号, 日期, 产品编号, 品名, 数量, 单价 As 实物数, 折扣 As 亏_盈, 成本, "
                        "计量单位, 规格, 产地, 厂家 Into stock_Count_Bank From productTable")},
        errors);
    errors.run([&] {
        if (!session.stock_Count_Bank->hasRows())
            return;
        zeroNewTable(session);
        session.stock_Count_Bank->MoveLast();
    });
    errors.run([&] { batch.finish(); });
}

bool continueStockCount(Session& session) {
    const RecordsetPtr& count = session.stock_Count_Bank;
    if (!count->isOpen() || count->pendingCount() == 0)
        session.reopen(session.stock_Count_Bank, kOpen);
    return session.stock_Count_Bank->hasRows();
}

void openStockCount(Session& session) {
    if (!session.stock_Count_Bank->isOpen())
        session.reopen(session.stock_Count_Bank, kOpen);
}

QString saveStockCount(Session& session) {
    return saveQuietly(session, session.stock_Count_Bank);
}

void cancelStockCount(Session& session) {
    IgnoringErrors errors;
    errors.run([&] {
        if (session.stock_Count_Bank->hasRows())
            session.stock_Count_Bank->CancelBatch(3);
    });
}

void clearStockCount(Session& session) {
    const RecordsetPtr& count = session.stock_Count_Bank;
    if (!count->hasRows())
        return;
    const QuietWalk walk(count);
    const auto row = count->currentRow();
    WriteBatch batch(session.cn);
    zeroEveryRow(count);
    batch.finish();
    if (row)
        count->moveToRow(*row);
}

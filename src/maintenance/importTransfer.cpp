#include "maintenance/importTransfer.h"

#include "recordset/error.h"
#include "recordset/ignoringErrors.h"
#include "recordset/tableImage.h"
#include "recordset/textNumber.h"

#include <QElapsedTimer>

#include <algorithm>
#include <numeric>

namespace {

constexpr int kBlock = 2000; // rows a transaction

constexpr ImportTarget kTargets[] = {
    {.number = 1,
     .command = u"Input_Data1",
     .caption = u"数据导入--> 客户资料表(clientTable)",
     .table = u"clientTable",
     .shared = &Session::clientTable,
     .derived = u"差额利润 消费合计 差额利润率 购买数",
     .note = u"客户编号 是必选字段名！",
     .required = u"客户编号",
     .numbers = u"",
     .checksDates = false,
     .recounts = true},
    {.number = 2,
     .command = u"Input_Data2",
     .caption = u"数据导入--> 购物明细表(buyList)",
     .table = u"buyList",
     .shared = &Session::buyList,
     .derived = u"差额利润",
     .note = u"日期、产品编号、品名、客户编号、订单号、成本、单价、数量、实付 是必选字段名！",
     .required = u"日期 客户编号 数量 实付",
     .numbers = u"成本 单价 数量 合计 实付",
     .checksDates = true,
     .recounts = true},
    {.number = 3,
     .command = u"Input_Data3",
     .caption = u"数据导入--> 销售库存表(productTable)",
     .table = u"productTable",
     .shared = &Session::productTable,
     .derived = u"",
     .note = u"日期、产品编号、品名、成本、单价、数量 是必选字段名！",
     .required = u"产品编号 单价 成本 数量",
     .numbers = u"成本 单价 数量",
     .checksDates = false,
     .recounts = false},
};

QStringList words(const char16_t* text) {
    return QString::fromUtf16(text).split(u' ', Qt::SkipEmptyParts);
}

/// Four digits and then "-": nothing more of a date is looked at.
bool beginsLikeADate(QStringView text) {
    return text.size() >= 5 && text[4] == u'-' &&
           std::all_of(text.begin(), text.begin() + 4, [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// The plan holds the columns of the source already in the order of the target's.
std::vector<int> placesInOrder(const ImportPlan& plan) {
    std::vector<int> places(std::size_t(plan.targetColumns.size()));
    std::iota(places.begin(), places.end(), 0);
    return places;
}

RecordsetPtr wholeTable(Session& session, const QString& table) {
    RecordsetPtr rows;
    session.reopen(rows, QStringLiteral("Select * From ") + table);
    return rows;
}

} // namespace

std::span<const ImportTarget> importTargets() {
    return kTargets;
}

const ImportTarget* findImportTarget(int number) {
    for (const ImportTarget& target : kTargets)
        if (target.number == number)
            return &target;
    return nullptr;
}

QStringList pairableColumns(Session& session, const ImportTarget& target) {
    const RecordsetPtr& shared = session.*target.shared;
    QStringList columns = shared->isOpen() ? shared->fieldNames() : QStringList();
    for (const QString& derived : words(target.derived))
        columns.removeAll(derived);
    return columns;
}

QStringList numberColumns(const ImportTarget& target) {
    return words(target.numbers);
}

QString judgement_field(const ImportPlan& plan, const QString& targetColumn) {
    return plan.sourceColumns.value(plan.targetColumns.indexOf(targetColumn));
}

QString missingPair(const ImportPlan& plan) {
    for (const QString& column : words(plan.target->required))
        if (judgement_field(plan, column).isEmpty())
            return column + QStringLiteral(" 是必选字段名！");
    return {};
}

bool passesDateTest(const QString& text) {
    return beginsLikeADate(withoutBlanks(text));
}

QString judgement_Date(const ImportPlan& plan) {
    const int column = int(plan.targetColumns.indexOf(QStringLiteral("日期")));
    if (!plan.target->checksDates || column < 0)
        return {};
    for (int row = 0; row < plan.rows.rowCount(); ++row)
        if (!passesDateTest(plan.rows.cell(row, column)))
            return QStringLiteral("第") + QString::number(row + 1) +
                   QStringLiteral("记录， 日期格式不符，请转换为如下格式\r\n2004-1-1 或 2004-10-10");
    return {};
}

RecordsetPtr sourceRecordset(Session& session, ImportPlan& plan) {
    auto source = std::make_shared<Recordset>(session.cn);
    source->OpenPicture(plan.rows.picture());
    return source;
}

RecordsetPtr targetRecordset(Session& session, const ImportPlan& plan) {
    auto target = std::make_shared<Recordset>(session.cn);
    target->Open(QStringLiteral("Select ") + plan.targetColumns.join(QStringLiteral(", ")) +
                 QStringLiteral(" From ") + QString::fromUtf16(plan.target->table));
    return target;
}

ImportTransfer::ImportTransfer(Session& session, const ImportPlan& plan, RecordsetPtr target)
    : m_session(session)
    , m_target(std::move(target))
    , m_row(plan.rows, placesInOrder(plan), m_target, numberColumns(*plan.target))
    , m_rows(plan.rows.rowCount()) {}

void ImportTransfer::run(int milliseconds) {
    const int start = m_done;
    QElapsedTimer clock;
    clock.start();
    const QuietWalk walk(m_target);
    try {
        WriteBatch batch(m_session.cn);
        while (!finished() && m_done - start < kBlock && clock.elapsed() < milliseconds)
            transferRow(m_done++);
        batch.finish();
    } catch (const DatabaseLost& lost) {
        if (lost.outcome() == Outcome::Unknown)
            throw;
        giveUp(lost.outcome() == Outcome::Booked ? m_done : start, lost.text());
    } catch (const ActionEnded& ended) {
        giveUp(ended.isBooked() ? m_done : start, ended.text());
    }
}

/// The block went back as a whole, a full disk mostly: what was committed before it, `done` rows, stands.
void ImportTransfer::giveUp(int done, const QString& fault) {
    m_session.cn.tellTakenBack();
    m_done = done;
    m_clean = false;
    m_fault = fault;
}

void ImportTransfer::transferRow(int row) {
    IgnoringErrors errors;
    // A value that its column refuses leaves the cell empty, and the row comes in all the same.
    const std::vector<CellValue>& values = m_row.make(row, errors);
    errors.run([&] { m_target->AddNew(values); });
    m_clean = m_clean && errors.number() == 0;
}

void com_return(Session& session, const ImportTarget& target) {
    const RecordsetPtr& shared = session.*target.shared;
    if (shared->isOpen())
        shared->Requery();
}

void refreshAfterImport(Session& session, const ImportTarget& target, const Progress& progress) {
    com_return(session, target);
    if (!session.buyList->isOpen())
        return;
    // On cursors of their own: the shared ones may hold edits that nobody has saved.
    const RecordsetPtr lines = wholeTable(session, QStringLiteral("buyList"));
    lineMarginRefresh(session.cn, lines);
    if (!session.clientTable->isOpen())
        return;
    client_totals_recount(session.cn, wholeTable(session, QStringLiteral("clientTable")), lines, progress);
    // As a recount on them leaves the shared ones.
    if (session.clientTable->pendingCount() == 0)
        session.clientTable->clearFilter();
    if (session.buyList->pendingCount() == 0)
        session.buyList->Requery();
}

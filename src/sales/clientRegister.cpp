#include "sales/clientRegister.h"

#include "data/cursorMoves.h"
#include "data/searchTexts.h"
#include "recordset/condition.h"
#include "recordset/error.h"
#include "recordset/textNumber.h"

#include <algorithm>

namespace {

bool isNumberBox(int index) {
    const std::vector<int>& boxes = registerNumberBoxes();
    return std::find(boxes.begin(), boxes.end(), index) != boxes.end();
}

QString searchText(const QString& text) {
    return containedInAny({QStringLiteral("客户编号"), QStringLiteral("单位名称"), QStringLiteral("联系人"),
                           QStringLiteral("电话"), QStringLiteral("生日")},
                          text);
}

/// Uses the proposed number up if a customer bears it now; the cursor stays on the new customer.
void takeClientNumber(Session& session) {
    const Bookmark added = session.clientTable->Bookmark();
    if (findKey(session.clientTable, QStringLiteral("客户编号"), counterText(session.nextClientNum))) {
        session.nextClientNum = session.nextClientNum.value_or(0) + 1;
        writeCounter(session, QStringLiteral("counterNum"), *session.nextClientNum);
    }
    session.clientTable->MoveLast();
    session.clientTable->setBookmark(added);
}

/// Whether the line that the search of a deletion leaves out, the first one without a filter, is this
/// customer's.
bool firstLineIsOf(Session& session, const QString& clientNum) {
    RecordsetPtr lines = session.buyList;
    if (!lines->Filter().isEmpty()) {
        const QString sort = lines->Sort();
        lines = std::make_shared<Recordset>(session.cn);
        lines->Open(QStringLiteral("Select * From buyList"));
        if (!sort.isEmpty())
            lines->setSort(sort);
    }
    return lines->hasRows() &&
           fieldText(lines->valueAt(0, lines->fieldIndex(QStringLiteral("客户编号")))) == clientNum;
}

} // namespace

const QStringList& registerColumns() {
    static const QStringList columns{
        QStringLiteral("客户编号"), QStringLiteral("联系人"),    QStringLiteral("生日"),
        QStringLiteral("电话"),     QStringLiteral("传真"),      QStringLiteral("手机"),
        QStringLiteral("Email"),    QStringLiteral("部门"),      QStringLiteral("单位名称"),
        QStringLiteral("地址"),     QStringLiteral("邮政编码"),  QStringLiteral("地区"),
        QStringLiteral("行业"),     QStringLiteral("消费合计"),  QStringLiteral("购买数"),
        QStringLiteral("客户级别"), QStringLiteral("业务员编号")};
    return columns;
}

const std::vector<int>& registerNumberBoxes() {
    static const std::vector<int> boxes{13, 14};
    return boxes;
}

QStringList record_Display(Session& session) {
    QStringList texts;
    const RecordsetPtr& clients = session.clientTable;
    if (!clients->hasRows() || !clients->currentRow())
        return QStringList(registerColumns().size(), QString());
    for (int i = 0; i < registerColumns().size(); ++i) {
        const QString text = clients->Fields(registerColumns()[i]).shown();
        texts << (isNumberBox(i) ? plainNumber(val(text)) : text);
    }
    return texts;
}

void record_Write(Session& session, const QStringList& boxes) {
    for (int i = 0; i < registerColumns().size(); ++i) {
        Field field = session.clientTable->Fields(registerColumns()[i]);
        if (isNumberBox(i))
            field.setValue(val(boxes[i]));
        else
            field.setFromBox(boxes[i]);
    }
    session.clientTable->Fields(QStringLiteral("差额利润")).setValue(0.0);
    session.clientTable->Fields(QStringLiteral("差额利润率")).setValue(QString());
}

void addClient(Session& session, const QStringList& boxes) {
    const QuietWalk walk(session.clientTable);
    WriteBatch batch(session.cn);
    session.clientTable->AddNew();
    record_Write(session, boxes);
    session.clientTable->Update();
    takeClientNumber(session);
    session.takeCustomer(session.clientTable);
    batch.finish();
}

void saveClient(Session& session, const QStringList& boxes) {
    WriteBatch batch(session.cn);
    record_Write(session, boxes);
    session.clientTable->Update();
    batch.finish();
}

void deleteClient(Session& session) {
    const RecordsetPtr& clients = session.clientTable;
    const QuietWalk walk(clients);
    WriteBatch batch(session.cn);
    const QString number = clients->Fields(QStringLiteral("客户编号")).text();
    clients->Delete();
    moveOnAfterDeletion(clients);
    deleteLinesOf(session, number);
    batch.finish();
}

void deleteLinesOf(Session& session, const QString& clientNum) {
    const RecordsetPtr& lines = session.buyList;
    const QuietWalk walk(lines);
    WriteBatch batch(session.cn);
    lines->clearFilter();
    if (!lines->hasRows())
        return;
    lines->MoveFirst();
    lines->MoveNext();
    while (!lines->isEOF()) {
        lines->Find(keyCondition(QStringLiteral("客户编号"), clientNum));
        if (lines->isEOF())
            break;
        lines->Delete();
        lines->MoveNext();
    }
    if (lines->hasRows() && lines->isEOF())
        lines->MoveLast();
    batch.finish();
}

int linesThatGo(Session& session) {
    const RecordsetPtr& lines = session.buyList;
    if (!lines->isOpen())
        return 0;
    const QString number = fieldText(session.clientTable->Fields(QStringLiteral("客户编号")).OriginalValue());
    Recordset his(session.cn);
    his.Open(QStringLiteral("Select * From buyList Where ") +
             keyCondition(QStringLiteral("客户编号"), number));
    return his.RecordCount() - int(firstLineIsOf(session, number));
}

bool searchClients(Session& session, const QString& text) {
    return setTypedFilter(session.clientTable, searchText, trimBlanks(text));
}

void set_date1_date2(Session& session) {
    const DateSpan dates = sortByDate(session.buyList);
    session.periodDate1 = dates.first;
    session.periodDate2 = dates.last;
}

void rs2_Search(Session& session, const QString& condition) {
    const QString number = session.clientTable->Fields(QStringLiteral("客户编号")).text();
    QString source =
        QStringLiteral("Select * From buyList Where ") + keyCondition(QStringLiteral("客户编号"), number);
    if (!condition.isEmpty())
        source += QStringLiteral(" And (") + condition + u')';
    session.reopen(session.buyList, source);
}

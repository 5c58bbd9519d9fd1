#include "recordset/recordset.h"

#include "recordset/dialect.h"
#include "recordset/dialectRun.h"
#include "recordset/error.h"
#include "recordset/predicate.h"
#include "recordset/recordsetBefore.h"
#include "recordset/shownText.h"
#include "recordset/textNumber.h"

#include <algorithm>
#include <atomic>

namespace {

quint64 nextOpening() {
    static std::atomic<quint64> openings{0};
    return ++openings;
}

} // namespace

QString Field::Name() const {
    return m_recordset->fieldInfo(m_index).name;
}

ColumnType Field::type() const {
    return m_recordset->fieldInfo(m_index).type;
}

int Field::DefinedSize() const {
    return m_recordset->fieldInfo(m_index).definedSize;
}

CellValue Field::Value() const {
    return m_recordset->valueOf(m_recordset->requireRow(), m_index);
}

QString Field::shown() const {
    return m_recordset->shownOf(m_recordset->requireRow(), m_index);
}

CellValue Field::OriginalValue() const {
    return m_recordset->originalOf(m_recordset->requireRow(), m_index);
}

void Field::setValue(const CellValue& value) {
    m_recordset->assign(m_index, value);
}

bool Field::isTooLongFor(const QString& boxText) const {
    const QStringView text = withoutBlanks(boxText);
    return type() == ColumnType::Text && text.size() > DefinedSize() && text == shown();
}

void Field::setFromBox(const QString& boxText) {
    if (!isTooLongFor(boxText))
        setValue(trimBlanks(boxText));
}

Recordset::Recordset(Connection& connection)
    : m_connection(connection) {
    m_connection.enrol(this);
}

Recordset::~Recordset() {
    m_connection.leave(this);
    if (m_image)
        m_image->detach(this);
}

void Recordset::Open(const QString& source) {
    if (isOpen())
        fail(ErrorNumber::IsOpen, QStringLiteral("记录集已打开"), source);
    const SqlStatement statement = parseStatement(source);
    m_source = source;
    if (statement.kind != SqlStatement::Kind::Select)
        return runParsed(m_connection, statement);
    try {
        if (statement.isResult())
            openResult(statement);
        else
            openTable(statement);
    } catch (...) {
        Close();
        throw;
    }
    startAfresh();
}

void Recordset::OpenPicture(std::shared_ptr<TableImage> picture) {
    if (isOpen())
        fail(ErrorNumber::IsOpen, QStringLiteral("记录集已打开"));
    m_source.clear();
    attachPicture(std::move(picture));
    startAfresh();
}

void Recordset::OpenRows(const Recordset& other, std::vector<RowId> rows) {
    if (isOpen())
        fail(ErrorNumber::IsOpen, QStringLiteral("记录集已打开"));
    m_source.clear();
    attach(other.m_image);
    m_fields = other.m_fields;
    m_keyset = {0, std::move(rows)};
    startAfresh();
}

void Recordset::startAfresh() {
    m_pageSize = 10;
    m_filterText.clear();
    m_sortText.clear();
    m_sort.clear();
    showAllRows();
    goFirst();
    settle();
}

void Recordset::Close() {
    if (m_image)
        m_image->detach(this);
    m_image.reset();
    m_edits.clear();
    m_added.clear();
    m_keyset = {};
    m_view.clear();
    m_position = {};
    ++m_viewVersion;
    notify([](RecordsetObserver& observer) { observer.viewReset(); });
}

void Recordset::attach(std::shared_ptr<TableImage> image) {
    if (m_image)
        m_image->detach(this);
    m_image = std::move(image);
    m_image->attach(this);
    m_opening = nextOpening();
    m_edits.clear();
    m_added.clear();
    m_insertedAs.clear();
}

void Recordset::openResult(const SqlStatement& statement) {
    attachPicture(runQuery(m_connection, statement));
}

void Recordset::attachPicture(std::shared_ptr<TableImage> picture) {
    attach(std::move(picture));
    m_fields.clear();
    for (int i = 0; i < m_image->columnCount(); ++i)
        m_fields.push_back(i);
    m_keyset = {m_image->size(), {}};
}

void Recordset::openTable(const SqlStatement& statement) {
    attach(m_connection.image(statement.table));
    selectFields(statement);
    readKeyset(statement);
}

void Recordset::selectFields(const SqlStatement& statement) {
    m_fields.clear();
    for (const SelectItem& item : statement.items) {
        if (item.kind == SelectItem::Kind::All) {
            for (int i = 0; i < m_image->columnCount(); ++i)
                m_fields.push_back(i);
            continue;
        }
        const int column = m_image->columnIndex(item.column);
        if (column < 0 || !item.alias.isEmpty())
            fail(ErrorNumber::NoSuchField, QStringLiteral("没有此列：%1").arg(item.name()), m_source);
        m_fields.push_back(column);
    }
}

void Recordset::readKeyset(const SqlStatement& statement) {
    m_keyset = {m_image->size(), {}};
    if (statement.where)
        m_keyset = {0, rowsWhere(m_connection, *m_image, statement)};
    std::vector<SortKey> keys;
    for (const OrderItem& order : statement.orderBy) {
        const int column = m_image->columnIndex(order.item.column);
        if (column < 0)
            fail(ErrorNumber::NoSuchField, QStringLiteral("没有此列：%1").arg(order.item.column), m_source);
        keys.push_back({column, order.descending});
    }
    if (!keys.empty())
        m_keyset = {0, sortedRows(m_keyset.sequence(*m_image), keys, *m_image, {})};
    if (statement.top >= 0) {
        std::vector<RowId> rows = m_keyset.sequence(*m_image);
        rows.resize(std::min(rows.size(), std::size_t(statement.top)));
        m_keyset = {0, std::move(rows)};
    }
}

void Recordset::Requery() {
    requireOpen();
    const SqlStatement statement = parseStatement(m_source);
    try {
        if (statement.isResult())
            openResult(statement);
        else
            openTable(statement);
        m_filterText.clear();
        showAllRows();
    } catch (...) {
        Close();
        throw;
    }
    goFirst();
    settle();
}

void Recordset::requireOpen() const {
    if (!m_image)
        fail(ErrorNumber::IsClosed, QStringLiteral("记录集已关闭"), m_source);
}

RowId Recordset::requireRow() const {
    requireOpen();
    if (m_position.place != Place::OnRow)
        fail(ErrorNumber::NoCurrentRow, QStringLiteral("没有当前记录"), m_source);
    return m_view.at(m_position.at);
}

std::optional<RowId> Recordset::currentRow() const {
    if (!m_image || m_position.place != Place::OnRow)
        return std::nullopt;
    return m_view.at(m_position.at);
}

Field Recordset::Fields(const QString& name) {
    return Field(*this, fieldIndex(name));
}

Field Recordset::Fields(int index) {
    requireOpen();
    if (index < 0 || index >= fieldCount())
        fail(ErrorNumber::NoSuchField, QStringLiteral("没有此列：%1").arg(index), m_source);
    return Field(*this, index);
}

int Recordset::fieldCount() const {
    requireOpen();
    return int(m_fields.size());
}

int Recordset::fieldIndex(const QString& name) const {
    requireOpen();
    for (std::size_t i = 0; i < m_fields.size(); ++i)
        if (m_image->info(m_fields[i]).name.compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    fail(ErrorNumber::NoSuchField, QStringLiteral("没有此列：%1").arg(name), m_source);
}

QStringList Recordset::fieldNames() const {
    QStringList names;
    for (int i = 0; i < fieldCount(); ++i)
        names << fieldInfo(i).name;
    return names;
}

const ColumnInfo& Recordset::fieldInfo(int field) const {
    requireOpen();
    return m_image->info(m_fields[std::size_t(field)]);
}

void Recordset::prefetch(const QStringList& fields) const {
    std::vector<int> columns;
    for (const QString& name : fields)
        columns.push_back(imageColumn(fieldIndex(name)));
    m_image->load(columns);
}

CellValue Recordset::originalOf(RowId row, int field) const {
    return isNewRow(row) ? CellValue() : m_image->value(row, imageColumn(field));
}

CellValue Recordset::valueOf(RowId row, int field) const {
    if (!m_edits.empty())
        if (const CellValue* value = m_edits.find(row, imageColumn(field)))
            return *value;
    return originalOf(row, field);
}

QString Recordset::shownOf(RowId row, int field) const {
    const CellValue* edit = m_edits.empty() ? nullptr : m_edits.find(row, imageColumn(field));
    if (edit || isNewRow(row))
        return edit ? shownText(fieldText(*edit)) : QString();
    return m_image->shown(row, imageColumn(field));
}

std::optional<QString> Recordset::shownAtOnce(int position, int field) const {
    return m_connection.atOnce([&] { return shownAt(position, field); });
}

CellValue Recordset::valueAt(int position, int field) const {
    return valueOf(rowAt(position), field);
}

void Recordset::settle() {
    if (m_quiet > 0)
        return;
    const CurrentMark now{m_position.place, currentRow().value_or(0), m_viewVersion};
    if (now == m_told)
        return;
    m_told = now;
    notify([](RecordsetObserver& observer) { observer.currentChanged(); });
}

void Recordset::rowUpdated(Row row) {
    if (m_observers.empty())
        return;
    if (const auto place = m_view.find(row))
        notify([&](RecordsetObserver& observer) { observer.rowChanged(int(m_view.positionOf(*place))); });
}

void Recordset::rowAboutToBeDeleted(Row row) {
    m_beingDeleted = m_view.find(row);
    if (!m_beingDeleted)
        return;
    const int position = int(m_view.positionOf(*m_beingDeleted));
    notify([position](RecordsetObserver& observer) { observer.rowsAboutToBeRemoved(position, position); });
}

void Recordset::rowDeleted(Row row) {
    m_edits.drop(row);
    if (!m_beingDeleted)
        return;
    removeFromView(*std::exchange(m_beingDeleted, std::nullopt));
    settle();
}

void Recordset::removeFromView(RowView::Place place) {
    const bool current = m_position.place == Place::OnRow && m_position.at == place;
    m_view.punch(place);
    if (current)
        m_position = {Place::Gone, place + 1};
    m_view.tidy(m_position.at);
    ++m_viewVersion;
    notify([](RecordsetObserver& observer) { observer.rowsRemoved(); });
}

void Recordset::allRowsDeleted() {
    const auto row = currentRow();
    std::vector<RowId> fresh;
    for (const RowId each : m_keyset.rows)
        if (isNewRow(each))
            fresh.push_back(each);
    m_keyset = {0, fresh};
    m_judged = 0;
    for (const auto& [each, cells] : std::map(m_edits.rows()))
        if (!isNewRow(each))
            m_edits.drop(each);
    m_view.assign(fresh);
    if (place() == Place::OnRow)
        m_position = isNewRow(*row) ? Position{Place::OnRow, *m_view.find(*row)} : Position{Place::Gone, 0};
    else
        m_position.at = 0;
    ++m_viewVersion;
    notify([](RecordsetObserver& observer) { observer.viewReset(); });
    settle();
}

QuietWalk::QuietWalk(RecordsetPtr recordset)
    : m_recordset(std::move(recordset))
    , m_exceptions(std::uncaught_exceptions()) {
    ++m_recordset->m_quiet;
}

QuietWalk::~QuietWalk() noexcept(false) {
    --m_recordset->m_quiet;
    if (std::uncaught_exceptions() == m_exceptions)
        m_recordset->settle();
}

void reopen(RecordsetPtr& slot, Connection& connection, const QString& source) {
    slot = std::make_shared<Recordset>(connection);
    slot->Open(source);
}

void runStatement(Connection& connection, const QString& source) {
    Recordset(connection).Open(source);
}

QString positionText(const RecordsetPtr& recordset) {
    if (!recordset->hasRows())
        return QStringLiteral("0/0");
    const int count = recordset->RecordCount();
    int position = recordset->AbsolutePosition();
    if (recordset->isEOF())
        position = count;
    else if (position < 0)
        position = 1;
    return QStringLiteral("%1/%2").arg(position).arg(count);
}

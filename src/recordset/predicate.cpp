#include "recordset/predicate.h"

#include "recordset/error.h"
#include "recordset/textNumber.h"
#include "recordset/textTest.h"

#include <algorithm>
#include <cmath>

namespace {

using Mask = std::vector<char>;

[[noreturn]] void refuse(const Clause& clause) {
    fail(ErrorNumber::BadText, QStringLiteral("条件无效：%1").arg(clause.column), clause.literal.text);
}

template <typename T> bool holds(CompareOp op, const T& a, const T& b) {
    switch (op) {
    case CompareOp::Equal:
        return a == b;
    case CompareOp::NotEqual:
        return a != b;
    case CompareOp::Less:
        return a < b;
    case CompareOp::Greater:
        return a > b;
    case CompareOp::LessEqual:
        return a <= b;
    default:
        return a >= b;
    }
}

double numberLiteral(const Clause& clause) {
    const auto number =
        clause.literal.kind == Literal::Kind::Date ? std::nullopt : parseNumeric(clause.literal.text);
    if (!number)
        refuse(clause);
    return *number;
}

qint64 dateLiteral(const Clause& clause) {
    const auto moment = clause.literal.kind == Literal::Kind::Date   ? parseDateLiteral(clause.literal.text)
                        : clause.literal.kind == Literal::Kind::Text ? parseDate(clause.literal.text)
                                                                     : std::nullopt;
    if (!moment)
        refuse(clause);
    return moment->seconds;
}

/// How a part of a condition is put to what the parts before it have found.
enum class Mix { Set, Or, And };

template <typename TestRow> void mixRows(Mask& mask, Mix mix, TestRow&& passes) {
    const Row rows = Row(mask.size());
    switch (mix) {
    case Mix::Set:
        for (Row row = 0; row < rows; ++row)
            mask[row] = char(passes(row));
        return;
    case Mix::Or:
        for (Row row = 0; row < rows; ++row)
            mask[row] = char(mask[row] | char(passes(row)));
        return;
    case Mix::And:
        for (Row row = 0; row < rows; ++row)
            mask[row] = char(mask[row] & char(passes(row)));
    }
}

void mixAll(Mask& mask, Mix mix, bool passes) {
    if (mix == Mix::Set || passes == (mix == Mix::Or))
        std::fill(mask.begin(), mask.end(), char(passes));
}

} // namespace

struct Predicate::Leaf {
    int column = 0;
    CompareOp op = CompareOp::Equal;
    const ColumnStore* store = nullptr;
    std::shared_ptr<TextTest> text;
    std::vector<TextPool::Code> codes; // text equality: the codes that pass
    Mask hits;                         // other text tests: by code
    bool anyHit = false;
    double number = 0;
    qint64 moment = 0;

    ColumnType type() const { return store->info.type; }
    bool isEquality() const { return text && text->isEquality(); }

    /// Puts the test of every row to the mask.
    void applyTo(Mask& mask, Mix mix) const {
        if (type() != ColumnType::Text)
            return mixRows(mask, mix, [this](Row row) { return test(row); });
        if (isEquality() ? codes.empty() : !anyHit)
            return mixAll(mask, mix, false);
        const TextPool::Code* const held = store->codes.data();
        if (isEquality() && codes.size() == 1)
            return mixRows(mask, mix, [held, code = codes.front()](Row row) { return held[row] == code; });
        if (isEquality())
            return mixRows(mask, mix, [this, held](Row row) { return testCode(held[row]); });
        mixRows(mask, mix, [held, passed = hits.data()](Row row) { return passed[held[row]]; });
    }

    bool testCode(TextPool::Code code) const {
        if (isEquality())
            return std::find(codes.begin(), codes.end(), code) != codes.end();
        return code < hits.size() && hits[code] != 0;
    }

    bool test(Row row) const {
        switch (type()) {
        case ColumnType::Text:
            return testCode(store->codes[row]);
        case ColumnType::Number:
            return !std::isnan(store->numbers[row]) && holds(op, store->numbers[row], number);
        case ColumnType::Date:
            return store->moments[row] != ColumnStore::NullMoment && holds(op, store->moments[row], moment);
        default:
            return store->integers[row] != ColumnStore::NullInteger &&
                   holds(op, double(store->integers[row]), number);
        }
    }

    bool testValue(const CellValue& value) const {
        if (const auto* held = std::get_if<QString>(&value))
            return (*text)(held->toStdString());
        if (const auto* held = std::get_if<double>(&value))
            return holds(op, *held, number);
        if (const auto* held = std::get_if<qint32>(&value))
            return holds(op, double(*held), number);
        const auto* held = std::get_if<Moment>(&value);
        return held && holds(op, held->seconds, moment);
    }
};

struct Predicate::Node {
    Condition::Kind kind = Condition::Kind::Clause;
    Leaf leaf;
    std::vector<Node> parts;

    template <typename TestLeaf> bool evaluate(TestLeaf&& testLeaf) const {
        if (kind == Condition::Kind::Clause)
            return testLeaf(leaf);
        const bool stopAt = kind == Condition::Kind::Or;
        for (const Node& part : parts)
            if (part.evaluate(testLeaf) == stopAt)
                return stopAt;
        return !stopAt;
    }

    /// Puts the leaf or the parts to `mask`, a column after the other.
    void applyTo(Mask& mask, Mix mix) const {
        if (kind == Condition::Kind::Clause)
            return leaf.applyTo(mask, mix);
        const Mix ours = kind == Condition::Kind::Or ? Mix::Or : Mix::And;
        if (mix == Mix::Set || mix == ours) {
            for (const Node& part : parts)
                part.applyTo(mask, &part == &parts.front() ? mix : ours);
            return;
        }
        Mask together(mask.size());
        applyTo(together, Mix::Set);
        mixRows(mask, mix, [&together](Row row) { return together[row]; });
    }
};

Predicate::Leaf Predicate::compileLeaf(const Clause& clause, const TableImage& image,
                                       const std::vector<int>& fields) {
    Leaf leaf;
    leaf.column = image.columnIndex(clause.column);
    if (leaf.column < 0 || std::find(fields.begin(), fields.end(), leaf.column) == fields.end())
        refuse(clause);
    leaf.op = clause.op;
    const ColumnType type = image.info(leaf.column).type;
    if (clause.op == CompareOp::Like && type != ColumnType::Text)
        refuse(clause);
    if (type == ColumnType::Text)
        leaf.text = std::make_shared<TextTest>(clause);
    else if (type == ColumnType::Date)
        leaf.moment = dateLiteral(clause);
    else
        leaf.number = numberLiteral(clause);
    return leaf;
}

Predicate::Node Predicate::compile(const Condition& condition, const TableImage& image,
                                   const std::vector<int>& fields) {
    Node node;
    node.kind = condition.kind;
    if (node.kind == Condition::Kind::Clause)
        node.leaf = compileLeaf(condition.clause, image, fields);
    for (const Condition& part : condition.parts)
        node.parts.push_back(compile(part, image, fields));
    return node;
}

Predicate::Predicate(const Condition& condition, const TableImage& image, const std::vector<int>& fields)
    : m_image(&image)
    , m_root(std::make_unique<Node>(compile(condition, image, fields))) {
    // All texts of the condition are known to be good; only now are its columns read, in one scan.
    std::vector<int> columns;
    const auto visit = [&](auto& self, Node& node, auto&& act) -> void {
        if (node.kind == Condition::Kind::Clause)
            act(node.leaf);
        for (Node& part : node.parts)
            self(self, part, act);
    };
    visit(visit, *m_root, [&](Leaf& leaf) { columns.push_back(leaf.column); });
    image.load(columns);
    visit(visit, *m_root, [&](Leaf& leaf) {
        leaf.store = &image.column(leaf.column);
        if (!leaf.text)
            return;
        const TextPool& pool = leaf.store->pool;
        if (leaf.isEquality()) {
            leaf.codes = pool.findEqual(leaf.text->text());
            return;
        }
        leaf.hits = leaf.text->hits(pool);
        leaf.anyHit = std::find(leaf.hits.begin(), leaf.hits.end(), 1) != leaf.hits.end();
    });
}

Predicate::~Predicate() = default;
Predicate::Predicate(Predicate&&) noexcept = default;

bool Predicate::test(RowId row, const PendingEdits& edits) const {
    return m_root->evaluate([&](const Leaf& leaf) {
        if (!edits.empty())
            if (const CellValue* value = edits.find(row, leaf.column))
                return leaf.testValue(*value);
        return !isNewRow(row) && leaf.test(row);
    });
}

/// The equality whose rows are to be looked at: of several that all must hold the one with the fewest.
const Predicate::Leaf* Predicate::indexedLeaf() const {
    if (m_root->kind == Condition::Kind::Clause)
        return m_root->leaf.isEquality() ? &m_root->leaf : nullptr;
    const Leaf* best = nullptr;
    std::size_t fewest = 0;
    if (m_root->kind == Condition::Kind::And)
        for (const Node& part : m_root->parts) {
            if (part.kind != Condition::Kind::Clause || !part.leaf.isEquality())
                continue;
            const std::size_t count =
                m_image->countEqual(part.leaf.column, part.leaf.codes).value_or(m_image->size());
            if (!best || count < fewest) {
                best = &part.leaf;
                fewest = count;
            }
        }
    return best;
}

void Predicate::selectPrefix(Row prefix, std::vector<RowId>& rows) const {
    if (const Leaf* leaf = indexedLeaf()) {
        std::vector<Row> candidates;
        m_image->collectEqual(leaf->column, leaf->codes, prefix, candidates);
        for (const Row row : candidates)
            if (m_root->evaluate([row](const Leaf& each) { return each.test(row); }))
                rows.push_back(row);
        return;
    }
    Mask mask(prefix);
    m_root->applyTo(mask, Mix::Set);
    for (Row row = 0; row < prefix; ++row)
        if (mask[row] && !m_image->isDeleted(row))
            rows.push_back(row);
}

std::optional<std::vector<Row>> Predicate::indexedRows() const {
    if (m_root->kind != Condition::Kind::Clause || !m_root->leaf.isEquality())
        return std::nullopt;
    std::vector<Row> rows;
    m_image->collectEqual(m_root->leaf.column, m_root->leaf.codes, m_image->size(), rows);
    return rows;
}

std::vector<RowId> Predicate::select(const Keyset& keyset, const PendingEdits& edits) const {
    std::vector<RowId> rows;
    selectPrefix(keyset.prefix, rows);
    if (!edits.empty()) {
        // Rows with pending edits are judged by what this cursor shows, whatever the table holds.
        std::erase_if(rows, [&](RowId row) { return edits.has(row); });
        for (const auto& [row, cells] : edits.rows())
            if (row < keyset.prefix && !m_image->isDeleted(row) && test(row, edits))
                rows.insert(std::lower_bound(rows.begin(), rows.end(), row), row);
    }
    for (const RowId row : keyset.rows)
        if ((isNewRow(row) || !m_image->isDeleted(row)) && test(row, edits))
            rows.push_back(row);
    return rows;
}

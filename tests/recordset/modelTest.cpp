// A plain model of a cursor, obviously correct and slow, is driven beside the recordset by the same random
// operations; after each one everything that can be seen must agree.
#include "support/printQt.h"
#include "support/scratchFile.h"

#include "support/errorOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace {

struct ModelRow {
    int id;
    std::optional<QString> k;
    std::optional<double> n;
    bool dead = false;
};
using ModelRowPtr = std::shared_ptr<ModelRow>;

struct ModelEdit {
    std::optional<std::optional<QString>> k;
    std::optional<std::optional<double>> n;
};

/// The table: rows in order of insertion.
using ModelTable = std::vector<ModelRowPtr>;

int compareKeys(const std::optional<QString>& a, const std::optional<QString>& b) {
    if (!a || !b)
        return int(a.has_value()) - int(b.has_value());
    return QString::compare(a->toLower(), b->toLower());
}

int compareNumbers(const std::optional<double>& a, const std::optional<double>& b) {
    if (!a || !b)
        return int(a.has_value()) - int(b.has_value());
    return *a < *b ? -1 : *a > *b;
}

enum class At { OnRow, Before, After, None, Gone };

class ModelCursor {
public:
    explicit ModelCursor(ModelTable& table)
        : m_table(table) {
        requery();
    }

    void requery() {
        edits.clear();
        keyset.clear();
        for (const auto& row : m_table)
            if (!row->dead)
                keyset.push_back(row);
        filter = 0;
        applyFilter();
    }

    std::optional<QString> k(const ModelRowPtr& row) const {
        const auto edit = edits.find(row);
        return edit != edits.end() && edit->second.k ? *edit->second.k : row->k;
    }
    std::optional<double> n(const ModelRowPtr& row) const {
        const auto edit = edits.find(row);
        return edit != edits.end() && edit->second.n ? *edit->second.n : row->n;
    }

    bool passes(const ModelRowPtr& row) const {
        const auto key = k(row);
        const auto number = n(row);
        switch (filter) {
        case 1:
            return key && key->toLower() == u"a";
        case 2:
            return key && key->toLower().contains(u'b');
        case 3:
            return number && *number >= 3;
        case 4:
            return (key && key->toLower() == u"ab") || (number && *number < 2);
        case 5:
            return key && key->toLower() == u"b" && number && *number != 1;
        default:
            return true;
        }
    }

    void applyFilter() {
        show([this](const ModelRowPtr& row) { return passes(row); });
    }

    /// The rows shown stay whatever they have become; only those added since are judged by the filter.
    void applySort() {
        const std::set<ModelRowPtr> shown(view.begin(), view.end());
        show([&](const ModelRowPtr& row) {
            return unjudged.count(row) ? passes(row) : filter == 0 || shown.count(row) > 0;
        });
    }

    template <typename Stands> void show(Stands&& stands) {
        view.clear();
        for (const auto& row : keyset)
            if (!row->dead && stands(row))
                view.push_back(row);
        unjudged.clear();
        const auto less = [this](const ModelRowPtr& a, const ModelRowPtr& b) {
            const int byKey = compareKeys(k(a), k(b));
            const int byNumber = compareNumbers(n(a), n(b));
            switch (sort) {
            case 1:
                return byKey < 0;
            case 2:
                return byNumber > 0;
            case 3:
                return byKey != 0 ? byKey > 0 : byNumber < 0;
            default:
                return false;
            }
        };
        std::stable_sort(view.begin(), view.end(), less);
        at = view.empty() ? At::None : At::OnRow;
        index = 0;
    }

    void rowDied(const ModelRowPtr& row) {
        edits.erase(row);
        std::erase(keyset, row);
        const auto found = std::find(view.begin(), view.end(), row);
        if (found == view.end())
            return;
        const int where = int(found - view.begin());
        view.erase(found);
        if (at == At::OnRow && where == index)
            at = At::Gone; // index now names the row that followed
        else if ((at == At::OnRow || at == At::Gone) && where < index)
            --index;
    }

    int position() const {
        if (view.empty())
            return -1;
        return at == At::OnRow ? index + 1 : at == At::Before ? -2 : at == At::After ? -3 : -1;
    }

    /// False where the move is refused.
    bool move(int kind) {
        const int count = int(view.size());
        if (at == At::None)
            return false;
        if (kind == 0 || kind == 1) {
            at = count == 0 ? At::None : At::OnRow;
            index = kind == 0 ? 0 : count - 1;
            return true;
        }
        if (kind == 2) {
            if (at == At::After)
                return false;
            const int next = at == At::Before ? 0 : at == At::OnRow ? index + 1 : index;
            at = next < count ? At::OnRow : at == At::Before ? At::None : At::After;
            index = next;
            return true;
        }
        if (at == At::Before)
            return false;
        const int previous = at == At::After ? count - 1 : index - 1;
        at = previous >= 0 ? At::OnRow : at == At::After ? At::None : At::Before;
        index = previous;
        return true;
    }

    void find(const QString& key) {
        int from = at == At::OnRow || at == At::Gone ? index : at == At::Before ? 0 : int(view.size());
        for (; from < int(view.size()); ++from)
            if (k(view[std::size_t(from)]) && k(view[std::size_t(from)])->toLower() == key.toLower()) {
                at = At::OnRow;
                index = from;
                return;
            }
        at = At::After;
    }

    ModelRowPtr current() const { return at == At::OnRow ? view[std::size_t(index)] : nullptr; }

    ModelTable& m_table;
    std::vector<ModelRowPtr> keyset;
    std::vector<ModelRowPtr> view;
    std::map<ModelRowPtr, ModelEdit> edits;
    std::map<ModelRowPtr, std::pair<ModelRowPtr, At>> added; // new rows -> what was current before
    std::set<ModelRowPtr> unjudged;                          // added since the last filter or sort
    int filter = 0;
    int sort = 0;
    At at = At::None;
    int index = 0;
};

const char* const kFilters[] = {"",       "k = 'A'",           "k Like '%b%'",
                                "n >= 3", "k = 'ab' Or n < 2", "k = 'B' And n <> 1"};
const char* const kSorts[] = {"", "k", "n Desc", "k Desc, n"};

class Pair {
public:
    Pair(ScratchFile& file, ModelTable& table)
        : real(file.open("Select * From t"))
        , model(table) {}

    void compare(const char* what, int step) const {
        ASSERT_EQ(real->RecordCount(), int(model.view.size())) << what << " at step " << step;
        ASSERT_EQ(real->AbsolutePosition(), model.position()) << what << " at step " << step;
        ASSERT_EQ(real->isBOF(), model.at == At::Before || model.at == At::None)
            << what << " at step " << step;
        ASSERT_EQ(real->isEOF(), model.at == At::After || model.at == At::None)
            << what << " at step " << step;
        ASSERT_EQ(real->pendingCount(), int(model.edits.size())) << what << " at step " << step;
        for (int i = 0; i < int(model.view.size()); ++i) {
            const ModelRowPtr& row = model.view[std::size_t(i)];
            const auto k = model.k(row);
            const auto n = model.n(row);
            ASSERT_EQ(real->valueAt(i, 1), k ? CellValue(*k) : CellValue())
                << what << " row " << i << " at step " << step;
            ASSERT_EQ(real->valueAt(i, 2), n ? CellValue(*n) : CellValue())
                << what << " row " << i << " at step " << step;
        }
    }

    RecordsetPtr real;
    ModelCursor model;
};

class World {
public:
    explicit World(unsigned seed)
        : m_file(QStringLiteral("CREATE TABLE t (流水号 INTEGER, k TEXT(20) COLLATE NOCASE, n REAL);"))
        , m_random(seed) {
        for (int i = 0; i < 3; ++i)
            m_cursors.push_back(std::make_unique<Pair>(m_file, m_table));
    }

    void step(int number) {
        Pair& pair = *m_cursors[std::size_t(pick(int(m_cursors.size())))];
        const char* what = act(pair);
        for (const auto& each : m_cursors) {
            each->compare(what, number);
            if (testing::Test::HasFatalFailure())
                return;
        }
    }

    void compareStored() {
        QStringList expected;
        for (const auto& row : m_table)
            if (!row->dead)
                expected << (row->k ? *row->k : QStringLiteral("Null"));
        EXPECT_EQ(m_file.stored("SELECT k FROM t ORDER BY rowid"), expected.join(u','));
    }

private:
    int pick(int below) { return int(m_random() % unsigned(below)); }

    std::optional<QString> randomKey() {
        static const char* const keys[] = {"a", "A", "b", "ab", "AB", "c", ""};
        const int which = pick(8);
        return which == 7 ? std::nullopt : std::optional<QString>(keys[which]);
    }

    std::optional<double> randomNumber() {
        return pick(6) == 0 ? std::nullopt : std::optional(double(pick(6)));
    }

    const char* act(Pair& pair) {
        switch (pick(16)) {
        case 0:
        case 1:
        case 2:
            return move(pair);
        case 3:
            return find(pair);
        case 4:
            pair.model.filter = pick(6);
            pair.real->setFilter(kFilters[pair.model.filter]);
            pair.model.applyFilter();
            return "Filter";
        case 5:
            pair.model.sort = pick(4);
            pair.real->setSort(kSorts[pair.model.sort]);
            pair.model.applySort();
            return "Sort";
        case 6:
        case 7:
            return assign(pair);
        case 8:
        case 9:
            return update(pair);
        case 10:
        case 11:
            return addNew(pair);
        case 12:
            return remove(pair);
        case 13:
            return batch(pair);
        case 14:
            return cancel(pair);
        default:
            if (pick(4) == 0) {
                pair.real->Requery();
                pair.model.requery();
                pair.model.added.clear();
                return "Requery";
            }
            return jump(pair);
        }
    }

    const char* move(Pair& pair) {
        const int kind = pick(4);
        const int error = errorOf([&] {
            if (kind == 0)
                pair.real->MoveFirst();
            else if (kind == 1)
                pair.real->MoveLast();
            else if (kind == 2)
                pair.real->MoveNext();
            else
                pair.real->MovePrevious();
        });
        EXPECT_EQ(error, pair.model.move(kind) ? 0 : 3021);
        return "Move";
    }

    const char* find(Pair& pair) {
        const QString key = randomKey().value_or(QStringLiteral("zz"));
        const int error = errorOf([&] { pair.real->Find(QStringLiteral("k = '%1'").arg(key)); });
        EXPECT_EQ(error, pair.model.at == At::None ? 3021 : 0);
        if (error == 0)
            pair.model.find(key);
        return "Find";
    }

    const char* jump(Pair& pair) {
        const int position = pick(int(pair.model.view.size()) + 3);
        const int count = int(pair.model.view.size());
        const int error = errorOf([&] { pair.real->setAbsolutePosition(position); });
        EXPECT_EQ(error, count == 0 ? 3021 : position <= 0 ? 3001 : 0);
        if (error == 0) {
            pair.model.at = position > count ? At::After : At::OnRow;
            pair.model.index = position > count ? count : position - 1;
        }
        return "AbsolutePosition";
    }

    const char* assign(Pair& pair) {
        const ModelRowPtr row = pair.model.current();
        const auto key = randomKey();
        const auto number = randomNumber();
        const bool text = pick(2) == 0;
        const int error = errorOf([&] {
            if (text)
                pair.real->Fields("k").setValue(key ? CellValue(*key) : CellValue());
            else
                pair.real->Fields("n").setValue(number ? CellValue(*number) : CellValue());
        });
        EXPECT_EQ(error, row ? 0 : 3021);
        if (row && text)
            pair.model.edits[row].k = key;
        else if (row)
            pair.model.edits[row].n = number;
        return "Value";
    }

    void write(ModelCursor& cursor, const ModelRowPtr& row) {
        const ModelEdit edit = cursor.edits[row];
        if (edit.k)
            row->k = *edit.k;
        if (edit.n)
            row->n = *edit.n;
        cursor.edits.erase(row);
        if (cursor.added.erase(row) > 0)
            m_table.push_back(row);
    }

    const char* update(Pair& pair) {
        const ModelRowPtr row = pair.model.current();
        const int error = errorOf([&] { pair.real->Update(); });
        EXPECT_EQ(error, row ? 0 : 3021);
        if (row && pair.model.edits.count(row))
            write(pair.model, row);
        return "Update";
    }

    const char* addNew(Pair& pair) {
        if (m_table.size() > 400)
            return "nothing";
        pair.real->AddNew();
        ModelCursor& model = pair.model;
        const auto row = std::make_shared<ModelRow>(ModelRow{m_nextId++, {}, {}});
        model.added[row] = {model.current(), model.at};
        model.edits[row] = {};
        model.keyset.push_back(row);
        model.view.push_back(row);
        model.unjudged.insert(row);
        model.at = At::OnRow;
        model.index = int(model.view.size()) - 1;
        if (pick(3) != 0) {
            assign(pair);
            update(pair);
        }
        return "AddNew";
    }

    const char* remove(Pair& pair) {
        const ModelRowPtr row = pair.model.current();
        const int error = errorOf([&] { pair.real->Delete(); });
        EXPECT_EQ(error, row ? 0 : 3021);
        if (row && pair.model.added.count(row)) {
            dropNew(pair.model, row);
        } else if (row) {
            row->dead = true;
            for (const auto& each : m_cursors)
                each->model.rowDied(row);
        }
        return "Delete";
    }

    static void dropNew(ModelCursor& model, const ModelRowPtr& row) {
        const auto [before, at] = model.added[row];
        const bool current = model.current() == row;
        model.added.erase(row);
        model.rowDied(row);
        if (!current)
            return;
        const auto found = std::find(model.view.begin(), model.view.end(), before);
        if (before && found != model.view.end()) {
            model.at = At::OnRow;
            model.index = int(found - model.view.begin());
        } else {
            model.at = at == At::Before ? At::Before : model.view.empty() ? At::None : At::After;
            model.index = int(model.view.size());
        }
    }

    const char* cancel(Pair& pair) {
        pair.real->CancelUpdate();
        const ModelRowPtr row = pair.model.current();
        if (row && pair.model.added.count(row))
            dropNew(pair.model, row);
        else if (row)
            pair.model.edits.erase(row);
        return "CancelUpdate";
    }

    const char* batch(Pair& pair) {
        if (pick(3) != 0)
            return "nothing";
        ModelCursor& model = pair.model;
        if (pick(2) == 0) {
            pair.real->UpdateBatch(3);
            for (const auto& row : std::vector(model.keyset))
                if (model.edits.count(row))
                    write(model, row);
            return "UpdateBatch";
        }
        pair.real->CancelBatch(3);
        const auto rows = model.keyset;
        for (auto row = rows.rbegin(); row != rows.rend(); ++row)
            if (model.added.count(*row))
                dropNew(model, *row);
        model.edits.clear();
        return "CancelBatch";
    }

    ScratchFile m_file;
    ModelTable m_table;
    std::mt19937 m_random;
    int m_nextId = 0;
    std::vector<std::unique_ptr<Pair>> m_cursors;
};

class RandomOperations : public testing::TestWithParam<unsigned> {};

TEST_P(RandomOperations, AgreeWithAPlainModelAfterEveryStep) {
    World world(GetParam());
    for (int i = 0; i < 10'000 && !testing::Test::HasFatalFailure() && !testing::Test::HasNonfatalFailure();
         ++i)
        world.step(i);
    world.compareStored();
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomOperations, testing::Range(1U, 11U));

} // namespace

#pragma once

#include "recordset/condition.h"
#include "recordset/rowKeys.h"

#include <optional>

/// A condition compiled against an image: each distinct text is tested once, then codes are compared. It
/// holds for the moment it was made in; rows changed afterwards want a new one.
class Predicate {
public:
    /// `fields` are the image columns that the condition may name. Throws RuntimeError(BadText) for an
    /// unknown column, a Like on a column that is not text, and a literal that cannot become the column's
    /// type.
    Predicate(const Condition& condition, const TableImage& image, const std::vector<int>& fields);
    ~Predicate();
    Predicate(Predicate&&) noexcept;

    /// Whether a row passes; pending values count.
    bool test(RowId row, const PendingEdits& edits) const;
    /// Rows of the table that pass, ascending, where one test of a text for equality tells; nothing for any
    /// other condition. Found by the column's index.
    std::optional<std::vector<Row>> indexedRows() const;
    /// The rows of the keyset that pass, in base order.
    std::vector<RowId> select(const Keyset& keyset, const PendingEdits& edits) const;

private:
    struct Leaf;
    struct Node;

    static Node compile(const Condition& condition, const TableImage& image, const std::vector<int>& fields);
    static Leaf compileLeaf(const Clause& clause, const TableImage& image, const std::vector<int>& fields);
    const Leaf* indexedLeaf() const;
    void selectPrefix(Row prefix, std::vector<RowId>& rows) const;

    const TableImage* m_image;
    std::unique_ptr<Node> m_root;
};

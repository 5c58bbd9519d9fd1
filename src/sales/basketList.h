#pragma once

#include "recordset/recordset.h"

#include <QTableWidget>

/// The basket as a small list that is only looked at, beside the line in the making, which stands out: in its
/// own row where the basket has it already, below the others where it is new.
class BasketList : public QTableWidget {
    Q_OBJECT

public:
    explicit BasketList(QWidget* parent);

    void showBasket(const RecordsetPtr& basket);
    /// `boxes`: texts of the line boxes, without a product none is in the making. `row`: of the basket, from
    /// 0, where the line is one of it.
    void showLine(const QStringList& boxes, std::optional<int> row);

private:
    void setTexts(int row, const QStringList& texts, bool marked);

    RecordsetPtr m_basket;
    std::optional<int> m_marked; // the row that shows the line in the making
};

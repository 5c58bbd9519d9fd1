#pragma once

#include "data/cursorMoves.h"
#include "data/session.h"

#include <QWidget>

class QLineEdit;

/// The two process values that a pair of date boxes sets.
struct DisplayDateValues {
    QString Session::*first;
    QString Session::*last;
};
inline constexpr DisplayDateValues kStockDates{&Session::displayDate1, &Session::displayDate2};
inline constexpr DisplayDateValues kPeriodDates{&Session::periodDate1, &Session::periodDate2};

/// What the tool tips of the two boxes say.
struct DateTips {
    const char16_t* first;
    const char16_t* last;
};

/// First and last date of what a view shows. Every change of a box goes into its process value, from where
/// the report takes it.
class DateBoxes : public QWidget {
    Q_OBJECT

public:
    /// The boxes get the object names.
    DateBoxes(const QString& firstName, const QString& lastName, Session& session,
              const DisplayDateValues& values, QWidget* parent);

    QWidgetList boxes() const;
    /// The boxes' tool tips; `days` says the exact days of a period in a line below, where there is one.
    void setTips(const DateTips& tips, const QString& days);
    /// Shows the dates and sets both values, whether the boxes change or not.
    void setDates(const DateSpan& dates);
    /// Sets both values anew to what the boxes show.
    void tell();

private:
    QLineEdit* makeBox(const QString& name, QString Session::*value);

    Session& m_session;
    DisplayDateValues m_values;
    QLineEdit* m_first;
    QLineEdit* m_last;
};

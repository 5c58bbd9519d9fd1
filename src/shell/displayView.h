#pragma once

#include "shell/view.h"
#include "shell/viewHost.h"

class DataGrid;
class MoveButtons;
class Prompts;
class QLineEdit;

/// What one display view shows: a table as a whole or its period copy, by the view number in showSource.
struct DisplayDescription {
    const char16_t* name;
    const char16_t* caption;
    const char16_t* table;       // the whole table; its cursor is opened where it is closed
    int whole;                   // view number of the whole table
    int period;                  // view number of its period copy
    const char16_t* sort;        // of the whole table, set by "全库显示"
    const char16_t* reportTitle; // handed to the report; empty where the report has its own
    const char16_t* wholeReport;
    const char16_t* periodReport;
    const char16_t* emptyText;        // what an empty grid says
    int Session::*family = nullptr;   // the family's view number, kept in step with showSource
    bool clearsFilter = false;        // an activation of the whole table takes its filter off
    bool periodDatesFromRows = false; // with rows, the period copy shows their dates too
    bool editable = false;            // cells can be typed into
    bool asksWholeForRows = false;    // printing asks the whole table for rows, whatever is shown
    /// Whole-show code of a view that shows its one table whatever showSource says; 0 for any other view.
    int ownSource = 0;
};

/// What a display view has beside its grid.
class DisplayPanel : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// At the end of an activation; the cursor may be closed.
    virtual void sourceShown(const RecordsetPtr& /*cursor*/, int /*viewNumber*/) {}
    /// After a change of the current row or the view; `chosen` where the user chose the row in the grid.
    virtual void rowChanged(const RecordsetPtr& /*cursor*/, bool /*chosen*/) {}
    /// When another view takes the view's place.
    virtual void left(const RecordsetPtr& /*cursor*/) {}

Q_SIGNALS:
    /// A command of the panel is about to run: what is being typed in the grid comes first.
    void commandStarts();
};

/// A read-only view of one table: grid, position, dates, and the five toolbar operations. A member of the
/// family is a description, and a panel where it has controls of its own.
class DisplayView : public View {
    Q_OBJECT

public:
    DisplayView(const DisplayDescription& description, ViewHost& host, Prompts& prompts,
                DisplayPanel* panel = nullptr);

    void load() override;
    void activate() override;
    void leave() override;
    bool shows(int showSource) const override { return m_description.ownSource || m_shown == showSource; }

    void Time_AA();
    void data_whole_show();
    void data_order();
    void data_search();
    void data_print();

private:
    QLineEdit* makeDateBox(const QString& name, QString Session::*shown);
    bool isMember(int viewNumber) const;
    /// The cursor of a view number of this view.
    const RecordsetPtr& cursorOf(int viewNumber) const;
    const RecordsetPtr& wholeCursor() const { return cursorOf(m_description.whole); }
    /// The view number that the view acts by.
    int viewNumber() const;
    /// The cursor of the present view number; null where it is none of this view's.
    RecordsetPtr cursor() const;
    void setSource(int viewNumber);
    void showDates(const RecordsetPtr& cursor, int viewNumber);
    void showPosition();
    void rowChanged(bool chosen);
    void openDialog(const QString& name, qint16 Session::*code, int value);

    const DisplayDescription& m_description;
    ViewHost& m_host;
    Session& m_session;
    DisplayPanel* m_panel;
    DataGrid* m_grid = nullptr;
    MoveButtons* m_moves = nullptr;
    QLineEdit* m_first = nullptr;
    QLineEdit* m_last = nullptr;
    int m_shown = 0; // the view number whose cursor the grid is bound to
};

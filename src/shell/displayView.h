#pragma once

#include "shell/dateBoxes.h"
#include "shell/view.h"
#include "shell/viewHost.h"

#include <span>

class DisplayPanel;
class Prompts;
class RecordPane;

/// Finds the first and the last date of these rows, for a view and its report; may sort the rows.
using DisplayDates = DateSpan (*)(Session& session, const RecordsetPtr& shown);

/// The dates of the rows, which are sorted by 日期 and end on the last one; "0000-0-0" without rows.
DateSpan datesOfRows(Session& session, const RecordsetPtr& shown);
/// The words of the last confirmed period, whatever the rows say.
DateSpan periodTexts(Session& session, const RecordsetPtr& shown);
/// datesOfRows, and periodTexts without rows.
DateSpan datesOfRowsOrPeriod(Session& session, const RecordsetPtr& shown);

/// One choice of data that a display view can show.
struct DisplaySource {
    ShowSource code;
    const char16_t* report; // its window, empty where it has none
    DisplayDates dates;     // null: neither the view nor its report tells any of its own
    const char16_t* emptyText = u"该时间段没有数据"; // what its empty grid says; the whole table has its own
};

/// What one display view shows, and in what the members of the family differ.
struct DisplayDescription {
    const char16_t* name;
    const char16_t* caption;
    const char16_t* table; // the whole table, opened where its cursor is closed; empty: a window's own rows
    std::span<const DisplaySource> sources; // the whole table first, then what stands for it
    const char16_t* sort;                   // of the whole table, set by "全库显示"
    const char16_t* reportTitle = u"";      // handed to the report; empty where the report has its own
    const char16_t* emptyText = u"";        // what an empty grid says
    const char16_t* hidden = u"流水号";     // columns that are not shown, parted by blanks
    bool showsDates = true;                 // in boxes; without them the dates are for the report alone
    DateTips dateTips = {u"时间显示", u"时间显示"};
    DisplayDateValues dateValues = kStockDates;
    ShowSource Session::*family = nullptr; // the family's code, kept in step with showSource
    bool clearsFilter = false;             // an activation of the whole table takes its filter off
    bool editable = false;                 // cells can be typed into
    bool asksWholeForRows = false;         // printing asks the whole table for rows, whatever is shown
    bool closedKeepsFigures = false; // a cursor that cannot be opened leaves dates and panel as they were
    bool keepsSource = false;        // "全库显示" only takes the view's own filter off
    bool keepsAsker = false;         // showSource stays what it was when the view was asked for
    bool customers = false;          // a row that is chosen is the customer in hand
    const char16_t* emptyPosition = u"0/0"; // what the position reads without rows
    /// showSource behind "全库显示", where it is another one than that of the whole table.
    ShowSource wholeShowCode = ShowSource::None;
    /// Whose cursor the search and sort dialogs act on, where it is another one than that of the source
    /// shown.
    ShowSource queryCode = ShowSource::None;
    /// Which of the sources the view shows now; by default the one of showSource.
    ShowSource (*present)(const Session&) = nullptr;
    /// What showSource is while the view is in front. In: the source that it has shown last, None before the
    /// first. By default that source, before it the family's code or the whole table's.
    ShowSource (*tells)(const Session&, ShowSource shown) = nullptr;
    /// Whether the rows are those of a period, where the source's code does not say so.
    bool (*showsPeriod)(const Session&) = nullptr;
    /// What the view does when it is loaded, in place of opening its cursor.
    void (*atLoad)(Session&) = nullptr;
    /// The first step of an activation; false where none is to run.
    bool (*begin)(Session&) = nullptr;
    /// A step before the grid is bound.
    void (*prepare)(Session&, ShowSource code) = nullptr;
    /// A step before the whole table is asked for, or a period.
    void (*toWhole)(Session&) = nullptr;
    /// Makes what the view has beside its grid.
    DisplayPanel* (*panel)(ViewHost& host, Prompts& prompts) = nullptr;

    ShowSource whole() const { return sources.front().code; }
};

/// What a display view has beside its grid.
class DisplayPanel : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// At the end of an activation; the cursor may be closed.
    virtual void sourceShown(const RecordsetPtr& /*cursor*/, ShowSource /*code*/) {}
    /// After a change of the current row or the view; `chosen` where the user chose the row in the grid.
    virtual void rowChanged(const RecordsetPtr& /*cursor*/, bool /*chosen*/) {}
    /// After the sort dialog has sorted the cursor.
    virtual void sorted(const RecordsetPtr& /*cursor*/) {}
    /// Hands over what the report needs besides the rows and the dates, just before it opens.
    virtual void aboutToPrint(const QString& /*report*/) {}
    /// Entries for the context menu of the view's grid.
    virtual QList<QAction*> gridActions() { return {}; }
    /// When another view takes the view's place.
    virtual void left(const RecordsetPtr& /*cursor*/) {}

Q_SIGNALS:
    /// A command of the panel is about to run: what is being typed in the grid comes first.
    void commandStarts();
    /// It has run, and may have saved edits or given them up.
    void commandEnded();
    /// The rows that the view shows are to be printed by this report.
    void printAsked(const QString& report);
};

/// Makes a panel, as a description names it.
template <typename Panel> DisplayPanel* makePanel(ViewHost& host, Prompts& prompts) {
    return new Panel(host, prompts);
}

/// A read-only view of one table: grid, position, dates, and the five toolbar operations. A member of the
/// family is a description, and a panel where it has controls of its own.
class DisplayView : public View {
    Q_OBJECT

public:
    DisplayView(const DisplayDescription& description, ViewHost& host, Prompts& prompts);

    void load() override;
    void activate() override;
    void leave() override;
    ShowSource source() const override;
    bool shows(ShowSource code) const override;
    void rowsReplaced() override;
    void sorted() override;

    const DisplayDescription& description() const { return m_description; }
    /// The code of the data that the grid shows, None before the first activation.
    ShowSource shownSource() const { return m_shown; }
    /// The cursor that the grid shows; null before the first activation.
    const RecordsetPtr& shownRows() const;

    void Time_AA();
    void data_whole_show();
    void data_order();
    void data_search();
    void data_print();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void offerOperations();
    void move(int button);
    /// The code that the next activation goes by, one of the view's own or not.
    ShowSource present() const;
    /// The source of a code, null where it is none of this view's.
    const DisplaySource* find(ShowSource code) const;
    RecordsetPtr& cursorOf(ShowSource code) const;
    const RecordsetPtr& wholeCursor() const { return cursorOf(m_description.whole()); }
    /// The cursor of the source that is shown; null before the first activation.
    RecordsetPtr cursor() const;
    void takeCustomer();
    /// Whether an activation has something to show: a source of the view's own, or, where a window beside has
    /// left a code of its own, other rows than before.
    bool hasNewRows();
    void setSource(ShowSource code);
    /// The days of the period that the view shows, in words; empty where it shows the whole table.
    QString periodShown() const;
    void bindRows(const RecordsetPtr& shown, const DisplaySource& source);
    void rowChanged(bool chosen);
    /// Tells how many rows are changed and not saved, where cells can be typed into.
    void showUnsaved();
    /// Opens a report on the view's rows, which finds what it needs in the session; nothing without rows.
    void print(const QString& report);
    void handOver(const DisplaySource& source, const QString& report);
    /// Makes ready for the search or the sort dialog on the view's rows; false without any.
    bool readyFor(qint16 Session::*code, qint16 (*codeOf)(ShowSource));
    bool readyToSort();

    const DisplayDescription& m_description;
    ViewHost& m_host;
    Session& m_session;
    DisplayPanel* m_panel;
    RecordPane* m_pane = nullptr;
    DateBoxes* m_dates = nullptr;
    ShowSource m_shown = ShowSource::None; // whose cursor the grid is bound to
    QString m_period;                      // days of the rows that are shown, in words
    ShowSource m_asker;                    // showSource when the view was asked for
};

/// Registers the members of a family by their names.
void registerDisplays(ViewHost& host, Prompts& prompts, std::span<const DisplayDescription> displays);

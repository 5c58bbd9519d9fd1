#pragma once

#include "controls/notice.h"
#include "data/session.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <map>

class QLineEdit;
class QPushButton;

/// The toolbar's operations that a view may offer.
enum class ViewOperation { Time_AA, data_search, data_whole_show, data_order, data_print };

/// A window that fills the main window's one-view area. It owns no data: it shows and moves the shared
/// cursors.
class View : public QWidget {
    Q_OBJECT

public:
    View(const QString& name, const QString& caption, QWidget* parent = nullptr);

    /// The name by which commands and the toolbar table know the view; also its object name.
    QString name() const { return objectName(); }
    QString caption() const { return windowTitle(); }

    /// Runs once when the view is loaded, before it is shown.
    virtual void load() {}
    /// The view's Fm_Activate routine: shows the state of the shared cursors.
    virtual void activate() {}
    /// Whether load() has run the activation already.
    virtual bool loadActivates() const { return false; }
    /// Runs when another view takes this one's place.
    virtual void leave() {}
    /// What showSource says while the view is in front: set when it is shown, and again when a window beside
    /// it closes that has set its own. None where the view has no say in it.
    virtual ShowSource source() const { return ShowSource::None; }
    /// Whether the view shows the data of this code. A view without a choice of data always does.
    virtual bool shows(ShowSource /*code*/) const { return true; }
    /// Runs after a command has put other rows into the cursor that the view shows.
    virtual void rowsReplaced() {}
    /// Runs after customers' totals that were wrong were put right behind the view.
    virtual void totalsPutRight() {}
    /// Runs after the sort dialog has sorted the view's cursor.
    virtual void sorted() {}

    /// Where work starts in the view, and so the focus when it comes up; its grid where none is named.
    void setFirstFocus(QWidget* widget) { m_firstFocus = widget; }
    /// The view's own search box: work starts there, and the key that searches leads there.
    void setSearchBox(QLineEdit* box);

    /// Rows of the view's table that were changed and not saved.
    int unsavedRows() const { return m_unsavedRows; }
    /// Whether its boxes hold what was typed and not saved.
    bool hasUnsavedBoxes() const { return m_unsavedBoxes; }

    bool offers(ViewOperation operation) const { return m_operations.count(operation) > 0; }
    /// Runs an operation that the view offers; nothing for another.
    void run(ViewOperation operation);

Q_SIGNALS:
    /// Another number of rows is unsaved, or the boxes are or are so no longer.
    void unsavedChanged();
    /// The toolbar's "全库显示" is asked for from inside the view.
    void wholeAsked();

protected:
    void setUnsavedRows(int rows);
    void setUnsavedBoxes(bool unsaved);
    void offer(ViewOperation operation, std::function<void()> action) {
        m_operations[operation] = std::move(action);
    }
    void showEvent(QShowEvent* event) override;

private:
    QPointer<QWidget> m_firstFocus;
    int m_unsavedRows = 0;
    bool m_unsavedBoxes = false;
    std::map<ViewOperation, std::function<void()>> m_operations;
};

/// A window of its own beside the main window. Its close box does what its own way out does. Its layout is a
/// column, at whose foot a notice said in it stands from the first one on.
class TopWindow : public QWidget, public NoticePlace {
    Q_OBJECT

public:
    TopWindow(const QString& name, const QString& caption);

    /// Closes without asking.
    void finish();
    /// Whether the window belongs to the view in front and closes, as by its own way out, when that one is
    /// left.
    virtual bool isDialog() const { return false; }
    /// Whether the window has a print command; it takes no input while a report is open.
    virtual bool prints() const { return false; }
    /// Whether the window closes when a purchase begins, which would change what it shows.
    virtual bool closesForPurchase() const { return false; }
    /// Runs when the window is asked for while it is open.
    virtual void shownAgain() {}
    /// Whether the window sets showSource for itself; the front view's value comes back when it closes.
    virtual bool setsShowSource() const { return false; }
    /// Whether the window takes the main window's place and size, as if it were a view of it.
    virtual bool takesPlaceOfMain() const { return false; }
    /// Whether the window stands in the middle of the main window, and not of the screen.
    virtual bool standsOverMain() const { return false; }
    void takeNotice(const Notice& notice) override;

Q_SIGNALS:
    void finished();
    /// Something was said here, which is to be read where the window is gone too.
    void noticed(const Notice& notice);
    /// F1 was pressed.
    void helpAsked();

protected:
    /// Whether Escape is the way out.
    virtual bool endsByEscape() const { return false; }
    void keyPressEvent(QKeyEvent* event) override;
    /// The way out; asks where the window asks, and calls finish() to go.
    virtual void wayOut() { finish(); }
    void closeEvent(QCloseEvent* event) override;

private:
    NoticeLine* m_notice = nullptr; // from the first notice on
    bool m_closing = false;         // inside the close box's own event
    bool m_finishing = false;
};

/// A small window for one choice over the view in front. Escape is its way out, Enter its default button.
class Dialog : public TopWindow {
    Q_OBJECT

public:
    Dialog(const QString& name, const QString& caption);
    bool isDialog() const override { return true; }

protected:
    bool endsByEscape() const override { return true; }
    /// The button that Enter presses.
    void setDefaultButton(QPushButton* button) { m_default = button; }
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPushButton* m_default = nullptr;
};

#pragma once

#include <QLineEdit>
#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

class QGridLayout;

/// A line of text that selects all of it on getting the focus, and knows whether an input method is composing
/// in it. Of a text that it cannot hold it shows the beginning, read-only, and gives back the text that it
/// was given.
class RecordBox : public QLineEdit {
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;
    bool isComposing() const { return m_composing; }
    void setText(const QString& text);
    void clear() { setText({}); }
    QString text() const { return m_beyond ? *m_beyond : QLineEdit::text(); }

protected:
    void focusInEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::optional<QString> m_beyond; // the text given, of which the beginning is shown
    bool m_composing = false;
    bool m_selectOnPress = false;
};

/// Keys that go one box back and one box on, with Control held.
struct BoxKeys {
    Qt::Key back;
    Qt::Key on;
};

/// A numbered array of boxes with captions: Enter goes to the next box, the given keys with Control to the
/// previous and the next, round at both ends. Enter that ends an input-method composition moves nothing.
class RecordBoxes : public QObject {
    Q_OBJECT

public:
    /// Boxes get the object names "name(0)", "name(1)", ...; captions are their accessible names, without
    /// blanks.
    RecordBoxes(const QString& name, const QStringList& captions, std::optional<BoxKeys> keys,
                QWidget* parent);

    int count() const { return int(m_boxes.size()); }
    RecordBox* box(int index) const { return m_boxes[std::size_t(index)]; }
    QWidgetList widgets() const { return {m_boxes.begin(), m_boxes.end()}; }
    QString text(int index) const { return box(index)->text(); }
    void setText(int index, const QString& text) { box(index)->setText(text); }
    QStringList texts() const;
    void setTexts(const QStringList& texts);
    void clear();
    void focus(int index);
    /// Refuses input that would make the number too large to reckon with.
    void limitToNumbers(const std::vector<int>& indices);
    /// What a typed number must pass besides in a box limited to numbers.
    void setNumberCheck(int index, std::function<bool(const QString& text)> check);
    /// Boxes of numbers that are kept as texts.
    void alignRight(const std::vector<int>& indices);
    /// Puts captions and boxes into a grid, `columns` pairs side by side, filled downwards.
    void layOut(QGridLayout* grid, int columns, int firstRow = 0) const;
    void place(QGridLayout* grid, int index, int row, int column, int columnSpan = 1) const;

Q_SIGNALS:
    /// The user typed, pasted or composed in a box.
    void edited(int index);
    /// A box's text changed, by the user or by the program.
    void changed(int index);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QStringList m_captions;
    std::optional<BoxKeys> m_keys;
    std::vector<RecordBox*> m_boxes;
};

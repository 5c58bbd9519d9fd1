#pragma once

#include <QColor>
#include <QString>

#include <QWidget>

#include <functional>
#include <vector>

class QBoxLayout;
class QDialog;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPushButton;
class RecordBox;

/// A button with its object name and caption.
QPushButton* makeButton(const QString& name, const QString& caption, QWidget* parent);

/// A button that runs a command.
struct ButtonCommand {
    const char16_t* name;
    const char16_t* caption;
    std::function<void()> run;
};
/// Appends a button for each command, in their order.
void addButtons(QBoxLayout* row, QWidget* parent, const std::vector<ButtonCommand>& commands);

/// A label with its object name and text.
QLabel* makeLabel(const QString& name, const QString& text, QWidget* parent);

/// A bold figure, "0" at first; its meaning is its accessible name.
QLabel* makeFigure(const QString& name, const QString& meaning, QWidget* parent);

/// Appends a caption "Label<number>" and behind it its figure, "Label<number + 1>", which is returned.
QLabel* addFigure(QBoxLayout* row, int number, const QString& caption, QWidget* parent);

/// The widget's font in bold, larger by a factor.
QFont boldOf(const QWidget* widget, qreal scale = 1);

/// A search box with its tool tip, whose Enter presses `button` where there is one.
RecordBox* makeSearchBox(const QString& name, const QString& toolTip, QPushButton* button, QWidget* parent);

/// A narrow box in the middle of whose line a figure or a date is shown, with its tool tip.
QLineEdit* makeShownBox(const QString& name, const QString& toolTip, QWidget* parent);

/// A dialog's buttons "确定", its default, and "取消".
QDialogButtonBox* makeOkCancel(QDialog* dialog);

/// Gives a window the frame of a dialog: title and close box, nothing to make it small or large by.
void giveDialogFrame(QWidget* window);

/// Lets the tab key go through these widgets in this order.
void tabThrough(const QWidgetList& widgets);

/// A colour given as one number in the order blue, green, red.
QColor colourOfNumber(int blueGreenRed);

/// Sets the colour of a label's text.
void setTextColour(QLabel* label, const QColor& colour);

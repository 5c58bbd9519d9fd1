#pragma once

#include <QLabel>
#include <QPointer>
#include <QTimer>

/// A short remark beside a widget that goes by itself: for what needs an answer but no message box. It lies
/// over its window, which has one at most.
class Hint : public QLabel {
    Q_OBJECT

public:
    explicit Hint(QWidget* window);

    /// Shows a text below `place`, a rectangle of `beside`; it goes when that widget does.
    void show(QWidget* beside, const QRect& place, const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTimer m_timer;
    QPointer<QWidget> m_beside; // may go before the hint does
};

/// What the hint says at a text of which only the beginning is shown.
QString tooLongHint();

/// Shows the hint of the widget's window below the widget, or below a part of it.
void showHint(QWidget* beside, const QString& text);
void showHint(QWidget* beside, const QRect& place, const QString& text);

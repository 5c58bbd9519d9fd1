#pragma once

#include <QElapsedTimer>
#include <QEvent>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>

class QKeyEvent;
class QLineEdit;

/// Tells what a barcode reader types from what a person types, by its pace. Times are milliseconds.
class ScanPace {
public:
    static constexpr int kLeastSigns = 6;
    static constexpr qint64 kWithin = 100; // so many signs come within it
    static constexpr qint64 kGap = 40;     // a longer one ends what a reader types

    /// A sign that was typed at a time; a run begins anew after a gap.
    void add(QChar sign, qint64 time);
    bool begins() const { return m_signs.size() == 1; }
    /// Whether the run is a reader's.
    bool isReader() const { return m_reader; }
    const QString& signs() const { return m_signs; }
    void end() { *this = {}; }

private:
    QString m_signs;
    qint64 m_first = 0;
    qint64 m_last = 0;
    bool m_reader = false;
};

/// Watches a box into which a barcode reader may type although it waits for something else: what comes at
/// such a pace is taken out of the box again, which then holds what it held before, and told as scanned.
class ScanBurst : public QObject {
    Q_OBJECT

public:
    explicit ScanBurst(QLineEdit* box);

    /// To be asked before a typed sign is complained of: waits for the next sign, a person's being later, and
    /// says whether a reader is typing, so that nothing is to be said.
    bool goesOn();
    /// The clock, for keys that bring no time of their own.
    std::function<qint64()> now;

Q_SIGNALS:
    void scanned(const QString& signs);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Between a sign that is complained of and the complaint nothing else happens, as little as behind its
    /// message.
    static bool isHeldBack(QEvent::Type type);
    bool take(QKeyEvent* event);
    void finish();

    QLineEdit* m_box;
    ScanPace m_pace;
    QString m_before; // in the box when the run began
    QTimer m_end;
    QElapsedTimer m_clock;
    bool m_inSign = false;  // while the box takes a sign
    bool m_waiting = false; // for the sign after one that was complained of
};

/// Keeps a reader that ends a number by two Enters, or an Enter that is held, from giving two commands: after
/// an Enter in one of its boxes no other one is taken for 50 ms, wherever the focus has gone, unless
/// something else was pressed in between.
class EnterGuard : public QObject {
    Q_OBJECT

public:
    EnterGuard(QObject* parent, const QList<QLineEdit*>& boxes);

    std::function<qint64()> now;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QList<QLineEdit*> m_boxes;
    QElapsedTimer m_clock;
    std::optional<qint64> m_last;
};

#pragma once

#include <QObject>

class QLabel;
class RecordBoxes;

/// The discount box of an order line while it is typed sign by sign, and the hint beside it. A "0" on its way
/// to "0.5" stays and counts as full price for the time being; a discount that is only begun when the box is
/// left becomes "100". A text that the program sets is no typing.
class DiscountTyping : public QObject {
    Q_OBJECT

public:
    /// In: built before anybody listens to the boxes, since it hears of a change first.
    DiscountTyping(RecordBoxes* boxes, QLabel* hint);

    /// Whether what stands in the box is only begun and stays for now.
    bool isBegun() const { return m_begun; }
    /// The discount to reckon with: what stands in the box, "100" for one that is only begun.
    QString counted() const;
    /// Puts "100" in place of a discount that is only begun.
    void finish();

private:
    RecordBoxes* m_boxes;
    bool m_typing = false; // between a typed sign and the change that it makes
    bool m_begun = false;
};

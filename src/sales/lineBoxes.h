#pragma once

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class DiscountTyping;
class RecordBoxes;
struct BoxKeys;
struct LineAmounts;

/// The boxes of an order line: "Text4(0)" to "Text4(13)".
RecordBoxes* makeLineBoxes(std::optional<BoxKeys> keys, QWidget* parent);

/// Refuses a sign typed into quantity or price with which the line's amounts could not be reckoned with.
/// `unitCost` gives the cost of one piece.
void refuseTooLarge(RecordBoxes* boxes, const std::function<double()>& unitCost);

/// Shows the amounts that quantity, price and discount give. A discount that is only begun stays.
void showLineAmounts(RecordBoxes* boxes, const DiscountTyping& typing, const LineAmounts& amounts);

class StepButton;

/// Two small buttons, up and down, that add to or take 1 from a number, again and again while they are held.
class UpDown : public QWidget {
    Q_OBJECT

public:
    explicit UpDown(const QString& name, QWidget* parent = nullptr);

    /// Ends the repeating of a held button until it is pressed anew. In: called before any message that a
    /// step leads to, since the message swallows the release.
    void endRepeat();

Q_SIGNALS:
    /// +1 or -1.
    void stepped(int by);

private:
    std::vector<StepButton*> m_buttons;
};

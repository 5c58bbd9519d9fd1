#pragma once

#include <QValidator>

#include <functional>

/// Whether the number that a text begins with can be reckoned with: two numbers of that size still have a
/// product. A text without a number can.
bool isReckonable(const QString& text);

/// The hint beside a box or a cell that did not take a number for its size.
QString tooLargeHint();

/// Refuses the sign that would make a box's number too large to reckon with.
class NumberLimit : public QValidator {
    Q_OBJECT

public:
    using Check = std::function<bool(const QString& text)>;
    using QValidator::QValidator;

    /// What the text must pass besides.
    void setCheck(Check check) { m_check = std::move(check); }
    State validate(QString& text, int& position) const override;

private:
    Check m_check;
};

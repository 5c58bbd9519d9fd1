#pragma once

#include "analysis/bestClients.h"
#include "shell/viewHost.h"

class Prompts;
class QGridLayout;
class QLineEdit;
class QRadioButton;

/// One dialog that asks who carries the shop, all three measures in one form, and in what the two of them
/// differ.
struct CutDialogDescription {
    const char16_t* name;
    const char16_t* caption;
    bool ranks; // asks for a number of customers, not for a share
    const char16_t* options[kMeasures];
    const char16_t* advice;         // a line above the options, empty where there is none
    const char16_t* blank;          // what is said of a blank box, empty where it counts as 0
    RecordsetPtr (*from)(Session&); // the customers to cut, null where there are none
};
/// clientNumFm1 and clientPercentFm1.
std::span<const CutDialogDescription> cutDialogs();

/// Chooses the best customers by one of three measures and shows them in the evaluation.
class CutDialog : public Dialog {
    Q_OBJECT

public:
    CutDialog(const CutDialogDescription& description, ViewHost& host, Prompts& prompts);

private:
    QLayout* buildOptions();
    QLayout* buildButtons();
    /// Clears the boxes and enables that of the option alone.
    void choose(int option);
    int chosen() const;
    void confirm();

    const CutDialogDescription& m_description;
    ViewHost& m_host;
    Prompts& m_prompts;
    QRadioButton* m_options[kMeasures] = {};
    QLineEdit* m_boxes[kMeasures] = {};
};

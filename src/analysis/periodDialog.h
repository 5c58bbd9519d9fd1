#pragma once

#include "analysis/period.h"
#include "shell/view.h"
#include "shell/viewHost.h"

#include <vector>

class Prompts;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QRadioButton;

/// Which of the three period dialogs, and what its confirmation does.
enum class PeriodPurpose {
    Views,    // timeDefineFm2: every display and statistics view
    Register, // timeDefineFm22: the customer register
    Cursor,   // timeDefineFm1: filters a shared cursor in place of building copies
};

/// The choice of a period. Its state lives here; session keeps what was confirmed last.
class PeriodDialog : public Dialog {
    Q_OBJECT

public:
    PeriodDialog(PeriodPurpose purpose, ViewHost& host, Prompts& prompts);

protected:
    void wayOut() override;

private:
    QLayout* buildBounds();
    QLayout* buildBoxes();
    QWidget* buildComparisons();
    QRadioButton* addComparison(QGridLayout* grid, int row, const QString& name, const QString& caption);
    void fillBoxes();
    void pick(PeriodBox box);
    void showPicks();
    void echo(int option);
    Comparison comparison() const;
    void confirm();
    void take(const QString& condition);
    void buildForViews(const QString& condition);
    void buildForRegister(const QString& condition);
    void search_display();

    PeriodPurpose m_purpose;
    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    PeriodPicks m_picks;
    QComboBox* m_boxes[4] = {};
    QRadioButton* m_bounds[2] = {};
    QLineEdit* m_shown[2] = {};
    std::vector<QRadioButton*> m_options; // Option3 to Option6
    QLabel* m_echoes[3] = {};             // Label2(0) to Label2(2)
    QLabel* m_from = nullptr;
    QLabel* m_to = nullptr;
};

#pragma once

#include <QDialog>

class QComboBox;
class QRadioButton;

/// A printer and the orientation of its sheets: 1 portrait, 2 landscape, 0 as the printer has it.
struct PrinterChoice {
    QString name;
    int orientation = 0;
};

/// The dialog "打印机设置": one of the machine's printers, and how its sheets lie.
class PrinterDialog : public QDialog {
    Q_OBJECT

public:
    PrinterDialog(const QStringList& printers, const PrinterChoice& start, QWidget* parent);

    /// What the user leaves alone comes back as it was.
    PrinterChoice choice() const;

private:
    PrinterChoice m_start;
    QComboBox* m_printers = nullptr;
    QRadioButton* m_portrait = nullptr;
    QRadioButton* m_landscape = nullptr;
};

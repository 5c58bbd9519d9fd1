#include "controls/printerPrompt.h"

#include "controls/formParts.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QRadioButton>

PrinterDialog::PrinterDialog(const QStringList& printers, const PrinterChoice& start, QWidget* parent)
    : QDialog(parent)
    , m_start(start) {
    setObjectName(QStringLiteral("printerDialog"));
    giveDialogFrame(this);
    setWindowTitle(QStringLiteral("打印机设置"));
    m_printers = new QComboBox(this);
    m_printers->setObjectName(QStringLiteral("printers"));
    m_printers->addItems(printers);
    m_printers->setCurrentText(start.name);
    m_printers->setPlaceholderText(QStringLiteral("没有打印机：打印到 PDF 文件"));
    m_printers->setEnabled(!printers.isEmpty());
    m_portrait = new QRadioButton(QStringLiteral("纵向"), this);
    m_portrait->setObjectName(QStringLiteral("portrait"));
    m_landscape = new QRadioButton(QStringLiteral("横向"), this);
    m_landscape->setObjectName(QStringLiteral("landscape"));
    m_portrait->setChecked(start.orientation == 1);
    m_landscape->setChecked(start.orientation == 2);
    auto* orientation = new QHBoxLayout;
    orientation->addWidget(m_portrait);
    orientation->addWidget(m_landscape);
    orientation->addStretch(1);
    auto* form = new QFormLayout(this);
    form->addRow(QStringLiteral("打印机"), m_printers);
    form->addRow(QStringLiteral("方向"), orientation);
    form->addRow(makeOkCancel(this));
}

PrinterChoice PrinterDialog::choice() const {
    PrinterChoice choice = m_start;
    if (!m_printers->currentText().isEmpty())
        choice.name = m_printers->currentText();
    if (m_portrait->isChecked() || m_landscape->isChecked())
        choice.orientation = m_landscape->isChecked() ? 2 : 1;
    return choice;
}

#include "app/reportDialog.h"

#include "maintenance/dailyBackup.h"
#include "maintenance/restore.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int kWidth = 620; // pixels

QTableWidgetItem* fixedItem(const QString& text, Qt::Alignment alignment) {
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setTextAlignment(alignment | Qt::AlignVCenter);
    return item;
}

QTableWidget* emptyList(QWidget* parent) {
    auto* list = new QTableWidget(0, 4, parent);
    list->setObjectName(QStringLiteral("backups"));
    list->setAccessibleName(QStringLiteral("备份"));
    list->setHorizontalHeaderLabels(
        {QStringLiteral("日期"), QStringLiteral("大小"), QStringLiteral("订单数"), QStringLiteral("客户数")});
    list->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    list->verticalHeader()->hide();
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setTabKeyNavigation(false);
    return list;
}

} // namespace

ReportDialog::ReportDialog(const QString& text)
    : m_column(new QVBoxLayout(this))
    , m_buttons(new QHBoxLayout) {
    setObjectName(QStringLiteral("reportDialog"));
    setWindowTitle(QStringLiteral("衡商汇"));
    auto* label = new QLabel(text, this);
    label->setObjectName(QStringLiteral("report"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_column->addWidget(label);
    m_column->addLayout(m_buttons);
    m_buttons->addStretch(1);
    addButton(QStringLiteral("end"), QStringLiteral("结束"), Answer::End)->setDefault(true);
    setMinimumWidth(kWidth);
}

QPushButton* ReportDialog::addButton(const QString& name, const QString& caption, Answer answer) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    m_buttons->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, answer] {
        m_answer = answer;
        accept();
    });
    return button;
}

void ReportDialog::offerReopen() {
    addButton(QStringLiteral("reopen"), QStringLiteral("重新打开"), Answer::Reopen);
}

void ReportDialog::offerBackups(const QString& databasePath) {
    m_backups = emptyList(this);
    for (const KeptBackup& backup : keptBackups(databasePath)) {
        const int row = m_backups->rowCount();
        m_backups->insertRow(row);
        m_backups->setItem(row, 0, fixedItem(backup.day.toString(Qt::ISODate), Qt::AlignHCenter));
        m_backups->item(row, 0)->setData(Qt::UserRole, backup.path);
        m_backups->setItem(row, 1, fixedItem(QLocale::c().formattedDataSize(backup.size, 1), Qt::AlignRight));
        m_backups->setItem(row, 2, fixedItem(QStringLiteral("…"), Qt::AlignRight));
        m_backups->setItem(row, 3, fixedItem(QStringLiteral("…"), Qt::AlignRight));
    }
    m_column->insertWidget(1, m_backups);
    if (m_backups->rowCount() == 0) {
        m_backups->hide();
        m_column->insertWidget(1,
                               new QLabel(QStringLiteral("没有找到自动备份（文件夹“备份”是空的）。"), this));
        return;
    }
    m_column->insertWidget(1, new QLabel(QStringLiteral("可以恢复的备份："), this));
    m_restore = addButton(QStringLiteral("restore"), QStringLiteral("恢复所选备份"), Answer::Restore);
    connect(m_backups, &QTableWidget::itemSelectionChanged, this,
            [this] { m_restore->setEnabled(!chosenBackup().isEmpty()); });
    m_backups->selectRow(0);
    QTimer::singleShot(0, this, [this] { countNext(0); });
}

QString ReportDialog::chosenBackup() const {
    if (!m_backups || !m_backups->selectionModel()->hasSelection())
        return {};
    return m_backups->item(m_backups->currentRow(), 0)->data(Qt::UserRole).toString();
}

void ReportDialog::countNext(int row) {
    if (row >= m_backups->rowCount())
        return;
    const BackupContents contents = backupContents(m_backups->item(row, 0)->data(Qt::UserRole).toString());
    const bool sound = contents.fault.isEmpty();
    m_backups->item(row, 2)->setText(sound ? QString::number(contents.orders) : QStringLiteral("不能读取"));
    m_backups->item(row, 3)->setText(sound ? QString::number(contents.customers) : QString());
    QTimer::singleShot(0, this, [this, row] { countNext(row + 1); });
}

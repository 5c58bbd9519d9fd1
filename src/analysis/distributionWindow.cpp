#include "analysis/distributionWindow.h"

#include "controls/formParts.h"
#include "controls/longWork.h"
#include "controls/recordPane.h"
#include "recordset/ignoringErrors.h"
#include "recordset/textNumber.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

DistributionWindow::DistributionWindow(const Distribution& distribution, ViewHost& host, Prompts& prompts)
    : StatisticWindow(QString::fromUtf16(distribution.window), QString::fromUtf16(distribution.caption))
    , m_distribution(distribution)
    , m_host(host) {
    const QString total = QString::fromUtf16(distribution.total);
    m_pane =
        new RecordPane({.moves = distribution.moves}, QStringLiteral("没有可以统计的客户。"), prompts, this);
    m_pane->setEmptyPosition(QStringLiteral("0"));
    m_total = makeShownBox(QStringLiteral("Text2"), total, this);
    m_total->setReadOnly(true);
    auto* print = makeButton(QString::fromUtf16(distribution.print), QStringLiteral("打印"), this);
    auto* back = makeButton(QString::fromUtf16(distribution.back), QStringLiteral("返回"), this);
    connect(print, &QPushButton::clicked, this, &DistributionWindow::print);
    connect(back, &QPushButton::clicked, this, &QWidget::close);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_pane->moves);
    bottom->addStretch(1);
    bottom->addWidget(new QLabel(total, this));
    bottom->addWidget(m_total);
    bottom->addWidget(print);
    bottom->addWidget(back);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_pane->grid, 1);
    column->addLayout(bottom);
    resize(640, 480);
    activate();
}

void DistributionWindow::activate() {
    IgnoringErrors errors;
    m_count = {};
    m_rows = std::make_shared<Recordset>(m_host.session().cn);
    errors.run([&] {
        m_count = countDistribution(m_host.session(), m_distribution);
        m_rows->OpenPicture(m_count.rows);
    });
    m_pane->bind(m_rows);
    m_total->setText(plainNumber(m_count.total));
}

void DistributionWindow::keep() {
    if (!m_count.rows)
        return;
    m_rows = writeDistribution(m_host.session(), m_distribution, m_count);
    m_pane->bind(m_rows);
}

void DistributionWindow::print() {
    Session& session = m_host.session();
    session.scratch = m_rows;
    session.report.caller = objectName();
    session.report.period = m_count.period ? session.periodExact : QString();
    m_host.openWindow(QString::fromUtf16(m_distribution.report), ViewHost::MainWindow::Hidden);
}

void showDistribution(const Distribution& distribution, ViewHost& host) {
    const QPointer<TopWindow> window =
        host.openWindow(QString::fromUtf16(distribution.window), ViewHost::MainWindow::Stays);
    workAfterPainting(QStringLiteral("正在保存客户分布…"), [&](const Steps&) {
        if (window)
            static_cast<DistributionWindow&>(*window).keep();
    });
}

#include "maintenance/fileInputFm3.h"

#include "controls/formParts.h"
#include "controls/prompts.h"
#include "controls/recordPane.h"
#include "recordset/ignoringErrors.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

namespace {

constexpr int kBetweenRepaints = 66; // milliseconds

} // namespace

FileInputFm3::FileInputFm3(ImportPlan& plan, ViewHost& host, Prompts& prompts)
    : TopWindow(QStringLiteral("FileInputFm3"), QStringLiteral("数据转换"))
    , m_plan(plan)
    , m_session(host.session())
    , m_prompts(prompts)
    , importSource(sourceRecordset(m_session, plan))
    , m_target(targetRecordset(m_session, plan)) {
    auto* sides = new QHBoxLayout;
    m_sourceSide = new RecordPane({u"DataGrid1", u"Command1", u"Text1"}, {}, prompts, this);
    m_targetSide = new RecordPane({u"DataGrid2", u"Command2", u"Text2"}, {}, prompts, this);
    sides->addLayout(layOutSide(*m_sourceSide, QStringLiteral("Label1"), QStringLiteral("来源数据")), 1);
    sides->addLayout(layOutSide(*m_targetSide, QStringLiteral("Label2"), QStringLiteral("目标数据")), 1);
    m_sourceSide->bind(importSource);
    m_targetSide->bind(m_target);
    m_note = new QWidget(this);
    m_note->setObjectName(QStringLiteral("Picture2"));
    m_noteText = makeLabel(QStringLiteral("Label3"), QStringLiteral("正在整理数据，请等待..."), m_note);
    auto* note = new QHBoxLayout(m_note);
    note->setContentsMargins(0, 0, 0, 0);
    note->addWidget(m_noteText);
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("importProgress"));
    m_progress->setRange(0, std::max(1, plan.rows.rowCount()));
    m_stopButton = makeButton(QStringLiteral("stopImport"), QStringLiteral("停止"), this);
    m_stopButton->setToolTip(QStringLiteral("停止导入；已导入的记录都在"));
    m_stopButton->setEnabled(false);
    connect(m_stopButton, &QPushButton::clicked, this, &FileInputFm3::stop);
    QPushButton* done = makeButton(QStringLiteral("Command3"), QStringLiteral("完成"), this);
    connect(done, &QPushButton::clicked, this, &FileInputFm3::refresh);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_note);
    bottom->addWidget(m_progress, 1);
    bottom->addWidget(m_stopButton);
    bottom->addWidget(done);
    auto* column = new QVBoxLayout(this);
    column->addLayout(sides, 1);
    column->addLayout(bottom);
    resize(1100, 560);
}

QLayout* FileInputFm3::layOutSide(RecordPane& side, const QString& labelName, const QString& caption) {
    auto* column = new QVBoxLayout;
    column->addWidget(makeLabel(labelName, caption, this));
    column->addWidget(side.grid, 1);
    column->addWidget(side.moves, 0, Qt::AlignHCenter);
    // While the rows come in, the run itself shows how far it is.
    side.onRow([this] {
        if (!m_running)
            showPositions();
    });
    return column;
}

void FileInputFm3::showPositions() {
    m_sourceSide->showPosition();
    m_targetSide->showPosition();
}

void FileInputFm3::showEvent(QShowEvent* event) {
    TopWindow::showEvent(event);
    if (std::exchange(m_started, true))
        return;
    QTimer::singleShot(0, this, [this] { Com_transfer(); });
}

void FileInputFm3::Com_transfer() {
    m_noteText->setText(QStringLiteral("正在检验数据，请等待..."));
    m_note->repaint();
    QString fault = missingPair(m_plan);
    if (fault.isEmpty())
        fault = judgement_Date(m_plan);
    if (!fault.isEmpty())
        return m_prompts.tell(fault);
    m_note->hide();
    transferRows();
}

void FileInputFm3::transferRows() {
    m_running = true;
    m_stopButton->setEnabled(true);
    ImportTransfer transfer(m_session, m_plan, m_target);
    while (!transfer.finished() && transfer.fault().isEmpty() && !m_stop && !m_stopped) {
        transfer.run(kBetweenRepaints);
        showStep(transfer);
        // The block is committed: now the grids can be paged and the window closed.
        QCoreApplication::processEvents();
    }
    m_running = false;
    m_stopButton->setEnabled(false);
    m_plan.rows = {};
    tellEnd(transfer);
    if (m_stop)
        wayOut();
}

void FileInputFm3::showStep(const ImportTransfer& transfer) {
    m_progress->setValue(transfer.done());
    m_sourceSide->moves->setPosition(
        QStringLiteral("%1/%2").arg(transfer.done()).arg(importSource->RecordCount()));
    m_targetSide->moves->setPosition(QStringLiteral("%1/%1").arg(m_target->RecordCount()));
}

void FileInputFm3::tellEnd(const ImportTransfer& transfer) {
    const bool stopped = m_stopped && !transfer.finished() && transfer.fault().isEmpty();
    if (stopped && transfer.done() > 0)
        importSource->setAbsolutePosition(transfer.done());
    else if (importSource->hasRows())
        importSource->MoveLast();
    if (m_target->hasRows())
        m_target->MoveLast();
    showPositions();
    say(this, {QStringLiteral("已导入 %1 行到 %2").arg(transfer.done()).arg(targetName())});
    if (!transfer.fault().isEmpty()) {
        m_noteText->setText(transfer.fault());
        m_note->show();
    } else if (stopped) {
        const int rows = importSource->RecordCount();
        m_noteText->setText(QStringLiteral("已停止：已导入 %1 行，其余 %2 行没有导入。")
                                .arg(transfer.done())
                                .arg(rows - transfer.done()));
        m_note->show();
    } else if (transfer.finished() && transfer.clean()) {
        m_prompts.tell(QStringLiteral("数据导入成功！"), QStringLiteral("OK"));
    }
}

QString FileInputFm3::targetName() const {
    return QString::fromUtf16(m_plan.target->caption).section(QStringLiteral("--> "), 1);
}

void FileInputFm3::stop() {
    m_stopped = m_running;
    m_stopButton->setEnabled(false);
}

void FileInputFm3::refresh() {
    if (m_running)
        return;
    giveUpSource();
    if (m_plan.target->recounts) {
        m_noteText->setText(QStringLiteral("正在整理数据，请等待..."));
        m_note->show();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        refreshAfterImport(m_session, *m_plan.target, [this](int done, int total) {
            m_progress->setRange(0, total);
            m_progress->setValue(done);
            m_progress->repaint();
        });
        m_note->hide();
    }
    close();
}

void FileInputFm3::giveUpSource() {
    m_sourceSide->grid->unbind();
    importSource.reset();
    m_plan.rows = {};
}

void FileInputFm3::wayOut() {
    if (m_running) {
        m_stop = true;
        return;
    }
    giveUpSource();
    m_targetSide->grid->unbind();
    com_return(m_session, *m_plan.target);
    finish();
}

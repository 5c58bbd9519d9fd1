#include "maintenance/fileInputFm2.h"

#include "controls/formParts.h"
#include "controls/longWork.h"
#include "controls/prompts.h"
#include "data/ownFiles.h"
#include "maintenance/importPreview.h"

#include <QApplication>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScopeGuard>

#include <algorithm>
#include <malloc.h>

namespace {

/// A kind of source: its button, the names it takes, and what it says to others.
struct SourceButton {
    SourceKind kind;
    const char16_t* caption;
    const char16_t* filter;
    const char16_t* endings; // parted by blanks
    const char16_t* refusal;
    const char16_t* refusalTitle;
};
constexpr SourceButton kSources[] = {
    {SourceKind::Dbf, u"打开.dbf文件", u"所有文件(*.*) (*.*);;数据库文件(*.DBF) (*.dbf *.DBF)", u".dbf .DBF",
     u"不是.DBF 数据文件类型，请重新选择！", u"提示信息"},
    {SourceKind::Txt, u"打开.txt文件", u"所有文件(*.*) (*.*);;纯文本文件(*.TXT) (*.txt *.TXT)", u".txt .TXT",
     u"不是 .TXT 数据文件类型，请重新选择！", u"提示"},
    {SourceKind::Xls, u"打开.xls文件", u"所有文件(*.*) (*.*);;Excel文件(*.XLS) (*.xls *.XLS)", u".xls .XLS",
     u"不是 .XLS 数据文件类型，请重新选择！", u"提示信息"},
    {SourceKind::Mdb, u"打开.mdb文件", u"所有文件(*.*) (*.*);;数据库文件(*.MDB) (*.mdb)", u".mdb",
     u"数据库类型不是 .mdb类型 ，\r\n请重新选择 .mdb数据库 ！", u"提示信息"},
    {SourceKind::Xlsx, u"打开.xlsx文件", u"所有文件(*.*) (*.*);;Excel工作簿(*.XLSX) (*.xlsx *.XLSX)",
     u".xlsx .XLSX", u"不是 .XLSX 数据文件类型，请重新选择！", u"提示信息"},
    {SourceKind::Csv, u"打开.csv文件", u"所有文件(*.*) (*.*);;逗号分隔文件(*.CSV) (*.csv *.CSV)",
     u".csv .CSV", u"不是 .CSV 数据文件类型，请重新选择！", u"提示信息"},
};

constexpr int kPlace = Qt::UserRole; // of a column in its table
constexpr int kTrialStep = 50;       // milliseconds

QListWidget* makeList(const QString& name, const QString& meaning, QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setObjectName(name);
    list->setAccessibleName(meaning);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    return list;
}

QStringList namesOf(const QListWidget* list) {
    QStringList names;
    for (int i = 0; i < list->count(); ++i)
        names << list->item(i)->text();
    return names;
}

/// The places of the listed columns in their table: two columns may bear one name.
std::vector<int> placesOf(const QListWidget* list) {
    std::vector<int> places;
    for (int i = 0; i < list->count(); ++i)
        places.push_back(list->item(i)->data(kPlace).toInt());
    return places;
}

void listColumns(QListWidget* list, const QStringList& columns) {
    for (int i = 0; i < columns.size(); ++i) {
        auto* item = new QListWidgetItem(columns[i], list);
        item->setData(kPlace, i);
    }
}

/// Moves the selected names, or all, to the end of the other list.
void moveNames(QListWidget* from, QListWidget* to, bool all) {
    for (int i = 0; i < from->count();) {
        if (all || from->item(i)->isSelected())
            to->addItem(from->takeItem(i));
        else
            ++i;
    }
}

bool endsAsOneOf(const QString& path, const QStringList& endings) {
    return std::any_of(endings.begin(), endings.end(),
                       [&path](const QString& ending) { return path.endsWith(ending); });
}

/// Takes the names behind the first `count` back to the list that they came from.
void putBackBehind(QListWidget* from, QListWidget* to, int count) {
    while (from->count() > count)
        to->addItem(from->takeItem(count));
}

/// From now on what is large goes back to the system as soon as it is given up: the columns that grow in an
/// import would leave holes as large as themselves.
void giveBackMemory() {
    constexpr int large = 1 << 20; // bytes
    mallopt(M_MMAP_THRESHOLD, large);
}

/// Runs what waits for a reader, with a way to stop it.
void waitFor(QLabel* hint, const std::function<void(const std::function<bool()>& shouldStop)>& work) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto arrow = qScopeGuard([] { QApplication::restoreOverrideCursor(); });
    try {
        LongWork progress(QStringLiteral("正在读取文件，请等待..."), 0);
        work([&progress] { return !progress.step(0); });
    } catch (const ImportError& error) {
        hint->setText(error.text());
    }
}

} // namespace

FileInputFm2::FileInputFm2(ImportPlan& plan, ViewHost& host, Prompts& prompts)
    : TopWindow(QStringLiteral("FileInputFm2"), {})
    , m_plan(plan)
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts) {
    giveBackMemory();
    auto* column = new QVBoxLayout(this);
    column->addLayout(buildSource());
    auto* pairs = new QHBoxLayout;
    pairs->addWidget(makeLabel(QStringLiteral("Label4"), QStringLiteral("建立字段对应关系"), this));
    QPushButton* same = makeButton(QStringLiteral("pairSameNames"), QStringLiteral("同名配对"), this);
    same->setToolTip(QStringLiteral("把两边名称相同的字段全部配成对"));
    connect(same, &QPushButton::clicked, this, &FileInputFm2::pairSameNames);
    pairs->addWidget(same);
    pairs->addStretch(1);
    column->addLayout(pairs);
    column->addLayout(buildPairs(), 2);
    m_preview = new ImportPreview(this);
    column->addWidget(m_preview, 3);
    column->addLayout(buildBottom());
    resize(980, 680);
    m_plan.target = nullptr;
    shownAgain();
}

QLayout* FileInputFm2::buildBottom() {
    m_note = new QWidget(this);
    m_note->setObjectName(QStringLiteral("Picture2"));
    m_noteText = makeLabel(
        QStringLiteral("Label2"),
        QStringLiteral("日期、产品编号、品名、客户编号、订单号、成本、单价、数量、实付是必选字段名！"),
        m_note);
    auto* note = new QHBoxLayout(m_note);
    note->setContentsMargins(0, 0, 0, 0);
    note->addWidget(m_noteText);
    m_note->hide();
    m_hint = makeLabel(QStringLiteral("importHint"), {}, this);
    m_hint->setTextFormat(Qt::PlainText); // the names and the words in it may be foreign
    setTextColour(m_hint, QColor(0xB0, 0x44, 0x3A));
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_note);
    bottom->addWidget(m_hint, 1);
    QPushButton* onTrial = makeButton(QStringLiteral("tryImport"), QStringLiteral("试导入"), this);
    onTrial->setToolTip(QStringLiteral("列出每一行会变成什么，不写入任何内容"));
    connect(onTrial, &QPushButton::clicked, this, &FileInputFm2::tryRun);
    QPushButton* run = makeButton(QStringLiteral("Command4"), QStringLiteral("导入"), this);
    QPushButton* back = makeButton(QStringLiteral("Command5"), QStringLiteral("返回"), this);
    connect(run, &QPushButton::clicked, this, &FileInputFm2::startRun);
    connect(back, &QPushButton::clicked, this, &QWidget::close);
    bottom->addWidget(onTrial);
    bottom->addWidget(run);
    bottom->addWidget(back);
    return bottom;
}

void FileInputFm2::shownAgain() {
    const ImportTarget* target = findImportTarget(m_plan.importTarget);
    // A run that is under way goes on into its own target.
    if (!target || target == m_plan.target || !isEnabled())
        return;
    m_plan.target = target;
    setWindowTitle(QString::fromUtf16(target->caption));
    if (!m_note->isHidden())
        m_noteText->setText(QString::fromUtf16(target->note));
    setup_nameList();
}

QLayout* FileInputFm2::buildSource() {
    auto* row = new QHBoxLayout;
    auto* buttons = new QGridLayout;
    for (int i = 0; i < int(std::size(kSources)); ++i) {
        QPushButton* button =
            makeButton(QStringLiteral("Command7(%1)").arg(i), QString::fromUtf16(kSources[i].caption), this);
        connect(button, &QPushButton::clicked, this, [this, i] { openSource(i); });
        buttons->addWidget(button, i / 2, i % 2);
    }
    m_tables = makeList(QStringLiteral("List5"), QStringLiteral("数据源"), this);
    m_tables->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tables->setMaximumHeight(90);
    m_tables->setEnabled(false);
    m_take = makeButton(QStringLiteral("Command6"), QStringLiteral("确认"), this);
    m_take->setEnabled(false);
    connect(m_take, &QPushButton::clicked, this, &FileInputFm2::takeTable);
    auto* tables = new QVBoxLayout;
    tables->addWidget(makeLabel(QStringLiteral("Label1"), QStringLiteral("数据源"), this));
    tables->addWidget(m_tables);
    row->addLayout(buttons);
    row->addLayout(tables, 1);
    row->addWidget(m_take, 0, Qt::AlignBottom);
    return row;
}

QLayout* FileInputFm2::buildPairs() {
    auto* row = new QHBoxLayout;
    row->addLayout(buildPair(QStringLiteral("来源字段"), QStringLiteral("Command2"), m_sourceLeft,
                             QStringLiteral("List1"), m_sourceRight, QStringLiteral("List2")));
    row->addSpacing(12);
    row->addLayout(buildPair(QStringLiteral("目标字段"), QStringLiteral("Command3"), m_targetLeft,
                             QStringLiteral("List4"), m_targetRight, QStringLiteral("List3")));
    return row;
}

QLayout* FileInputFm2::buildPair(const QString& caption, const QString& buttons, QListWidget*& left,
                                 const QString& leftName, QListWidget*& right, const QString& rightName) {
    static const QString steps[] = {QStringLiteral(">"), QStringLiteral(">>"), QStringLiteral("<"),
                                    QStringLiteral("<<")};
    left = makeList(leftName, caption, this);
    right = makeList(rightName, caption + QStringLiteral("（已选）"), this);
    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(caption, this), 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("对应顺序"), this), 0, 2);
    grid->addWidget(left, 1, 0, 5, 1);
    grid->addWidget(right, 1, 2, 5, 1);
    for (int i = 0; i < 4; ++i) {
        QPushButton* button = makeButton(QStringLiteral("%1(%2)").arg(buttons).arg(i), steps[i], this);
        QListWidget* from = i < 2 ? left : right;
        QListWidget* to = i < 2 ? right : left;
        connect(button, &QPushButton::clicked, this, [this, from, to, all = i % 2 == 1] {
            moveNames(from, to, all);
            pairsChanged();
        });
        grid->addWidget(button, i + 1, 1);
    }
    grid->setRowStretch(5, 1);
    return grid;
}

void FileInputFm2::openSource(int index) {
    const SourceButton& button = kSources[index];
    const auto path =
        m_prompts.openFile(QString::fromUtf16(button.caption), QString::fromUtf16(button.filter));
    if (!path)
        return;
    sourceOpened = true;
    m_hint->clear();
    m_tables->clear();
    m_source.reset();
    m_rows = {};
    setup_nameList();
    if (!endsAsOneOf(*path, QString::fromUtf16(button.endings).split(u' '))) {
        m_prompts.tell(QString::fromUtf16(button.refusal), QString::fromUtf16(button.refusalTitle));
        sourceOpened = false;
        return;
    }
    waitFor(m_hint, [&](const std::function<bool()>& shouldStop) {
        m_source = openImportSource(button.kind, *path, ownFiles(m_session.cn.path()), shouldStop);
        m_source->shouldStop = nullptr; // it goes with this wait
        m_tables->addItems(m_source->tables());
        if (m_tables->count() == 1)
            m_tables->setCurrentRow(0);
    });
    m_tables->setEnabled(m_source != nullptr);
    m_take->setEnabled(m_source != nullptr);
}

bool FileInputFm2::Com_confirmation() {
    const QList<QListWidgetItem*> chosen = m_tables->selectedItems();
    if (!sourceOpened || !m_source || chosen.isEmpty())
        return false;
    m_preview->showTrial(nullptr); // it reads the rows that go now
    m_rows = {};
    waitFor(m_hint, [&](const std::function<bool()>& shouldStop) {
        m_source->shouldStop = shouldStop;
        const auto put = qScopeGuard([this] { m_source->shouldStop = nullptr; });
        m_rows = m_source->read(chosen.first()->text());
    });
    return true;
}

void FileInputFm2::setup_nameList() {
    for (QListWidget* list : {m_sourceLeft, m_sourceRight, m_targetLeft, m_targetRight})
        list->clear();
    m_preview->showSource(m_rows);
    if (m_rows.rowCount() == 0 || !m_plan.target)
        return;
    listColumns(m_sourceLeft, m_rows.columns);
    listColumns(m_targetLeft, pairableColumns(m_session, *m_plan.target));
}

void FileInputFm2::takeTable() {
    m_hint->clear();
    if (!Com_confirmation())
        return;
    setup_nameList();
    if (m_rows.rowCount() == 0 || !m_plan.target)
        return;
    m_noteText->setText(QString::fromUtf16(m_plan.target->note));
    m_note->show();
}

void FileInputFm2::pairSameNames() {
    // A name that stands alone on its side would shift every pair behind it.
    const int pairs = std::min(m_sourceRight->count(), m_targetRight->count());
    putBackBehind(m_sourceRight, m_sourceLeft, pairs);
    putBackBehind(m_targetRight, m_targetLeft, pairs);
    for (int i = 0; i < m_targetLeft->count();) {
        const auto same = m_sourceLeft->findItems(m_targetLeft->item(i)->text(), Qt::MatchFixedString);
        if (same.isEmpty()) {
            ++i;
            continue;
        }
        m_sourceRight->addItem(m_sourceLeft->takeItem(m_sourceLeft->row(same.first())));
        m_targetRight->addItem(m_targetLeft->takeItem(i));
    }
    pairsChanged();
}

void FileInputFm2::pairsChanged() {
    QStringList pairs(m_rows.columns.size());
    const std::vector<int> places = placesOf(m_sourceRight);
    for (std::size_t i = 0; i < places.size() && int(i) < m_targetRight->count(); ++i)
        pairs[places[i]] = m_targetRight->item(int(i))->text();
    m_preview->showPairs(pairs);
    m_preview->showTrial(nullptr);
}

bool FileInputFm2::pairsStand() {
    const int source = m_sourceRight->count();
    const int target = m_targetRight->count();
    if (source == 0 || target == 0 || !m_plan.target)
        return false;
    if (source != target)
        m_prompts.tell(QStringLiteral("字段对应个数不匹配！"));
    return source == target;
}

void FileInputFm2::tryRun() {
    if (!pairsStand())
        return;
    m_plan.sourceColumns = namesOf(m_sourceRight);
    m_plan.targetColumns = namesOf(m_targetRight);
    if (const QString fault = missingPair(m_plan); !fault.isEmpty())
        return m_prompts.tell(fault);
    const auto trial = std::make_shared<ImportTrial>(m_session, m_plan, m_rows, placesOf(m_sourceRight));
    {
        LongWork progress(QStringLiteral("正在试导入，请等待..."), trial->rowCount());
        while (!trial->finished() && progress.step(trial->done()))
            trial->run(kTrialStep);
    }
    m_preview->showTrial(trial);
}

void FileInputFm2::startRun() {
    if (!pairsStand())
        return;
    if (!m_prompts.confirm(QStringLiteral("确实要导入数据吗？ ")))
        return;
    m_preview->showTrial(nullptr);
    m_plan.sourceColumns = namesOf(m_sourceRight);
    m_plan.targetColumns = namesOf(m_targetRight);
    // This window goes with the run, and what it read by is needed no more.
    m_plan.rows = m_rows.takeColumns(placesOf(m_sourceRight));
    m_source.reset();
    setEnabled(false);
    TopWindow* run = m_host.openWindow(QStringLiteral("FileInputFm3"), ViewHost::MainWindow::Disabled);
    connect(run, &TopWindow::finished, this, [this] { finish(); });
}

// The building of the report form: its menu and the groups of its panel.
#include "reports/reportForm.h"

#include "controls/exportPrompt.h"
#include "controls/formParts.h"
#include "controls/moveButtons.h"
#include "reports/paperView.h"
#include "reports/zoomBar.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QShortcut>

namespace {

/// The four fonts of a report, by their menu entries.
struct FontEntry {
    const char16_t* name;
    const char16_t* caption;
    FontRecord ReportLayout::*record;
};
constexpr FontEntry kFonts[] = {{u"sTitle", u"标题字符", &ReportLayout::titleFont},
                                {u"time_font", u"表头字符", &ReportLayout::headFont},
                                {u"nField", u"字段名字符", &ReportLayout::fieldFont},
                                {u"wContent", u"内容字符", &ReportLayout::contentFont}};

} // namespace

ReportForm::ReportForm(const ReportDescription& report, ViewHost& host, Prompts& prompts)
    : TopWindow(QString::fromUtf16(report.name), QString::fromUtf16(report.caption))
    , m_report(report)
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts)
    , m_period(std::exchange(m_session.report.period, {}))
    , m_caller(m_session.report.caller)
    , m_layout(defaultLayout(report, openingTitle())) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_view = new PaperView(report.pageWidth(), report.pageHeight(), this);
    auto* column = new QVBoxLayout(this);
    column->setMenuBar(buildMenu());
    auto* row = new QHBoxLayout;
    column->addLayout(row, 1);
    auto* preview = new QVBoxLayout;
    preview->setSpacing(0);
    preview->addWidget(m_view, 1);
    preview->addWidget(new ZoomBar(*m_view, this));
    row->addLayout(preview, 1);
    row->addWidget(buildPanel());
    // 12000 by 9000 twips, so far as the screen has room.
    resize(QSize(800, 600).boundedTo(screen()->availableSize()));
    buildShortcuts();
    startPaging();
    QApplication::restoreOverrideCursor();
}

ReportForm::~ReportForm() = default;

void ReportForm::buildFontMenu(QMenuBar* bar) {
    QMenu* fonts = bar->addMenu(QStringLiteral("字体选择"));
    fonts->menuAction()->setObjectName(QStringLiteral("wSelect"));
    for (const FontEntry& font : kFonts) {
        const QString caption = QString::fromUtf16(font.caption);
        fonts->addAction(caption, this, [this, &font, caption] { askFont(font.record, caption); })
            ->setObjectName(QString::fromUtf16(font.name));
    }
}

void ReportForm::buildSettingsMenu(QMenuBar* bar) {
    if (m_report.settings == SettingsMenu::None)
        return;
    QMenu* settings = bar->addMenu(QStringLiteral("设置"));
    settings->menuAction()->setObjectName(QStringLiteral("settings"));
    if (m_report.settings == SettingsMenu::PrinterSetup)
        settings->addAction(QStringLiteral("打印机设置"), this, [this] { setUpPrinter(); })
            ->setObjectName(QStringLiteral("printerSetup"));
}

void ReportForm::buildShortcuts() {
    const std::tuple<QKeySequence, const char16_t*, std::function<void()>> keys[] = {
        {Qt::CTRL | Qt::Key_P, u"Command2", [this] { print(); }},
        {Qt::Key_Home, u"Command4(0)", [this] { turnPage(0); }},
        {Qt::Key_PageUp, u"Command4(1)", [this] { turnPage(1); }},
        {Qt::Key_PageDown, u"Command4(2)", [this] { turnPage(2); }},
        {Qt::Key_End, u"Command4(3)", [this] { turnPage(3); }},
        {Qt::Key_Escape, nullptr, [this] { close(); }}};
    for (const auto& [key, name, action] : keys) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, action);
        auto* button = name ? findChild<QPushButton*>(QString::fromUtf16(name)) : nullptr;
        if (button)
            button->setToolTip(QStringLiteral("%1（%2）").arg(button->accessibleName(), key.toString()));
    }
}

QMenuBar* ReportForm::buildMenu() {
    auto* bar = new QMenuBar(this);
    buildFontMenu(bar);
    QMenu* title = bar->addMenu(QStringLiteral("输入标题"));
    title->menuAction()->setObjectName(QStringLiteral("tName"));
    title->addAction(QStringLiteral("标题"), this, [this] { askTitle(); })
        ->setObjectName(QStringLiteral("tName2"));
    buildSettingsMenu(bar);
    bar->addAction(QStringLiteral("导出 PDF"), this, [this] { askExport(); })
        ->setObjectName(QStringLiteral("exportPdf"));
    for (const auto& [kind, name] : {std::pair(&kCsvExport, u"exportCsv"), {&kXlsxExport, u"exportXlsx"}})
        bar->addAction(QString::fromUtf16(kind->caption), this,
                       [this, exported = kind] { exportRows(*exported); })
            ->setObjectName(QString::fromUtf16(name));
    bar->addAction(QStringLiteral("保存版式…"), this, [this] { saveLayout(); })
        ->setObjectName(QStringLiteral("saveLayout"));
    bar->addAction(QStringLiteral("载入版式…"), this, [this] { loadLayout(); })
        ->setObjectName(QStringLiteral("loadLayout"));
    bar->addAction(QStringLiteral("返回"), this, [this] { close(); })
        ->setObjectName(QStringLiteral("return"));
    return bar;
}

QPushButton* ReportForm::addButton(const QString& name, const QString& caption,
                                   std::function<void()> action) {
    QPushButton* button = makeButton(name, caption, this);
    connect(button, &QPushButton::clicked, this, std::move(action));
    return button;
}

QWidget* ReportForm::buildPanel() {
    auto* panel = new QWidget(this);
    panel->setObjectName(QStringLiteral("Frame1"));
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(buildPages());
    column->addWidget(buildMoves());
    column->addWidget(buildBoxes());
    column->addWidget(buildPrinting());
    column->addStretch(1);
    return panel;
}

QWidget* ReportForm::buildPages() {
    auto* group = new QGroupBox(QStringLiteral("页"));
    m_pages = new MoveButtons(QStringLiteral("Command4"), QStringLiteral("Text1(2)"), group);
    m_pages->setUnit(QStringLiteral("页"));
    m_pages->setPositionWidth(QStringLiteral("第 100000 页"));
    connect(m_pages, &MoveButtons::pressed, this, &ReportForm::turnPage);
    m_firstPage = makeLabel(QStringLiteral("Text1(1)"), {}, group);
    m_lastPage = makeLabel(QStringLiteral("Text1(0)"), {}, group);
    m_pageSize = makeLabel(QStringLiteral("Text5"), {}, group);
    m_pageSize->setAccessibleName(QStringLiteral("记录数/页"));
    auto* grid = new QGridLayout(group);
    grid->addWidget(m_pages, 0, 0, 1, 3);
    grid->addWidget(m_firstPage, 1, 0);
    grid->addWidget(m_lastPage, 1, 1, 1, 2);
    grid->addWidget(new QLabel(QStringLiteral("记录数/页"), group), 2, 0);
    grid->addWidget(m_pageSize, 2, 1, 1, 2);
    grid->addWidget(addButton(QStringLiteral("Command10(0)"), QStringLiteral("记录数/页加"),
                              [this] { changePageSize(1); }),
                    3, 0);
    grid->addWidget(addButton(QStringLiteral("Command10(1)"), QStringLiteral("记录数/页减"),
                              [this] { changePageSize(-1); }),
                    3, 1, 1, 2);
    return group;
}

QWidget* ReportForm::buildMoves() {
    static const QString captions[] = {QStringLiteral("表位移"), QStringLiteral("标题位移"),
                                       QStringLiteral("表头位移")};
    auto* group = new QGroupBox(QStringLiteral("位移"));
    auto* grid = new QGridLayout(group);
    for (int i = 0; i < 3; ++i) {
        m_parts[i] = new QRadioButton(captions[i], group);
        m_parts[i]->setObjectName(QStringLiteral("Option%1").arg(i + 1));
        grid->addWidget(m_parts[i], i, 0);
    }
    m_parts[0]->setChecked(true);
    struct Move {
        int command, right, down, row, column;
        const char16_t* caption;
    };
    for (const Move& move : {Move{7, 0, -1, 0, 2, u"上移"}, Move{5, -1, 0, 1, 1, u"左移"},
                             Move{6, 1, 0, 1, 3, u"右移"}, Move{11, 0, 1, 2, 2, u"下移"}})
        grid->addWidget(addButton(QStringLiteral("Command%1").arg(move.command),
                                  QString::fromUtf16(move.caption),
                                  [this, move] { movePart(move.right, move.down); }),
                        move.row, move.column);
    grid->setColumnStretch(4, 1);
    return group;
}

QWidget* ReportForm::buildBoxes() {
    auto* group = new QGroupBox(QStringLiteral("方框宽窄调整"));
    m_boxes = new QComboBox(group);
    m_boxes->setObjectName(QStringLiteral("Combo1"));
    m_boxes->setAccessibleName(QStringLiteral("方框宽窄调整"));
    for (const char16_t* name : m_report.boxNames)
        m_boxes->addItem(QString::fromUtf16(name));
    connect(m_boxes, &QComboBox::activated, this,
            [this](int index) { m_layout.selectedBox = qint16(index + 1); });
    auto* grid = new QGridLayout(group);
    grid->addWidget(m_boxes, 0, 0, 1, 2);
    grid->addWidget(addButton(QStringLiteral("Command9"), QStringLiteral("增宽"), [this] { widenBox(1); }), 1,
                    0);
    grid->addWidget(addButton(QStringLiteral("Command8"), QStringLiteral("变窄"), [this] { widenBox(-1); }),
                    1, 1);
    QPushButton* fit =
        addButton(QStringLiteral("fitBoxes"), QStringLiteral("自动列宽"), [this] { fitAllBoxes(); });
    fit->setToolTip(QStringLiteral("按这张报表的全部记录调整各个方框的宽窄"));
    grid->addWidget(fit, 2, 0, 1, 2);
    return group;
}

QWidget* ReportForm::buildPrinting() {
    auto* box = new QWidget;
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(addButton(QStringLiteral("Command2"), QStringLiteral("打印"), [this] { print(); }));
    row->addWidget(
        addButton(QStringLiteral("Command3"), QStringLiteral("打印测试"), [this] { testPrint(); }));
    return box;
}

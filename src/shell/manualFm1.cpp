#include "shell/manualFm1.h"

#include "controls/formParts.h"
#include "controls/recordBoxes.h"
#include "shell/version.h"

#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

const QColor kHeading(0x2F, 0x5D, 0x8A);
const QColor kLink(0x1F, 0x5F, 0xB0);
const QColor kHit(0xFF, 0xF2, 0xB3);
const QColor kHitInFront(0xFF, 0xC9, 0x57);

QString readGuide(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool asksForSearch(const QKeyEvent& event) {
    return event.key() == Qt::Key_F && event.modifiers() == Qt::ControlModifier;
}

QTextCursor stretch(QTextDocument* document, qsizetype start, qsizetype end) {
    QTextCursor cursor(document);
    cursor.setPosition(int(start));
    cursor.setPosition(int(end), QTextCursor::KeepAnchor);
    return cursor;
}

QTextCharFormat headingFormat(const QFont& page, UserGuide::Level level) {
    constexpr qreal sizes[] = {1.6, 1.35, 1.05}; // by level, of the page's own
    QTextCharFormat format;
    format.setFontPointSize(page.pointSizeF() * sizes[int(level)]);
    format.setFontWeight(QFont::Bold);
    format.setForeground(kHeading);
    return format;
}

} // namespace

manualFm1::manualFm1(const QString& guidePath, std::function<QString()> topic, const QString& books,
                     const QString& warning)
    : TopWindow(QStringLiteral("manualFm1"), QStringLiteral("帮助"))
    , m_guide(readGuide(guidePath))
    , m_topic(std::move(topic)) {
    auto* column = new QVBoxLayout(this);
    column->addLayout(buildSearch());
    column->addWidget(buildPage(), 1);
    if (!warning.isEmpty())
        column->addWidget(makeLabel(QStringLiteral("warning"), warning, this));
    column->addLayout(buildBottom(books));
    resize(940, 640);
    listHeadings();
    dress();
    m_page->setFocus();
}

QBoxLayout* manualFm1::buildSearch() {
    auto* row = new QHBoxLayout;
    QPushButton* back = makeButton(QStringLiteral("guideBack"), QStringLiteral("后退"), this);
    back->setToolTip(QStringLiteral("回到链接所在的地方（Alt+←）"));
    back->setEnabled(false);
    back->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Left));
    connect(back, &QPushButton::clicked, this, &manualFm1::goBack);
    m_back = back;
    QPushButton* previous = makeButton(QStringLiteral("guidePrevious"), QStringLiteral("上一处"), this);
    previous->setToolTip(QStringLiteral("Shift+F3"));
    previous->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F3));
    connect(previous, &QPushButton::clicked, this, [this] { goToHit(-1); });
    QPushButton* next = makeButton(QStringLiteral("guideNext"), QStringLiteral("下一处"), this);
    next->setToolTip(QStringLiteral("F3"));
    next->setShortcut(QKeySequence(Qt::Key_F3));
    connect(next, &QPushButton::clicked, this, [this] { goToHit(1); });
    m_word = makeSearchBox(QStringLiteral("guideSearch"),
                           QStringLiteral("在说明里查找（Ctrl+F），回车到下一处"), next, this);
    m_word->setPlaceholderText(QStringLiteral("在说明里查找"));
    connect(m_word, &QLineEdit::textChanged, this, &manualFm1::search);
    m_found = makeLabel(QStringLiteral("guideHits"), {}, this);
    m_found->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("没有找到 ")));
    row->addWidget(back);
    row->addWidget(m_word, 1);
    row->addWidget(m_found);
    row->addWidget(previous);
    row->addWidget(next);
    tabThrough({back, m_word, previous, next});
    return row;
}

QWidget* manualFm1::buildPage() {
    auto* split = new QSplitter(this);
    split->setChildrenCollapsible(false);
    m_headings = new QListWidget(split);
    m_headings->setObjectName(QStringLiteral("guideHeadings"));
    m_headings->setAccessibleName(QStringLiteral("目录"));
    connect(m_headings, &QListWidget::itemClicked, this, [this] { goToSection(m_headings->currentRow()); });
    connect(m_headings, &QListWidget::itemActivated, this, [this] { goToSection(m_headings->currentRow()); });
    auto* frame = new QGroupBox(QStringLiteral("操作说明"), split);
    frame->setObjectName(QStringLiteral("Frame1"));
    m_page = new QTextBrowser(frame);
    m_page->setObjectName(QStringLiteral("RichTextBox1"));
    m_page->setAccessibleName(QStringLiteral("操作说明"));
    m_page->setOpenLinks(false);
    m_page->setPlainText(m_guide.text());
    connect(m_page, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& link) { follow(link.fragment().toInt()); });
    auto* inside = new QVBoxLayout(frame);
    inside->addWidget(m_page);
    split->setStretchFactor(1, 1);
    split->setSizes({210, 700});
    return split;
}

/// The file's name can be copied, and be longer than the window.
QBoxLayout* manualFm1::buildBottom(const QString& books) {
    auto* version = new QLabel(programVersion(), this);
    version->setObjectName(QStringLiteral("version"));
    auto* file = new QLineEdit(QDir::toNativeSeparators(books), this);
    file->setObjectName(QStringLiteral("booksFile"));
    file->setAccessibleName(QStringLiteral("数据文件"));
    file->setToolTip(file->text());
    file->setReadOnly(true);
    file->setFrame(false);
    file->setStyleSheet(QStringLiteral("QLineEdit { background: transparent; }"));
    QPushButton* close = makeButton(QStringLiteral("Command1"), QStringLiteral("关闭"), this);
    connect(close, &QPushButton::clicked, this, [this] { finish(); });
    auto* row = new QHBoxLayout;
    row->addWidget(version);
    row->addSpacing(24);
    row->addWidget(makeLabel(QStringLiteral("booksLabel"), QStringLiteral("数据文件："), this));
    row->addWidget(file, 1);
    row->addWidget(close);
    return row;
}

void manualFm1::listHeadings() {
    for (const UserGuide::Section& section : m_guide.sections()) {
        auto* item = new QListWidgetItem(section.name, m_headings);
        if (section.level == UserGuide::Level::Section)
            item->setText(QStringLiteral("　") + section.name);
        else
            item->setFont(boldOf(m_headings));
    }
}

/// Gives the plain text its looks; not a sign of it changes.
void manualFm1::dress() {
    QTextDocument* document = m_page->document();
    for (const UserGuide::Section& section : m_guide.sections()) {
        const qsizetype end = section.start + section.heading.size();
        stretch(document, section.start, end).mergeCharFormat(headingFormat(m_page->font(), section.level));
        QTextCharFormat line; // the line below a heading, as a fine rule
        line.setFontPointSize(m_page->font().pointSizeF() / 2);
        line.setForeground(QColor(0xB8, 0xC4, 0xD0));
        if (section.textFrom > end)
            stretch(document, end + 1, section.textFrom).mergeCharFormat(line);
    }
    for (const UserGuide::Link& link : m_guide.links()) {
        QTextCharFormat format;
        format.setAnchor(true);
        format.setAnchorHref(QStringLiteral("#%1").arg(link.target));
        format.setForeground(kLink);
        stretch(document, link.start, link.start + link.length).mergeCharFormat(format);
    }
}

void manualFm1::showEvent(QShowEvent* event) {
    TopWindow::showEvent(event);
    shownAgain(); // where a section stands is known now that the page has its width
}

bool manualFm1::event(QEvent* event) {
    // The main window below has this shortcut too.
    if (event->type() == QEvent::ShortcutOverride && asksForSearch(*static_cast<QKeyEvent*>(event)))
        event->accept();
    return TopWindow::event(event);
}

void manualFm1::keyPressEvent(QKeyEvent* event) {
    if (!asksForSearch(*event))
        return TopWindow::keyPressEvent(event);
    m_word->setFocus(Qt::ShortcutFocusReason);
    m_word->selectAll();
}

void manualFm1::shownAgain() {
    const QString topic = m_topic ? m_topic() : QString();
    goToSection(std::max(0, m_guide.find(topic)));
}

void manualFm1::goToSection(int section) {
    if (section < 0 || section >= int(m_guide.sections().size()))
        return;
    goToPlace(m_guide.sections()[std::size_t(section)].start);
    m_headings->setCurrentRow(section);
}

/// The place's line becomes the uppermost one.
void manualFm1::goToPlace(qsizetype place) {
    QTextCursor cursor(m_page->document());
    cursor.setPosition(int(place));
    m_page->setTextCursor(cursor);
    QScrollBar* bar = m_page->verticalScrollBar();
    bar->setValue(bar->value() + m_page->cursorRect(cursor).top() - 4);
    m_headings->setCurrentRow(m_guide.sectionAt(place));
}

int manualFm1::topPlace() const {
    return m_page->cursorForPosition(QPoint(2, m_page->fontMetrics().height())).position();
}

void manualFm1::follow(int section) {
    m_visited.push_back(topPlace());
    m_back->setEnabled(true);
    goToSection(section);
}

void manualFm1::goBack() {
    if (m_visited.empty())
        return;
    goToPlace(m_visited.back());
    m_visited.pop_back();
    m_back->setEnabled(!m_visited.empty());
}

void manualFm1::search() {
    m_hits = m_guide.hits(m_word->text().trimmed());
    // The first one from where the page stands.
    const int top = topPlace();
    const auto from = std::lower_bound(m_hits.begin(), m_hits.end(), qsizetype(top));
    m_hit = from == m_hits.end() ? 0 : int(from - m_hits.begin());
    showHits();
}

void manualFm1::goToHit(int step) {
    if (m_hits.empty())
        return;
    m_hit = (m_hit + step + int(m_hits.size())) % int(m_hits.size());
    showHits();
}

void manualFm1::showHits() {
    const qsizetype length = m_word->text().trimmed().size();
    QList<QTextEdit::ExtraSelection> marks;
    for (std::size_t i = 0; i < m_hits.size(); ++i) {
        QTextEdit::ExtraSelection mark{stretch(m_page->document(), m_hits[i], m_hits[i] + length), {}};
        mark.format.setBackground(int(i) == m_hit ? kHitInFront : kHit);
        mark.format.setForeground(Qt::black);
        marks << mark;
    }
    m_page->setExtraSelections(marks);
    if (length == 0)
        return m_found->clear();
    m_found->setText(m_hits.empty() ? QStringLiteral("没有找到")
                                    : QStringLiteral("%1/%2").arg(m_hit + 1).arg(m_hits.size()));
    if (m_hits.empty())
        return;
    QTextCursor cursor(m_page->document());
    cursor.setPosition(int(m_hits[std::size_t(m_hit)]));
    m_page->setTextCursor(cursor);
    m_page->ensureCursorVisible();
    m_headings->setCurrentRow(m_guide.sectionAt(cursor.position()));
}

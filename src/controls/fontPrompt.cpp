#include "controls/fontPrompt.h"

#include "controls/formParts.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleValidator>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <algorithm>

namespace {

struct Style {
    const char16_t* caption;
    bool bold;
    bool italic;
};
constexpr Style kStyles[] = {
    {u"常规", false, false}, {u"斜体", false, true}, {u"粗体", true, false}, {u"粗斜体", true, true}};
constexpr int kSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72};
constexpr double kLargest = 1000; // points

QString sizeText(const QFont& font) {
    return QString::number(font.pointSizeF());
}

QListWidget* makeList(const QString& name, const QString& caption, QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setObjectName(name);
    list->setAccessibleName(caption);
    return list;
}

QWidget* captioned(const QString& caption, QWidget* widget) {
    auto* box = new QWidget;
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(caption, box);
    label->setBuddy(widget);
    column->addWidget(label);
    column->addWidget(widget, 1);
    return box;
}

} // namespace

QStringList fontNames() {
    QStringList names;
    QStringList families = QFontDatabase::families();
    for (const QString& name : QFont::substitutions()) {
        families.removeAll(QFontInfo(QFont(name)).family());
        families.removeAll(name);
        names << name;
    }
    return names + families;
}

FontDialog::FontDialog(const QString& title, const FontChoice& start, QWidget* parent)
    : QDialog(parent)
    , m_start(start)
    , m_colour(start.colour) {
    setObjectName(QStringLiteral("fontDialog"));
    giveDialogFrame(this);
    setWindowTitle(title);
    m_sample = makeLabel(QStringLiteral("sample"), QStringLiteral("字体示例 2004-11-21 AaBb"), this);
    m_sample->setAlignment(Qt::AlignCenter);
    m_sample->setFrameShape(QFrame::StyledPanel);
    m_sample->setFixedHeight(72);
    auto* grid = new QGridLayout(this);
    grid->addWidget(buildNames(), 0, 0);
    grid->addWidget(buildStyles(), 0, 1);
    grid->addWidget(buildSizes(), 0, 2);
    grid->addWidget(buildEffects(), 1, 0, 1, 3);
    grid->addWidget(m_sample, 2, 0, 1, 3);
    grid->addWidget(makeOkCancel(this), 3, 0, 1, 3);
    grid->setColumnStretch(0, 1);
    showSample();
}

QWidget* FontDialog::buildNames() {
    m_names = makeList(QStringLiteral("fontName"), QStringLiteral("字体"), this);
    QStringList names = fontNames();
    if (!names.contains(m_start.font.family()))
        names.prepend(m_start.font.family());
    m_names->addItems(names);
    m_names->setCurrentRow(int(names.indexOf(m_start.font.family())));
    connect(m_names, &QListWidget::currentRowChanged, this, &FontDialog::showSample);
    return captioned(QStringLiteral("字体"), m_names);
}

QWidget* FontDialog::buildStyles() {
    m_styles = makeList(QStringLiteral("fontStyle"), QStringLiteral("字形"), this);
    for (const Style& style : kStyles) {
        m_styles->addItem(QString::fromUtf16(style.caption));
        if (style.bold == m_start.font.bold() && style.italic == m_start.font.italic())
            m_styles->setCurrentRow(m_styles->count() - 1);
    }
    m_styles->setFixedWidth(90);
    connect(m_styles, &QListWidget::currentRowChanged, this, &FontDialog::showSample);
    return captioned(QStringLiteral("字形"), m_styles);
}

QWidget* FontDialog::buildSizes() {
    m_sizes = new QComboBox(this);
    m_sizes->setObjectName(QStringLiteral("fontSize"));
    m_sizes->setAccessibleName(QStringLiteral("大小"));
    m_sizes->setEditable(true);
    m_sizes->setInsertPolicy(QComboBox::NoInsert);
    auto* numbers = new QDoubleValidator(1, kLargest, 2, m_sizes);
    numbers->setLocale(QLocale::c());
    m_sizes->setValidator(numbers);
    for (const int size : kSizes)
        m_sizes->addItem(QString::number(size));
    m_sizes->setCurrentText(sizeText(m_start.font));
    connect(m_sizes, &QComboBox::currentTextChanged, this, &FontDialog::showSample);
    QWidget* box = captioned(QStringLiteral("大小"), m_sizes);
    box->layout()->setAlignment(m_sizes, Qt::AlignTop);
    return box;
}

QWidget* FontDialog::buildEffects() {
    auto* box = new QWidget(this);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    m_strikethrough = new QCheckBox(QStringLiteral("删除线"), box);
    m_strikethrough->setObjectName(QStringLiteral("strikethrough"));
    m_strikethrough->setChecked(m_start.font.strikeOut());
    m_underline = new QCheckBox(QStringLiteral("下划线"), box);
    m_underline->setObjectName(QStringLiteral("underline"));
    m_underline->setChecked(m_start.font.underline());
    for (QCheckBox* effect : {m_strikethrough, m_underline}) {
        connect(effect, &QCheckBox::toggled, this, &FontDialog::showSample);
        row->addWidget(effect);
    }
    QPushButton* colour = makeButton(QStringLiteral("colour"), QStringLiteral("颜色…"), box);
    connect(colour, &QPushButton::clicked, this, &FontDialog::askColour);
    row->addWidget(colour);
    row->addStretch(1);
    return box;
}

void FontDialog::askColour() {
    const QColor picked = QColorDialog::getColor(m_colour, this, QStringLiteral("颜色"));
    if (picked.isValid())
        m_colour = picked;
    showSample();
}

FontChoice FontDialog::choice() const {
    FontChoice choice{m_start.font, m_colour};
    if (m_names->currentItem())
        choice.font.setFamily(m_names->currentItem()->text());
    const Style& style = kStyles[std::max(0, m_styles->currentRow())];
    choice.font.setBold(style.bold);
    choice.font.setItalic(style.italic);
    choice.font.setStrikeOut(m_strikethrough->isChecked());
    choice.font.setUnderline(m_underline->isChecked());
    const double size = m_sizes->currentText().toDouble();
    // A size that is none, or was not touched, stays as it came.
    if (size >= 1 && size <= kLargest && m_sizes->currentText() != sizeText(m_start.font))
        choice.font.setPointSizeF(size);
    return choice;
}

void FontDialog::showSample() {
    const FontChoice shown = choice();
    m_sample->setFont(shown.font);
    QPixmap sample(24, 16);
    sample.fill(shown.colour);
    findChild<QPushButton*>(QStringLiteral("colour"))->setIcon(sample);
    setTextColour(m_sample, shown.colour);
}

#include "app/appearance.h"

#include "app/borderStyle.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLibraryInfo>
#include <QPalette>
#include <QStyleOptionHeader>
#include <QTranslator>

namespace {

QPalette palette() {
    QPalette colours;
    colours.setColor(QPalette::Window, QColor(0xF4, 0xF6, 0xF9));
    colours.setColor(QPalette::WindowText, QColor(0x22, 0x2B, 0x36));
    colours.setColor(QPalette::Base, Qt::white);
    colours.setColor(QPalette::AlternateBase, QColor(0xF3, 0xF7, 0xFB));
    colours.setColor(QPalette::Text, QColor(0x22, 0x2B, 0x36));
    colours.setColor(QPalette::Button, QColor(0xFC, 0xFD, 0xFE));
    colours.setColor(QPalette::ButtonText, QColor(0x22, 0x2B, 0x36));
    colours.setColor(QPalette::Highlight, QColor(0x2F, 0x5D, 0x8A));
    colours.setColor(QPalette::HighlightedText, Qt::white);
    colours.setColor(QPalette::PlaceholderText, QColor(0x62, 0x6C, 0x7A));
    const QColor faint(0x7E, 0x86, 0x92);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colours.setColor(QPalette::Disabled, role, faint);
    colours.setColor(QPalette::Disabled, QPalette::Base, QColor(0xF0, 0xF2, 0xF5));
    return colours;
}

/// A family list, since the list of the machine's families names them in the language of the locale, while
/// each is found by any of its names.
QFont interfaceFont() {
    QFont font;
    font.setFamilies({QStringLiteral("WenQuanYi Micro Hei"), QStringLiteral("Noto Sans CJK SC"),
                      QStringLiteral("WenQuanYi Zen Hei"), QStringLiteral("Microsoft YaHei")});
    font.setPointSize(10);
    return font;
}

/// The sign of a sorted column as the toolbar has it: up where the rows rise.
class ShopStyle : public BorderStyle {
public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        const auto* head = qstyleoption_cast<const QStyleOptionHeader*>(option);
        if (element != PE_IndicatorHeaderArrow || !head)
            return BorderStyle::drawPrimitive(element, option, painter, widget);
        QStyleOptionHeader turned = *head;
        turned.sortIndicator = head->sortIndicator == QStyleOptionHeader::SortUp
                                   ? QStyleOptionHeader::SortDown
                                   : QStyleOptionHeader::SortUp;
        BorderStyle::drawPrimitive(element, &turned, painter, widget);
    }
};

void speakChinese(QApplication& application) {
    auto* translator = new QTranslator(&application);
    if (translator->load(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        application.installTranslator(translator);
    // Dialogs of the desktop would speak the language of the locale.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

} // namespace

void setAppearance(QApplication& application) {
    speakChinese(application);
    application.setStyle(new ShopStyle);
    application.setPalette(palette());
    application.setWindowIcon(QIcon(QStringLiteral(":/icons/app.svg")));
    application.setFont(interfaceFont());
    QFont::insertSubstitutions(QStringLiteral("宋体"),
                               {QStringLiteral("SimSun"), QStringLiteral("AR PL SungtiL GB"),
                                QStringLiteral("AR PL UMing CN"), QStringLiteral("Noto Serif CJK SC")});
    QFont::insertSubstitutions(QStringLiteral("黑体"),
                               {QStringLiteral("SimHei"), QStringLiteral("WenQuanYi Micro Hei"),
                                QStringLiteral("WenQuanYi Zen Hei"), QStringLiteral("Noto Sans CJK SC")});
    application.setStyleSheet(QStringLiteral(
        "QGroupBox { border: 1px solid #7d8794; border-radius: 6px; margin-top: 9px; padding-top: 6px; "
        "background: #fafbfd; }"
        "QGroupBox::title { subcontrol-origin: margin; left: 12px; padding: 0 4px; color: #2f5d8a; }"
        "QPushButton { padding: 4px 12px; }"
        "QLineEdit { padding: 2px 4px; }"
        "QTableView { gridline-color: #e3e8ee; }"
        "QTableView, QListWidget, QTextEdit, QFileDialog QListView, QFileDialog QTreeView"
        " { border: 1px solid #7d8794; }"
        "QHeaderView::section { background: #e9eef4; border: none; border-right: 1px solid #d5dce4;"
        " border-bottom: 1px solid #d5dce4; padding: 4px 6px; }"
        "QLabel#viewCaption { font-size: 15px; font-weight: bold; color: #2f5d8a; padding: 2px; }"
        "QLabel#unsavedMark, QLabel#unsavedCount { color: #9a4d00; font-weight: bold; padding: 2px 6px; }"
        "QFrame#filterChip { background: #fff1d6; border: 1px solid #9a6a1f; border-radius: 9px; }"
        "QFrame#filterChip QLabel { color: #5c3b00; }"
        "QFrame#filterChip QToolButton { color: #5c3b00; border: none; padding: 0 4px; font-weight: bold; }"
        "QFrame#filterChip QToolButton:hover { background: #f4d9a6; border-radius: 7px; }"
        "QStatusBar::item { border: none; }"
        "QToolTip { padding: 3px; }"));
}

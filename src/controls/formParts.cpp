#include "controls/formParts.h"

#include "controls/recordBoxes.h"

#include <QBoxLayout>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

QPushButton* makeButton(const QString& name, const QString& caption, QWidget* parent) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAccessibleName(caption);
    button->setAutoDefault(false);
    return button;
}

void addButtons(QBoxLayout* row, QWidget* parent, const std::vector<ButtonCommand>& commands) {
    for (const ButtonCommand& command : commands) {
        QPushButton* button =
            makeButton(QString::fromUtf16(command.name), QString::fromUtf16(command.caption), parent);
        QObject::connect(button, &QPushButton::clicked, parent, command.run);
        row->addWidget(button);
    }
}

QLabel* makeLabel(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    return label;
}

QLabel* makeFigure(const QString& name, const QString& meaning, QWidget* parent) {
    QLabel* figure = makeLabel(name, QStringLiteral("0"), parent);
    figure->setAccessibleName(meaning);
    figure->setFont(boldOf(figure));
    figure->setMinimumWidth(figure->fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
    return figure;
}

QLabel* addFigure(QBoxLayout* row, int number, const QString& caption, QWidget* parent) {
    QLabel* figure = makeFigure(QStringLiteral("Label%1").arg(number + 1), caption, parent);
    row->addWidget(makeLabel(QStringLiteral("Label%1").arg(number), caption, parent));
    row->addWidget(figure);
    return figure;
}

QFont boldOf(const QWidget* widget, qreal scale) {
    QFont font = widget->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * scale);
    return font;
}

RecordBox* makeSearchBox(const QString& name, const QString& toolTip, QPushButton* button, QWidget* parent) {
    auto* box = new RecordBox(parent);
    box->setObjectName(name);
    box->setToolTip(toolTip);
    box->setPlaceholderText(toolTip);
    box->setAccessibleName(QStringLiteral("查询入口"));
    box->setClearButtonEnabled(true);
    if (button)
        QObject::connect(box, &QLineEdit::returnPressed, button, &QPushButton::click);
    return box;
}

QLineEdit* makeShownBox(const QString& name, const QString& toolTip, QWidget* parent) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setToolTip(toolTip);
    box->setAccessibleName(toolTip);
    box->setAlignment(Qt::AlignCenter);
    box->setFixedWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("2004-12-31 00")) + 16);
    return box;
}

QDialogButtonBox* makeOkCancel(QDialog* dialog) {
    auto* buttons = new QDialogButtonBox(dialog);
    QPushButton* ok = makeButton(QStringLiteral("ok"), QStringLiteral("确定"), dialog);
    ok->setDefault(true);
    buttons->addButton(ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(makeButton(QStringLiteral("cancel"), QStringLiteral("取消"), dialog),
                       QDialogButtonBox::RejectRole);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return buttons;
}

void giveDialogFrame(QWidget* window) {
    window->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
}

void tabThrough(const QWidgetList& widgets) {
    // The first one goes to the front of its window: Qt moves no widget behind one that it follows already
    // round the end of the chain.
    const QWidget* window = widgets.first()->window();
    QWidget* front = window->nextInFocusChain();
    while (front != window && front->focusPolicy() == Qt::NoFocus)
        front = front->nextInFocusChain();
    QWidget::setTabOrder(front, widgets.first());
    for (qsizetype i = 1; i < widgets.size(); ++i)
        QWidget::setTabOrder(widgets[i - 1], widgets[i]);
}

QColor colourOfNumber(int blueGreenRed) {
    return QColor(blueGreenRed & 0xFF, (blueGreenRed >> 8) & 0xFF, (blueGreenRed >> 16) & 0xFF);
}

void setTextColour(QLabel* label, const QColor& colour) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, colour);
    label->setPalette(palette);
}

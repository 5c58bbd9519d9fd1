#include "controls/moveButtons.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

void moveInRecordset(const RecordsetPtr& recordset, int button) {
    if (!recordset->hasRows())
        return;
    const QuietWalk walk(recordset);
    switch (button) {
    case 0:
        return recordset->MoveFirst();
    case 1:
        if (!recordset->isBOF())
            recordset->MovePrevious();
        if (recordset->isBOF())
            recordset->MoveFirst();
        return;
    case 2:
        if (!recordset->isEOF())
            recordset->MoveNext();
        if (recordset->isEOF())
            recordset->MoveLast();
        return;
    default:
        recordset->MoveLast();
    }
}

MoveButtons::MoveButtons(const QString& name, const QString& positionName, QWidget* parent)
    : QWidget(parent) {
    static const char* const captions[] = {"<<", "<", ">", ">>"};
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    for (int i = 0; i < 4; ++i) {
        auto* button = new QPushButton(QString::fromLatin1(captions[i]), this);
        button->setObjectName(QStringLiteral("%1(%2)").arg(name).arg(i));
        button->setFixedWidth(button->fontMetrics().horizontalAdvance(QStringLiteral(">>>>")) + 10);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, i] { Q_EMIT pressed(i); });
        m_buttons.push_back(button);
        row->addWidget(button);
        if (i == 1 && !positionName.isEmpty()) {
            m_position = new QLineEdit(this);
            m_position->setObjectName(positionName);
            m_position->setReadOnly(true);
            m_position->setFocusPolicy(Qt::NoFocus);
            m_position->setAlignment(Qt::AlignCenter);
            m_position->setAccessibleName(QStringLiteral("记录位置"));
            setPositionWidth(QStringLiteral("1000000/1000000"));
            row->addWidget(m_position);
        }
    }
    setUnit(QStringLiteral("条"));
}

void MoveButtons::setPosition(const QString& text) {
    if (m_position)
        m_position->setText(text);
}

void MoveButtons::setUnit(const QString& unit) {
    static const QString steps[] = {QStringLiteral("第一"), QStringLiteral("上一"), QStringLiteral("下一"),
                                    QStringLiteral("最后一")};
    for (std::size_t i = 0; i < m_buttons.size(); ++i) {
        m_buttons[i]->setToolTip(steps[i] + unit);
        m_buttons[i]->setAccessibleName(steps[i] + unit);
    }
}

void MoveButtons::setPositionWidth(const QString& text) {
    m_position->setFixedWidth(m_position->fontMetrics().horizontalAdvance(text) + 16);
}

void MoveButtons::setButtonsEnabled(bool enabled) {
    for (QPushButton* button : m_buttons)
        button->setEnabled(enabled);
}

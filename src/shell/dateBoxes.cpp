#include "shell/dateBoxes.h"

#include "controls/formParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

DateBoxes::DateBoxes(const QString& firstName, const QString& lastName, Session& session,
                     const DisplayDateValues& values, QWidget* parent)
    : QWidget(parent)
    , m_session(session)
    , m_values(values)
    , m_first(makeBox(firstName, values.first))
    , m_last(makeBox(lastName, values.last)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new QLabel(QStringLiteral("时间："), this));
    row->addWidget(m_first);
    row->addWidget(new QLabel(QStringLiteral("/"), this));
    row->addWidget(m_last);
}

QLineEdit* DateBoxes::makeBox(const QString& name, QString Session::*value) {
    QLineEdit* box = makeShownBox(name, QStringLiteral("时间显示"), this);
    connect(box, &QLineEdit::textChanged, this,
            [this, value](const QString& text) { m_session.*value = text; });
    return box;
}

QWidgetList DateBoxes::boxes() const {
    return {m_first, m_last};
}

void DateBoxes::setTips(const DateTips& tips, const QString& days) {
    const QString below = days.isEmpty() ? QString() : u'\n' + days;
    m_first->setToolTip(QString::fromUtf16(tips.first) + below);
    m_last->setToolTip(QString::fromUtf16(tips.last) + below);
}

void DateBoxes::setDates(const DateSpan& dates) {
    m_first->setText(dates.first);
    m_last->setText(dates.last);
    tell();
}

void DateBoxes::tell() {
    m_session.*m_values.first = m_first->text();
    m_session.*m_values.last = m_last->text();
}

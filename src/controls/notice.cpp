#include "controls/notice.h"

#include "controls/formParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

/// A label that takes the room it gets, since a path may be longer than a screen is wide.
class NoticeLine::Text : public QLabel {
public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                         fontMetrics().elidedText(text(), Qt::ElideMiddle, width()));
    }
};

void say(QWidget* from, const Notice& notice) {
    for (QWidget* each = from; each; each = each->parentWidget())
        if (auto* place = dynamic_cast<NoticePlace*>(each))
            return place->takeNotice(notice);
}

NoticeLine::NoticeLine(QWidget* parent)
    : QWidget(parent)
    , m_text(new Text(this))
    , m_button(makeButton(QStringLiteral("noticeAction"), {}, this)) {
    setObjectName(QStringLiteral("notice"));
    m_text->setObjectName(QStringLiteral("noticeText"));
    m_text->setTextFormat(Qt::PlainText);
    m_button->setFocusPolicy(Qt::TabFocus);
    m_button->hide();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(4, 0, 4, 0);
    row->addWidget(m_text);
    row->addWidget(m_button);
    row->addStretch(1);
    connect(m_button, &QPushButton::clicked, this, [this] {
        // It may say something new, in the place of the one that runs.
        const std::function<void()> action = m_action;
        action();
    });
}

void NoticeLine::show(const Notice& notice) {
    QString line = notice.text;
    m_text->setText(line.replace(u'\n', u' '));
    m_text->setToolTip(notice.text);
    m_action = notice.action;
    m_button->setText(notice.caption);
    m_button->setAccessibleName(notice.caption);
    m_button->setVisible(m_action && !notice.caption.isEmpty());
}

QString NoticeLine::text() const {
    return m_text->text();
}

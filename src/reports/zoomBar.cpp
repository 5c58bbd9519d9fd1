#include "reports/zoomBar.h"

#include "controls/formParts.h"
#include "reports/paperView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>

#include <cmath>

namespace {

constexpr PaperZoom kTrueSize;
constexpr PaperZoom kWidth{PaperZoom::Fit::Width};
constexpr PaperZoom kPage{PaperZoom::Fit::Page};

} // namespace

ZoomBar::ZoomBar(PaperView& view, QWidget* parent)
    : QWidget(parent)
    , m_view(view)
    , m_percent(makeLabel(QStringLiteral("zoomPercent"), {}, this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 4, 0, 0);
    row->addWidget(new QLabel(QStringLiteral("显示比例"), this));
    const auto add = [&](const char16_t* name, const char16_t* caption, const QKeySequence& key,
                         std::function<void()> action) {
        QPushButton* button = makeButton(QString::fromUtf16(name), QString::fromUtf16(caption), this);
        button->setToolTip(QStringLiteral("%1（%2）").arg(button->text(), key.toString()));
        connect(button, &QPushButton::clicked, this, action);
        connect(new QShortcut(key, parent), &QShortcut::activated, this, action);
        row->addWidget(button);
        return button;
    };
    add(u"zoomOut", u"缩小", Qt::CTRL | Qt::Key_Minus, [this] { m_view.zoomBy(false); });
    row->addWidget(m_percent);
    add(u"zoomIn", u"放大", Qt::CTRL | Qt::Key_Equal, [this] { m_view.zoomBy(true); });
    add(u"zoomTrue", u"100%", Qt::CTRL | Qt::Key_0, [this] { m_view.setZoom(kTrueSize); });
    m_width = add(u"zoomWidth", u"适合宽度", Qt::CTRL | Qt::Key_1, [this] { m_view.setZoom(kWidth); });
    m_page = add(u"zoomPage", u"适合整页", Qt::CTRL | Qt::Key_2, [this] { m_view.setZoom(kPage); });
    row->addStretch(1);
    m_percent->setAccessibleName(QStringLiteral("显示比例"));
    m_percent->setAlignment(Qt::AlignCenter);
    m_percent->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("400%")) + 8);
    for (QPushButton* button : {m_width, m_page})
        button->setCheckable(true);
    connect(&view, &PaperView::zoomed, this, &ZoomBar::showZoom);
    showZoom();
}

void ZoomBar::showZoom() {
    m_percent->setText(QStringLiteral("%1%").arg(std::lround(m_view.sheet().percent())));
    m_width->setChecked(m_view.zoom().fit == PaperZoom::Fit::Width);
    m_page->setChecked(m_view.zoom().fit == PaperZoom::Fit::Page);
}

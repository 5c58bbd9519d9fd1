// The program's own message boxes, answered by keys.
#include "app/borderStyle.h"
#include "controls/prompts.h"

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QMessageBox>
#include <QProxyStyle>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest/QTest>

#include <gtest/gtest.h>

// The pictures are in the main window's library.
static void linkIcons() {
    Q_INIT_RESOURCE(icons);
}

namespace {

/// Runs on the message box that comes up next.
void onBox(const std::function<void(QMessageBox&)>& action) {
    QTimer::singleShot(0, qApp, [action] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return onBox(action);
        action(*box);
        EXPECT_FALSE(box->isVisible()) << "the box is still open";
        box->close();
    });
}

TEST(PromptBox, AQuestionThatDestroysSaysWhatGoesAndItsDefaultIsCancel) {
    WindowPrompts prompts;
    onBox([](QMessageBox& box) {
        EXPECT_EQ(box.text(), u"确实要删除该订单吗？");
        EXPECT_EQ(box.windowTitle(), u"删除提示");
        EXPECT_EQ(box.informativeText(), u"订单 5002：3 行，276 元");
        EXPECT_EQ(box.defaultButton()->text(), u"取消");
        QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_FALSE(prompts.confirmLoss("确实要删除该订单吗？", "订单 5002：3 行，276 元", "删除提示"));
    onBox([](QMessageBox& box) { QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton); });
    EXPECT_TRUE(prompts.confirmLoss("确实要删除该订单吗？", "订单 5002：3 行，276 元", "删除提示"));
    onBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_FALSE(prompts.confirmLoss("确实要删除该订单吗？", "订单 5002：3 行，276 元", "删除提示"));
}

TEST(PromptBox, WearsThePicturesOfTheProgramAndTheFrameOfADialog) {
    linkIcons();
    WindowPrompts prompts;
    const auto look = [](QMessageBox& box) {
        EXPECT_FALSE(box.iconPixmap().isNull());
        EXPECT_FALSE(box.windowFlags() & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
        EXPECT_TRUE(box.windowFlags() & Qt::WindowCloseButtonHint);
        EXPECT_EQ(box.windowType(), Qt::Dialog);
        QTest::keyClick(&box, Qt::Key_Escape);
    };
    QImage told, asked, warned;
    onBox([&](QMessageBox& box) { told = box.iconPixmap().toImage(), look(box); });
    prompts.tell("查询结果为零！", "信息提示");
    onBox([&](QMessageBox& box) { asked = box.iconPixmap().toImage(), look(box); });
    prompts.ask("结帐吗？", "信息提示");
    onBox([&](QMessageBox& box) { warned = box.iconPixmap().toImage(), look(box); });
    prompts.confirmLoss("确实要删除吗？", "订单 5002", "删除提示");
    EXPECT_NE(told, asked);
    EXPECT_NE(asked, warned);
}

/// A desktop that puts pictures on the buttons of dialogs.
class DesktopStyle : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 1
                   : QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

TEST(PromptBox, NoPicturesOfADesktopStandOnItsButtons) {
    BorderStyle style;
    style.setBaseStyle(new DesktopStyle);
    EXPECT_EQ(style.styleHint(QStyle::SH_DialogButtonBox_ButtonsHaveIcons), 0);
}

TEST(PromptBox, AMessageAboutABoxLeavesTheFocusInItWithItsTextSelected) {
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* first = new QLineEdit("甲", &window);
    auto* second = new QLineEdit("abc", &window);
    column->addWidget(first);
    column->addWidget(second);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    WindowPrompts prompts;
    for (QLineEdit* before : {first, second}) {
        before->setFocus();
        second->deselect();
        onBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
        prompts.tellAbout(second, "日期格式错误！");
        EXPECT_EQ(window.focusWidget(), second);
        EXPECT_EQ(second->selectedText(), u"abc");
    }
}

TEST(PromptBox, AQuestionCanBeLeftByEscapeAndByTheCloseBoxWithoutAnAnswer) {
    WindowPrompts prompts;
    onBox([](QMessageBox& box) {
        EXPECT_FALSE(box.button(QMessageBox::Cancel)->isVisible());
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    EXPECT_EQ(prompts.askOrLeave("结帐吗？", "信息提示"), std::nullopt);
    onBox([](QMessageBox& box) { box.close(); });
    EXPECT_EQ(prompts.askOrLeave("结帐吗？", "信息提示"), std::nullopt);
    onBox([](QMessageBox& box) { QTest::mouseClick(box.button(QMessageBox::No), Qt::LeftButton); });
    EXPECT_EQ(prompts.askOrLeave("结帐吗？", "信息提示"), false);
    onBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_EQ(prompts.askOrLeave("结帐吗？", "信息提示"), true);
}

TEST(PromptBox, EscapeMeansNoOrCancelAtTheOtherQuestions) {
    WindowPrompts prompts;
    onBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_FALSE(prompts.ask("记录已保存，继续添加新客户吗？", "信息提示"));
    onBox([](QMessageBox& box) { box.close(); });
    EXPECT_FALSE(prompts.confirm("确认结算吗？", "信息提示"));
    onBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_TRUE(prompts.confirm("确认结算吗？", "信息提示"));
}

} // namespace

// The measures of the keyboard and of the screen reader find what they are there to find, on windows made so.
#include "support/reachable.h"
#include "support/evaluationShop.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

namespace {

/// Two rows of two boxes, "a b" over "c d", named and in the order of the layout.
class Boxes : public testing::Test {
protected:
    Boxes() {
        auto* grid = new QGridLayout(&window);
        for (int i = 0; i < 4; ++i) {
            boxes[i] = new QLineEdit(&window);
            boxes[i]->setObjectName(QString(QChar(u'a' + i)));
            boxes[i]->setAccessibleName(boxes[i]->objectName());
            grid->addWidget(boxes[i], i / 2, i % 2);
        }
        window.show();
    }
    QWidget window;
    QLineEdit* boxes[4];
};

TEST_F(Boxes, InTheOrderOfTheLayoutAreWithoutFault) {
    EXPECT_EQ(tabFaults(window), QStringList());
    boxes[2]->setFocus();
    EXPECT_EQ(tabFaults(window), QStringList()) << "wherever the round begins";
    EXPECT_EQ(readerFaults(window), QStringList());
}

TEST_F(Boxes, InAnotherOrderTurnBack) {
    QWidget::setTabOrder(boxes[0], boxes[3]);
    QWidget::setTabOrder(boxes[3], boxes[1]);
    QWidget::setTabOrder(boxes[1], boxes[2]);
    EXPECT_EQ(tabFaults(window).size(), 1) << tabFaults(window).join(u' ').toStdString();
    EXPECT_TRUE(tabFaults(window).value(0).startsWith("the tab key turns back more than once: d -> b"));
}

TEST_F(Boxes, OneThatTheTabKeyLeavesOutIsFound) {
    boxes[1]->setFocusPolicy(Qt::ClickFocus);
    EXPECT_EQ(tabFaults(window), QStringList{"the tab key does not come to b"});
    boxes[1]->setEnabled(false);
    EXPECT_EQ(tabFaults(window), QStringList());
}

/// Keeps the tab key, as an editor of texts does.
class Greedy : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

protected:
    bool event(QEvent* event) override {
        const bool isTab =
            event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab;
        return isTab || QLineEdit::event(event);
    }
};

TEST_F(Boxes, OneThatKeepsTheTabKeyIsFound) {
    auto* greedy = new Greedy(&window);
    greedy->setObjectName("greedy");
    window.layout()->addWidget(greedy);
    greedy->show();
    EXPECT_EQ(tabFaults(window), QStringList{"the tab key stays at greedy"});
}

TEST_F(Boxes, AGroupOfOptionsIsComeToByOneOfThem) {
    for (const char* name : {"one", "two"}) {
        auto* option = new QRadioButton(QString::fromUtf8(name), &window);
        window.layout()->addWidget(option);
        option->setChecked(true);
        option->show();
    }
    EXPECT_EQ(tabFaults(window), QStringList());
}

TEST_F(Boxes, ABoxOrAButtonWithoutANameIsFound) {
    boxes[3]->setAccessibleName({});
    EXPECT_EQ(readerFaults(window), QStringList{"//d has no name"});
    auto* label = new QLabel("名称", &window);
    label->setBuddy(boxes[3]);
    EXPECT_EQ(readerFaults(window), QStringList()) << "a label is a name";
    auto* button = new QPushButton(&window);
    button->setObjectName("button");
    button->show();
    EXPECT_EQ(readerFaults(window), QStringList{"//button has no name"});
    button->hide();
    EXPECT_EQ(readerFaults(window), QStringList());
}

class Reachable : public EvaluationShop {
protected:
    static std::string faultsOf(QWidget& window) {
        return (tabFaults(window) + readerFaults(window)).join(u'\n').toStdString();
    }
};

TEST_F(Reachable, EveryViewIsByTheKeyboardAloneAndForAScreenReader) {
    fill();
    start();
    for (const QString& view : main->host().viewNames()) {
        main->host().show(view);
        EXPECT_EQ(faultsOf(*main), "") << view.toStdString();
    }
}

TEST_F(Reachable, EveryWindowThatOpensByItselfIsToo) {
    fill();
    start();
    for (const char* name : {"birthdayFm1", "lapsedFm1", "goodsSalesFm1", "searchFm1", "orderFm1",
                             "timeDefineFm22", "print_rs1", "showprint_rs2", "manualFm1"}) {
        main->host().openWindow(QString::fromUtf8(name), ViewHost::MainWindow::Stays);
        ASSERT_NE(window(name), nullptr) << name;
        EXPECT_EQ(faultsOf(*window(name)), "") << name;
        window(name)->close();
    }
}

} // namespace

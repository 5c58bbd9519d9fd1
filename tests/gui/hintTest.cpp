#include "controls/hint.h"
#include "support/shopWindow.h"

namespace {

class Hints : public ShopWindow {
protected:
    Hints() {
        books.addProduct("p1", "纸", 50, 2, 5);
        books.addLine("21", "1", "p1", "2004-01-05", 4, 20, 2);
    }
    QString shownHint() {
        auto* label = main->findChild<Hint*>("hint");
        return label && label->isVisible() ? label->text() : QString();
    }
};

TEST_F(Hints, AViewThatRefusedAndIsGoneIsAskedNothingByTheNextRefusal) {
    start();
    drive->choose("maintain_Data3");
    drive->editCell("DataGrid1", 0, "数量", "abc");
    EXPECT_EQ(shownHint(), u"“数量”要填数字；已保留原值");
    const QPointer<QWidget> refusing = main->host().active();
    drive->choose("maintain_Data2");
    EXPECT_EQ(shownHint(), u"") << "it goes with its view";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_TRUE(refusing.isNull());
    drive->editCell("DataGrid1", 0, "单价", "abc");
    EXPECT_EQ(shownHint(), u"“单价”要填数字；已保留原值");
}

TEST_F(Hints, AWidgetThatIsDestroyedUnhiddenTakesItsHintAlong) {
    QWidget window;
    auto* box = new QWidget(&window);
    window.show();
    showHint(box, "数字太大");
    auto* hint = window.findChild<Hint*>("hint");
    EXPECT_TRUE(hint->isVisible());
    delete box;
    EXPECT_FALSE(hint->isVisible());
}

// A widget in memory that stays with the test and holds nothing useful once the widget is gone.
TEST_F(Hints, TheMemoryOfAWidgetThatIsGoneIsNotReadAgain) {
    QWidget window;
    alignas(QWidget) std::byte place[sizeof(QWidget)];
    auto* box = new (place) QWidget;
    box->setParent(&window);
    showHint(box, "一");
    box->~QWidget();
    std::fill(std::begin(place), std::end(place), std::byte{0xFF});
    showHint(&window, "二");
    EXPECT_EQ(window.findChild<Hint*>("hint")->text(), u"二");
}

} // namespace

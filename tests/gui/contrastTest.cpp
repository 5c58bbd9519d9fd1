// What has to be read or found stands out from what is around it: ratios of relative luminance.
#include "controls/recordsetModel.h"
#include "support/shopWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableView>
#include <QTextBrowser>

#include <cmath>

namespace {

double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

TEST(Contrast, OfALightGreyOnWhiteIsReckonedRight) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 1e-9);
    EXPECT_NEAR(contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
    EXPECT_EQ(contrast(Qt::white, Qt::black), contrast(Qt::black, Qt::white));
}

TEST(Contrast, PlaceholdersCanBeRead) {
    const QPalette colours = QApplication::palette();
    for (const auto ground : {QPalette::Base, QPalette::AlternateBase, QPalette::Window})
        EXPECT_GE(contrast(colours.color(QPalette::PlaceholderText), colours.color(ground)), 4.5) << ground;
}

TEST(Contrast, DisabledTextsCanBeFound) {
    const QPalette colours = QApplication::palette();
    const std::pair<QPalette::ColorRole, QPalette::ColorRole> pairs[] = {
        {QPalette::WindowText, QPalette::Window},
        {QPalette::Text, QPalette::Base},
        {QPalette::ButtonText, QPalette::Button},
        {QPalette::ButtonText, QPalette::Window}};
    for (const auto& [text, ground] : pairs) {
        const double found =
            contrast(colours.color(QPalette::Disabled, text), colours.color(QPalette::Disabled, ground));
        EXPECT_GE(found, 3) << text << " on " << ground;
        EXPECT_LT(found,
                  contrast(colours.color(QPalette::Active, text), colours.color(QPalette::Active, ground)))
            << "and look disabled";
    }
}

/// The best that the outermost pixels at the left of a widget do against the window.
double border(QWidget& window, QWidget& widget) {
    const QImage image = window.grab().toImage();
    const int y = widget.y() + widget.height() / 2;
    double best = 0;
    for (int x = widget.x(); x < widget.x() + 3; ++x)
        best = std::max(best, contrast(image.pixelColor(x, y), window.palette().color(QPalette::Window)));
    return best;
}

TEST(Contrast, TheBordersOfBoxesAndButtonsCanBeFound) {
    QWidget window;
    std::vector<QWidget*> widgets{
        new QLineEdit(&window),  new QPushButton("保存", &window), new QComboBox(&window),
        new QSpinBox(&window),   new QCheckBox(&window),           new QRadioButton(&window),
        new QTableView(&window), new QListWidget(&window),         new QTextBrowser(&window)};
    auto* group = new QGroupBox("客户资料", &window);
    widgets.push_back(group);
    int y = 10;
    for (QWidget* each : widgets) {
        each->setFocusPolicy(Qt::NoFocus); // a focused border has a colour of its own
        const int height = qobject_cast<QAbstractScrollArea*>(each) || each == group ? 80 : 30;
        each->setGeometry(20, y, each->sizeHint().width() < 60 ? 20 : 160, height);
        y += height + 10;
    }
    window.resize(220, y);
    for (QWidget* each : widgets) {
        EXPECT_GE(border(window, *each), 3) << each->metaObject()->className();
        each->setEnabled(false);
    }
}

class ContrastInTheShop : public ShopWindow {};

TEST_F(ContrastInTheShop, UnsavedCellsAndMarksCanBeRead) {
    books.addProduct("p1", "打印纸", 10, 2, 5);
    start();
    drive->choose("maintain_Data3");
    drive->editCell("DataGrid1", 0, "品名", "一");
    auto* grid = drive->find<QTableView>("DataGrid1");
    const QPalette colours = grid->palette();
    const int name = session().productTable->fieldIndex("品名");
    const auto ground = grid->model()->index(0, name).data(Qt::BackgroundRole).value<QColor>();
    EXPECT_GE(contrast(colours.color(QPalette::Text), ground), 4.5);
    EXPECT_NE(ground, colours.color(QPalette::Base));
    session().productTable->setFilter("产品编号 = 'p1'");
    QCoreApplication::processEvents();
    for (const char* label : {"unsavedCount", "filterText"}) {
        auto* text = drive->find<QWidget>(QString::fromUtf8(label));
        ASSERT_TRUE(text->isVisible()) << label;
        text->ensurePolished();
        const QColor behind = text->grab().toImage().pixelColor(0, 0);
        EXPECT_GE(contrast(text->palette().color(QPalette::WindowText), behind), 4.5) << label;
    }
}

} // namespace

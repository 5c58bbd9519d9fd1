#include "app/appearance.h"

#include <QApplication>
#include <QLocale>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "1");
    QApplication app(argc, argv);
    app.setQuitOnLastWindowClosed(false);
    QLocale::setDefault(QLocale::c());
    setAppearance(app);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

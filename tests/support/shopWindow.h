#pragma once

#include "app/registry.h"
#include "shell/MDIForm1.h"
#include "support/driver.h"
#include "support/scriptedPrompts.h"
#include "support/startAtOnce.h"
#include "support/testBooks.h"

#include <QCoreApplication>

/// The whole program on the books of an empty shop, its prompts scripted.
class ShopWindow : public testing::Test {
protected:
    void start() {
        books.session().activeViewName.clear();
        main = std::make_unique<MDIForm1>(books.session(), prompts);
        main->endProcess = [this] { ended = true; };
        registerAll(*main, prompts);
        main->show();
        startAtOnce(*main);
        QCoreApplication::processEvents();
        drive = std::make_unique<Driver>(*main);
    }

    TopWindow* window(const char* name) { return main->host().window(QString::fromUtf8(name)); }
    QString status() { return drive->text("noticeText"); }
    Session& session() { return books.session(); }
    bool enabled(const char* name) { return drive->find<QWidget>(QString::fromUtf8(name))->isEnabled(); }
    bool shown(const char* name) { return drive->find<QWidget>(QString::fromUtf8(name))->isVisible(); }
    QString focused() { return main->focusWidget() ? main->focusWidget()->objectName() : QString(); }

    TestBooks books;
    ScriptedPrompts prompts;
    std::unique_ptr<MDIForm1> main;
    std::unique_ptr<Driver> drive;
    bool ended = false;
};

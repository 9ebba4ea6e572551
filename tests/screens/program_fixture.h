// tests/screens/program_fixture.h — the whole program on a temporary centre, worked by keys. Questions are
// scripted: one that is not expected, and an answer nobody asked for, fail the test.
#pragma once

#include "app/registry.h"
#include "core/clock.h"
#include "core/screens/main_window.h"
#include "core/startup.h"
#include "core/users.h"
#include "support/keyboard.h"
#include "support/quiet_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"
#include "widgets/screen.h"
#include "widgets/user_memory.h"

#include <memory>
#include <QAction>
#include <QMenuBar>

namespace orvan_test {

inline constexpr auto kUser = "müdür";
inline constexpr auto kPassword = "1453";

class ProgramTest : public testing::Test {
  protected:
    void SetUp() override {
        centre.databases.connect();
        centre.addProfession("0101", "İnşaat Teknolojisi");
        centre.addProfession("0205", "Kuaförlük");
        centre.addStudent("010100001", 1, "0101", "Işıl", "Çağlar");
        centre.addStudent("020500001", 2, "0205", "Ali", "Öz");
        auto& constants = centre.databases.constants().database();
        orvan::createUser(constants, kUser, kPassword);
        orvan::grantAll(constants, kUser, {true, true});
        centre.databases.close();
        memory = std::make_unique<orvan::UserMemory>(centre.path("\\ekranlar.ini"));
        orvan::registerScreens(screens, centre.databases, dialogs, *memory, clock);
        openProgram();
    }
    // A fresh start: nobody is signed in.
    void openProgram() {
        memory->setUser({});
        window = std::make_unique<orvan::MDIFormORVAN>(
            orvan::Program{centre.folder, centre.session, centre.databases, dialogs, *memory, screens, host});
        window->resize(1024, 768);
        showActive(*window);
    }

    // Signs in as a user does.
    void signIn() {
        OnBox box(
            [](QWidget&) {
                type(kUser);
                press(Qt::Key_Tab);
                type(kPassword);
                press(Qt::Key_Return);
            },
            20000);
        ASSERT_TRUE(window->beginSession());
        window->activateWindow(); // the offscreen screen forgets the window under a box that has closed
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    // Triggers a menu entry; it must be there and enabled.
    void choose(const char* key) {
        auto* action = window->findChild<QAction*>(QString::fromUtf8(key));
        ASSERT_NE(action, nullptr) << key;
        ASSERT_TRUE(action->isEnabled()) << key;
        action->trigger();
        QCoreApplication::processEvents();
    }
    orvan::Screen* screen(const char* name) const {
        return window->findChild<orvan::Screen*>(QString::fromUtf8(name));
    }
    QString focused() const {
        const QWidget* focus = QApplication::focusWidget();
        return focus ? focus->objectName() : QString();
    }

    TestCentre centre;
    ScriptedDialogs dialogs;
    orvan::FixedClock clock{QDate(2008, 9, 15)};
    std::unique_ptr<orvan::UserMemory> memory;
    QuietHost host;
    orvan::ScreenRegistry screens;
    std::unique_ptr<orvan::MDIFormORVAN> window;
};

} // namespace orvan_test

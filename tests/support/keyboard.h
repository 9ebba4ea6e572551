// tests/support/keyboard.h — real key presses to whatever has the focus, and widgets by object name.
#pragma once

#include "support/qt_print.h"

#include <functional>
#include <gtest/gtest.h>
#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWidget>

namespace orvan_test {

// Shows a window and waits until it has the keyboard.
inline void showActive(QWidget& window) {
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

// Where a key goes: an open list or menu, else the field with the focus, else the window.
inline QWidget* keyTarget() {
    if (QWidget* popup = QApplication::activePopupWidget()) return popup;
    if (!QApplication::activeWindow()) { // the offscreen screen forgets the window under a box that has
                                         // closed
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible()) window->activateWindow();
        QCoreApplication::processEvents();
    }
    if (QWidget* focus = QApplication::focusWidget()) return focus;
    return QApplication::activeWindow();
}

inline void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* target = keyTarget();
    if (!target) {
        ADD_FAILURE() << "no window takes the key";
        return;
    }
    QTest::keyClick(target, key, modifiers);
    QCoreApplication::processEvents();
}

// Types a text, Turkish letters included, one key at a time.
inline void type(const QString& text) {
    for (const QChar letter : text) {
        QWidget* target = keyTarget();
        if (!target) {
            ADD_FAILURE() << "no window takes the keys";
            return;
        }
        const auto key = static_cast<Qt::Key>(letter.toUpper().unicode());
        QTest::sendKeyEvent(QTest::Click, target, key, QString(letter), Qt::NoModifier, -1);
        QCoreApplication::processEvents();
    }
}

// The widget of that name below `parent`; the test stops when there is none.
template <class Widget> Widget* find(const QWidget& parent, const char* name) {
    auto* found = parent.findChild<Widget*>(QString::fromLatin1(name));
    if (!found) throw std::runtime_error(std::string("no widget named ") + name);
    return found;
}

// Runs `steps` on the next modal box that opens, within `patience` milliseconds. The box must be gone when
// they end.
class OnBox {
  public:
    explicit OnBox(std::function<void(QWidget&)> steps, int patience = 5000)
        : steps_(std::move(steps)), left_(patience / kBeat) {
        timer_.setInterval(kBeat);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
        timer_.start();
    }
    ~OnBox() { EXPECT_TRUE(done_) << "the expected box did not open"; }
    bool done() const { return done_; }

  private:
    static constexpr int kBeat = 10; // milliseconds

    void look() {
        QWidget* box = QApplication::activeModalWidget();
        if (!box || !box->isVisible() || !box->isActiveWindow()) {
            if (--left_ <= 0) timer_.stop();
            return;
        }
        timer_.stop();
        done_ = true;
        const QPointer<QWidget> shown(box);
        steps_(*box);
        // a button pressed by its Alt letter is seen going down before it acts
        if (!QTest::qWaitFor([&] { return !shown || !shown->isVisible(); }, 1000)) {
            ADD_FAILURE() << "the box is still open: " << shown->windowTitle().toStdString();
            shown->close();
        }
    }

    std::function<void(QWidget&)> steps_;
    QTimer timer_;
    int left_;
    bool done_ = false;
};

} // namespace orvan_test

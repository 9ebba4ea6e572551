// Every screen of the program, whatever it is for: it opens with the focus in a field, is worked by keys
// alone, has names for screen readers, Turkish buttons, its own Alt letters, and is whole on small screens
// and with large letters.
#include "screens/program_fixture.h"
#include "support/window_checks.h"

#include <QAbstractButton>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace orvan_test {
namespace {

class EveryScreenTest : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        signIn();
    }
    void TearDown() override {
        window.reset();
        QApplication::setFont(usual);
    }
    // Opens each screen in turn, runs `check` on it and closes it without a question.
    void forEachScreen(const std::function<void(orvan::Screen&)>& check) {
        for (const orvan::ScreenEntry& entry : screens.entries()) {
            SCOPED_TRACE(entry.key.toStdString());
            window->openScreen(entry);
            QCoreApplication::processEvents();
            ASSERT_FALSE(window->openScreens().isEmpty());
            QPointer<orvan::Screen> opened = window->openScreens().last();
            check(*opened);
            if (!opened) continue;
            opened->parentWidget()->close();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            EXPECT_TRUE(window->openScreens().isEmpty());
        }
    }
    static void expectNone(const QStringList& complaints, const char* where = "") {
        EXPECT_TRUE(complaints.isEmpty()) << where << complaints.join("\n  ").toStdString();
    }
    QRect room() const { return find<QMdiArea>(*window, "calismaAlani")->viewport()->rect(); }
    static QMdiSubWindow* frameOf(const orvan::Screen& screen) {
        return qobject_cast<QMdiSubWindow*>(screen.parentWidget());
    }
    QFont usual = QApplication::font();
};

TEST_F(EveryScreenTest, OpensWithTheFocusInAFieldAndTabGoesThroughAll) {
    forEachScreen([](orvan::Screen& screen) {
        const QWidget* focus = QApplication::focusWidget();
        ASSERT_TRUE(focus && screen.isAncestorOf(focus));
        EXPECT_TRUE(focus->focusPolicy() & Qt::TabFocus) << focus->metaObject()->className();
        EXPECT_EQ(qobject_cast<const QAbstractButton*>(focus), nullptr) << "a button has the focus at first";
        expectNone(tabComplaints(screen));
    });
}

TEST_F(EveryScreenTest, HasNamesOwnAltLettersAndTurkishButtons) {
    QStringList bar;
    for (const QAction* menu : window->menuBar()->actions())
        bar << menu->text();
    const QStringList taken = lettersOf(bar);
    forEachScreen([&](orvan::Screen& screen) {
        onEachPage(screen, [&](const QString& page) {
            SCOPED_TRACE(page.toStdString());
            expectNone(nameComplaints(screen));
            expectNone(letterComplaints(screen, taken));
            expectNone(languageComplaints(screen));
        });
    });
}

TEST_F(EveryScreenTest, EnterInTheFirstFieldSavesNothingAndEscapeCloses) {
    forEachScreen([&](orvan::Screen& screen) {
        const QPointer<orvan::Screen> opened(&screen);
        press(Qt::Key_Return);
        ASSERT_TRUE(opened && opened->isVisible());
        EXPECT_FALSE(opened->hasUnsaved());
        press(Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(opened.isNull()) << "Esc did not close it";
    });
}

TEST_F(EveryScreenTest, IsWholeOnEachScreenSize) {
    const struct {
        const char* name;
        QSize size;
        int letters; // points
        bool whole;  // the frame fills the room, as it has to on a small screen
    } cases[] = {
        {"1024x768", {1024, 768}, 9, false},
        {"800x600", {800, 600}, 9, true},
        {"1024x768, 14 pt letters", {1024, 768}, 14, true},
    };
    for (const auto& c : cases) {
        QFont font = usual;
        font.setPointSize(c.letters);
        QApplication::setFont(font);
        window->resize(c.size);
        QCoreApplication::processEvents();
        ASSERT_LE(window->minimumSizeHint().width(), c.size.width()) << c.name;
        forEachScreen([&](orvan::Screen& screen) {
            if (c.whole) frameOf(screen)->showMaximized();
            QCoreApplication::processEvents();
            const QSize least = frameOf(screen)->minimumSizeHint();
            EXPECT_TRUE(room().contains(frameOf(screen)->geometry()) || c.whole) << c.name;
            EXPECT_LE(least.width(), room().width() + 16) << c.name; // a maximized frame hides its edges
            EXPECT_LE(least.height(), room().height() + 40) << c.name;
            onEachPage(screen, [&](const QString& page) {
                SCOPED_TRACE(page.toStdString());
                expectNone(cutComplaints(screen), c.name);
            });
        });
    }
}

} // namespace
} // namespace orvan_test

// The frame: rights before screens, levels and data sets, changing the user, leaving with unsaved work.
#include "core/screens/menu_plan.h"
#include "screens/program_fixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTextEdit>
#include <set>

namespace orvan_test {
namespace {

constexpr auto kUnsavedQuestion = "Yapmış olabileceğiniz değişiklikleri kaydetmeden çıkmak üzeresiniz.\n"
                                  "Bilgileriniz kayıt edilsin mi?";

class MainWindowTest : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        signIn();
    }
    // A quick form with a name typed in.
    void openUnsaved() {
        choose("HizliOgrenciKayit");
        type("kuaf");
        press(Qt::Key_Return);
        press(Qt::Key_Return);
        type("Can");
        ASSERT_TRUE(screen("hizli_ogrenci_kayit")->hasUnsaved());
    }
};

TEST_F(MainWindowTest, WithoutTheEntryRightTheScreenStaysClosed) {
    orvan::grantAll(centre.databases.constants().database(), kUser, {false, true});
    dialogs.expectMessage(
        "Bu programa giriş yetkiniz yok!\n'Sabit Bilgiler' menüsü 'Yeni Kullanıcı / Kullanıcı Hakları' "
        "bölümünden programa giriş yetkisi veriniz veya sistem yetkilisi ile görüşünüz.",
        "Programa Giriş Yetkisi");
    choose("HizliOgrenciKayit");
    EXPECT_EQ(screen("hizli_ogrenci_kayit"), nullptr);
}

TEST_F(MainWindowTest, ASecondCallShowsTheSameWindow) {
    choose("OgrenciListesiSinifBaz");
    choose("HizliOgrenciKayit");
    choose("OgrenciListesiSinifBaz");
    EXPECT_EQ(window->openScreens().size(), 2);
    EXPECT_TRUE(screen("ogrenci_listesi")->isAncestorOf(QApplication::focusWidget()));
}

TEST_F(MainWindowTest, ShortcutsOpenScreensAndEscapeClosesThem) {
    press(Qt::Key_F6);
    ASSERT_NE(screen("hizli_ogrenci_kayit"), nullptr);
    EXPECT_EQ(focused(), QString("meslek"));
    press(Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(screen("hizli_ogrenci_kayit"), nullptr);
}

TEST_F(MainWindowTest, ALevelSwitchOpensItsFileAndClosesTheScreens) {
    choose("OgrenciListesiSinifBaz");
    choose("ToolUsta");
    EXPECT_TRUE(centre.databases.levelFile().endsWith("/USTA.MDB"));
    EXPECT_EQ(find<QLabel>(*window, "durumDuzey")->text(), QString("Düzey: Usta"));
    EXPECT_TRUE(window->findChild<QAction*>("ToolUsta")->isChecked());
    EXPECT_FALSE(window->findChild<QAction*>("ToolKalfa")->isChecked());
    EXPECT_TRUE(window->openScreens().isEmpty());
}

TEST_F(MainWindowTest, AnArchiveIsChosenByYearAndNamedInCaptionAndStatusBar) {
    centre.folder.copy("\\Mdx\\Ogrenci.MDX", "\\Data\\MKAL2007.MDB");
    dialogs.expectChoice("Hangi öğretim yılı açılsın?", "2007-2008  (Kalfa)");
    choose("MezunlarArsiv");
    EXPECT_TRUE(centre.databases.levelFile().endsWith("/MKAL2007.MDB"));
    EXPECT_TRUE(window->windowTitle().endsWith("[Mezunlar Arşivi]")) << window->windowTitle().toStdString();
    EXPECT_EQ(find<QLabel>(*window, "durumVeri")->text(), QString("Veri: Mezunlar Arşivi 2007-2008"));
    EXPECT_TRUE(window->findChild<QAction*>("MezunlarArsiv")->isChecked());
    dialogs.expectMessage("Ayrılma Arşivi için kaydedilmiş bir öğretim yılı bulunamadı.\n"
                          "Çalışılan bilgilerde kalınıyor.");
    choose("AyrilmaArsiv");
    EXPECT_FALSE(window->findChild<QAction*>("AyrilmaArsiv")->isChecked());
    EXPECT_TRUE(window->findChild<QAction*>("MezunlarArsiv")->isChecked());
    choose("NormalArsiv");
    EXPECT_FALSE(window->windowTitle().contains('[')) << window->windowTitle().toStdString();
    EXPECT_EQ(find<QLabel>(*window, "durumVeri")->text(), QString("Veri: Normal Arşiv"));
}

TEST_F(MainWindowTest, ARefusedSaveKeepsLevelAndWork) {
    openUnsaved();
    dialogs.expectYesNo(kUnsavedQuestion, orvan::Answer::Yes)
        .expectMessage("Öğrenci Numarası, Adı ve Soyadı boş girilemez. Lütfen ilgili yerleri doldurunuz.");
    choose("ToolUsta");
    EXPECT_TRUE(centre.databases.levelFile().endsWith("/KALFA.MDB"));
    EXPECT_TRUE(window->findChild<QAction*>("ToolKalfa")->isChecked());
    EXPECT_EQ(find<QLineEdit>(*screen("hizli_ogrenci_kayit"), "adi")->text(), QString("Can"));
    dialogs.expectYesNo(kUnsavedQuestion, orvan::Answer::No);
    choose("ToolUsta");
    EXPECT_TRUE(centre.databases.levelFile().endsWith("/USTA.MDB"));
}

TEST_F(MainWindowTest, LeavingTheProgramAsksForUnsavedWork) {
    openUnsaved();
    dialogs.expectYesNo(kUnsavedQuestion, orvan::Answer::Yes)
        .expectMessage("Öğrenci Numarası, Adı ve Soyadı boş girilemez. Lütfen ilgili yerleri doldurunuz.");
    choose("Cikis");
    EXPECT_TRUE(window->isVisible());
    dialogs.expectYesNo(kUnsavedQuestion, orvan::Answer::No);
    choose("Cikis");
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(centre.databases.isOpen());
}

TEST_F(MainWindowTest, ChangingTheUserAsksAndSignsInAgain) {
    const QString question = "Geçerli kullanıcı oturumu sonlandırılacak!\n           Onaylıyor musunuz?";
    choose("OgrenciListesiSinifBaz");
    dialogs.expectYesNo(question, orvan::Answer::No);
    choose("KullaniciDegis");
    EXPECT_EQ(centre.session.user, QString(kUser));
    EXPECT_EQ(window->openScreens().size(), 1);

    dialogs.expectYesNo(question, orvan::Answer::Yes);
    OnBox box(
        [&](QWidget&) {
            EXPECT_EQ(centre.session.user, QString());
            EXPECT_FALSE(window->menuBar()->isEnabled());
            EXPECT_TRUE(window->openScreens().isEmpty());
            type(kPassword);
            press(Qt::Key_Return);
        },
        20000);
    choose("KullaniciDegis");
    ASSERT_TRUE(QTest::qWaitFor([&] { return box.done() && window->menuBar()->isEnabled(); }, 20000));
    EXPECT_EQ(centre.session.user, QString(kUser));
}

TEST_F(MainWindowTest, WindowMenuListsArrangesAndClosesTheWindows) {
    auto* menu = window->findChild<QMenu*>("menuPencere");
    const auto entries = [&] {
        emit menu->aboutToShow();
        QStringList texts;
        for (const QAction* action : menu->actions())
            if (!action->isSeparator()) texts << (action->isEnabled() ? "" : "-") + action->text();
        return texts.join(' ');
    };
    EXPECT_EQ(entries(), "-&Döşe -&Basamakla -&Sonraki pencere -&Tümünü kapat");
    openUnsaved();
    choose("OgrenciListesiSinifBaz");
    EXPECT_EQ(entries(), "&Döşe &Basamakla &Sonraki pencere &Tümünü kapat &1 Hızlı Öğrenci Kayıt* "
                         "&2 Öğrenci Listesi - Sınıf Bazında");
    find<QAction>(*menu, "doseme")->trigger();
    const auto* quick = screen("hizli_ogrenci_kayit")->parentWidget();
    const auto* list = screen("ogrenci_listesi")->parentWidget();
    EXPECT_FALSE(quick->geometry().intersects(list->geometry()));
    find<QAction>(*menu, "basamak")->trigger();
    EXPECT_TRUE(quick->geometry().intersects(list->geometry()));
    menu->actions().at(menu->actions().size() - 2)->trigger();
    EXPECT_TRUE(screen("hizli_ogrenci_kayit")->isAncestorOf(QApplication::focusWidget()));
    dialogs.expectYesNo(kUnsavedQuestion, orvan::Answer::No);
    find<QAction>(*menu, "tumunuKapat")->trigger();
    EXPECT_TRUE(find<QMdiArea>(*window, "calismaAlani")->subWindowList().isEmpty());
}

TEST_F(MainWindowTest, ReleaseNotesAreShown) {
    QFile notes(centre.path("\\Versiyon.htm"));
    ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
    notes.write(
        "<html><head><meta charset=\"utf-8\"><title>Yenilikler</title></head><body>Işıklı öğrenci</body>");
    notes.close();
    OnBox box([](QWidget& shown) {
        EXPECT_EQ(shown.windowTitle(), QString("Yenilikler"));
        EXPECT_TRUE(find<QTextEdit>(shown, "metin")->toPlainText().contains("Işıklı öğrenci"));
        press(Qt::Key_Escape);
    });
    choose("Versiyonda Yapılanlar");
}

TEST_F(MainWindowTest, AltLettersAreUniqueInEachMenuAndBetweenMenuBarAndScreens) {
    const auto letters = [](const QList<QAction*>& actions) {
        QStringList found;
        for (const QAction* action : actions) {
            const auto sequence = QKeySequence::mnemonic(action->text());
            if (!action->isSeparator())
                found << (sequence.isEmpty() ? "none: " + action->text() : sequence.toString());
        }
        return found;
    };
    const auto expectUnique = [](const QStringList& found, const QString& where) {
        EXPECT_EQ(QSet<QString>(found.begin(), found.end()).size(), found.size())
            << where.toStdString() << ": " << found.join(' ').toStdString();
        EXPECT_TRUE(found.filter("none").isEmpty())
            << where.toStdString() << ": " << found.join(' ').toStdString();
    };
    QStringList bar{"Alt+P", "Alt+Y"}; // Pencere, Yardım, and the menus of all commands, shown or not yet
    for (const orvan::MenuPlan& plan : orvan::menuPlans())
        bar << QKeySequence::mnemonic(QString::fromUtf8(plan.text)).toString();
    expectUnique(bar, "menu bar");
    for (const QString& letter : letters(window->menuBar()->actions()))
        EXPECT_TRUE(bar.contains(letter)) << letter.toStdString();
    for (const QMenu* menu : window->menuBar()->findChildren<QMenu*>() + window->findChildren<QMenu*>())
        if (!menu->title().isEmpty()) expectUnique(letters(menu->actions()), menu->title());
    // What is on a page that lies behind another does not answer to its letter.
    const auto expectUniqueOn = [&](const orvan::Screen& opened) {
        QStringList all = bar;
        for (const auto* label : opened.findChildren<QLabel*>())
            if (label->buddy() && label->isVisible()) all << QKeySequence::mnemonic(label->text()).toString();
        for (const auto* button : opened.findChildren<QAbstractButton*>())
            if (button->isVisible()) all << QKeySequence::mnemonic(button->text()).toString();
        all.removeAll(QString());
        expectUnique(all, opened.windowTitle());
    };
    for (const orvan::ScreenEntry& entry : screens.entries()) {
        window->openScreen(entry);
        const orvan::Screen* opened = window->openScreens().last();
        expectUniqueOn(*opened);
        for (auto* pages : opened->findChildren<QTabWidget*>())
            for (int page = 0; page < pages->count(); ++page) {
                pages->setCurrentIndex(page);
                expectUniqueOn(*opened);
            }
    }
}

// A program that has all its screens: every command stands in the menus once, with its own Alt letter.
TEST_F(ProgramTest, TheMenusHoldEveryCommandOnce) {
    orvan::ScreenRegistry all;
    for (const orvan::CommandInfo& command : orvan::commandList())
        if (command.kind == orvan::CommandKind::Screen)
            all.add(QString::fromUtf8(command.key), "pencere", [] { return nullptr; });
    window = std::make_unique<orvan::MDIFormORVAN>(
        orvan::Program{centre.folder, centre.session, centre.databases, dialogs, *memory, all, host});
    QStringList shown, toolbar;
    for (const QMenu* menu : window->findChildren<QMenu*>()) {
        QSet<QString> letters;
        EXPECT_FALSE(menu->isEmpty()) << menu->title().toStdString();
        for (const QAction* action : menu->actions()) {
            if (!action->data().toString().isEmpty()) shown << action->data().toString();
            const QString letter = QKeySequence::mnemonic(action->text()).toString();
            EXPECT_TRUE(action->isSeparator() || !letter.isEmpty()) << action->text().toStdString();
            EXPECT_FALSE(letters.contains(letter) && !letter.isEmpty())
                << menu->title().toStdString() << ": " << action->text().toStdString();
            letters << letter;
        }
    }
    QStringList expected;
    for (const orvan::CommandInfo& command : orvan::commandList())
        expected << QString::fromUtf8(command.key);
    shown.sort();
    expected.sort();
    EXPECT_EQ(shown.join('\n'), expected.join('\n'));
}

// A menu of commands behind which nothing stands yet is left out.
TEST_F(ProgramTest, EmptyMenusAreNotShown) {
    const orvan::ScreenRegistry none;
    window = std::make_unique<orvan::MDIFormORVAN>(
        orvan::Program{centre.folder, centre.session, centre.databases, dialogs, *memory, none, host});
    QStringList menus;
    for (const QAction* menu : window->menuBar()->actions())
        menus << menu->menu()->objectName();
    EXPECT_EQ(menus.join(' '), "menuCalisma menuPencere menuYardim");
    EXPECT_EQ(window->findChild<QMenu*>("menuBakim"), nullptr);
}

TEST_F(MainWindowTest, NoShortcutNeedsAltGrAndNoneIsTwice) {
    std::set<QString> seen;
    for (const QAction* action : window->findChildren<QAction*>())
        for (const QKeySequence& keys : action->shortcuts()) {
            const QString text = keys.toString();
            EXPECT_FALSE(text.contains("Ctrl+Alt") || text.contains("Alt+Ctrl")) << text.toStdString();
            if (action->shortcutContext() == Qt::WindowShortcut) {
                EXPECT_TRUE(seen.insert(text).second) << text.toStdString();
            }
        }
    EXPECT_TRUE(seen.count("F6"));
}

TEST_F(MainWindowTest, PlaceOfAScreenIsRememberedAndBroughtBackInside) {
    choose("HizliOgrenciKayit");
    auto* frame = qobject_cast<QMdiSubWindow*>(screen("hizli_ogrenci_kayit")->parentWidget());
    frame->setGeometry(300, 200, 640, 330);
    frame->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    choose("HizliOgrenciKayit");
    frame = qobject_cast<QMdiSubWindow*>(screen("hizli_ogrenci_kayit")->parentWidget());
    EXPECT_EQ(frame->geometry(), QRect(300, 200, 640, 330));
    frame->move(900, 600);
    frame->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    choose("HizliOgrenciKayit");
    frame = qobject_cast<QMdiSubWindow*>(screen("hizli_ogrenci_kayit")->parentWidget());
    EXPECT_TRUE(find<QMdiArea>(*window, "calismaAlani")->rect().contains(frame->geometry()));
}

} // namespace
} // namespace orvan_test

// Boxes on the screen: Turkish buttons, safe presets, what Esc means.
#include "support/keyboard.h"
#include "widgets/qt_dialogs.h"

#include <functional>
#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>

namespace orvan {
namespace {

using namespace orvan_test;

QStringList buttonTexts(const QWidget& box) {
    QStringList texts;
    for (const auto* button : box.findChildren<QPushButton*>())
        texts << button->text();
    texts.sort();
    return texts;
}

TEST(QtDialogs, QuestionsUseTurkishButtonsAndTheSafeOneIsPreset) {
    QtDialogs dialogs;
    const struct {
        const char* title;
        Answer preset;
        Qt::Key key;
        Answer expected;
    } cases[] = {
        {"Enter takes the safe answer", Answer::No, Qt::Key_Return, Answer::No},
        {"Enter takes the preset", Answer::Yes, Qt::Key_Return, Answer::Yes},
        {"Esc is No whatever is preset", Answer::Yes, Qt::Key_Escape, Answer::No},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.title);
        OnBox box([&](QWidget& shown) {
            EXPECT_EQ(shown.windowTitle(), QString("Uyarı"));
            EXPECT_EQ(static_cast<QMessageBox&>(shown).text(),
                      QString("Silmek İstediğinize <b>Emin</b> misiniz?"));
            EXPECT_EQ(static_cast<QMessageBox&>(shown).textFormat(), Qt::PlainText);
            EXPECT_EQ(buttonTexts(shown), (QStringList{"&Evet", "&Hayır"}));
            press(one.key);
        });
        EXPECT_EQ(dialogs.askYesNo("Silmek İstediğinize <b>Emin</b> misiniz?", "Uyarı", one.preset),
                  one.expected);
    }
}

TEST(QtDialogs, AltLettersAnswer) {
    QtDialogs dialogs;
    OnBox box([](QWidget&) { press(Qt::Key_E, Qt::AltModifier); });
    EXPECT_EQ(dialogs.askYesNo("Devam edilsin mi?", "Dikkat"), Answer::Yes);
}

TEST(QtDialogs, MessageShowsItsIconAndTamam) {
    QtDialogs dialogs;
    OnBox box([](QWidget& shown) {
        EXPECT_EQ(static_cast<QMessageBox&>(shown).icon(), QMessageBox::Critical);
        EXPECT_EQ(buttonTexts(shown), QStringList{"&Tamam"});
        press(Qt::Key_Escape);
    });
    dialogs.message("Çalışan program zaten var...", "Dikkat", Icon::Critical);
}

TEST(QtDialogs, OkCancelIsCancelledByEscapeOnly) {
    QtDialogs dialogs;
    for (const auto& [key, expected] : {std::pair(Qt::Key_Escape, false), std::pair(Qt::Key_Return, true)}) {
        OnBox box([key = key](QWidget& shown) {
            EXPECT_EQ(buttonTexts(shown), (QStringList{"&Tamam", "İ&ptal"}));
            press(key);
        });
        EXPECT_EQ(dialogs.askOkCancel("HATA OLUSAN", "Genel HATA", Icon::Critical), expected);
    }
}

TEST(QtDialogs, TextInputGivesTheTextOrNothing) {
    QtDialogs dialogs;
    {
        OnBox box([](QWidget&) {
            type("Ayşe");
            press(Qt::Key_Return);
        });
        EXPECT_EQ(dialogs.inputText("Yeni Kullanıcı Adı:", "Yeni Kullanıcı", "x"), QString("Ayşe"));
    }
    {
        OnBox box([](QWidget& shown) {
            EXPECT_EQ(find<QLineEdit>(shown, "metin")->echoMode(), QLineEdit::Password);
            press(Qt::Key_Escape);
        });
        EXPECT_EQ(dialogs.inputText("Şifre:", "Şifre", {}, InputKind::Password), std::nullopt);
    }
}

class ProgressTest : public testing::Test {
  protected:
    static QWidget* box() { return QApplication::activeModalWidget(); }
    static int value() { return find<QProgressBar>(*box(), "cubuk")->value(); }
    QtDialogs dialogs;
};

TEST_F(ProgressTest, AKnownLengthShowsAtOnceNeverRunsBackAndFillsOnlyAtTheEnd) {
    auto progress = dialogs.beginProgress("Ortalamalar", 10);
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    progress->step(6);
    ASSERT_NE(box(), nullptr);
    QTest::qWait(60);
    progress->step(4, "Meslek 4");
    EXPECT_EQ(value(), 6);
    EXPECT_EQ(find<QLabel>(*box(), "adim")->text(), QString("Meslek 4"));
    progress->step(10);
    EXPECT_EQ(value(), 10);
    QTest::qWait(60);
    progress->step(0);
    EXPECT_EQ(value(), 10);
    progress.reset();
    EXPECT_EQ(box(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(ProgressTest, EscapeAndTheButtonAskToStopAndTheBoxStaysUntilTheWorkEnds) {
    for (const bool byKey : {true, false}) {
        auto progress = dialogs.beginProgress("Ortalamalar", 10);
        progress->step(1);
        EXPECT_FALSE(progress->cancelled());
        if (byKey)
            press(Qt::Key_Escape);
        else
            find<QPushButton>(*box(), "durdur")->click();
        EXPECT_TRUE(progress->cancelled());
        ASSERT_NE(box(), nullptr);
        EXPECT_EQ(find<QLabel>(*box(), "adim")->text(), QString("Durduruluyor…"));
    }
}

TEST_F(ProgressTest, TheButtonSaysWhetherStoppingUndoesAll) {
    auto progress = dialogs.beginProgress("Kopyalama", 3);
    progress->step(1);
    EXPECT_EQ(find<QPushButton>(*box(), "durdur")->text(), QString("&Durdur"));
    progress->stopUndoesAll();
    EXPECT_EQ(find<QPushButton>(*box(), "durdur")->text(), QString("İ&ptal"));
}

TEST_F(ProgressTest, AnUnknownLengthShowsAfterASecondAndCannotBeStopped) {
    auto progress = dialogs.beginProgress("Lütfen bekleyiniz...", 0);
    progress->step(0, "Dosya açılıyor");
    EXPECT_EQ(box(), nullptr);
    QTest::qWait(1050);
    progress->step(0, "Dosya açılıyor");
    ASSERT_NE(box(), nullptr);
    EXPECT_EQ(box()->findChild<QPushButton*>(), nullptr);
    press(Qt::Key_Escape);
    EXPECT_NE(box(), nullptr);
    EXPECT_FALSE(progress->cancelled());
}

TEST(QtDialogs, AChoiceIsFoundByTypingPartOfIt) {
    QtDialogs dialogs;
    const QStringList years{"2009-2010  (Kalfa)", "2008-2009  (Kalfa, Usta)", "2007-2008  (Işık Ustası)"};
    const struct {
        const char* title;
        std::function<void()> keys;
        std::optional<qsizetype> chosen;
    } cases[] = {
        {"Enter takes the preset", [] { press(Qt::Key_Return); }, 1},
        {"arrows move while the caret stays in the line",
         [] {
             press(Qt::Key_Down);
             press(Qt::Key_Return);
         },
         2},
        {"typed part, Turkish letters",
         [] {
             type("ışık");
             press(Qt::Key_Return);
         },
         2},
        {"the first of several that hold it",
         [] {
             type("2009");
             press(Qt::Key_Up);
             press(Qt::Key_Return);
         },
         0},
        {"nothing matches: Enter does nothing",
         [] {
             type("1850");
             press(Qt::Key_Return);
             press(Qt::Key_Escape);
         },
         std::nullopt},
        {"Esc", [] { press(Qt::Key_Escape); }, std::nullopt},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.title);
        OnBox box([&](QWidget&) { one.keys(); });
        EXPECT_EQ(dialogs.choose("Hangi öğretim yılı açılsın?", "Mezunlar Arşivi", years, 1), one.chosen);
    }
}

TEST(QtDialogs, FileFiltersBecomeQtsForm) {
    EXPECT_EQ(qtFileFilter("Resim Dosyaları (*.bmp;*.jpg)|*.bmp;*.jpg"),
              QString("Resim Dosyaları (*.bmp *.jpg)"));
    EXPECT_EQ(qtFileFilter("A|*.a|Tümü|*.*"), QString("A (*.a);;Tümü (*.*)"));
    EXPECT_EQ(defaultSuffix("Excel dosyaları|*.xlsx"), QString("xlsx"));
    EXPECT_EQ(defaultSuffix("Tümü|*.*"), QString());
    EXPECT_EQ(defaultSuffix(""), QString());
}

} // namespace
} // namespace orvan

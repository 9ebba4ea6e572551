// The screen of users and their rights, worked by keys: marks, bulk buttons,
// saving, and who may only look.
#include "core/ini_file.h"
#include "core/user_administration.h"
#include "screens/program_fixture.h"
#include "widgets/tick_list.h"

#include <QListWidget>
#include <QPushButton>
#include <QTreeView>

namespace orvan_test {
namespace {

constexpr auto kSave = "Yaptığınız değişiklikler kayıt edilsin mi ?";
constexpr auto kLeave = "Yapmış olabileceğiniz değişiklikleri kaydetmeden çıkmak üzeresiniz.\n"
                        "Bilgileriniz kayıt edilsin mi?";

class UserRightsScreen : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        auto& constants = orvan_constants();
        orvan::createUser(constants, "memur", "1");
        orvan::storeRights(constants, "memur", marks({}));
        signIn();
    }
    jet::Database& orvan_constants() {
        if (!centre.databases.isOpen()) centre.databases.connect();
        return centre.databases.constants().database();
    }
    static orvan::UserRights marks(orvan::Rights all) {
        return orvan::UserRights(static_cast<size_t>(orvan::programTitles().size()), all);
    }
    void open() {
        choose("Kullanici");
        ASSERT_NE(screen("Form_Kullanici1"), nullptr);
    }
    orvan::TickList& rights() { return *find<orvan::TickList>(*screen("Form_Kullanici1"), "haklar"); }
    QListWidget& users() { return *find<QListWidget>(*screen("Form_Kullanici1"), "kullanicilar"); }
    void press(const char* button) { find<QPushButton>(*screen("Form_Kullanici1"), button)->click(); }
    void show(const char* user) {
        for (int row = 0; row < users().count(); ++row)
            if (users().item(row)->text() == user) users().setCurrentRow(row);
        ASSERT_EQ(users().currentItem()->text(), QString(user));
    }
    orvan::Rights stored(const char* title) {
        return orvan::rightsOf(centre.constants(), "memur", QString::fromUtf8(title));
    }
};

TEST_F(UserRightsScreen, MarksAreSavedAfterTheQuestion) {
    open();
    EXPECT_EQ(focused(), QString("kullanicilar"));
    EXPECT_EQ(users().currentItem()->text(), QString(kUser));
    orvan_test::press(Qt::Key_Up); // memur stands before müdür
    EXPECT_EQ(users().currentItem()->text(), QString("memur"));
    rights().setTicked("Sınıf Bilgileri", "giris", true);
    rights().setTicked("Ders Havuzu", "giris", true);
    rights().setTicked("Ders Havuzu", "yazma", true);
    EXPECT_TRUE(screen("Form_Kullanici1")->hasUnsaved());
    dialogs.expectYesNo(kSave, orvan::Answer::No);
    press("kaydet");
    EXPECT_TRUE(screen("Form_Kullanici1")->hasUnsaved());
    EXPECT_EQ(stored("Ders Havuzu"), orvan::Rights());
    dialogs.expectYesNo(kSave, orvan::Answer::Yes);
    orvan_test::press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(screen("Form_Kullanici1")->hasUnsaved());
    EXPECT_EQ(stored("Sınıf Bilgileri"), (orvan::Rights{true, false}));
    EXPECT_EQ(stored("Ders Havuzu"), (orvan::Rights{true, true}));
    EXPECT_EQ(orvan::readOneValueFile(centre.path("\\orvyet.ini")), QString("1"));
}

TEST_F(UserRightsScreen, BulkButtonsActOnAllMarksOfTheUserWhateverIsFiltered) {
    open();
    show("memur");
    rights().setFilter("numara");
    press("girisVer");
    press("yazmaVer");
    press("yazmaAl");
    dialogs.expectYesNo(kSave, orvan::Answer::Yes);
    press("kaydet");
    for (const QString& title : orvan::programTitles())
        EXPECT_EQ(stored(title.toUtf8()), (orvan::Rights{true, false})) << title.toStdString();
    press("girisAl");
    dialogs.expectYesNo(kSave, orvan::Answer::Yes);
    press("kaydet");
    EXPECT_EQ(orvan::UserAdministration(centre.databases, dialogs).rights("memur"), marks({}));
}

TEST_F(UserRightsScreen, LeavingAskedOnce) {
    open();
    show("memur");
    rights().setTicked("Numara Arama", "giris", true);
    dialogs.expectYesNo(kLeave, orvan::Answer::No);
    show(kUser);
    EXPECT_EQ(stored("Numara Arama"), orvan::Rights());
    show("memur");
    EXPECT_FALSE(rights().isTicked("Numara Arama", "giris"));
    rights().setTicked("Numara Arama", "giris", true);
    dialogs.expectYesNo(kLeave, orvan::Answer::Yes);
    press("kapat");
    EXPECT_EQ(stored("Numara Arama"), (orvan::Rights{true, false}));
}

TEST_F(UserRightsScreen, ARefusedSaveKeepsTheUserOnView) {
    open();
    press("girisAl");
    dialogs.expectYesNo(kLeave, orvan::Answer::Yes)
        .expectMessage("'Yeni Kullanıcı / Kullanıcı Hakları' bölümüne giriş ve "
                       "değiştirme hakkı olan en az bir "
                       "kullanıcı kalmalıdır. Haklar kayıt edilmedi.");
    users().setCurrentRow(0);
    EXPECT_EQ(users().currentItem()->text(), QString(kUser));
    EXPECT_TRUE(screen("Form_Kullanici1")->hasUnsaved());
    dialogs.expectYesNo(kLeave, orvan::Answer::No);
    press("kapat");
}

TEST_F(UserRightsScreen, LeavingTheProgramAsksWindowByWindow) {
    open();
    show("memur");
    rights().setTicked("Numara Arama", "giris", true);
    choose("HizliOgrenciKayit");
    type("kuaf");
    orvan_test::press(Qt::Key_Return);
    orvan_test::press(Qt::Key_Return);
    type("Can");
    ASSERT_TRUE(screen("hizli_ogrenci_kayit")->hasUnsaved());
    dialogs.expectYesNo(kLeave, orvan::Answer::Yes).expectYesNo(kLeave, orvan::Answer::No);
    choose("Cikis");
    EXPECT_FALSE(window->isVisible());
    centre.databases.connect();
    EXPECT_EQ(stored("Numara Arama"), (orvan::Rights{true, false}));
}

TEST_F(UserRightsScreen, UsersComeAndGo) {
    open();
    dialogs.expectInput("Yeni Kullanıcı Adı:", "Ayşe O'Neill")
        .expectInput("Şifre:", "9")
        .expectInput("Şifre (tekrar):", "9")
        .expectMessage("Yeni Kullanıcı Açıldı.\nŞimdi bu kullanıcının haklarını "
                       "verebilirsiniz.");
    press("yeni");
    EXPECT_EQ(users().currentItem()->text(), QString("Ayşe O'Neill"));
    dialogs.expectYesNo("'Ayşe O'Neill' isimli kullanıcıyı silmek istediğinizde eminmisiniz ?",
                        orvan::Answer::Yes);
    rights().setTicked("Numara Arama", "giris", true);
    press("sil");
    EXPECT_EQ(users().count(), 2);
    EXPECT_FALSE(screen("Form_Kullanici1")->hasUnsaved());
}

TEST_F(UserRightsScreen, WithoutTheWriteRightEverythingIsSeenAndNothingChanges) {
    orvan::storeRights(orvan_constants(), kUser, marks({true, false}));
    open();
    show(kUser);
    EXPECT_TRUE(rights().isTicked("Numara Arama", "giris"));
    for (const char* button :
         {"yeni", "sifre", "sil", "girisVer", "girisAl", "yazmaVer", "yazmaAl", "kaydet"}) {
        dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.",
                              "Uyarı");
        press(button);
        dialogs.expectNothingLeft();
    }
    rights().view()->setFocus();
    orvan_test::press(Qt::Key_Space);
    EXPECT_FALSE(screen("Form_Kullanici1")->hasUnsaved());
    EXPECT_EQ(orvan::UserAdministration(centre.databases, dialogs).rights(kUser), marks({true, false}));
}

} // namespace
} // namespace orvan_test

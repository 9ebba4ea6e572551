// The windows of classes, class assignment, workplaces and earlier workplaces by keys: a record from the
// first key to the file, what is asked, what stays when it is refused.
#include "screens/program_fixture.h"

#include "core/values.h"
#include "widgets/choice_list.h"
#include "widgets/edit_grid.h"
#include "widgets/grid.h"
#include "widgets/tick_list.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QTabWidget>
#include <QTreeView>

namespace orvan_test {
namespace {

using orvan::Answer;

class PlacesScreensTest : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        signIn();
    }
    void open(const char* command, const char* name) {
        choose(command);
        form = screen(name);
        ASSERT_NE(form, nullptr) << command;
    }
    QString text(const char* field) const { return find<QLineEdit>(*form, field)->text(); }
    QString result() const { return find<QLabel>(*form, "sonuc")->text(); }
    void field(const char* name) { find<QWidget>(*form, name)->setFocus(); }
    void click(const char* button) {
        find<QPushButton>(*form, button)->click();
        QCoreApplication::processEvents();
    }
    static QString first(jet::SqlSession& sql, const char* query) {
        const auto rows = sql.query(query);
        QStringList cells;
        for (size_t i = 0; i < rows.rowCount(); ++i)
            for (size_t c = 0; c < rows.columns().size(); ++c)
                cells << orvan::toText(rows.at(i, c));
        return cells.join('|');
    }
    jet::SqlSession& registerOf() { return centre.databases.workplaces().sql(); }

    orvan::Screen* form = nullptr;
    const QString saveQuestion = "Bilgileriniz kayıt edilsin mi?";
    const QString saved = "Kayıt İşlemi Tamamlanmıştır.";
    const QString unsaved = "Yapmış olabileceğiniz değişiklikleri kaydetmeden çıkmak "
                            "üzeresiniz.\nBilgileriniz kayıt edilsin mi?";
};

TEST_F(PlacesScreensTest, AClassIsTypedWithItsHoursSavedAndShownInItsWeek) {
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Sinif = '10-Ş' WHERE Ogr_Kayit_No = 1");
    open("Sinif", "Frm_Sinif_Tanimlama");
    EXPECT_EQ(focused(), QString("ara"));
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(focused(), QString("SinifAdi"));
    type("9-Işık");
    press(Qt::Key_Return);
    type("Ali Can");
    auto* hours = find<orvan::EditGrid>(*form, "dersSaatleri");
    hours->applyChanges(
        {{1, "gun", "Salı"}, {1, "derslik", "D1"}, {1, "baslangic", "930"}, {1, "bitis", "9"}});
    EXPECT_TRUE(form->hasUnsaved());
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(first(centre.level(), "SELECT COUNT(*) FROM Sinif"), "0"); // it would end before it begins
    EXPECT_TRUE(form->hasUnsaved());
    hours->applyChanges({{1, "bitis", "12"}});
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(first(centre.level(),
                    "SELECT SinifAdi, SinifOgretmeni, EgtGunu_2, EgtBaslangic_2, EgtBitis_2 FROM "
                    "Sinif"),
              "9-Işık|Ali Can|Salı|09:30|12:00");
    EXPECT_FALSE(form->hasUnsaved());
    const auto week = find<orvan::ListGrid>(*form, "sinifHaftasi")->sheet();
    ASSERT_EQ(week.rows.size(), 1u);
    EXPECT_EQ(week.rows[0][0].toString() + week.rows[0][2].toString(), "09:30-12:00D1");
    EXPECT_EQ(find<orvan::ListGrid>(*form, "dersProgrami")->totalCount(), 1u);

    find<QTabWidget>(*form, "bolumler")->setCurrentIndex(3);
    auto* unknown = find<orvan::ListGrid>(*form, "tanimsizSiniflar");
    ASSERT_EQ(unknown->totalCount(), 1u);
    unknown->view()->selectAll();
    click("tanimla");
    EXPECT_EQ(unknown->totalCount(), 0u);
    EXPECT_EQ(find<orvan::ListGrid>(*form, "siniflar")->totalCount(), 2u);
}

TEST_F(PlacesScreensTest, TickedStudentsGoIntoTheChosenClass) {
    centre.level().execute("INSERT INTO Sinif (SinifAdi) VALUES ('9-A')");
    centre.addStudent("010100002", 3, "0101");
    open("TopluSinifIsleme", "sinif_kodu_isleme");
    EXPECT_EQ(focused(), QString("meslek"));
    type("inş");
    press(Qt::Key_Return);
    dialogs.expectMessage("Dönem Seçimi Yapılmamış.");
    click("listele");
    field("donemler");
    press(Qt::Key_Space);
    click("listele");
    auto* students = find<orvan::TickList>(*form, "sinifOgrencileri");
    ASSERT_EQ(students->rowCount(), 2u);
    auto* toggle = find<QPushButton>(*form, "tumu");
    EXPECT_EQ(toggle->text(), "&Tümü İşaretli");
    click("tumu");
    EXPECT_EQ(students->tickedRows().size(), 2);
    EXPECT_EQ(toggle->text(), "&Tümü İşaretsiz");
    click("tumu");
    EXPECT_TRUE(students->tickedRows().isEmpty());
    students->setTicked("1", "secili", true);
    field("hedefSinif");
    type("9");
    press(Qt::Key_Return);
    dialogs.expectYesNo("9-A Sınıf İşaretli Öğrencilere Aktarılacak.\nİşleme Devam mı?", Answer::Yes)
        .expectMessage("Kayıt İşlemi Tamamlandı.");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(first(centre.level(), "SELECT Ogr_Kayit_No FROM OgrenciBilgisi WHERE Ogr_Sinif = '9-A'"), "3");
    EXPECT_TRUE(result().startsWith("1 öğrencinin sınıfı değişti")) << result().toStdString();
}

TEST_F(PlacesScreensTest, AWorkplaceIsTypedAskedAboutAndSavedWithItsSupervisors) {
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_calistigi_isyerinin_adi = 'Öz''ün Oto', "
                           "Ogr_Usta_Ogreticisi = 'Can Er', Ogr_Cinsiyeti = 'E' WHERE Ogr_Kayit_No = 2");
    open("Isletme", "isletme_kayit_formu");
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(focused(), QString("K_Adi"));
    type("Öz'ün Oto");
    field("K_Telefon");
    type("123");
    auto* supervisors = find<orvan::EditGrid>(*form, "egitimSorumlulari");
    supervisors->applyChanges({{6, "adi", "Can Er"}});
    dialogs.expectYesNo(saveQuestion, Answer::No);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(form->hasUnsaved());
    EXPECT_EQ(text("K_Adi"), "Öz'ün Oto");
    dialogs.expectYesNo(saveQuestion, Answer::Yes).expectMessage(saved);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(form->hasUnsaved());
    EXPECT_TRUE(result().contains("3 rakam")) << result().toStdString(); // warned of, and saved
    EXPECT_EQ(first(registerOf(), "SELECT K_Adi, K_Telefon, K_Egitim_Sorumlusu7, K_Erkek_Ogrenci_Sayisi7 "
                                  "FROM isletme_Bilgisi"),
              "Öz'ün Oto|123|Can Er|1");
    EXPECT_EQ(supervisors->value(6, "erkek"), "1");

    supervisors->makeCurrent(6, "adi");
    dialogs.expectYesNo("Öğretmen Bilgileri Silinmek İsteniyor.", Answer::Yes);
    click("sorumluSil");
    EXPECT_EQ(supervisors->value(6, "adi") + supervisors->value(6, "erkek"), "");
    EXPECT_TRUE(form->hasUnsaved());
    dialogs.expectYesNo(unsaved, Answer::Yes).expectMessage(saved); // asked once on leaving
    form->closeWindow();
    EXPECT_EQ(first(registerOf(), "SELECT K_Egitim_Sorumlusu7, K_Erkek_Ogrenci_Sayisi7 FROM isletme_Bilgisi"),
              "|0");
}

TEST_F(PlacesScreensTest, WhatIsTypedStaysWhenAnotherStationChangedTheWorkplace) {
    registerOf().execute(
        "INSERT INTO isletme_Bilgisi (K_Adi, K_isletme_Tipi, K_Telefon) VALUES ('Oto', '0', '1')");
    open("Isletme", "isletme_kayit_formu");
    field("K_Telefon");
    find<QLineEdit>(*form, "K_Telefon")->selectAll();
    type("2");
    registerOf().execute("UPDATE isletme_Bilgisi SET K_Telefon = '3', K_FAX = '4'");
    dialogs.expectYesNo(saveQuestion, Answer::Yes)
        .expectChoice("Bu kayıt, siz açtıktan sonra başka bir bilgisayarda değiştirildi:\n\n"
                      "Faks: “” yerine “4”\nTelefon: “1” yerine “3” (siz “2” yazdınız)",
                      "Onun değişikliği kalsın, yazdıklarım ekranda dursun");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(text("K_Telefon") + text("K_FAX"), "24");
    EXPECT_TRUE(form->hasUnsaved());
    dialogs.expectYesNo(saveQuestion, Answer::Yes).expectMessage(saved);
    press(Qt::Key_S, Qt::ControlModifier); // seen now: no further question
    EXPECT_EQ(first(registerOf(), "SELECT K_Telefon, K_FAX FROM isletme_Bilgisi"), "2|4");
}

TEST_F(PlacesScreensTest, ABankIsAddedFromTheFormAndARefusedOneIsAskedAgain) {
    open("Isletme", "isletme_kayit_formu");
    dialogs.expectInput("Banka adı:", "  ")
        .expectInput("Şube (yoksa boş bırakınız):", "Ulus")
        .expectMessage("Banka adı boş olamaz; adını yazınız.")
        .expectInput("Banka adı:", "Halk")
        .expectInput("Şube (yoksa boş bırakınız):", "Ulus");
    click("bankaEkle");
    const auto& banks = find<orvan::ChoiceList>(*form, "K_BANKA")->choices();
    ASSERT_EQ(banks.size(), 1u);
    EXPECT_EQ(banks[0].code + "," + banks[0].text, "Halk,Halk / Ulus");
}

TEST_F(PlacesScreensTest, AStudentsHistoryIsFoundFilledAndSentTo) {
    centre.level().execute(
        "UPDATE OgrenciBilgisi SET Ogr_calistigi_isyerinin_adi = 'Oto' WHERE Ogr_Kayit_No = 1");
    open("TopluEskiIsletmeIsleme", "frm_eskiisletme_isleme");
    EXPECT_EQ(focused(), QString("ogrenciBul"));
    click("gonder"); // nobody is chosen
    EXPECT_TRUE(result().contains("öğrenciyi seçiniz"));
    form->showRecord("010100001");
    EXPECT_TRUE(find<QLabel>(*form, "ogrenci")->text().contains("Işıl Çağlar"));
    press(Qt::Key_N, Qt::ControlModifier);
    type("İlk İş");
    field("Ogr_Ise_Giris_Tarihi");
    type("01092007");
    press(Qt::Key_Return);
    type("310808");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(first(centre.level(), "SELECT Ogr_No, Ogr_Adi, Ogr_isyerinin_adi, Ogr_Isletme1_Yil FROM "
                                    "Ogrenci_Isyerleri"),
              "010100001|Işıl|İlk İş|1");
    click("gonder");
    EXPECT_EQ(text("Ogr_isyerinin_adi"), "Oto");
    click("yukari");
    EXPECT_EQ(first(centre.level(), "SELECT Ogr_isyerinin_adi FROM Ogrenci_Isyerleri ORDER BY Ogr_sira"),
              "Oto|İlk İş");
    EXPECT_EQ(text("Ogr_isyerinin_adi"), "Oto"); // the moved row stays on view
}

} // namespace
} // namespace orvan_test

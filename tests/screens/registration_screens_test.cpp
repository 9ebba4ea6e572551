// The registration forms, worked by keys alone: a new student from the choice of profession to the save,
// finding, walking, leaving and undoing, a workplace taken over, what another station does meanwhile.
#include "records/screens/ogrenci_bilgi_kayit.h"
#include "records/screens/photo_page.h"
#include "records/screens/registration_pages.h"
#include "screens/program_fixture.h"
#include "widgets/choice_list.h"

#include <QBuffer>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <set>

namespace orvan_test {
namespace {

using orvan::Answer;
using orvan::Parameters;

const QString kLeaving = "Yapmış olabileceğiniz değişiklikleri kaydetmeden çıkmak üzeresiniz.\n"
                         "Bilgileriniz kayıt edilsin mi?";

class RegistrationScreensTest : public ProgramTest {
  protected:
    void open(const char* key = "ogrencikayit", const char* name = "ogrenci_bilgi_kayit_2") {
        signIn();
        choose(key);
        form = screen(name);
        ASSERT_NE(form, nullptr);
    }
    orvan::FormPages& pages() { return *form->findChild<orvan::FormPages*>(); }
    QString value(const char* field) { return pages().value(field); }
    QString result() { return find<QLabel>(*form, "sonuc")->text(); }
    QString who() { return find<QLabel>(*form, "kim")->text(); }
    QString stored(const char* number, const char* field) {
        const auto rows = centre.level().query(
            std::string("SELECT ") + field + " FROM OgrenciBilgisi WHERE Ogr_Numarasi=?", Parameters{number});
        return rows.empty() ? QString("yok") : orvan::toText(rows.at(0, size_t{0}));
    }
    // Enter (in the remark Ctrl+Enter) from the field with the focus to the save button; the fields passed.
    std::set<QString> enterThrough() {
        std::set<QString> passed;
        for (int i = 0; i < 300 && focused() != "kaydet"; ++i) {
            passed.insert(focused());
            press(Qt::Key_Return, focused() == "Ogr_Aciklama" ? Qt::ControlModifier : Qt::NoModifier);
        }
        EXPECT_EQ(focused(), "kaydet");
        return passed;
    }
    std::set<QString> typedFields() {
        std::set<QString> fields;
        for (const orvan::FormPage& page : orvan::twoPages(orvan::allTables()))
            for (const orvan::FormField& field : page.fields)
                if (field.kind != orvan::FieldKind::Display) fields.insert(field.name);
        return fields;
    }
    orvan::Screen* form = nullptr;
};

TEST(RegistrationPages, BothFormsShowEveryDeclaredFieldOnce) {
    const orvan::Schema schema = orvan::allTables();
    for (const auto& pages : {orvan::tabbedPages(schema), orvan::twoPages(schema)}) {
        std::multiset<QString> shown, declared;
        for (const orvan::FormPage& page : pages)
            for (const orvan::FormField& field : page.fields)
                shown.insert(field.name);
        for (const orvan::FieldDeclaration& field : schema.table("OgrenciBilgisi").fields)
            declared.insert(orvan::fromUtf8(field.name));
        EXPECT_EQ(shown, declared);
    }
}

TEST_F(RegistrationScreensTest, NewStudentByKeysAlone) {
    open();
    EXPECT_EQ(focused(), "ogrenciBul");
    press(Qt::Key_M, Qt::AltModifier);
    EXPECT_EQ(focused(), "yeniKayitMeslegi");
    type("kuaf");
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), "yeni");
    press(Qt::Key_Return);
    EXPECT_EQ(value("Ogr_Numarasi"), "020500002");
    EXPECT_EQ(value("Ogr_Kayit_No"), "3");
    EXPECT_FALSE(form->hasUnsaved()) << "nothing of his own can be lost yet";
    EXPECT_EQ(focused(), "Ogr_Adi");
    type("Gül'ay");
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), "Ogr_Soyadi");
    type("İnci");
    pages().focusFirst();
    EXPECT_EQ(focused(), "Ogr_Numarasi");
    EXPECT_EQ(enterThrough(), typedFields());
    EXPECT_TRUE(form->hasUnsaved());
    press(Qt::Key_Return);
    EXPECT_EQ(stored("020500002", "Ogr_Adi"), "Gül'ay");
    EXPECT_EQ(stored("020500002", "Ogr_Kayit_Tarihi"), "15.09.2008");
    EXPECT_FALSE(form->hasUnsaved());
    EXPECT_EQ(result(), "Kaydedildi: 020500002  Gül'ay İnci");
    press(Qt::Key_N, Qt::ControlModifier); // the next one of the same profession
    EXPECT_EQ(value("Ogr_Numarasi"), "020500003");
    dialogs.expectMessage("Öğrenci Numarası, Adı ve Soyadı boş girilemez. Lütfen ilgili yerleri doldurunuz.");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(focused(), "Ogr_Adi");
}

TEST_F(RegistrationScreensTest, NewNeedsAProfessionAndAnotherOneGivesOtherNumbers) {
    open();
    dialogs.expectMessage("Yeni kayıt yapmak için önce meslek seçimi yapmalısınız.", "Uyarı");
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(focused(), "yeniKayitMeslegi");
    type("inş");
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    EXPECT_EQ(value("Ogr_Numarasi"), "010100002");
    type("Can");
    press(Qt::Key_M, Qt::AltModifier);
    type("kua");
    press(Qt::Key_Return);
    EXPECT_EQ(value("Ogr_Numarasi"), "020500002");
    EXPECT_EQ(value("Ogr_MeslekKod"), "0205");
    EXPECT_EQ(value("Ogr_Adi"), "Can") << "what was typed stays";
    dialogs.expectYesNo(kLeaving, Answer::No);
    press(Qt::Key_PageDown, Qt::AltModifier);
    EXPECT_FALSE(form->hasUnsaved());
}

TEST_F(RegistrationScreensTest, FindingWalkingAndLeaving) {
    open();
    EXPECT_EQ(value("Ogr_Numarasi"), "010100001") << "the first one is on view";
    type("öz al"); // arrows, then Enter
    press(Qt::Key_Return);
    EXPECT_EQ(who(), "020500001  Ali Öz");
    press(Qt::Key_PageDown, Qt::AltModifier);
    EXPECT_EQ(result(), "Bu, son öğrenci.");
    press(Qt::Key_PageUp, Qt::AltModifier);
    EXPECT_EQ(value("Ogr_Adi"), "Işıl");
    pages().focusField("Ogr_Soyadi");
    type("x");
    EXPECT_TRUE(form->hasUnsaved());
    dialogs.expectYesNo(kLeaving, Answer::Yes);
    press(Qt::Key_PageDown, Qt::AltModifier);
    EXPECT_EQ(stored("010100001", "Ogr_Soyadi"), "Çağlarx");
    EXPECT_EQ(value("Ogr_Adi"), "Ali");
    pages().focusField("Ogr_Nufus_Baba_Adi"); // the other page
    type("Veli");
    pages().focusField("Ogr_Adi");
    type("m");
    dialogs.expectYesNo(kLeaving, Answer::No);
    press(Qt::Key_F3);
    type("10100001");
    press(Qt::Key_Return);
    EXPECT_EQ(value("Ogr_Adi"), "Işıl");
    EXPECT_EQ(stored("020500001", "Ogr_Adi"), "Ali");
    pages().focusField("Ogr_Nufus_Baba_Adi");
    type("Veli");
    pages().focusField("Ogr_Adi");
    type("m");
    for (int i = 0; i < 4 && form->hasUnsaved(); ++i)
        press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(value("Ogr_Adi"), "Işıl");
    EXPECT_EQ(value("Ogr_Nufus_Baba_Adi"), "") << "the whole record";
    EXPECT_FALSE(form->hasUnsaved());
    press(Qt::Key_Escape);
}

TEST_F(RegistrationScreensTest, WorkplaceAndTwinFieldsFillOthers) {
    signIn();
    centre.databases.workplaces().sql().execute(
        "INSERT INTO isletme_Bilgisi (K_Adi,K_Adresi1,K_egitim_Sorumlusu,K_EgitimSorumlusu1_Cep) VALUES "
        "('Işık Kuaför','Gül Sok. 5','Derya Usta','0500 111')");
    choose("ogrencikayit");
    form = screen("ogrenci_bilgi_kayit_2");
    pages().focusField("Ogr_calistigi_isyerinin_adi");
    type("ışı");
    press(Qt::Key_Return);
    EXPECT_EQ(value("Ogr_calistigi_isyeri_adresi1"), "Gül Sok. 5");
    EXPECT_EQ(value("Ogr_Usta_Ogreticisi"), "Derya Usta");
    EXPECT_EQ(value("ustaOgreticiCep"), "0500 111");
    pages().focusField("Ogr_Dogum_Tarihi");
    type("01021992");
    press(Qt::Key_Return);
    pages().focusField("Ogr_SSK_SonOdeme_Tarihi");
    type("05092008");
    press(Qt::Key_Tab);
    EXPECT_TRUE(result().contains("İşten çıkış tarihi olmadan SSK en son ödeme tarihi girilemez."));
    dialogs.expectMessage("İşten çıkış tarihi olmadan SSK en son ödeme tarihi girilemez.\n"
                          "Lütfen önce işten çıkış tarihini doldurunuz.");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(focused(), "Ogr_SSK_SonOdeme_Tarihi");
    EXPECT_EQ(value("Ogr_calistigi_isyeri_adresi1"), "Gül Sok. 5") << "nothing typed is lost";
    press(Qt::Key_Home);
    press(Qt::Key_End, Qt::ShiftModifier);
    press(Qt::Key_Delete);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(stored("010100001", "Ogr_calistigi_isyerinin_adi"), "Işık Kuaför");
    EXPECT_EQ(stored("010100001", "Ogr_Nufus_Dogum_Tarihi"), "01.02.1992");
    EXPECT_EQ(stored("010100001", "Ogr_Yasi"), "16");
}

TEST_F(RegistrationScreensTest, OtherStations) {
    open();
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_ili='İZMİR'");
    press(Qt::Key_F5);
    EXPECT_EQ(value("Ogr_ili"), "İZMİR");
    pages().focusField("Ogr_Soyadi");
    type("x");
    centre.level().execute("DELETE FROM OgrenciBilgisi WHERE Ogr_Numarasi='010100001'");
    press(Qt::Key_F5);
    EXPECT_EQ(value("Ogr_Soyadi"), "Çağlarx") << "nothing typed is lost";
    const QString gone = "010100001 Işıl Çağlar kaydı, siz açtıktan sonra başka bir bilgisayarda silindi.";
    dialogs.expectChoice(gone, "Şimdi kaydedilmesin, yazdıklarım ekranda kalsın");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(value("Ogr_Soyadi"), "Çağlarx");
    dialogs.expectChoice(gone, "Silinmiş kalsın, ekran boşalsın");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(who(), "Öğrenci seçilmedi");
    EXPECT_FALSE(form->hasUnsaved());
    press(Qt::Key_PageDown, Qt::AltModifier);
    EXPECT_EQ(value("Ogr_Adi"), "Ali");
    centre.level().execute("DELETE FROM OgrenciBilgisi");
    press(Qt::Key_F5);
    EXPECT_EQ(result(), "020500001 Ali Öz başka bir bilgisayarda silindi.");
}

TEST_F(RegistrationScreensTest, DeletingShowsTheNextStudent) {
    open();
    dialogs.expectYesNo("Silmek İstediğinize Emin misiniz?", Answer::Yes,
                        "Öğrenci Silme: 010100001 Işıl Çağlar");
    press(Qt::Key_S, Qt::AltModifier);
    QTest::qWait(150); // a button pressed by its letter acts when it comes up
    EXPECT_EQ(stored("010100001", "Ogr_Adi"), "yok");
    EXPECT_EQ(value("Ogr_Adi"), "Ali");
    EXPECT_EQ(result(), "Silindi: 010100001  Işıl Çağlar");
}

TEST_F(RegistrationScreensTest, CommandsOfTheMenu) {
    open();
    const auto run = [&](const char* action) { find<QAction>(*form, action)->trigger(); };
    pages().focusField("Ogr_Adresi1");
    type("Gül Sok.");
    dialogs.expectYesNo(
        "Öğrenci Adres Bilgisi Veli Adres Bilgisine kopyalanacaktır.\nDevam Etmek İstiyor musunuz ?",
        Answer::Yes);
    run("adresVeliye");
    EXPECT_EQ(value("Ogr_Veli_Adresi1"), "Gül Sok.");
    EXPECT_TRUE(form->hasUnsaved());
    dialogs.expectYesNo(kLeaving, Answer::Yes);
    run("oburForm"); // the same student with tabs
    auto* tabs = screen("ogrenci_bilgi_kayit");
    ASSERT_NE(tabs, nullptr);
    EXPECT_EQ(tabs->findChild<orvan::FormPages*>()->value("Ogr_Veli_Adresi1"), "Gül Sok.");
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_calistigi_isyerinin_adi='Işık Kuaför', "
                           "Ogr_calistigi_ise_giris_tarihi='01.09.2007'");
    form->refresh();
    run("oncekiIsyerineGonder");
    EXPECT_EQ(result(), "İşyeri, önceki işyerlerine eklendi.");
    EXPECT_EQ(centre.level().query("SELECT * FROM Ogrenci_Isyerleri").rowCount(), 1u);
}

TEST(Pictures, OnlyBitmapsAndJpegsAreTaken) {
    QImage image(30, 40, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    const auto encoded = [&](const char* format) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        EXPECT_TRUE(image.save(&buffer, format));
        return bytes;
    };
    EXPECT_EQ(orvan::pictureAsJpeg(encoded("JPEG")), encoded("JPEG")) << "as it is";
    const QImage back = QImage::fromData(orvan::pictureAsJpeg(encoded("BMP")), "JPEG");
    EXPECT_EQ(back.size(), image.size());
    for (const QByteArray& bad :
         {encoded("PNG"), QByteArray("Sayın veli"), QByteArray(), encoded("BMP").left(60)})
        EXPECT_TRUE(orvan::pictureAsJpeg(bad).isEmpty()) << bad.size();
}

} // namespace
} // namespace orvan_test

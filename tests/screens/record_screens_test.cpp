// The windows that search, check, count and renumber students, worked by keys and buttons.
#include "records/trimmed_rows.h"
#include "screens/program_fixture.h"
#include "widgets/edit_grid.h"
#include "widgets/form.h"
#include "widgets/grid.h"

#include <QLabel>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QSignalSpy>

namespace orvan_test {
namespace {

class RecordScreens : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        centre.databases.connect();
        centre.addStudent("010100002", 3, "0101", "Ayşe", "O'Hara");
        centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Mernis = '10000000147' WHERE Ogr_Kayit_No = 3");
        centre.level().execute("INSERT INTO Notlar (N_Ogr_Numarasi,N_Ogr_Adi,N_Ogr_Soyadi) VALUES "
                               "('010100001','Işıl','Çağlar')");
        orvan::Connection usta(centre.path("\\Data\\USTA.MDB"), {});
        usta.sql().execute("INSERT INTO OgrenciBilgisi (Ogr_Numarasi,Ogr_Adi,Ogr_Soyadi,Ogr_Mernis) VALUES "
                           "('010100077','İlhan','Çağlar','10000000078')");
        centre.databases.close();
        signIn();
    }
    orvan::Screen& open(const char* key, const char* name) {
        choose(key);
        return *screen(name);
    }
    static QString text(orvan::Screen& screen, const char* label) {
        return find<QLabel>(screen, label)->text();
    }
    static void click(orvan::Screen& screen, const char* button) {
        find<QPushButton>(screen, button)->click();
    }
    QString numbers() {
        const auto rows = centre.level().query("SELECT Ogr_Numarasi & '/' & Ogr_Kayit_No & '/' & Ogr_Adi "
                                               "FROM OgrenciBilgisi ORDER BY Ogr_Numarasi");
        QStringList all;
        for (size_t i = 0; i < rows.rowCount(); ++i)
            all << orvan::toText(rows.at(i, size_t{0}));
        return all.join(' ');
    }
};

TEST_F(RecordScreens, SearchFindsInAllLevelsAndOpensOrSaysWhere) {
    orvan::Screen& search = open("OgrenciARA", "OgrenciARA");
    EXPECT_EQ(focused(), QString("adi"));
    dialogs.expectMessage("Aramak için alanlardan en az birini doldurunuz.");
    click(search, "ara");
    press(Qt::Key_Tab);
    type("çağlar");
    for (int field = 0; field < 5; ++field)
        press(Qt::Key_Return); // after the last one it searches
    auto& grid = *find<orvan::ListGrid>(search, "arananOgrenciler");
    EXPECT_EQ(text(search, "sonuc"), QString("2 kayıt bulundu."));
    ASSERT_EQ(grid.totalCount(), 2u);
    EXPECT_EQ(grid.sheet().rows[1][0].toString(), QString("Usta"));
    QSignalSpy wanted(&search, &orvan::Screen::openRequested);
    emit grid.activated(0);
    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toString(), QString("ogrencikayit"));
    EXPECT_EQ(wanted[0][1].toString(), QString("010100001"));
    for (QMdiSubWindow* other : window->findChildren<QMdiSubWindow*>())
        if (other->widget() != &search) other->close();
    dialogs.expectMessage(
        "İlhan Çağlar (010100077) şimdi çalışılan bilgilerde değil.\nYeri: Usta\nDosya: USTA.MDB\n\n"
        "Kaydını açmak için “Çalışma” menüsünden önce o düzeye, arşivdeyse ardından o arşive "
        "geçiniz.");
    emit grid.activated(1);
    EXPECT_EQ(wanted.count(), 1);
    click(search, "temizle");
    EXPECT_EQ(focused(), QString("adi"));
    search.findChild<orvan::EntryForm*>()->setValue("kimlikNo", "10000000078");
    click(search, "ara");
    EXPECT_EQ(text(search, "sonuc"),
              QString("10000000078 TC Kimlik numarasında öğrenci var.\n*Usta çalışmasında"));
}

TEST_F(RecordScreens, ChecksListWhatIsWrongAndOpenTheRecord) {
    orvan::Screen& check = open("OgrenciKontrol", "Frm_ogrencibilgi_kontrol");
    click(check, "hicbiri");
    dialogs.expectMessage("En az bir denetim seçiniz.");
    click(check, "denetle");
    auto& checks = *find<QListWidget>(check, "denetimler");
    for (QListWidgetItem* item : checks.findItems("T.C. kimlik numarası hatalı", Qt::MatchExactly))
        item->setCheckState(Qt::Checked);
    click(check, "denetle");
    EXPECT_EQ(text(check, "sonuc"), QString("3 öğrenci denetlendi, 1 bulgu var."));
    QSignalSpy wanted(&check, &orvan::Screen::openRequested);
    click(check, "ac");
    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][1].toString(), QString("010100002"));
}

TEST_F(RecordScreens, OneStudentGetsAnotherNumberAndName) {
    orvan::Screen& change = open("AdSoyadNumaraDegistirme", "Ogr_Numara_AdSoyad_Degistir");
    change.showRecord("010100001");
    auto& form = *change.findChild<orvan::EntryForm*>();
    EXPECT_EQ(focused(), QString("number"));
    type("0101");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(form.wrongField(), QString("number"));
    EXPECT_EQ(form.value("number"), QString("0101")) << "what was typed stays";
    form.focusField("number");
    press(Qt::Key_A, Qt::ControlModifier);
    type("010100009");
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    type("ay"); // the caret stands at the end of a name
    dialogs.expectYesNo("Öğrencinin bütün kayıtları değiştirilecek.\n\n"
                        "Eski: Kütük No: 010100001   Kayıt No: 1   Işıl Çağlar   Meslek: 0101\n"
                        "Yeni: Kütük No: 010100009   Kayıt No: 1   Işılay Çağlar   Meslek: 0101\n\n"
                        "Onaylıyor musunuz?",
                        orvan::Answer::Yes);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(change.hasUnsaved());
    EXPECT_EQ(text(change, "sonuc"),
              QString("Kaydedildi: 010100009 Işılay Çağlar. Bağlı kayıtlarda 2 satır değişti."));
    EXPECT_EQ(numbers(), "010100002/3/Ayşe 010100009/1/Işılay 020500001/2/Ali");
    EXPECT_EQ(orvan::rowsByText(centre.databases.level().database(), "Notlar", "N_Ogr_Numarasi", "010100009")
                  .size(),
              1u);
}

TEST_F(RecordScreens, NumbersOfAProfessionInSequence) {
    orvan::Screen& bulk = open("TopluKayitKutukDuzenleme", "Toplu_KayitKutuk_Isle");
    type("inşaat");
    press(Qt::Key_Return);
    auto& grid = *find<orvan::EditGrid>(bulk, "yeniNumaralar");
    ASSERT_EQ(grid.rowCount(), 2u);
    auto& form = *bulk.findChild<orvan::EntryForm*>();
    click(bulk, "numaraVer");
    EXPECT_EQ(form.wrongField(), QString("ilkSira"));
    form.setValue("ilkSira", "2");
    click(bulk, "numaraVer");
    EXPECT_EQ(grid.value(0, "yeniNumara"), QString("010100002"));
    EXPECT_TRUE(bulk.hasUnsaved());
    grid.applyChanges({{1, "yeniNumara", "020500009"}}); // not of this profession
    ASSERT_EQ(grid.refusedCells().size(), 1u);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(numbers(), "010100001/1/Işıl 010100002/3/Ayşe 020500001/2/Ali");
    grid.applyChanges({{1, "yeniNumara", "010100002"}}); // twice the same
    EXPECT_FALSE(bulk.save());
    EXPECT_EQ(text(bulk, "sonuc"), QString("1 satırda engel var, hiçbir numara değişmedi."));
    EXPECT_EQ(numbers(), "010100001/1/Işıl 010100002/3/Ayşe 020500001/2/Ali");
    grid.revert();
}

TEST_F(RecordScreens, NumbersOfAProfessionAreExchanged) {
    orvan::Screen& bulk = open("TopluKayitKutukDuzenleme", "Toplu_KayitKutuk_Isle");
    type("inşaat");
    press(Qt::Key_Return);
    auto& grid = *find<orvan::EditGrid>(bulk, "yeniNumaralar");
    grid.applyChanges({{0, "yeniNumara", "010100002"}});
    EXPECT_FALSE(bulk.save());
    EXPECT_EQ(text(bulk, "sonuc"), QString("1 satırda engel var, hiçbir numara değişmedi."));
    grid.applyChanges({{1, "yeniNumara", "010100001"}, {1, "yeniKayitNo", "30"}});
    dialogs.expectYesNo(
        "2 öğrencinin numarası değişecek (ilki: 010100001 → 010100002).\nNotları, devamsızlıkları, "
        "sigorta günleri, işyerleri ve sınavları yeni numarayı alacak.\n\nOnaylıyor musunuz?",
        orvan::Answer::Yes);
    EXPECT_TRUE(bulk.save());
    EXPECT_EQ(numbers(), "010100001/30/Ayşe 010100002/1/Işıl 020500001/2/Ali");
    EXPECT_EQ(grid.value(0, "sonuc"), QString("eski: 010100002 / 3"));
    EXPECT_FALSE(bulk.hasUnsaved());
}

TEST_F(RecordScreens, LocksAreShownAndOnlyLeftOnesRemoved) {
    QFile left(centre.path("\\Data") + "/USTAOGR.ldb");
    ASSERT_TRUE(left.open(QFile::WriteOnly));
    left.close();
    orvan::Screen& locks = open("OgrenciKilitKaldir", "OgrenciKilitKaldir");
    EXPECT_EQ(text(locks, "sonuc"), QString("1 veritabanında artık kilit var."));
    click(locks, "kaldir");
    EXPECT_EQ(text(locks, "sonuc"), QString("USTAOGR.MDB: artık kilit kaldırıldı."));
    EXPECT_FALSE(left.exists());
}

} // namespace
} // namespace orvan_test

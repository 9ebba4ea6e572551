// Bulk edits at the screen: ticking and one value, a value in each student's cell, the preview, and what is
// on view after another station's change.
#include "screens/program_fixture.h"
#include "widgets/edit_grid.h"
#include "widgets/form.h"
#include "widgets/grid.h"
#include "widgets/tick_list.h"

#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

namespace orvan_test {
namespace {

class BulkEditScreenTest : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        signIn();
    }
    void open(const char* key, const char* name) {
        choose(key);
        edit = screen(name);
        ASSERT_NE(edit, nullptr);
    }
    void click(const char* button) {
        find<QPushButton>(*edit, button)->click();
        QCoreApplication::processEvents();
    }
    QString said() const { return find<QLabel>(*edit, "sonuc")->text(); }
    QStringList states() const {
        QStringList states;
        for (const orvan::ListRow& row : find<orvan::ListGrid>(*edit, "degisiklikler")->sheet().rows)
            states << row.back().toString();
        return states;
    }
    QString stored(const char* number, const std::string& field) {
        return orvan::toText(centre.level()
                                 .query("SELECT " + field + " FROM OgrenciBilgisi WHERE Ogr_Numarasi = ?",
                                        orvan::Parameters{number})
                                 .at(0, size_t{0}));
    }
    orvan::Screen* edit = nullptr;
};

TEST_F(BulkEditScreenTest, OneValueGoesToTheTickedStudents) {
    open("TupluKayitDurumuIsleme", "kayit_durumu_isleme");
    EXPECT_EQ(focused(), QString("meslek"));
    auto* ticks = find<orvan::TickList>(*edit, "topluOgrenciler");
    EXPECT_EQ(ticks->rowCount(), 2u);
    auto* tabs = find<QTabWidget>(*edit, "sayfalar");

    click("uygula"); // no value yet
    EXPECT_EQ(focused(), QString("Ogr_Kayit_Durumu"));
    type("denk"); // only in the equivalence files
    press(Qt::Key_Return);
    click("onizle");
    EXPECT_EQ(tabs->currentIndex(), 0);
    find<QWidget>(*edit, "Ogr_Kayit_Durumu")->setFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    type("Mesleki");
    press(Qt::Key_Return);
    click("uygula"); // nobody is ticked
    EXPECT_EQ(said(), "Önce listede öğrencileri işaretleyiniz.");

    ticks->setAllTicked("secili", true);
    click("onizle");
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_EQ(states(), (QStringList{"Değişecek", "Değişecek"}));
    EXPECT_EQ(stored("010100001", "Ogr_Kayit_Durumu"), "");
    EXPECT_FALSE(edit->isWindowModified());

    dialogs.expectYesNo("2 öğrencinin “Kayıt durumu” bilgisi “Mesleki Eğitim” olarak değiştirilecektir.\n\n"
                        "010100001 Işıl Çağlar\n020500001 Ali Öz\n\nOnaylıyor musunuz?",
                        orvan::Answer::Yes, "Kayıt Durum İşleme");
    click("uygula");
    EXPECT_EQ(states(), (QStringList{"Değişti", "Değişti"}));
    EXPECT_EQ(said(), "2 öğrenci değişti, 0 öğrencide atlanan var.");
    EXPECT_EQ(stored("020500001", "Ogr_Kayit_Durumu"), "Mesleki Eğitim");
    EXPECT_TRUE(ticks->tickedRows().isEmpty()); // a second click changes nobody
}

TEST_F(BulkEditScreenTest, TheFieldIsChosenWhereThereAreSeveral) {
    open("TopluSigortaTarihiIsleme", "sigorta_tarihi_isleme");
    find<orvan::TickList>(*edit, "topluOgrenciler")->setAllTicked("secili", true);
    find<QWidget>(*edit, "Ogr_Sigorta_Giris_Tarihi")->setFocus();
    type("31022008");
    click("onizle");
    EXPECT_TRUE(states().isEmpty()); // no such day
    press(Qt::Key_A, Qt::ControlModifier);
    type("15092008");
    click("onizle");
    EXPECT_EQ(states().size(), 2);
    find<QTabWidget>(*edit, "sayfalar")->setCurrentIndex(0);
    find<QWidget>(*edit, "alan")->setFocus();
    type("SSK");
    press(Qt::Key_Return);
    find<QWidget>(*edit, "Ogr_SSK_SonOdeme_Tarihi")->setFocus();
    type("15092008");
    click("onizle");
    ASSERT_EQ(states().size(), 2);
    EXPECT_EQ(states()[0], "Atlanacak: İşten çıkış tarihi olmadan SSK en son ödeme tarihi girilemez.");
}

TEST_F(BulkEditScreenTest, CellsAreSavedAndWhatAnotherStationTouchedStaysTyped) {
    open("TopluSSKNoIsleme", "ssk_no_isleme");
    auto* grid = find<orvan::EditGrid>(*edit, "hucreler-TopluSSKNoIsleme");
    ASSERT_EQ(grid->rowCount(), 2u);
    grid->applyChanges({{0, "Ogr_SSK_No", "0101"}, {1, "Ogr_SSK_No", "0202"}});
    EXPECT_TRUE(edit->isWindowModified());
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_SSK_No = '9' WHERE Ogr_Numarasi = '020500001'");
    dialogs.expectYesNo("1 öğrencinin “Sigorta no” bilgisi “0101” olarak değiştirilecektir.\n\n"
                        "010100001 Işıl Çağlar\n\n1 öğrenci ön izlemede yazan nedenle atlanacaktır.\n"
                        "Onaylıyor musunuz?",
                        orvan::Answer::Yes, "SSK No İşleme");
    click("kaydet");
    EXPECT_EQ(stored("010100001", "Ogr_SSK_No"), "0101");
    EXPECT_EQ(stored("020500001", "Ogr_SSK_No"), "9");
    EXPECT_EQ(states(), (QStringList{"Değişti", "Atlandı: Bu arada başka bir bilgisayarda “9” olarak "
                                                "değiştirilmiş."}));
    EXPECT_TRUE(edit->isWindowModified());
    EXPECT_EQ(grid->changedCells().size(), 1u);
    EXPECT_EQ(grid->value(1, "Ogr_SSK_No"), "0202");
    edit->discardChanges();
    EXPECT_EQ(grid->value(1, "Ogr_SSK_No"), "9"); // his, not what was loaded first
    EXPECT_FALSE(edit->isWindowModified());
}

TEST_F(BulkEditScreenTest, AWrongIdentityNumberDoesNotLeaveItsCell) {
    open("TopluTcKimlikIsleme", "tc_kimlik_isleme");
    auto* grid = find<orvan::EditGrid>(*edit, "hucreler-TopluTcKimlikIsleme");
    grid->applyChanges({{0, "Ogr_Mernis", "123"}});
    ASSERT_EQ(grid->refusedCells().size(), 1u);
    EXPECT_EQ(grid->refusedCells()[0].reason, "T.C. kimlik no 11 rakam olmalı.");
    click("kaydet"); // no question
    EXPECT_EQ(stored("010100001", "Ogr_Mernis"), "");
    edit->discardChanges();
}

} // namespace
} // namespace orvan_test

// Which window opens behind which command: names that manuals, rights and remembered places rely on.
#include "screens/program_fixture.h"

#include <QHash>
#include <QMdiSubWindow>

namespace orvan_test {
namespace {

constexpr struct {
    const char* key;
    const char* window;
} kFixedWindows[] = {
    {"İşyeri Açma", "ogrenci_bilgi_kayit_2"},
    {"DonemBilgileri", "FrmDonem"},
    {"KanunMaddeleri", "frmKanunMaddesi"},
    {"PratikEgitim", "frmPratikEgitim"},
    {"OgrenimDurum", "frmOgrenimDurum"},
    {"MeslekOdalari", "frmMeslek_Odasi"},
    {"IsletmeSemt", "frmSemt"},
    {"Isletme", "isletme_kayit_formu"},
    {"Koordinator", "koordinator_ogretmen_kayit"},
    {"MudurYrd", "frmMudurYardimcisi"},
    {"DersHavuzu", "frmDersHavuzu"},
    {"AnaMeslek", "frmAnaMeslek"},
    {"Kullanici", "Form_Kullanici1"},
    {"ogrencikayit", "ogrenci_bilgi_kayit_2"},
    {"OgrenciKontrol", "Frm_ogrencibilgi_kontrol"},
    {"HizliOgrenciKayit", "hizli_ogrenci_kayit"},
    {"AdSoyadNumaraDegistirme", "Ogr_Numara_AdSoyad_Degistir"},
    {"SerbestMektup", "raporlama"},
    {"CokAmacliOgrenci", "Form_Serbest_ogrenci_Listeleme"},
    {"ZumreTutanak", "zumre_tutanagi"},
    {"OgrenciTanitimKarti", "ogrenci_tanitim_karti"},
    {"Rehberlik", "rehberlik_formu"},
    {"Askerlik", "ogrenci_askerlik_erteleme"},
    {"IsletmelereGidenOgrenci", "isletmeye_gonderilen_ogrenci_listesi"},
    {"KalfalikDurum", "ogrenci_durumbelgesi"},
    {"OgretmenOgrenciListesi", "koordinatorogr_ogrenci_listesi"},
    {"OgrenciListesiIsletmeBaz", "ogrenci_listesi_isletmebaz"},
    {"OgrenciSinavNakilBelgesi", "FrmSinavNakilBelgesi"},
    {"OgrenciBelgesi", "frmOgrenciBelgesi"},
    {"Gunisleme", "ogrenci_sigorta_gunu_isleme"},
    {"PirimTemizleme", "ogrenci_prim_temizle"},
    {"AylikSigorta", "aylik_sigorta_primleri_bildirgesi"},
    {"DiziPusulasi", "dizi_pusulasi"},
    {"IseGirisYeni", "ise_giris_bildirgesi_ek8"},
    {"Sozlesme", "sozlesme_ciraklik"},
    {"DevamGiris", "frmDevamsizlikOgrenci"},
    {"SinifdevamNEW", "frmSinifBazindaDevamsizlikNEW"},
    {"DersDevam", "frmDersBazindaDevamsizlik"},
    {"DevamDefteriBolum", "LstDevamDefteriBolum"},
    {"UyariAlanlar", "LstUyariAlanlar"},
    {"SinifNotGiris", "frmNotGirisiSinif"},
    {"SinifDersNotFisi", "FrmNotFisiGirisi"},
    {"ToolAraSinavNotFisiBasimi", "FrmNotFisiBasimiSinif"},
    {"ToolAraSinavNotCizelgesiSinif", "FrmAraSinavNotCizelgesiSinif"},
    {"HakKazananlar", "FrmBitirmeyeHakKazananlar"},
    {"BitirmeSinav", "FrmBitirmeSinavNotGirisi"},
    {"BitirmeNotGirisiDers", "FrmBitirmeSinavNotGirisiDERSBAZINDA"},
    {"BitirmeSinavNotCizelgesi", "frmSinavNotCizelgesi"},
    {"BelgeDefteri", "Ogr_BelgeDefteri"},
    {"BitirmeSinavinaGireceklerinListesi", "FrmBitirmeSinavListesi"},
    {"BitirmeSinaviSonucListeleri", "FrmBitirmeSinavSonucListesi"},
    {"SinifOgrenciSayilari", "Frm_SinifOgrenciSayilari"},
};

TEST_F(ProgramTest, EveryWindowIsTheOneItsCommandNames) {
    signIn();
    QHash<QString, QString> fixed;
    for (const auto& row : kFixedWindows)
        fixed[QString::fromUtf8(row.key)] = row.window;
    ASSERT_EQ(fixed.size(), 52);
    for (const QString& key : fixed.keys())
        EXPECT_NE(orvan::findCommand(key), nullptr) << key.toStdString();
    for (const orvan::ScreenEntry& entry : screens.entries()) {
        SCOPED_TRACE(entry.key.toStdString());
        EXPECT_EQ(entry.window, fixed.value(entry.key, entry.window));
        window->openScreen(entry);
        const orvan::Screen* opened = window->openScreens().last();
        EXPECT_EQ(opened->objectName(), entry.window) << "its place is remembered under its name";
        EXPECT_EQ(opened->windowTitle(), entry.title + "[*]");
    }
}

} // namespace
} // namespace orvan_test

// records/student_table.cpp — OgrenciBilgisi: one row per student, by the families of the registration form.
#include "records/record_tables.h"

namespace orvan {
namespace {

using Fields = std::vector<FieldDeclaration>;

// Lists test these for the empty text, so a new row never holds null there.
FieldDeclaration emptyText(std::string name, uint16_t width, std::string label) {
    FieldDeclaration field = textField(std::move(name), width, std::move(label));
    field.defaultValue = "\"\"";
    return field;
}

// 0 = a normal, active record.
FieldDeclaration activeStatus() {
    FieldDeclaration field = longField("Ogr_Durum", "Durum");
    field.defaultValue = "0";
    return field;
}

void addIdentity(Fields& fields) {
    fields.insert(fields.end(),
                  {textField("Ogr_Numarasi", 15, "Kütük No"), longField("Ogr_Kayit_No", "Kayıt No"),
                   textField("Ogr_Kayit_Tarihi", 10, "Kayıt tarihi"), textField("Ogr_Adi", 30, "Adı"),
                   textField("Ogr_Soyadi", 30, "Soyadı"), textField("Ogr_Ilk_Soyadi", 30, "İlk soyadı"),
                   textField("Ogr_Mernis", 11, "T.C. kimlik no"), textField("Ogr_SSK_No", 20, "Sigorta no"),
                   textField("Ogr_VergiNo", 15, "Vergi no"), textField("Ogr_Sifre", 4, "Öğrenci şifresi"),
                   longField("Ogr_Sira", "Sıra"), memoField("Ogr_Aciklama", "Açıklama"),
                   textField("Ogr_Arsiv_Kodu", 10, "Arşiv kodu")});
}

void addProgramme(Fields& fields) {
    fields.insert(fields.end(), {textField("Ogr_MeslekKod", 15, "Meslek"),
                                 textField("Ogr_AnaMeslek_Kod", 15, "Ana meslek"),
                                 textField("Ogr_Sinif", 30, "Sınıf"),
                                 longField("DersID", "Program"),
                                 textField("Ogr_DersYili", 9, "Ders yılı"),
                                 textField("Ogr_Seviye", 15, "Dönem"),
                                 activeStatus(),
                                 textField("Ogr_Kayit_Durumu", 40, "Kayıt durumu"),
                                 textField("Ogr_Kanun_Maddesi", 60, "Kanun maddesi"),
                                 textField("Ogr_OgrenimDuzeyi", 15, "Öğrenim düzeyi"),
                                 textField("Ogr_Ogrenim_Durumu", 15, "Öğrenim durumu"),
                                 textField("Ogr_Mezun_Oldugu_okul", 80, "Mezun olduğu okul"),
                                 emptyText("Ogr_Koordinator_Ogretmen", 61, "Koordinatör öğretmen"),
                                 textField("Ogr_Usta_Ogreticisi", 60, "Usta öğreticisi"),
                                 textField("Ogr_Sorumlu_MudurYardimcisi", 60, "Sorumlu müdür yardımcısı"),
                                 textField("Ogr_Pratik_EgitimYeri", 100, "Pratik eğitim yeri"),
                                 textField("Ogr_Bolum", 100, "Bölüm"),
                                 textField("Ogr_Bolumu", 100, "Bölümü"),
                                 textField("Ogr_GeldigiGunler", 60, "Geldiği günler"),
                                 yesNoField("Ogr_Isguvenligi_Egitimi", "İş güvenliği eğitimi aldı"),
                                 textField("Ogr_Askerlik_Subesi", 40, "Askerlik şubesi"),
                                 textField("Ogr_Askerlik_YapildiMuaf", 5, "Askerlik yapıldı / muaf")});
}

void addWorkplace(Fields& fields) {
    fields.insert(fields.end(), {emptyText("Ogr_calistigi_isyerinin_adi", 100, "Çalıştığı işyeri"),
                                 emptyText("Ogr_calistigi_isyeri_adresi1", 60, "İşyeri adresi"),
                                 emptyText("Ogr_calistigi_isyeri_adresi2", 60, "İşyeri adresi (devamı)"),
                                 textField("Ogr_calistigi_ise_giris_tarihi", 10, "İşe giriş tarihi"),
                                 emptyText("Ogr_calistigi_isden_ayrilis_tarihi", 10, "İşten çıkış tarihi"),
                                 textField("Ogr_Ise_Giris_Tarihi", 10, "Sözleşme başlangıcı"),
                                 textField("Ogr_Isden_Ayrilis_Tarihi", 10, "Sözleşme bitişi"),
                                 textField("Ogr_ise_baslama_durumu", 20, "İşe başlama durumu"),
                                 textField("Ogr_Isten_Ayrildi", 5, "İşten ayrıldı"),
                                 textField("Ogr_Isletme1_Yil", 3, "Önceki işyerlerinde yıl"),
                                 textField("Ogr_Isletme1_Ay", 3, "Önceki işyerlerinde ay"),
                                 textField("Ogr_Isletme1_Gun", 3, "Önceki işyerlerinde gün"),
                                 textField("Ogr_Sigorta_Giris_Tarihi", 10, "Sigorta giriş tarihi"),
                                 textField("Ogr_SSK_SonOdeme_Tarihi", 10, "SSK en son ödeme tarihi"),
                                 textField("Ogr_SigortaYok", 5, "Sigorta yatırılmıyor"),
                                 textField("Ogr_WebIseGirisVar", 5, "İşe giriş bildirildi"),
                                 textField("Ogr_WebIseGirisTarihi", 10, "İşe giriş bildirim tarihi"),
                                 textField("Ogr_WebIstenCikisVar", 5, "İşten çıkış bildirildi"),
                                 textField("Ogr_WebIstenCikisTarihi", 10, "İşten çıkış bildirim tarihi"),
                                 textField("ustaOgreticiCep", 15, "Usta öğreticinin cep telefonu"),
                                 textField("SigortaYatirmamaTarihi", 10, "Sigorta yatırılmama tarihi")});
}

void addCivilRegistry(Fields& fields) {
    fields.insert(fields.end(), {textField("Ogr_Nufus_Baba_Adi", 30, "Baba adı"),
                                 textField("Ogr_Nufus_Ana_Adi", 30, "Ana adı"),
                                 textField("Ogr_Nufus_Dogum_Yeri", 30, "Doğum yeri"),
                                 textField("Ogr_Nufus_Dogum_Tarihi", 10, "Doğum tarihi (nüfus)"),
                                 textField("Ogr_Dogum_Tarihi", 10, "Doğum tarihi"),
                                 textField("Ogr_Yasi", 3, "Yaşı"),
                                 textField("Ogr_Nufus_Ili", 30, "Nüfusa kayıtlı il"),
                                 textField("Ogr_Nufus_Ilcesi", 40, "Nüfusa kayıtlı ilçe"),
                                 textField("Ogr_Nufus_Mahalle_Koy", 40, "Mahalle / köy"),
                                 textField("Ogr_Nufus_Cilt_No", 10, "Cilt no"),
                                 textField("Ogr_Nufus_Hane", 10, "Hane"),
                                 textField("Ogr_Nufus_Sayfa", 10, "Sayfa"),
                                 textField("Ogr_Nufus_Kayit_No", 10, "Nüfus kayıt no"),
                                 textField("Ogr_Nufus_CuzdanSeri_No", 15, "Cüzdan seri no"),
                                 textField("Ogr_Nufus_Verildigi_Nufus", 40, "Verildiği nüfus idaresi"),
                                 textField("Ogr_Nufus_Verilis_Nedeni", 30, "Veriliş nedeni"),
                                 textField("Ogr_Nufus_Verilis_Tarihi", 10, "Veriliş tarihi"),
                                 textField("Ogr_Cinsiyeti", 5, "Cinsiyeti"),
                                 textField("Ogr_Nufus_Cinsiyeti", 5, "Cinsiyeti (nüfus)"),
                                 textField("Ogr_Nufus_Medeni_Hali", 5, "Medeni hali"),
                                 textField("Ogr_Nufus_KanGrubu", 2, "Kan grubu"),
                                 textField("Ogr_Nufus_Dini", 10, "Dini"),
                                 textField("Ogr_Nufus_Uyrugu", 10, "Uyruğu")});
}

void addContact(Fields& fields) {
    fields.insert(fields.end(), {textField("Ogr_Adresi1", 60, "Adresi"),
                                 textField("Ogr_Adresi2", 60, "Adresi (devamı)"),
                                 textField("Ogr_Semt", 30, "Semt"),
                                 textField("Ogr_ili", 30, "İl"),
                                 textField("Ogr_Telefon", 20, "Telefon"),
                                 textField("Ogr_Cep_Telefon", 20, "Cep telefonu"),
                                 textField("Ogr_Veli_Adi", 30, "Veli adı"),
                                 textField("Ogr_Veli_Soyadi", 30, "Veli soyadı"),
                                 textField("veli_tc", 11, "Veli T.C. kimlik no"),
                                 textField("Ogr_Veli_Yakinlik", 20, "Yakınlığı"),
                                 textField("Ogr_Veli_Meslegi", 40, "Veli mesleği"),
                                 textField("Ogr_veli_Dogum_Tarihi", 10, "Veli doğum tarihi"),
                                 textField("Ogr_veli_Dogum_Yeri", 30, "Veli doğum yeri"),
                                 textField("Ogr_Veli_Adresi1", 60, "Veli adresi"),
                                 textField("Ogr_Veli_Adresi2", 60, "Veli adresi (devamı)"),
                                 textField("Ogr_Veli_semt", 30, "Veli semti"),
                                 textField("Ogr_Veli_il", 30, "Veli ili"),
                                 textField("Ogr_Veli_Ev_Tel", 20, "Veli ev telefonu"),
                                 textField("Ogr_Veli_is_Tel", 20, "Veli iş telefonu"),
                                 textField("Ogr_Veli_Cep_Tel", 20, "Veli cep telefonu"),
                                 textField("Ogr_veli_is_adres1", 60, "Veli iş adresi"),
                                 textField("Ogr_veli_is_adres2", 60, "Veli iş adresi (devamı)"),
                                 textField("Ogr_veli_is_semt", 30, "Veli iş semti"),
                                 textField("Ogr_veli_is_il", 30, "Veli iş ili")});
}

void addLeaving(Fields& fields) {
    fields.insert(
        fields.end(),
        {textField("Ogr_BitirmeyeGirecek", 5, "Bitirme sınavına girecek"),
         textField("Ogr_Bitirme", 10, "Bitirme notu"), textField("Ogr_Sinav_Tarihi", 10, "Sınav tarihi"),
         textField("Ogr_Belge_Cinsi", 2, "Belge cinsi"), textField("Ogr_Belge_Sayisi", 20, "Belge sayısı"),
         textField("Ogr_Belge_Tarihi", 10, "Belge tarihi"), textField("Ogr_BelgeVerildi", 5, "Belge verildi"),
         textField("Ogr_Gittigi_Belge_Cinsi", 30, "Ayrılırken verilen belge"),
         textField("Ogr_Gittigi_Belge_Sayisi", 20, "Verilen belge sayısı"),
         textField("Ogr_Gittigi_Belge_SeriNo", 20, "Verilen belge seri no"),
         textField("Ogr_Gittigi_Belge_Tarihi", 10, "Verilen belge tarihi"),
         emptyText("Ogr_Ayrilis_Nedeni", 40, "Ayrılış nedeni"),
         textField("Ogr_AyrilisNedeni", 40, "Ayrılış nedeni (eski)"),
         textField("Ogr_Kalfa_Ayrilis_sebebi", 40, "Kalfalıktan ayrılış sebebi"),
         textField("Ogr_Kalfa_zorunlu_calisma", 40, "Zorunlu çalışma süresi"),
         yesNoField("dilekceVerdi", "Dilekçe verdi"), yesNoField("check_ktr", "Kontrol edildi")});
}

} // namespace

TableDeclaration studentTable() {
    TableDeclaration table{DatabaseKind::Level, "OgrenciBilgisi", {}, {}, {}};
    addIdentity(table.fields);
    addProgramme(table.fields);
    addWorkplace(table.fields);
    addCivilRegistry(table.fields);
    addContact(table.fields);
    addLeaving(table.fields);
    table.indexes = {
        {"indNumara", {"Ogr_Numarasi", "DersID"}, IndexDeclaration::Unique},
        {"indKayitNo", {"Ogr_Kayit_No"}, IndexDeclaration::Plain},
        {"indAdSoyad", {"Ogr_Adi", "Ogr_Soyadi"}, IndexDeclaration::Plain},
        {"indMernis", {"Ogr_Mernis"}, IndexDeclaration::Plain},
        {"indMeslek", {"Ogr_MeslekKod", "DersID"}, IndexDeclaration::Plain},
        {"indSinif", {"Ogr_Sinif"}, IndexDeclaration::Plain},
        {"indIsyeri", {"Ogr_calistigi_isyerinin_adi"}, IndexDeclaration::Plain},
        {"indKoordinator", {"Ogr_Koordinator_Ogretmen"}, IndexDeclaration::Plain},
    };
    return table;
}

} // namespace orvan

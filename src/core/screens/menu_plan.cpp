// core/screens/menu_plan.cpp — the menus, one family of commands each. The Alt letters of the menu bar
// (Ç B Ö L G Z V Ş İ O P Y) are not used in any screen.
#include "core/screens/menu_plan.h"

namespace orvan {

namespace {

constexpr MenuCommand kLine{nullptr, nullptr};

constexpr MenuCommand kMaintenance[] = {
    {"YedekAl", "&Bilgilerin Yedeğini Al"}, {"YedekAc", "&Alınan Yedeği Geri Yükle"},    kLine,
    {"Tamir", "&Data Bakım Onarım"},        {"DosyaBakimIslemi", "D&osya Bakım İşlemi"},
};
constexpr MenuPlan kMaintenanceMenu{"menuBakim", "&Bakım", kMaintenance};

constexpr MenuCommand kWork[] = {
    {"ToolKalfa", "&Kalfa Adayları"},
    {"ToolUsta", "&Usta Adayları"},
    {"ToolUstaOgretici", "Usta &Öğretici Adayları"},
    {"Toolisyeriacma", "İş&yeri Açma"},
    {"ToolDenklikK", "Kalfa &Denklik Adayları"},
    {"ToolDenklikU", "Usta D&enklik Adayları"},
    kLine,
    {"NormalArsiv", "&Normal Arşiv"},
    {"MezunlarArsiv", "&Mezunlar Arşivi…"},
    {"AyrilmaArsiv", "&Ayrılma Arşivi…"},
    kLine,
    {nullptr, nullptr, nullptr, nullptr, &kMaintenanceMenu},
    kLine,
    {"KullaniciDegis", "Kullanıcı Değiş&tir…"},
    {"Cikis", "&Çıkış"},
};

constexpr MenuCommand kSettings[] = {
    {"SabitBilgiler", "&Kuruma Ait Bilgiler"},
    {"ToolSigortaSabit", "&Sigorta Sabit Bilgileri"},
    {"DonemBilgileri", "&Dönem Bilgileri"},
    kLine,
    {"KanunMaddeleri", "Kanun &Maddeleri"},
    {"PratikEgitim", "&Pratik Eğitim Yerleri"},
    {"OgrenimDurum", "&Öğrenim Durumları"},
    {"MeslekOdalari", "Meslek &Odaları"},
    {"IsletmeSemt", "Semt &Bilgileri"},
    {"MudurYrd", "Müdür &Yardımcıları"},
    kLine,
    {"Sinif", "Sı&nıf Bilgileri"},
    {"DersHavuzu", "Ders &Havuzu"},
    {"AnaMeslek", "&Ana Meslekler"},
    {"Meslekler", "M&eslekler"},
    {"MeslekDers", "Mes&leğe Ait Dersler"},
    kLine,
    {"Kullanici", "Yeni K&ullanıcı / Kullanıcı Hakları"},
};

constexpr MenuCommand kMessages[] = {
    {"GenelSMS", "&SMS ile Ortak Mesaj Gönderimi"},
    {"frm_SMSYeni", "SMS İle &Devamsızlık ve Sınav Bilgilerinin Gönderimi"},
    {"Frm_SMSSendList", "&Gönderilen Mesajlar"},
};
constexpr MenuPlan kMessagesMenu{"menuSms", "&SMS", kMessages};

constexpr MenuCommand kStudents[] = {
    {"ogrencikayit", "&Öğrenci Bilgileri Kayıt", "F8", "Öğrenci Kayıt"},
    {"HizliOgrenciKayit", "&Hızlı Öğrenci Kayıt", "F6", "Hızlı Kayıt"},
    {"İşyeri Açma", "İşyeri &Açma"},
    kLine,
    {"OgrenciARA", "A&rşivlerde Öğrenci Ara", "F9", "Öğrenci Ara"},
    {"OgrenciListesiSinifBaz", "Öğrenci &Listesi - Sınıf Bazında", "F7", "Öğrenci Listesi"},
    {"OgrenciListesiIsletmeBaz", "Öğrenci Listesi - İşletme &Bazında"},
    {"OgrenciKontrol", "Öğrenci Bilgisi &Kontrol"},
    kLine,
    {"AdSoyadNumaraDegistirme", "Öğrenci Ad, Soyad &ve Numara Değiştirme"},
    {"OgrenciKilitKaldir", "Ö&ğrenci Kilitleri Kaldırma"},
    {"DersAta", "&Toplu Ders Atama"},
    kLine,
    {nullptr, nullptr, nullptr, nullptr, &kMessagesMenu},
};

constexpr MenuCommand kDocuments[] = {
    {"OgrenciBelgesi", "&Öğrenci Belgesi"},
    {"KalfalikDurum", "&Kalfalık/Ustalık Durum Belgesi"},
    {"Askerlik", "&Askerlik Erteleme Yazısı"},
    {"OgrenciNakilBelgesi", "Öğrenci &Nakil Belgesi"},
    {"OgrenciSinavNakilBelgesi", "Öğrenci &Sınav Nakil Belgesi"},
    {"OgrenciTanitimKarti", "(&Form 5) Öğrenci Tanıtım Kartı"},
    {"Rehberlik", "(Form &13) Rehberlik Formu"},
    {"ZumreTutanak", "(Form &3) Zümre Tutanağı"},
    kLine,
    {"OgrenciKutuk", "Öğrenci Kütük &Defteri"},
    {"CirakOnkayitDefteri", "&Çırak Öğrenci Önkayıt Defteri"},
    {"OgretmenOgrenciListesi", "Koordinatör Öğretmen Öğrenci &Listesi"},
    {"IsletmelereGidenOgrenci", "İşletmelere &Gönderilen Öğrenci Listesi"},
    kLine,
    {"SerbestMektup", "Serbest &Mektup Hazırlama"},
    {"CokAmacliOgrenci", "Çok Amaçlı &Raporlama (Öğrenci)"},
    {"DigerFormlar", "Di&ğer Formlar"},
};

constexpr MenuCommand kInsurance[] = {
    {"Gunisleme", "&Sigorta Günü Hesaplama - İzin, Rapor İşleme", nullptr, "Sigorta Günleri"},
    {"PirimKes", "&Bitirme Sınavlarına Göre Prim Kesimi"},
    {"PirimTemizleme", "&Öğrenci Prim Günü Temizleme"},
    kLine,
    {"AylikSigorta", "&Aylık Prim ve Hizmet Belgesi", nullptr, "Aylık Bildirge"},
    {"DiziPusulasi", "&Dizi Pusulası"},
    {"IseGirisYeni", "İşe &Giriş Bildirgesi"},
    {"Sozlesme", "&Çıraklık Sözleşmesi"},
};

constexpr MenuCommand kAbsences[] = {
    {"DevamGiris", "&Devamsızlık Girişi", "F11", "Devamsızlık"},
    {"SinifDevam", "&Sınıf Bazında Devamsızlık Girişi (B)"},
    {"SinifdevamNEW", "Sınıf &ve Öğrenci Bazında Devamsızlık Girişi"},
    {"DersDevam", "Ders &Bazında Devamsızlık Girişi"},
    kLine,
    {"DevamsizlikBildirimi", "Devamsızlık &Listesi ve Bildirim Formu"},
    {"DevamDefteriBolum", "D&evamsızlık Defteri (Bölüm)"},
    {"DevamDefteriSinif", "Dev&amsızlık Defteri (Sınıf)"},
    {"UyariAlanlar", "&Uyarı Alanlar Listesi"},
};

constexpr MenuCommand kMarks[] = {
    {"NotGiris", "&Ara Sınav Notu Girişi (Meslek - Öğrenci)", "F12", "Notlar"},
    {"DersNotGiris", "Ara &Sınav Notu Girişi (Meslek - Ders)"},
    {"SinifNotGiris", "Ara Sınav &Notu Girişi (Sınıf - Öğrenci) (B)"},
    {"SinifDersNotFisi", "Ara Sınav Notu &Girişi (Sınıf - Ders) (B)"},
    kLine,
    {"ToolAraSinavNotFisiBasimi", "Ara Sınav Not &Fişi Basımı (Sınıf)"},
    {"ToolAraSinavNotFisiBasimiOgrenci", "Ara Sınav Not Fişi &Basımı (Toplu)"},
    {"ToolAraSinavNotCizelgesiMeslek", "Ara Sınav Not &Çizelgesi (Meslek)"},
    {"ToolAraSinavNotCizelgesiSinif", "A&ra Sınav Not Çizelgesi (Sınıf)"},
};
constexpr MenuPlan kMarksMenu{"menuAraSinavlar", "&Ara Sınavlar", kMarks};

constexpr MenuCommand kReports[] = {
    {"ToolAraKarneMeslek", "&Ara Karne Basımı (Meslek)"},
    {"ToolAraKarneSinif", "Ara &Karne Basımı (Sınıf)"},
    {"ToolKarneMeslek", "Karne &Basımı (Meslek)"},
    {"ToolKarneSinif", "Karne Basımı (&Sınıf)"},
    kLine,
    {"ToolOnurSinif", "&Onur Belgesi (Sınıf)"},
    {"OgrTakdirTesekkur", "&Öğrenci Takdir/Teşekkür Listeleri (Dönem-Sınıf-Meslek)"},
    {"ToolDonemNot", "Öğrenci &Tüm Dönem Notları"},
};
constexpr MenuPlan kReportsMenu{"menuKarneler", "&Karneler ve Belgeler", kReports};

constexpr MenuCommand kExamPlan[] = {
    {"ToolSinavDonem", "&Sınav Dönemleri Giriş-Düzeltme-Silme"},
    {"ToolSinavAktif", "&Aktif Sınav Dönemini Belirle"},
    {"ToolSinavPlan", "Sınav &Bilgilerini Tanımlama"},
    kLine,
    {"SinavGirisBelgesi", "Sınav &Giriş Belgesi"},
    {"ToolSinavaCagri", "Bitirme Sınavına &Çağrı Belgesi"},
    {"SinavTarihAktar", "Sınav &Tarihlerinin Öğrencilere Aktarılması"},
    {"SinavAl", "Splan &Oto Programından Öğrenci Sınav Tarihlerini Al"},
};
constexpr MenuPlan kExamPlanMenu{"menuSinavPlani", "Sınav &Dönemleri ve Planı", kExamPlan};

constexpr MenuCommand kFinals[] = {
    {"HakKazananlar", "&Bitirme Sınavına Girmeye Hak Kazananlar Listesi"},
    {"BitirmeSinavinaGireceklerinListesi", "Bitirme &Sınavına Gireceklerin Listesi (Meslek Bazında)"},
    kLine,
    {"BitirmeSinav", "Bitirme Sınavları &Not Girişi (Öğrenci Bazında)"},
    {"BitirmeNotGirisiDers", "Bitirme Sınavları Not &Girişi (Ders Bazında)"},
    {"Bitirme_NotFis", "Bitirme Sınavları Not &Fişi Basımı"},
    {"BitirmeSinavNotCizelgesi", "Sınav Not &Çizelgesi"},
    kLine,
    {"BitirmeSinaviSonucListeleri", "Bitirme Sınavı Sonuç &Listeleri"},
    {"BelgeAlanlar", "Belge &Almaya Hak Kazananlar Listesi"},
    {"BelgeDefteri", "Belge &Defteri"},
};
constexpr MenuPlan kFinalsMenu{"menuBitirme", "&Bitirme Sınavları", kFinals};

constexpr MenuCommand kExams[] = {
    {nullptr, nullptr, nullptr, nullptr, &kMarksMenu},
    {nullptr, nullptr, nullptr, nullptr, &kReportsMenu},
    {nullptr, nullptr, nullptr, nullptr, &kExamPlanMenu},
    {nullptr, nullptr, nullptr, nullptr, &kFinalsMenu},
};

constexpr MenuCommand kDuties[] = {
    {"KordOgretmenGorevGunleri", "(&Form 11) Koordinatör Öğretmen Görev Günlerini Gösterir Çizelge"},
    {"OgretmenAylikGorev", "(Form &12) Koordinatör Öğretmenin Aylık Görev Formu"},
    {"UstKoordinatorDagilim", "&Koordinatör Öğretmen Görev Yazısı"},
    {"KoordinatorDagilim", "Koordinatör &Öğretmen Öğrenci Dağılımı"},
    {"KoordinatorOgretmenler", "Koordinatör Öğretmenler &Listesi"},
    {"CokAmacliOgretmen", "&Çok Amaçlı Raporlama (Koordinatör Öğretmen)"},
    kLine,
    {"GorevGiris", "&Görev Günleri için Başlangıç-Bitiş Saatlerinin Girişi"},
    {"OgretmenGorevTakipMenu", "Ö&zel İşlemler"},
};
constexpr MenuPlan kDutiesMenu{"menuGorev", "Öğretmen &Görevleri", kDuties};

constexpr MenuCommand kWorkplaces[] = {
    {"Isletme", "İşletme &Bilgisi", nullptr, "İşletmeler"},
    {"Koordinator", "&Koordinatör Öğretmen Bilgisi"},
    kLine,
    {"IsletmeListesi", "İşletmeler &Listesi"},
    {"Dagilim1", "İşletmelerdeki &Personel Sayıları"},
    {"Dagilim2", "&Öğrencilerin İşletmelere Göre Dağılımı"},
    {"MeslekAlanTespit", "(&Form 1) İşletme ve Meslek Alanlarını Tespit Protokolu"},
    {"MeslekAlanBildirme", "(Form &2) Meslek Alanlarını Bildirme Formu"},
    {"CokAmacliIsletme", "&Çok Amaçlı Raporlama (İşletme)"},
    kLine,
    {nullptr, nullptr, nullptr, nullptr, &kDutiesMenu},
};

constexpr MenuCommand kStatistics[] = {
    {"istatistik1", "(&Form 14) İstatistik Bilgi Formu"}, {"istatistik2", "İşletme &ve Öğrenci İstatistiği"},
    {"istatistik3", "&Toplu Öğrenci İstatistiği"},        {"istatistik4", "İ&LSİS İstatistikleri"},
    {"istatistik5", "&Çırak, Kalfa ve Usta Sayıları"},    kLine,
    {"SinifOgrenciSayilari", "&Sınıf Öğrenci Sayıları"},
};

constexpr MenuCommand kBulkStudents[] = {
    {"TopluSinifIsleme", "&Sınıf İşleme"},
    {"TopluSinifDegistirme", "&Toplu Sınıf Değiştirme (Öğrenci)"},
    {"TopluDonemIsleme", "&Öğrenci Dönem Atlatma"},
    {"TopluAyrilisTarihiIsleme", "&Ayrılış Tarihi İşleme"},
    {"TupluKayitDurumuIsleme", "&Kayıt Durum İşleme"},
    {"TopluSemtKoduIsleme", "S&emt Kodu İşleme"},
    {"TopluTcKimlikIsleme", "T.C.Kimlik &No İşleme"},
    {"TopluDogumTarihiIsleme", "Öğrenci &Doğum Tarihi İşleme"},
    {"TopluEskiIsletmeIsleme", "Öğrenci Eski İşletme &Bilgisi İşleme"},
    {"TopluDevamIslemleri", "Toplu Devamsızlık &ve Uyarı Tarihi Değiştirme"},
    kLine,
    {"TopluBilgiDuzenleme", "Bi&lgi Düzenleme"},
    {"TopluAdresDuzenleme", "&Hızlı Öğrenci Adresi Düzenleme"},
    {"TopluKayitKutukDuzenleme", "T&oplu Kayıt ve Kütük Numarası Düzenleme"},
    kLine,
    {"TopluArsiveGonderme", "To&plu Arşivler Arası Öğrenci Aktarma"},
    {"frmOgrenciBilgisiSil", "Topl&u Öğrenci Bilgisi Silme"},
};
constexpr MenuPlan kBulkStudentsMenu{"menuTopluOgrenci", "&Öğrenci Bilgileri", kBulkStudents};

constexpr MenuCommand kBulkInsurance[] = {
    {"SigortaYatmayacakIsleme", "&Sigorta Yatırılmayacakları İşleme"},
    {"TopluSigortaTarihiIsleme", "&Toplu Sigorta Tarih İşlemleri"},
    {"TopluSSKNoIsleme", "SSK &No İşleme"},
    {"TopluSSKNO", "İnternetten SSK No &ve TC No Getir"},
};
constexpr MenuPlan kBulkInsuranceMenu{"menuTopluSigorta", "&Sigorta", kBulkInsurance};

constexpr MenuCommand kBulkWorkplaces[] = {
    {"KoordinatorIsleme", "&Koordinatör Öğretmen İşleme"},
    {"MudurYardimcisiIsleme", "&Sorumlu Müdür Yardımcısı İşleme"},
    {"TopluKoorveIsletmeIsleme", "&Öğrenciye Koordinatör Öğretmen ve İşletme İşleme"},
    {"IsletmelereKoordinator", "İ&şletmelere Koordinatör Öğretmen İşleme"},
    kLine,
    {"TopluIsletmeDuzenleme", "&Toplu İşletme Bilgisi Düzenleme"},
    {"OgretmenGorevGunleriGirisi", "Öğretmenlerin &Görev Günleri Girişi"},
};
constexpr MenuPlan kBulkWorkplacesMenu{"menuTopluIsletme", "&Koordinatör ve İşletme", kBulkWorkplaces};

constexpr MenuCommand kBulkCourses[] = {
    {"TopluDersKodu", "&Toplu Ders Kodu Düzenleme"},
    {"TopluMeslekDersIsleme", "&Meslek Derslerinden Öğrencilere Toplu Ders İşleme"},
    {"TopluSinifDersIsleme", "&Sınıf Bazında Toplu Ders İşleme"},
    {"ToolTopluDersSilme", "Toplu &Ders Silme"},
    kLine,
    {"DonemOrtalamaGuncelle", "Dönem &Ortalamalarını Güncelle"},
    {"BitirmeOlustur", "&Bitirme Derslerini Oluşturma"},
    {"TopluUygulamaSinaviTarihiHesapla", "&Uygulama Sınavı Tarihi Hesapla"},
};
constexpr MenuPlan kBulkCoursesMenu{"menuTopluDers", "&Dersler ve Notlar", kBulkCourses};

constexpr MenuCommand kOnline[] = {
    {"SifreHazirla", "&OrvanNet için Öğrenci Şifrelerini Hazırlama"},
    {"SifreYazdir", "OrvanNet için &Öğrenci Şifrelerini Yazdırma"},
    {"GenelDuyuru", "OrvanNet için &Çıkacak Duyurular"},
};
constexpr MenuPlan kOnlineMenu{"menuOrvanNet", "&OrvanNet", kOnline};

constexpr MenuCommand kBulk[] = {
    {nullptr, nullptr, nullptr, nullptr, &kBulkStudentsMenu},
    {nullptr, nullptr, nullptr, nullptr, &kBulkInsuranceMenu},
    {nullptr, nullptr, nullptr, nullptr, &kBulkWorkplacesMenu},
    {nullptr, nullptr, nullptr, nullptr, &kBulkCoursesMenu},
    kLine,
    {nullptr, nullptr, nullptr, nullptr, &kOnlineMenu},
};

constexpr MenuPlan kMenus[] = {
    {"menuCalisma", "&Çalışma", kWork},
    {"menuSabitBilgiler", "Sabit &Bilgiler", kSettings},
    {"menuOgrenci", "&Öğrenci", kStudents},
    {"menuBelgeler", "Be&lgeler", kDocuments},
    {"menuSigorta", "Si&gorta", kInsurance},
    {"menuDevamsizlik", "Devamsı&zlık", kAbsences},
    {"menuSinavlar", "Sına&vlar", kExams},
    {"menuIsletme", "İ&şletme ve Öğretmen", kWorkplaces},
    {"menuIstatistik", "&İstatistik", kStatistics},
    {"menuToplu", "T&oplu İşlemler", kBulk},
};

} // namespace

std::span<const MenuPlan> menuPlans() { return kMenus; }

} // namespace orvan

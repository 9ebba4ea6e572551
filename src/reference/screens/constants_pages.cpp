// reference/screens/constants_pages.cpp — see constants_pages.h.
#include "reference/screens/constants_pages.h"

#include "core/values.h"

namespace orvan {
namespace {

constexpr int kLine = 40, kShort = 16;

// Builds the fields of a page column by column.
class Fields {
  public:
    Fields& column(int column) {
        column_ = column;
        return group({});
    }
    Fields& group(const QString& title) {
        group_ = title;
        return *this;
    }
    FormField& add(const QString& name, const QString& label, FieldKind kind = FieldKind::Text,
                   int width = kLine) {
        FormField field{name, label, kind, 0, width, column_, group_};
        fields_.push_back(std::move(field));
        return fields_.back();
    }
    FormField& number(const QString& name, const QString& label, double most, int width = 8) {
        FormField& field = add(name, label, FieldKind::Number, width);
        field.limits = {0, most, 0};
        return field;
    }
    void rate(const QString& name, const QString& label) {
        add(name, label, FieldKind::Decimal, 10).limits = {0, 100, 5};
    }
    void money(const QString& name, const QString& label) { add(name, label, FieldKind::Money, 14); }
    void days(const QString& name, const QString& label, int decimals) {
        add(name, label, FieldKind::Decimal, 8).limits = {0, 366, decimals};
    }
    std::vector<FormField> take() { return std::move(fields_); }

  private:
    std::vector<FormField> fields_;
    int column_ = 0;
    QString group_;
};

QString numbered(const char* pattern, int number) { return QString::fromUtf8(pattern).arg(number); }

FormPage identityPage() {
    Fields page;
    page.add(QStringLiteral("SB_Okul_Adi"), QStringLiteral("&Kurum adı:"));
    page.add(QStringLiteral("SB_Okul_Kodu"), QStringLiteral("Okul kodu:"), FieldKind::Code, kShort);
    page.add(QStringLiteral("SB_Kurum_Numarasi"), QStringLiteral("Kurum &numarası:"), FieldKind::Code,
             kShort);
    page.add(QStringLiteral("SB_VergiNo"), QStringLiteral("Vergi no:"), FieldKind::Code, kShort);
    page.add(QStringLiteral("SB_TCKimlikNo"), QStringLiteral("T.C. kimlik no:"), FieldKind::Code, kShort);
    page.add(QStringLiteral("SB_Mudur_Adi"), QStringLiteral("&Müdürün adı:"));
    page.column(1);
    page.add(QStringLiteral("SB_Okul_Adres1"), QStringLiteral("&Adres:"));
    page.add(QStringLiteral("SB_Okul_Adres2"), QStringLiteral("Adres (devamı):"));
    page.add(QStringLiteral("SB_Semt"), QStringLiteral("Semt:"), FieldKind::Text, 24);
    page.add(kProvinceField, QStringLiteral("İl:"), FieldKind::Choice, 24);
    page.add(kDistrictField, QStringLiteral("İlçe:"), FieldKind::Choice, 24);
    page.add(QStringLiteral("SB_PostaKodu"), QStringLiteral("Posta kodu:"), FieldKind::Code, 8);
    page.add(QStringLiteral("ULKE_Kodu"), QStringLiteral("Ülke kodu:"), FieldKind::Code, 8);
    page.add(QStringLiteral("SB_Telefon"), QStringLiteral("Tele&fon:"), FieldKind::Code, kShort);
    page.add(QStringLiteral("SB_EPosta"), QStringLiteral("E-posta:"), FieldKind::Code, kLine);
    return {QStringLiteral("kurum"), QStringLiteral("Kurum"), page.take()};
}

FormPage headingsPage() {
    Fields page;
    page.group(QStringLiteral("Basılı belgelerin başlıkları"));
    page.add(QStringLiteral("SB_Baslik"), QStringLiteral("Başlık:"));
    for (int i = 1; i <= 4; ++i)
        page.add(numbered("SB_Baslik%1", i), numbered("%1. başlık satırı:", i));
    page.group(QStringLiteral("Onay ve imzalar"));
    for (int i = 1; i <= 5; ++i)
        page.add(numbered("SB_Onay%1", i), numbered("%1. onay:", i));
    return {QStringLiteral("basliklar"), QStringLiteral("Başlık ve İmzalar"), page.take()};
}

FormPage programsPage() {
    Fields page;
    page.group(QStringLiteral("Program adları"));
    for (int i = 1; i <= 5; ++i)
        page.add(numbered("SB_Program%1", i), numbered("%1. program:", i), FieldKind::Text, 32);
    page.column(1).group(QStringLiteral("Program yerleri"));
    for (int i = 1; i <= 5; ++i)
        page.add(numbered("SB_Program%1_yer", i), numbered("%1. yer:", i), FieldKind::Text, 32);
    page.group(QStringLiteral("Karma yerleri"));
    page.add(QStringLiteral("SB_Karma_yer"), QStringLiteral("1. yer:"), FieldKind::Text, 32);
    for (int i = 2; i <= 5; ++i)
        page.add(numbered("SB_Karma_yer%1", i), numbered("%1. yer:", i), FieldKind::Text, 32);
    return {QStringLiteral("programlar"), QStringLiteral("Programlar"), page.take()};
}

FormPage yearPage() {
    Fields page;
    page.group(QStringLiteral("Ders yılı ve dönem"));
    page.add(QStringLiteral("SB_Ders_Yili"), QStringLiteral("Ders yılı:"), FieldKind::Code, 12).tip =
        QStringLiteral("2008-2009 gibi");
    page.add(kTermField, QStringLiteral("Dönem:"), FieldKind::Choice, kShort);
    page.add(QStringLiteral("SB_Donem_Baslama_Tarihi"), QStringLiteral("Dönem başlama tarihi:"),
             FieldKind::Date, 12);
    page.add(QStringLiteral("SB_Donem_Bitis_Tarihi"), QStringLiteral("Dönem bitiş tarihi:"), FieldKind::Date,
             12);
    page.group(QStringLiteral("Kütük"));
    page.number(QStringLiteral("KutukHane"), QStringLiteral("Kütük numarası hane sayısı:"), 10);
    return {QStringLiteral("yil"), QStringLiteral("Yıl, Dönem ve Kütük"), page.take()};
}

FormPage absencesPage() {
    Fields page;
    const struct {
        const char* suffix;
        const char* title;
    } families[] = {{"4", "Okul devamsızlığı sınırları (gün)"}, {"", "Yıl sonu sonucundaki sınırlar (gün)"}};
    for (int column = 0; column < 2; ++column) {
        const QString suffix = QLatin1String(families[column].suffix);
        const int decimals = suffix.isEmpty() ? 0 : 1; // the year's end counts whole days
        page.column(column).group(QString::fromUtf8(families[column].title));
        page.days(QStringLiteral("SB_KalfaDevamsizUyariSiniri") + suffix,
                  QStringLiteral("Kalfa uyarı sınırı:"), decimals);
        page.days(QStringLiteral("SB_KalfaDevamsizKalmaSiniri") + suffix,
                  QStringLiteral("Kalfa kalma sınırı:"), decimals);
        page.days(QStringLiteral("SB_UstaDevamsizUyariSiniri") + suffix, QStringLiteral("Usta uyarı sınırı:"),
                  decimals);
        page.days(QStringLiteral("SB_UstaDevamsizKalmaSiniri") + suffix, QStringLiteral("Usta kalma sınırı:"),
                  decimals);
    }
    return {QStringLiteral("devamsizlik"), QStringLiteral("Devamsızlık"), page.take()};
}

FormPage marksPage() {
    Fields page;
    page.group(QStringLiteral("Not düzeni"));
    page.add(QStringLiteral("SB_NotDuzeni"), QStringLiteral("Not düzeni:"), FieldKind::Text, kShort);
    page.add(QStringLiteral("SB_NotTarihi"), QStringLiteral("Not tarihi:"), FieldKind::Date, 12);
    page.column(1).group(QStringLiteral("Notların yazıyla karşılıkları"));
    const char* const words[] = {"Sifir", "Bir",  "Iki",   "Uc",    "Dort", "Bes",
                                 "Alti",  "Yedi", "Sekiz", "Dokuz", "On"};
    for (int mark = 0; mark <= 10; ++mark)
        page.add(QStringLiteral("SB_Not") + QLatin1String(words[mark]), numbered("%1:", mark),
                 FieldKind::Text, 20);
    return {QStringLiteral("notlar"), QStringLiteral("Not Düzeni"), page.take()};
}

FormPage messagesPage() {
    Fields page;
    page.group(QStringLiteral("SMS işlemleri"));
    page.add(QStringLiteral("SMS_user"), QStringLiteral("Kullanıcı adı:"), FieldKind::Code, 24);
    page.add(QStringLiteral("SMS_password"), QStringLiteral("Şifre:"), FieldKind::Password, 24);
    page.add(QStringLiteral("GSM_number"), QStringLiteral("GSM numarası:"), FieldKind::Code, kShort);
    page.add(QStringLiteral("GSM_prefix"), QStringLiteral("GSM ön eki:"), FieldKind::Code, 10);
    page.add(QStringLiteral("SMS_paket"), QStringLiteral("SMS paketi:"), FieldKind::Text, 20);
    return {QStringLiteral("sms"), QStringLiteral("SMS İşlemleri"), page.take()};
}

FormPage switchesPage() {
    Fields page;
    page.group(QStringLiteral("Sigorta günü hesabı"));
    page.add(kPremiumTypeField, QStringLiteral("Prim hesaplama tipi:"), FieldKind::Choice, 28);
    page.number(QStringLiteral("SB_AyHesap"), QStringLiteral("Ay hesabı:"), 255);
    page.add(kAgeRuleField, QStringLiteral("16 yaşın dolduğu ay:"), FieldKind::Choice, 28);
    page.add(QStringLiteral("SB_YasHesaplamaTipi"), QStringLiteral("Yaş hesaplama tipi:"), FieldKind::Code,
             6);
    page.number(QStringLiteral("SB_ORAN"), QStringLiteral("Oran (%):"), 100);
    page.add(QStringLiteral("SB_SSK_SURE"), QStringLiteral("Sigorta süresi:"), FieldKind::Code, 12);
    page.add(QStringLiteral("SB_IzinSigortadanDusulsun"), QStringLiteral("İzi&n günleri sigortadan düşülsün"),
             FieldKind::Check);
    page.add(QStringLiteral("SB_RaporSigortadanDusulsun"),
             QStringLiteral("Rapor günleri sigortadan düşülsün"), FieldKind::Check);
    page.column(1).group(QStringLiteral("Vergi ve kesintiler"));
    page.add(QStringLiteral("SB_DamgaVergisiYazilsin"), QStringLiteral("Da&mga vergisi yazılsın"),
             FieldKind::Check);
    page.rate(QStringLiteral("SB_DamgaVergisi"), QStringLiteral("Damga vergisi (%):"));
    page.rate(QStringLiteral("SB_ozel_is_vergisi"), QStringLiteral("Özel işlem vergisi (%):"));
    page.rate(QStringLiteral("SB_Egitime_Katki_Payi"), QStringLiteral("Eğitime katkı payı (%):"));
    return {QStringLiteral("hesap"), QStringLiteral("Hesaplama"), page.take()};
}

FormPage ratesPage() {
    Fields page;
    page.group(QStringLiteral("Prim oranları (%)"));
    page.rate(QStringLiteral("SB_prim_cirak_hastalik_sigortasi"),
              QStringLiteral("Çırak hastalık sigortası:"));
    page.rate(QStringLiteral("SB_prim_is_kazalari_hastalik_sigortasi"),
              QStringLiteral("İş kazası ve meslek hastalığı:"));
    page.rate(QStringLiteral("SB_prim_hastalik_sigortasi"), QStringLiteral("Hastalık sigortası:"));
    page.rate(QStringLiteral("SB_prim_malulluk_sigortasi"), QStringLiteral("Malullük sigortası:"));
    page.rate(QStringLiteral("SB_prim_Analik_sigortasi"), QStringLiteral("Analık sigortası:"));
    page.column(1).group(QStringLiteral("Ücret tutarları"));
    page.money(QStringLiteral("SB_Asgari_ucret1"), QStringLiteral("Asgari ücret (birinci dönem):"));
    page.money(QStringLiteral("SB_Asgari_ucret2"), QStringLiteral("Asgari ücret (ikinci dönem):"));
    page.money(QStringLiteral("SB_Asgari_Ucret_Sonuc1"), QStringLiteral("Günlük tutar (birinci dönem):"));
    page.money(QStringLiteral("SB_Asgari_Ucret_Sonuc2"), QStringLiteral("Günlük tutar (ikinci dönem):"));
    return {QStringLiteral("oranlar"), QStringLiteral("Oranlar ve Tutarlar"), page.take()};
}

FormPage roundingPage() {
    Fields page;
    const struct {
        const char* name;
        const char* title;
    } kinds[] = {{"Prime_Esas", "Prime esas kazanç"},
                 {"Prim_Kesintileri", "Prim kesintileri"},
                 {"IzinRapor", "İzin ve rapor tutarları"}};
    for (const auto& kind : kinds) {
        page.group(QString::fromUtf8(kind.title));
        const QString start = QStringLiteral("SB_") + QLatin1String(kind.name);
        page.add(start + QStringLiteral("_Detay"), QStringLiteral("Öğrenci tutarı:"), FieldKind::Choice, 24)
            .tip = QStringLiteral("Boş bırakılırsa yuvarlanmaz");
        page.add(start + QStringLiteral("_Toplam"), QStringLiteral("Toplam:"), FieldKind::Choice, 24).tip =
            QStringLiteral("Boş bırakılırsa yukarı yuvarlanır");
    }
    page.column(1).group(QStringLiteral("Yuvarlama"));
    page.add(QStringLiteral("SB_Yuvarlama"), QStringLiteral("Yuvarlama:"), FieldKind::Code, 6);
    page.number(QStringLiteral("SB_Yuvarlama_Katsayisi"), QStringLiteral("Yuvarlama katsayısı:"),
                9'999'999'999.0, 12)
        .tip = QStringLiteral("Boş bırakılırsa 10000");
    return {QStringLiteral("yuvarlama"), QStringLiteral("Yuvarlama"), page.take()};
}

std::vector<FormPage> withWidths(std::vector<FormPage> pages, const Schema& schema) {
    for (FormPage& page : pages)
        for (FormField& field : page.fields)
            if (field.maxLength == 0 && field.kind != FieldKind::Choice)
                field.maxLength = schema.width("SabitBilgiler", utf8(field.name));
    return pages;
}

} // namespace

std::vector<FormPage> schoolPages(const Schema& schema) {
    return withWidths({identityPage(), headingsPage(), programsPage(), yearPage(), absencesPage(),
                       marksPage(), messagesPage()},
                      schema);
}

std::vector<FormPage> insurancePages(const Schema& schema) {
    return withWidths({switchesPage(), ratesPage(), roundingPage()}, schema);
}

QStringList roundingFields() {
    QStringList names;
    for (const char* kind : {"Prime_Esas", "Prim_Kesintileri", "IzinRapor"})
        for (const char* part : {"_Detay", "_Toplam"})
            names << QStringLiteral("SB_") + QLatin1String(kind) + QLatin1String(part);
    return names;
}

} // namespace orvan

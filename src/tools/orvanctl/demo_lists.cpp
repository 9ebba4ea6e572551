// tools/orvanctl/demo_lists.cpp — see demo_lists.h.
#include "tools/orvanctl/demo_lists.h"

#include "core/row_writer.h"
#include "core/values.h"

namespace orvanctl {
namespace {

using jet::Value;
using orvan::textValue;

using Named = DemoDefinition;
constexpr DemoProfession kProfessions[] = {{"1101", "1100", "Otomotiv Mekanikerliği", "Oto Servis"},
                                           {"1102", "1100", "Otomotiv Elektrikçiliği", "Oto Elektrik"},
                                           {"1103", "1100", "Otomotiv Boyacılığı", "Oto Boya"},
                                           {"1201", "1200", "Elektrik Tesisatçılığı", "Elektrik"},
                                           {"1202", "1250", "Soğutma ve İklimlendirme", "Soğutma"},
                                           {"1301", "1300", "Mobilyacılık", "Mobilya"},
                                           {"1401", "1400", "Kuaförlük", "Kuaför Salonu"},
                                           {"1402", "1400", "Erkek Berberliği", "Berber Salonu"},
                                           {"1501", "1500", "Aşçılık", "Lokantası"},
                                           {"1502", "1500", "Pastacılık ve Şekerlemecilik", "Pastanesi"},
                                           {"1601", "1600", "Kadın Giyim Terziliği", "Terzi Evi"},
                                           {"1701", "1700", "Kaynakçılık", "Metal Sanayi"},
                                           {"1702", "1700", "Çelik Konstrüksiyon", "Çelik Yapı"},
                                           {"1801", "1800", "Bilgisayar Teknik Servisi", "Bilgisayar"}};

constexpr Named kDistricts[] = {{"01", "Çarşı"},
                                {"02", "Küçük Sanayi Sitesi"},
                                {"03", "İstasyon"},
                                {"04", "Organize Sanayi Bölgesi"},
                                {"05", "Şirinevler"}};
constexpr Named kChambers[] = {{"01", "Oto Sanatkârları Odası"},
                               {"02", "Elektrikçiler Odası"},
                               {"03", "Marangozlar ve Mobilyacılar Odası"},
                               {"04", "Berberler ve Kuaförler Odası"},
                               {"05", "Lokantacılar ve Pastacılar Odası"},
                               {"06", "Demirciler ve Tornacılar Odası"}};
constexpr Named kPractice[] = {{"01", "Okul Atölyesi"}, {"02", "İşletme"}};

void addDefinitions(orvan::RowWriter& writer, const char* group, std::span<const Named> rows) {
    for (const Named& row : rows)
        writer.add({Value(group), Value(row.code), Value(row.name)});
}

} // namespace

std::span<const DemoProfession> demoProfessions() { return kProfessions; }
std::span<const DemoDefinition> demoDistricts() { return kDistricts; }
std::span<const DemoDefinition> demoChambers() { return kChambers; }

void fillCodeLists(orvan::Connection& level) {
    jet::Table table = level.database().openTable("Parametrik_giris");
    orvan::RowWriter plain(table, {"Ta_Tanim_Grup", "Ta_Tanim_Kod", "Ta_tanim_aciklama"});
    jet::WriteBatch batch(level.database());
    addDefinitions(plain, "Semt Kodu", kDistricts);
    addDefinitions(plain, "MeslekOda", kChambers);
    addDefinitions(plain, "Pr.Eğitim", kPractice);
    batch.commit();
}

std::vector<DemoClass> fillClasses(orvan::Connection& level, DemoRandom& random, int years, int branches) {
    const char* const days[] = {"Pazartesi", "Salı", "Çarşamba", "Perşembe", "Cuma"};
    const struct { const char *from, *to; } halves[] = {{"08:30", "12:00"}, {"13:00", "16:30"}};
    jet::Table table = level.database().openTable("Sinif");
    std::vector<std::string> fields{"SinifAdi", "SinifOgretmeni"};
    for (const char* slot : {"1", "2"})
        for (const char* field : {"EgtGunu_", "EgtDerslik_", "EgtBaslangic_", "EgtBitis_", "EgtOgretmen_"})
            fields.push_back(std::string(field) + slot);
    orvan::RowWriter writer(table, fields);
    std::vector<DemoClass> made;
    jet::WriteBatch batch(level.database());
    for (int year = 1; year <= years; ++year)
        for (int branch = 0; branch < branches; ++branch) {
            const int place = static_cast<int>(made.size());
            const auto teacher = [&](int which) {
                return fullName(makePerson(random, kFirstClassTeacher + place * 2 + which, 1980));
            };
            const QString own = teacher(0), second = teacher(1);
            DemoClass about{year, QStringLiteral("%1-%2").arg(year).arg(QChar('A' + branch)),
                            QString::fromUtf8(days[place % 5])};
            std::vector<Value> row{textValue(about.name), textValue(own)};
            for (int half = 0; half < 2; ++half) {
                const Value more[] = {
                    textValue(about.day), textValue(QStringLiteral("Derslik %1").arg(place + 1)),
                    Value(halves[half].from), Value(halves[half].to), textValue(half == 0 ? own : second)};
                row.insert(row.end(), std::begin(more), std::end(more));
            }
            writer.add(row);
            made.push_back(std::move(about));
        }
    batch.commit();
    return made;
}

void fillSchool(orvan::Connection& constants, const QString& schoolYear) {
    jet::Table table = constants.database().openTable("SabitBilgiler");
    orvan::RowWriter writer(table, {"SB_Okul_Adi", "SB_Okul_Kodu", "SB_Kurum_Numarasi", "SB_Okul_Adres1",
                                    "SB_Telefon", "SB_il_adi", "SB_il_kodu", "SB_ilce_adi", "SB_Ders_Yili",
                                    "SB_Donem", "SB_Mudur_Adi", "SB_Donem_Baslama_Tarihi",
                                    "SB_Donem_Bitis_Tarihi", "SB_KalfaDevamsizKalmaSiniri4",
                                    "SB_UstaDevamsizKalmaSiniri4", "SB_ORAN", "SB_YasHesaplamaUclu"});
    const QString year = schoolYear.left(4);
    writer.add({Value("Örnek Mesleki Eğitim Merkezi"), Value("000000"), Value("000000"),
                Value("Atatürk Caddesi No: 1"), Value("0312 000 00 00"), Value("ANKARA"), Value("06"),
                Value("ÇANKAYA"), textValue(schoolYear), Value("1.DÖNEM"), Value("Gülşen Işıldar"),
                textValue(QStringLiteral("08.09.") + year),
                textValue(QStringLiteral("19.06.") + schoolYear.right(4)), Value(6.0), Value(6.0),
                Value("50"), Value("B")});
}

void fillMadeUpWages(orvan::Connection& constants, QDate today) {
    constexpr int kMonths = 24;
    constexpr int kLeftOut = 9; // months ago; so that a missing month can be seen
    constexpr double kAdult = 1000.0, kYoung = 850.0, kStep = 10.0; // no real figures: round, and rising
    jet::Table table = constants.database().openTable("AsgariUcret");
    orvan::RowWriter writer(table, {"Yil", "Ay", "BuyukGunluk", "KucukGunluk", "YtlVar"});
    jet::WriteBatch batch(constants.database());
    for (int ago = kMonths; ago >= 0; --ago) {
        if (ago == kLeftOut) continue;
        const QDate month = today.addMonths(-ago);
        const double rise = kStep * (kMonths - ago);
        writer.add({Value(month.year()), Value(month.month()),
                    Value(jet::Currency::fromDouble(kAdult + rise)),
                    Value(jet::Currency::fromDouble(kYoung + rise)), Value("E")});
    }
    batch.commit();
}

} // namespace orvanctl

// tools/orvanctl/demo_lists.cpp — see demo_lists.h.
#include "tools/orvanctl/demo_lists.h"

#include "core/row_writer.h"
#include "core/values.h"

#include <algorithm>

namespace orvanctl {
namespace {

using jet::Value;
using orvan::textValue;

struct Named {
    const char* code;
    const char* name;
};
constexpr Named kMainProfessions[] = {{"1100", "Motorlu Araçlar Teknolojisi"},
                                      {"1200", "Elektrik-Elektronik Teknolojisi"},
                                      {"1300", "Mobilya ve İç Mekân Tasarımı"},
                                      {"1400", "Güzellik ve Saç Bakım Hizmetleri"},
                                      {"1500", "Yiyecek İçecek Hizmetleri"},
                                      {"1600", "Moda Tasarım Teknolojileri"},
                                      {"1700", "Metal Teknolojisi"},
                                      {"1800", "Bilişim Teknolojileri"}};

constexpr DemoProfession kProfessions[] = {{"1101", "1100", "Otomotiv Mekanikerliği"},
                                           {"1102", "1100", "Otomotiv Elektrikçiliği"},
                                           {"1103", "1100", "Otomotiv Boyacılığı"},
                                           {"1201", "1200", "Elektrik Tesisatçılığı"},
                                           {"1202", "1200", "Soğutma ve İklimlendirme"},
                                           {"1301", "1300", "Mobilyacılık"},
                                           {"1401", "1400", "Kuaförlük"},
                                           {"1402", "1400", "Erkek Berberliği"},
                                           {"1501", "1500", "Aşçılık"},
                                           {"1502", "1500", "Pastacılık ve Şekerlemecilik"},
                                           {"1601", "1600", "Kadın Giyim Terziliği"},
                                           {"1701", "1700", "Kaynakçılık"},
                                           {"1702", "1700", "Çelik Konstrüksiyon"},
                                           {"1801", "1800", "Bilgisayar Teknik Servisi"}};

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

struct Course {
    const char* code;
    const char* name;
    const char* shortName;
    int weeklyHours;
    const char* kind;
    bool turkish;
};
constexpr Course kCourses[] = {{"TDE", "TÜRK DİLİ VE EDEBİYATI", "TÜRKÇE", 2, "K", true},
                               {"MAT", "MATEMATİK", "MAT.", 2, "K", false},
                               {"DİN", "DİN KÜLTÜRÜ VE AHLAK BİLGİSİ", "DİN K.", 1, "K", false},
                               {"TAR", "TARİH", "TARİH", 1, "K", false},
                               {"MSG", "MESLEKİ GELİŞİM", "MES.GEL.", 1, "M", false},
                               {"İSG", "İŞ SAĞLIĞI VE GÜVENLİĞİ", "İSG", 1, "M", false},
                               {"MTK", "MESLEK TEKNOLOJİSİ", "MES.TEK.", 4, "M", false},
                               {"MRS", "MESLEK RESMİ", "MES.RES.", 2, "M", false}};

constexpr const char* kTrades[] = {"Oto Servis", "Elektrik", "Mobilya",      "Kuaför Salonu", "Lokanta",
                                   "Pastane",    "Terzi",    "Metal Sanayi", "Bilgisayar",    "Yapı"};
constexpr const char* kFirms[] = {"Işık",    "Güven", "Şahin", "Çınar", "Öz Kardeşler", "Yıldız",
                                  "Anadolu", "İnci",  "Ümit",  "Doğuş", "Ege",          "Başak"};

void addDefinitions(orvan::RowWriter& writer, const char* group, std::span<const Named> rows) {
    for (const Named& row : rows)
        writer.add({Value(group), Value(row.code), Value(row.name)});
}

} // namespace

std::span<const DemoProfession> demoProfessions() { return kProfessions; }

void fillCodeLists(orvan::Connection& level) {
    jet::Table table = level.database().openTable("Parametrik_giris");
    orvan::RowWriter plain(table, {"Ta_Tanim_Grup", "Ta_Tanim_Kod", "Ta_tanim_aciklama"});
    jet::WriteBatch batch(level.database());
    addDefinitions(plain, "Semt Kodu", kDistricts);
    addDefinitions(plain, "MeslekOda", kChambers);
    addDefinitions(plain, "Pr.Eğitim", kPractice);
    orvan::RowWriter versioned(table,
                               {"Ta_Tanim_Grup", "Ta_Tanim_Kod", "Ta_tanim_aciklama", "Ta_Ilkogretim_Sure",
                                "Ta_Lise_Sure", "Ta_Ustalik_Sure", "ID", "YururlulukTarihi"});
    const auto add = [&](const char* group, const char* code, const char* name, int version,
                         const char* date) {
        versioned.add({Value(group), Value(code), Value(name), Value(4), Value(2), Value(1), Value(version),
                       Value(date)});
    };
    for (const Named& row : kMainProfessions)
        add("AnaMeslek", row.code, row.name, kDemoVersion, "15.09.2017");
    for (const DemoProfession& row : kProfessions)
        add("Bölüm", row.code, row.name, kDemoVersion, "15.09.2017");
    batch.commit();
}

void fillCourses(orvan::Connection& level, const QString& levelName) {
    jet::Table pool = level.database().openTable("DersHavuzu");
    jet::Table curriculum = level.database().openTable("MeslekDersHavuzu");
    orvan::RowWriter courses(pool, {"ID", "DersKodu", "DersAdi", "DersKisaAdi", "DersHaftalikSaat",
                                    "DersToplamSaat", "DersTuru", "DersUygulama", "DersTurkce",
                                    "YururlulukTarihi"});
    orvan::RowWriter rows(curriculum,
                          {"ID", "MeslekKodu", "MeslekOgrenciTuru", "MeslekOgrenimDurumu",
                           "MeslekOgrenimYili", "Donem", "MeslekDersKodu", "MeslekDersSaat",
                           "MeslekToplamSaat", "MeslekDersGecmeNotu", "MeslekUygulama", "MeslekTurkce",
                           "MeslekBitirmeMuaf", "MeslekKayitSira", "MeslekYururlulukTarihi"});
    constexpr int kWeeks = 36;
    const bool masters = levelName == QLatin1String("Usta");
    jet::WriteBatch batch(level.database());
    for (const Course& c : kCourses)
        courses.add({Value(kDemoVersion), Value(c.code), Value(c.name), Value(c.shortName),
                     Value(c.weeklyHours), Value(c.weeklyHours * kWeeks), Value(c.kind), Value(false),
                     Value(c.turkish), Value("15.09.2017")});
    for (const DemoProfession& profession : kProfessions)
        for (int year = 1; year <= (masters ? 1 : 4); ++year) {
            int order = 0;
            for (const Course& c : kCourses)
                rows.add({Value(kDemoVersion), Value(profession.code), textValue(levelName),
                          Value(masters ? "U" : "İ"), Value(year), Value(2 * year - 1), Value(c.code),
                          Value(c.weeklyHours), Value(c.weeklyHours * kWeeks), Value(50), Value(false),
                          Value(c.turkish), Value(false), Value(++order), Value("15.09.2017")});
        }
    batch.commit();
}

QStringList fillClasses(orvan::Connection& level, DemoRandom& random) {
    const char* const days[] = {"Pazartesi", "Salı", "Çarşamba", "Perşembe", "Cuma"};
    jet::Table table = level.database().openTable("Sinif");
    orvan::RowWriter writer(table, {"SinifAdi", "SinifOgretmeni", "EgtGunu_1", "EgtDerslik_1",
                                    "EgtBaslangic_1", "EgtBitis_1", "EgtOgretmen_1"});
    QStringList names;
    jet::WriteBatch batch(level.database());
    for (int year = 1; year <= 4; ++year)
        for (const char* branch : {"A", "B", "C"}) {
            names << QStringLiteral("%1-%2").arg(year).arg(QLatin1String(branch));
            const Value teacher =
                textValue(fullName(makePerson(random, 800000 + static_cast<int>(names.size()), 1980)));
            const Value day(random.pick(std::span<const char* const>(days)));
            const Value room = textValue(QStringLiteral("Derslik %1").arg(names.size()));
            writer.add(
                {textValue(names.last()), teacher, day, room, Value("09:00"), Value("15:40"), teacher});
        }
    batch.commit();
    return names;
}

std::vector<Workplace> fillWorkplaces(orvan::Connection& workplaces, DemoRandom& random, int count) {
    jet::Table table = workplaces.database().openTable("isletme_Bilgisi");
    orvan::RowWriter writer(table,
                            {"K_Adi", "K_isletme_Tipi", "K_Adresi1", "K_Semt_Kodu", "K_Semt_Adi", "K_Telefon",
                             "K_MeslekOdasi", "K_uretim_alani", "K_Personel_Sayisi", "K_Isveren_Vekili",
                             "K_egitim_Sorumlusu", "K_EgitimSorumlusu1_Cep", "K_EgitimSorumlusu1_TC"});
    std::vector<Workplace> made;
    jet::WriteBatch batch(workplaces.database());
    for (int i = 0; i < count; ++i) {
        const Person owner = makePerson(random, 700000 + i, random.between(1955, 1985));
        const char* trade = random.pick(std::span<const char* const>(kTrades));
        const char* firm = random.pick(std::span<const char* const>(kFirms));
        const Named& district = random.pick(std::span<const Named>(kDistricts));
        const Named& chamber = random.pick(std::span<const Named>(kChambers));
        Workplace place{
            QStringLiteral("%1 %2 %3").arg(QString::fromUtf8(firm), QString::fromUtf8(trade)).arg(i + 1),
            owner.street, fullName(owner), owner.phone, QString::fromUtf8(chamber.name)};
        writer.add({textValue(place.name), Value("0"), textValue(place.address), Value(district.code),
                    Value(district.name), textValue(owner.phone), Value(chamber.name), Value(trade),
                    Value(random.between(1, 40)), textValue(place.master), textValue(place.master),
                    textValue(owner.phone), textValue(owner.identityNo)});
        made.push_back(std::move(place));
    }
    batch.commit();
    return made;
}

std::vector<Coordinator> fillCoordinators(orvan::Connection& coordinators, DemoRandom& random, int count) {
    jet::Table table = coordinators.database().openTable("KoordinatorBilgisi");
    orvan::RowWriter writer(table, {"KO_Ogretmen_Adi", "KO_Ogretmen_Soyadi", "KO_ogretmen_bolum_adi",
                                    "KO_ogretmen_semt_kodu", "KO_CepTel"});
    std::vector<Coordinator> made;
    jet::WriteBatch batch(coordinators.database());
    while (static_cast<int>(made.size()) < count) {
        const Person teacher =
            makePerson(random, 600000 + static_cast<int>(made.size()), random.between(1965, 1995));
        const auto same = [&](const Coordinator& c) {
            return c.name == teacher.name && c.surname == teacher.surname;
        };
        if (std::any_of(made.begin(), made.end(), same)) continue;
        writer.add({textValue(teacher.name), textValue(teacher.surname),
                    Value(kProfessions[made.size() % std::size(kProfessions)].name),
                    Value(random.pick(std::span<const Named>(kDistricts)).code), textValue(teacher.phone)});
        made.push_back({teacher.name, teacher.surname});
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

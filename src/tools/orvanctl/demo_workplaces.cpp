// tools/orvanctl/demo_workplaces.cpp — see demo_workplaces.h.
#include "tools/orvanctl/demo_workplaces.h"

#include "core/row_writer.h"
#include "core/values.h"

#include <algorithm>

namespace orvanctl {
namespace {

using jet::Value;
using orvan::textValue;

constexpr const char* kFirms[] = {"Işık",    "Güven",   "Şahin",  "Çınar",   "Öz Kardeşler",
                                  "Yıldız",  "Anadolu", "İnci",   "Ümit",    "Doğuş",
                                  "Ege",     "Başak",   "Gürbüz", "Ata",     "Kardelen",
                                  "Bereket", "Uğurlu",  "Hisar",  "Dostlar", "Yeşilyurt"};
// Places in demoChambers(), by profession.
constexpr size_t kChamberOf[] = {0, 0, 0, 1, 1, 2, 3, 3, 4, 4, 2, 5, 5, 1};
constexpr int kMostSupervisors = 3;

std::string numbered(const char* field, int supervisor) {
    return supervisor == 1 ? field : field + std::to_string(supervisor);
}

// "Işık Oto Servis"; the second of that name is "Işık Oto Servis 2".
QString firmName(DemoRandom& random, const DemoProfession& profession, QStringList& taken) {
    const QString first = QString::fromUtf8(random.pick(std::span<const char* const>(kFirms))) +
                          QLatin1Char(' ') + QString::fromUtf8(profession.trade);
    QString name = first;
    for (int again = 2; taken.contains(name); ++again)
        name = first + QStringLiteral(" %1").arg(again);
    taken << name;
    return name;
}

} // namespace

std::vector<QString> fillCoordinators(orvan::Connection& coordinators, DemoRandom& random, int count) {
    jet::Table table = coordinators.database().openTable("KoordinatorBilgisi");
    orvan::RowWriter writer(table, {"KO_Ogretmen_Adi", "KO_Ogretmen_Soyadi", "KO_ogretmen_bolum_adi",
                                    "KO_ogretmen_semt_kodu", "KO_CepTel"});
    std::vector<QString> made;
    jet::WriteBatch batch(coordinators.database());
    while (static_cast<int>(made.size()) < count) {
        const int place = static_cast<int>(made.size());
        const Person teacher = makePerson(random, kFirstTeacher + place, random.between(1965, 1995));
        if (std::find(made.begin(), made.end(), fullName(teacher)) != made.end()) continue;
        writer.add({textValue(teacher.name), textValue(teacher.surname),
                    Value(demoProfessions()[made.size() % demoProfessions().size()].name),
                    Value(random.pick(demoDistricts()).code), textValue(teacher.phone)});
        made.push_back(fullName(teacher));
    }
    batch.commit();
    return made;
}

std::vector<Workplace> fillWorkplaces(orvan::Connection& workplaces, DemoRandom& random, int count,
                                      const std::vector<QString>& coordinators) {
    jet::Table table = workplaces.database().openTable("isletme_Bilgisi");
    std::vector<std::string> fields{"K_Adi",
                                    "K_isletme_Tipi",
                                    "K_Adresi1",
                                    "K_Semt_Kodu",
                                    "K_Semt_Adi",
                                    "K_Telefon",
                                    "K_MeslekOdasi",
                                    "K_uretim_alani",
                                    "K_Personel_Sayisi",
                                    "K_Isveren_Vekili",
                                    "K_EgitimSorumlusu1_TC"};
    for (int n = 1; n <= kMostSupervisors; ++n) {
        fields.push_back(numbered("K_egitim_Sorumlusu", n));
        fields.push_back("K_EgitimSorumlusu" + std::to_string(n) + "_Cep");
    }
    orvan::RowWriter writer(table, fields);
    std::vector<Workplace> made;
    QStringList names;
    jet::WriteBatch batch(workplaces.database());
    for (int i = 0; i < count; ++i) {
        const size_t which = static_cast<size_t>(i) % demoProfessions().size();
        const DemoProfession& profession = demoProfessions()[which];
        const Person owner =
            makePerson(random, kFirstOwner + i * kMostSupervisors, random.between(1955, 1985));
        const DemoDefinition& district = random.pick(demoDistricts());
        Workplace place;
        place.profession = which;
        place.name = firmName(random, profession, names);
        place.address = owner.street;
        place.supervisors.push_back({fullName(owner), owner.phone});
        const int supervisors = random.between(1, kMostSupervisors);
        for (int n = 1; n < supervisors; ++n) {
            const Person master =
                makePerson(random, kFirstOwner + i * kMostSupervisors + n, random.between(1965, 1992));
            place.supervisors.push_back({fullName(master), master.phone});
        }
        if (!coordinators.empty()) {
            const size_t teachers = (coordinators.size() + demoProfessions().size() - 1 - which) /
                                    demoProfessions().size(); // of this profession
            const size_t round = static_cast<size_t>(i) / demoProfessions().size();
            place.coordinator = teachers == 0
                                    ? coordinators[which % coordinators.size()]
                                    : coordinators[which + round % teachers * demoProfessions().size()];
        }
        std::vector<Value> row{textValue(place.name),
                               Value("0"),
                               textValue(place.address),
                               Value(district.code),
                               Value(district.name),
                               textValue(owner.phone),
                               Value(demoChambers()[kChamberOf[which]].name),
                               Value(profession.name),
                               Value(random.between(2, 40)),
                               textValue(fullName(owner)),
                               textValue(owner.identityNo)};
        for (size_t n = 0; n < kMostSupervisors; ++n) {
            const bool there = n < place.supervisors.size();
            row.push_back(textValue(there ? place.supervisors[n].name : QString()));
            row.push_back(textValue(there ? place.supervisors[n].phone : QString()));
        }
        place.row = writer.add(row);
        made.push_back(std::move(place));
    }
    batch.commit();
    return made;
}

void writeStudentCounts(orvan::Connection& workplaces, const std::vector<Workplace>& places) {
    jet::Table table = workplaces.database().openTable("isletme_Bilgisi");
    jet::WriteBatch batch(workplaces.database());
    for (const Workplace& place : places) {
        table.goTo(place.row);
        table.edit();
        for (size_t i = 0; i < place.supervisors.size(); ++i) {
            const Supervisor& about = place.supervisors[i];
            const int n = static_cast<int>(i) + 1;
            table.set(numbered("K_Kiz_Ogrenci_sayisi", n), Value(about.girls));
            table.set(numbered("K_Erkek_Ogrenci_Sayisi", n), Value(about.boys));
            table.set(numbered("K_Toplam_Ogrenci_Sayisi", n), Value(about.girls + about.boys));
        }
        table.update();
    }
    batch.commit();
}

void writeStudentCounts(orvan::Connection& coordinators, const std::map<QString, int>& students) {
    jet::Table table = coordinators.database().openTable("KoordinatorBilgisi");
    jet::WriteBatch batch(coordinators.database());
    for (bool there = table.moveFirst(); there; there = table.moveNext()) {
        const QString name = orvan::trimmedText(table.value("KO_Ogretmen_Adi")) + QLatin1Char(' ') +
                             orvan::trimmedText(table.value("KO_Ogretmen_Soyadi"));
        const auto found = students.find(name);
        table.edit();
        table.set("ko_toplam_ogrenci", Value(found == students.end() ? 0 : found->second));
        table.update();
    }
    batch.commit();
}

} // namespace orvanctl

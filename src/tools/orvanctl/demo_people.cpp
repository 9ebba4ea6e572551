// tools/orvanctl/demo_people.cpp — the lists of names and how a person is put together.
#include "tools/orvanctl/demo_people.h"

#include "records/identity_number.h"

namespace orvanctl {
namespace {

constexpr const char* kBoys[] = {
    "Ahmet",    "Mehmet", "Mustafa", "Ali",    "Hüseyin", "Hasan",  "İbrahim", "İsmail", "Yusuf",
    "Ömer",     "Osman",  "Emre",    "Çağrı",  "Barış",   "Burak",  "Cem",     "Deniz",  "Ege",
    "Ertuğrul", "Fatih",  "Gökhan",  "Görkem", "Halil",   "Ilgaz",  "Işıkhan", "Kadir",  "Kaan",
    "Kerem",    "Levent", "Murat",   "Oğuz",   "Onur",    "Özgür",  "Rıza",    "Sefa",   "Serkan",
    "Şahin",    "Tolga",  "Tuğrul",  "Uğur",   "Ümit",    "Volkan", "Yaşar",   "Yiğit",  "Zafer"};
constexpr const char* kGirls[] = {
    "Ayşe",   "Fatma",  "Zeynep", "Elif",   "Merve", "Büşra",  "Çiğdem",  "Derya",  "Ebru",  "Esra",
    "Gamze",  "Gizem",  "Gülşah", "Hatice", "Irmak", "Işıl",   "İpek",    "İrem",   "Kübra", "Leyla",
    "Melike", "Meryem", "Nur",    "Özge",   "Pınar", "Rabia",  "Seda",    "Selin",  "Sıla",  "Sümeyye",
    "Şeyma",  "Şule",   "Tuğba",  "Tülay",  "Ülkü",  "Yağmur", "Yasemin", "Yıldız", "Zehra", "Züleyha"};
constexpr const char* kSurnames[] = {
    "Yılmaz", "Kaya",   "Demir",   "Şahin",   "Çelik",   "Yıldız", "Yıldırım", "Öztürk", "Aydın", "Özdemir",
    "Arslan", "Doğan",  "Kılıç",   "Aslan",   "Çetin",   "Kara",   "Koç",      "Kurt",   "Özkan", "Şimşek",
    "Polat",  "Özcan",  "Korkmaz", "Çakır",   "Erdoğan", "Yavuz",  "Can",      "Acar",   "Şen",   "Aktaş",
    "Güler",  "Yalçın", "Güneş",   "Bozkurt", "Bulut",   "Keskin", "Ünal",     "Turan",  "Gül",   "Özer",
    "Işık",   "Kaplan", "Avcı",    "Sarı",    "Tekin",   "Taş",    "Köse",     "Yüksel", "Ateş",  "Aksoy",
    "İnan",   "İpek",   "Uçar",    "Ağaoğlu", "Çiftçi",  "Gümüş",  "Göçmen",   "Oğuz",   "Ölmez", "Şengül"};
constexpr const char* kPlaces[] = {"Ankara", "İzmir",     "Bursa", "Eskişehir", "Kütahya",
                                   "Çorum",  "Şanlıurfa", "Iğdır", "Muğla",     "Ordu"};
constexpr const char* kStreets[] = {"Atatürk Caddesi",     "Cumhuriyet Mahallesi Gül Sokak",
                                    "İnönü Caddesi",       "Çınar Sokak",
                                    "Şehitler Caddesi",    "Yeşilırmak Sokak",
                                    "Öğretmenler Caddesi", "Işıklar Mahallesi 3. Sokak"};

QString pick(DemoRandom& random, std::span<const char* const> list) {
    return QString::fromUtf8(random.pick(list));
}

} // namespace

QString fullName(const Person& person) { return person.name + QLatin1Char(' ') + person.surname; }

Person makePerson(DemoRandom& random, int serial, int birthYear) {
    Person person;
    person.girl = random.chance(40);
    person.name = pick(random, person.girl ? std::span<const char* const>(kGirls)
                                           : std::span<const char* const>(kBoys));
    person.surname = pick(random, kSurnames);
    person.father = pick(random, kBoys);
    person.mother = pick(random, kGirls);
    // 104729 is prime to the range, so different serials give different numbers.
    const qint64 nine = 100000000 + (static_cast<qint64>(serial) * 104729) % 900000000;
    person.identityNo = orvan::completeIdentityNumber(QString::number(nine));
    person.birth = QDate(birthYear, 1, 1).addDays(random.below(365));
    person.birthPlace = pick(random, kPlaces);
    person.street = QStringLiteral("%1 No: %2").arg(pick(random, kStreets)).arg(random.between(1, 120));
    person.phone = QStringLiteral("0500 000 %1 %2")
                       .arg(random.below(100), 2, 10, QLatin1Char('0'))
                       .arg(random.below(100), 2, 10, QLatin1Char('0'));
    return person;
}

} // namespace orvanctl

// tools/orvanctl/demo_students.cpp — see demo_students.h.
#include "tools/orvanctl/demo_students.h"

#include "core/clock.h"
#include "core/row_writer.h"
#include "core/values.h"

namespace orvanctl {
namespace {

using jet::Value;
using orvan::dateText;
using orvan::textValue;

const std::vector<std::string> kFields = {"Ogr_Numarasi",
                                          "Ogr_Kayit_No",
                                          "Ogr_Kayit_Tarihi",
                                          "Ogr_Adi",
                                          "Ogr_Soyadi",
                                          "Ogr_Mernis",
                                          "Ogr_MeslekKod",
                                          "Ogr_AnaMeslek_Kod",
                                          "Ogr_Sinif",
                                          "DersID",
                                          "Ogr_DersYili",
                                          "Ogr_Seviye",
                                          "Ogr_Durum",
                                          "Ogr_Kayit_Durumu",
                                          "Ogr_Kanun_Maddesi",
                                          "Ogr_OgrenimDuzeyi",
                                          "Ogr_Ogrenim_Durumu",
                                          "Ogr_Koordinator_Ogretmen",
                                          "Ogr_Usta_Ogreticisi",
                                          "Ogr_Bolum",
                                          "Ogr_calistigi_isyerinin_adi",
                                          "Ogr_calistigi_isyeri_adresi1",
                                          "Ogr_calistigi_ise_giris_tarihi",
                                          "Ogr_Nufus_Baba_Adi",
                                          "Ogr_Nufus_Ana_Adi",
                                          "Ogr_Nufus_Dogum_Yeri",
                                          "Ogr_Nufus_Dogum_Tarihi",
                                          "Ogr_Dogum_Tarihi",
                                          "Ogr_Cinsiyeti",
                                          "Ogr_Nufus_Cinsiyeti",
                                          "Ogr_Nufus_Medeni_Hali",
                                          "Ogr_Nufus_KanGrubu",
                                          "Ogr_Nufus_Uyrugu",
                                          "Ogr_Adresi1",
                                          "Ogr_ili",
                                          "Ogr_Cep_Telefon",
                                          "Ogr_Veli_Adi",
                                          "Ogr_Veli_Soyadi",
                                          "Ogr_Veli_Cep_Tel"};

constexpr const char* kSchooling[] = {"01", "03", "03", "06", "10", "13", "41"};

struct Stage {
    QString text;
    int year;   // 1..4
    int status; // Ogr_Durum
};

Stage makeStage(DemoRandom& random) {
    const int year = random.between(1, 4);
    if (random.chance(5)) return {QStringLiteral("BİTİRME"), 4, 2};
    return {QString::number(year), year, 0};
}

class StudentMaker {
  public:
    StudentMaker(jet::Table& table, DemoRandom& random, const DemoPlaces& places)
        : writer_(table, kFields), random_(random), places_(places), serials_(demoProfessions().size()) {}

    void add(int index) {
        const size_t which = static_cast<size_t>(random_.below(static_cast<int>(serials_.size())));
        const DemoProfession& profession = demoProfessions()[which];
        const Stage stage = makeStage(random_);
        const int firstYear = places_.schoolYear.left(4).toInt() - stage.year + 1;
        const Person person =
            makePerson(random_, places_.firstPerson + index, firstYear - random_.between(14, 19));
        const QDate registered = QDate(firstYear, 9, 1).addDays(random_.below(45));
        const QString number = QStringLiteral("%1%2")
                                   .arg(QLatin1String(profession.code))
                                   .arg(++serials_[which], 5, 10, QLatin1Char('0'));
        const auto& workplace = random_.pick(std::span<const Workplace>(places_.workplaces));
        const auto& teacher = random_.pick(std::span<const Coordinator>(places_.coordinators));
        const bool employed = random_.chance(90);
        const Value schooling(random_.pick(std::span<const char* const>(kSchooling)));
        const Value sex(person.girl ? "K" : "E");
        const Value birth = textValue(dateText(person.birth));
        writer_.add({textValue(number),
                     Value(index + 1),
                     textValue(dateText(registered)),
                     textValue(person.name),
                     textValue(person.surname),
                     textValue(person.identityNo),
                     Value(profession.code),
                     Value(profession.mainCode),
                     textValue(classOf(stage.year)),
                     Value(kDemoVersion),
                     textValue(places_.schoolYear),
                     textValue(stage.text),
                     Value(stage.status),
                     Value("Mesleki Eğitim"),
                     Value(employed ? "16.madde" : ""),
                     schooling,
                     schooling,
                     textValue(teacher.name + QLatin1Char(' ') + teacher.surname),
                     textValue(employed ? workplace.master : QString()),
                     Value(profession.name),
                     textValue(employed ? workplace.name : QString()),
                     textValue(employed ? workplace.address : QString()),
                     textValue(employed ? dateText(registered.addDays(random_.below(30))) : QString()),
                     textValue(person.father),
                     textValue(person.mother),
                     textValue(person.birthPlace),
                     birth,
                     birth,
                     sex,
                     sex,
                     Value("B"),
                     textValue(QString::number(random_.between(0, 8))),
                     Value("T.C."),
                     textValue(person.street),
                     Value("ANKARA"),
                     textValue(person.phone),
                     textValue(person.father),
                     textValue(person.surname),
                     textValue(person.phone)});
    }

  private:
    QString classOf(int year) {
        const int perYear = static_cast<int>(places_.classes.size()) / 4;
        return places_.classes[(year - 1) * perYear + random_.below(perYear)];
    }

    orvan::RowWriter writer_;
    DemoRandom& random_;
    const DemoPlaces& places_;
    std::vector<int> serials_; // last serial given, per profession
};

} // namespace

void fillStudents(orvan::Connection& level, DemoRandom& random, const DemoPlaces& places, int count) {
    jet::Table table = level.database().openTable("OgrenciBilgisi");
    StudentMaker maker(table, random, places);
    jet::WriteBatch batch(level.database());
    for (int i = 0; i < count; ++i)
        maker.add(i);
    batch.commit();
}

} // namespace orvanctl

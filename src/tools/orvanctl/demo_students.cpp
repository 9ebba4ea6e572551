// tools/orvanctl/demo_students.cpp — see demo_students.h.
#include "tools/orvanctl/demo_students.h"

#include "core/clock.h"
#include "core/row_writer.h"
#include "core/values.h"

#include <algorithm>
#include <optional>

namespace orvanctl {
namespace {

using jet::Value;
using orvan::dateText;
using orvan::textValue;

// What differs between the levels.
struct LevelFacts {
    int youngest, oldest; // at registration
    int years;            // of training
    std::span<const char* const> schooling;
    const char* article;
};
constexpr const char* kPupils[] = {"01", "03", "03", "06", "10", "13", "41"};
constexpr const char* kAdults[] = {"03", "10", "10", "20", "40", "60"};

LevelFacts factsOf(DemoLevel level) {
    switch (level) {
    case DemoLevel::Journeyman: return {14, 19, 4, kPupils, "16.madde"};
    case DemoLevel::Master: return {19, 32, 2, kAdults, ""};
    case DemoLevel::Instructor: break;
    }
    return {23, 48, 1, kAdults, ""};
}

constexpr const char* kSchools[] = {"Atatürk Ortaokulu", "Cumhuriyet İlköğretim Okulu",
                                    "İnönü Ortaokulu",   "Şehit Öğretmenler Ortaokulu",
                                    "Gazi Lisesi",       "Çankaya Anadolu Lisesi"};
constexpr const char* kQuarters[] = {"Bahçelievler", "Işıklar",    "Yeşiltepe",
                                     "Çınarlı",      "Şirinevler", "Hürriyet"};
constexpr const char* kDeputies[] = {"Nurcan Özçelik", "İsmail Gündüz", "Şükrü Ağca"};
constexpr const char* kReasons[] = {"Kendi İsteği", "Devamsızlık", "Askerlik", "Nakil"};

// A row whose fields stand beside their values; every row names the same fields.
class NamedRows {
  public:
    explicit NamedRows(jet::Table& table) : table_(table) {}
    void set(const char* field, Value value) {
        if (!writer_) names_.emplace_back(field);
        values_.push_back(std::move(value));
    }
    void set(const char* field, const QString& text) { set(field, textValue(text)); }
    void add() {
        if (!writer_) writer_.emplace(table_, names_);
        writer_->add(values_);
        values_.clear();
    }

  private:
    jet::Table& table_;
    std::vector<std::string> names_;
    std::vector<Value> values_;
    std::optional<orvan::RowWriter> writer_;
};

struct Stage {
    QString text;
    int year;   // of training
    int status; // Ogr_Durum
};

// One student, from whom rows of several tables are written.
struct DemoStudent {
    Person person;
    QString number;
    size_t profession = 0;
    Stage stage;
    QDate registered;
    Workplace* workplace = nullptr;
    Supervisor* master = nullptr;
    QDate start; // of work there
    int earlierMonths = 0;
    bool left = false;
};

class StudentMaker {
  public:
    StudentMaker(orvan::Connection& level, DemoLevel kind, DemoRandom& random, DemoPlaces& places,
                 const std::vector<DemoClass>& classes)
        : students_(level.database().openTable("OgrenciBilgisi")),
          history_(level.database().openTable("Ogrenci_Isyerleri")), rows_(students_), earlier_(history_),
          facts_(factsOf(kind)), random_(random), places_(places), classes_(classes),
          serials_(demoProfessions().size()) {}

    QString add(int index) {
        const DemoStudent student = make(index);
        writeStudent(student, index + 1);
        if (student.earlierMonths > 0) writeEarlier(student);
        return student.number;
    }

  private:
    QDate notLater(QDate day) const { return std::min(day, places_.today); }

    Stage makeStage() {
        const int year = random_.between(1, facts_.years);
        if (random_.chance(5)) return {QStringLiteral("BİTİRME"), facts_.years, 2};
        return {QString::number(year), year, 0};
    }

    DemoStudent make(int index) {
        DemoStudent student;
        student.profession = static_cast<size_t>(random_.below(static_cast<int>(serials_.size())));
        student.stage = makeStage();
        const int firstYear = places_.schoolYear.left(4).toInt() - student.stage.year + 1;
        student.person = makePerson(random_, places_.firstPerson + index,
                                    firstYear - random_.between(facts_.youngest, facts_.oldest));
        student.registered = notLater(QDate(firstYear, 9, 1).addDays(random_.below(45)));
        student.number = QStringLiteral("%1%2")
                             .arg(QLatin1String(demoProfessions()[student.profession].code))
                             .arg(++serials_[student.profession], 5, 10, QLatin1Char('0'));
        if (random_.chance(92)) employ(student);
        student.left = student.workplace && student.stage.status == 0 && random_.chance(3);
        return student;
    }

    // At a workplace of his profession; with some he has worked elsewhere before.
    void employ(DemoStudent& student) {
        std::vector<Workplace*> fitting;
        for (Workplace& place : places_.workplaces)
            if (place.profession == student.profession) fitting.push_back(&place);
        if (fitting.empty()) return;
        student.workplace = random_.pick(std::span<Workplace* const>(fitting));
        auto& masters = student.workplace->supervisors;
        student.master = &masters[static_cast<size_t>(random_.below(static_cast<int>(masters.size())))];
        ++(student.person.girl ? student.master->girls : student.master->boys);
        ++places_.studentsOfTeacher[student.workplace->coordinator];
        student.start = notLater(student.registered.addDays(random_.below(30)));
        if (student.stage.year > 1 && random_.chance(40)) {
            student.earlierMonths = random_.between(2, 9);
            student.start =
                student.registered.addMonths(student.earlierMonths).addDays(random_.below(10) + 1);
        }
    }

    QString classOf(const DemoStudent& student) {
        std::vector<const DemoClass*> fitting;
        for (const DemoClass& about : classes_)
            if (about.year == student.stage.year) fitting.push_back(&about);
        const DemoClass* about = random_.pick(std::span<const DemoClass* const>(fitting));
        day_ = about->day;
        return about->name;
    }

    void writeStudent(const DemoStudent& student, int registrationNo) {
        const Person& person = student.person;
        const DemoProfession& profession = demoProfessions()[student.profession];
        const bool employed = student.workplace != nullptr;
        const auto ifEmployed = [&](const QString& text) { return employed ? text : QString(); };
        const QString birth = dateText(person.birth), sex(person.girl ? "K" : "E");
        const QString schooling = QString::fromUtf8(random_.pick(facts_.schooling));
        const QString leftOn =
            student.left ? dateText(notLater(student.start.addDays(random_.between(20, 120)))) : QString();
        rows_.set("Ogr_Numarasi", student.number);
        rows_.set("Ogr_Kayit_No", Value(registrationNo));
        rows_.set("Ogr_Kayit_Tarihi", dateText(student.registered));
        rows_.set("Ogr_Adi", person.name);
        rows_.set("Ogr_Soyadi", person.surname);
        rows_.set("Ogr_Mernis", person.identityNo);
        rows_.set("Ogr_SSK_No", ifEmployed(person.identityNo));
        rows_.set("Ogr_MeslekKod", Value(profession.code));
        rows_.set("Ogr_AnaMeslek_Kod", Value(profession.mainCode));
        rows_.set("Ogr_Bolum", Value(profession.name));
        rows_.set("Ogr_Sinif", classOf(student));
        rows_.set("Ogr_GeldigiGunler", day_);
        rows_.set("DersID", Value(kDemoVersion));
        rows_.set("Ogr_DersYili", places_.schoolYear);
        rows_.set("Ogr_Seviye", student.stage.text);
        rows_.set("Ogr_Durum", Value(student.stage.status));
        rows_.set("Ogr_Kayit_Durumu", Value("Mesleki Eğitim"));
        rows_.set("Ogr_Kanun_Maddesi", ifEmployed(QString::fromUtf8(facts_.article)));
        rows_.set("Ogr_OgrenimDuzeyi", schooling);
        rows_.set("Ogr_Ogrenim_Durumu", schooling);
        rows_.set("Ogr_Mezun_Oldugu_okul", text(kSchools));
        rows_.set("Ogr_Pratik_EgitimYeri", Value(employed ? "İşletme" : "Okul Atölyesi"));
        rows_.set("Ogr_Sorumlu_MudurYardimcisi", text(kDeputies));
        rows_.set("Ogr_Koordinator_Ogretmen", employed ? student.workplace->coordinator : QString());
        rows_.set("Ogr_Usta_Ogreticisi", employed ? student.master->name : QString());
        rows_.set("ustaOgreticiCep", employed ? student.master->phone.left(15) : QString());
        rows_.set("Ogr_calistigi_isyerinin_adi", employed ? student.workplace->name : QString());
        rows_.set("Ogr_calistigi_isyeri_adresi1", employed ? student.workplace->address : QString());
        rows_.set("Ogr_calistigi_ise_giris_tarihi", ifEmployed(dateText(student.start)));
        rows_.set("Ogr_calistigi_isden_ayrilis_tarihi", leftOn);
        rows_.set("Ogr_Ayrilis_Nedeni", student.left ? text(kReasons) : QString());
        rows_.set("Ogr_Sigorta_Giris_Tarihi", ifEmployed(dateText(student.registered)));
        rows_.set("Ogr_Isletme1_Yil", student.earlierMonths > 0 ? QStringLiteral("0") : QString());
        rows_.set("Ogr_Isletme1_Ay",
                  student.earlierMonths > 0 ? QString::number(student.earlierMonths) : QString());
        rows_.set("Ogr_Isletme1_Gun", student.earlierMonths > 0 ? QStringLiteral("0") : QString());
        rows_.set("Ogr_Nufus_Baba_Adi", person.father);
        rows_.set("Ogr_Nufus_Ana_Adi", person.mother);
        rows_.set("Ogr_Nufus_Dogum_Yeri", person.birthPlace);
        rows_.set("Ogr_Nufus_Dogum_Tarihi", birth);
        rows_.set("Ogr_Dogum_Tarihi", birth);
        rows_.set("Ogr_Cinsiyeti", sex);
        rows_.set("Ogr_Nufus_Cinsiyeti", sex);
        rows_.set("Ogr_Nufus_Medeni_Hali", QString(facts_.youngest > 18 && random_.chance(40) ? "E" : "B"));
        rows_.set("Ogr_Nufus_KanGrubu", QString::number(random_.between(0, 8)));
        rows_.set("Ogr_Nufus_Uyrugu", Value("T.C."));
        rows_.set("Ogr_Nufus_Ili", person.birthPlace);
        rows_.set("Ogr_Nufus_Ilcesi", Value("Merkez"));
        rows_.set("Ogr_Nufus_Mahalle_Koy", text(kQuarters));
        rows_.set("Ogr_Nufus_Cilt_No", QString::number(random_.between(1, 120)));
        rows_.set("Ogr_Nufus_Hane", QString::number(random_.between(1, 400)));
        rows_.set("Ogr_Adresi1", person.street);
        rows_.set("Ogr_Semt", Value(random_.pick(demoDistricts()).name));
        rows_.set("Ogr_ili", Value("ANKARA"));
        rows_.set("Ogr_Cep_Telefon", person.phone);
        rows_.set("Ogr_Veli_Adi", person.father);
        rows_.set("Ogr_Veli_Soyadi", person.surname);
        rows_.set("Ogr_Veli_Yakinlik", Value("Baba"));
        rows_.set("Ogr_Veli_Cep_Tel", person.phone);
        rows_.add();
    }

    // Where he worked from his registration until the present workplace.
    void writeEarlier(const DemoStudent& student) {
        std::vector<const Workplace*> others;
        for (const Workplace& place : places_.workplaces)
            if (place.profession == student.profession && &place != student.workplace)
                others.push_back(&place);
        const Workplace* place =
            others.empty() ? student.workplace : random_.pick(std::span<const Workplace* const>(others));
        earlier_.set("Ogr_No", student.number);
        earlier_.set("Ogr_Adi", student.person.name);
        earlier_.set("Ogr_Soyadi", student.person.surname);
        earlier_.set("Ogr_sira", Value(1));
        earlier_.set("Ogr_isyerinin_adi", place->name);
        earlier_.set("Ogr_Isyeri_Adresi1", place->address);
        earlier_.set("Ogr_Ise_Giris_Tarihi", dateText(student.registered));
        earlier_.set("Ogr_Isden_Ayrilis_Tarihi",
                     dateText(student.registered.addMonths(student.earlierMonths)));
        earlier_.set("Ogr_Isletme1_Yil", Value("0"));
        earlier_.set("Ogr_Isletme1_Ay", QString::number(student.earlierMonths));
        earlier_.set("Ogr_Isletme1_Gun", Value("0"));
        earlier_.set("Ogr_AyrilisNedeni", Value("İşyeri Değişikliği"));
        earlier_.add();
    }

    template <size_t N> QString text(const char* const (&list)[N]) {
        return QString::fromUtf8(random_.pick(std::span<const char* const>(list)));
    }

    jet::Table students_, history_;
    NamedRows rows_, earlier_;
    LevelFacts facts_;
    DemoRandom& random_;
    DemoPlaces& places_;
    const std::vector<DemoClass>& classes_;
    std::vector<int> serials_; // last serial given, per profession
    QString day_;              // of the class chosen last
};

} // namespace

QStringList fillStudents(orvan::Connection& level, DemoLevel kind, DemoRandom& random, DemoPlaces& places,
                         const std::vector<DemoClass>& classes, int count) {
    StudentMaker maker(level, kind, random, places, classes);
    QStringList numbers;
    jet::WriteBatch batch(level.database());
    for (int i = 0; i < count; ++i)
        numbers << maker.add(i);
    batch.commit();
    places.firstPerson += count;
    return numbers;
}

} // namespace orvanctl

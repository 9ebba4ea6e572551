// records/quick_registration.cpp — checks in the system's order, then one new row under one lock.
#include "records/quick_registration.h"

#include "core/turkish_text.h"
#include "core/users.h"
#include "core/values.h"
#include "records/registration_checks.h"

namespace orvan {
namespace {

const QString& warning() {
    static const QString title = QStringLiteral("Uyarı");
    return title;
}

bool occurs(jet::SqlSession& level, const char* sql, const Parameters& parameters) {
    return !level.query(sql, parameters).empty();
}

bool studentNoTaken(jet::SqlSession& level, const QuickForm& form) {
    return occurs(level, "SELECT Ogr_Numarasi FROM OgrenciBilgisi WHERE trim(ogr_numarasi)=? and dersID=?",
                  Parameters{form.studentNo, form.profession.version});
}

bool registrationNoTaken(jet::SqlSession& level, const QuickForm& form) {
    return occurs(level, "SELECT Ogr_Kayit_No FROM OgrenciBilgisi WHERE Ogr_Kayit_No = ?",
                  Parameters{form.registrationNo});
}

} // namespace

QuickRegistration::QuickRegistration(DatabaseSet& databases, Dialogs& dialogs, const Clock& clock)
    : databases_(databases), dialogs_(dialogs), clock_(clock) {}

std::vector<Profession> QuickRegistration::professions() {
    return orvan::professions(databases_.level().sql());
}

StudentNumbers QuickRegistration::numbersFor(const Profession& profession) {
    return nextNumbers(databases_.level().sql(), profession.code,
                       numberingOptions(databases_.constants().sql()));
}

QuickForm QuickRegistration::propose(const Profession& profession) {
    QuickForm form;
    form.profession = profession;
    if (profession.code.isEmpty()) return form;
    form.proposed = numbersFor(profession);
    form.registrationNo = form.proposed.registrationNo;
    form.studentNo = form.proposed.studentNo;
    return form;
}

QuickSave QuickRegistration::save(QuickForm& form) {
    form.name = trimBlanks(form.name);
    form.surname = trimBlanks(form.surname);
    form.studentNo = trimBlanks(form.studentNo);
    if (form.profession.code.isEmpty()) {
        dialogs_.message(QStringLiteral("Yeni kayıt yapmak için önce meslek seçimi yapmalısınız."), warning(),
                         Icon::Warning);
        return QuickSave::Refused;
    }
    const QString title = QString::fromUtf8(kQuickRegistrationTitle);
    if (!mayWrite(databases_.constants().sql(), databases_.session().user, title, dialogs_))
        return QuickSave::Refused;
    if (!requiredFieldsFilled(form) || !typedNumberIsFree(form)) return QuickSave::Refused;
    // Another station may take the numbers between the question and the write, so the answer is checked once
    // more.
    while (!writeWhenFree(form))
        if (!acceptFreshNumbers(form)) return QuickSave::Refused;
    return QuickSave::Saved;
}

bool QuickRegistration::requiredFieldsFilled(const QuickForm& form) {
    if (!form.studentNo.isEmpty() && !form.name.isEmpty() && !form.surname.isEmpty()) return true;
    dialogs_.message(
        QStringLiteral("Öğrenci Numarası, Adı ve Soyadı boş girilemez. Lütfen ilgili yerleri doldurunuz."),
        warning(), Icon::Warning);
    return false;
}

// A number the person typed himself must be free. The proposed one is looked at later: it may have been taken
// since.
bool QuickRegistration::typedNumberIsFree(const QuickForm& form) {
    if (form.studentNo == form.proposed.studentNo || !studentNoTaken(databases_.level().sql(), form))
        return true;
    dialogs_.message(sameNumberText(form.studentNo), warning(), Icon::Warning);
    return false;
}

// Looks and writes under one lock; false, and nothing written, when a number is taken.
bool QuickRegistration::writeWhenFree(const QuickForm& form) {
    jet::SqlSession& level = databases_.level().sql();
    jet::WriteBatch batch(databases_.level().database());
    if (studentNoTaken(level, form) || registrationNoTaken(level, form)) return false;
    write(form);
    batch.commit();
    return true;
}

bool QuickRegistration::acceptFreshNumbers(QuickForm& form) {
    StudentNumbers fresh = numbersFor(form.profession);
    if (!studentNoTaken(databases_.level().sql(), form)) fresh.studentNo = form.studentNo;
    if (!dialogs_.confirms(numbersTakenQuestion(fresh), warning())) return false;
    form.proposed = fresh;
    form.registrationNo = fresh.registrationNo;
    form.studentNo = fresh.studentNo;
    return true;
}

void QuickRegistration::write(const QuickForm& form) {
    jet::Table& students = databases_.table(QStringLiteral("OgrenciBilgisi"));
    students.addNew();
    try {
        students.set("Ogr_Numarasi", textValue(form.studentNo));
        students.set("Ogr_Kayit_No", jet::Value(form.registrationNo));
        students.set("Ogr_Kayit_Tarihi", textValue(dateText(clock_.today())));
        students.set("Ogr_Adi", textValue(form.name));
        students.set("Ogr_Soyadi", textValue(form.surname));
        students.set("Ogr_MeslekKod", textValue(form.profession.code));
        students.set("DersID", jet::Value(form.profession.version));
        students.set("Ogr_DersYili", textValue(databases_.session().schoolYear));
        students.set("Ogr_Seviye", jet::Value("1"));
        students.set("Ogr_Durum", jet::Value(0));
        students.update();
    } catch (...) {
        students.cancelUpdate();
        throw;
    }
}

int QuickRegistration::widthOf(const char* field) const {
    return databases_.schema().width("OgrenciBilgisi", field);
}
int QuickRegistration::nameWidth() const { return widthOf("Ogr_Adi"); }
int QuickRegistration::surnameWidth() const { return widthOf("Ogr_Soyadi"); }
int QuickRegistration::numberWidth() const { return widthOf("Ogr_Numarasi"); }

} // namespace orvan

// records/identity_change.cpp — see identity_change.h.
#include "records/identity_change.h"

#include "core/turkish_text.h"
#include "core/users.h"
#include "records/dependent_tables.h"
#include "records/renumber.h"
#include "records/student_numbers.h"
#include "records/trimmed_rows.h"

namespace orvan {
namespace {

constexpr auto kStudents = "OgrenciBilgisi";
const std::vector<std::string> kFields = {"Ogr_Numarasi", "Ogr_Kayit_No",  "Ogr_Adi",
                                          "Ogr_Soyadi",   "Ogr_MeslekKod", "DersID"};

StudentIdentity identity(const std::vector<QString>& texts) {
    return {texts[0], texts[1].toInt(), texts[2], texts[3], texts[4], texts[5].toInt()};
}

Renumbering renumbering(const StudentIdentity& before, const StudentIdentity& wanted) {
    return {before.number,         wanted.number,         wanted.professionCode,
            before.registrationNo, wanted.registrationNo, RenumberMode::Both};
}

IdentityChangeResult refused(const char* field, const QString& reason) {
    return {false, QString::fromLatin1(field), reason};
}

IdentityChangeResult refused(const RenumberProblem& problem, const Renumbering& wanted) {
    const bool number = problem.fault != RenumberFault::RegistrationTaken &&
                        (problem.fault != RenumberFault::TooLong || wanted.newRegistrationNo > 0);
    return refused(number ? "number" : "registrationNo", problemText(problem, wanted));
}

QString question(const StudentIdentity& before, const StudentIdentity& wanted) {
    const auto line = [](const StudentIdentity& s) {
        return QStringLiteral("Kütük No: %1   Kayıt No: %2   %3 %4   Meslek: %5")
            .arg(s.number, QString::number(s.registrationNo), s.name, s.surname, s.professionCode);
    };
    return QStringLiteral("Öğrencinin bütün kayıtları değiştirilecek.\n\nEski: %1\nYeni: %2\n\n"
                          "Onaylıyor musunuz?")
        .arg(line(before), line(wanted));
}

} // namespace

std::vector<StudentIdentity> IdentityChange::students() {
    const auto rows = databases_.level().sql().query(
        "SELECT Ogr_Numarasi, Ogr_Kayit_No, Ogr_Adi, Ogr_Soyadi, Ogr_MeslekKod, DersID FROM OgrenciBilgisi "
        "ORDER BY Ogr_Numarasi");
    std::vector<StudentIdentity> all;
    all.reserve(rows.rowCount());
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        std::vector<QString> texts;
        for (size_t field = 0; field < kFields.size(); ++field)
            texts.push_back(trimmedText(rows.at(i, field)));
        all.push_back(identity(texts));
    }
    return all;
}

std::vector<Profession> IdentityChange::professionsFor(const StudentIdentity& student) {
    std::vector<Profession> all = orvan::professions(databases_.level().sql());
    std::erase_if(all, [&](const Profession& each) { return each.version != student.curriculum; });
    return all;
}

QString IdentityChange::proposedNumber(const QString& professionCode) {
    return nextStudentNo(databases_.level().sql(), professionCode,
                         numberingOptions(databases_.constants().sql()));
}

int IdentityChange::widthOf(const char* field) const { return databases_.schema().width(kStudents, field); }

IdentityChangeResult IdentityChange::save(const StudentIdentity& before, const StudentIdentity& typed) {
    StudentIdentity wanted = typed;
    for (QString* text : {&wanted.number, &wanted.name, &wanted.surname, &wanted.professionCode})
        *text = trimBlanks(*text);
    if (!mayWrite(databases_.constants().sql(), databases_.session().user,
                  QString::fromUtf8(kIdentityChangeTitle), dialogs_))
        return {};
    if (wanted.number.isEmpty()) return refused("number", QStringLiteral("Kütük No boş olamaz."));
    if (wanted.name.isEmpty()) return refused("name", QStringLiteral("Adı boş olamaz."));
    if (wanted.surname.isEmpty()) return refused("surname", QStringLiteral("Soyadı boş olamaz."));
    if (wanted.name.size() > widthOf("Ogr_Adi") || wanted.surname.size() > widthOf("Ogr_Soyadi"))
        return refused(wanted.name.size() > widthOf("Ogr_Adi") ? "name" : "surname",
                       QStringLiteral("En çok %1 karakter girilebilir.").arg(widthOf("Ogr_Adi")));
    if (wanted == before) return {true, {}, {}, 0, before};
    const Renumbering change = renumbering(before, wanted);
    const auto problems = renumberProblems(databases_.level().database(), {change});
    if (!problems.empty()) return refused(problems.front(), change);
    if (!dialogs_.confirms(question(before, wanted), QString::fromUtf8(kIdentityChangeTitle))) return {};
    return write(before, wanted);
}

// The row that is still as it was read.
std::optional<jet::RowId> IdentityChange::rowOf(const StudentIdentity& student) {
    jet::Database& level = databases_.level().database();
    jet::Table table = level.openTable(kStudents);
    for (const jet::RowId row : rowsByText(level, kStudents, kFields[0], student.number))
        if (identity(trimmedTexts(table, row, kFields)) == student) return row;
    return {};
}

IdentityChangeResult IdentityChange::write(const StudentIdentity& before, const StudentIdentity& wanted) {
    jet::Database& level = databases_.level().database();
    const std::vector<Renumbering> list{renumbering(before, wanted)};
    IdentityChangeResult result;
    {
        jet::WriteBatch batch(level);
        const auto row = rowOf(before);
        if (!row)
            return refused("number", QStringLiteral("Öğrenci bu arada başka bir kullanıcı tarafından "
                                                    "değiştirilmiş. Listeyi yenileyiniz (F5)."));
        if (const auto problems = renumberProblems(level, list); !problems.empty())
            return refused(problems.front(), list.front());
        if (before.name != wanted.name || before.surname != wanted.surname) {
            result.changedRows +=
                carryName(level, before.number, {before.name, before.surname}, {wanted.name, wanted.surname});
            jet::Table table = level.openTable(kStudents);
            changeRow(table, *row,
                      {{"Ogr_Adi", textValue(wanted.name)}, {"Ogr_Soyadi", textValue(wanted.surname)}});
        }
        result.changedRows += renumberUnderLock(level, list, RenumberReach::AllOfHim).dependentRows;
        batch.commit();
    }
    const QStringList photos = carryPhotos(databases_.folder(), list);
    if (!photos.isEmpty())
        dialogs_.message(photos.join(QLatin1Char('\n')), QString::fromUtf8(kIdentityChangeTitle),
                         Icon::Warning);
    result.saved = true;
    result.now = wanted;
    return result;
}

} // namespace orvan
